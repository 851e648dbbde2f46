// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace

// What happens to an open store when other programs rename, replace and remove files under it.

#include "core/StoreFixture.h"
#include "core/store/ProjectLock.h"
#include "core/store/StoreReader.h"

#include <SQLiteCpp/Database.h>
#include <functional>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

using IfMissing = PersistenceController::IfMissing;

/// Bytes that can't be read until told.
class UnreadableSource final : public BlobSource {
public:
    bool broken = true;

    std::expected<QByteArray, QString> read(qint64, qsizetype size) override
    {
        if (broken)
            return std::unexpected(u"the device doesn't answer"_s);
        return QByteArray(size, 'r');
    }
};

class StorePlace : public StoreFixture {
protected:
    NotebookSnapshot saved{{makeFolder(1)}, {makeNote(2, idOf(1)), makeNote(3, idOf(1))}, {}};
    std::unique_ptr<PersistenceController> controller;

    void SetUp() override
    {
        ASSERT_TRUE(open()->save(saved));
        controller = open();
    }
    /// The note with another body, larger than a page.
    static Shared<NoteRecord> changed(int number, const QString& word)
    {
        NoteRecord note = makeNote(number, idOf(1));
        note.body = word.repeated(2000);
        return note;
    }
    static QString bodyIn(const NotebookSnapshot& snapshot, int number)
    {
        for (const auto& note : snapshot.notes) {
            if (note->id == idOf(number))
                return note->body.readOrNothing();
        }
        return {};
    }
    static bool holds(const NotebookSnapshot& snapshot, const Shared<NoteRecord>& note)
    {
        return bodyIn(snapshot, note->id == idOf(2) ? 2 : 3) == note->body.readOrNothing();
    }
    QStringList everythingBelow(const QString& path) const
    {
        return QDir(path).entryList(QDir::AllEntries | QDir::Hidden | QDir::System |
                                    QDir::NoDotAndDotDot);
    }
    void putAnotherStore()
    {
        const QString other = temporary.filePath(u"other"_s);
        const auto foreign = *PersistenceController::open(other, clock);
        ASSERT_TRUE(foreign->save({{makeFolder(1)}, {makeNote(9, idOf(1))}, {}}));
        ASSERT_TRUE(foreign->writeCopy(folder + u"/arriving"_s));
        ASSERT_EQ(::rename(qPrintable(folder + u"/arriving"_s), qPrintable(store())), 0);
    }
};

TEST_F(StorePlace, AFolderThatMovesIsFollowed)
{
    const QString elsewhere = temporary.filePath(u"deeper/down"_s);
    ASSERT_TRUE(controller->saveNote(changed(2, u"before "_s)));
    ASSERT_TRUE(QDir().mkpath(temporary.filePath(u"deeper"_s)));
    ASSERT_TRUE(QDir().rename(folder, elsewhere));
    for (int i = 0; i < 3; ++i)
        ASSERT_TRUE(controller->saveNote(changed(3, u"word %1 "_s.arg(i).repeated(500))));
    EXPECT_EQ(controller->storageDirectory(), elsewhere);
    EXPECT_EQ(controller->storePath(), elsewhere + u"/OrvaneWorkspace.store"_s);
    controller.reset();
    EXPECT_FALSE(QFile::exists(folder)) << "nothing is made at the old place";
    EXPECT_EQ(everythingBelow(elsewhere), QStringList{u"OrvaneWorkspace.store"_s});

    folder = elsewhere;
    controller = open();
    EXPECT_TRUE(holds(controller->load(), changed(2, u"before "_s)));
    EXPECT_TRUE(holds(controller->load(), changed(3, u"word 2 "_s.repeated(500))));
}

