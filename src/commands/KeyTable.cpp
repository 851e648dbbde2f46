// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "commands/KeyTable.h"

#include "commands/EditorFormatNotifications.h"
#include "commands/KeyCodes.h"
#include "commands/TableCommands.h"

#include <QCoreApplication>

#include <algorithm>

#define TITLE(text) QT_TRANSLATE_NOOP("KeyTable", text)

namespace orvane {

namespace {

using namespace KeyModifier;
namespace App = AppCommandEvents;
namespace Format = EditorFormatNotifications;

constexpr quint32 ctrl = command;
constexpr quint32 alt = option;
constexpr quint32 super = control;

constexpr KeyRow key(KeyPlace place, Qt::Key key, quint32 modifiers, const char* title,
                     const PostableCommand& command = {})
{
    return {.place = place, .key = key, .modifiers = modifiers, .title = title, .command = command};
}

/// One that works whatever else is held.
constexpr KeyRow keyWithAny(KeyPlace place, Qt::Key key, quint32 modifiers, const char* title,
                            const PostableCommand& command = {})
{
    return {.place = place,
            .key = key,
            .modifiers = modifiers,
            .held = KeyRow::Held::AtLeast,
            .title = title,
            .command = command};
}

constexpr KeyRow standard(KeyPlace place, QKeySequence::StandardKey standard, const char* title)
{
    return {.place = place, .standard = standard, .title = title};
}

constexpr char movesThrough[] = TITLE("Go Through the Rows");
constexpr char switchesWorkspace[] = TITLE("Many desktops change the workspace with %1.");
constexpr char actsOnWindow[] = TITLE("Most desktops use %1 for windows.");
constexpr char endsSession[] = TITLE("The system uses %1 to end the session.");
constexpr char switchesConsole[] = TITLE("The system changes the console with %1.");
constexpr char belongsToDesktop[] = TITLE("Most desktops keep %1 for themselves.");

using enum KeyPlace;
using Std = QKeySequence;

// clang-format off
constexpr KeyRow rows[] = {
    // In the order of FixedKey.
    key(Always, Qt::Key_Z, ctrl, TITLE("Undo")),
    key(Always, Qt::Key_Z, ctrl | shift, TITLE("Redo")),
    key(Always, Qt::Key_Y, ctrl, TITLE("Redo")),
    key(Always, Qt::Key_Left, alt | shift, TITLE("Collapse Left Pane"), postable<App::collapseLeftPane>()),
    key(Always, Qt::Key_Right, alt | shift, TITLE("Collapse Right Pane"), postable<App::collapseRightPane>()),
    key(Always, Qt::Key_Up, alt | shift, TITLE("Restore Three-Pane Layout"), postable<App::restoreThreePaneLayout>()),
    key(Always, Qt::Key_Comma, ctrl, TITLE("Settings")),
    keyWithAny(Binder, Qt::Key_Right, ctrl, TITLE("Expand Folder"), postable<App::binderExpandFolder>()),
    keyWithAny(Binder, Qt::Key_Left, ctrl, TITLE("Collapse Folder"), postable<App::binderCollapseFolder>()),
    keyWithAny(Binder, Qt::Key_Down, ctrl, TITLE("Next Item in the Binder"), postable<App::binderNextItem>()),
    keyWithAny(Binder, Qt::Key_Up, ctrl, TITLE("Previous Item in the Binder"), postable<App::binderPreviousItem>()),
    key(Binder, Qt::Key_Return, 0, TITLE("Open Selection"), postable<App::binderActivateSelection>()),
    key(Window, Qt::Key_P, ctrl | shift, TITLE("Command Palette")),
    key(Window, Qt::Key_F6, 0, TITLE("Go to Next Pane")),
    key(Window, Qt::Key_F6, shift, TITLE("Go to Previous Pane")),
    key(Window, Qt::Key_Left, alt, TITLE("Back"), postable<App::mainEditorBack>()),
    key(Window, Qt::Key_Right, alt, TITLE("Forward"), postable<App::mainEditorForward>()),
    key(Window, Qt::Key_F1, 0, TITLE("Guide")),
    key(Window, Qt::Key_F10, 0, TITLE("Open Menu")),
    key(Window, Qt::Key_F11, 0, TITLE("Full Screen")),
    key(Window, Qt::Key_Plus, ctrl, TITLE("Zoom In"), postable<App::zoomIn>()),
    key(Window, Qt::Key_Minus, ctrl, TITLE("Zoom Out"), postable<App::zoomOut>()),
    key(Window, Qt::Key_0, ctrl, TITLE("Reset Zoom"), postable<App::resetZoom>()),
    key(Text, Qt::Key_Equal, ctrl | alt, TITLE("Superscript"), postable<Format::superscript>()),
    key(Text, Qt::Key_Minus, ctrl | alt, TITLE("Subscript"), postable<Format::subscript>()),
    key(Window, Qt::Key_Q, ctrl, TITLE("Quit")),
    key(Text, Qt::Key_H, ctrl, TITLE("Find and Replace")),
    key(Text, Qt::Key_F3, 0, TITLE("Next Match")),
    key(Text, Qt::Key_F3, shift, TITLE("Previous Match")),
    standard(Text, Std::Cut, TITLE("Cut")),
    standard(Text, Std::Copy, TITLE("Copy")),
    standard(Text, Std::Paste, TITLE("Paste")),
    key(Text, Qt::Key_V, ctrl | shift, TITLE("Paste as Plain Text")),
    standard(Text, Std::SelectAll, TITLE("Select All")),
    key(KeyPlace::Table, Qt::Key_Up, alt, TITLE("Move Table Row Up"), postable<TableCommands::moveRowUp>()),
    key(KeyPlace::Table, Qt::Key_Down, alt, TITLE("Move Table Row Down"), postable<TableCommands::moveRowDown>()),
    key(KeyPlace::Table, Qt::Key_Left, alt, TITLE("Move Table Column Left"), postable<TableCommands::moveColumnLeft>()),
    key(KeyPlace::Table, Qt::Key_Right, alt, TITLE("Move Table Column Right"), postable<TableCommands::moveColumnRight>()),
    key(KeyPlace::Table, Qt::Key_Return, alt, TITLE("Go to the Table's Tools"), postable<TableCommands::goToTools>()),

    // Where a keyboard has the sign.
    key(Window, Qt::Key_Equal, ctrl, TITLE("Zoom In")),
    key(Window, Qt::Key_Equal, ctrl | shift, TITLE("Zoom In")),
    key(Window, Qt::Key_Tab, 0, TITLE("Go to Next Control")),
    key(Window, Qt::Key_Tab, shift, TITLE("Go to Previous Control")),

    standard(Text, Std::Undo, TITLE("Undo")),
    standard(Text, Std::Redo, TITLE("Redo")),
    standard(Text, Std::Delete, TITLE("Delete Forward")),
    standard(Text, Std::Backspace, TITLE("Delete Backward")),
    key(Text, Qt::Key_Backspace, 0, TITLE("Delete Backward")),
    key(Text, Qt::Key_Backspace, shift, TITLE("Delete Backward")),
    standard(Text, Std::DeleteEndOfWord, TITLE("Delete to End of Word")),
    standard(Text, Std::DeleteStartOfWord, TITLE("Delete to Start of Word")),
    standard(Text, Std::MoveToNextChar, TITLE("Go to Next Character")),
    standard(Text, Std::MoveToPreviousChar, TITLE("Go to Previous Character")),
    standard(Text, Std::SelectNextChar, TITLE("Select Next Character")),
    standard(Text, Std::SelectPreviousChar, TITLE("Select Previous Character")),
    standard(Text, Std::MoveToNextWord, TITLE("Go to Next Word")),
    standard(Text, Std::MoveToPreviousWord, TITLE("Go to Previous Word")),
    standard(Text, Std::SelectNextWord, TITLE("Select Next Word")),
    standard(Text, Std::SelectPreviousWord, TITLE("Select Previous Word")),
    standard(Text, Std::MoveToNextLine, TITLE("Go to Next Line")),
    standard(Text, Std::MoveToPreviousLine, TITLE("Go to Previous Line")),
    standard(Text, Std::SelectNextLine, TITLE("Select to Next Line")),
    standard(Text, Std::SelectPreviousLine, TITLE("Select to Previous Line")),
    standard(Text, Std::MoveToStartOfLine, TITLE("Go to Start of Line")),
    standard(Text, Std::MoveToEndOfLine, TITLE("Go to End of Line")),
    standard(Text, Std::SelectStartOfLine, TITLE("Select to Start of Line")),
    standard(Text, Std::SelectEndOfLine, TITLE("Select to End of Line")),
    standard(Text, Std::MoveToNextPage, TITLE("Page Down")),
    standard(Text, Std::MoveToPreviousPage, TITLE("Page Up")),
    standard(Text, Std::SelectNextPage, TITLE("Select Page Down")),
    standard(Text, Std::SelectPreviousPage, TITLE("Select Page Up")),
    standard(Text, Std::MoveToStartOfDocument, TITLE("Go to Start of Text")),
    standard(Text, Std::MoveToEndOfDocument, TITLE("Go to End of Text")),
    standard(Text, Std::SelectStartOfDocument, TITLE("Select to Start of Text")),
    standard(Text, Std::SelectEndOfDocument, TITLE("Select to End of Text")),
    key(Text, Qt::Key_Up, ctrl, TITLE("Go to Previous Paragraph")),
    key(Text, Qt::Key_Down, ctrl, TITLE("Go to Next Paragraph")),
    key(Text, Qt::Key_Up, ctrl | shift, TITLE("Select to Previous Paragraph")),
    key(Text, Qt::Key_Down, ctrl | shift, TITLE("Select to Next Paragraph")),
    key(Text, Qt::Key_Return, 0, TITLE("New Paragraph")),
    key(Text, Qt::Key_Return, shift, TITLE("New Line")),
    key(Text, Qt::Key_Enter, 0, TITLE("New Paragraph")),
    key(Text, Qt::Key_Enter, shift, TITLE("New Line")),
    key(Text, Qt::Key_Tab, 0, TITLE("Tab")),
    keyWithAny(Text, Qt::Key_Tab, shift, TITLE("Move Outward")),

    key(KeyPlace::Table, Qt::Key_Tab, 0, TITLE("Go to Next Cell")),
    keyWithAny(KeyPlace::Table, Qt::Key_Tab, shift, TITLE("Go to Previous Cell")),

    key(BinderRows, Qt::Key_Up, alt, TITLE("Move Row Up")),
    key(BinderRows, Qt::Key_Down, alt, TITLE("Move Row Down")),
    key(BinderRows, Qt::Key_Left, alt, TITLE("Move Row out of Its Folder")),
    key(BinderRows, Qt::Key_Right, alt, TITLE("Move Row into the Folder Above")),
    key(BinderRows, Qt::Key_F2, 0, TITLE("Rename")),
    key(BinderRows, Qt::Key_Delete, 0, TITLE("Move to Trash")),
    standard(BinderRows, Std::SelectAll, TITLE("Select All")),
    key(BinderRows, Qt::Key_Enter, 0, TITLE("Open Selection")),
    keyWithAny(BinderRows, Qt::Key_Space, 0, TITLE("Select the Row")),
    keyWithAny(BinderRows, Qt::Key_Up, 0, movesThrough),
    keyWithAny(BinderRows, Qt::Key_Down, 0, movesThrough),
    keyWithAny(BinderRows, Qt::Key_Left, 0, movesThrough),
    keyWithAny(BinderRows, Qt::Key_Right, 0, movesThrough),
    keyWithAny(BinderRows, Qt::Key_Home, 0, movesThrough),
    keyWithAny(BinderRows, Qt::Key_End, 0, movesThrough),
    keyWithAny(BinderRows, Qt::Key_PageUp, 0, movesThrough),
    keyWithAny(BinderRows, Qt::Key_PageDown, 0, movesThrough),

    key(Desktop, Qt::Key_T, ctrl | alt, TITLE("Many desktops open a terminal with %1.")),
    key(Desktop, Qt::Key_L, ctrl | alt, TITLE("Many desktops lock the screen with %1.")),
    key(Desktop, Qt::Key_D, ctrl | alt, TITLE("Many desktops show the desktop with %1.")),
    key(Desktop, Qt::Key_Left, ctrl | alt, switchesWorkspace),
    key(Desktop, Qt::Key_Right, ctrl | alt, switchesWorkspace),
    key(Desktop, Qt::Key_Up, ctrl | alt, switchesWorkspace),
    key(Desktop, Qt::Key_Down, ctrl | alt, switchesWorkspace),
    key(Desktop, Qt::Key_Delete, ctrl | alt, endsSession),
    key(Desktop, Qt::Key_Backspace, ctrl | alt, endsSession),
    key(Desktop, Qt::Key_U, ctrl | shift, TITLE("Input methods enter characters by code with %1.")),
    key(Desktop, Qt::Key_Tab, alt, actsOnWindow),
    key(Desktop, Qt::Key_Tab, alt | shift, actsOnWindow),
    key(Desktop, Qt::Key_Space, alt, actsOnWindow),
    key(Desktop, Qt::Key_Escape, alt, actsOnWindow),
    key(Desktop, Qt::Key_F4, alt, actsOnWindow),
    key(Desktop, Qt::Key_F7, alt, actsOnWindow),
    key(Desktop, Qt::Key_F8, alt, actsOnWindow),
    key(Desktop, Qt::Key_F10, alt, actsOnWindow),
    key(Desktop, Qt::Key_F1, alt, belongsToDesktop),
    key(Desktop, Qt::Key_F2, alt, belongsToDesktop),
    // Every key with Super, and the function keys with Ctrl and Alt.
    key(Desktop, Qt::Key_unknown, super, belongsToDesktop),
    key(Desktop, Qt::Key_unknown, super | shift, belongsToDesktop),
    key(Desktop, Qt::Key_F1, ctrl | alt, switchesConsole),
    key(Desktop, Qt::Key_F2, ctrl | alt, switchesConsole),
    key(Desktop, Qt::Key_F3, ctrl | alt, switchesConsole),
    key(Desktop, Qt::Key_F4, ctrl | alt, switchesConsole),
    key(Desktop, Qt::Key_F5, ctrl | alt, switchesConsole),
    key(Desktop, Qt::Key_F6, ctrl | alt, switchesConsole),
    key(Desktop, Qt::Key_F7, ctrl | alt, switchesConsole),
    key(Desktop, Qt::Key_F8, ctrl | alt, switchesConsole),
    key(Desktop, Qt::Key_F9, ctrl | alt, switchesConsole),
    key(Desktop, Qt::Key_F10, ctrl | alt, switchesConsole),
    key(Desktop, Qt::Key_F11, ctrl | alt, switchesConsole),
    key(Desktop, Qt::Key_F12, ctrl | alt, switchesConsole),
};
// clang-format on

QList<QKeySequence> sequencesOf(const KeyRow& row)
{
    if (row.standard != QKeySequence::UnknownKey)
        return QKeySequence::keyBindings(row.standard);
    return {QKeySequence(QKeyCombination(keyboardModifiersOf(row.modifiers), row.key))};
}

} // namespace

bool KeyRow::isFor(const ShortcutData& pressed) const
{
    const auto pressedKey = keyOfCode(pressed.keyCode);
    if (!pressedKey)
        return false;
    const quint32 pressedModifiers = pressed.modifierFlags & all;
    if (standard != QKeySequence::UnknownKey) {
        const QKeySequence wanted(
            QKeyCombination(keyboardModifiersOf(pressedModifiers), *pressedKey));
        return QKeySequence::keyBindings(standard).contains(wanted);
    }
    if (key != Qt::Key_unknown && key != *pressedKey)
        return false;
    return held == Held::Exactly ? pressedModifiers == modifiers
                                 : (pressedModifiers & modifiers) == modifiers;
}

std::span<const KeyRow> keyTable()
{
    return rows;
}

const KeyRow& keyRow(FixedKey key)
{
    return rows[size_t(key)];
}

const KeyRow* keyRowFor(const ShortcutData& pressed, KeyPlace place)
{
    const auto* found = std::ranges::find_if(
        rows, [&](const KeyRow& row) { return row.place == place && row.isFor(pressed); });
    return found != std::end(rows) ? found : nullptr;
}

bool typesCharacter(const ShortcutData& pressed)
{
    const auto key = keyOfCode(pressed.keyCode);
    return (pressed.modifierFlags & all & ~shift) == 0 && key &&
           (*key == Qt::Key_Space ||
            (keyCodeToCharacter(pressed.keyCode) && *key != Qt::Key_Return));
}

bool isUsedByText(const ShortcutData& pressed)
{
    return typesCharacter(pressed) || keyRowFor(pressed, KeyPlace::Text);
}

std::optional<FixedKey> fixedKeyOf(const KeyRow& row)
{
    const auto index = &row - rows;
    return index >= 0 && index < fixedKeyCount ? std::optional(FixedKey(index)) : std::nullopt;
}

QString keyTitle(const KeyRow& row)
{
    return QCoreApplication::translate("KeyTable", row.title);
}

QString keyTitle(FixedKey key)
{
    return keyTitle(keyRow(key));
}

QKeySequence keySequence(FixedKey key)
{
    return sequencesOf(keyRow(key)).value(0);
}

QString keyText(FixedKey key)
{
    return keySequence(key).toString(QKeySequence::NativeText);
}

} // namespace orvane
