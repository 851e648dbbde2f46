// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "platform/Clock.h"

#include <QTest>
#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace std::chrono_literals;

TEST(ManualClock, RunsDelayedCallsInOrderAtTheirOwnMoments)
{
    ManualClock clock({0});
    std::vector<std::pair<char, qint64>> ran;
    const auto note = [&](char name) {
        return [&, name] {
            ran.emplace_back(name, clock.now().msecs);
        };
    };
    const auto late = clock.after(300ms, note('c'));
    const auto first = clock.after(100ms, note('a'));
    const auto second = clock.after(100ms, note('b'));
    auto cancelled = clock.after(200ms, note('x'));
    cancelled.reset();
    clock.advance(299ms);
    EXPECT_EQ(ran, (std::vector<std::pair<char, qint64>>{{'a', 100}, {'b', 100}}));
    clock.advance(1ms);
    EXPECT_EQ(ran.back(), std::pair('c', qint64(300)));
    EXPECT_EQ(clock.pendingCount(), 0);
}

TEST(SystemClock, ADelayRunsOnceAndOneThatIsGoneNever)
{
    SystemClock clock;
    int ran = 0;
    int cancelled = 0;
    const Timestamp before = clock.now();
    auto gone = clock.after(1ms, [&] { ++cancelled; });
    gone.reset();
    std::unique_ptr<Clock::Delay> delay;
    delay = clock.after(20ms, [&] {
        ++ran;
        delay.reset(); // which destroys what is running
    });
    EXPECT_TRUE(QTest::qWaitFor([&] { return ran > 0; }, 20'000));
    EXPECT_GE(clock.now().msecs - before.msecs, 19);
    QTest::qWait(30);
    EXPECT_EQ(ran, 1);
    EXPECT_EQ(cancelled, 0);
}

struct IsoRow {
    const char* name;
    QString text;
    std::optional<qint64> msecs;
};

TEST(Timestamp, ReadsIso8601)
{
    const IsoRow rows[] = {
        {"whole seconds", QStringLiteral("1970-01-01T00:00:02Z"), 2000},
        {"fractions", QStringLiteral("1970-01-01T00:00:02.125Z"), 2125},
        {"offset", QStringLiteral("1970-01-01T01:00:00+01:00"), 0},
        {"no zone is UTC", QStringLiteral("1970-01-01T00:00:01"), 1000},
        {"date alone", QStringLiteral("1970-01-01"), std::nullopt},
        {"words", QStringLiteral("yesterday"), std::nullopt},
        {"empty", QString(), std::nullopt},
    };
    for (const IsoRow& row : rows) {
        SCOPED_TRACE(row.name);
        const auto read = fromIso8601(row.text);
        ASSERT_EQ(read.has_value(), row.msecs.has_value());
        if (read) {
            EXPECT_EQ(read->msecs, *row.msecs);
            EXPECT_EQ(fromIso8601(toIso8601(*read)), read);
        }
    }
}

} // namespace
} // namespace orvane
