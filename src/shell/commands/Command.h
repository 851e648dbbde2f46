// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "commands/KeyTable.h"
#include "commands/ShortcutAction.h"
#include "platform/UserDefaults.h"

#include <QString>

#include <optional>
#include <span>
#include <vector>

namespace orvane {

enum class CommandMenu { File, Edit, Format, Insert, View, Note, Window, Help };
inline constexpr int commandMenuCount = 8;

/// What the program does itself instead of posting a notification.
enum class DirectCommand {
    None,
    Undo,
    Redo,
    Cut,
    Copy,
    Paste,
    PastePlain,
    SelectAll,
    CommandPalette,
    NextPane,
    PreviousPane,
    CloseWindow,
    Minimize,
    FullScreen,
    ToggleFocusMode,
    FocusParagraph,
    FocusSentence,
    ToggleTypewriterMode,
    Quit,
    Guide,
    About,
    MoveTo,
    ShowDetails,
    ShowVersions,
};
inline constexpr int directCommandCount = 24;

/// What must be there for a command to act.
enum class CommandNeed {
    Nothing,
    Project,         ///< a project on the screen
    WritableProject, ///< one that may be changed now
    Note,            ///< a selected note
    WritableNote,
    FormattableNote, ///< one that is written as rich text, or offers to be
    RichNote,        ///< a selected note that is written as rich text and may be changed
    Table,           ///< the caret in a table of such a note
    Back,            ///< a note to go back to
    Forward,         ///< and one to go forward to
};

/// What there is, as a value.
struct CommandContext {
    bool showsProject = false;
    bool mayWrite = false;
    bool hasNote = false;
    bool canGoBack = false;
    bool canGoForward = false;
    bool writesRichText = false;    ///< the selected note is written so
    bool mayHaveFormatting = false; ///< it is, or as plain text, which offers to become rich
    bool showsBinder = false;
    bool showsInspector = false;
    bool showsVersions = false; ///< in the Inspector, in place of the details
    bool isInTable = false;     ///< the caret is in a cell
};

[[nodiscard]] bool isMet(CommandNeed need, const CommandContext& context);

/// Whether the command palette lists a command; those that act on a selection of text in place
/// are better known by their keys.
enum class PaletteListing { Listed, Unlisted };

/// One command: a row of the table from which menus, palette and the texts of keys are made.
struct Command {
    QString id;                             ///< unique; the action's raw value where it has one
    const char* title = nullptr;            ///< see `commandTitle`
    std::optional<ShortcutAction> action{}; ///< whose key it has
    std::optional<FixedKey> fixedKey{};     ///< its key where it has no action
    PostableCommand notification{};
    DirectCommand direct = DirectCommand::None;
    CommandNeed need = CommandNeed::Nothing;
    PaletteListing palette = PaletteListing::Listed;
    /// For what is on or off, or is one of several choices: whether it is on now. Its item in a
    /// menu carries a mark then.
    bool (*isOn)(const UserDefaults& defaults, const CommandContext& context) = nullptr;
};

/// Commands that stand together in a menu, or in a menu inside it.
struct CommandSection {
    CommandMenu menu;
    const char* submenu = nullptr; ///< see `submenuTitle`; none for the menu itself
    std::vector<Command> commands;
};

/// All sections, in the order of the menus. A line parts two sections of a menu, except two
/// submenus.
[[nodiscard]] std::span<const CommandSection> commandSections();

/// All commands in the same order; the pointers stay valid.
[[nodiscard]] const std::vector<const Command*>& allCommands();

/// The title, translated; that of the action or of the fixed key where the command has none of its
/// own. "&" in it is
/// a plain character.
[[nodiscard]] QString commandTitle(const Command& command);
/// With its mnemonic, "&File".
[[nodiscard]] QString menuTitle(CommandMenu menu);
[[nodiscard]] QString submenuTitle(const CommandSection& section);

} // namespace orvane
