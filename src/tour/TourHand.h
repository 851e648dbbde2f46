// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QPoint>
#include <QString>

#include <chrono>
#include <functional>

class QWidget;
class QWindow;

namespace orvane {

/// Works a window as a person does: every click and key goes to the window as an event of the
/// window system would, and finds its widget the same way.
class TourHand {
public:
    explicit TourHand(QWidget& window);

    void click(QWidget& target) const;
    void click(QWidget& target, QPoint position, Qt::MouseButton button = Qt::LeftButton) const;
    void doubleClick(QWidget& target, QPoint position) const;
    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const;
    /// Each character by a key press; a line break by Return.
    void type(const QString& text) const;
    /// Runs the event loop until nothing is pending.
    static void settle();
    /// Runs the event loop until the condition holds; false when it doesn't within `limit`.
    static bool waitFor(const std::function<bool()>& condition,
                        std::chrono::milliseconds limit = std::chrono::seconds(10));

private:
    void sendMouse(QEvent::Type type, QWidget& target, QPoint position,
                   Qt::MouseButton button) const;
    void sendKey(int key, Qt::KeyboardModifiers modifiers, const QString& text) const;

    QWidget& m_window;
};

} // namespace orvane
