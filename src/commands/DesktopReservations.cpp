// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "commands/DesktopReservations.h"

#include "commands/KeyCodes.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>

namespace orvane {

namespace {

using namespace KeyModifier;

struct Reservation {
    Qt::Key key;
    quint32 modifiers;
    const char* sentence;
};

constexpr quint32 ctrlAlt = command | option;

constexpr char switchesWorkspace[] =
    QT_TRANSLATE_NOOP("DesktopReservations", "Many desktops change the workspace with %1.");
constexpr char actsOnWindow[] =
    QT_TRANSLATE_NOOP("DesktopReservations", "Most desktops use %1 for windows.");
constexpr char opensTerminal[] =
    QT_TRANSLATE_NOOP("DesktopReservations", "Many desktops open a terminal with %1.");
constexpr char locksScreen[] =
    QT_TRANSLATE_NOOP("DesktopReservations", "Many desktops lock the screen with %1.");
constexpr char showsDesktop[] =
    QT_TRANSLATE_NOOP("DesktopReservations", "Many desktops show the desktop with %1.");
constexpr char endsSession[] =
    QT_TRANSLATE_NOOP("DesktopReservations", "The system uses %1 to end the session.");
constexpr char switchesConsole[] =
    QT_TRANSLATE_NOOP("DesktopReservations", "The system changes the console with %1.");
constexpr char entersCode[] =
    QT_TRANSLATE_NOOP("DesktopReservations", "Input methods enter characters by code with %1.");
constexpr char belongsToDesktop[] =
    QT_TRANSLATE_NOOP("DesktopReservations", "Most desktops keep %1 for themselves.");

constexpr Reservation reservations[] = {
    {Qt::Key_T, ctrlAlt, opensTerminal},         {Qt::Key_L, ctrlAlt, locksScreen},
    {Qt::Key_D, ctrlAlt, showsDesktop},          {Qt::Key_Left, ctrlAlt, switchesWorkspace},
    {Qt::Key_Right, ctrlAlt, switchesWorkspace}, {Qt::Key_Up, ctrlAlt, switchesWorkspace},
    {Qt::Key_Down, ctrlAlt, switchesWorkspace},  {Qt::Key_Delete, ctrlAlt, endsSession},
    {Qt::Key_Backspace, ctrlAlt, endsSession},   {Qt::Key_U, command | shift, entersCode},
    {Qt::Key_Tab, option, actsOnWindow},         {Qt::Key_Tab, option | shift, actsOnWindow},
    {Qt::Key_Space, option, actsOnWindow},       {Qt::Key_Escape, option, actsOnWindow},
    {Qt::Key_F4, option, actsOnWindow},          {Qt::Key_F7, option, actsOnWindow},
    {Qt::Key_F8, option, actsOnWindow},          {Qt::Key_F10, option, actsOnWindow},
    {Qt::Key_F1, option, belongsToDesktop},      {Qt::Key_F2, option, belongsToDesktop},
};

/// Keys of the main window and of every text field that no action has.
constexpr ShortcutData keptByProgram[] = {
    {35, command | shift}, // P: the command palette
    {6, command | shift},  // Z: redo
    {9, command | shift},  // V: paste without formatting
    {12, command | shift}, // Q
};

constexpr quint32 modifiersToTry[] = {command | shift, command | option | shift, command | option,
                                      command | control};

const char* sentenceFor(const ShortcutData& shortcut)
{
    const quint32 held = shortcut.modifierFlags & all;
    const auto key = keyOfCode(shortcut.keyCode);
    if (!key)
        return nullptr;
    if (held == ctrlAlt && *key >= Qt::Key_F1 && *key <= Qt::Key_F12)
        return switchesConsole;
    if (held == control || held == (control | shift))
        return belongsToDesktop;
    const auto* found = std::ranges::find_if(reservations, [&](const Reservation& reservation) {
        return reservation.key == *key && reservation.modifiers == held;
    });
    return found != std::end(reservations) ? found->sentence : nullptr;
}

} // namespace

std::optional<QString> desktopReservation(const ShortcutData& shortcut)
{
    const char* sentence = sentenceFor(shortcut);
    if (!sentence)
        return std::nullopt;
    return QCoreApplication::translate("DesktopReservations", sentence).arg(shortcut.desktopText());
}

std::optional<ShortcutData> freeShortcut(ShortcutAction action, const ShortcutBindings& bindings)
{
    const quint16 keyCode = bindings.shortcut(action).keyCode;
    for (const quint32 modifiers : modifiersToTry) {
        const ShortcutData candidate{keyCode, modifiers};
        const bool kept = std::ranges::any_of(
            keptByProgram, [&](const ShortcutData& other) { return other.matches(candidate); });
        if (!kept && !sentenceFor(candidate) && !bindings.firstMatch(candidate))
            return candidate;
    }
    return std::nullopt;
}

} // namespace orvane
