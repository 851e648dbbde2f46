// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "commands/KeyCodes.h"
#include "commands/ShortcutBindings.h"

class QWidget;

namespace orvane {

/// What has the keyboard, as far as shortcuts care.
enum class KeyFocus {
    Text,      ///< a text view or text field
    Control,   ///< a control that uses Return and the arrow keys itself
    Elsewhere, ///< the Binder, a pane, nothing
    Closed,    ///< a menu, a dialog or a sheet, which keeps all keys to itself
};

/// Where a key press goes. `Pass` leaves it to the toolkit; everything else swallows it, undo and
/// redo only when there was something to do.
struct KeyRoute {
    enum class Kind { Pass, Post, Undo, Redo, CloseWindow, OpenSettings };
    Kind kind = Kind::Pass;
    PostableCommand command; ///< for `Post`
    /// Whether holding the key down does it again and again, as with moving and undoing.
    bool repeats = false;
};

/// The rules by which keys become commands, in their order:
///
/// 1. AltGr typing a character, and whatever a closed focus holds, passes.
/// 2. The keys of `KeyPlace::Always` do what they do: undo and redo, collapse and restore panes.
///    Ctrl+Comma passes: the window itself opens the settings.
/// 3. Outside text, those of `KeyPlace::Binder` walk the Binder and activate its selection, unless
///    the focused control uses them itself.
/// 4. The first action that has the key fires; in text only if it works there
///    or the text has no use for the key, else the key passes.
[[nodiscard]] KeyRoute routeKey(const KeyPress& press, KeyFocus focus,
                                const ShortcutBindings& bindings);

/// What `focusWidget` is, by its class or by what `declareKeyFocus` says of it or of a widget
/// around it.
[[nodiscard]] KeyFocus keyFocusOf(const QWidget* focusWidget);

/// Says what a widget and everything in it is, where its class doesn't tell. Before any of it gets
/// the keyboard.
void declareKeyFocus(QWidget* widget, KeyFocus focus);

} // namespace orvane
