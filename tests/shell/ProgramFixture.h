// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "ShellFixture.h"

#include <QProcess>

namespace orvane {

/// The program itself, as the desktop starts it: in processes of its own over the test's home.
class ProgramTest : public ShellTest {
protected:
    /// The environment of a person whose home is the test's.
    QProcessEnvironment environment() const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        const QString home = m_home.path();
        environment.insert(QStringLiteral("HOME"), home);
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), home + QStringLiteral("/config"));
        environment.insert(QStringLiteral("XDG_DATA_HOME"), home + QStringLiteral("/share"));
        environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), home);
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        environment.remove(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"));
        return environment;
    }
    void launch(QProcess& process, const QStringList& arguments) const
    {
        process.setProcessEnvironment(environment());
        process.setWorkingDirectory(m_home.path());
        process.start(QStringLiteral(ORVANE_PROGRAM), arguments);
        ASSERT_TRUE(process.waitForStarted());
    }
    /// A start that ends by itself; its exit code.
    int exitCode(const QStringList& arguments, QByteArray* output = nullptr) const
    {
        QProcess process;
        launch(process, arguments);
        if (!process.waitForFinished(30'000))
            return -1;
        if (output)
            *output = process.readAllStandardOutput() + process.readAllStandardError();
        return process.exitCode();
    }
};

} // namespace orvane
