// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/tables/TableEngine.h"

#include "OddTables.h"
#include "text/value/TableWalk.h"

#include <gtest/gtest.h>

#include <random>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;
using enum TableSide;

class TableEngineTest : public ::testing::Test {
protected:
    TableEngineTest()
    {
        style.cellFont = TextFont{u"Inter"_s, 13};
        style.headerFont = TextFont{u"Inter"_s, 13, 700};
    }

    /// Loads a text in which a line "a | b" is a row of a table, and other lines are paragraphs;
    /// "^" stands for the caret, "*" for a bold letter behind it.
    void load(const QString& marked)
    {
        AttributedString text;
        QList<AttributedString> cells;
        QList<QList<AttributedString>> rows;
        qsizetype caret = 0;
        const auto flush = [&] {
            if (rows.isEmpty())
                return;
            AttributedString table = TableEngine::tableOf(std::exchange(rows, {}), style);
            table.remove({0, 1});
            table.remove({table.length() - 1, 1});
            text.append(table);
            text.setParagraphStyle({text.length(), 0}, {});
        };
        const QStringList lines = marked.split(u'\n');
        for (const QString& line : lines) {
            if (line.contains(u'|')) {
                QList<AttributedString> row;
                for (const QString& cell : line.split(u'|'))
                    row.append(AttributedString(cell.trimmed()));
                rows.append(row);
                continue;
            }
            flush();
            text.append(line + (&line == &lines.last() ? u""_s : u"\n"_s), {}, ParagraphStyle{});
        }
        flush();
        for (qsizetype at; (at = text.text().indexOf(u'*')) >= 0;) {
            text.remove({at, 1});
            CharacterStyle bold;
            bold.font = TextFont{u"Inter"_s, 13, 700};
            text.setCharacterStyle({at, 1}, bold);
        }
        if (const qsizetype at = text.text().indexOf(u'^'); at >= 0) {
            text.remove({at, 1});
            caret = at;
        }
        gateway.load(text, {});
        gateway.setSelection(TextSelection::caret(caret));
    }

    /// The text in the same form.
    [[nodiscard]] QString shown() const
    {
        AttributedString text = store.attributedText();
        const qsizetype caret = gateway.selection().position;
        QStringList lines;
        const auto words = [&](TextRange range) {
            QString words;
            for (qsizetype i = range.location; i <= range.end(); ++i) {
                if (i == caret)
                    words += u'^';
                if (i == range.end())
                    break;
                const bool isBold = text.characterStyle(i)->font.value_or(TextFont()).isBold();
                if (isBold && text.characterStyle(i)->font->family == u"Inter" &&
                    !allIsBold(text, range))
                    words += u'*';
                words += text.text()[i];
            }
            return words;
        };
        walkParagraphsAndTables(
            text, [&](const TextParagraph& paragraph) { lines += words(paragraph.range); },
            [&](const TableRows& table) {
                for (const auto& row : table.rows) {
                    QStringList cells;
                    for (const TablePlace& place : row) {
                        QStringList one;
                        for (const TextParagraph& paragraph : place.paragraphs)
                            one += words(paragraph.range);
                        cells += one.join(u'/') + (place.columns > 1 ? u">"_s : u""_s);
                    }
                    lines += cells.join(u" | "_s);
                }
            });
        return lines.join(u'\n');
    }
    static bool allIsBold(const AttributedString& text, TextRange range)
    {
        for (qsizetype i = range.location; i < range.end(); ++i) {
            if (!text.characterStyle(i)->font.value_or(TextFont()).isBold())
                return false;
        }
        return true;
    }

    [[nodiscard]] qsizetype caret() const { return gateway.selection().position; }

