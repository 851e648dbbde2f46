// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "platform/Clock.h"

#include <QTimer>

#include <map>

namespace orvane {

namespace {

class TimerDelay final : public Clock::Delay {
public:
    TimerDelay(std::chrono::milliseconds delay, std::function<void()> action)
    {
        m_timer.setSingleShot(true);
        m_timer.callOnTimeout([action = std::move(action)] {
            const auto call = action; // the action may destroy this object
            call();
        });
        m_timer.start(delay);
    }

private:
    QTimer m_timer;
};

} // namespace

Timestamp SystemClock::now() const
{
    return {QDateTime::currentMSecsSinceEpoch()};
}

std::unique_ptr<Clock::Delay> SystemClock::after(std::chrono::milliseconds delay,
                                                 std::function<void()> action)
{
    return std::make_unique<TimerDelay>(delay, std::move(action));
}

struct ManualClock::State {
    Timestamp now;
    quint64 nextSerial = 0;
    std::map<std::pair<Timestamp, quint64>, std::function<void()>> waiting;
};

class ManualClock::ManualDelay final : public Clock::Delay {
public:
    ManualDelay(std::weak_ptr<State> state, std::pair<Timestamp, quint64> key)
        : m_state(std::move(state))
        , m_key(key)
    {}
    ~ManualDelay() override
    {
        if (const auto state = m_state.lock())
            state->waiting.erase(m_key);
    }

private:
    std::weak_ptr<State> m_state;
    std::pair<Timestamp, quint64> m_key;
};

ManualClock::ManualClock(Timestamp start)
    : m_state(std::make_shared<State>())
{
    m_state->now = start;
}

ManualClock::~ManualClock() = default;

Timestamp ManualClock::now() const
{
    return m_state->now;
}

std::unique_ptr<Clock::Delay> ManualClock::after(std::chrono::milliseconds delay,
                                                 std::function<void()> action)
{
    const auto key =
        std::pair(Timestamp{m_state->now.msecs + delay.count()}, m_state->nextSerial++);
    m_state->waiting.emplace(key, std::move(action));
    return std::make_unique<ManualDelay>(m_state, key);
}

void ManualClock::advance(std::chrono::milliseconds by)
{
    const Timestamp target{m_state->now.msecs + by.count()};
    while (!m_state->waiting.empty() && m_state->waiting.begin()->first.first <= target) {
        auto node = m_state->waiting.extract(m_state->waiting.begin());
        m_state->now = std::max(m_state->now, node.key().first);
        node.mapped()();
    }
    m_state->now = target;
}

int ManualClock::pendingCount() const
{
    return int(m_state->waiting.size());
}

} // namespace orvane
