// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QApplication>
#include <QSocketNotifier>
#include <QTimer>
#include <QWidget>

#include <cstdio>
#include <unistd.h>

namespace orvane::bench {

/// Prints one line when the first frame has been painted: the event loop comes round once
/// everything that was to be painted is. Then ends the program with its standard input.
class FirstFrame final : public QObject {
public:
    FirstFrame()
        : m_input(STDIN_FILENO, QSocketNotifier::Read)
    {
        qApp->installEventFilter(this);
        connect(&m_input, &QSocketNotifier::activated, qApp, &QCoreApplication::quit);
    }

    [[nodiscard]] bool isTold() const { return m_told; }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        const auto* widget = qobject_cast<QWidget*>(watched);
        if (event->type() == QEvent::Paint && widget && widget->isWindow() && !m_told) {
            m_told = true;
            QTimer::singleShot(0, [] {
                std::puts("frame");
                std::fflush(stdout);
            });
        }
        return false;
    }

private:
    QSocketNotifier m_input;
    bool m_told = false;
};

} // namespace orvane::bench
