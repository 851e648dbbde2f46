// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/tables/TableOnView.h"

#include "editor/view/EditorView.h"
#include "text/layout/ParagraphLayout.h"
#include "text/store/TableRow.h"

#include <algorithm>

namespace orvane {

namespace {

void addColumns(TableOnView& table, const EditorView& view, const TableRow& row)
{
    const StyleTable& styles = view.store().styles();
    for (QTextBlock block = row.first;; block = block.next()) {
        const TableCellBlock& cell = *cellOf(block, styles);
        const auto place =
            std::ranges::lower_bound(table.columns, cell.column, {}, &TableOnView::Column::number);
        const bool isKnown = place != table.columns.end() && place->number == cell.column;
        if (!isKnown && cell.columnSpan == 1) {
            const QRectF rect = view.toViewport(view.layout().cellRect(block));
            table.columns.insert(place, {cell.column, rect.left(), rect.right()});
        }
        if (block == row.last)
            return;
    }
}

} // namespace

std::optional<TableOnView> tableOnView(const EditorView& view, qsizetype position)
{
    const TextStore& store = view.store();
    const StyleTable& styles = store.styles();
    const QTextBlock caret = store.blockAt(position);
    if (!isCell(caret, styles))
        return std::nullopt;
    TableOnView table;
    table.table = cellOf(caret, styles)->table.id;
    const int columns = cellOf(caret, styles)->table.columns;
    const auto belongs = [&](const QTextBlock& block) {
        return isCell(block, styles) && cellOf(block, styles)->table.id == table.table;
    };
    ParagraphLayout& layout = view.layout();
    const qreal height = view.viewport()->height();
    const auto topOf = [&](const QTextBlock& block) {
        return view.toViewport(QPointF(0, layout.topOf(block))).y();
    };
    QTextBlock block = layout.rowStart(layout.blockAtY(view.toPage({0, 0}).y()));
    while (block.isValid() && !belongs(block) && topOf(block) < height)
        block = layout.below(block);
    if (!belongs(block) || topOf(block) >= height)
        return std::nullopt;
    table.beginsInSight = !belongs(layout.above(block));
    for (; belongs(block) && topOf(block) < height; block = layout.below(block)) {
        const TableRow row = rowOf(block, styles);
        const QRectF first = view.toViewport(layout.cellRect(row.first));
        const QRectF last = view.toViewport(layout.cellRect(row.last));
        table.rows.append({row.first.position(), first.top(), first.bottom()});
        table.rect |= first | last;
        if (table.columns.size() < columns)
            addColumns(table, view, row);
    }
    table.endsInSight = !belongs(block);
    if (table.columns.size() > 1 && table.columns.first().left > table.columns.last().left)
        table.direction = Qt::RightToLeft;
    const QRectF cell = view.toViewport(layout.cellRect(caret));
    if (cell.intersects(view.viewport()->rect()))
        table.caretCell = cell;
    return table;
}

} // namespace orvane
