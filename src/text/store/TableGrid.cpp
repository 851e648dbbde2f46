// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/store/TableGrid.h"

#include "text/store/TableRow.h"

#include <algorithm>

namespace orvane {

namespace {

/// Gives cells their places one after the other.
class Placing {
public:
    void add(const TableCellBlock& said, TextRange range)
    {
        TableGrid& grid = m_grid;
        if (!grid.cells.isEmpty()) {
            const bool isSameRow = said.row == m_saidRow && said.column >= m_saidColumn;
            if (isSameRow && said.column == m_saidColumn) {
                grid.cells.last().range.length += range.length;
                return;
            }
            if (!isSameRow)
                beginRow(said.row);
        }
        m_saidRow = said.row;
        m_saidColumn = said.column;
        GridCell cell{range, m_row, freeColumn(std::max(said.column, m_column)), 1, 1};
        if (cell.column >= TableGrid::mostColumns)
            cell.column = freeColumn(m_column);
        cell.columnSpan = freeColumns(cell.column, said.columnSpan);
        cell.rowSpan = std::clamp(said.rowSpan, 1, mostRowsSpanned);
        m_column = cell.pastColumn();
        if (m_takenUntil.size() < m_column) {
            m_takenUntil.resize(m_column, 0);
            m_takenBy.resize(m_column, -1);
        }
        std::fill_n(m_takenUntil.begin() + cell.column, cell.columnSpan, cell.pastRow());
        std::fill_n(m_takenBy.begin() + cell.column, cell.columnSpan, grid.cells.size());
        grid.columns = std::max(grid.columns, m_column);
        grid.cells.append(cell);
    }

    TableGrid finish(const TextTable& table)
    {
        m_grid.table = table;
        m_grid.rows = m_row + 1;
        for (GridCell& cell : m_grid.cells)
            cell.rowSpan = std::min(cell.rowSpan, m_grid.rows - cell.row);
        return std::move(m_grid);
    }

private:
    static constexpr int mostRowsSpanned = 100'000;
    /// A table that says it has more is none that anybody made, and would grow by as many cells
    /// with each column.
    static constexpr int mostRowsWithoutCell = 1'000;

    // Rows that are wholly covered from above have no cell; others that are left out don't count.
    void beginRow(int said)
    {
        const int next = m_row + 1;
        const auto least = m_takenUntil.isEmpty()
                               ? next
                               : *std::min_element(m_takenUntil.begin(), m_takenUntil.end());
        const int furthest = std::max(next, least);
        m_row = std::clamp(said, next, std::min(furthest, next + m_rowsToSkip));
        m_rowsToSkip -= m_row - next;
        m_column = 0;
        if (m_rowsToSkip == 0 && least > m_row)
            endSpans();
    }

    // What covers the row from above ends there.
    void endSpans()
    {
        for (qsizetype column = 0; column < m_takenUntil.size(); ++column) {
            if (m_takenUntil[column] <= m_row)
                continue;
            GridCell& cell = m_grid.cells[m_takenBy[column]];
            cell.rowSpan = m_row - cell.row;
            m_takenUntil[column] = m_row;
        }
    }

    [[nodiscard]] int freeColumn(int column) const
    {
        while (column < m_takenUntil.size() && m_takenUntil[column] > m_row)
            ++column;
        return column;
    }

    [[nodiscard]] int freeColumns(int column, int wanted) const
    {
        const int most = std::clamp(wanted, 1, std::max(1, TableGrid::mostColumns - column));
        int free = 1;
        while (free < most && freeColumn(column + free) == column + free)
            ++free;
        return free;
    }

    TableGrid m_grid;
    int m_row = 0;
    int m_column = 0; // the next free one
    int m_saidRow = 0;
    int m_saidColumn = 0;
    int m_rowsToSkip = mostRowsWithoutCell;
    QList<int> m_takenUntil;    // by column: the first row below what covers it
    QList<qsizetype> m_takenBy; // by column: the cell that does
};

} // namespace

qsizetype TableGrid::indexAt(qsizetype position) const
{
    const auto past = std::ranges::upper_bound(
        cells, position, {}, [](const GridCell& cell) { return cell.range.location; });
    return past - cells.begin() - 1;
}

qsizetype TableGrid::indexOver(int row, int column) const
{
    const auto isBefore = [](const GridCell& cell, std::pair<int, int> place) {
        return std::pair(cell.row, cell.column) < place;
    };
    const auto next =
        std::lower_bound(cells.begin(), cells.end(), std::pair(row, column + 1), isBefore);
    const qsizetype nearest = next - cells.begin() - 1;
    if (nearest >= 0 && cells[nearest].covers(row, column))
        return nearest;
    for (qsizetype i = nearest - 1; i >= 0; --i) {
        if (cells[i].covers(row, column))
            return i;
    }
    return -1;
}

std::optional<TableGrid> tableAt(const TextStore& store, qsizetype position)
{
    const StyleTable& styles = store.styles();
    QTextBlock block = store.blockAt(position);
    if (!isCell(block, styles))
        return std::nullopt;
    const TextTable table = cellOf(block, styles)->table;
    const auto belongs = [&](const QTextBlock& one) {
        return isCell(one, styles) && cellOf(one, styles)->table.id == table.id;
    };
    while (belongs(block.previous()))
        block = block.previous();
    Placing placing;
    for (; belongs(block); block = block.next()) {
        const qsizetype past =
            std::min<qsizetype>(block.position() + block.length(), store.length());
        placing.add(*cellOf(block, styles), TextRange::between(block.position(), past));
    }
    return placing.finish(table);
}

} // namespace orvane
