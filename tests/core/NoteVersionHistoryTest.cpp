// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/NoteVersionHistoryStore.h"
#include "core/ProjectLibraryController.h"
#include "core/Records.h"
#include "support/NoDescriptors.h"
#include "support/TestServices.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

struct NoteVersionHistory : ::testing::Test {
    TestServices test;
    NoteVersionHistoryStore store{test.defaults, test.notifications};
    QString project = test.folder.path() + u"/Project"_s;
    NoteRecord note = makeNote(1, idOf(2));
    QString file = NoteVersionHistoryStore::filePath(project, note.id);

    NoteVersionHistory()
    {
        EXPECT_TRUE(
            orvane::makeFolder(ProjectLibraryController::projectDataDirectoryPath(project)));
    }
    std::expected<void, VersionHistoryError> append(Timestamp at, std::optional<QString> label = {})
    {
        return store.appendSnapshot(note, project, label, at);
    }
    QList<NoteVersionSnapshot> all()
    {
        return NoteVersionHistoryStore::snapshots(project, note.id).value();
    }
    QList<qint64> times()
    {
        QList<qint64> times;
        for (const auto& each : all())
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
    ASSERT_TRUE(store.deleteSnapshot(all[0].id, note.id, project));
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
        const auto read = NoteVersionHistoryStore::snapshots(project, note.id);
        ASSERT_FALSE(read);
        EXPECT_EQ(read.error().code, VersionHistoryError::Code::Damaged);
        EXPECT_FALSE(store.deleteSnapshot(QUuid(), note.id, project));
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
            const auto kept = each->appendSnapshot(note, project, {}, {3});
            ASSERT_FALSE(kept);
            EXPECT_EQ(kept.error().code, VersionHistoryError::Code::Unreadable);
            EXPECT_FALSE(kept.error().detail.isEmpty());
            EXPECT_FALSE(each->deleteSnapshot(QUuid(), note.id, project));
            const auto read = NoteVersionHistoryStore::snapshots(project, note.id);
            ASSERT_FALSE(read);
            EXPECT_EQ(read.error().code, VersionHistoryError::Code::Unreadable);
        }
    }
    EXPECT_EQ(*readFile(file), before);
    EXPECT_FALSE(QFile::exists(file + u".damaged"_s));
    ASSERT_TRUE(fresh.appendSnapshot(note, project, {}, {4}));
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
    const Blob away(100, std::make_shared<NoBytes>(), 1);
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
    const auto kept = store.appendSnapshot(note, gone, {}, {3});
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

} // namespace
} // namespace orvane