TEST_F(StorePlace, AMarkerAndARefusalNameThePlaceThatAPersonKnows)
{
    const QString backup = folder + u"/PersistentStoreRecovery-1780000000"_s;
    {
        const auto refused = PersistenceController::open(folder, clock);
        ASSERT_FALSE(refused);
        EXPECT_EQ(refused.error().path, ProjectLock::pathIn(folder));
    }
    controller.reset();
    writeBytes(store(), "damaged");
    EXPECT_EQ(open()->persistentStoreRecovery()->backupDirectoryURL.toLocalFile(), backup);
    EXPECT_EQ(PersistentStoreRecovery::read(folder)->backupDirectoryURL.toLocalFile(), backup);
    EXPECT_EQ(bytesOf(backup + u"/OrvaneWorkspace.store"_s), "damaged");
}

// A store that isn't in its place: nothing is written to what stands there, nothing is called
// saved, and when it is back everything follows.
TEST_F(StorePlace, AStoreThatIsNotInItsPlaceIsNotSavedTo)
{
    const QString aside = temporary.filePath(u"aside"_s);
    struct Row {
        const char* name;
        StoreError::Code code;
        std::function<void()> takeAway;
    };
    const Row rows[] = {
        {"replaced", StoreError::Code::Replaced,
         [&] {
             putAnotherStore();
         }},
        {"replaced by words", StoreError::Code::Replaced,
         [&] {
             writeBytes(store(), "words");
         }},
        {"removed", StoreError::Code::Missing,
         [] {
         }},
        {"link to nothing", StoreError::Code::Missing,
         [&] {
             QFile::link(u"none"_s, store());
         }},
    };
    for (const bool withWal : {false, true}) {
        for (const Row& row : rows) {
            SCOPED_TRACE(row.name + std::string(withWal ? ", write-ahead log in use" : ""));
            controller.reset();
            QDir(folder).removeRecursively();
            ASSERT_TRUE(open()->save(saved));
            controller = open();
            const auto before = changed(2, withWal ? u"before "_s : u"b"_s);
            if (withWal) {
                ASSERT_TRUE(controller->saveNote(before));
            }
            ASSERT_TRUE(QDir().rename(store(), aside));
            row.takeAway();
            const QByteArray theirs = bytesOf(store());

            const auto words = changed(3, u"not on any disk "_s);
            const auto refused = controller->saveNote(words);
            ASSERT_FALSE(refused);
            EXPECT_EQ(refused.error().code, row.code);
            EXPECT_EQ(controller->saveAgain().error().code, row.code);
            EXPECT_TRUE(controller->hasUnsaved());
            EXPECT_EQ(controller->unsavedNotes(), QList{words});
            EXPECT_TRUE(controller->unsavedFolders().isEmpty());
            EXPECT_EQ(bytesOf(store()), theirs);

            const QString copy = temporary.filePath(u"copy.store"_s);
            ASSERT_TRUE(controller->writeCopy(copy)) << "of what has no name any more";
            const auto mine = PersistenceController::readOnlyCopy(copy);
            ASSERT_TRUE(mine);
            EXPECT_TRUE(holds(*mine, words));
            EXPECT_EQ(holds(*mine, before), withWal);
            EXPECT_FALSE(controller->writeCopy(copy)) << "where something stands";
            QFile::remove(copy);

            if (row.takeAway && row.code == StoreError::Code::Replaced && !withWal) {
                controller->discardUnsaved();
                EXPECT_FALSE(controller->hasUnsaved());
                controller.reset();
                EXPECT_EQ(bytesOf(store()), theirs) << "closing leaves it alone";
                QFile::remove(aside);
                continue;
            }
            ASSERT_EQ(::rename(qPrintable(aside), qPrintable(store())), 0);
            ASSERT_TRUE(controller->saveAgain());
            EXPECT_FALSE(controller->hasUnsaved());
            controller.reset();
            controller = open();
            const NotebookSnapshot found = controller->load();
            EXPECT_TRUE(holds(found, words));
            EXPECT_EQ(holds(found, before), withWal);
        }
    }
}

