// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "commands/PostableCommand.h"
#include "commands/ShortcutData.h"

#include <QString>

#include <array>
#include <optional>

namespace orvane {

/// What can have a key of a person's choice. The order is the one in which a pressed key is
/// compared with the actions: the first that has it wins.
enum class ShortcutAction {
    newNote,
    newFolder,
    newWindow,
    newNoteFromTemplate,
    saveDocument,
    saveAsTemplate,
    exportPDF,
    exportPlainText,
    exportMarkdown,
    printDocument,
    showInFinder,
    showProjects,
    versionHistory,
    shareNote,
    closeWindow,
    settings,
    findInNote,
    findInBinder,
    projectSearch,
    insertEditLink,
    openOrvaneClipboard,
    openBrainMap,
    bold,
    italic,
    underline,
    strikethrough,
    toggleFormattingBar,
    toggleBinder,
    toggleInspector,
    focusBinder,
    heading1,
    heading2,
    heading3,
    heading4,
    heading5,
    heading6,
    colorRing,
    bulletRing,
    makeUppercase,
    makeLowercase,
    capitalize,
    toggleRuler,
    togglePageView,
    insertPageBreak,
};

inline constexpr int shortcutActionCount = 44;

/// All of them in order.
[[nodiscard]] const std::array<ShortcutAction, shortcutActionCount>& allShortcutActions();

/// The word under which it is stored: the name of the case.
[[nodiscard]] QString rawValue(ShortcutAction action);
[[nodiscard]] std::optional<ShortcutAction> shortcutActionFromRawValue(const QString& text);

/// The label of its row in the settings, translated.
[[nodiscard]] QString title(ShortcutAction action);
[[nodiscard]] ShortcutData defaultShortcut(ShortcutAction action);
/// What it posts; empty for `closeWindow` and `settings`, which act directly. `findInBinder` and
/// `projectSearch` both search the project.
[[nodiscard]] PostableCommand notification(ShortcutAction action);
/// Whether its key works while a text has the keyboard. A key of any other action is the text's.
[[nodiscard]] bool worksInText(ShortcutAction action);

} // namespace orvane
