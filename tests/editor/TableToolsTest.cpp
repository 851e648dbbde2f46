// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/tables/TableTools.h"

#include "TableFixture.h"
#include "commands/EditorFormatNotifications.h"
#include "editor/tables/TableGridPopup.h"

#include <QClipboard>
#include <QMenu>
#include <QMimeData>
#include <QSpinBox>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

class TableToolsTest : public TableTest {
protected:
    static void copy(const QString& text, const QString& html = {})
    {
        auto* data = new QMimeData;
        data->setText(text);
        if (!html.isEmpty())
            data->setHtml(html);
        QApplication::clipboard()->setMimeData(data);
    }
};

TEST_F(TableToolsTest, KeysGoThroughCellsAndMoveRowsAndColumns)
{
    load(u"a,b;c,d"_s);
    press(u"Tab"_s);
    EXPECT_EQ(selected(), u"b");
    press(u"Tab"_s);
    press(u"Tab"_s);
    EXPECT_EQ(selected(), u"d");
    press(u"Backtab"_s);
    EXPECT_EQ(selected(), u"c");
    press(u"Alt+Up"_s);
    EXPECT_EQ(shown(), ";c,d;a,b;end");
    press(u"Alt+Right"_s);
    EXPECT_EQ(shown(), ";d,c;b,a;end");
    EXPECT_EQ(selected(), u"c");
    press(u"Alt+Down"_s);
    press(u"Alt+Left"_s);
    EXPECT_EQ(shown(), ";a,b;c,d;end");
    goTo(1, 1);
    press(u"Tab"_s);
    type(u"new"_s);
    EXPECT_EQ(shown(), ";a,b;c,d;new, ;end");

    // A list comes first.
    load(u"- a,b"_s);
    press(u"End"_s);
    press(u"Tab"_s);
    EXPECT_EQ(shown(), ";,– a,b;end");

    // Outside of tables the keys are those of the window.
    view->setSelection(TextSelection::caret(view->store().length()));
    QKeyEvent key(QEvent::ShortcutOverride, Qt::Key_Up, Qt::AltModifier);
    key.ignore();
    QApplication::sendEvent(view, &key);
    EXPECT_FALSE(key.isAccepted());
    goTo(0, 1);
    QApplication::sendEvent(view, &key);
    EXPECT_TRUE(key.isAccepted());
}

TEST_F(TableToolsTest, DeletingAtItsEdgeTakesTheWholeTable)
{
    struct Case {
        const char* name;
        qsizetype fromEnd; ///< where the caret stands
        QString key;
        bool goes;
    };
    const Case cases[] = {
        {"Backspace behind", 3, u"Backspace"_s, true},
        {"Backspace further on", 2, u"Backspace"_s, false},
        {"Del behind", 3, u"Del"_s, false},
        {"Backspace in the first cell", 11, u"Backspace"_s, false},
        {"Del in the last cell", 4, u"Del"_s, false},
    };
    for (const Case& one : cases) {
        load(u"a,b;c,d"_s);
        view->setSelection(TextSelection::caret(view->store().length() - one.fromEnd));
        press(one.key);
        EXPECT_EQ(!tableAt(view->store(), 1), one.goes) << one.name;
        if (one.goes) {
            EXPECT_EQ(shown(), ";;end") << one.name;
            press(u"Ctrl+Z"_s);
            EXPECT_EQ(shown(), ";a,b;c,d;end") << one.name;
        }
    }
}

TEST_F(TableToolsTest, TheMenuHasItsWordsInOrder)
{
    load(u"a,b"_s);
    QMenu menu;
    view->fillContextMenu(menu, view->toViewport(view->layout().caretRect(1)).center());
    QMenu* table = nullptr;
    for (QAction* action : menu.actions()) {
        if (action->text() == u"Table")
            table = action->menu();
    }
    ASSERT_TRUE(table);
    QStringList words;
    for (QAction* action : table->actions().first(10))
        words += action->text() + (action->isEnabled() ? u""_s : u" (off)"_s);
    EXPECT_EQ(words.join(u'\n').toStdString(),
              "Add Row Above\nAdd Row Below\nAdd Column Left\nAdd Column Right\nRemove Row (off)\n"
              "Remove Column\nHeader Fill Color...\nCell Fill Color...\nClear Cell Fill\n"
              "Delete Table");
    table->actions()[1]->trigger();
    EXPECT_EQ(shown(), ";a,b; , ;end");
    EXPECT_EQ(view->gateway().undoName(), u"Edit Table");

    QMenu outside;
    view->fillContextMenu(
        outside, view->toViewport(view->layout().caretRect(int(view->store().length()))).center());
    for (QAction* action : outside.actions())
        EXPECT_NE(action->text(), u"Table");
}

