// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// What is read of tables.
#include "editor/tables/TableEngine.h"

namespace orvane::TableEngine {

std::optional<TextTable> table(const TextStore& store, qsizetype position)
{
    const auto block = tableBlock(store, position);
    return block ? std::optional(block->table) : std::nullopt;
}

std::optional<TableCellBlock> tableBlock(const TextStore& store, qsizetype position)
{
    if (position < 0 || position >= store.length())
        return std::nullopt;
    return store.paragraphStyle(position)->cell;
}

QList<GridCell> cellRanges(const TextStore& store, qsizetype position)
{
    const auto grid = tableAt(store, position);
    return grid ? grid->cells : QList<GridCell>();
}

QString cellText(const TextStore& store, TextRange cell)
{
    QString text = store.text(cell);
    while (text.endsWith(u'\n'))
        text.chop(1);
    while (text.startsWith(u'\n'))
        text.remove(0, 1);
    return text;
}

std::optional<RgbaColor> cellBackground(const TextStore& store, const GridCell& cell)
{
    return store.paragraphStyle(cell.range.location)->cell->look->background;
}

QList<double> columnWidths(const TextStore& store, qsizetype position)
{
    auto grid = tableAt(store, position);
    return grid ? TablePlan(store, *std::move(grid)).widths() : QList<double>();
}

AttributedString copyOf(const TextStore& store, const TableGrid& grid, const CellRectangle& cells)
{
    TextTable table = grid.table;
    table.id = QUuid::createUuid();
    table.columns = cells.lastColumn - cells.firstColumn + 1;
    AttributedString text;
    for (const GridCell& cell : grid.cells) {
        if (!cells.holds(cell.row, cell.column))
            continue;
        const AttributedString own = store.attributedText(cell.range);
        ParagraphStyle style = *own.paragraphStyle(0);
        style.cell->table = table;
        style.cell->row = cell.row - cells.firstRow;
        style.cell->column = cell.column - cells.firstColumn;
        style.cell->rowSpan = std::min(cell.rowSpan, cells.lastRow - cell.row + 1);
        style.cell->columnSpan = std::min(cell.columnSpan, cells.lastColumn - cell.column + 1);
        const SharedParagraphStyle shared = style;
        own.forEachCharacterRun(own.fullRange(), [&](TextRange run, const auto& characters) {
            text.append(QStringView(own.text()).sliced(run.location, run.length), characters,
                        shared);
        });
    }
    text.setParagraphStyle({text.length(), 0}, {});
    return text;
}

} // namespace orvane::TableEngine
