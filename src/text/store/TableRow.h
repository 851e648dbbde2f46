// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/store/StyleTable.h"

#include <QTextBlock>

namespace orvane {

/// The paragraphs that stand side by side as one row of a table: consecutive cells of one table and
/// one row, of which none stands left of the one before. Consecutive paragraphs in one cell stand
/// one below the other.
struct TableRow {
    QTextBlock first;
    QTextBlock last;
};

[[nodiscard]] const std::optional<TableCellBlock>& cellOf(const QTextBlock& block,
                                                          const StyleTable& styles);
[[nodiscard]] inline bool isCell(const QTextBlock& block, const StyleTable& styles)
{
    return block.isValid() && cellOf(block, styles).has_value();
}

/// Whether `block` is a cell that continues the row of the paragraph before it.
[[nodiscard]] bool continuesRow(const QTextBlock& block, const StyleTable& styles);

/// Whether the columns of a row follow one another from the right: its first cell is a paragraph
/// that was set to run so.
[[nodiscard]] bool runsRightToLeft(const TableRow& row, const StyleTable& styles);

/// The row of a cell.
[[nodiscard]] TableRow rowOf(const QTextBlock& cell, const StyleTable& styles);

} // namespace orvane
