// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "TableFixture.h"
#include "editor/formatting/ColorPopup.h"
#include "editor/formatting/EditorSelectionSnapshot.h"
#include "editor/tables/TableBar.h"
#include "editor/tables/TableTools.h"

#include <QMenu>
#include <QTextBlock>
#include <QToolButton>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

class TableControlsTest : public TableTest {
protected:
    [[nodiscard]] QPoint columnHandle(int column) const
    {
        const QRectF rect = cellRect(0, column);
        return QPointF(rect.center().x(), rect.top() - 9).toPoint();
    }
    [[nodiscard]] QPoint rowHandle(int row) const
    {
        const QRectF rect = cellRect(row, 0);
        return QPointF(rect.left() - 9, rect.center().y()).toPoint();
    }
    void click(QPoint point, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::mouseClick(view->viewport(), Qt::LeftButton, modifiers, point);
    }
    void sweep(QPoint from, QPoint to)
    {
        QTest::mousePress(view->viewport(), Qt::LeftButton, {}, from);
        QTest::mouseMove(view->viewport(), to);
        QTest::mouseRelease(view->viewport(), Qt::LeftButton, {}, to);
    }
    [[nodiscard]] QColor colorAt(QPoint point)
    {
        const QPixmap picture = view->viewport()->grab();
        return picture.toImage().pixelColor(point * picture.devicePixelRatio());
    }
    TableBar* bar() { return pane.findChild<TableBar*>(); }
    bool showsBar()
    {
        return QTest::qWaitFor([this] { return bar() && bar()->isVisible(); }, 2000);
    }
    bool hidesBar()
    {
        return QTest::qWaitFor([this] { return bar() && !bar()->isVisible(); }, 2000);
    }
    /// On the view.
    [[nodiscard]] QRect card() { return bar()->geometry(); }
};

TEST_F(TableControlsTest, HandlesSelectRowsAndColumns)
{
    struct Case {
        const char* name;
        std::function<void()> act;
        std::string rectangle;
    };
    const auto post = [this](const Notification<CommandTarget>& command) {
        services.notifications.post(command, {});
    };
    const Case cases[] = {
        {"a column", [&] { click(columnHandle(1)); }, "0,1-2,1"},
        {"a row", [&] { click(rowHandle(2)); }, "2,0-2,2"},
        {"columns from the caret's", [&] { click(columnHandle(2), Qt::ShiftModifier); }, "0,1-2,2"},
        {"rows from the caret's", [&] { click(rowHandle(0), Qt::ShiftModifier); }, "0,0-1,2"},
        {"columns up to a click",
         [&] {
             click(columnHandle(2));
             click(columnHandle(0), Qt::ShiftModifier);
         },
         "0,0-2,2"},
        {"columns on the other side of several",
         [&] {
             sweep(columnHandle(1), columnHandle(2));
             click(columnHandle(0), Qt::ShiftModifier);
         },
         "0,0-2,2"},
        {"columns that are swept", [&] { sweep(columnHandle(2), columnHandle(1)); }, "0,1-2,2"},
        {"rows that are swept", [&] { sweep(rowHandle(0), rowHandle(1) + QPoint(200, 0)); },
         "0,0-1,2"},
        {"the row by command", [&] { post(TableCommands::selectRow); }, "1,0-1,2"},
        {"the column by command", [&] { post(TableCommands::selectColumn); }, "0,1-2,1"},
        {"the table by command", [&] { post(TableCommands::selectTable); }, "0,0-2,2"},
    };
    for (const Case& one : cases) {
        load(u"a,b,c;d,e,f;g,h,i"_s);
        goTo(1, 1);
        one.act();
        EXPECT_EQ(rectangle(), one.rectangle) << one.name;
    }
    // Those of what is selected are lit; outside of a table there are none.
    load(u"a,b,c;d,e,f;g,h,i"_s);
    selectCells(1, 1, 2, 2);
    const QColor accent = look.tokens().on(Surface::Page).accent;
    EXPECT_EQ(colorAt(columnHandle(1)), accent);
    EXPECT_EQ(colorAt(rowHandle(2)), accent);
    const QColor idle = colorAt(columnHandle(0));
    EXPECT_NE(idle, accent);
    EXPECT_EQ(colorAt(rowHandle(0)), idle);
    view->setSelection(TextSelection::caret(view->store().length()));
    EXPECT_NE(colorAt(columnHandle(0)), idle);
    click(columnHandle(1));
    EXPECT_TRUE(view->selection().isEmpty());
}

