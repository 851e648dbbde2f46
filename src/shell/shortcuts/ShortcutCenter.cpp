// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/shortcuts/ShortcutCenter.h"

#include "commands/AppCommandEvents.h"

#include <QApplication>
#include <QKeyEvent>
#include <QThread>
#include <QWidget>

namespace orvane {

namespace {

quint32 modifierOfKey(int key)
{
    switch (key) {
    case Qt::Key_Shift:
        return KeyModifier::shift;
    case Qt::Key_Meta:
    case Qt::Key_Super_L:
    case Qt::Key_Super_R:
        return KeyModifier::control;
    case Qt::Key_Alt:
        return KeyModifier::option;
    case Qt::Key_Control:
        return KeyModifier::command;
    default:
        return 0;
    }
}

/// These type nothing, so an action may have one alone.
bool isFunctionKey(int key)
{
    return key >= Qt::Key_F1 && key <= Qt::Key_F35;
}

} // namespace

ShortcutCenter::ShortcutCenter(const Services& services, AppUndoRedoRouter router, QObject* parent)
    : QObject(parent)
    , m_services(services)
    , m_router(std::move(router))
{
    connect(&services.defaults, &UserDefaults::changed, this, [this](const QString& key) {
        if (key != ShortcutStorage::defaultsKey)
            return;
        m_bindings.reset();
        emit bindingsChanged();
    });
    connect(qApp, &QApplication::focusChanged, this, [this] { m_focus.reset(); });
}

ShortcutCenter::~ShortcutCenter()
{
    stop();
}

void ShortcutCenter::start()
{
    if (m_watching)
        return;
    m_watching = true;
    QCoreApplication::instance()->installEventFilter(this);
}

void ShortcutCenter::stop()
{
    if (!m_watching)
        return;
    m_watching = false;
    QCoreApplication::instance()->removeEventFilter(this);
}

void ShortcutCenter::fire(const PostableCommand& command)
{
    if (!command)
        return;
    if (QThread::currentThread() == thread())
        command.post(m_services.notifications);
    else
        QMetaObject::invokeMethod(
            this, [this, command] { command.post(m_services.notifications); },
            Qt::QueuedConnection);
}

const ShortcutBindings& ShortcutCenter::bindings() const
{
    if (!m_bindings)
        m_bindings.emplace(ShortcutStorage::loadOverrides(m_services.defaults));
    return *m_bindings;
}

void ShortcutCenter::setShortcut(ShortcutAction action, const ShortcutData& shortcut)
{
    auto overrides = ShortcutStorage::loadOverrides(m_services.defaults);
    overrides.insert(action, shortcut);
    ShortcutStorage::saveOverrides(m_services.defaults, overrides);
}

void ShortcutCenter::restoreDefault(ShortcutAction action)
{
    auto overrides = ShortcutStorage::loadOverrides(m_services.defaults);
    if (overrides.remove(action) > 0)
        ShortcutStorage::saveOverrides(m_services.defaults, overrides);
}

void ShortcutCenter::restoreDefaults()
{
    ShortcutStorage::clearOverrides(m_services.defaults, m_services.notifications);
}

bool ShortcutCenter::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::KeyPress: {
        const auto* keyEvent = static_cast<QKeyEvent*>(event);
        return !seenBefore(watched, keyEvent) &&
               handlePress(KeyPress::of(*keyEvent)) == Outcome::Swallowed;
    }
    case QEvent::ShortcutOverride: {
        // The toolkit asks whether the key is wanted before it looks for shortcuts of its own.
        const auto* keyEvent = static_cast<QKeyEvent*>(event);
        if (!m_recording.isActive() && !wouldSwallow(route(KeyPress::of(*keyEvent))))
            return false;
        event->accept();
        return true;
    }
    case QEvent::KeyRelease: {
        const auto action = m_recording.recordingAction();
        if (!action)
            return false;
        const auto* keyEvent = static_cast<QKeyEvent*>(event);
        previewModifiers(*action,
                         modifierFlagsOf(keyEvent->modifiers()) & ~modifierOfKey(keyEvent->key()));
        return true;
    }
    default:
        return false;
    }
}

