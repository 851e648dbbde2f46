// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/store/EditGateway.h"
#include "text/store/TableGrid.h"

namespace orvane {

/// A cell as it is to be: one that is there, or a new one.
struct PlannedCell {
    qsizetype from = -1;        ///< its index in the grid; -1 for a new one
    SharedParagraphStyle style; ///< with its place in the table
    /// What it is to hold, without what ends it; a cell that is there keeps what it has without.
    std::optional<AttributedString> content = std::nullopt;
    SharedCharacterStyle end{}; ///< of what ends a new cell
};

/// What a table is to become: its cells in any order, and how many columns it has. An edit of the
/// table changes the plan, and `applyPlan` changes of the text what is different then.
class TablePlan {
public:
    TablePlan(const TextStore& store, TableGrid grid);

    [[nodiscard]] const TableGrid& grid() const { return m_grid; }
    [[nodiscard]] const TextStore& store() const { return m_store; }
    [[nodiscard]] int rows() const { return m_rows; }
    [[nodiscard]] int columns() const { return m_columns; }
    [[nodiscard]] const QList<PlannedCell>& cells() const { return m_cells; }
    /// The style of a cell of the grid, with the places that the grid gives it.
    [[nodiscard]] ParagraphStyle styleOf(qsizetype index) const;
    /// The style of what ends a cell of the grid.
    [[nodiscard]] SharedCharacterStyle endOf(qsizetype index) const;
    /// The columns' shares of the table's width, which make a hundred.
    [[nodiscard]] QList<double> widths() const;

    [[nodiscard]] bool changesNothing() const;

    void add(PlannedCell cell) { m_cells.append(std::move(cell)); }
    /// Takes the cells for which `goes` says so out.
    void removeIf(const std::function<bool(const TableCellBlock&)>& goes);
    /// Calls `change` for what each cell's style says of it.
    void modify(const std::function<void(TableCellBlock&)>& change);
    void modifyStyle(qsizetype index, const std::function<void(ParagraphStyle&)>& change);
    void setContent(qsizetype index, AttributedString content);
    void setSize(int rows, int columns);
    /// Gives all cells the width of their columns.
    void setWidths(const QList<double>& percents);
    /// Brings the cells in the order of their places.
    void sort();

private:
    const TextStore& m_store;
    TableGrid m_grid;
    int m_rows;
    int m_columns;
    QList<PlannedCell> m_cells;
};

/// Makes the table what the plan says, as one step to undo. The caret stays in its cell, or goes to
/// the nearest one where that is gone. An empty line comes behind a table that ends the text.
/// Whether the step was registered.
bool applyPlan(EditGateway& gateway, const QString& actionName, TablePlan plan);

} // namespace orvane
