// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "commands/KeyClashes.h"

#include "commands/KeyCodes.h"

#include <QSet>
#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;
using Action = ShortcutAction;

constexpr auto none = Qt::NoModifier;
constexpr auto ctrl = Qt::ControlModifier;
constexpr auto alt = Qt::AltModifier;
constexpr auto shift = Qt::ShiftModifier;
constexpr auto super = Qt::MetaModifier;

ShortcutData shortcutOf(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    constexpr quint16 keypadPlus = 69; // of all keys the one that has a place there alone
    return {codeOfKey(key).value_or(keypadPlus), modifierFlagsOf(modifiers)};
}

QStringList sentences(Action action, const ShortcutData& shortcut,
                      const ShortcutBindings& bindings = ShortcutBindings())
{
    QStringList all;
    for (const KeyClash& clash : keyClashes(action, shortcut, bindings))
        all.append(sentenceFor(clash, shortcut));
    return all;
}

struct ClashRow {
    const char* name;
    Action action; ///< Bold works in a text, New Note doesn't
    Qt::Key key;
    Qt::KeyboardModifiers modifiers;
    QStringList sentences{};
};

TEST(KeyClashes, WhatAKeyTakesAway)
{
    const ClashRow rows[] = {
        {"a free key", Action::bold, Qt::Key_M, ctrl},
        {"a function key that is free", Action::bold, Qt::Key_F5, none},
        {"its own key", Action::bold, Qt::Key_B, ctrl},
        {"another action's", Action::bold, Qt::Key_I, ctrl, {u"Also used by Italic."_s}},
        {"of the editor",
         Action::bold,
         Qt::Key_H,
         ctrl,
         {u"In a text, Ctrl+H no longer does “Find and Replace”."_s}},
        {"of the editor, by an action that leaves texts alone", Action::newNote, Qt::Key_H, ctrl},
        {"of the window",
         Action::bold,
         Qt::Key_F6,
         none,
         {u"F6 no longer does “Go to Next Pane”."_s}},
        {"of the window, by an action that leaves texts alone",
         Action::newNote,
         Qt::Key_F6,
         shift,
         {u"Shift+F6 no longer does “Go to Previous Pane”."_s}},
        {"of the text",
         Action::bold,
         Qt::Key_C,
         ctrl,
         {u"In a text, Ctrl+C no longer does “Copy”."_s}},
        {"of the Binder's rows",
         Action::newNote,
         Qt::Key_F2,
         none,
         {u"In the Binder, F2 no longer does “Rename”."_s}},
        {"of the Binder, which comes first",
         Action::bold,
         Qt::Key_Up,
         ctrl,
         {u"Outside of texts, Ctrl+Up stays “Previous Item in the Binder”."_s,
          u"In a text, Ctrl+Up no longer does “Go to Previous Paragraph”."_s}},
        {"of the Binder with more held",
         Action::newNote,
         Qt::Key_Up,
         ctrl | shift,
         {u"Ctrl+Shift+Up is always “Previous Item in the Binder”, so this command never gets it."_s}},
        {"of everything",
         Action::bold,
         Qt::Key_Z,
         ctrl,
         {u"Ctrl+Z is always “Undo”, so this command never gets it."_s}},
        {"of the settings",
         Action::bold,
         Qt::Key_Comma,
         ctrl,
         {u"Also used by Settings."_s,
          u"Ctrl+, is always “Settings”, so this command never gets it."_s}},
        {"the settings' own", Action::settings, Qt::Key_Comma, ctrl},
        {"of the desktop",
         Action::newNote,
         Qt::Key_T,
         ctrl | alt,
         {u"Also used by Toggle Formatting Toolbar."_s,
          u"Many desktops open a terminal with Ctrl+Alt+T."_s}},
        {"of the desktop, whatever the key",
         Action::bold,
         Qt::Key_M,
         super | shift,
         {u"Most desktops keep Super+Shift+M for themselves."_s}},
        {"with Super and Ctrl", Action::bold, Qt::Key_M, super | ctrl},
        {"of the system and of texts",
         Action::bold,
         Qt::Key_Backspace,
         ctrl | alt,
         {u"The system uses Ctrl+Alt+Backspace to end the session."_s}},
        {"a capital", Action::bold, Qt::Key_A, shift, {u"In a text, Shift+A no longer types."_s}},
        {"a capital, by an action that leaves texts alone", Action::newNote, Qt::Key_A, shift},
        {"a blank",
         Action::bold,
         Qt::Key_Space,
         shift,
         {u"In the Binder, Shift+Space no longer does “Select the Row”."_s,
          u"In a text, Shift+Space no longer types."_s}},
        {"a letter with Alt", Action::bold, Qt::Key_M, alt},
        {"a new line",
         Action::bold,
         Qt::Key_Return,
         shift,
         {u"In a text, Shift+Return no longer does “New Line”."_s}},
    };
    for (const ClashRow& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(sentences(row.action, shortcutOf(row.key, row.modifiers)), row.sentences);
    }
}

