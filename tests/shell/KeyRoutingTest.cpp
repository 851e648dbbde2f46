// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/shortcuts/KeyRouting.h"

#include "commands/KeyTable.h"
#include "support/KeyWalk.h"

#include <QComboBox>
#include <QPlainTextEdit>
#include <QSpinBox>
#include <QToolButton>
#include <QTreeView>
#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

constexpr auto none = Qt::NoModifier;
constexpr auto ctrl = Qt::ControlModifier;
constexpr auto alt = Qt::AltModifier;
constexpr auto shift = Qt::ShiftModifier;
constexpr auto super = Qt::MetaModifier;

QString describe(const KeyRoute& route)
{
    switch (route.kind) {
    case KeyRoute::Kind::Pass:
        return u"pass"_s;
    case KeyRoute::Kind::Post:
        return QString::fromLatin1(route.command.name).remove(u"OrvaneWorkspace."_s);
    case KeyRoute::Kind::Undo:
        return u"undo"_s;
    case KeyRoute::Kind::Redo:
        return u"redo"_s;
    case KeyRoute::Kind::CloseWindow:
        return u"close"_s;
    case KeyRoute::Kind::OpenSettings:
        return u"settings"_s;
    }
    return {};
}

struct RouteRow {
    const char* name;
    Qt::Key key;
    Qt::KeyboardModifiers modifiers;
    const char* inText;
    const char* elsewhere;
    const char* inControl = nullptr; ///< as elsewhere where it is left out
};

// clang-format off
const RouteRow routeRows[] = {
    {"a letter", Qt::Key_A, none, "pass", "pass"},
    {"a capital", Qt::Key_A, shift, "pass", "pass"},
    {"undo", Qt::Key_Z, ctrl, "undo", "undo"},
    {"redo", Qt::Key_Z, ctrl | shift, "redo", "redo"},
    {"Z with Alt as well", Qt::Key_Z, ctrl | alt, "pass", "pass"},
    {"left pane", Qt::Key_Left, alt | shift, "CollapseLeftPane", "CollapseLeftPane"},
    {"right pane", Qt::Key_Right, alt | shift, "CollapseRightPane", "CollapseRightPane"},
    {"three panes", Qt::Key_Up, alt | shift, "RestoreThreePaneLayout", "RestoreThreePaneLayout"},
    {"Alt+Shift+Down", Qt::Key_Down, alt | shift, "pass", "pass"},
    {"pane key with Ctrl as well", Qt::Key_Left, ctrl | alt | shift, "pass", "BinderCollapseFolder", "pass"},
    {"settings' own key", Qt::Key_Comma, ctrl, "pass", "pass"},
    {"expand", Qt::Key_Right, ctrl, "pass", "BinderExpandFolder", "pass"},
    {"collapse", Qt::Key_Left, ctrl, "pass", "BinderCollapseFolder", "pass"},
    {"next", Qt::Key_Down, ctrl, "pass", "BinderNextItem", "pass"},
    {"previous", Qt::Key_Up, ctrl, "pass", "BinderPreviousItem", "pass"},
    {"plain arrow", Qt::Key_Down, none, "pass", "pass"},
    {"Return", Qt::Key_Return, none, "pass", "BinderActivateSelection", "pass"},
    {"Return with Shift", Qt::Key_Return, shift, "pass", "pass"},
    {"page break", Qt::Key_Return, ctrl, "InsertPageBreak", "InsertPageBreak"},
    {"bold", Qt::Key_B, ctrl, "EditorFormat.Bold", "EditorFormat.Bold"},
    {"save", Qt::Key_S, ctrl, "SaveDocument", "SaveDocument"},
    {"new note", Qt::Key_N, ctrl, "NewNote", "NewNote"},
    {"new folder", Qt::Key_N, ctrl | super, "NewFolder", "NewFolder"},
    {"close window", Qt::Key_W, ctrl, "close", "close"},
    {"heading", Qt::Key_5, ctrl, "ApplyHeading5", "ApplyHeading5"},
    {"left pane toggle", Qt::Key_Backslash, ctrl, "ToggleBinder", "ToggleBinder"},
    {"copy", Qt::Key_C, ctrl, "pass", "pass"},
};
// clang-format on

TEST(KeyRouting, DefaultKeysByFocus)
{
    const ShortcutBindings bindings;
    for (const RouteRow& row : routeRows) {
        SCOPED_TRACE(row.name);
        const KeyPress press{row.key, row.modifiers, {}, 0, false};
        const char* inControl = row.inControl ? row.inControl : row.elsewhere;
        EXPECT_EQ(describe(routeKey(press, KeyFocus::Text, bindings)), QLatin1String(row.inText));
        EXPECT_EQ(describe(routeKey(press, KeyFocus::Elsewhere, bindings)),
                  QLatin1String(row.elsewhere));
        EXPECT_EQ(describe(routeKey(press, KeyFocus::Control, bindings)), QLatin1String(inControl));
        EXPECT_EQ(describe(routeKey(press, KeyFocus::Closed, bindings)), u"pass"_s);
    }
}