TEST_F(StorePlace, ClosingLeavesAnotherStoreAndNoWriteAheadLogOfOursBesideIt)
{
    for (const bool savedSince : {false, true}) {
        SCOPED_TRACE(savedSince);
        if (!controller)
            controller = open();
        ASSERT_TRUE(controller->saveNote(changed(2, u"mine "_s)));
        putAnotherStore();
        const QByteArray theirs = bytesOf(store());
        if (savedSince) {
            EXPECT_FALSE(controller->saveNote(changed(3, u"mine "_s)));
        }
        controller.reset();
        EXPECT_EQ(bytesOf(store()), theirs);
        EXPECT_FALSE(QFile::exists(wal())) << "it would be taken for theirs";
        EXPECT_EQ(open()->load().notes.first()->id, idOf(9));
    }
    EXPECT_EQ(QDir(folder).entryList({u"*-wal.aside-*"_s}).size(), 2);
}

TEST_F(StorePlace, AVanishedFolderIsMissing)
{
    ASSERT_TRUE(QDir(folder).removeRecursively());
    const auto refused = controller->saveNote(changed(2, u"w"_s));
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().code, StoreError::Code::Missing);
    controller.reset();
    EXPECT_FALSE(QFile::exists(folder));
}

// The write-ahead log alone: what was acknowledged is in the connection's hands, and goes back.
TEST_F(StorePlace, AWriteAheadLogThatIsTakenAwayIsWrittenAnew)
{
    struct Row {
        const char* name;
        std::function<void()> disturb;
        int setAside;
    };
    const Row rows[] = {
        {"removed", [&] { QFile::remove(wal()); }, 0},
        {"removed with its index",
         [&] {
             QFile::remove(wal());
             QFile::remove(persistentStoreFiles(store()).at(2));
         },
         0},
        {"another in its place",
         [&] {
             QFile::remove(wal());
             writeBytes(wal(), QByteArray(9000, 'j'));
         },
         1},
    };
    for (const Row& row : rows) {
        for (const bool thenACrash : {false, true}) {
            SCOPED_TRACE(row.name + std::string(thenACrash ? ", then a crash" : ""));
            controller.reset();
            QDir(folder).removeRecursively();
            ASSERT_TRUE(open()->save(saved));
            controller = open();
            ASSERT_TRUE(controller->saveNote(changed(2, u"before "_s)));
            row.disturb();
            const auto unread = controller->load();
            ASSERT_TRUE(controller->saveNote(changed(3, u"after "_s)));
            ASSERT_TRUE(controller->saveFolder(makeFolder(4)));
            EXPECT_TRUE(holds(unread, changed(2, u"before "_s))) << "through the new connection";
            const auto crashed = storeBytes(store());
            controller.reset();
            EXPECT_EQ(QDir(folder).entryList({u"*aside*"_s}).size(), row.setAside);
            if (thenACrash) {
                for (auto file = crashed.cbegin(); file != crashed.cend(); ++file)
                    writeBytes(folder + u'/' + file.key(), *file);
            }
            controller = open();
            ASSERT_FALSE(controller->persistentStoreRecovery());
            const NotebookSnapshot found = controller->load();
            EXPECT_TRUE(holds(found, changed(2, u"before "_s)));
            EXPECT_TRUE(holds(found, changed(3, u"after "_s)));
            EXPECT_EQ(found.folders.size(), 2);
        }
    }
}

TEST_F(StorePlace, WhatIsUnsavedIsToldExactly)
{
    const NotebookSnapshot stored = controller->load();
    {
        const FullDisk full(QFileInfo(wal()).size());
        const auto words = changed(2, u"words "_s);
        ASSERT_FALSE(controller->saveNote(words));
        EXPECT_EQ(controller->unsavedNotes(), QList{words});
        NotebookSnapshot whole = stored;
        whole.notes.removeLast();
        ASSERT_FALSE(controller->save(whole));
        EXPECT_TRUE(controller->unsavedNotes().isEmpty());
        EXPECT_TRUE(controller->hasUnsaved()) << "a note is to be removed";
        whole = stored;
        whole.folders.append(makeFolder(4));
        ASSERT_FALSE(controller->save(whole));
        EXPECT_EQ(controller->unsavedFolders(), QList<Shared<FolderRecord>>{makeFolder(4)});
        ASSERT_FALSE(controller->saveLayout(BinderLayoutSnapshot{{}, {}, {idOf(1)}}));
        controller->discardUnsaved();
        EXPECT_FALSE(controller->hasUnsaved());
    }
    controller.reset();
    controller = open();
    EXPECT_EQ(controller->load().notes.size(), 2);
    EXPECT_FALSE(controller->load().binderLayout);
}

