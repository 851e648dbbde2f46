// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// Tables in the notes of a project, as a person has them.
#include "SelectedNoteFixture.h"
#include "appearance/AppearanceTokens.h"
#include "commands/TableCommands.h"
#include "editor/tables/TableBar.h"
#include "editor/tables/TableEngine.h"
#include "editor/tables/TableOnView.h"
#include "editor/view/EditorView.h"
#include "support/FullDisk.h"
#include "support/TestServices.h"
#include "text/store/TextStore.h"

#include <QApplication>
#include <QTest>
#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class TableRunTest : public ::testing::Test {
protected:
    TableRunTest() { begin(); }
    void begin()
    {
        app = std::make_unique<AppState>(test.services());
        if (project.isNull()) {
            project = *app->projectSession().createProject(u"P"_s, {});
            note = *app->createNote(u"Tides\nfirst line"_s, {});
        } else {
            app->projectSession().refreshProjects();
            app->projectSession().openProject(project, false);
        }
        pane = paneOfSelection(*app, look);
        app->selection().selectNote(note);
        pane->resize(900, 600);
        pane->show();
        QApplication::setActiveWindow(pane.get());
        pane->focusText();
        QApplication::processEvents();
    }
    void comeBack()
    {
        app->projectSession().terminate();
        pane.reset();
        app.reset();
        begin();
    }
    [[nodiscard]] EditorView& view() const { return pane->textView(); }
    [[nodiscard]] std::optional<TableGrid> grid() const
    {
        return tableAt(view().store(), view().selection().position);
    }
    void post(const Notification<CommandTarget>& command) { test.notifications.post(command, {}); }
    void makeTable(int rows, int columns)
    {
        pane->session().setMode(EditorMode::richText);
        view().setSelection(TextSelection::caret(view().store().length()));
        test.notifications.post(TableCommands::insertOfSize, TableSize{rows, columns, {}});
    }
    void type(const QString& text) { QTest::keyClicks(&view(), text); }

    TestServices test;
    Look look{signatureDarkTokens()};
    QUuid project;
    QUuid note;
    std::unique_ptr<AppState> app;
    std::unique_ptr<EditorPaneView> pane;
};

TEST_F(TableRunTest, WhatWasMadeOfATableIsThereInTheNextRun)
{
    makeTable(2, 3);
    type(u"high"_s);
    post(TableCommands::addRowBelow);
    post(TableCommands::addColumnLeft);
    EditGateway& text = view().gateway();
    const qsizetype at = view().selection().position;
    const RgbaColor red{1, 0, 0, 0.5};
    const RgbaColor blue{0, 0, 1, 0.25};
    ASSERT_TRUE(TableEngine::setColumnWidths(text, at, {10, 20, 30, 40}));
    ASSERT_TRUE(TableEngine::setCellFill(text, at, {1, 1, 2, 2}, red));
    ASSERT_TRUE(TableEngine::setHeaderFill(text, at, blue));
    const AttributedString written = view().store().attributedText();
    comeBack();
    EXPECT_EQ(view().store().attributedText(), written);
    view().setSelection(TextSelection::caret(at));
    const auto there = grid();
    ASSERT_TRUE(there);
    EXPECT_EQ(there->rows, 3);
    EXPECT_EQ(there->columns, 4);
    EXPECT_EQ(TableEngine::columnWidths(view().store(), at), (QList<double>{10, 20, 30, 40}));
    EXPECT_EQ(TableEngine::cellBackground(view().store(), there->cells[there->indexOver(2, 2)]),
              red);
    EXPECT_EQ(TableEngine::cellBackground(view().store(), there->cells[0]), blue);
    // And it goes on being one.
    post(TableCommands::removeColumn);
    EXPECT_EQ(grid()->columns, 3);
}

TEST_F(TableRunTest, ADiskThatIsFullLosesNothingOfATable)
{
    makeTable(2, 2);
    pane->session().saveFromExplicitCommand();
    EXPECT_FALSE(app->projectSession().saveFailure());
    {
        const FullDisk full;
        post(TableCommands::addRowBelow);
        type(u"low"_s);
        ASSERT_TRUE(
            TableEngine::setColumnWidths(view().gateway(), view().selection().position, {25, 75}));
        pane->session().saveFromExplicitCommand();
        test.clock.advance(5s);
        EXPECT_TRUE(app->projectSession().saveFailure()) << "the person is told";
        EXPECT_EQ(grid()->rows, 3);
    }
    post(TableCommands::addRowBelow);
    const AttributedString written = view().store().attributedText();
    pane->session().saveFromExplicitCommand();
    EXPECT_FALSE(app->projectSession().saveFailure());
    comeBack();
    EXPECT_EQ(view().store().attributedText(), written);
}

TEST_F(TableRunTest, TheBarLeavesTheTitleFree)
{
    pane->session().setMode(EditorMode::richText);
    view().setSelection(TextSelection::caret(0));
    test.notifications.post(TableCommands::insertOfSize, TableSize{3, 3, {}});
    const auto bar = [this] {
        return view().findChild<TableBar*>();
    };
    ASSERT_TRUE(QTest::qWaitFor([&] { return bar() && bar()->isVisible(); }));
    EXPECT_GE(bar()->y(), view().textOrigin().y());
}

TEST_F(TableRunTest, OnPaperALongTableStaysOnTheSheet)
{
    makeTable(80, 3);
    pageViewEnabledSetting.write(test.defaults, true);
    QApplication::processEvents();
    for (const double zoom : {1.0, 0.5}) {
        view().setZoom(zoom);
        for (const qsizetype index : {0, 119, 239}) {
            view().setSelection(TextSelection::caret(grid()->cells[index].range.location));
            view().ensureCaretVisible();
            QApplication::processEvents();
            const auto shown = tableOnView(view(), view().selection().position);
            ASSERT_TRUE(shown);
            const QRectF page = view().viewport()->rect();
            EXPECT_TRUE(page.contains(shown->caretCell)) << zoom << ' ' << index;
            EXPECT_EQ(shown->beginsInSight, index == 0);
            EXPECT_EQ(shown->endsInSight, index == 239);
            // Beside the table there is paper, for the handles too.
            const QImage picture = view().viewport()->grab().toImage();
            const int y = int(shown->caretCell.center().y());
            for (const int x : {int(shown->rect.left()) - 18, int(shown->rect.right()) + 4})
                EXPECT_EQ(picture.pixelColor(x, y), look.tokens().paper) << zoom << ' ' << index;
            const auto* bar = view().findChild<TableBar*>();
            ASSERT_TRUE(QTest::qWaitFor([&] { return bar && bar->isVisible(); }));
            EXPECT_TRUE(page.toRect().contains(bar->geometry()));
        }
    }
}

} // namespace
} // namespace orvane
