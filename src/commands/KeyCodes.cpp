// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "commands/KeyCodes.h"

#include <QGuiApplication>
#include <QHash>
#include <QKeyEvent>

#include <algorithm>
#include <array>

namespace orvane {

namespace {

struct KeyRow {
    quint16 code;
    Qt::Key key;
    char16_t character; ///< 0 for keys that type none
    quint16 scanCode;   ///< 0 where the character decides on every layout
};

// clang-format off
constexpr KeyRow mainKeys[] = {
    {0, Qt::Key_A, u'a', 38},   {1, Qt::Key_S, u's', 39},   {2, Qt::Key_D, u'd', 40},
    {3, Qt::Key_F, u'f', 41},   {4, Qt::Key_H, u'h', 43},   {5, Qt::Key_G, u'g', 42},
    {6, Qt::Key_Z, u'z', 52},   {7, Qt::Key_X, u'x', 53},   {8, Qt::Key_C, u'c', 54},
    {9, Qt::Key_V, u'v', 55},   {11, Qt::Key_B, u'b', 56},  {12, Qt::Key_Q, u'q', 24},
    {13, Qt::Key_W, u'w', 25},  {14, Qt::Key_E, u'e', 26},  {15, Qt::Key_R, u'r', 27},
    {16, Qt::Key_Y, u'y', 29},  {17, Qt::Key_T, u't', 28},  {18, Qt::Key_1, u'1', 10},
    {19, Qt::Key_2, u'2', 11},  {20, Qt::Key_3, u'3', 12},  {21, Qt::Key_4, u'4', 13},
    {22, Qt::Key_6, u'6', 15},  {23, Qt::Key_5, u'5', 14},  {24, Qt::Key_Equal, u'=', 21},
    {25, Qt::Key_9, u'9', 18},  {26, Qt::Key_7, u'7', 16},  {27, Qt::Key_Minus, u'-', 20},
    {28, Qt::Key_8, u'8', 17},  {29, Qt::Key_0, u'0', 19},
    {30, Qt::Key_BracketRight, u']', 35},                   {31, Qt::Key_O, u'o', 32},
    {32, Qt::Key_U, u'u', 30},  {33, Qt::Key_BracketLeft, u'[', 34},
    {34, Qt::Key_I, u'i', 31},  {35, Qt::Key_P, u'p', 33},  {36, Qt::Key_Return, u'↩', 0},
    {37, Qt::Key_L, u'l', 46},  {38, Qt::Key_J, u'j', 44},  {39, Qt::Key_Apostrophe, u'\'', 48},
    {40, Qt::Key_K, u'k', 45},  {41, Qt::Key_Semicolon, u';', 47},
    {42, Qt::Key_Backslash, u'\\', 51},                     {43, Qt::Key_Comma, u',', 59},
    {44, Qt::Key_Slash, u'/', 61},                          {45, Qt::Key_N, u'n', 57},
    {46, Qt::Key_M, u'm', 58},  {47, Qt::Key_Period, u'.', 60},
    {50, Qt::Key_QuoteLeft, u'`', 49},
    {48, Qt::Key_Tab, 0, 0},    {49, Qt::Key_Space, 0, 0},  {51, Qt::Key_Backspace, 0, 0},
    {53, Qt::Key_Escape, 0, 0}, {114, Qt::Key_Insert, 0, 0},
    {115, Qt::Key_Home, 0, 0},  {116, Qt::Key_PageUp, 0, 0}, {117, Qt::Key_Delete, 0, 0},
    {119, Qt::Key_End, 0, 0},   {121, Qt::Key_PageDown, 0, 0},
    {123, Qt::Key_Left, 0, 0},  {124, Qt::Key_Right, 0, 0}, {125, Qt::Key_Down, 0, 0},
    {126, Qt::Key_Up, 0, 0},
    {122, Qt::Key_F1, 0, 0},    {120, Qt::Key_F2, 0, 0},    {99, Qt::Key_F3, 0, 0},
    {118, Qt::Key_F4, 0, 0},    {96, Qt::Key_F5, 0, 0},     {97, Qt::Key_F6, 0, 0},
    {98, Qt::Key_F7, 0, 0},     {100, Qt::Key_F8, 0, 0},    {101, Qt::Key_F9, 0, 0},
    {109, Qt::Key_F10, 0, 0},   {103, Qt::Key_F11, 0, 0},   {111, Qt::Key_F12, 0, 0},
    {105, Qt::Key_F13, 0, 0},   {107, Qt::Key_F14, 0, 0},   {113, Qt::Key_F15, 0, 0},
    {106, Qt::Key_F16, 0, 0},   {64, Qt::Key_F17, 0, 0},    {79, Qt::Key_F18, 0, 0},
    {80, Qt::Key_F19, 0, 0},    {90, Qt::Key_F20, 0, 0},
};

constexpr KeyRow keypadKeys[] = {
    {65, Qt::Key_Period, 0, 0}, {67, Qt::Key_Asterisk, 0, 0}, {69, Qt::Key_Plus, 0, 0},
    {71, Qt::Key_Clear, 0, 0},  {75, Qt::Key_Slash, 0, 0},    {76, Qt::Key_Enter, 0, 0},
    {78, Qt::Key_Minus, 0, 0},  {81, Qt::Key_Equal, 0, 0},    {82, Qt::Key_0, 0, 0},
    {83, Qt::Key_1, 0, 0},      {84, Qt::Key_2, 0, 0},        {85, Qt::Key_3, 0, 0},
    {86, Qt::Key_4, 0, 0},      {87, Qt::Key_5, 0, 0},        {88, Qt::Key_6, 0, 0},
    {89, Qt::Key_7, 0, 0},      {91, Qt::Key_8, 0, 0},        {92, Qt::Key_9, 0, 0},
};

/// What Shift makes of punctuation and digits on the most common layout, for systems that report
/// no place of a key.
struct ShiftedKey {
    Qt::Key shifted;
    Qt::Key plain;
};
constexpr ShiftedKey shiftedKeys[] = {
    {Qt::Key_Exclam, Qt::Key_1},      {Qt::Key_At, Qt::Key_2},
    {Qt::Key_NumberSign, Qt::Key_3},  {Qt::Key_Dollar, Qt::Key_4},
    {Qt::Key_Percent, Qt::Key_5},     {Qt::Key_AsciiCircum, Qt::Key_6},
    {Qt::Key_Ampersand, Qt::Key_7},   {Qt::Key_Asterisk, Qt::Key_8},
    {Qt::Key_ParenLeft, Qt::Key_9},   {Qt::Key_ParenRight, Qt::Key_0},
    {Qt::Key_Underscore, Qt::Key_Minus},    {Qt::Key_Plus, Qt::Key_Equal},
    {Qt::Key_BraceLeft, Qt::Key_BracketLeft}, {Qt::Key_BraceRight, Qt::Key_BracketRight},
    {Qt::Key_Bar, Qt::Key_Backslash}, {Qt::Key_Colon, Qt::Key_Semicolon},
    {Qt::Key_QuoteDbl, Qt::Key_Apostrophe},   {Qt::Key_Less, Qt::Key_Comma},
    {Qt::Key_Greater, Qt::Key_Period}, {Qt::Key_Question, Qt::Key_Slash},
    {Qt::Key_AsciiTilde, Qt::Key_QuoteLeft},  {Qt::Key_Backtab, Qt::Key_Tab},
};
// clang-format on

constexpr quint32 firstDigitScanCode = 10;
constexpr quint32 lastDigitScanCode = 19;

struct Tables {
    QHash<int, quint16> codeByKey;
    QHash<int, quint16> codeByKeypadKey;
    std::array<const KeyRow*, 128> rowByCode{};
    std::array<const KeyRow*, 64> rowByScanCode{};