    /// Whether every place of the one table is taken once, in order, and all cells agree.
    [[nodiscard]] ::testing::AssertionResult isWhole() const
    {
        for (qsizetype at = 0; at < store.length(); at = store.paragraphRange(at).end()) {
            const auto grid = tableAt(store, at);
            if (!grid)
                continue;
            int places = 0;
            for (qsizetype i = 0; i < grid->cells.size(); ++i) {
                const GridCell& cell = grid->cells[i];
                const TableCellBlock& said = *store.paragraphStyle(cell.range.location)->cell;
                if (said.row != cell.row || said.column != cell.column ||
                    said.rowSpan != cell.rowSpan || said.columnSpan != cell.columnSpan ||
                    said.table.columns != grid->columns)
                    return ::testing::AssertionFailure() << "cell " << i << " says something else";
                if (store.characterAt(cell.range.end() - 1) != u'\n')
                    return ::testing::AssertionFailure() << "cell " << i << " has no end";
                places += cell.rowSpan * cell.columnSpan;
            }
            if (places != grid->rows * grid->columns)
                return ::testing::AssertionFailure() << places << " places";
            if (grid->range().end() == store.length() && store.paragraphStyle(store.length())->cell)
                return ::testing::AssertionFailure() << "nothing behind the table";
            at = grid->cells.last().range.location;
        }
        return ::testing::AssertionSuccess();
    }

    TextStore store;
    EditGateway gateway{store};
    TableStyle style;
};

TEST_F(TableEngineTest, NewTablesStandOnLinesOfTheirOwn)
{
    struct Case {
        const char* name;
        QString before;
        QString after;
    };
    const Case cases[] = {
        {"in a line", u"on^e"_s, u"on\n^Header 1 | Header 2\n  |  \n  |  \ne"_s},
        {"at an empty end", u"one\n^"_s, u"one\n\n^Header 1 | Header 2\n  |  \n  |  \n"_s},
    };
    for (const Case& one : cases) {
        load(one.before);
        const AttributedString before = store.attributedText();
        ASSERT_TRUE(TableEngine::insertTable(gateway, 3, 2, style)) << one.name;
        EXPECT_EQ(shown().toStdString(), one.after.toStdString()) << one.name;
        EXPECT_EQ(gateway.undoName(), u"Insert Table");
        const auto cells = TableEngine::cellRanges(store, caret());
        EXPECT_EQ(TableEngine::cellBackground(store, cells.first()), style.headerBackground);
        EXPECT_EQ(TableEngine::cellBackground(store, cells.last()), std::nullopt);
        EXPECT_EQ(store.paragraphStyle(caret())->cell->look->padding[0], 6);
        EXPECT_EQ(TableEngine::insertTable(gateway, 1, 1, style).error(),
                  TableRefusal::withinTable);
        gateway.undo();
        EXPECT_EQ(store.attributedText(), before) << one.name;
    }
    EXPECT_EQ(TableEngine::insertTable(gateway, 1, 201, style).error(), TableRefusal::tooLarge);
    const AttributedString made = TableEngine::makeTable(1, 1, style);
    EXPECT_EQ(made.text(), u"\nHeader 1\n\n");
}

