// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// The main job by the keys of the window systems that people have.
#include "RealScreen.h"
#include "shell/layout/WindowPlacement.h"

#include <QDir>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

enum class WindowSystem { X11, Wayland };

class RealKeysTest : public RealScreenTest, public testing::WithParamInterface<WindowSystem> {
protected:
    void SetUp() override
    {
        // Keys that come while a compositor moves the keyboard on are lost, as they are on a busy
        // machine beside other tests.
        if (isWayland() && !qEnvironmentVariableIsSet("ORVANE_LONG"))
            GTEST_SKIP() << "runs in the long run";
        QStringList tools{u"Xvfb"_s, u"xdotool"_s};
        if (isWayland())
            tools.append(u"weston"_s);
        for (const QString& tool : tools) {
            if (!isInstalled(tool))
                GTEST_SKIP() << tool.toStdString() << " is not installed";
        }
        if (isWayland())
            startWayland({1280, 720});
        else
            startX11(u"1280x720"_s);
    }
    static bool isWayland() { return GetParam() == WindowSystem::Wayland; }
    /// Until the first screen has the keyboard.
    void startAndWait()
    {
        startProgram();
        QByteArray said;
        ASSERT_TRUE(QTest::qWaitFor(
            [&] { return (said += m_program.readAllStandardError()).contains("Projects browser"); },
            30'000))
            << said.toStdString();
        QTest::qWait(isWayland() ? 4'000 : 2'000); // until the compositor has shown it
        if (isWayland())
            hand({u"mousemove"_s, u"640"_s, u"360"_s, u"click"_s, u"1"_s});
        else
            hand({u"windowfocus"_s, windowId()});
        QTest::qWait(300);
    }
};

TEST_P(RealKeysTest, TheMainJobFromTheFirstStartOn)
{
    QProcess clipboardManager;
    const bool hasManager = !isWayland() && isInstalled(u"parcellite"_s) && isInstalled(u"xclip"_s);
    if (hasManager) {
        clipboardManager.setProcessEnvironment(m_environment);
        clipboardManager.start(u"parcellite"_s, QStringList());
    }
    startAndWait();
    keys({u"shift+Tab"_s, u"Return"_s});
    type(u"Tidewater"_s);
    keys({u"Return"_s});
    const QString project =
        UserFolders::below(m_home.path()).documents + u"/OrvaneWorkspace/Tidewater"_s;
    ASSERT_TRUE(QTest::qWaitFor([&] { return QFileInfo::exists(project); }, 20'000));
    // A window that comes or goes takes the keyboard along, in its time.
    QTest::qWait(2'500);
    keys({u"Return"_s}); // past the icon that is offered
    QTest::qWait(2'000);
    keys({u"ctrl+n"_s});
    QTest::qWait(1'000);
    type(u"Low water"_s);
    keys({u"Return"_s});
    type(u"Mara counts the posts."_s);
    keys({u"ctrl+a"_s, u"ctrl+c"_s});
    QTest::qWait(1'500);
    keys({u"ctrl+q"_s});
    ASSERT_TRUE(
        QTest::qWaitFor([this] { return m_program.state() == QProcess::NotRunning; }, 30'000));
    EXPECT_EQ(m_program.exitCode(), 0) << m_program.readAllStandardError().toStdString();
    if (hasManager) {
        EXPECT_EQ(run(u"xclip"_s, {u"-o"_s, u"-selection"_s, u"clipboard"_s}),
                  u"Mara counts the posts."_s)
            << "a copy outlives the program";
        clipboardManager.terminate();
        clipboardManager.waitForFinished(20'000);
    }

    start();
    const auto placed =
        WindowPlacement::fromJson(*defaults().get<QJsonObject>(u"session.mainWindow.placement"_s));
    ASSERT_TRUE(placed);
    EXPECT_LE(placed->normal.height() + placed->frame.top() + placed->frame.bottom(), 720)
        << "the status strip is on the screen";
    if (isWayland()) {
        EXPECT_GT(placed->frame.top(), 0) << "this compositor leaves title bars to the windows";
    }
    state().projectSession().openProject(state().projectSession().projects().first().id, false);
    ASSERT_EQ(state().notes().size(), 1);
    const NoteRecord& note = *state().notes().records().first();
    EXPECT_EQ(note.title, u"Low water"_s);
    EXPECT_EQ(note.body, u"Mara counts the posts."_s);
}

INSTANTIATE_TEST_SUITE_P(WindowSystems, RealKeysTest,
                         testing::Values(WindowSystem::X11, WindowSystem::Wayland),
                         [](const auto& system) {
                             return system.param == WindowSystem::X11 ? "X11" : "Wayland";
                         });

} // namespace
} // namespace orvane
