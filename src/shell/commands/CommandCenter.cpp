// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/commands/CommandCenter.h"

#include <QApplication>
#include <QMetaObject>
#include <QWidget>

namespace orvane {

namespace {

/// Text fields and text views, ours included, share no base class but the names of their slots.
bool focusHasMethod(const char* method)
{
    const QWidget* focus = QApplication::focusWidget();
    return focus &&
           focus->metaObject()->indexOfMethod(QByteArray(method).append("()").constData()) >= 0;
}

} // namespace

CommandCenter::CommandCenter(const Services& services, ShortcutCenter& shortcuts,
                             ContextSource context)
    : m_services(services)
    , m_shortcuts(shortcuts)
    , m_context(std::move(context))
{
    using Direction = AppUndoRedoRouter::Direction;
    const AppUndoRedoRouter& router = shortcuts.undoRedo();
    setDirect(
        DirectCommand::Undo, [&router] { router.perform(Direction::Undo); },
        [&router] { return router.canPerform(Direction::Undo); });
    setDirect(
        DirectCommand::Redo, [&router] { router.perform(Direction::Redo); },
        [&router] { return router.canPerform(Direction::Redo); });
    setClipboardCommand(DirectCommand::Cut, "cut");
    setClipboardCommand(DirectCommand::Copy, "copy");
    setClipboardCommand(DirectCommand::Paste, "paste");
    setClipboardCommand(DirectCommand::PastePlain, "pastePlain");
    setClipboardCommand(DirectCommand::SelectAll, "selectAll");
}

void CommandCenter::setDirect(DirectCommand command, std::function<void()> act,
                              std::function<bool()> wouldAct)
{
    m_direct[size_t(command)] = {std::move(act), std::move(wouldAct)};
}

void CommandCenter::setClipboardCommand(DirectCommand command, const char* method)
{
    setDirect(
        command,
        [method] {
            QMetaObject::invokeMethod(QApplication::focusWidget(), method, Qt::DirectConnection);
        },
        [method] { return focusHasMethod(method); });
}

bool CommandCenter::isPresent(const Command& command) const
{
    if (command.notification)
        return command.notification.isObserved(m_services.notifications);
    return bool(handler(command).act);
}

bool CommandCenter::wouldAct(const Command& command) const
{
    if (!isPresent(command) || !isMet(command.need, m_context()))
        return false;
    if (command.notification)
        return true;
    const auto& wouldAct = handler(command).wouldAct;
    return !wouldAct || wouldAct();
}

std::optional<bool> CommandCenter::isOn(const Command& command) const
{
    return command.isOn ? std::optional(command.isOn(m_services.defaults, m_context()))
                        : std::nullopt;
}

void CommandCenter::run(const Command& command)
{
    if (!wouldAct(command))
        return;
    if (command.notification)
        command.notification.post(m_services.notifications);
    else
        handler(command).act();
}

QString CommandCenter::keyText(const Command& command) const
{
    if (command.action)
        return m_shortcuts.bindings().shortcut(*command.action).desktopText();
    return command.fixedKey ? orvane::keyText(*command.fixedKey) : QString();
}

} // namespace orvane
