// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "ProgramFixture.h"

#include <QStandardPaths>
#include <QTest>

namespace orvane {

/// The program under a window system of its own, worked by the pointer and the keys of that.
class RealScreenTest : public ProgramTest {
protected:
    static bool isInstalled(const QString& tool)
    {
        return !QStandardPaths::findExecutable(tool).isEmpty();
    }
    /// An X server of its own, from here on the program's.
    void startX11(const QString& size)
    {
        // Without a reset, which turns new clients away whenever the last one has left.
        m_screen.start(QStringLiteral("Xvfb"),
                       QStringLiteral("-displayfd 1 -nolisten tcp -noreset -screen 0")
                               .split(QLatin1Char(' ')) +
                           QStringList(size + QStringLiteral("x24")));
        ASSERT_TRUE(QTest::qWaitFor([this] { return m_screen.canReadLine(); }, 20'000));
        m_environment = environment();
        m_environment.insert(QStringLiteral("DISPLAY"),
                             QLatin1Char(':') + QString::fromLatin1(m_screen.readLine().trimmed()));
        m_environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
        m_environment.remove(QStringLiteral("WAYLAND_DISPLAY"));
        // The libraries of real window systems keep some memory to the end.
        m_environment.insert(QStringLiteral("ASAN_OPTIONS"), QStringLiteral("detect_leaks=0"));
    }
    /// A Wayland compositor whose screen and keys are those of an X server.
    void startWayland(const QSize& size)
    {
        startX11(QStringLiteral("%1x%2").arg(size.width()).arg(size.height()));
        const QString socket = QStringLiteral("orvane");
        // Without animations, during which keys go to a window that is closing, and without the
        // panel, on which a click starts a terminal.
        const QString config = m_home.filePath(QStringLiteral("weston.ini"));
        ASSERT_TRUE(writeFileAtomically(config, "[shell]\nanimation=none\nclose-animation=none\n"
                                                "startup-animation=none\npanel-position=none\n"
                                                "[input-method]\npath=/bin/true\n"));
        m_compositor.setProcessEnvironment(m_environment);
        m_compositor.start(QStringLiteral("weston"),
                           {QStringLiteral("--backend=x11-backend.so"),
                            QStringLiteral("--use-pixman"), QStringLiteral("--config=") + config,
                            QStringLiteral("--idle-time=0"), QStringLiteral("--socket=") + socket,
                            QStringLiteral("--width=%1").arg(size.width()),
                            QStringLiteral("--height=%1").arg(size.height())});
        const QString path = m_home.filePath(socket);
        ASSERT_TRUE(QTest::qWaitFor([&] { return QFileInfo::exists(path); }, 20'000));
        m_environment.insert(QStringLiteral("WAYLAND_DISPLAY"), socket);
        m_environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("wayland"));
    }
    void startProgram()
    {
        m_program.setProcessEnvironment(m_environment);
        m_program.start(QStringLiteral(ORVANE_PROGRAM), QStringList());
    }
    void TearDown() override
    {
        for (QProcess* process : {&m_program, &m_compositor, &m_screen}) {
            if (process->state() == QProcess::NotRunning)
                continue;
            process->terminate();
            process->waitForFinished(20'000);
        }
    }
    [[nodiscard]] QString run(const QString& tool, const QStringList& words) const
    {
        QProcess process;
        process.setProcessEnvironment(m_environment);
        process.start(tool, words);
        return process.waitForFinished(20'000) ? QString::fromUtf8(process.readAll()).trimmed()
                                               : QString();
    }
    /// What the tool that has the pointer and the keys says.
    QString hand(const QStringList& words) const { return run(QStringLiteral("xdotool"), words); }
    /// Until the program has done what was asked of it: it takes next to no time of the processor.
    void settle() const
    {
        const auto ticks = [this] {
            QFile file(QStringLiteral("/proc/%1/stat").arg(m_program.processId()));
            if (!file.open(QIODevice::ReadOnly))
                return qint64(0);
            const QByteArray stat = file.readAll();
            const QList<QByteArray> fields =
                stat.mid(stat.lastIndexOf(')') + 2).split(' '); // from the third on
            return fields.value(11).toLongLong() + fields.value(12).toLongLong();
        };
        constexpr int idle = 2;
        for (int i = 0; i < 40; ++i) {
            const qint64 before = ticks();
            QTest::qWait(500);
            if (ticks() - before <= idle)
                return;
        }
    }
    void keys(const QStringList& names) const
    {
        for (const QString& name : names) {
            hand({QStringLiteral("key"), name});
            settle();
        }
    }
    /// Small letters only, which need no modifier.
    void type(const QString& text) const
    {
        hand({QStringLiteral("type"), QStringLiteral("--delay"), QStringLiteral("40"), text});
        settle();
    }
    /// The program's window; under Wayland the server doesn't know it.
    [[nodiscard]] QString windowId() const
    {
        return hand({QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                     QStringLiteral("--class"), QStringLiteral("^orvaneworkspace$")});
    }

    QProcessEnvironment m_environment;
    QProcess m_screen;
    QProcess m_compositor;
    QProcess m_program;
};

} // namespace orvane
