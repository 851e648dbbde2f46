// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

#include <ctime>

namespace orvane::bench {

/// Milliseconds of this thread's own work, on which all happens that stands between an event and
/// its frame; what other programs do meanwhile doesn't count.
inline double threadMilliseconds()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return double(now.tv_sec) * 1e3 + double(now.tv_nsec) / 1e6;
}

template <typename Work>
double threadMillisecondsOf(Work&& work)
{
    const double start = threadMilliseconds();
    work();
    return threadMilliseconds() - start;
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
        const double time = threadMillisecondsOf([&] {
            work();
            for (int turn = 0; m_count == before && turn < 1000; ++turn)
                QApplication::processEvents(QEventLoop::AllEvents, 1);
        });
        if (m_count == before)
            qFatal("nothing was painted");
        QApplication::processEvents(QEventLoop::AllEvents, 5);
        return time;
    }

private:
    int m_count = 0;
};

/// Lets everything happen that waits, such as layout bit by bit.
inline void settle()
{
    for (int i = 0; i < 20; ++i)
        QApplication::processEvents(QEventLoop::AllEvents, 5);
}

inline void pressKey(QWidget& widget, int key, const QString& text = {})
{
    QKeyEvent press(QEvent::KeyPress, key, {}, text);
    QApplication::sendEvent(&widget, &press);
    QKeyEvent release(QEvent::KeyRelease, key, {}, text);
    QApplication::sendEvent(&widget, &release);
}

} // namespace orvane::bench
