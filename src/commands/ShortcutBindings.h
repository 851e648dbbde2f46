// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "commands/ShortcutStorage.h"

#include <QHash>

namespace orvane {

/// Which key every action has: its override, or its default. A value; made anew when the
/// overrides change.
class ShortcutBindings {
public:
    explicit ShortcutBindings(const ShortcutOverrides& overrides = {});

    [[nodiscard]] ShortcutData shortcut(ShortcutAction action) const
    {
        return m_shortcuts[size_t(action)];
    }
    [[nodiscard]] bool isOverridden(ShortcutAction action) const;

    /// The first action in order whose key this is.
    [[nodiscard]] std::optional<ShortcutAction> firstMatch(const ShortcutData& pressed) const;
    /// The first action other than `action` with the same key.
    [[nodiscard]] std::optional<ShortcutAction> conflict(ShortcutAction action,
                                                         const ShortcutData& shortcut) const;

private:
    std::array<ShortcutData, shortcutActionCount> m_shortcuts;
    QHash<quint32, ShortcutAction> m_firstByKey;
};

} // namespace orvane
