// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/store/TableRow.h"

namespace orvane {

const std::optional<TableCellBlock>& cellOf(const QTextBlock& block, const StyleTable& styles)
{
    return styles.styleOf(block.blockFormat())->cell;
}

bool continuesRow(const QTextBlock& block, const StyleTable& styles)
{
    const QTextBlock previous = block.previous();
    if (!previous.isValid() || !isCell(block, styles) || !isCell(previous, styles))
        return false;
    const TableCellBlock& cell = *cellOf(block, styles);
    const TableCellBlock& left = *cellOf(previous, styles);
    return cell.table.id == left.table.id && cell.row == left.row && cell.column >= left.column;
}

bool runsRightToLeft(const TableRow& row, const StyleTable& styles)
{
    return styles.styleOf(row.first.blockFormat())->direction == WritingDirection::rightToLeft;
}

TableRow rowOf(const QTextBlock& cell, const StyleTable& styles)
{
    TableRow row{cell, cell};
    while (continuesRow(row.first, styles))
        row.first = row.first.previous();
    for (QTextBlock next = cell.next(); next.isValid() && continuesRow(next, styles);
         next = next.next())
        row.last = next;
    return row;
}

} // namespace orvane
