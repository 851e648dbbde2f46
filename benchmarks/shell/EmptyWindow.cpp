// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// A program of the toolkit alone, with one empty window: what starting costs at least.
#include "FirstFrame.h"

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const orvane::bench::FirstFrame firstFrame;
    QWidget window;
    window.resize(1440, 900);
    window.show();
    return QApplication::exec();
}
