// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "commands/ShortcutBindings.h"

namespace orvane {

namespace {

quint32 lookupKey(const ShortcutData& shortcut)
{
    return (shortcut.modifierFlags & KeyModifier::significant) | shortcut.keyCode;
}

} // namespace

ShortcutBindings::ShortcutBindings(const ShortcutOverrides& overrides)
{
    for (const ShortcutAction action : allShortcutActions()) {
        const ShortcutData shortcut = overrides.value(action, defaultShortcut(action));
        m_shortcuts[size_t(action)] = shortcut;
        if (!m_firstByKey.contains(lookupKey(shortcut)))
            m_firstByKey.insert(lookupKey(shortcut), action);
    }
}

bool ShortcutBindings::isOverridden(ShortcutAction action) const
{
    return shortcut(action) != defaultShortcut(action);
}

std::optional<ShortcutAction> ShortcutBindings::firstMatch(const ShortcutData& pressed) const
{
    const auto it = m_firstByKey.constFind(lookupKey(pressed));
    return it != m_firstByKey.cend() ? std::optional(*it) : std::nullopt;
}

std::optional<ShortcutAction> ShortcutBindings::conflict(ShortcutAction action,
                                                         const ShortcutData& shortcut) const
{
    for (const ShortcutAction other : allShortcutActions()) {
        if (other != action && this->shortcut(other).matches(shortcut))
            return other;
    }
    return std::nullopt;
}

} // namespace orvane
