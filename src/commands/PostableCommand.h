// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "platform/NotificationCenter.h"

namespace orvane {

/// A command of any payload as a value for tables: posted with its payload's defaults, which means
/// "whatever is active". Empty where a row of a table posts nothing.
struct PostableCommand {
    const char* name = nullptr;
    void (*post)(NotificationCenter&) = nullptr;
    bool (*isObserved)(const NotificationCenter&) = nullptr;

    explicit constexpr operator bool() const { return post != nullptr; }
};

namespace detail {
template <typename Payload>
Payload defaultPayload(const Notification<Payload>&)
{
    return {};
}
} // namespace detail

/// `postable<AppCommandEvents::newNote>()`.
template <const auto& notification>
constexpr PostableCommand postable()
{
    return {notification.name,
            [](NotificationCenter& center) {
                center.post(notification, detail::defaultPayload(notification));
            },
            [](const NotificationCenter& center) {
                return center.isObserved(notification);
            }};
}

} // namespace orvane
