// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "commands/KeyCodes.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QStringList>
#include <QWidget>

namespace orvane {

/// Calls `visit` with every key of a keyboard, with each combination of modifiers, except those
/// that type.
template <typename Visit>
void forEachKey(Visit visit)
{
    for (quint16 code = 0; code < 128; ++code) {
        const auto key = keyOfCode(code);
        if (!key)
            continue;
        const bool types = keyCodeToCharacter(code) && *key != Qt::Key_Return;
        for (quint32 bits = 0; bits < 16; ++bits) {
            const ShortcutData pressed{code, bits << 17};
            const bool isPlain = (pressed.modifierFlags & ~KeyModifier::shift) == 0;
            if (!isPlain || !(types || *key == Qt::Key_Space))
                visit(pressed);
        }
    }
}

/// Presses the key on the widget and no other; whether it was taken.
inline bool takesKey(QWidget& widget, const ShortcutData& pressed)
{
    const Qt::KeyboardModifiers modifiers = keyboardModifiersOf(pressed.modifierFlags);
    Qt::Key key = *keyOfCode(pressed.keyCode);
    if (key == Qt::Key_Tab && modifiers.testFlag(Qt::ShiftModifier))
        key = Qt::Key_Backtab;
    QKeyEvent event(QEvent::KeyPress, key, modifiers);
    static_cast<QObject&>(widget).event(&event);
    return event.isAccepted();
}

} // namespace orvane
