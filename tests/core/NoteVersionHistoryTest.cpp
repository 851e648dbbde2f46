// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/Records.h"
#include "core/library/ProjectLibraryController.h"
#include "core/versions/NoteVersionHistoryStore.h"
#include "support/NoDescriptors.h"
#include "support/TestServices.h"
#include "support/Versions.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <gtest/gtest.h>

#include <atomic>
#include <semaphore>
#include <thread>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

struct NoteVersionHistory : ::testing::Test {
    TestServices test;
    NoteVersionHistoryStore store{test.defaults, test.notifications};
    QString project = test.folder.path() + u"/Project"_s;
    NoteRecord note = makeNote(1, idOf(2));
    QString file = VersionFiles::filePath(project, note.id);

    NoteVersionHistory()
    {
        EXPECT_TRUE(
            orvane::makeFolder(ProjectLibraryController::projectDataDirectoryPath(project)));
    }
    std::expected<void, VersionHistoryError> append(Timestamp at, std::optional<QString> label = {})
    {
        return store.appendSnapshot(note, {project}, label, at);
    }
    QList<NoteVersionSnapshot> all() { return versionsOf(store, note.id, {project}); }
    QList<qint64> times()
    {
        QList<qint64> times;
        const auto listed = store.list(note.id, {project}).value();
        for (const auto& each : listed)
            times.append(each.capturedAt.msecs);
        return times;
    }
};

TEST_F(NoteVersionHistory, AppendsOldestFirstAndTellsWhoListens)
{
    QList<QUuid> told;
    const auto listening =
        test.notifications.observe(snapshotsDidChange, [&](const QUuid& id) { told.append(id); });
    note.body = u"one  two\nthree"_s;
    note.bodyRTF = Blob("{\\rtf1}");
    ASSERT_TRUE(append({1000}, u"Manual Save"_s));
    note.bodyRTF.reset();
    ASSERT_TRUE(append({2000}));
    const auto all = this->all();
    ASSERT_EQ(all.size(), 2);
    EXPECT_EQ(all[0].label, u"Manual Save"_s);
    EXPECT_EQ(all[0].wordCount, 3);
    EXPECT_EQ(all[0].bodyRTFBase64, u"e1xydGYxfQ=="_s);
    EXPECT_FALSE(all[1].bodyRTFBase64 || all[1].label);
    ASSERT_TRUE(store.deleteSnapshot(all[0].id, note.id, {project}));
    EXPECT_EQ(times(), QList<qint64>{2000});
    EXPECT_EQ(told.size(), 3);
}

TEST_F(NoteVersionHistory, TheMaximumDropsTheOldestAtTheNextAppend)
{
    for (int i = 1; i <= 121; ++i)
        ASSERT_TRUE(append({i}));
    EXPECT_EQ(times().size(), 120);
    EXPECT_EQ(times().first(), 2);
    maxSnapshotsSetting.write(test.defaults, 2);
    EXPECT_EQ(times().size(), 120);
    ASSERT_TRUE(append({500}));
    EXPECT_EQ(times(), (QList<qint64>{121, 500}));
}

TEST_F(NoteVersionHistory, WhatIsNoTimelineIsSetAsideAndNeverOverAnEarlierOne)
{
    const QByteArray damaged[] = {"[ { \"id\": ", "{}", "", R"([{"id":"7"}])"};
    for (int i = 0; i < int(std::size(damaged)); ++i) {
        SCOPED_TRACE(i);
        ASSERT_TRUE(append({i}));
        ASSERT_TRUE(writeFileAtomically(file, damaged[i]));
        const auto read = store.list(note.id, {project});
        ASSERT_FALSE(read);
        EXPECT_EQ(read.error().code, VersionHistoryError::Code::Damaged);
        EXPECT_FALSE(store.deleteSnapshot(QUuid(), note.id, {project}));
        EXPECT_EQ(*readFile(file), damaged[i]);
        ASSERT_TRUE(append({100 + i}));
        EXPECT_EQ(times(), QList<qint64>{100 + i});
        for (int earlier = 0; earlier <= i; ++earlier) {
            const QString suffix = earlier == 0 ? QString() : u"-%1"_s.arg(earlier + 1);
            EXPECT_EQ(*readFile(file + u".damaged"_s + suffix), damaged[earlier]);
        }
    }
}

