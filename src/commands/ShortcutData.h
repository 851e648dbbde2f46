// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QJsonObject>
#include <QString>

#include <optional>

namespace orvane {

/// The modifier bits of a stored shortcut. On this desktop Command is Ctrl, Option is Alt and
/// Control is the Super key.
namespace KeyModifier {
inline constexpr quint32 shift = 0x20000;
inline constexpr quint32 control = 0x40000;
inline constexpr quint32 option = 0x80000;
inline constexpr quint32 command = 0x100000;
inline constexpr quint32 all = shift | control | option | command;
/// Only these bits of a stored word count.
inline constexpr quint32 significant = 0xFFFF0000;
} // namespace KeyModifier

/// A key with the modifiers held, as it is stored. Key codes name places on a keyboard and are the
/// same on every desktop, see KeyCodes.h.
struct ShortcutData {
    quint16 keyCode = 0;
    quint32 modifierFlags = 0;

    bool operator==(const ShortcutData&) const = default;

    /// Whether both are pressed by the same keys.
    [[nodiscard]] bool matches(const ShortcutData& other) const
    {
        return keyCode == other.keyCode &&
               ((modifierFlags ^ other.modifierFlags) & KeyModifier::significant) == 0;
    }

    /// The modifiers as symbols in the order ⌃ ⌥ ⇧ ⌘, then the key in upper case, or its code in
    /// parentheses where it types no character: "⌥ ⌘ E", "⌘ (123)".
    [[nodiscard]] QString displayString() const;
    /// As menus and tool tips write it on this desktop: "Ctrl+Alt+E".
    [[nodiscard]] QString desktopText() const;
};

/// The held modifiers alone, in either notation: "⌃ ⌘", "Super+Ctrl".
[[nodiscard]] QString modifierDisplayString(quint32 modifierFlags);
[[nodiscard]] QString modifierDesktopText(quint32 modifierFlags);

/// The members `keyCode` and `modifierFlags`.
[[nodiscard]] QJsonObject toJson(const ShortcutData& shortcut);
/// Nothing when a member is missing, no whole number or out of range.
[[nodiscard]] std::optional<ShortcutData> shortcutDataFromJson(const QJsonValue& value);

} // namespace orvane
