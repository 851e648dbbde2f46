// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// The program as a person starts it, over the home folder that is its argument.
#include "FirstFrame.h"
#include "appearance/FontsAhead.h"
#include "core/state/SessionKeys.h"
#include "shell/app/OrvaneWorkspaceApp.h"
#include "shell/desktop/SingleInstance.h"
#include "shell/window/MainWindow.h"

using namespace orvane;

int main(int argc, char** argv)
{
    auto fontSettings = readFontSettings();
    QApplication application(argc, argv);
    const auto fonts = findFonts(std::move(fontSettings));
    const bench::FirstFrame firstFrame;
    const QString home = QString::fromLocal8Bit(argv[1]);
    SingleInstance instance(home);
    if (instance.claim({}) != SingleInstance::Role::First)
        return 1;
    OrvaneWorkspaceApp program(UserFolders::below(home));
    fonts.wait();
    program.start();
    // A second line when everything is there, what the first frame didn't need included.
    QTimer whole;
    whole.callOnTimeout([&] {
        if (!firstFrame.isTold() || program.appState().projectSession().isOpening())
            return;
        whole.stop();
        std::puts("whole");
        std::fflush(stdout);
    });
    whole.start(5);
    const int result = QApplication::exec();
    program.finish();
    return result;
}