TEST_F(TableEngineTest, EditsKeepWhatIsInTheCells)
{
    struct Case {
        const char* name;
        QString before;
        std::function<TableEngine::Result(EditGateway&, qsizetype, const TableStyle&)> edit;
        QString after; ///< empty where nothing may happen
    };
    namespace T = TableEngine;
    const auto rowBefore = [](auto& g, auto at, auto& s) {
        return T::insertRow(g, at, before, s);
    };
    const auto rowAfter = [](auto& g, auto at, auto& s) {
        return T::insertRow(g, at, after, s);
    };
    const auto columnBefore = [](auto& g, auto at, auto& s) {
        return T::insertColumn(g, at, before, s);
    };
    const auto columnAfter = [](auto& g, auto at, auto& s) {
        return T::insertColumn(g, at, after, s);
    };
    const auto removeRow = [](auto& g, auto at, auto& s) {
        return T::removeRow(g, at, s);
    };
    const auto removeColumn = [](auto& g, auto at, auto&) {
        return T::removeColumn(g, at);
    };
    const auto up = [](auto& g, auto at, auto&) {
        return T::moveRow(g, at, before);
    };
    const auto down = [](auto& g, auto at, auto&) {
        return T::moveRow(g, at, after);
    };
    const auto left = [](auto& g, auto at, auto&) {
        return T::moveColumn(g, at, before);
    };
    const auto right = [](auto& g, auto at, auto&) {
        return T::moveColumn(g, at, after);
    };
    const auto clear = [](auto& g, auto at, auto&) {
        return T::clearCells(g, at, {0, 1, 1, 1}, u"Cut"_s);
    };
    const auto sortBy = [](int column, Qt::SortOrder order) {
        return [=](auto& g, auto at, auto&) {
            return T::sortRows(g, at, column, order);
        };
    };
    const auto paste = [](auto& g, auto at, auto& s) {
        const auto text = [](const char* words) {
            return AttributedString(QString::fromUtf8(words));
        };
        return T::fillCells(g, at, {{text("1"), text("2")}, {text("3")}}, u"Paste"_s, s);
    };
    const Case cases[] = {
        {"row above", u"x\na|b\nc*d|^d\ny"_s, rowBefore, u"x\na | b\n  |  \nc*d | ^d\ny"_s},
        {"row above the header", u"^a|b\nc|d\ny"_s, rowBefore, u"  |  \n^a | b\nc | d\ny"_s},
        {"row below at the end of the text", u"a|b\nc^c|d"_s, rowAfter,
         u"a | b\nc^c | d\n  |  \n"_s},
        {"column left", u"a|^b\nc|d*d\ny"_s, columnBefore, u"a |   | ^b\nc |   | d*d\ny"_s},
        {"column right", u"a|b^\nc|d\ny"_s, columnAfter, u"a | b^ |  \nc | d |  \ny"_s},
        {"remove the header", u"a|^b\nc|d\ny"_s, removeRow, u"c | ^d\ny"_s},
        {"remove the last row", u"a|b\nc|d^d\ny"_s, removeRow, u"a | ^b\ny"_s},
        {"the only row stays", u"a|^b\ny"_s, removeRow, {}},
        {"remove a column", u"a|^b|c\nd|e|f\ny"_s, removeColumn, u"a | ^c\nd | f\ny"_s},
        {"remove the last column", u"a|b\nc|d^d\ny"_s, removeColumn, u"a\n^c\ny"_s},
        {"move a row up", u"a|b\nc|d\ne|f^f*f\ny"_s, up, u"a | b\ne | f^f*f\nc | d\ny"_s},
        {"move the header down", u"a^a|b\nc|d\ny"_s, down, u"c | d\na^a | b\ny"_s},
        {"the first row goes no higher", u"^a|b\nc|d\ny"_s, up, {}},
        {"move a column left", u"a|b^b\nc|d*d\ny"_s, left, u"b^b | a\nd*d | c\ny"_s},
        {"the last column goes no further", u"a|^b\nc|d\ny"_s, right, {}},
        {"clear cells", u"a|b^b\nc|d\ne|f\ny"_s, clear, u"a | ^\nc | \ne | f\ny"_s},
        {"sort by numbers", u"n|^x\n10|a\n|b\n9.5|c\n-1|d\ny"_s, sortBy(0, Qt::AscendingOrder),
         u"n | ^x\n-1 | d\n9.5 | c\n10 | a\n | b\ny"_s},
        {"sort by words, backward", u"n|^x\nb|1\n|2\nc|3\na|4\ny"_s, sortBy(0, Qt::DescendingOrder),
         u"n | ^x\nc | 3\nb | 1\na | 4\n | 2\ny"_s},
        {"paste grows the table", u"a|b\nc|^d\ny"_s, paste,
         u"a | b |  \nc | ^1 | 2\n  | 3 |  \ny"_s},
        {"paste within", u"a|b^b|c\nd|e|f\ny"_s, paste, u"a | 1^ | 2\nd | 3 | f\ny"_s},
    };
    for (const Case& one : cases) {
        load(one.before);
        const AttributedString before = store.attributedText();
        const QString asBefore = shown();
        const auto result = one.edit(gateway, caret(), style);
        EXPECT_EQ(result.has_value(), !one.after.isEmpty()) << one.name;
        EXPECT_EQ(shown().toStdString(), (one.after.isEmpty() ? asBefore : one.after).toStdString())
            << one.name;
        EXPECT_TRUE(isWhole()) << one.name;
        double width = 0;
        for (const double percent : TableEngine::columnWidths(store, caret()))
            width += percent;
        EXPECT_NEAR(width, 100, 0.001) << one.name;
        if (!result)
            continue;
        const AttributedString after = store.attributedText();
        gateway.undo();
        EXPECT_EQ(store.attributedText(), before) << one.name;
        EXPECT_EQ(shown().toStdString(), asBefore.toStdString()) << one.name;
        EXPECT_FALSE(gateway.canUndo()) << one.name;
        gateway.redo();
        EXPECT_EQ(store.attributedText(), after) << one.name;
    }
}