TEST(KeyRouting, WithoutActionsOnlyKeysOfTheTableAreRouted)
{
    ShortcutOverrides noKeys;
    for (const ShortcutAction action : allShortcutActions())
        noKeys.insert(action, {999, 0});
    const ShortcutBindings bindings(noKeys);
    forEachKey([&](const ShortcutData& pressed) {
        const KeyPress press{
            *keyOfCode(pressed.keyCode), keyboardModifiersOf(pressed.modifierFlags), {}, 0, false};
        const KeyRow* always = keyRowFor(pressed, KeyPlace::Always);
        const bool passes = !always || always == &keyRow(FixedKey::settings);
        SCOPED_TRACE(qPrintable(pressed.desktopText()));
        for (const KeyFocus focus : {KeyFocus::Text, KeyFocus::Control})
            EXPECT_EQ(describe(routeKey(press, focus, bindings)) == u"pass"_s, passes);
        const bool isBinders = keyRowFor(pressed, KeyPlace::Binder);
        EXPECT_EQ(describe(routeKey(press, KeyFocus::Elsewhere, bindings)) == u"pass"_s,
                  passes && !isBinders);
    });
}

TEST(KeyRouting, Overrides)
{
    constexpr quint32 command = KeyModifier::command;
    struct Row {
        const char* name;
        ShortcutOverrides overrides;
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
        KeyFocus focus;
        const char* expected;
    };
    const Row rows[] = {
        {"moved away",
         {{ShortcutAction::bold, {46, command}}},
         Qt::Key_B,
         ctrl,
         KeyFocus::Text,
         "pass"},
        {"moved to",
         {{ShortcutAction::bold, {46, command}}},
         Qt::Key_M,
         ctrl,
         KeyFocus::Text,
         "EditorFormat.Bold"},
        {"same key twice: the first action in order",
         {{ShortcutAction::bold, {45, command | KeyModifier::control}}},
         Qt::Key_N,
         ctrl | super,
         KeyFocus::Elsewhere,
         "NewFolder"},
        {"and in text as well",
         {{ShortcutAction::bold, {45, command | KeyModifier::control}}},
         Qt::Key_N,
         ctrl | super,
         KeyFocus::Text,
         "NewFolder"},
        {"a key that texts use stays theirs",
         {{ShortcutAction::newNote, {8, command}}},
         Qt::Key_C,
         ctrl,
         KeyFocus::Text,
         "pass"},
        {"an earlier action takes a default",
         {{ShortcutAction::saveDocument, {11, command}}},
         Qt::Key_B,
         ctrl,
         KeyFocus::Text,
         "SaveDocument"},
        {"settings on another key",
         {{ShortcutAction::settings, {46, command}}},
         Qt::Key_M,
         ctrl,
         KeyFocus::Elsewhere,
         "settings"},
        {"an action on Ctrl+Comma never fires",
         {{ShortcutAction::bold, {43, command}}},
         Qt::Key_Comma,
         ctrl,
         KeyFocus::Text,
         "pass"},
        {"an action on Alt+Shift+Left never fires",
         {{ShortcutAction::bold, {123, KeyModifier::option | KeyModifier::shift}}},
         Qt::Key_Left,
         alt | shift,
         KeyFocus::Text,
         "CollapseLeftPane"},
        {"stored bits below 16 don't count",
         {{ShortcutAction::bold, {46, command | 0x108}}},
         Qt::Key_M,
         ctrl,
         KeyFocus::Text,
         "EditorFormat.Bold"},
        {"further bits above do",
         {{ShortcutAction::bold, {46, command | 0x800000}}},
         Qt::Key_M,
         ctrl,
         KeyFocus::Text,
         "pass"},
        {"a function key without modifiers",
         {{ShortcutAction::bold, {96, 0}}},
         Qt::Key_F5,
         none,
         KeyFocus::Text,
         "EditorFormat.Bold"},
        {"an arrow that walks the Binder",
         {{ShortcutAction::bold, {124, command}}},
         Qt::Key_Right,
         ctrl,
         KeyFocus::Elsewhere,
         "BinderExpandFolder"},
        {"the same arrow in text",
         {{ShortcutAction::bold, {124, command}}},
         Qt::Key_Right,
         ctrl,
         KeyFocus::Text,
         "EditorFormat.Bold"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const KeyPress press{row.key, row.modifiers, {}, 0, false};
        EXPECT_EQ(describe(routeKey(press, row.focus, ShortcutBindings(row.overrides))),
                  QLatin1String(row.expected));
    }
}

TEST(KeyRouting, FocusByClassAndByDeclaration)
{
    QWidget plain;
    QWidget sheet;
    declareKeyFocus(&sheet, KeyFocus::Closed);
    QLineEdit fieldInSheet(&sheet);
    QLineEdit field;
    QPlainTextEdit readOnlyText;
    readOnlyText.setReadOnly(true);
    QSpinBox spinBox;
    QToolButton button;
    QComboBox comboBox;
    QTreeView tree;
    tree.setAttribute(Qt::WA_InputMethodEnabled);
    QWidget ownTextView;
    ownTextView.setAttribute(Qt::WA_InputMethodEnabled);
    const std::pair<QWidget*, KeyFocus> rows[] = {
        {nullptr, KeyFocus::Elsewhere},    {&plain, KeyFocus::Elsewhere},
        {&fieldInSheet, KeyFocus::Closed}, {&field, KeyFocus::Text},
        {&readOnlyText, KeyFocus::Text},   {&spinBox, KeyFocus::Text},
        {&button, KeyFocus::Control},      {&comboBox, KeyFocus::Control},
        {&tree, KeyFocus::Elsewhere},      {&ownTextView, KeyFocus::Text},
    };
    for (const auto& [widget, expected] : rows) {
        SCOPED_TRACE(widget ? widget->metaObject()->className() : "nothing");
        EXPECT_EQ(keyFocusOf(widget), expected);
    }
}

} // namespace
} // namespace orvane
