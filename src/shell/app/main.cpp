// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/FontsAhead.h"
#include "shell/app/CommandLine.h"
#include "shell/app/OrvaneWorkspaceApp.h"
#include "shell/app/ProgramName.h"
#include "shell/desktop/SingleInstance.h"
#include "shell/desktop/WaylandGlobals.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

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

/// Read before the toolkit takes the token out of the environment.
OpenRequest requestOf(const CommandLine& commandLine)
{
    const auto* run = std::get_if<RunProgram>(&commandLine);
    OpenRequest request = openRequestFor(run ? run->toOpen : QStringList(), QDir::currentPath());
    request.activationToken = qEnvironmentVariable("XDG_ACTIVATION_TOKEN");
    return request;
}

/// Not every session has a runtime folder.
QString runtimeFolder()
{
    QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (!folder.isEmpty())
        return folder;
    QString own = UserFolders::ofThisUser().configuration;
    QDir().mkpath(own);
    return own;
}

/// Whether there is anything to show a window on.
bool hasDisplay()
{
    const auto isSet = [](const char* name) {
        return !qEnvironmentVariableIsEmpty(name);
    };
    return isSet("QT_QPA_PLATFORM") || isSet("DISPLAY") || isSet("WAYLAND_DISPLAY") ||
           QFileInfo::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") +
                             QStringLiteral("/wayland-0"));
}

/// Windows that are drawn by software need no graphics driver, which takes 40 MB of memory at a
/// start. But without one the toolkit draws no title bar where the compositor leaves that to the
/// window. "none" is no driver that there is; what the person has set counts.
void leaveGraphicsDriversAlone()
{
    constexpr const char* driver = "QT_WAYLAND_CLIENT_BUFFER_INTEGRATION";
    const QString socket = waylandSocketPath();
    if (socket.isEmpty() || qEnvironmentVariableIsSet(driver))
        return;
    const auto offered = waylandGlobals(socket);
    if (offered && offered->contains("zxdg_decoration_manager_v1"))
        qputenv(driver, "none");
}

int runProgram(QApplication& application, const OpenRequest& request,
               const std::future<void>& fonts)
{
    SingleInstance instance(runtimeFolder());
    switch (instance.claim(request)) {
    case SingleInstance::Role::First:
        break;
    case SingleInstance::Role::HandedOver:
        return 0;
    case SingleInstance::Role::NotAnswering:
        std::fputs("OrvaneWorkspace is running but doesn't answer. End it and start it again.\n",
                   stderr);
        return 1;
    }
    OrvaneWorkspaceApp program(UserFolders::ofThisUser());
    QObject::connect(&program, &OrvaneWorkspaceApp::quitRequested, &application,
                     &QCoreApplication::quit, Qt::QueuedConnection);
    QObject::connect(&application, &QCoreApplication::aboutToQuit, &program,
                     &OrvaneWorkspaceApp::finish);
    QObject::connect(&instance, &SingleInstance::requested, &program, &OrvaneWorkspaceApp::open);
    fonts.wait(); // else the first text would look for them itself
    program.start();
    if (!request.isEmpty())
        program.open(request);
    return QApplication::exec();
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
    if (!hasDisplay()) {
        std::fputs(
            "OrvaneWorkspace needs a display to open its window on, and there is none here.\n",
            stderr);
        return 1;
    }
    leaveGraphicsDriversAlone();
    auto fontSettings = readFontSettings();
    const OpenRequest request = requestOf(*commandLine);
    QApplication application(argc, argv);
    const auto fonts = findFonts(std::move(fontSettings));
    nameProgram(application);
    return runProgram(application, request, fonts);
}
