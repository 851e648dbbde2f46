// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/tables/TablePlan.h"

#include <expected>
#include <functional>

namespace orvane {

/// How new tables and cells look. Lengths are in points.
struct TableStyle {
    RgbaColor borderColor{0, 0, 0, 0.1};
    double borderWidth = 0.5;
    RgbaColor headerBackground{0, 0.5, 1, 0.12};
    double cellPadding = 6;
    TextFont cellFont;
    TextFont headerFont;
    std::optional<RgbaColor> textColor; ///< none for that of the page
    /// Of the paragraphs; columns follow one another from the right where it is `rightToLeft`.
    WritingDirection direction = WritingDirection::natural;
};

/// Why a table stays, or doesn't come to be, as it was asked for.
enum class TableRefusal {
    notEditable,
    noTable,     ///< the place is in none
    withinTable, ///< a table can't stand in another one's cell
    lastRow,     ///< only deleting the table takes it
    lastColumn,
    edge,   ///< there is nothing beyond to move to
    merged, ///< a cell reaches over rows or columns that would part
    tooLarge,
    unchanged, ///< it is so already
};

/// What a person is told, where there is something to tell; else empty.
[[nodiscard]] QString messageFor(TableRefusal refusal);

enum class TableSide { before, after };

/// Cells from one corner to the other, both included.
struct CellRectangle {
    int firstRow = 0;
    int firstColumn = 0;
    int lastRow = 0;
    int lastColumn = 0;

    bool operator==(const CellRectangle&) const = default;

    [[nodiscard]] bool holds(int row, int column) const
    {
        return firstRow <= row && row <= lastRow && firstColumn <= column && column <= lastColumn;
    }
};

/// Tables of a rich text. A table is the cells that name it; its row 0 is the header. Edits are one
/// step to undo, change only what becomes different, and keep what is in the cells and the caret in
/// its cell or the nearest one. `position` is any place in a cell of the table. Main thread.
namespace TableEngine {

using Result = std::expected<void, TableRefusal>;

inline constexpr qsizetype mostCells = 250'000;

/// An empty line, a table whose header reads "Header 1", "Header 2" and so on, and an empty line.
[[nodiscard]] AttributedString makeTable(int rows, int columns, const TableStyle& style);
/// The same with contents; rows may be of different lengths.
[[nodiscard]] AttributedString tableOf(const QList<QList<AttributedString>>& rows,
                                       const TableStyle& style);
/// In the place of the selection, with the caret in the first cell.
Result insertTable(EditGateway& gateway, int rows, int columns, const TableStyle& style);

[[nodiscard]] std::optional<TextTable> table(const TextStore& store, qsizetype position);
[[nodiscard]] std::optional<TableCellBlock> tableBlock(const TextStore& store, qsizetype position);
/// By rows, then by columns.
[[nodiscard]] QList<GridCell> cellRanges(const TextStore& store, qsizetype position);
/// Without newlines at both ends.
[[nodiscard]] QString cellText(const TextStore& store, TextRange cell);
[[nodiscard]] std::optional<RgbaColor> cellBackground(const TextStore& store, const GridCell& cell);
/// The columns' shares of the width, in percent.
[[nodiscard]] QList<double> columnWidths(const TextStore& store, qsizetype position);

Result insertRow(EditGateway& gateway, qsizetype position, TableSide side, const TableStyle& style);
Result insertColumn(EditGateway& gateway, qsizetype position, TableSide side,
                    const TableStyle& style);
Result removeRow(EditGateway& gateway, qsizetype position, const TableStyle& style);
Result removeColumn(EditGateway& gateway, qsizetype position);
/// The header's fill stays with the header when its row moves.
Result moveRow(EditGateway& gateway, qsizetype position, TableSide to);
Result moveColumn(EditGateway& gateway, qsizetype position, TableSide to);
Result setHeaderFill(EditGateway& gateway, qsizetype position, const RgbaColor& color);
/// No colour clears it.
Result setCellFill(EditGateway& gateway, qsizetype position, const CellRectangle& cells,
                   const std::optional<RgbaColor>& color);
/// Shares in percent, one for each column.
Result setColumnWidths(EditGateway& gateway, qsizetype position, const QList<double>& percents);
Result clearCells(EditGateway& gateway, qsizetype position, const CellRectangle& cells,
                  const QString& actionName);
/// Leaves one empty line.
Result deleteTable(EditGateway& gateway, qsizetype position);
/// Sorts the rows below the header by a column: by numbers where all are some, else by words; rows
/// with nothing there come last.
Result sortRows(EditGateway& gateway, qsizetype position, int column, Qt::SortOrder order);
/// Puts `contents` into the cells from the place's cell on; rows and columns are added as needed.
Result fillCells(EditGateway& gateway, qsizetype position,
                 const QList<QList<AttributedString>>& contents, const QString& actionName,
                 const TableStyle& style);

/// The whole cells of a rectangle as a table of its own.
[[nodiscard]] AttributedString copyOf(const TextStore& store, const TableGrid& grid,
                                      const CellRectangle& cells);

} // namespace TableEngine
} // namespace orvane
