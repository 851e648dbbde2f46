// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/store/TextStore.h"

#include <optional>

namespace orvane {

/// A cell of a grid: its paragraphs, with their "\n", and the places that it takes.
struct GridCell {
    TextRange range;
    int row = 0;
    int column = 0;
    int rowSpan = 1;
    int columnSpan = 1;

    bool operator==(const GridCell&) const = default;

    [[nodiscard]] int pastRow() const { return row + rowSpan; }
    [[nodiscard]] int pastColumn() const { return column + columnSpan; }
    [[nodiscard]] bool covers(int atRow, int atColumn) const
    {
        return row <= atRow && atRow < pastRow() && column <= atColumn && atColumn < pastColumn();
    }
};

/// The consecutive cells of one table, by their places. Whatever the paragraphs say of themselves,
/// no two cells overlap, rows follow one another, and spans end within the table. Places that no
/// cell takes are possible.
struct TableGrid {
    static constexpr int mostColumns = 200;

    TextTable table;
    QList<GridCell> cells; ///< in the order of the text, which is that of rows and columns
    int rows = 0;
    int columns = 0;

    [[nodiscard]] TextRange range() const
    {
        return TextRange::between(cells.first().range.location, cells.last().range.end());
    }
    /// The index of the cell that holds `position`, or -1.
    [[nodiscard]] qsizetype indexAt(qsizetype position) const;
    /// The index of the cell that covers a place, or -1.
    [[nodiscard]] qsizetype indexOver(int row, int column) const;
};

/// The table whose cell holds `position`, or nothing.
[[nodiscard]] std::optional<TableGrid> tableAt(const TextStore& store, qsizetype position);

} // namespace orvane
