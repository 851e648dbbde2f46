// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/value/TableWalk.h"

#include <QHash>

#include <algorithm>

namespace orvane {
namespace {

/// A cell that reaches down.
struct Reach {
    int rowBelow = -1;
    int columns = 1;
};

const TableCellBlock& cellOf(const TextParagraph& paragraph)
{
    return *paragraph.style->cell;
}

int columnCount(const QList<TextParagraph>& cells)
{
    int columns = 1;
    for (const TextParagraph& paragraph : cells) {
        const TableCellBlock& cell = cellOf(paragraph);
        columns = std::max(columns, std::min(cell.column, TableRows::mostColumns) +
                                        std::clamp(cell.columnSpan, 1, TableRows::mostColumns));
    }
    return std::min(columns, TableRows::mostColumns);
}

/// `reaches` holds the cells of the rows above by the column where they begin, and takes those of
/// this row.
QList<TablePlace> placesOf(const QList<TextParagraph>& row, int columns, QHash<int, Reach>& reaches)
{
    const int number = cellOf(row.first()).row;
    QList<TablePlace> places;
    int column = 0;
    const auto isReached = [&] {
        return reaches.value(column).rowBelow > number;
    };
    const auto fillGap = [&] {
        TablePlace place{TablePlace::Kind::empty, column, 1, {}};
        if (isReached()) {
            place.kind = TablePlace::Kind::reachedFromAbove;
            place.columns = reaches.value(column).columns;
        }
        column += place.columns;
        places.append(place);
    };
    for (qsizetype i = 0; i < row.size(); ++i) {
        const TableCellBlock& cell = cellOf(row[i]);
        if (i > 0 && cellOf(row[i - 1]).column == cell.column) {
            places.last().paragraphs.append(row[i]);
            continue;
        }
        while (column < std::min(cell.column, columns))
            fillGap();
        const int taken = std::clamp(cell.columnSpan, 1, columns);
        if (cell.rowSpan > 1)
            reaches[column] = {number + cell.rowSpan, taken};
        places.append({TablePlace::Kind::cell, column, taken, {row[i]}});
        column += taken;
    }
    while (isReached())
        fillGap();
    return places;
}

TableRows rowsOf(const QList<TextParagraph>& cells)
{
    TableRows table;
    table.columns = columnCount(cells);
    QHash<int, Reach> reaches;
    for (qsizetype first = 0; first < cells.size();) {
        qsizetype past = first + 1;
        while (past < cells.size() && cellOf(cells[past]).row == cellOf(cells[first]).row &&
               cellOf(cells[past]).column >= cellOf(cells[past - 1]).column)
            ++past;
        table.rows.append(placesOf(cells.sliced(first, past - first), table.columns, reaches));
        first = past;
    }
    return table;
}

} // namespace

bool TableRows::runsRightToLeft() const
{
    for (const TablePlace& place : rows.first()) {
        if (place.kind == TablePlace::Kind::cell)
            return place.paragraphs.first().style->direction == WritingDirection::rightToLeft;
    }
    return false;
}

QList<TextRange> linesOf(const AttributedString& text, TextRange paragraph)
{
    QList<TextRange> lines;
    const QStringView letters = QStringView(text.text()).first(paragraph.end());
    for (qsizetype from = paragraph.location; from <= paragraph.end();) {
        const qsizetype separator = letters.indexOf(lineSeparator, from);
        const qsizetype past = separator < 0 ? paragraph.end() : separator;
        lines.append(TextRange::between(from, past));
        from = past + 1;
    }
    return lines;
}

void walkParagraphsAndTables(const AttributedString& text,
                             const std::function<void(const TextParagraph&)>& visitParagraph,
                             const std::function<void(const TableRows&)>& visitTable)
{
    QList<TextParagraph> cells;
    text.forEachParagraph([&](TextRange range, const SharedParagraphStyle& style) {
        const bool isCell = style->cell && range.end() < text.length();
        const bool continues =
            isCell && !cells.isEmpty() && style->cell->table.id == cellOf(cells.last()).table.id;
        if (!cells.isEmpty() && !continues)
            visitTable(rowsOf(std::exchange(cells, {})));
        if (isCell)
            cells.append({range, style});
        else
            visitParagraph({range, style});
    });
}

} // namespace orvane
