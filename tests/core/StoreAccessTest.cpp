// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/StoreFixture.h"
#include "core/store/ProjectLock.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <SQLiteCpp/Database.h>
#include <atomic>
#include <thread>
#include <unistd.h>
#include <vector>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

/// A folder and its files that can't be written while this lives. For the system's administrator,
/// whom no permission stops, the process becomes a nobody meanwhile.
class ReadOnlyFolder {
public:
    explicit ReadOnlyFolder(const QString& folder)
    {
        for (const QString& file : QDir(folder).entryList(QDir::Files | QDir::Hidden))
            m_paths.append(folder + u'/' + file);
        m_paths.append(folder);
        m_paths.append(QFileInfo(folder).absolutePath()); // which a nobody must pass through
        constexpr auto everybody = QFile::ReadOwner | QFile::ExeOwner | QFile::ReadGroup |
                                   QFile::ExeGroup | QFile::ReadOther | QFile::ExeOther;
        for (const QString& path : std::as_const(m_paths))
            QFile::setPermissions(path, everybody);
        if (::geteuid() == 0)
            m_wasRoot = ::seteuid(65534) == 0;
    }
    ~ReadOnlyFolder()
    {
        if (m_wasRoot)
            static_cast<void>(::seteuid(0));
        for (const QString& path : std::as_const(m_paths))
            QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    ReadOnlyFolder(const ReadOnlyFolder&) = delete;
    ReadOnlyFolder& operator=(const ReadOnlyFolder&) = delete;

private:
    QStringList m_paths;
    bool m_wasRoot = false;
};

class StoreAccess : public StoreFixture {
protected:
    NotebookSnapshot saved{{makeFolder(1)}, {}, std::nullopt};