    Tables()
    {
        for (const KeyRow& row : mainKeys) {
            codeByKey.insert(row.key, row.code);
            rowByCode[row.code] = &row;
            if (row.scanCode > 0)
                rowByScanCode[row.scanCode] = &row;
        }
        for (const KeyRow& row : keypadKeys) {
            codeByKeypadKey.insert(row.key, row.code);
            rowByCode[row.code] = &row;
        }
    }
};

const Tables& tables()
{
    static const Tables instance;
    return instance;
}

const KeyRow* rowOfCode(quint16 keyCode)
{
    return keyCode < tables().rowByCode.size() ? tables().rowByCode[keyCode] : nullptr;
}

std::optional<quint16> codeByPlace(quint32 scanCode)
{
    const auto& rows = tables().rowByScanCode;
    if (scanCode >= rows.size() || !rows[scanCode])
        return std::nullopt;
    return rows[scanCode]->code;
}

bool isLatinLetter(int key)
{
    return key >= Qt::Key_A && key <= Qt::Key_Z;
}

std::optional<quint16> codeOfPress(const KeyPress& press)
{
    if (press.modifiers.testFlag(Qt::KeypadModifier) || press.key == Qt::Key_Enter) {
        const auto it = tables().codeByKeypadKey.constFind(press.key);
        if (it != tables().codeByKeypadKey.cend())
            return *it;
    }
    const bool onDigitRow =
        press.scanCode >= firstDigitScanCode && press.scanCode <= lastDigitScanCode;
    if (onDigitRow && !isLatinLetter(press.key))
        return codeByPlace(press.scanCode);
    if (const auto code = codeOfKey(press.key))
        return code;
    if (const auto code = codeByPlace(press.scanCode))
        return code;
    const auto* shifted = std::ranges::find(shiftedKeys, press.key, &ShiftedKey::shifted);
    return shifted != std::end(shiftedKeys) ? codeOfKey(shifted->plain) : std::nullopt;
}

/// Whether this windowing system's scan codes are the places that the table counts.
bool reportsPlaces()
{
    static const bool answer = QGuiApplication::platformName() == QLatin1String("xcb") ||
                               QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
    return answer;
}

} // namespace

KeyPress KeyPress::of(const QKeyEvent& event)
{
    return {event.key(), event.modifiers(), event.text(),
            reportsPlaces() ? event.nativeScanCode() : 0, event.isAutoRepeat()};
}

std::optional<ShortcutData> KeyPress::shortcut() const
{
    const auto code = codeOfPress(*this);
    if (!code)
        return std::nullopt;
    return ShortcutData{*code, modifierFlagsOf(modifiers)};
}

bool KeyPress::typesByAltGr() const
{
    if (text.isEmpty() || !text.front().isPrint())
        return false;
    if (modifiers.testFlag(Qt::GroupSwitchModifier))
        return true;
    if (!modifiers.testFlag(Qt::ControlModifier) || !modifiers.testFlag(Qt::AltModifier))
        return false;
    const auto code = codeOfPress(*this);
    const auto plain = code ? keyCodeToCharacter(*code) : std::nullopt;
    return !plain || text.size() != 1 || text.front().toLower() != *plain;
}

quint32 modifierFlagsOf(Qt::KeyboardModifiers modifiers)
{
    quint32 flags = 0;
    if (modifiers.testFlag(Qt::ShiftModifier))
        flags |= KeyModifier::shift;
    if (modifiers.testFlag(Qt::MetaModifier))
        flags |= KeyModifier::control;
    if (modifiers.testFlag(Qt::AltModifier))
        flags |= KeyModifier::option;
    if (modifiers.testFlag(Qt::ControlModifier))
        flags |= KeyModifier::command;
    return flags;
}

Qt::KeyboardModifiers keyboardModifiersOf(quint32 modifierFlags)
{
    Qt::KeyboardModifiers modifiers;
    modifiers.setFlag(Qt::ShiftModifier, modifierFlags & KeyModifier::shift);
    modifiers.setFlag(Qt::MetaModifier, modifierFlags & KeyModifier::control);
    modifiers.setFlag(Qt::AltModifier, modifierFlags & KeyModifier::option);
    modifiers.setFlag(Qt::ControlModifier, modifierFlags & KeyModifier::command);
    return modifiers;
}

std::optional<Qt::Key> keyOfCode(quint16 keyCode)
{
    const KeyRow* row = rowOfCode(keyCode);
    return row ? std::optional(row->key) : std::nullopt;
}

std::optional<quint16> codeOfKey(int key)
{
    const auto it = tables().codeByKey.constFind(key);
    return it != tables().codeByKey.cend() ? std::optional(*it) : std::nullopt;
}

std::optional<QChar> keyCodeToCharacter(quint16 keyCode)
{
    const KeyRow* row = rowOfCode(keyCode);
    return row && row->character != 0 ? std::optional(QChar(row->character)) : std::nullopt;
}

} // namespace orvane
