// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "platform/Timestamp.h"

#include <chrono>
#include <functional>
#include <memory>

namespace orvane {

/// The one source of time and of delays. Main thread; only `now` may be asked on any.
class Clock {
public:
    /// Keeps a delayed call alive; destroying it cancels the call if it has not run.
    class Delay {
    public:
        virtual ~Delay() = default;
    };

    virtual ~Clock() = default;

    [[nodiscard]] virtual Timestamp now() const = 0;

    /// Calls `action` once on the main thread when `delay` has passed, unless the returned handle
    /// is destroyed first. `action` may destroy the handle.
    [[nodiscard]] virtual std::unique_ptr<Delay> after(std::chrono::milliseconds delay,
                                                       std::function<void()> action) = 0;
};

/// The machine's clock and the event loop's timers.
class SystemClock final : public Clock {
public:
    [[nodiscard]] Timestamp now() const override;
    [[nodiscard]] std::unique_ptr<Delay> after(std::chrono::milliseconds delay,
                                               std::function<void()> action) override;
};

/// A clock that stands still until it is told to move; delayed calls run inside `advance`, each
/// at its own moment, earliest first. For tests and for pictures that must not change.
class ManualClock final : public Clock {
public:
    explicit ManualClock(Timestamp start = {1'780'000'000'000});
    ~ManualClock() override;

    [[nodiscard]] Timestamp now() const override;
    [[nodiscard]] std::unique_ptr<Delay> after(std::chrono::milliseconds delay,
                                               std::function<void()> action) override;
    void advance(std::chrono::milliseconds by);
    /// How many delayed calls wait.
    [[nodiscard]] int pendingCount() const;

private:
    struct State;
    class ManualDelay;
    std::shared_ptr<State> m_state;
};

} // namespace orvane