TEST_F(TableControlsTest, ATableOfOneCellAndOneWithSpansAreSelectedToo)
{
    load(u"only"_s);
    click(columnHandle(0));
    EXPECT_EQ(selected(), u"only");
    // The first row is one cell over both columns.
    load(u"a,b;c,d"_s);
    AttributedString text = view->store().attributedText();
    ParagraphStyle wide = *text.paragraphStyle(1);
    wide.cell->columnSpan = 2;
    text.setParagraphStyle({1, 1}, wide);
    text.remove(cell(0, 1));
    view->gateway().load(text, {});
    view->setSelection(TextSelection::caret(1));
    ASSERT_EQ(grid().cells.size(), 3);
    click(QPointF(cellRect(1, 1).center().x(), cellRect(0, 0).top() - 9).toPoint());
    EXPECT_EQ(rectangle(), "0,0-1,1");
}

// The first column stands at the right, and so does all that is said of sides.
TEST_F(TableControlsTest, ATableInATextFromTheRightIsMirrored)
{
    view->setPlainText(u"\u05e9\u05dc\u05d5\u05dd"_s);
    view->setSelection(TextSelection::caret(4));
    services.notifications.post(TableCommands::insertOfSize, TableSize{2, 3, {}});
    const auto grid = [this] {
        return *tableAt(view->store(), view->selection().position);
    };
    const auto row = [&] {
        QString all;
        for (const GridCell& each : grid().cells) {
            if (each.row == 1)
                all += TableEngine::cellText(view->store(), each.range).trimmed() + u'|';
        }
        return all.toStdString();
    };
    const auto rectOf = [&](int column) {
        const TableGrid all = grid();
        const qsizetype at = all.cells[all.indexOver(1, column)].range.location;
        return view->toViewport(view->layout().cellRect(view->store().blockAt(at)));
    };
    const auto in = [&](int column) {
        const TableGrid all = grid();
        view->setSelection(
            TextSelection::caret(all.cells[all.indexOver(1, column)].range.location));
    };
    for (int column = 0; column < 3; ++column) {
        in(column);
        view->gateway().type(QString(QChar(u'a' + column)));
    }
    EXPECT_EQ(row(), "a|b|c|");
    EXPECT_GT(rectOf(0).left(), rectOf(1).left());
    EXPECT_DOUBLE_EQ(rectOf(1).left(), rectOf(2).right());
    EXPECT_GE(view->positionAt(rectOf(2).center()), grid().cells[5].range.location);
    in(1);
    press(u"Alt+Left"_s);
    EXPECT_EQ(row(), "a|c|b|");
    press(u"Alt+Right"_s);
    services.notifications.post(TableCommands::addColumnLeft, {});
    EXPECT_EQ(row(), "a|b||c|");
    press(u"Ctrl+Z"_s);
    // The rows' handles stand at the right, and the button that adds a column at the left.
    click(QPointF(rectOf(0).right() + 9, rectOf(0).center().y()).toPoint());
    EXPECT_EQ(view->selection().range().location, grid().cells[3].range.location);
    QCoreApplication::processEvents();
    const auto* addColumn = named<QToolButton>(u"Add Column at the End"_s);
    EXPECT_LT(addColumn->geometry().right(), rectOf(2).left());
    // The border between the first two, moved to the left, makes the first one wider.
    in(1);
    const QPoint border = QPointF(rectOf(1).right(), rectOf(1).center().y()).toPoint();
    sweep(border, border - QPoint(50, 0));
    const QList<double> widths =
        TableEngine::columnWidths(view->store(), view->selection().position);
    EXPECT_GT(widths[0], 35);
    EXPECT_LT(widths[1], 31);
}