bool ShortcutCenter::seenBefore(const QObject* receiver, const QKeyEvent* event)
{
    const bool sameEvent = event == m_lastEvent && event->timestamp() == m_lastTimestamp;
    const QObject* last = m_lastReceiver;
    m_lastEvent = event;
    m_lastTimestamp = event->timestamp();
    m_lastReceiver = receiver;
    if (!sameEvent || !last || receiver->isWindowType())
        return false;
    const auto* widget = qobject_cast<const QWidget*>(receiver);
    const auto* lastWidget = qobject_cast<const QWidget*>(last);
    const bool comesFromItsWindow = last->isWindowType();
    const bool comesFromInside =
        widget && lastWidget && widget != lastWidget && widget->isAncestorOf(lastWidget);
    return comesFromItsWindow || comesFromInside;
}

KeyRoute ShortcutCenter::route(const KeyPress& press) const
{
    if (QApplication::activePopupWidget() || QApplication::activeModalWidget())
        return routeKey(press, KeyFocus::Closed, bindings());
    if (!m_focus)
        m_focus = keyFocusOf(QApplication::focusWidget());
    return routeKey(press, *m_focus, bindings());
}

bool ShortcutCenter::wouldSwallow(const KeyRoute& route) const
{
    switch (route.kind) {
    case KeyRoute::Kind::Pass:
        return false;
    case KeyRoute::Kind::Undo:
        return m_router.canPerform(AppUndoRedoRouter::Direction::Undo);
    case KeyRoute::Kind::Redo:
        return m_router.canPerform(AppUndoRedoRouter::Direction::Redo);
    default:
        return true;
    }
}

ShortcutCenter::Outcome ShortcutCenter::handlePress(const KeyPress& press)
{
    if (const auto action = m_recording.recordingAction())
        return record(*action, press);
    const KeyRoute route = this->route(press);
    if (press.isAutoRepeat && !route.repeats && route.kind != KeyRoute::Kind::Pass)
        return Outcome::Swallowed;
    return follow(route);
}

ShortcutCenter::Outcome ShortcutCenter::follow(const KeyRoute& route)
{
    switch (route.kind) {
    case KeyRoute::Kind::Pass:
        return Outcome::Passed;
    case KeyRoute::Kind::Undo:
        return m_router.perform(AppUndoRedoRouter::Direction::Undo) ? Outcome::Swallowed
                                                                    : Outcome::Passed;
    case KeyRoute::Kind::Redo:
        return m_router.perform(AppUndoRedoRouter::Direction::Redo) ? Outcome::Swallowed
                                                                    : Outcome::Passed;
    case KeyRoute::Kind::Post:
        fire(route.command);
        break;
    case KeyRoute::Kind::CloseWindow:
        if (QWidget* window = QApplication::activeWindow())
            window->close();
        break;
    case KeyRoute::Kind::OpenSettings:
        m_services.notifications.post(AppCommandEvents::openSettingsWindow);
        break;
    }
    return Outcome::Swallowed;
}

ShortcutCenter::Outcome ShortcutCenter::record(ShortcutAction action, const KeyPress& press)
{
    if (const quint32 modifier = modifierOfKey(press.key)) {
        previewModifiers(action, modifierFlagsOf(press.modifiers) | modifier);
        return Outcome::Swallowed;
    }
    const auto shortcut = press.shortcut();
    if (press.key == Qt::Key_Escape) {
        m_recording.end();
        m_services.notifications.post(ShortcutRecordingState::captureCancelled);
        return Outcome::Swallowed;
    }
    if (!shortcut || press.typesByAltGr() || press.isAutoRepeat)
        return Outcome::Swallowed;
    m_services.notifications.post(
        ShortcutRecordingState::capturePreview,
        ShortcutCapturePreview{action, shortcut->displayString(), shortcut->desktopText()});
    if (shortcut->modifierFlags == 0 && !isFunctionKey(press.key))
        return Outcome::Swallowed;
    m_recording.end();
    m_services.notifications.post(
        ShortcutRecordingState::captureCompleted,
        ShortcutCapture{action, *shortcut, bindings().conflict(action, *shortcut)});
    return Outcome::Swallowed;
}

void ShortcutCenter::previewModifiers(ShortcutAction action, quint32 modifierFlags)
{
    m_services.notifications.post(ShortcutRecordingState::capturePreview,
                                  ShortcutCapturePreview{action,
                                                         modifierDisplayString(modifierFlags),
                                                         modifierDesktopText(modifierFlags)});
}

} // namespace orvane