TEST_F(NoteVersionHistory, AReadErrorLeavesTheFileAndTheNextAttemptKeepsTheVersion)
{
    ASSERT_TRUE(append({1}));
    ASSERT_TRUE(append({2}));
    const QByteArray before = *readFile(file);
    NoteVersionHistoryStore fresh(test.defaults, test.notifications);
    for (NoteVersionHistoryStore* each : {&store, &fresh}) {
        for (int again = 0; again < 3; ++again) {
            const NoDescriptors none;
            const auto kept = each->appendSnapshot(note, {project}, {}, {3});
            ASSERT_FALSE(kept);
            EXPECT_EQ(kept.error().code, VersionHistoryError::Code::Unreadable);
            EXPECT_FALSE(kept.error().detail.isEmpty());
            EXPECT_FALSE(each->deleteSnapshot(QUuid(), note.id, {project}));
            const auto read = store.list(note.id, {project});
            ASSERT_FALSE(read);
            EXPECT_EQ(read.error().code, VersionHistoryError::Code::Unreadable);
        }
    }
    EXPECT_EQ(*readFile(file), before);
    EXPECT_FALSE(QFile::exists(file + u".damaged"_s));
    ASSERT_TRUE(fresh.appendSnapshot(note, {project}, {}, {4}));
    EXPECT_EQ(times(), (QList<qint64>{1, 2, 4}));
}

TEST_F(NoteVersionHistory, NoVersionIsKeptOfWordsThatCantBeRead)
{
    struct NoBytes : BlobSource {
        std::expected<QByteArray, QString> read(qint64, qsizetype) override
        {
            return std::unexpected(u"the disk is away"_s);
        }
    };
    const Blob away(100, SharedBlobSource(new NoBytes), 1);
    const auto fails = [&] {
        const auto kept = append({1}, QString(beforeRestoreLabel));
        return !kept && kept.error().detail == u"the disk is away"_s;
    };
    const NoteRecord whole = note;
    note.body = NoteText(away);
    EXPECT_TRUE(fails());
    note = whole;
    note.bodyRTF = away;
    EXPECT_TRUE(fails());
    note = whole;
    note.richContentPayload = away;
    EXPECT_TRUE(fails());
    EXPECT_FALSE(QFile::exists(file));
}

TEST_F(NoteVersionHistory, AProjectThatIsNotThereIsNotMadeAnew)
{
    const QString gone = test.folder.path() + u"/gone"_s;
    const auto kept = store.appendSnapshot(note, {gone}, {}, {3});
    ASSERT_FALSE(kept);
    EXPECT_EQ(kept.error().code, VersionHistoryError::Code::NotWritten);
    EXPECT_FALSE(QFile::exists(gone));
}

