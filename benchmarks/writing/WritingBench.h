// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "support/Bench.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

#include <ctime>

namespace orvane::bench {

/// The rows "lists/…".
void addListRows();
/// The rows "markdown/…".
void addMarkdownRows();
/// The rows "session/…".
void addSessionRows();
/// The rows "spelling/…" and "find/…".
void addToolRows();

/// Milliseconds of this thread's own work, on which all happens that stands between an event and
/// its frame; what other programs do meanwhile doesn't count.
inline double threadMilliseconds()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return double(now.tv_sec) * 1e3 + double(now.tv_nsec) / 1e6;
}

/// Counts the frames that a widget has painted.
class PaintedFrames : public QObject {
public:
    explicit PaintedFrames(QWidget* painted) { painted->installEventFilter(this); }

    bool eventFilter(QObject*, QEvent* event) override
    {
        m_count += event->type() == QEvent::Paint;
        return false;
    }

    /// Milliseconds from now until `work` has been done and shown.
    template <typename Work>
    double until(Work&& work)
    {
        const int before = m_count;
        const double start = threadMilliseconds();
        work();
        for (int turn = 0; m_count == before && turn < 1000; ++turn)
            QApplication::processEvents(QEventLoop::AllEvents, 1);
        const double time = threadMilliseconds() - start;
        if (m_count == before)
            qFatal("nothing was painted");
        return time;
    }

private:
    int m_count = 0;
};

inline void settle()
{
    for (int i = 0; i < 20; ++i)
        QApplication::processEvents(QEventLoop::AllEvents, 5);
}

inline void showForKeys(QWidget& widget)
{
    widget.resize(900, 800);
    widget.show();
    QApplication::setActiveWindow(&widget);
    widget.setFocus();
    settle();
}

inline void pressKey(QWidget& widget, int key, const QString& text = {})
{
    QKeyEvent press(QEvent::KeyPress, key, {}, text);
    QApplication::sendEvent(&widget, &press);
}

} // namespace orvane::bench