TEST_F(TableControlsTest, RoundButtonsAddAtTheEnds)
{
    load(u"a,b;c,d"_s);
    goTo(0, 0);
    QCoreApplication::processEvents();
    auto* addRow = named<QToolButton>(u"Add Row at the End"_s);
    auto* addColumn = named<QToolButton>(u"Add Column at the End"_s);
    ASSERT_TRUE(addRow && addRow->isVisible());
    QTest::mouseClick(addRow, Qt::LeftButton);
    QTest::mouseClick(addColumn, Qt::LeftButton);
    EXPECT_EQ(shown(), ";a,b, ;c,d, ; , , ;end");
    QCoreApplication::processEvents();
    EXPECT_GT(addRow->y(), cellRect(2, 0).bottom());
    EXPECT_TRUE(view->hasFocus());
    view->setSelection(TextSelection::caret(view->store().length()));
    QCoreApplication::processEvents();
    EXPECT_FALSE(addRow->isVisible());
    EXPECT_FALSE(addColumn->isVisible());
}

TEST_F(TableControlsTest, TheBarStepsAsideWhileOneTypes)
{
    load(u"a,b;c,d"_s);
    ASSERT_TRUE(showsBar());
    type(u"x"_s);
    ASSERT_TRUE(hidesBar());
    press(u"Tab"_s);
    type(u"y"_s);
    QTest::qWait(300);
    EXPECT_FALSE(bar()->isVisible()) << "it comes only with the pointer";
    QTest::mouseMove(view->viewport(), QPoint(300, 200));
    QTest::mouseMove(view->viewport(), QPoint(310, 210));
    EXPECT_TRUE(showsBar());
    // Without the keyboard it has nothing to do; nor outside of a table, nor in a locked text.
    view->clearFocus();
    EXPECT_TRUE(hidesBar());
    view->setFocus();
    EXPECT_TRUE(showsBar());
    view->setEditable(false);
    view->setSelection(TextSelection::caret(2));
    EXPECT_TRUE(hidesBar());
    view->setEditable(true);
    view->setSelection(TextSelection::caret(3));
    EXPECT_TRUE(showsBar());
    view->setSelection(TextSelection::caret(view->store().length()));
    EXPECT_TRUE(hidesBar());
}

TEST_F(TableControlsTest, TheBarStandsBesideTheTableAndNeverOnTheCaretsCell)
{
    struct Case {
        const char* name;
        int linesAbove;
        int rows;
        int row; ///< of the caret
        bool isAbove;
        bool coversTable;
    };
    const Case cases[] = {
        {"at the top of the text", 0, 3, 1, false, false},
        {"in the middle", 6, 3, 1, true, false},
        {"at the foot of the view", 9, 4, 1, true, false},
        {"higher than the view", 0, 60, 1, false, true},
        {"higher than the view, further down", 0, 60, 50, false, true},
    };
    for (const Case& one : cases) {
        QStringList rows;
        for (int i = 0; i < one.rows; ++i)
            rows += u"a,b"_s;
        load(rows.join(u';'));
        const qsizetype before = cell(one.row, 0).location;
        view->setSelection(TextSelection::caret(0));
        view->gateway().insert(AttributedString(QString(one.linesAbove, u'\n')), {});
        view->setSelection(TextSelection::caret(before + one.linesAbove));
        view->ensureCaretVisible();
        ASSERT_TRUE(showsBar()) << one.name;
        QTest::qWait(20);
        const auto table = tableOnView(*view, view->selection().position);
        ASSERT_TRUE(table) << one.name;
        EXPECT_FALSE(QRectF(card()).intersects(table->caretCell)) << one.name;
        EXPECT_EQ(QRectF(card()).intersects(table->rect), one.coversTable) << one.name;
        if (!one.coversTable) {
            EXPECT_EQ(card().bottom() < table->rect.top(), one.isAbove) << one.name;
        }
        EXPECT_TRUE(view->viewport()->rect().contains(card())) << one.name;
    }
}

