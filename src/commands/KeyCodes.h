// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "commands/ShortcutData.h"

#include <QChar>
#include <QString>
#include <Qt>

#include <optional>

class QKeyEvent;

namespace orvane {

/// One press of a key as the toolkit reports it.
struct KeyPress {
    int key = 0; ///< a Qt::Key, 0 or Qt::Key_unknown where the toolkit has none
    Qt::KeyboardModifiers modifiers;
    QString text;
    /// The key's place as X11 and Wayland count it (the kernel's code plus 8); 0 when not known.
    quint32 scanCode = 0;
    bool isAutoRepeat = false;

    [[nodiscard]] static KeyPress of(const QKeyEvent& event);

    /// The stored form: the code of the key and the bits of Ctrl, Alt, Shift and Super. Nothing for
    /// modifier keys, dead keys and keys without a code.
    ///
    /// Letters go by what is printed on the key, so that Ctrl+A is A on every Latin layout. The row
    /// of digits goes by place where the place is known, since many layouts have digits on the
    /// shifted level only, and so does a key of a layout that isn't Latin.
    [[nodiscard]] std::optional<ShortcutData> shortcut() const;

    /// Whether the press types a character by means of AltGr, which some systems report as Ctrl
    /// and Alt together. Such a press is never a shortcut.
    [[nodiscard]] bool typesByAltGr() const;
};

[[nodiscard]] quint32 modifierFlagsOf(Qt::KeyboardModifiers modifiers);
[[nodiscard]] Qt::KeyboardModifiers keyboardModifiersOf(quint32 modifierFlags);

/// The toolkit's key for a code; nothing for a code without one.
[[nodiscard]] std::optional<Qt::Key> keyOfCode(quint16 keyCode);
/// The code of a key as it is on a keyboard without Shift; nothing for a key without one.
[[nodiscard]] std::optional<quint16> codeOfKey(int key);

/// What the key types without modifiers: letters, digits, punctuation and "↩" for Return. Nothing
/// for every other code.
[[nodiscard]] std::optional<QChar> keyCodeToCharacter(quint16 keyCode);

} // namespace orvane