// A record with bytes that can't be read, or that is too big, waits alone, and no save succeeds
// until it is stored.
TEST_F(StorePlace, ARecordThatCantBeStoredWaitsAlone)
{
    auto* const source = new UnreadableSource;
    const SharedBlobSource held(source);
    const auto with = [&](const NoteRecord& note) {
        NoteRecord record = note;
        record.title = u"with an attachment"_s;
        record.richContentPayload = Blob(5000, held, 1);
        return Shared<NoteRecord>(record);
    };
    const auto existing = with(makeNote(2, idOf(1)));
    const auto fresh = with(makeNote(4, idOf(1)));
    NotebookSnapshot whole = saved;
    whole.notes = {existing, changed(3, u"beside "_s), fresh};
    const auto refused = controller->save(whole);
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().code, StoreError::Code::Unread);
    EXPECT_EQ(controller->unsavedNotes().size(), 2);

    const auto again = controller->saveFolder(makeFolder(5));
    ASSERT_FALSE(again) << "while something is pending";
    EXPECT_EQ(again.error().code, StoreError::Code::Unread);
    EXPECT_TRUE(controller->unsavedFolders().isEmpty()) << "the folder is stored";
    {
        const QString copy = temporary.filePath(u"copy.store"_s);
        ASSERT_TRUE(controller->writeCopy(copy));
        const auto stored = PersistenceController::readOnlyCopy(copy);
        ASSERT_TRUE(stored);
        EXPECT_EQ(stored->notes.size(), 2);
        EXPECT_EQ(stored->folders.size(), 2);
        EXPECT_TRUE(holds(*stored, changed(3, u"beside "_s)));
        EXPECT_EQ(bodyIn(*stored, 2), u"Body of note 2"_s);
    }
    source->broken = false;
    ASSERT_TRUE(controller->saveAgain());
    controller.reset();
    controller = open();
    const NotebookSnapshot found = controller->load();
    EXPECT_EQ(found.notes.size(), 3);
    for (const auto& note : found.notes) {
        if (note->id != idOf(3)) {
            EXPECT_EQ(note->richContentPayload->readOrNothing(), QByteArray(5000, 'r'));
        }
    }

    NoteRecord huge = makeNote(6, idOf(1));
    huge.shapesPayload = Blob(1'000'000'000, held, 2);
    EXPECT_EQ(controller->saveNote(huge).error().code, StoreError::Code::TooBig);
    EXPECT_EQ(controller->saveNote(changed(2, u"other "_s)).error().code, StoreError::Code::TooBig);
    huge.shapesPayload.reset();
    EXPECT_TRUE(controller->saveNote(huge));
}

TEST_F(StorePlace, ACopyReadsAForeignStoreWithItsWriteAheadLogAndTouchesNothing)
{
    ASSERT_TRUE(controller->saveNote(changed(2, u"in the write-ahead log "_s)));
    const QString foreign = temporary.filePath(u"foreign"_s);
    ASSERT_TRUE(QDir().mkpath(foreign));
    const QString path = foreign + u"/OrvaneWorkspace.store"_s;
    const auto bytes = storeBytes(store());
    controller.reset();
    for (auto file = bytes.cbegin(); file != bytes.cend(); ++file)
        writeBytes(foreign + u'/' + file.key(), *file);
    const auto read = PersistenceController::readOnlyCopy(path);
    ASSERT_TRUE(read);
    EXPECT_TRUE(holds(*read, changed(2, u"in the write-ahead log "_s)));
    EXPECT_TRUE(storeBytes(path) == bytes);
    EXPECT_EQ(everythingBelow(foreign).size(), 2);

    writeBytes(path, "damaged");
    EXPECT_EQ(PersistenceController::readOnlyCopy(path).error().code,
              StoreOpenError::Code::Unreadable);
    EXPECT_EQ(PersistenceController::readOnlyCopy(foreign).error().code,
              StoreOpenError::Code::Unreadable);
    QFile::remove(path);
    EXPECT_EQ(PersistenceController::readOnlyCopy(path).error().code,
              StoreOpenError::Code::Missing);
}

