// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// The main job by the keys of the window systems that people have. A compositor that stands on an X
// server loses modifiers now and then, so what goes without them goes without them.
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
        settle();
        if (!isWayland()) // where a compositor gives the keyboard to what comes
            hand({u"windowfocus"_s, windowId()});
        settle();
    }
    /// Copies the text that has the caret, and asks a program of another toolkit what it would
    /// paste.
    void expectThatAnotherToolkitPastes(const QString& text)
    {
        const QString ask = uR"(import gi
gi.require_version("Gtk", "3.0")
from gi.repository import GLib, Gdk, Gtk
def ask():
    print(Gtk.Clipboard.get(Gdk.SELECTION_CLIPBOARD).wait_for_text() or "")
    Gtk.main_quit()
window = Gtk.Window()
window.connect("focus-in-event", lambda *_: GLib.timeout_add(300, ask))
GLib.timeout_add(8000, Gtk.main_quit)
window.show_all()
Gtk.main()
)"_s;
        if (run(u"python3"_s,
                {u"-c"_s, u"import gi; gi.require_version('Gtk', '3.0'); print(1)"_s}) != u"1"_s)
            return;
        QString pasted;
        for (int attempt = 0; attempt < 5 && pasted != text; ++attempt) {
            keys({u"ctrl+a"_s, u"ctrl+c"_s});
            pasted = run(u"python3"_s, {u"-c"_s, ask});
            settle();
        }
        EXPECT_EQ(pasted, text);
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
    keys({u"Tab"_s, u"Tab"_s, u"Return"_s}); // Blank Project
    type(u"tidewater"_s);
    keys({u"Return"_s});
    const QString project =
        UserFolders::below(m_home.path()).documents + u"/OrvaneWorkspace/tidewater"_s;
    ASSERT_TRUE(QTest::qWaitFor([&] { return QFileInfo::exists(project); }, 20'000));
    settle();
    keys({u"Return"_s}); // past the icon that is offered
    settle();
    keys({u"Return"_s}); // New Note
    type(u"low water"_s);
    keys({u"Return"_s});
    type(u"mara counts the posts."_s);
    if (hasManager) {
        keys({u"ctrl+a"_s, u"ctrl+c"_s});
        QTest::qWait(3'000); // the manager asks now and then
    }
    if (isWayland()) {
        expectThatAnotherToolkitPastes(u"mara counts the posts."_s);
        m_program.terminate();
    } else {
        keys({u"ctrl+q"_s});
    }
    ASSERT_TRUE(
        QTest::qWaitFor([this] { return m_program.state() == QProcess::NotRunning; }, 30'000));
    EXPECT_EQ(m_program.exitCode(), 0) << m_program.readAllStandardError().toStdString();
    if (hasManager) {
        const QStringList paste{u"-o"_s, u"-selection"_s, u"clipboard"_s};
        EXPECT_TRUE(QTest::qWaitFor(
            [&] { return run(u"xclip"_s, paste) == u"mara counts the posts."_s; }, 10'000))
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
    EXPECT_EQ(note.title, u"low water"_s);
    EXPECT_EQ(note.body, u"mara counts the posts."_s);
}

INSTANTIATE_TEST_SUITE_P(WindowSystems, RealKeysTest,
                         testing::Values(WindowSystem::X11, WindowSystem::Wayland),
                         [](const auto& system) {
                             return system.param == WindowSystem::X11 ? "X11" : "Wayland";
                         });

} // namespace
} // namespace orvane