TEST(KeyClashes, KeysThatActionsAreBornWithTakeNothingButWhatADesktopMayHave)
{
    const ShortcutBindings bindings;
    QStringList reserved;
    for (const ShortcutAction action : allShortcutActions()) {
        SCOPED_TRACE(qPrintable(rawValue(action)));
        const auto clashes = keyClashes(action, bindings.shortcut(action), bindings);
        if (clashes.empty())
            continue;
        ASSERT_EQ(clashes.size(), 1U);
        EXPECT_EQ(clashes.front().outcome, KeyClash::Outcome::Desktop);
        reserved.append(rawValue(action));
        const auto offered = freeShortcut(action, bindings);
        ASSERT_TRUE(offered);
        EXPECT_EQ(keyClashes(action, *offered, bindings), std::vector<KeyClash>());
    }
    EXPECT_EQ(reserved, QStringList({u"toggleFormattingBar"_s, u"makeLowercase"_s}));
}

TEST(KeyClashes, NoFreeKeyIsOfferedWhereAllAreTaken)
{
    constexpr quint32 command = KeyModifier::command;
    constexpr quint32 withShift = command | KeyModifier::shift;
    ShortcutOverrides overrides{
        {Action::bold, {17, withShift}},
        {Action::italic, {17, withShift | KeyModifier::option}},
    };
    const auto offered = [&] {
        return freeShortcut(Action::toggleFormattingBar, ShortcutBindings(overrides));
    };
    EXPECT_EQ(offered(), (ShortcutData{17, command | KeyModifier::control}));
    overrides[Action::underline] = {17, command | KeyModifier::control};
    EXPECT_EQ(offered(), std::nullopt);

    ShortcutOverrides onPaste{{Action::toggleFormattingBar, {9, command | KeyModifier::option}}};
    EXPECT_EQ(freeShortcut(Action::toggleFormattingBar, ShortcutBindings(onPaste)),
              (ShortcutData{9, withShift | KeyModifier::option}))
        << "what others paste with is left out";
}

TEST(KeyTable, NamedKeysStandFirstAndNoneIsHiddenByAnother)
{
    for (int i = 0; i < fixedKeyCount; ++i) {
        const KeyRow& row = keyRow(FixedKey(i));
        SCOPED_TRACE(row.title);
        EXPECT_EQ(fixedKeyOf(row), FixedKey(i));
        const QKeyCombination keys = keySequence(FixedKey(i))[0];
        const KeyRow* found =
            keyRowFor(shortcutOf(keys.key(), keys.keyboardModifiers()), row.place);
        EXPECT_EQ(found, &row);
    }
    EXPECT_EQ(fixedKeyOf(keyTable()[fixedKeyCount]), std::nullopt);
    EXPECT_EQ(keyText(FixedKey::previousPane), u"Shift+F6"_s);
    EXPECT_EQ(keyText(FixedKey::cut), u"Ctrl+X"_s);
}

} // namespace
} // namespace orvane
