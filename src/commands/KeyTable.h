// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "commands/PostableCommand.h"
#include "commands/ShortcutData.h"

#include <QKeySequence>
#include <QString>

#include <optional>
#include <span>

namespace orvane {

/// Where a key works that no person chose, and whether it comes before the actions that have keys
/// of a person's choice.
enum class KeyPlace {
    Always,     ///< whatever has the keyboard, before all actions
    Binder,     ///< outside of texts and controls, before all actions
    Window,     ///< whatever has the keyboard, where no action has it
    Text,       ///< in a text, where no action has it that works there
    Table,      ///< in a cell of a table, before what a text or the window does
    BinderRows, ///< in the rows of the Binder, where no action has it
    Desktop,    ///< the desktop or the system, before the program sees it
};

/// The keys by name that something of the program asks for. Others of the table are known to
/// the widgets alone that handle them.
enum class FixedKey {
    undo,
    redo,
    redoByY,
    collapseLeftPane,
    collapseRightPane,
    restoreThreePaneLayout,
    settings,
    binderExpandFolder,
    binderCollapseFolder,
    binderNextItem,
    binderPreviousItem,
    binderActivateSelection,
    commandPalette,
    nextPane,
    previousPane,
    back,
    forward,
    guide,
    menu,
    fullScreen,
    zoomIn,
    zoomOut,
    resetZoom,
    superscript,
    subscript,
    quit,
    findAndReplace,
    findNext,
    findPrevious,
    cut,
    copy,
    paste,
    pastePlain,
    selectAll,
    moveTableRowUp,
    moveTableRowDown,
    moveTableColumnLeft,
    moveTableColumnRight,
    goToTableTools,
};

inline constexpr int fixedKeyCount = 39;

/// One key that no person chose.
struct KeyRow {
    enum class Held {
        Exactly, ///< these modifiers and no others
        AtLeast, ///< these, whatever else is held
    };

    KeyPlace place;
    Qt::Key key = Qt::Key_unknown;
    quint32 modifiers = 0;
    Held held = Held::Exactly;
    /// In place of key and modifiers: the keys that the desktop has for this.
    QKeySequence::StandardKey standard = QKeySequence::UnknownKey;
    /// What it does; for the desktop a sentence with "%1" for the key. See `keyTitle`.
    const char* title = nullptr;
    PostableCommand command{}; ///< for keys that post one

    [[nodiscard]] bool isFor(const ShortcutData& pressed) const;
};

/// Every key that texts, the Binder, the window and the desktops that we know handle without being
/// asked; those of `FixedKey` first, in its order. What single controls do with plain keys (arrows
/// on a slider) stands with the controls.
[[nodiscard]] std::span<const KeyRow> keyTable();

[[nodiscard]] const KeyRow& keyRow(FixedKey key);
/// The first row of a place that the key belongs to, or null.
[[nodiscard]] const KeyRow* keyRowFor(const ShortcutData& pressed, KeyPlace place);
/// Whether a text has a use for the key itself: types with it, or does what a row of its place
/// says.
[[nodiscard]] bool isUsedByText(const ShortcutData& pressed);
/// Whether the key types a character or a blank.
[[nodiscard]] bool typesCharacter(const ShortcutData& pressed);
/// Which of the named keys a row of the table is.
[[nodiscard]] std::optional<FixedKey> fixedKeyOf(const KeyRow& row);

/// What the key does, translated: "Go to Next Pane".
[[nodiscard]] QString keyTitle(const KeyRow& row);
[[nodiscard]] QString keyTitle(FixedKey key);
/// For shortcuts of the toolkit.
[[nodiscard]] QKeySequence keySequence(FixedKey key);
/// As menus and tool tips write it on this desktop: "Shift+F6".
[[nodiscard]] QString keyText(FixedKey key);

} // namespace orvane
