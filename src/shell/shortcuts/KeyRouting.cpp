// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/shortcuts/KeyRouting.h"

#include "commands/KeyTable.h"

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

namespace orvane {

namespace {

constexpr char focusProperty[] = "orvaneKeyFocus";

KeyRoute post(const PostableCommand& command)
{
    return {KeyRoute::Kind::Post, command, false};
}

KeyRoute routeFixedKey(const KeyRow& row)
{
    const auto key = fixedKeyOf(row);
    if (key == FixedKey::undo)
        return {KeyRoute::Kind::Undo, {}, true};
    if (key == FixedKey::redo || key == FixedKey::redoByY)
        return {KeyRoute::Kind::Redo, {}, true};
    if (key == FixedKey::settings)
        return {};
    const bool moves = row.place == KeyPlace::Binder && key != FixedKey::binderActivateSelection;
    return {KeyRoute::Kind::Post, row.command, moves};
}

KeyRoute routeAction(ShortcutAction action, const ShortcutData& pressed, KeyFocus focus)
{
    if (focus == KeyFocus::Text && !worksInText(action) && isUsedByText(pressed))
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
    if (const KeyRow* row = keyRowFor(*pressed, KeyPlace::Always))
        return routeFixedKey(*row);
    const KeyRow* binderKey =
        focus == KeyFocus::Elsewhere ? keyRowFor(*pressed, KeyPlace::Binder) : nullptr;
    if (binderKey)
        return routeFixedKey(*binderKey);
    const auto action = bindings.firstMatch(*pressed);
    return action ? routeAction(*action, *pressed, focus) : KeyRoute{};
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