TEST_F(TableEngineTest, FillsStayWithTheirCellsAndTheHeadersWithTheHeader)
{
    load(u"a|b\nc|^d\ny"_s);
    const RgbaColor red{1, 0, 0, 1};
    const RgbaColor blue{0, 0, 1, 1};
    const auto fills = [&] {
        QStringList fills;
        for (const GridCell& cell : TableEngine::cellRanges(store, caret())) {
            const auto fill = TableEngine::cellBackground(store, cell);
            fills += !fill                             ? u"-"_s
                     : *fill == style.headerBackground ? u"h"_s
                     : *fill == red                    ? u"r"_s
                                                       : u"b"_s;
        }
        return fills.join(u""_s).toStdString();
    };
    ASSERT_TRUE(TableEngine::setHeaderFill(gateway, caret(), red));
    ASSERT_TRUE(TableEngine::setCellFill(gateway, caret(), {1, 1, 1, 1}, blue));
    EXPECT_EQ(fills(), "rr-b");
    EXPECT_EQ(TableEngine::setHeaderFill(gateway, caret(), red).error(), TableRefusal::unchanged);
    ASSERT_TRUE(TableEngine::insertRow(gateway, 0, before, style));
    EXPECT_EQ(fills(), "hhrr-b");
    ASSERT_TRUE(TableEngine::moveRow(gateway, 0, after));
    EXPECT_EQ(fills(), "hhrr-b");
    ASSERT_TRUE(TableEngine::moveRow(gateway, caret(), before));
    EXPECT_EQ(fills(), "hh-brr");
    ASSERT_TRUE(TableEngine::removeRow(gateway, 0, style));
    EXPECT_EQ(fills(), "hbrr");
    ASSERT_TRUE(TableEngine::setCellFill(gateway, caret(), {0, 1, 1, 1}, std::nullopt));
    EXPECT_EQ(fills(), "h-r-");
    ASSERT_TRUE(TableEngine::deleteTable(gateway, caret()));
    EXPECT_EQ(gateway.undoName(), u"Delete Table");
    EXPECT_EQ(shown().toStdString(), "^\ny");
    while (gateway.undo()) {
    }
    EXPECT_EQ(shown().toStdString(), "a | b\nc | ^d\ny");
}

