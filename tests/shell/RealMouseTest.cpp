// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// The program under a window system of its own, worked by its pointer: what a drag is there, no
// event that a test sends can show.
#include "ProgramFixture.h"
#include "shell/binder/BinderModel.h"
#include "shell/binder/BinderTreeView.h"
#include "shell/layout/WindowPlacement.h"

#include <QStandardPaths>
#include <QTest>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

class RealMouseTest : public ProgramTest {
protected:
    void SetUp() override
    {
        for (const auto& tool : {u"Xvfb"_s, u"xdotool"_s}) {
            if (QStandardPaths::findExecutable(tool).isEmpty())
                GTEST_SKIP() << tool.toStdString() << " is not installed";
        }
        // Without a reset, which turns new clients away whenever the last one has left.
        m_screen.start(u"Xvfb"_s, {u"-displayfd"_s, u"1"_s, u"-screen"_s, u"0"_s, u"1400x900x24"_s,
                                   u"-nolisten"_s, u"tcp"_s, u"-noreset"_s});
        ASSERT_TRUE(QTest::qWaitFor([this] { return m_screen.canReadLine(); }, 20'000));
        m_environment = environment();
        m_environment.insert(u"DISPLAY"_s,
                             u':' + QString::fromLatin1(m_screen.readLine().trimmed()));
        m_environment.insert(u"QT_QPA_PLATFORM"_s, u"xcb"_s);
        m_environment.remove(u"WAYLAND_DISPLAY"_s);
    }
    void TearDown() override
    {
        for (QProcess* process : {&m_program, &m_screen}) {
            if (process->state() == QProcess::NotRunning)
                continue;
            process->terminate();
            process->waitForFinished(20'000);
        }
    }
    QString pointer(const QStringList& words) const
    {
        QProcess tool;
        tool.setProcessEnvironment(m_environment);
        tool.start(u"xdotool"_s, words);
        return tool.waitForFinished(20'000) ? QString::fromUtf8(tool.readAll()).trimmed()
                                            : QString();
    }
    void moveTo(const QPoint& place) const
    {
        pointer({u"mousemove"_s, QString::number(place.x()), QString::number(place.y())});
        QTest::qWait(60);
    }
    void drag(const QPoint& from, const QPoint& to) const
    {
        moveTo(from);
        pointer({u"mousedown"_s, u"1"_s});
        constexpr int steps = 8;
        for (int i = 1; i <= steps; ++i)
            moveTo(from + (to - from) * i / steps);
        pointer({u"mouseup"_s, u"1"_s});
    }

    QProcessEnvironment m_environment;
    QProcess m_screen;
    QProcess m_program;
};

TEST_F(RealMouseTest, ARowIsDraggedIntoAFolder)
{
    dismissWelcome();
    start();
    window().setGeometry(0, 0, 1200, 800);
    const QUuid project = *state().projectSession().createProject(u"Tidewater"_s, {});
    const QUuid folder = *state().createFolder(u"Manuscript"_s);
    state().selection().selectProjectRoot();
    const QUuid loose = *state().createNote(u"Low water"_s, {});
    ASSERT_NE(state().note(loose)->folderID, folder);
    TourHand::settle();
    auto* tree = find<BinderTreeView>();
    const auto placeOf = [&](const BinderRowID& row) {
        const QModelIndex index = static_cast<BinderModel*>(tree->model())->indexOf(row);
        return tree->viewport()->mapTo(&window(), tree->visualRect(index).center());
    };
    const QPoint from = placeOf({BinderRowID::Kind::Note, loose});
    const QPoint to = placeOf({BinderRowID::Kind::Folder, folder});
    SessionKeys::launchDestination.write(defaults(), u"lastNote"_s);
    quit();

    m_program.setProcessEnvironment(m_environment);
    m_program.start(QStringLiteral(ORVANE_PROGRAM), QStringList());
    const QStringList search{u"search"_s, u"--onlyvisible"_s, u"--class"_s, u"^orvaneworkspace$"_s};
    QString id;
    ASSERT_TRUE(QTest::qWaitFor([&] { return !(id = pointer(search)).isEmpty(); }, 30'000))
        << m_program.state() << m_program.exitCode()
        << m_program.readAllStandardError().toStdString();
    EXPECT_EQ(pointer({u"getwindowname"_s, id}), u"Tidewater — OrvaneWorkspace"_s);
    QTest::qWait(500);
    drag(from, to);
    QTest::qWait(500);
    m_program.terminate();
    ASSERT_TRUE(m_program.waitForFinished(30'000));

    start();
    state().projectSession().openProject(project, false);
    EXPECT_EQ(state().note(loose)->folderID, folder);
}

} // namespace
} // namespace orvane
