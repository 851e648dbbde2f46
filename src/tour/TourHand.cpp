// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "tour/TourHand.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QThread>
#include <QWidget>
#include <QWindow>

// The toolkit's own way in for events as a window system sends them, which its test library uses.
Q_GUI_EXPORT void qt_handleMouseEvent(QWindow* window, const QPointF& local, const QPointF& global,
                                      Qt::MouseButtons state, Qt::MouseButton button,
                                      QEvent::Type type, Qt::KeyboardModifiers modifiers,
                                      int timestamp);
Q_GUI_EXPORT void qt_handleKeyEvent(QWindow* window, QEvent::Type type, int key,
                                    Qt::KeyboardModifiers modifiers, const QString& text,
                                    bool autoRepeat, ushort count);

namespace orvane {

namespace {

/// Milliseconds, as the events tell them; two clicks further apart are no double click.
int timestamp = 0;
constexpr int betweenClicks = 2'000;

} // namespace

TourHand::TourHand(QWidget& window)
    : m_window(window)
{}

void TourHand::sendMouse(QEvent::Type type, QWidget& target, QPoint position,
                         Qt::MouseButton button) const
{
    const QPointF local = target.mapTo(target.window(), position);
    const QPointF global = target.mapToGlobal(position);
    const bool held = type == QEvent::MouseButtonPress;
    qt_handleMouseEvent(target.window()->windowHandle(), local, global,
                        held ? button : Qt::NoButton, button, type, Qt::NoModifier, ++timestamp);
    settle();
}

void TourHand::click(QWidget& target) const
{
    click(target, target.rect().center());
}

void TourHand::click(QWidget& target, QPoint position, Qt::MouseButton button) const
{
    timestamp += betweenClicks;
    sendMouse(QEvent::MouseMove, target, position, Qt::NoButton);
    sendMouse(QEvent::MouseButtonPress, target, position, button);
    sendMouse(QEvent::MouseButtonRelease, target, position, button);
}

void TourHand::doubleClick(QWidget& target, QPoint position) const
{
    click(target, position);
    sendMouse(QEvent::MouseButtonPress, target, position, Qt::LeftButton);
    sendMouse(QEvent::MouseButtonRelease, target, position, Qt::LeftButton);
}

void TourHand::sendKey(int key, Qt::KeyboardModifiers modifiers, const QString& text) const
{
    QWidget* popup = QApplication::activePopupWidget();
    QWindow* window = popup ? popup->windowHandle() : m_window.windowHandle();
    qt_handleKeyEvent(window, QEvent::KeyPress, key, modifiers, text, false, 1);
    qt_handleKeyEvent(window, QEvent::KeyRelease, key, modifiers, text, false, 1);
}

void TourHand::press(int key, Qt::KeyboardModifiers modifiers) const
{
    sendKey(key, modifiers, key == Qt::Key_Return ? QStringLiteral("\r") : QString());
    settle();
}

void TourHand::type(const QString& text) const
{
    for (const QChar c : text) {
        if (c == u'\n')
            sendKey(Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"));
        else
            sendKey(c.toUpper().unicode(), c.isUpper() ? Qt::ShiftModifier : Qt::NoModifier, c);
    }
    settle();
}

void TourHand::settle()
{
    for (int i = 0; i < 3; ++i)
        QCoreApplication::processEvents();
}

bool TourHand::waitFor(const std::function<bool()>& condition, std::chrono::milliseconds limit)
{
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.elapsed() > limit.count())
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        QThread::msleep(2);
    }
    settle();
    return true;
}

} // namespace orvane
