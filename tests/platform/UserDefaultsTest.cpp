// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "platform/UserDefaults.h"

#include "support/NoDescriptors.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

#include <limits>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

struct UserDefaultsTest : ::testing::Test {
    QTemporaryDir folder;
    QString path = folder.path() + u"/config/defaults.json"_s;
};

TEST_F(UserDefaultsTest, EveryTypeSurvivesAndNoOtherIsTaken)
{
    const QHash<QString, DefaultsValue> values{
        {u"bool"_s, true},
        {u"zero"_s, qint64(0)},
        {u"largest"_s, std::numeric_limits<qint64>::max()},
        {u"double"_s, 1.5},
        {u"whole double"_s, 2.0},
        {u"string"_s, u"text \u2603"_s},
        {u"data"_s, QByteArray("\0\xff", 2)},
        {u"strings"_s, QStringList{u"a"_s, u""_s}},
        {u"map"_s, QJsonObject{{u"tide"_s, u"#fff"_s}}},
    };
    {
        UserDefaults defaults(path);
        for (auto it = values.begin(); it != values.end(); ++it)
            defaults.set(it.key(), it.value());
    }
    const UserDefaults read(path);
    EXPECT_EQ(read.keys().size(), values.size());
    for (auto it = values.begin(); it != values.end(); ++it)
        EXPECT_EQ(read.value(it.key()), it.value()) << it.key().toStdString();
    EXPECT_EQ(read.get<double>(u"zero"_s), 0.0);
    EXPECT_EQ(read.get<bool>(u"zero"_s), std::nullopt);
    EXPECT_EQ(read.get<qint64>(u"whole double"_s), std::nullopt);
    EXPECT_EQ(read.get<QString>(u"missing"_s, u"otherwise"_s), u"otherwise"_s);
}