TEST_F(TableToolsTest, CellsAreSelectedAsARectangle)
{
    const QString rows = u"a,b,c;d,e,f;g,h,i"_s;
    struct Case {
        const char* name;
        std::function<void()> act;
        std::string after;
    };
    const Case cases[] = {
        {"Delete clears them", [&] { press(u"Del"_s); }, ";a,,;d,,;g,h,i;end"},
        {"cut clears them", [&] { press(u"Ctrl+X"_s); }, ";a,,;d,,;g,h,i;end"},
        {"typing replaces them", [&] { type(u"x"_s); }, ";a,x,;d,,;g,h,i;end"},
        {"paste fills from their corner",
         [&] {
             copy(u"1\t2\n3\t4\n5\t6\n"_s);
             press(u"Ctrl+V"_s);
         },
         ";a,1,2;d,3,4;g,5,6;end"},
    };
    for (const Case& one : cases) {
        load(rows);
        selectCells(1, 2, 0, 1); // from the lower right to the upper left
        one.act();
        EXPECT_EQ(shown(), one.after) << one.name;
        press(u"Ctrl+Z"_s);
        EXPECT_EQ(shown(), ";a,b,c;d,e,f;g,h,i;end") << one.name;
    }

    load(rows);
    selectCells(0, 1, 1, 2);
    press(u"Ctrl+C"_s);
    const QMimeData* copied = QApplication::clipboard()->mimeData();
    EXPECT_EQ(copied->text(), u"b\tc\ne\tf\n");
    EXPECT_TRUE(copied->html().contains(u"<table"));
    EXPECT_TRUE(copied->data(u"text/rtf"_s).contains("\\cellx"));

    services.notifications.post(EditorFormatNotifications::alignRight, {});
    services.notifications.post(EditorFormatNotifications::bold, {});
    QStringList changed;
    for (const GridCell& one : grid().cells) {
        const bool isRight =
            view->store().paragraphStyle(one.range.location)->alignment == TextAlignment::right;
        const auto font = view->store().characterStyle(one.range.location)->font;
        EXPECT_EQ(isRight, font && font->isBold());
        if (isRight)
            changed += TableEngine::cellText(view->store(), one.range);
    }
    EXPECT_EQ(changed.join(u""_s), u"bcef");

    // By keys: from the end of a cell into the next one.
    load(rows);
    press(u"End"_s);
    press(u"Shift+Right"_s);
    press(u"Shift+Down"_s);
    press(u"Del"_s);
    EXPECT_EQ(shown(), ";,,c;,,f;g,h,i;end");
}

TEST_F(TableToolsTest, PastedTablesFillCellsAndGrowTheTable)
{
    struct Case {
        const char* name;
        QString text;
        QString html;
        std::string after;
    };
    const Case cases[] = {
        {"tabs", u"1\t2\n3\t4\n"_s, {}, ";a,b, ;c,1,2; ,3,4;end"},
        {"quotes", u"\"1\n1\"\t\"say \"\"x\"\"\"\n3\t\n"_s, {}, ";a,b, ;c,1 1,say \"x\"; ,3,;end"},
        {"a table in HTML", u"x"_s, u"<table><tr><td>1</td><td>2</td></tr></table>"_s,
         ";a,b, ;c,1,2;end"},
        {"no table", u"1\n2"_s, {}, ";a,b;c,1 2d;end"},
        {"prose with a table", u"x"_s, u"<p>p</p><table><tr><td>1</td><td>2</td></tr></table>"_s,
         ";a,b;c,p 1 2d;end"},
    };
    for (const Case& one : cases) {
        load(u"a,b;c,d"_s);
        goTo(1, 1);
        copy(one.text, one.html);
        press(u"Ctrl+V"_s);
        EXPECT_EQ(shown(), one.after) << one.name;
        press(u"Ctrl+Z"_s);
        EXPECT_EQ(shown(), ";a,b;c,d;end") << one.name;
    }
}

