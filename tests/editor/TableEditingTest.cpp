// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "ViewFixture.h"
#include "text/store/TableRow.h"

#include <QClipboard>
#include <QDropEvent>
#include <QInputMethodEvent>
#include <QMimeData>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

class TableEditingTest : public ViewFixture {
protected:
    static constexpr int columns = 6;

    static AttributedString table(int rows)
    {
        TextTable about;
        about.id = QUuid::createUuid();
        about.columns = columns;
        CellLook look;
        look.padding.fill(6);
        look.borderWidth.fill(0.5);
        AttributedString text(u"before\n"_s);
        for (int row = 0; row < rows; ++row) {
            for (int column = 0; column < columns; ++column) {
                ParagraphStyle style;
                style.cell = TableCellBlock{about, row, column, 1, 1, look};
                text.append(u"r%1c%2\n"_s.arg(row).arg(column), {}, style);
            }
        }
        text.append(u"after"_s, {}, {});
        return text;
    }

    void load(int rows)
    {
        view.gateway().load(table(rows), {});
        view.gateway().setSelection({});
    }

    /// The paragraphs of the one table, or nothing where it is broken: a cell missing, doubled or
    /// out of order, or text in the table that is no cell.
    [[nodiscard]] std::optional<QList<TextRange>> wholeTable(int rows) const
    {
        QList<TextRange> cells;
        bool hasEnded = false;
        QUuid id;
        for (QTextBlock block = view.store().document().begin(); block.isValid();
             block = block.next()) {
            if (!isCell(block, view.store().styles())) {
                hasEnded |= !cells.isEmpty();
                continue;
            }
            const TableCellBlock& cell = *cellOf(block, view.store().styles());
            const auto place = int(cells.size());
            if (hasEnded || cell.row != place / columns || cell.column != place % columns ||
                (place > 0 && cell.table.id != id))
                return std::nullopt;
            id = cell.table.id;
            cells.append({block.position(), block.length() - 1});
        }
        if (cells.size() != rows * columns)
            return std::nullopt;
        return cells;
    }