// Where no store is, none is made unless that is asked for, and never in a link's place.
TEST_F(StorePlace, AMissingStoreIsRefused)
{
    struct Row {
        const char* name;
        IfMissing ifMissing;
        std::function<void()> arrange;
    };
    const Row rows[] = {
        {"store deleted", IfMissing::Refuse,
         [&] {
             QFile::remove(store());
         }},
        {"data folder gone", IfMissing::Refuse,
         [&] {
             QDir(folder).removeRecursively();
         }},
        {"link to nothing", IfMissing::Create,
         [&] {
             QFile::remove(store());
             QFile::link(u"nothing"_s, store());
         }},
        {"link in a circle", IfMissing::Create,
         [&] {
             QFile::remove(store());
             QFile::link(store(), store());
         }},
        {"the data folder is a link to nothing", IfMissing::Refuse,
         [&] {
             QDir(folder).removeRecursively();
             QFile::link(u"nothing"_s, folder);
         }},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        controller.reset();
        QFile::remove(folder);
        QDir(folder).removeRecursively();
        ASSERT_TRUE(open()->save(saved));
        writeBytes(folder + u"/beside"_s, "kept");
        row.arrange();
        const auto before = everythingBelow(folder);
        const bool linked = QFileInfo(store()).isSymLink();
        const auto refused =
            PersistenceController::open(folder, clock, {.ifMissing = row.ifMissing});
        ASSERT_FALSE(refused);
        EXPECT_EQ(refused.error().code, StoreOpenError::Code::Missing);
        EXPECT_TRUE(refused.error().path.startsWith(folder)) << qPrintable(refused.error().path);
        EXPECT_EQ(everythingBelow(folder), before);
        EXPECT_EQ(QFileInfo(store()).isSymLink(), linked);
    }
}

// A link to a store elsewhere: it is read and written there, and the link stays a link.
TEST_F(StorePlace, AStoreBehindALinkStaysThere)
{
    const QString elsewhere = temporary.filePath(u"elsewhere"_s);
    controller.reset();
    ASSERT_TRUE(QDir().mkpath(elsewhere));
    const QString target = elsewhere + u"/real.store"_s;
    ASSERT_TRUE(QDir().rename(store(), target));
    ASSERT_TRUE(QFile::link(u"../elsewhere/real.store"_s, store()));
    controller = open({.ifMissing = IfMissing::Refuse});
    ASSERT_TRUE(controller->saveNote(changed(2, u"through the link "_s)));
    EXPECT_GT(QFileInfo(target + u"-wal"_s).size(), 0) << "its write-ahead log is beside the file";
    controller.reset();
    EXPECT_TRUE(QFileInfo(store()).isSymLink());
    EXPECT_EQ(everythingBelow(elsewhere), QStringList{u"real.store"_s});
    EXPECT_TRUE(holds(open()->load(), changed(2, u"through the link "_s)));

    writeBytes(target, "damaged");
    const auto refused = PersistenceController::open(folder, clock);
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().code, StoreOpenError::Code::RecoveryFailed);
    EXPECT_EQ(bytesOf(target), "damaged");
    EXPECT_TRUE(QFileInfo(store()).isSymLink());
    EXPECT_FALSE(PersistentStoreRecovery::read(folder));
}

} // namespace
} // namespace orvane
