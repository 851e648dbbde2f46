// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// The program as a person starts it, or an empty window, for measuring from outside: prints one
// line when its first frame has been painted, then waits for its input to end.
#include "core/SessionKeys.h"
#include "shell/MainWindow.h"
#include "shell/OrvaneWorkspaceApp.h"

#include <QApplication>
#include <QSocketNotifier>
#include <QTimer>

#include <cstdio>
#include <unistd.h>

using namespace orvane;

namespace {

/// Tells the first frame: the event loop comes round once everything that was to be painted is.
class FirstFrame final : public QObject {
public:
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
    bool m_told = false;
};

} // namespace

int main(int argc, char** argv)
{
    const QString home = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QString();
    QApplication application(argc, argv);
    FirstFrame firstFrame;
    application.installEventFilter(&firstFrame);
    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &application, &QCoreApplication::quit);

    if (home.isEmpty()) {
        QWidget window;
        window.resize(1440, 900);
        window.show();
        return QApplication::exec();
    }
    OrvaneWorkspaceApp program(UserFolders::below(home));
    program.start();
    const int result = QApplication::exec();
    program.finish();
    return result;
}