    void drop(const QMimeData& data, qsizetype position)
    {
        const QPoint point = pointOf(position);
        QDropEvent event(point, Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(view.viewport(), &event);
    }
    void commit(const QString& preedit, const QString& text)
    {
        QInputMethodEvent composing(preedit, {});
        QApplication::sendEvent(&view, &composing);
        QInputMethodEvent event;
        event.setCommitString(text);
        QApplication::sendEvent(&view, &event);
    }
};

TEST_F(TableEditingTest, StaysWholeAtEveryEdgeOfEveryCell)
{
    constexpr int rows = 200;
    QMimeData lines;
    lines.setText(u"x\ny\n"_s);
    struct Case {
        const char* name;
        std::function<void()> work;
    };
    const Case cases[] = {
        {"typing",
         [&] {
             press(u"x"_s);
         }},
        {"Return",
         [&] {
             press(u"Return"_s);
         }},
        {"Backspace",
         [&] {
             press(u"Backspace"_s);
         }},
        {"Delete",
         [&] {
             press(u"Delete"_s);
         }},
        {"Ctrl+Backspace",
         [&] {
             press(u"Ctrl+Backspace"_s);
         }},
        {"Ctrl+Delete",
         [&] {
             press(u"Ctrl+Delete"_s);
         }},
        {"cut over the edge",
         [&] {
             const qsizetype caret = view.selection().position;
             view.setSelection(TextSelection{caret - 2, caret + 2});
             press(u"Ctrl+X"_s);
         }},
        {"typing over the edge",
         [&] {
             const qsizetype caret = view.selection().position;
             view.setSelection(TextSelection{caret + 3, caret - 3});
             press(u"x"_s);
         }},
        {"pasting lines",
         [&] {
             QGuiApplication::clipboard()->setText(u"p\nq"_s);
             press(u"Ctrl+V"_s);
         }},
        {"dropping lines",
         [&] {
             drop(lines, view.selection().position);
         }},
        {"an input method",
         [&] {
             commit(u"に"_s, u"日\n本"_s);
         }},
    };
    for (const Case& one : cases) {
        load(rows);
        const AttributedString before = view.store().attributedText();
        // Each case meets both edges of cells all over the table, ever others.
        for (int place = int(&one - cases); place < rows * columns; place += 97) {
            for (const bool atStart : {true, false}) {
                const auto cells = wholeTable(rows);
                ASSERT_TRUE(cells) << one.name << " before cell " << place;
                const TextRange cell = (*cells)[place];
                view.setSelection(TextSelection::caret(atStart ? cell.location : cell.end()));
                view.ensureCaretVisible();
                one.work();
                ASSERT_TRUE(wholeTable(rows))
                    << one.name << (atStart ? " at the start" : " at the end") << " of cell "
                    << place;
            }
        }
        while (view.gateway().undo()) {
        }
        EXPECT_EQ(view.store().attributedText(), before) << one.name;
    }
}

TEST_F(TableEditingTest, SelectionsOverTheTable)
{
    constexpr int rows = 3;
    struct Case {
        const char* name;
        std::function<TextSelection(const QList<TextRange>&)> select;
        QString key;
        bool staysWhole;
        QString text; ///< with "|" between cells, where it is short
    };
    const Case cases[] = {
        {"from before into the middle",
         [](const auto& c) {
             return TextSelection{3, c[7].end()};
         },
         u"Delete"_s,
         true,
         {}},
        {"from the middle to after",
         [](const auto& c) {
             return TextSelection{c[7].location, c.last().end() + 3};
         },
         u"Delete"_s,
         true,
         {}},
        {"all cells, not what closes the last",
         [](const auto& c) {
             return TextSelection{c[0].location + 1, c.last().end()};
         },
         u"x"_s,
         true,
         {}},
        {"everything goes",
         [](const auto& c) {
             return TextSelection{0, c.last().end() + 6};
         },
         u"Backspace"_s, false, u""_s},
        {"over the whole table goes",
         [](const auto& c) {
             return TextSelection{2, c.last().end() + 3};
         },
         u"x"_s, false, u"bexter"_s},
    };
    for (const Case& one : cases) {
        load(rows);
        const AttributedString before = view.store().attributedText();
        view.setSelection(one.select(*wholeTable(rows)));
        press(one.key);
        EXPECT_EQ(wholeTable(rows).has_value(), one.staysWhole) << one.name;
        if (!one.staysWhole) {
            EXPECT_EQ(view.plainText().toStdString(), one.text.toStdString()) << one.name;
        }
        press(u"Ctrl+Z"_s);
        EXPECT_EQ(view.store().attributedText(), before) << one.name;
    }
}

TEST_F(TableEditingTest, PastedTablesAreTablesOfTheirOwn)
{
    load(2);
    const QList<TextRange> cells = *wholeTable(2);
    view.setSelection(TextSelection{cells.first().location, cells.last().end() + 1});
    press(u"Ctrl+C"_s);
    view.setSelection(TextSelection::caret(view.store().length() - 2));
    press(u"Ctrl+V"_s);
    QSet<QUuid> tables;
    for (QTextBlock block = view.store().document().begin(); block.isValid();
         block = block.next()) {
        if (isCell(block, view.store().styles()))
            tables.insert(cellOf(block, view.store().styles())->table.id);
    }
    EXPECT_EQ(tables.size(), 2);
    EXPECT_TRUE(view.plainText().endsWith(u"aft\nr0c0\nr0c1\nr0c2\nr0c3\nr0c4\nr0c5\nr1c0\n"
                                          "r1c1\nr1c2\nr1c3\nr1c4\nr1c5\ner"_s));

    // A part of a table, within a cell and outside, comes as text.
    view.setSelection(TextSelection{cells[1].location, cells[3].end()});
    press(u"Ctrl+C"_s);
    view.setSelection(TextSelection::caret(cells[0].location));
    press(u"Ctrl+V"_s);
    EXPECT_EQ(view.store().text(paragraphTextAt(view.store(), cells[0].location)),
              u"r0c1\u2028r0c2\u2028r0c3r0c0"_s);
}

TEST_F(TableEditingTest, CaretGoesByRowsAndColumns)
{
    load(3);
    const QList<TextRange> cells = *wholeTable(3);
    struct Case {
        const char* name;
        qsizetype from;
        QString key;
        qsizetype to;
    };
    const Case cases[] = {
        {"down", cells[2].location, u"Down"_s, cells[8].location},
        {"up", cells[8].end(), u"Up"_s, cells[2].end()},
        {"right at a cell's end", cells[2].end(), u"Right"_s, cells[3].location},
        {"left at a cell's start", cells[3].location, u"Left"_s, cells[2].end()},
        {"home", cells[4].end(), u"Home"_s, cells[4].location},
        {"into the table", 0, u"Down"_s, cells[0].location},
        {"out of it, keeping to its column", cells[12].location, u"Down"_s, cells.last().end() + 2},
    };
    for (const Case& one : cases) {
        view.setSelection(TextSelection::caret(one.from));
        press(one.key);
        EXPECT_EQ(view.selection(), TextSelection::caret(one.to)) << one.name;
    }
    const QRectF first = view.layout().cellRect(view.store().blockAt(cells[0].location));
    const QRectF beside = view.layout().cellRect(view.store().blockAt(cells[1].location));
    const QRectF under = view.layout().cellRect(view.store().blockAt(cells[6].location));
    EXPECT_EQ(first.top(), beside.top());
    EXPECT_NEAR(first.right(), beside.left(), 0.01);
    EXPECT_NEAR(first.bottom(), under.top(), 0.01);
}

} // namespace
} // namespace orvane
