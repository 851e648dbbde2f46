// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "shell/commands/CommandCenter.h"

class QMenu;
class QWidget;

namespace orvane {

/// A plain text as a menu or a button shows it: "&" marks a mnemonic there.
[[nodiscard]] QString menuText(QString plain);

/// A menu of the command table. Each time it opens, it shows the commands that this program has,
/// with their keys as they are then, enabled where they would act. The keys are texts only:
/// `ShortcutCenter` sees them first.
[[nodiscard]] QMenu* makeCommandMenu(CommandMenu menu, CommandCenter& commands, QWidget* parent);

/// Whether a menu would show anything.
[[nodiscard]] bool hasCommands(CommandMenu menu, const CommandCenter& commands);

/// All menus in one, as the button at the end of the toolbar opens it; menus without a command
/// are left out.
[[nodiscard]] QMenu* makeApplicationMenu(CommandCenter& commands, QWidget* parent);

} // namespace orvane