TEST_F(NoteVersionHistory, AHistoryOfTenThousandEntriesIsReadAndTrimmedAtTheNextAppend)
{
    maxSnapshotsSetting.write(test.defaults, 10'000);
    ASSERT_TRUE(append({0}));
    const QByteArray one = *readFile(file);
    QJsonArray entries;
    const QJsonObject entry = QJsonDocument::fromJson(one).array().first().toObject();
    for (int i = 0; i < 10'000; ++i)
        entries.append(entry);
    ASSERT_TRUE(writeFileAtomically(file, QJsonDocument(entries).toJson()));
    EXPECT_EQ(times().size(), 10'000);
    maxSnapshotsSetting.write(test.defaults, 50);
    ASSERT_TRUE(append({7}));
    EXPECT_EQ(times().size(), 50);
    EXPECT_EQ(times().last(), 7);
}

TEST_F(NoteVersionHistory, SettingsOfZeroOrLessCountAsUnset)
{
    EXPECT_TRUE(store.isAutoSnapshotEnabled());
    autoSnapshotIntervalSetting.write(test.defaults, -1);
    maxSnapshotsSetting.write(test.defaults, 0);
    EXPECT_EQ(store.autoSnapshotInterval(), 300);
    EXPECT_EQ(store.maxSnapshots(), 120);
    autoSnapshotIntervalSetting.write(test.defaults, 60);
    EXPECT_EQ(store.autoSnapshotInterval(), 60);
}

TEST_F(NoteVersionHistory, AVersionIsFoundWhereItStandsNow)
{
    note.body = u"one"_s;
    ASSERT_TRUE(append({1}));
    note.body = u"two \"quoted\\\""_s;
    ASSERT_TRUE(append({2}));
    const auto listed = store.list(note.id, {project}).value();
    ASSERT_TRUE(store.deleteSnapshot(listed[0].id, note.id, {project}));
    const auto moved = VersionFiles::read(project, listed[1]);
    ASSERT_TRUE(moved);
    EXPECT_EQ(moved->bodyPlain, u"two \"quoted\\\""_s);
    const auto gone = VersionFiles::read(project, listed[0]);
    ASSERT_FALSE(gone);
    EXPECT_EQ(gone.error().code, VersionHistoryError::Code::Missing);
    ASSERT_TRUE(QFile::remove(file));
    EXPECT_EQ(VersionFiles::read(project, listed[1]).error().code,
              VersionHistoryError::Code::Missing);
}

/// A disk that takes nothing until it is told to go on, and may fail then.
struct SlowDisk {
    std::binary_semaphore mayGoOn{0};
    std::atomic<bool> isOpen = false;
    std::atomic<bool> isFull = false;
    std::atomic<int> writes = 0;

    VersionFiles::Write write()
    {
        return
            [this](const QString& path, const QByteArray& bytes) -> std::expected<void, FileError> {
                if (!isOpen)
                    mayGoOn.acquire();
                ++writes;
                if (isFull)
                    return std::unexpected(FileError{FileError::Code::NoSpace, path, u"full"_s});
                return writeFileAtomically(path, bytes);
            };
    }
    /// From now on everything is taken at once.
    void open()
    {
        isOpen = true;
        mayGoOn.release();
    }
};

struct PendingVersions : NoteVersionHistory {
    SlowDisk disk;
    std::unique_ptr<NoteVersionHistoryStore> slow =
        std::make_unique<NoteVersionHistoryStore>(test.defaults, test.notifications, disk.write());
    QList<qint64> kept;
    QList<QString> failures;

    void appendLater(Timestamp at, const HistoryPlace& place)
    {
        slow->appendSnapshotLater(note, place, {}, at, [this, at](const auto& outcome) {
            if (outcome)
                kept.append(at.msecs);
            else
                failures.append(outcome.error().detail);
        });
    }
    void appendLater(Timestamp at) { appendLater(at, {project}); }
};

TEST_F(PendingVersions, AreWrittenInTheirOrderWhileTheCallerGoesOn)
{
    QList<QUuid> told;
    const auto listening =
        test.notifications.observe(snapshotsDidChange, [&](const QUuid& id) { told.append(id); });
    for (int i = 1; i <= 5; ++i) {
        note.body = QString::number(i);
        appendLater({i});
    }
    EXPECT_EQ(disk.writes, 0);
    EXPECT_TRUE(slow->isPending(note.id));
    EXPECT_FALSE(slow->isPending(idOf(99)));
    QList<qint64> listed;
    slow->listLater(note.id, {project}, [&](const auto& versions) {
        for (const auto& each : versions.value())
            listed.append(each.capturedAt.msecs);
    });
    disk.open();
    EXPECT_TRUE(slow->appendSnapshot(note, {project}, {}, {6}));
    EXPECT_EQ(kept, (QList<qint64>{1, 2, 3, 4, 5}));
    EXPECT_EQ(listed, kept) << "what is asked in between sees what came before";
    EXPECT_EQ(times(), (QList<qint64>{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(all().at(2).bodyPlain, u"3"_s);
    EXPECT_EQ(told.size(), 6);
    EXPECT_FALSE(slow->isPending(note.id));
}

TEST_F(PendingVersions, TellByTheEventLoopWhereNobodyWaits)
{
    disk.open();
    appendLater({1});
    QElapsedTimer clock;
    clock.start();
    while (kept.isEmpty() && clock.elapsed() < 20'000)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    EXPECT_EQ(kept, QList<qint64>{1});
}

TEST_F(PendingVersions, AreWaitedFor)
{
    struct Row {
        const char* name;
        std::function<void()> wait;
    };
    const Row rows[] = {
        {"by waiting for the note",
         [&] {
             slow->waitFor({note.id});
         }},
        {"by waiting for all",
         [&] {
             slow->waitForAll();
         }},
        {"by a list",
         [&] {
             EXPECT_FALSE(slow->list(note.id, {project})->isEmpty());
         }},
        {"by a deletion",
         [&] {
             EXPECT_TRUE(slow->deleteSnapshot(QUuid(), note.id, {project}));
         }},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        disk.isOpen = false;
        kept.clear();
        appendLater({1});
        std::thread later([&] { disk.open(); });
        row.wait();
        EXPECT_EQ(kept.size(), 1);
        later.join();
        while (disk.mayGoOn.try_acquire()) {
        }
    }
    disk.isOpen = false;
    appendLater({2});
    std::thread later([&] { disk.open(); });
    slow.reset();
    EXPECT_EQ(times().last(), 2) << "by the end of the store";
    later.join();
}

TEST_F(PendingVersions, TellAFailureAndTheNextOneIsKept)
{
    disk.isFull = true;
    disk.open();
    appendLater({1});
    slow->waitForAll();
    ASSERT_EQ(failures.size(), 1);
    EXPECT_TRUE(failures.first().endsWith(u"full"_s));
    EXPECT_EQ(slow->appendSnapshot(note, {project}, {}, {2}).error().code,
              VersionHistoryError::Code::NotWritten);
    EXPECT_TRUE(times().isEmpty());
    disk.isFull = false;
    appendLater({3});
    slow->waitForAll();
    EXPECT_EQ(kept, QList<qint64>{3});
    EXPECT_EQ(times(), QList<qint64>{3});
}

TEST_F(PendingVersions, GoWhereTheirProjectGoes)
{
    auto handle = FolderHandle::open(project);
    ASSERT_TRUE(handle);
    const QString path = (*handle)->path();
    appendLater({1}, {path, *std::move(handle)});
    handle = nullptr;
    const QString elsewhere = test.folder.path() + u"/Elsewhere"_s;
    ASSERT_TRUE(QFile::rename(project, elsewhere));
    disk.open();
    slow->waitForAll();
    EXPECT_EQ(kept, QList<qint64>{1});
    EXPECT_FALSE(QFile::exists(project));
    project = elsewhere;
    EXPECT_EQ(times(), QList<qint64>{1});
}

TEST_F(PendingVersions, WhoIsToldMayAskForMore)
{
    disk.open();
    int told = 0;
    const auto listening = test.notifications.observe(snapshotsDidChange, [&](const QUuid&) {
        if (++told == 1) {
            EXPECT_TRUE(slow->appendSnapshot(note, {project}, {}, {3}));
        }
    });
    appendLater({1});
    appendLater({2});
    slow->waitForAll();
    EXPECT_EQ(told, 3);
    EXPECT_EQ(times(), (QList<qint64>{1, 2, 3}));
}

} // namespace
} // namespace orvane
