// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "platform/NotificationCenter.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

constexpr Notification<int> counted{"Test.Counted"};
constexpr Notification<NoPayload> happened{"Test.Happened"};

TEST(NotificationCenter, ObserversMayComeAndGoWhileTheyAreCalled)
{
    NotificationCenter center;
    std::vector<std::string> calls;
    NotificationCenter::Observation second;
    NotificationCenter::Observation late;
    auto first = center.observe(counted, [&](int value) {
        calls.push_back("first " + std::to_string(value));
        second = {};
        late = center.observe(counted, [&](int) { calls.push_back("late"); });
    });
    second = center.observe(counted, [&](int) { calls.push_back("second"); });
    center.post(counted, 1);
    EXPECT_EQ(calls, (std::vector<std::string>{"first 1"}));
    first = {};
    center.post(counted, 2);
    EXPECT_EQ(calls, (std::vector<std::string>{"first 1", "late"}));
}

TEST(NotificationCenter, TellsWhetherAnybodyObserves)
{
    NotificationCenter center;
    EXPECT_FALSE(center.isObserved(happened));
    {
        int count = 0;
        const auto observation = center.observe(happened, [&](const NoPayload&) { ++count; });
        EXPECT_TRUE(center.isObserved(happened));
        center.post(happened);
        EXPECT_EQ(count, 1);
    }
    EXPECT_FALSE(center.isObserved(happened));
}

} // namespace
} // namespace orvane