TEST_F(TableToolsTest, AHundredThousandPastedCellsAreThereOrRefused)
{
    load(u"a,b"_s);
    QString lines;
    for (int row = 0; row < 16'667; ++row)
        lines += u"1\t2\t3\t4\t5\t6\n"_s;
    copy(lines);
    press(u"Ctrl+V"_s);
    EXPECT_EQ(grid().rows, 16'667);
    EXPECT_EQ(grid().columns, 6);
    press(u"Ctrl+Z"_s);
    EXPECT_EQ(shown(), ";a,b;end");
    // More than a table may have stays outside, and the person is told.
    copy(QString(u"1\t"_s).repeated(300));
    press(u"Ctrl+V"_s);
    EXPECT_EQ(shown(), ";a,b;end");
    EXPECT_EQ(services.beeper.count, 1);
}

TEST_F(TableToolsTest, TextBecomesATableAndBack)
{
    struct Case {
        const char* name;
        QString text;
        std::string table;
        std::string back;
    };
    const Case cases[] = {
        {"tabs", u"a\tb, c\nd\te"_s, "a,b, c;d,e;", "a\tb, c\nd\te"},
        {"bars", u"| a | b |\n| c |"_s, "a,b;c,;", "a\tb\nc\t"},
        {"commas outside of quotes", u"a,\"b, \"\"c\"\"\"\nd,e"_s, "a,b, \"c\";d,e;",
         "a\tb, \"c\"\nd\te"},
        {"one column", u"a\nb"_s, "a;b;", "a\nb"},
    };
    for (const Case& one : cases) {
        view->gateway().load(AttributedString(one.text), {});
        view->setSelection({0, view->store().length()});
        services.notifications.post(TableCommands::convertTextToTable, {});
        EXPECT_EQ(shown(), one.table) << one.name;
        EXPECT_EQ(view->gateway().undoName(), u"Convert Text to Table");
        view->setSelection(TextSelection::caret(0));
        services.notifications.post(TableCommands::convertTableToText, {});
        EXPECT_EQ(view->plainText().trimmed().toStdString(),
                  QString::fromStdString(one.back).trimmed().toStdString())
            << one.name;
        press(u"Ctrl+Z"_s);
        press(u"Ctrl+Z"_s);
        EXPECT_EQ(view->plainText(), one.text) << one.name;
    }
}

TEST_F(TableToolsTest, ColumnBordersAreDragged)
{
    load(u"a,b,c;d,e,f"_s);
    goTo(1, 1);
    const QRectF middle = view->layout().cellRect(view->store().blockAt(cell(1, 1).location));
    const QPoint border = view->toViewport(QPointF(middle.left(), middle.center().y())).toPoint();
    const QPoint there = border + QPoint(int(middle.width() / 2 * view->zoom()), 0);
    QWidget* page = view->viewport();
    QTest::mouseMove(page, border);
    QTest::mousePress(page, Qt::LeftButton, {}, border);
    QTest::mouseMove(page, there);
    EXPECT_FALSE(view->gateway().canUndo());
    QTest::mouseRelease(page, Qt::LeftButton, {}, there);
    const QList<double> widths = TableEngine::columnWidths(view->store(), 1);
    EXPECT_NEAR(widths[0], 50, 1);
    EXPECT_NEAR(widths[1], 16.7, 1);
    EXPECT_NEAR(widths[2], 33.3, 0.1);
    press(u"Ctrl+Z"_s);
    EXPECT_NEAR(TableEngine::columnWidths(view->store(), 1)[0], 33.3, 0.1);
    EXPECT_FALSE(view->gateway().canUndo());
}

TEST_F(TableToolsTest, ANewTableIsSweptOrNumbered)
{
    const auto open = [&] {
        view->gateway().load(AttributedString(u"x"_s), {});
        view->setSelection(TextSelection::caret(1));
        services.notifications.post(AppCommandEvents::insertTable, {});
        return view->findChild<TableGridPopup*>();
    };
    TableGridPopup* popup = open();
    ASSERT_TRUE(popup);
    QWidget* field = popup->focusWidget();
    QTest::keyClick(field, Qt::Key_Up);
    QTest::keyClick(field, Qt::Key_Right);
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(shown(), "x;Header 1,Header 2,Header 3,Header 4; , , , ;");
    EXPECT_EQ(view->gateway().undoName(), u"Insert Table");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

    popup = open();
    field = popup->focusWidget();
    const QPoint last(field->width() - 3, field->height() - 3);
    QTest::mouseMove(field, last);
    QTest::mouseClick(field, Qt::LeftButton, {}, last);
    const auto made = tableAt(view->store(), 2);
    ASSERT_TRUE(made);
    EXPECT_EQ(made->rows, 10);
    EXPECT_EQ(made->columns, 10);
}

TEST_F(TableToolsTest, ScreenReadersHearWhereACellIs)
{
    CommandReceiver commands(*view, services.notifications);
    const ListEditing lists(*view, library.bullets);
    const TableTools own(*view, commands, lists, look, services.services());
    load(u"When,Where;now,here"_s);
    goTo(1, 1);
    EXPECT_EQ(own.cellDescription(), u"Where, row 2 of 2, column 2 of 2");
    goTo(0, 1);
    EXPECT_EQ(own.cellDescription(), u"Row 1 of 2, column 2 of 2");
    view->setSelection(TextSelection::caret(view->store().length()));
    EXPECT_EQ(own.cellDescription(), u"");
}

} // namespace
} // namespace orvane
