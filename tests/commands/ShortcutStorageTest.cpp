// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "commands/ShortcutStorage.h"

#include "support/TestServices.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

TEST(ShortcutStorage, OverridesSurviveASave)
{
    TestServices test;
    const ShortcutOverrides overrides{
        {ShortcutAction::bold, {45, KeyModifier::control | KeyModifier::command}},
        {ShortcutAction::insertPageBreak, {123, 0}},
        {ShortcutAction::settings, {65535, 0xFFFF0000}},
    };
    ShortcutStorage::saveOverrides(test.defaults, overrides);
    EXPECT_EQ(ShortcutStorage::loadOverrides(test.defaults), overrides);
    EXPECT_EQ(test.defaults.get<QByteArray>(ShortcutStorage::defaultsKey),
              R"({"bold":{"keyCode":45,"modifierFlags":1310720},)"
              R"("insertPageBreak":{"keyCode":123,"modifierFlags":0},)"
              R"("settings":{"keyCode":65535,"modifierFlags":4294901760}})"_ba);

    int resets = 0;
    const auto observation = test.notifications.observe(ShortcutStorage::shortcutsDidReset,
                                                        [&](const NoPayload&) { ++resets; });
    ShortcutStorage::clearOverrides(test.defaults, test.notifications);
    EXPECT_FALSE(test.defaults.contains(ShortcutStorage::defaultsKey));
    EXPECT_TRUE(ShortcutStorage::loadOverrides(test.defaults).isEmpty());
    EXPECT_EQ(resets, 1);
}

TEST(ShortcutStorage, WhatCannotBeDecodedCountsAsNone)
{
    struct Row {
        const char* name;
        QByteArray data;
        qsizetype expected;
    };
    const Row rows[] = {
        {"no JSON", "bold"_ba, 0},
        {"cut short", R"({"bold":{"keyCode":11,)"_ba, 0},
        {"an array", R"([{"keyCode":11,"modifierFlags":0}])"_ba, 0},
        {"member missing", R"({"bold":{"keyCode":11},"italic":{"keyCode":1,"modifierFlags":0}})"_ba,
         0},
        {"number as text", R"({"bold":{"keyCode":"11","modifierFlags":0}})"_ba, 0},
        {"fraction", R"({"bold":{"keyCode":11.5,"modifierFlags":0}})"_ba, 0},
        {"negative", R"({"bold":{"keyCode":-1,"modifierFlags":0}})"_ba, 0},
        {"too large", R"({"bold":{"keyCode":65536,"modifierFlags":0}})"_ba, 0},
        {"unknown action beside a known one",
         R"({"sing":{"keyCode":1,"modifierFlags":0},"bold":{"keyCode":1,"modifierFlags":0}})"_ba,
         1},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        TestServices test;
        test.defaults.set(ShortcutStorage::defaultsKey, DefaultsValue(row.data));
        EXPECT_EQ(ShortcutStorage::loadOverrides(test.defaults).size(), row.expected);
    }
    TestServices test;
    test.defaults.set(ShortcutStorage::defaultsKey, DefaultsValue(u"{}"_s));
    EXPECT_TRUE(ShortcutStorage::loadOverrides(test.defaults).isEmpty());
}

} // namespace
} // namespace orvane