TEST_F(TableControlsTest, TheBarIsWorkedByTheKeyboard)
{
    load(u"a,b;c,d"_s);
    press(u"Alt+Return"_s);
    ASSERT_TRUE(bar() && bar()->isVisible());
    const auto at = [] {
        return QApplication::focusWidget()->accessibleName();
    };
    QStringList names{at()};
    for (int i = 0; i < 9; ++i) {
        press(u"Right"_s);
        names += at();
        EXPECT_EQ(QApplication::focusWidget()->toolTip(), names.last());
    }
    EXPECT_EQ(names.join(u',').toStdString(),
              "Add Row Above,Add Row Below,Add Column Left,Add Column Right,Remove Row,"
              "Remove Column,Cell Fill Color,Header Fill Color,Alignment,Delete Table");
    press(u"Home"_s);
    press(u"Right"_s);
    press(u"Return"_s);
    EXPECT_EQ(shown(), ";a,b; , ;c,d;end");
    EXPECT_EQ(at(), u"Add Row Below") << "for another one";
    press(u"Esc"_s);
    EXPECT_TRUE(view->hasFocus());
    // What takes the table takes the bar along, and gives the keyboard back.
    press(u"Alt+Return"_s);
    press(u"End"_s);
    press(u"Return"_s);
    EXPECT_TRUE(hidesBar());
    EXPECT_TRUE(view->hasFocus());
    EXPECT_EQ(shown(), ";;end");
}

TEST_F(TableControlsTest, FillsAreChosenFromTheBar)
{
    load(u"a,b;c,d"_s);
    selectCells(1, 0, 1, 1);
    ASSERT_TRUE(showsBar());
    const auto choose = [this](const QString& name) {
        QTest::mouseClick(named<QToolButton>(name), Qt::LeftButton);
        auto* popup = view->findChild<ColorPopup*>();
        ASSERT_TRUE(popup);
        EXPECT_EQ(popup->windowTitle(), name);
        emit popup->chosen(Qt::red);
        popup->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    };
    const auto fills = [this] {
        std::string all;
        for (const GridCell& each : grid().cells)
            all += TableEngine::cellBackground(view->store(), each) ? 'x' : '-';
        return all;
    };
    const std::string before = fills();
    choose(u"Cell Fill Color"_s);
    EXPECT_EQ(fills(), before.substr(0, 2) + "xx");
    EXPECT_TRUE(bar()->isVisible());
    choose(u"Header Fill Color"_s);
    EXPECT_EQ(fills(), "xxxx");
}

TEST_F(TableControlsTest, WhatIsSelectedIsPublished)
{
    QList<EditorSelectionChange> told;
    const auto observation = services.notifications.observe(
        editorSelectionSnapshotDidChange,
        [&](const EditorSelectionChange& change) { told.append(change); });
    const auto table = [&] {
        QCoreApplication::processEvents();
        return told.isEmpty() ? std::nullopt : told.last().snapshot.table;
    };
    load(u"a,b;c,d;e,f"_s);
    ASSERT_TRUE(table());
    EXPECT_EQ(table()->rows, 3);
    EXPECT_EQ(table()->columns, 2);
    EXPECT_EQ(table()->selectedCells, 1);
    EXPECT_TRUE(table()->cellFill) << "that of the header";
    selectCells(0, 0, 1, 1);
    EXPECT_EQ(table()->selectedCells, 4);
    goTo(1, 1);
    const RgbaColor red{1, 0, 0, 1};
    (void)TableEngine::setCellFill(view->gateway(), view->selection().position, {1, 1, 1, 1}, red);
    EXPECT_EQ(table()->cellFill, red);
    (void)TableEngine::setHeaderFill(view->gateway(), view->selection().position, red);
    EXPECT_EQ(table()->headerFill, red);
    type(u"x"_s);
    services.notifications.post(TableCommands::addRowBelow, {});
    EXPECT_EQ(table()->rows, 4);
    services.notifications.post(TableCommands::removeColumn, {});
    EXPECT_EQ(table()->columns, 1);
    // A note without formatting has none.
    show(note, EditorMode::plainText);
    EXPECT_FALSE(table());
    EXPECT_EQ(told.last().targetNoteID, note);
}

} // namespace
} // namespace orvane
