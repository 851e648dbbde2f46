// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "commands/KeyCodes.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

constexpr auto ctrl = Qt::ControlModifier;
constexpr auto alt = Qt::AltModifier;
constexpr auto shift = Qt::ShiftModifier;

TEST(KeyCodes, EveryCodeFindsItsKeyAndBack)
{
    int keypadCodes = 0;
    int codes = 0;
    for (int code = 0; code < 200; ++code) {
        const auto key = keyOfCode(quint16(code));
        if (!key)
            continue;
        ++codes;
        KeyPress press{*key, Qt::NoModifier, {}, 0, false};
        if (press.shortcut() == ShortcutData{quint16(code), 0})
            continue;
        press.modifiers = Qt::KeypadModifier;
        EXPECT_EQ(press.shortcut(), (ShortcutData{quint16(code), 0})) << code;
        ++keypadCodes;
    }
    EXPECT_EQ(codes, 100);
    EXPECT_EQ(keypadCodes, 17);
    for (quint32 flags = 0; flags <= KeyModifier::all; flags += KeyModifier::shift)
        EXPECT_EQ(modifierFlagsOf(keyboardModifiersOf(flags)), flags);
}

TEST(KeyCodes, PressesOnSeveralLayouts)
{
    struct Row {
        const char* name;
        KeyPress press;
        std::optional<quint16> code;
    };
    const Row rows[] = {
        {"a letter", {Qt::Key_E, ctrl, u"\x05"_s, 26}, 14},
        {"A of AZERTY, on the key of Q", {Qt::Key_A, ctrl, {}, 24}, 0},
        {"1 of AZERTY, unshifted", {Qt::Key_Ampersand, ctrl, {}, 10}, 18},
        {"1 of AZERTY, shifted", {Qt::Key_1, ctrl | shift, {}, 10}, 18},
        {"7 of QWERTZ with Shift types a slash", {Qt::Key_Slash, ctrl | shift, {}, 16}, 26},
        {"Z of QWERTZ", {Qt::Key_Z, ctrl, {}, 29}, 6},
        {"a Cyrillic letter on the key of F", {0x0410, alt, u"а"_s, 41}, 3},
        {"Shift and backslash, place known", {Qt::Key_Bar, ctrl | shift, {}, 51}, 42},
        {"Shift and backslash, place not known", {Qt::Key_Bar, ctrl | shift, {}, 0}, 42},
        {"Shift and 2, place not known", {Qt::Key_At, ctrl | shift, {}, 0}, 19},
        {"Back-tab", {Qt::Key_Backtab, shift, {}, 0}, 48},
        {"Return", {Qt::Key_Return, ctrl, {}, 36}, 36},
        {"Enter of the keypad", {Qt::Key_Enter, Qt::KeypadModifier, {}, 104}, 76},
        {"4 of the keypad", {Qt::Key_4, ctrl | Qt::KeypadModifier, {}, 83}, 86},
        {"Left of the keypad", {Qt::Key_Left, Qt::KeypadModifier, {}, 83}, 123},
        {"a modifier key", {Qt::Key_Control, ctrl, {}, 37}, std::nullopt},
        {"a dead key", {Qt::Key_Dead_Acute, Qt::NoModifier, {}, 0}, std::nullopt},
        {"no key", {0, Qt::NoModifier, u"字"_s, 0}, std::nullopt},
        {"unknown key", {Qt::Key_unknown, ctrl, {}, 255}, std::nullopt},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const auto shortcut = row.press.shortcut();
        EXPECT_EQ(shortcut ? std::optional(shortcut->keyCode) : std::nullopt, row.code);
    }
}

TEST(KeyCodes, AltGrIsNoShortcut)
{
    struct Row {
        const char* name;
        KeyPress press;
        bool types;
    };
    const Row rows[] = {
        {"AltGr+E types a euro", {Qt::Key_E, Qt::GroupSwitchModifier, u"€"_s, 26}, true},
        {"the same reported as Ctrl+Alt", {Qt::Key_E, ctrl | alt, u"€"_s, 26}, true},
        {"AltGr+Q types @, reported as Ctrl+Alt", {Qt::Key_At, ctrl | alt, u"@"_s, 24}, true},
        {"Ctrl+Alt+E", {Qt::Key_E, ctrl | alt, u"\x05"_s, 26}, false},
        {"Ctrl+Alt+E without text", {Qt::Key_E, ctrl | alt, {}, 26}, false},
        {"Ctrl+Alt+1, which keeps its text", {Qt::Key_1, ctrl | alt, u"1"_s, 10}, false},
        {"Ctrl+Alt+E with the plain letter", {Qt::Key_E, ctrl | alt, u"E"_s, 26}, false},
        {"Ctrl+E", {Qt::Key_E, ctrl, u"e"_s, 26}, false},
        {"Alt+E", {Qt::Key_E, alt, u"e"_s, 26}, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(row.press.typesByAltGr(), row.types);
    }
}

} // namespace
} // namespace orvane
