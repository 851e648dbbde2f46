// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "commands/ShortcutBindings.h"

namespace orvane {

/// What common Linux desktops do with this key themselves, as a sentence for the row of a shortcut
/// ("Many desktops open a terminal with Ctrl+Alt+T."); nothing where none is known to take it. A
/// desktop that takes a key keeps it from reaching any program.
[[nodiscard]] std::optional<QString> desktopReservation(const ShortcutData& shortcut);

/// A key to offer for `action`: the same key with other modifiers, neither taken by an action nor
/// by a desktop nor by what texts do everywhere. Nothing when all are.
[[nodiscard]] std::optional<ShortcutData> freeShortcut(ShortcutAction action,
                                                       const ShortcutBindings& bindings);

} // namespace orvane
