// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/app/ProgramName.h"
#include "tour/Tour.h"

#include <QApplication>

#include <cstdio>

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fputs("usage: orvaneworkspace-tour FOLDER\n\n"
                   "Does the main job off screen with a sample project, and leaves pictures of\n"
                   "every screen in FOLDER.\n",
                   stderr);
        return 2;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    orvane::nameProgram(application);
    return orvane::runTour(QString::fromLocal8Bit(argv[1]));
}