    void SetUp() override
    {
        NoteRecord note = makeNote(2, idOf(1));
        note.bodyRTF = Blob(QByteArray(9000, 'r'));
        saved.notes = {note};
        ASSERT_TRUE(open()->save(saved));
    }
    StoreOpenError::Code refused()
    {
        const auto before = storeBytes(store());
        const auto opened = PersistenceController::open(folder, clock);
        EXPECT_FALSE(opened);
        EXPECT_TRUE(storeBytes(store()) == before);
        EXPECT_FALSE(QFile::exists(PersistentStoreRecovery::markerPath(folder)));
        return opened ? StoreOpenError::Code() : opened.error().code;
    }
};

TEST_F(StoreAccess, AReadOnlyFolderOpensForReading)
{
    struct Row {
        const char* name;
        bool afterACrash;
    };
    for (const Row& row : {Row{"at rest", false}, Row{"with a write-ahead log", true}}) {
        SCOPED_TRACE(row.name);
        NotebookSnapshot expected = saved;
        if (row.afterACrash) {
            auto controller = open();
            expected = controller->load();
            expected.notes[0] = expected.notes[0].with(
                [](NoteRecord& note) { note.title = u"in the write-ahead log"_s; });
            for (const auto& note : expected.notes)
                ASSERT_TRUE(note->body.isReadable() && note->bodyRTF->read());
            ASSERT_TRUE(controller->saveNote(expected.notes[0]));
            const auto bytes = storeBytes(store());
            controller.reset();
            for (auto file = bytes.cbegin(); file != bytes.cend(); ++file)
                writeBytes(folder + u'/' + file.key(), *file);
        }
        const ReadOnlyFolder readOnly(folder);
        const auto before = files();
        const auto controller = open();
        ASSERT_TRUE(controller);
        EXPECT_TRUE(controller->isReadOnly());
        EXPECT_TRUE(controller->load() == expected);
        const auto result = controller->saveFolder(makeFolder(3));
        ASSERT_FALSE(result);
        EXPECT_EQ(result.error().code, StoreError::Code::ReadOnly);
        EXPECT_EQ(files(), before);
    }
}

TEST_F(StoreAccess, ADamagedStoreThatCantBeMovedIsAnErrorAndStays)
{
    writeBytes(store(), "damaged");
    const ReadOnlyFolder readOnly(folder);
    EXPECT_EQ(refused(), StoreOpenError::Code::RecoveryFailed);
}

TEST_F(StoreAccess, WhatStandsInTheWayIsNoDamage)
{
    {
        const auto first = open();
        EXPECT_EQ(refused(), StoreOpenError::Code::LockedByOther) << "open in this process";
    }
    {
        SQLite::Database other(store().toStdString(), SQLite::OPEN_READWRITE);
        other.exec("PRAGMA locking_mode = EXCLUSIVE; BEGIN IMMEDIATE; "
                   "UPDATE OrvaneStore SET generation = generation");
        const auto opened = PersistenceController::open(folder, clock);
        ASSERT_FALSE(opened);
        EXPECT_EQ(opened.error().code, StoreOpenError::Code::LockedByOther) << "another program";
        other.exec("ROLLBACK");
    }
    {
        const FullDisk full(0);
        EXPECT_EQ(refused(), StoreOpenError::Code::NoSpace);
    }
    writeBytes(ProjectLock::pathIn(folder),
               "77\nOrvaneWorkspace\nstudio\nanother machine\n2026-01-02T03:04:05.000Z\n");
    EXPECT_EQ(refused(), StoreOpenError::Code::LockedByOther) << "open on another machine";
    writeBytes(ProjectLock::pathIn(folder), "what no lock holds");
    EXPECT_TRUE(open()->load() == saved);
}

// Who opens the lock file just before its holder removes it locks a file that nobody finds.
TEST_F(StoreAccess, OfManyThatTakeTheLockAtOnceOneHasIt)
{
    std::atomic<int> holders = 0;
    std::atomic<int> taken = 0;
    std::atomic<bool> wasShared = false;
    const auto take = [&] {
        for (int i = 0; i < 20'000 && taken < 4'000 && !wasShared; ++i) {
            const auto lock = ProjectLock::take(folder, {});
            if (!lock)
                continue;
            ++taken;
            wasShared = wasShared || holders.fetch_add(1) != 0;
            std::this_thread::yield();
            --holders;
        }
    };
    {
        std::vector<std::jthread> threads;
        for (int i = 0; i < 4; ++i)
            threads.emplace_back(take);
    }
    EXPECT_GT(taken, 0);
    EXPECT_FALSE(wasShared);
}

TEST_F(StoreAccess, AFullDiskLeavesADamagedStoreWhereItIs)
{
    writeBytes(store(), "damaged, and more than a lock file holds: " + QByteArray(2000, '.'));
    const FullDisk full(300); // the lock can be written, the marker too, a fresh store can't
    const auto opened = PersistenceController::open(folder, clock);
    ASSERT_FALSE(opened);
    EXPECT_TRUE(PersistentStoreRecovery::read(folder)) << "and the project stays closed";
    const QString backup = PersistentStoreRecovery::read(folder)->backupDirectoryURL.toLocalFile();
    EXPECT_EQ(bytesOf(backup + u"/OrvaneWorkspace.store"_s).size(), 2042);
}

TEST_F(StoreAccess, TwoRecoveriesInOneSecondShareAFolder)
{
    QString backup;
    for (const char* damage : {"first", "second"}) {
        writeBytes(store(), damage);
        const auto controller = open();
        ASSERT_TRUE(controller->persistentStoreRecovery());
        backup = controller->persistentStoreRecovery()->backupDirectoryURL.toLocalFile();
        EXPECT_EQ(backup, folder + u"/PersistentStoreRecovery-1780000000"_s);
        EXPECT_EQ(bytesOf(backup + u"/OrvaneWorkspace.store"_s), damage);
    }
    EXPECT_EQ(QDir(folder).entryList({u"PersistentStoreRecovery-*"_s}, QDir::Dirs).size(), 1);
}

TEST_F(StoreAccess, DamageFoundLaterProtectsTheProjectAsItStands)
{
    auto controller = open();
    ASSERT_TRUE(controller->saveFolder(makeFolder(5)));
    const auto before = storeBytes(store());
    const auto recovery =
        PersistenceController::protectAfterDamage(std::move(controller), u"page 3"_s, clock);
    ASSERT_TRUE(recovery);
    EXPECT_EQ(PersistentStoreRecovery::read(folder), *recovery);
    EXPECT_EQ(recovery->errorDescription, u"page 3"_s);
    const QString backup = recovery->backupDirectoryURL.toLocalFile();
    EXPECT_TRUE(storeBytes(backup + u"/OrvaneWorkspace.store"_s) == before);
    EXPECT_FALSE(QFile::exists(store()));
}

// Whatever has the marker's name keeps the project closed.
TEST(RecoveryMarker, NamesAPlaceEvenWhenItCantBeRead)
{
    struct Row {
        const char* name;
        QByteArray bytes;
        QString place; // nothing for the newest folder
    };
    const Row rows[] = {
        {"whole", R"({"backupDirectoryURL":"file:///a%20b","errorDescription":"x"})", u"/a b"_s},
        {"more keys", R"({"backupDirectoryURL":"file:///a","errorDescription":"x","z":1})",
         u"/a"_s},
        {"a bare path", R"({"backupDirectoryURL":"/a%20b","errorDescription":"x"})", u"/a%20b"_s},
        {"no description", R"({"backupDirectoryURL":"file:///a"})", {}},
        {"another kind of URL", R"({"backupDirectoryURL":"https://a","errorDescription":""})", {}},
        {"wrong type", R"({"backupDirectoryURL":1,"errorDescription":"x"})", {}},
        {"cut short", R"({"backupDirectoryURL":"file:///a)", {}},
        {"empty", "", {}},
    };
    const auto placeIn = [](const QTemporaryDir& folder) {
        const auto marker = PersistentStoreRecovery::read(folder.path());
        return marker ? marker->backupDirectoryURL.toLocalFile() : u"none"_s;
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const QTemporaryDir folder;
        EXPECT_EQ(placeIn(folder), u"none"_s);
        writeBytes(PersistentStoreRecovery::markerPath(folder.path()), row.bytes);
        const bool readable = !row.place.isEmpty();
        EXPECT_EQ(placeIn(folder), readable ? row.place : folder.path());
        for (const char* name : {"998", "1780000000", "99", "x"})
            QDir(folder.path()).mkdir(u"PersistentStoreRecovery-"_s + QLatin1String(name));
        const QString newest = folder.filePath(u"PersistentStoreRecovery-1780000000"_s);
        EXPECT_EQ(placeIn(folder), readable ? row.place : newest);
    }
    for (const char* kind : {"a folder", "a link to nothing"}) {
        SCOPED_TRACE(kind);
        const QTemporaryDir folder;
        const QString path = PersistentStoreRecovery::markerPath(folder.path());
        ASSERT_TRUE(*kind == 'a' && kind[2] == 'f' ? QDir().mkdir(path)
                                                   : QFile::link(u"none"_s, path));
        EXPECT_EQ(placeIn(folder), folder.path());
    }
    const PersistentStoreRecovery recovery{QUrl::fromLocalFile(u"/Müller & co/%41"_s), u"\"q\""_s};
    EXPECT_EQ(PersistentStoreRecovery::decoded(recovery.encoded()), recovery);
}

// The full check says what it finds, stops when its store closes, and the write-ahead log is still
// checkpointed.
TEST_F(StoreAccess, TheFullCheckRunsBesideWriting)
{
    auto controller = open();
    std::optional<StoreCheckResult> result;
    controller->checkInBackground([&](const StoreCheckResult& found) { result = found; });
    for (int i = 0; i < 20; ++i)
        ASSERT_TRUE(controller->saveNote(makeNote(100 + i, idOf(1))));
    QElapsedTimer timer;
    timer.start();
    while (!result && timer.elapsed() < 20'000)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->outcome, StoreCheckResult::Outcome::Sound);

    NotebookSnapshot large = controller->load();
    for (int i = 0; i < 3000; ++i) {
        NoteRecord note = makeNote(1000 + i, idOf(1));
        note.bodyRTF = Blob(QByteArray(20'000, char(i)));
        large.notes.append(note);
    }
    ASSERT_TRUE(controller->save(large));
    controller.reset();
    controller = open();
    bool called = false;
    controller->checkInBackground([&](const StoreCheckResult&) { called = true; });
    ASSERT_TRUE(controller->saveFolder(makeFolder(9)));
    timer.restart();
    controller.reset();
    EXPECT_LT(timer.elapsed(), 1000);
    QCoreApplication::processEvents();
    EXPECT_FALSE(called);
    EXPECT_EQ(files(), QStringList{u"OrvaneWorkspace.store"_s});
}

} // namespace
} // namespace orvane
