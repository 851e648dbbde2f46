// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/app/ProgramName.h"

#include <QApplication>

namespace orvane {

void nameProgram(QApplication& application)
{
    QApplication::setApplicationName(QStringLiteral("orvaneworkspace"));
    QApplication::setApplicationDisplayName(QStringLiteral("OrvaneWorkspace"));
    QApplication::setApplicationVersion(QStringLiteral(ORVANE_VERSION));
    QGuiApplication::setDesktopFileName(QStringLiteral("orvaneworkspace"));
    application.setQuitOnLastWindowClosed(true);
}

} // namespace orvane
