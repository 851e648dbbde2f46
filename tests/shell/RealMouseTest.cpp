// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// The program under a window system of its own, worked by its pointer: what a drag is there, no
// event that a test sends can show.
#include "ProgramFixture.h"
#include "editor/pane/EditorPaneView.h"
#include "editor/session/EditorSession.h"
#include "editor/view/EditorView.h"
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

    /// Starts the program; the id of its window once it is there.
    QString startProgram()
    {
        m_program.setProcessEnvironment(m_environment);
        m_program.start(QStringLiteral(ORVANE_PROGRAM), QStringList());
        QString id;
        EXPECT_TRUE(QTest::qWaitFor(
            [&] {
                id = pointer(
                    {u"search"_s, u"--onlyvisible"_s, u"--class"_s, u"^orvaneworkspace$"_s});
                return !id.isEmpty();
            },
            30'000))
            << m_program.state() << m_program.exitCode()
            << m_program.readAllStandardError().toStdString();
        QTest::qWait(500);
        return id;
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

    const QString id = startProgram();
    EXPECT_EQ(pointer({u"getwindowname"_s, id}), u"Tidewater — OrvaneWorkspace"_s);
    drag(from, to);
    QTest::qWait(500);
    m_program.terminate();
    ASSERT_TRUE(m_program.waitForFinished(30'000));

    start();
    state().projectSession().openProject(project, false);
    EXPECT_EQ(state().note(loose)->folderID, folder);
}

TEST_F(RealMouseTest, WhatIsCopiedIsTextForOtherPrograms)
{
    if (QStandardPaths::findExecutable(u"xclip"_s).isEmpty())
        GTEST_SKIP() << "xclip is not installed";
    dismissWelcome();
    start();
    window().setGeometry(0, 0, 1200, 800);
    ASSERT_TRUE(state().projectSession().createProject(u"Tidewater"_s, {}));
    (void)*state().createNote(u"Low water\nMara counts “posts” – ä."_s, {});
    TourHand::settle();
    window().editorPane().session().setMode(EditorMode::richText);
    const QWidget* text = window().editorPane().textView().viewport();
    const QPoint place = text->mapTo(&window(), text->rect().center());
    SessionKeys::launchDestination.write(defaults(), u"lastNote"_s);
    quit();

    startProgram();
    moveTo(place);
    pointer({u"click"_s, u"1"_s});
    pointer({u"key"_s, u"ctrl+a"_s});
    pointer({u"key"_s, u"ctrl+c"_s});
    const auto given = [this](const QString& selection, const QString& type) {
        QProcess tool;
        tool.setProcessEnvironment(m_environment);
        tool.start(u"xclip"_s, {u"-o"_s, u"-selection"_s, selection, u"-t"_s, type});
        return tool.waitForFinished(20'000) ? QString::fromUtf8(tool.readAll()) : QString();
    };
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return given(u"clipboard"_s, u"TARGETS"_s).contains(u"UTF8_STRING"_s); }, 20'000));
    for (const QString& selection : {u"clipboard"_s, u"primary"_s}) {
        for (const QString& type :
             {u"text/plain;charset=utf-8"_s, u"UTF8_STRING"_s, u"text/plain"_s}) {
            EXPECT_EQ(given(selection, type), u"Low water\nMara counts “posts” – ä."_s)
                << selection.toStdString() << ' ' << type.toStdString();
        }
    }
    m_program.terminate();
    ASSERT_TRUE(m_program.waitForFinished(30'000));
}

} // namespace
} // namespace orvane
