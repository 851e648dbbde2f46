// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "commands/ShortcutRecordingState.h"
#include "platform/Services.h"
#include "shell/shortcuts/AppUndoRedoRouter.h"
#include "shell/shortcuts/KeyRouting.h"

#include <QObject>
#include <QPointer>

class QKeyEvent;
class QWidget;

namespace orvane {

/// The one keyboard front of the program. Sees each key press of every window before the widget
/// that has the keyboard, and turns the keys of actions into their notifications; menus carry no
/// keys of their own, so that a changed key works at once everywhere. What the rules of
/// `routeKey` leave alone goes on to the toolkit untouched, also everything that an input method
/// is composing. Main thread, except `fire`.
class ShortcutCenter : public QObject {
    Q_OBJECT
public:
    ShortcutCenter(const Services& services, AppUndoRedoRouter router, QObject* parent = nullptr);
    ~ShortcutCenter() override;

    /// Begins and ends to watch the application's keys. Both may be called again.
    void start();
    void stop();

    /// Posts a command, on the main thread at once, on another by way of its event loop.
    void fire(const PostableCommand& command);

    /// The keys in force. Kept until the stored overrides change, from wherever they are changed.
    [[nodiscard]] const ShortcutBindings& bindings() const;
    /// Stores a key of a person's choice. One that another action has as well is stored all the
    /// same; the action first in order keeps it.
    void setShortcut(ShortcutAction action, const ShortcutData& shortcut);
    /// The action has its default key again.
    void restoreDefault(ShortcutAction action);
    /// All actions have their default keys again.
    void restoreDefaults();

    [[nodiscard]] ShortcutRecordingState& recording() { return m_recording; }
    [[nodiscard]] const AppUndoRedoRouter& undoRedo() const { return m_router; }

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    /// Some action has another key: texts that name keys are out of date.
    void bindingsChanged();

private:
    enum class Outcome { Passed, Swallowed };

    [[nodiscard]] bool seenBefore(const QObject* receiver, const QKeyEvent* event);
    [[nodiscard]] KeyRoute route(const KeyPress& press) const;
    [[nodiscard]] bool wouldSwallow(const KeyRoute& route) const;
    Outcome handlePress(const KeyPress& press);
    Outcome follow(const KeyRoute& route);
    Outcome record(ShortcutAction action, const KeyPress& press);
    void previewModifiers(ShortcutAction action, quint32 modifierFlags);

    Services m_services;
    AppUndoRedoRouter m_router;
    ShortcutRecordingState m_recording;
    mutable std::optional<ShortcutBindings> m_bindings;
    mutable std::optional<KeyFocus> m_focus; ///< until the keyboard goes to another widget
    bool m_watching = false;
    // One press visits its window, the widget with the keyboard and then the widgets around it.
    const QEvent* m_lastEvent = nullptr;
    quint64 m_lastTimestamp = 0;
    QPointer<const QObject> m_lastReceiver;
};

} // namespace orvane