TEST_F(UserDefaultsTest, AreWrittenByThemselvesAfterAWhile)
{
    UserDefaults defaults(path);
    defaults.set(u"a"_s, true);
    QCoreApplication::processEvents();
    EXPECT_FALSE(QFile::exists(path)) << "several changes make one writing";
    EXPECT_TRUE(QTest::qWaitFor([&] { return QFile::exists(path); }, 20'000));
    EXPECT_EQ(UserDefaults(path).get<bool>(u"a"_s), true);
}

TEST_F(UserDefaultsTest, WhatIsWrittenOnceIsNotWrittenOverALaterChangeOfAnother)
{
    UserDefaults one(path);
    one.set(u"a"_s, u"first"_s);
    ASSERT_TRUE(one.flush());
    UserDefaults two(path);
    two.set(u"a"_s, u"second"_s);
    ASSERT_TRUE(two.flush());
    one.set(u"b"_s, true);
    ASSERT_TRUE(one.flush());
    EXPECT_EQ(UserDefaults(path).get<QString>(u"a"_s), u"second"_s);
}

TEST_F(UserDefaultsTest, TwoProcessesKeepEachOthersKeys)
{
    UserDefaults one(path);
    UserDefaults two(path);
    one.set(u"a"_s, true);
    two.set(u"b"_s, true);
    two.set(u"c"_s, u"gone"_s);
    ASSERT_TRUE(one.flush() && two.flush());
    two.remove(u"c"_s);
    one.set(u"a"_s, false);
    ASSERT_TRUE(two.flush() && one.flush());
    const UserDefaults read(path);
    EXPECT_EQ(read.keys(), (QStringList{u"a"_s, u"b"_s}));
    EXPECT_EQ(read.get<bool>(u"a"_s), false);
}

TEST_F(UserDefaultsTest, DamagedFilesArePutAsideAndBadEntriesPassedOver)
{
    ASSERT_TRUE(makeFolder(folder.path() + u"/config"_s));
    ASSERT_TRUE(writeFileAtomically(path, "{\"a\": {\"bool\": tr"));
    {
        UserDefaults defaults(path);
        EXPECT_TRUE(defaults.keys().isEmpty());
        defaults.set(u"b"_s, true);
    }
    EXPECT_EQ(*readFile(path + u".damaged"_s), "{\"a\": {\"bool\": tr");
    ASSERT_TRUE(
        writeFileAtomically(path, R"({"a":{"bool":1},"b":{"integer":"x"},"c":{"strings":[1]},
        "d":5,"e":{"bool":true,"string":"x"},"f":{"string":"kept"}})"));
    EXPECT_EQ(UserDefaults(path).keys(), QStringList{u"f"_s});
}

TEST_F(UserDefaultsTest, SetsAsideOverNoEarlierFile)
{
    ASSERT_TRUE(makeFolder(folder.path() + u"/config"_s));
    for (const QByteArray damaged : {"one", "two", "three"}) {
        ASSERT_TRUE(writeFileAtomically(path, damaged));
        UserDefaults defaults(path);
        defaults.set(u"a"_s, true);
        ASSERT_TRUE(defaults.flush());
    }
    EXPECT_EQ(*readFile(path + u".damaged"_s), "one");
    EXPECT_EQ(*readFile(path + u".damaged-2"_s), "two");
    EXPECT_EQ(*readFile(path + u".damaged-3"_s), "three");
    EXPECT_EQ(UserDefaults(path).keys(), QStringList{u"a"_s});
}

TEST_F(UserDefaultsTest, AFileThatTurnsBadInTheMiddleOfARunLosesNothing)
{
    UserDefaults defaults(path);
    defaults.set(u"early"_s, true);
    ASSERT_TRUE(defaults.flush());
    const QByteArray whole = *readFile(path);
    {
        const NoDescriptors none;
        defaults.set(u"while the disk was away"_s, true);
        EXPECT_FALSE(defaults.flush());
    }
    EXPECT_EQ(*readFile(path), whole);
    ASSERT_TRUE(defaults.flush());
    EXPECT_EQ(UserDefaults(path).keys().size(), 2);

    ASSERT_TRUE(writeFileAtomically(path, "not settings"));
    defaults.set(u"late"_s, true);
    ASSERT_TRUE(defaults.flush());
    EXPECT_EQ(UserDefaults(path).keys(),
              (QStringList{u"early"_s, u"late"_s, u"while the disk was away"_s}));
    EXPECT_EQ(*readFile(path + u".damaged"_s), "not settings");
}

TEST_F(UserDefaultsTest, AFileThatCouldNotBeReadAtTheStartIsMergedAndACopyKept)
{
    {
        UserDefaults defaults(path);
        defaults.set(u"early"_s, true);
    }
    const QByteArray whole = *readFile(path);
    auto none = std::make_unique<NoDescriptors>();
    UserDefaults blind(path);
    none.reset();
    EXPECT_TRUE(blind.keys().isEmpty());
    blind.set(u"late"_s, true);
    ASSERT_TRUE(blind.flush());
    EXPECT_EQ(UserDefaults(path).keys(), (QStringList{u"early"_s, u"late"_s}));
    EXPECT_EQ(*readFile(path + u".damaged"_s), whole);
}

TEST_F(UserDefaultsTest, EntriesOfALaterVersionAreKept)
{
    ASSERT_TRUE(makeFolder(folder.path() + u"/config"_s));
    ASSERT_TRUE(writeFileAtomically(path, R"({"new": {"matrix": [1, 2]}, "a": {"bool": true}})"));
    UserDefaults defaults(path);
    defaults.set(u"b"_s, true);
    ASSERT_TRUE(defaults.flush());
    EXPECT_TRUE(readFile(path)->contains("matrix"));
}

TEST_F(UserDefaultsTest, RefreshTakesOverWhatAnotherProcessWrote)
{
    UserDefaults one(path);
    UserDefaults two(path);
    QStringList told;
    QObject::connect(&two, &UserDefaults::changed, [&](const QString& key) { told.append(key); });
    two.set(u"mine"_s, 2.0);
    told.clear();
    one.set(u"mine"_s, 1.0);
    one.set(u"asked"_s, 1.0);
    one.set(u"other"_s, 1.0);
    ASSERT_TRUE(one.flush());
    two.refresh({u"mine"_s, u"asked"_s, u"nowhere"_s});
    EXPECT_EQ(told, QStringList{u"asked"_s});
    EXPECT_EQ(two.get<double>(u"asked"_s), 1.0);
    EXPECT_EQ(two.get<double>(u"mine"_s), 2.0) << "what is pending wins";
    EXPECT_FALSE(two.contains(u"other"_s));
    ASSERT_TRUE(QFile::remove(path));
    two.refresh({u"asked"_s});
    EXPECT_EQ(two.get<double>(u"asked"_s), 1.0);
}

TEST_F(UserDefaultsTest, ChangesAreToldOnceAndOnlyWhenTheyAreChanges)
{
    UserDefaults defaults;
    QStringList told;
    QObject::connect(&defaults, &UserDefaults::changed,
                     [&](const QString& key) { told.append(key); });
    defaults.set(u"a"_s, 1.0);
    defaults.set(u"a"_s, 1.0);
    defaults.remove(u"b"_s);
    defaults.remove(u"a"_s);
    EXPECT_EQ(told, (QStringList{u"a"_s, u"a"_s}));
}

TEST_F(UserDefaultsTest, AFolderThatCantBeMadeIsAnErrorAndValuesStay)
{
    ASSERT_TRUE(writeFileAtomically(folder.path() + u"/config"_s, "a file"));
    UserDefaults defaults(path);
    defaults.set(u"a"_s, true);
    EXPECT_FALSE(defaults.flush());
    EXPECT_EQ(defaults.get<bool>(u"a"_s), true);
    ASSERT_TRUE(QFile::remove(folder.path() + u"/config"_s));
    EXPECT_TRUE(defaults.flush());
    EXPECT_TRUE(UserDefaults(path).contains(u"a"_s));
}

} // namespace
} // namespace orvane