TEST_F(TableEngineTest, TablesMadeByHandEndSaneWithNothingLost)
{
    const TextTable table{.id = QUuid::createUuid(), .columns = 2};
    const auto cell = [&](int row, int column, int rowSpan = 1, int columnSpan = 1) {
        return TableCellBlock{table, row, column, rowSpan, columnSpan, {}};
    };
    struct Case {
        const char* name;
        QList<TableCellBlock> blocks;
    };
    const Case cases[] = {
        {"spans", {cell(0, 0, 2, 1), cell(0, 1), cell(1, 1), cell(2, 0, 1, 2)}},
        {"holes", {cell(0, 0), cell(0, 5), cell(7, 3)}},
        {"overlaps", {cell(0, 0, 3, 3), cell(0, 1), cell(1, 0), cell(1, 1), cell(1, 1)}},
        {"endless spans", {cell(0, 0, 1 << 30, 1 << 30), cell(1, 0)}},
        {"negative", {cell(-5, -3, -1, 0), cell(-5, -2), cell(-6, 0)}},
        {"backward", {cell(9, 9), cell(8, 8), cell(7, 7)}},
        {"far out behind a wide one", {cell(0, 0, 1, 1 << 30), cell(0, 1 << 30), cell(1, 0)}},
        {"covered for ever",
         {cell(0, 0, 1 << 30, 1), cell(0, 1, 1 << 30, 1), cell(1 << 30, 0), cell(1 << 30, 1)}},
        {"far out", {cell(0, 1 << 30), cell(1 << 30, 0), cell(1 << 30, 1 << 29)}},
    };
    QList<std::pair<std::string, QList<TableCellBlock>>> tables;
    for (const Case& one : cases)
        tables.append({one.name, one.blocks});
    std::mt19937 random(72646645);
    const auto below = [&](int limit) {
        return int(random() % unsigned(limit));
    };
    for (int i = 0; i < 150; ++i) {
        QList<TableCellBlock> blocks;
        for (int count = 1 + below(8); count > 0; --count)
            blocks.append(cell(below(5) - 1, below(5) - 1, below(4), below(4)));
        tables.append({"random " + std::to_string(i), blocks});
    }
    for (const auto& [name, blocks] : tables) {
        for (int edit = 0; edit < oddTableEdits; ++edit)
            EXPECT_EQ(oddTableFault(blocks, edit, below(int(blocks.size()))), "")
                << name << ' ' << edit;
    }
}

TEST_F(TableEngineTest, WalksOverAllEditsComeBack)
{
    namespace T = TableEngine;
    std::mt19937 random(20261123);
    for (int round = 0; round < 30; ++round) {
        load(u"x\n^a|b*b|c\nd|e|f\ng|h|i\ny"_s);
        const AttributedString before = store.attributedText();
        QList<AttributedString> states{before};
        for (int step = 0; step < 25; ++step) {
            const auto cells = T::cellRanges(store, 2);
            if (cells.isEmpty())
                break;
            const GridCell cell = cells[qsizetype(random() % std::size_t(cells.size()))];
            const qsizetype at = cell.range.location;
            gateway.setSelection(TextSelection::caret(at));
            const TableSide side = random() % 2 ? TableSide::before : TableSide::after;
            T::Result result;
            switch (random() % 9) {
            case 0:
                result = T::insertRow(gateway, at, side, style);
                break;
            case 1:
                result = T::insertColumn(gateway, at, side, style);
                break;
            case 2:
                result = T::removeRow(gateway, at, style);
                break;
            case 3:
                result = T::removeColumn(gateway, at);
                break;
            case 4:
                result = T::moveRow(gateway, at, side);
                break;
            case 5:
                result = T::moveColumn(gateway, at, side);
                break;
            case 6:
                result = T::sortRows(gateway, at, 0, Qt::AscendingOrder);
                break;
            case 7:
                result = T::fillCells(gateway, at,
                                      {{AttributedString(u"p"_s), AttributedString(u"q"_s)}},
                                      u"Paste"_s, style);
                break;
            default:
                result = T::setCellFill(gateway, at, {0, 0, 9, 9}, RgbaColor{1, 0, 0, 1});
            }
            ASSERT_TRUE(isWhole()) << "round " << round << " step " << step;
            if (result)
                states.append(store.attributedText());
        }
        for (qsizetype i = states.size() - 1; i > 0; --i) {
            ASSERT_EQ(store.attributedText(), states[i]) << round << ' ' << i;
            ASSERT_TRUE(gateway.undo());
        }
        EXPECT_EQ(store.attributedText(), before);
    }
}

} // namespace
} // namespace orvane
