// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/NoteVersionHistoryStore.h"
#include "core/Records.h"
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

    bool append(Timestamp at, std::optional<QString> label = {})
    {
        return store.appendSnapshot(note, project, label, at);
    }
    QList<qint64> times()
    {
        QList<qint64> all;
        for (const auto& each : NoteVersionHistoryStore::snapshots(project, note.id))
            all.append(each.capturedAt.msecs);
        return all;
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
    const auto all = NoteVersionHistoryStore::snapshots(project, note.id);
    ASSERT_EQ(all.size(), 2);
    EXPECT_EQ(all[0].label, u"Manual Save"_s);
    EXPECT_EQ(all[0].wordCount, 3);
    EXPECT_EQ(all[0].bodyRTFBase64, u"e1xydGYxfQ=="_s);
    EXPECT_FALSE(all[1].bodyRTFBase64 || all[1].label);
    store.deleteSnapshot(all[0].id, note.id, project);
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

TEST_F(NoteVersionHistory, ADamagedFileIsSetAsideAndABrokenDiskOnlyLosesTheVersion)
{
    ASSERT_TRUE(append({1}));
    const QByteArray whole = *readFile(file);
    const QByteArray half = whole.left(whole.size() / 2);
    ASSERT_TRUE(writeFileAtomically(file, half));
    EXPECT_TRUE(times().isEmpty());
    ASSERT_TRUE(append({2}));
    EXPECT_EQ(times(), QList<qint64>{2});
    EXPECT_EQ(*readFile(file + u".damaged"_s), half);

    const QString blocked = test.folder.path() + u"/blocked"_s;
    ASSERT_TRUE(writeFileAtomically(blocked, "a file where the folder should be"));
    EXPECT_FALSE(store.appendSnapshot(note, blocked, {}, {3}));
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
