// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/CommandLine.h"
#include "shell/OrvaneWorkspaceApp.h"
#include "shell/Tour.h"

#include <QApplication>

#include <cstdio>

using namespace orvane;

namespace {

QStringList argumentsOf(int argc, char** argv)
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    return arguments;
}

void name(QApplication& application)
{
    QApplication::setApplicationName(QStringLiteral("orvaneworkspace"));
    QApplication::setApplicationDisplayName(QStringLiteral("OrvaneWorkspace"));
    QApplication::setApplicationVersion(QStringLiteral(ORVANE_VERSION));
    QGuiApplication::setDesktopFileName(QStringLiteral("orvaneworkspace"));
    application.setQuitOnLastWindowClosed(true);
}

} // namespace

int main(int argc, char** argv)
{
    const auto commandLine = readCommandLine(argumentsOf(argc, argv));
    if (!commandLine) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(commandLine.error()));
        return 2;
    }
    if (const auto* print = std::get_if<PrintText>(&*commandLine)) {
        std::fputs(qUtf8Printable(print->text), stdout);
        return 0;
    }
    const auto* tour = std::get_if<RunTour>(&*commandLine);
    if (tour)
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    name(application);
    if (tour)
        return runTour(tour->folder);
    OrvaneWorkspaceApp program(UserFolders::ofThisUser());
    QObject::connect(&program, &OrvaneWorkspaceApp::quitRequested, &application,
                     &QCoreApplication::quit, Qt::QueuedConnection);
    QObject::connect(&application, &QCoreApplication::aboutToQuit, &program,
                     &OrvaneWorkspaceApp::finish);
    program.start();
    return QApplication::exec();
}
