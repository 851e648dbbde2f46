// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/shortcuts/KeyRouting.h"

#include "commands/AppCommandEvents.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QTabBar>
#include <QTextEdit>
#include <QVariant>

#include <algorithm>
#include <span>

namespace orvane {

namespace {

constexpr char focusProperty[] = "orvaneKeyFocus";

struct FixedKey {
    quint16 keyCode;
    PostableCommand command;
};

constexpr FixedKey paneKeys[] = {
    {KeyCode::leftArrow, postable<AppCommandEvents::collapseLeftPane>()},
    {KeyCode::rightArrow, postable<AppCommandEvents::collapseRightPane>()},
    {KeyCode::upArrow, postable<AppCommandEvents::restoreThreePaneLayout>()},
};

constexpr FixedKey binderKeys[] = {
    {KeyCode::rightArrow, postable<AppCommandEvents::binderExpandFolder>()},
    {KeyCode::leftArrow, postable<AppCommandEvents::binderCollapseFolder>()},
    {KeyCode::downArrow, postable<AppCommandEvents::binderNextItem>()},
    {KeyCode::upArrow, postable<AppCommandEvents::binderPreviousItem>()},
};

constexpr PostableCommand activateBinderSelection =
    postable<AppCommandEvents::binderActivateSelection>();

PostableCommand commandOf(std::span<const FixedKey> keys, quint16 keyCode)
{
    const auto found = std::ranges::find(keys, keyCode, &FixedKey::keyCode);
    return found != keys.end() ? found->command : PostableCommand{};
}

KeyRoute post(const PostableCommand& command)
{
    return {KeyRoute::Kind::Post, command, false};
}

KeyRoute routeBinderKey(const ShortcutData& pressed)
{
    if (pressed.modifierFlags & KeyModifier::command) {
        if (const auto command = commandOf(binderKeys, pressed.keyCode))
            return {KeyRoute::Kind::Post, command, true};
    }
    if (pressed.keyCode == KeyCode::returnKey && pressed.modifierFlags == 0)
        return post(activateBinderSelection);
    return {};
}

KeyRoute routeAction(ShortcutAction action, KeyFocus focus)
{
    if (focus == KeyFocus::Text && !worksInText(action))
        return {};
    switch (action) {
    case ShortcutAction::closeWindow:
        return {KeyRoute::Kind::CloseWindow, {}, false};
    case ShortcutAction::settings:
        return {KeyRoute::Kind::OpenSettings, {}, false};
    default:
        return post(notification(action));
    }
}

template <typename... Classes>
bool isAnyOf(const QWidget* widget)
{
    return ((qobject_cast<const Classes*>(widget) != nullptr) || ...);
}

} // namespace

KeyRoute routeKey(const KeyPress& press, KeyFocus focus, const ShortcutBindings& bindings)
{
    if (focus == KeyFocus::Closed || press.typesByAltGr())
        return {};
    const auto pressed = press.shortcut();
    if (!pressed)
        return {};
    const quint32 held = pressed->modifierFlags;
    constexpr quint32 commandShift = KeyModifier::command | KeyModifier::shift;
    if (pressed->keyCode == KeyCode::z && (held & KeyModifier::command) && !(held & ~commandShift))
        return {held & KeyModifier::shift ? KeyRoute::Kind::Redo : KeyRoute::Kind::Undo, {}, true};
    if (held == (KeyModifier::option | KeyModifier::shift)) {
        if (const auto command = commandOf(paneKeys, pressed->keyCode))
            return post(command);
    }
    if (isReservedSystemShortcut(*pressed))
        return {};
    if (focus == KeyFocus::Elsewhere) {
        const KeyRoute route = routeBinderKey(*pressed);
        if (route.kind != KeyRoute::Kind::Pass)
            return route;
    }
    const auto action = bindings.firstMatch(*pressed);
    return action ? routeAction(*action, focus) : KeyRoute{};
}

bool isReservedSystemShortcut(const ShortcutData& pressed)
{
    return pressed.matches({KeyCode::comma, KeyModifier::command});
}

KeyFocus keyFocusOf(const QWidget* focusWidget)
{
    for (const QWidget* widget = focusWidget; widget; widget = widget->parentWidget()) {
        const QVariant declared = widget->property(focusProperty);
        if (declared.isValid())
            return KeyFocus(declared.toInt());
        if (widget->isWindow())
            break;
    }
    if (!focusWidget)
        return KeyFocus::Elsewhere;
    if (isAnyOf<QMenu, QMenuBar>(focusWidget))
        return KeyFocus::Closed;
    if (isAnyOf<QLineEdit, QTextEdit, QPlainTextEdit, QAbstractSpinBox>(focusWidget))
        return KeyFocus::Text;
    if (isAnyOf<QAbstractButton, QComboBox, QAbstractSlider, QTabBar>(focusWidget))
        return KeyFocus::Control;
    const bool takesText = focusWidget->testAttribute(Qt::WA_InputMethodEnabled) &&
                           !isAnyOf<QAbstractItemView>(focusWidget);
    return takesText ? KeyFocus::Text : KeyFocus::Elsewhere;
}

void declareKeyFocus(QWidget* widget, KeyFocus focus)
{
    widget->setProperty(focusProperty, int(focus));
}

} // namespace orvane
