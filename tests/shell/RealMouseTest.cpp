// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// The program under a window system of its own, worked by its pointer: what a drag is there, no
// event that a test sends can show.
#include "RealScreen.h"
#include "editor/pane/EditorPaneView.h"
#include "editor/session/EditorSession.h"
#include "editor/view/EditorView.h"
#include "shell/binder/BinderModel.h"
#include "shell/binder/BinderTreeView.h"
#include "shell/layout/WindowPlacement.h"

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

class RealMouseTest : public RealScreenTest {
protected:
    void SetUp() override
    {
        for (const auto& tool : {u"Xvfb"_s, u"xdotool"_s}) {
            if (!isInstalled(tool))
                GTEST_SKIP() << tool.toStdString() << " is not installed";
        }
        startX11(u"1400x900"_s);
    }
    void moveTo(const QPoint& place) const
    {
        hand({u"mousemove"_s, QString::number(place.x()), QString::number(place.y())});
        QTest::qWait(60);
    }
    void drag(const QPoint& from, const QPoint& to) const
    {
        moveTo(from);
        hand({u"mousedown"_s, u"1"_s});
        constexpr int steps = 8;
        for (int i = 1; i <= steps; ++i)
            moveTo(from + (to - from) * i / steps);
        hand({u"mouseup"_s, u"1"_s});
    }

    /// Starts the program; the id of its window once it is there.
    QString startAndFind()
    {
        startProgram();
        QString id;
        EXPECT_TRUE(QTest::qWaitFor([&] { return !(id = windowId()).isEmpty(); }, 30'000))
            << m_program.state() << m_program.exitCode()
            << m_program.readAllStandardError().toStdString();
        QTest::qWait(500);
        return id;
    }
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

    const QString id = startAndFind();
    EXPECT_EQ(hand({u"getwindowname"_s, id}), u"Tidewater — OrvaneWorkspace"_s);
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
    if (!isInstalled(u"xclip"_s))
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

    startAndFind();
    moveTo(place);
    hand({u"click"_s, u"1"_s});
    hand({u"key"_s, u"ctrl+a"_s});
    hand({u"key"_s, u"ctrl+c"_s});
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
