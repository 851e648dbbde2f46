// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <condition_variable>
#include <mutex>
#include <utility>

namespace orvane {

/// A value that several threads share. It is reached under its lock alone, through a function that
/// is lent it, so that reading it without the lock doesn't compile. Any thread.
template <typename T>
class Guarded {
public:
    /// What `use` makes of the value. Whoever waits for a condition then looks at it again.
    template <typename Use>
    decltype(auto) with(Use&& use)
    {
        const Notifier notifier{m_changed};
        const std::lock_guard lock(m_mutex);
        return std::forward<Use>(use)(m_value);
    }

    /// Waits until `condition` holds of the value, and uses it under the same lock.
    template <typename Condition, typename Use>
    decltype(auto) when(Condition&& condition, Use&& use)
    {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [&] { return condition(std::as_const(m_value)); });
        return std::forward<Use>(use)(m_value);
    }

private:
    /// Goes after the lock does.
    struct Notifier {
        std::condition_variable& changed;
        ~Notifier() { changed.notify_all(); }
    };

    std::mutex m_mutex;
    std::condition_variable m_changed;
    T m_value{};
};

} // namespace orvane
