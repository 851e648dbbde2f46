// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/tables/TableHandles.h"

#include "appearance/Drawing.h"
#include "appearance/Look.h"
#include "editor/tables/TableTools.h"
#include "editor/view/EditorView.h"
#include "text/layout/ParagraphLayout.h"
#include "text/store/TableRow.h"

#include <QPainter>
#include <QStyle>

#include <algorithm>

namespace orvane {

namespace {

// Pixels.
constexpr qreal thickness = 10;
constexpr qreal gapToTable = 4;
constexpr qreal gapBetween = 1;
constexpr double corner = 3;

constexpr float idleInk = 0.14F;
constexpr float hoveredInk = 0.3F;

} // namespace

TableHandles::TableHandles(EditorView& view, TableTools& tools, Look& look,
                           std::function<void()> painted)
    : m_view(view)
    , m_tools(tools)
    , m_look(look)
    , m_painted(std::move(painted))
{
    m_view.addExtension(this, ExtensionPriority::guides);
}

TableHandles::~TableHandles()
{
    m_view.removeExtension(this);
}

std::optional<TableOnView> TableHandles::table() const
{
    if (!m_tools.isInTable() || !m_view.isEditable())
        return std::nullopt;
    return tableOnView(m_view, m_view.selection().position);
}

// Those of the rows stand where the table's lines begin.
QList<TableHandles::Handle> TableHandles::handlesOf(const TableOnView& table)
{
    QList<Handle> handles;
    if (table.beginsInSight) {
        const qreal top = table.rect.top() - gapToTable - thickness;
        for (const TableOnView::Column& column : table.columns)
            handles.append({Axis::columns, column.number,
                            QRectF(column.left, top, column.right - column.left, thickness)
                                .adjusted(gapBetween, 0, -gapBetween, 0)});
    }
    const QRect around = table.rect.toAlignedRect();
    for (qsizetype i = 0; i < table.rows.size(); ++i) {
        const TableOnView::Row& row = table.rows[i];
        QRectF rect = QRectF(table.rect.left() - gapToTable - thickness, row.top, thickness,
                             row.bottom - row.top)
                          .adjusted(0, gapBetween, 0, -gapBetween);
        if (table.direction == Qt::RightToLeft)
            rect.moveLeft(QStyle::visualRect(table.direction, around, rect.toAlignedRect()).left());
        handles.append({Axis::rows, int(i), rect});
    }
    return handles;
}

void TableHandles::paintOverText(QPainter& painter, const EditorPaint& paint)
{
    const auto table = this->table();
    if (table != m_shown) {
        m_shown = table;
        m_painted();
    }
    if (!table)
        return;
    const QColor accent = m_look.tokens().on(Surface::Page).accent;
    QColor idle = m_view.look().text.text;
    idle.setAlphaF(idleInk);
    QColor hovered = idle;
    hovered.setAlphaF(hoveredInk);
    const auto* selected = m_tools.selectedRectangle();
    const auto isSelected = [&](const Handle& handle) {
        if (!selected || selected->grid.table.id != table->table)
            return false;
        const CellRectangle& cells = selected->cells;
        if (handle.axis == Axis::columns)
            return cells.firstColumn <= handle.number && handle.number <= cells.lastColumn;
        const qsizetype index = selected->grid.indexAt(table->rows[handle.number].position);
        const int row = index < 0 ? -1 : selected->grid.cells[index].row;
        return cells.firstRow <= row && row <= cells.lastRow;
    };
    for (const Handle& handle : handlesOf(*table)) {
        if (!handle.rect.intersects(paint.clip))
            continue;
        const bool isHovered =
            m_hovered && m_hovered->axis == handle.axis && m_hovered->number == handle.number;
        drawPanel(painter, handle.rect, corner,
                  isSelected(handle) ? accent
                  : isHovered        ? hovered
                                     : idle);
    }
}

std::optional<TableHandles::Handle> TableHandles::handleAt(QPointF page) const
{
    const auto table = this->table();
    if (!table)
        return std::nullopt;
    const QPointF point = m_view.toViewport(page);
    for (const Handle& handle : handlesOf(*table)) {
        // Up to the table itself, which is easier to hit.
        const qreal reach = gapToTable / 2;
        if (handle.rect.adjusted(-reach, -reach, reach, reach).contains(point))
            return handle;
    }
    return std::nullopt;
}

std::optional<Qt::CursorShape> TableHandles::cursorAt(QPointF page)
{
    return m_sweep || handleAt(page) ? std::optional(Qt::PointingHandCursor) : std::nullopt;
}

bool TableHandles::hovered(QPointF page)
{
    setHovered(handleAt(page));
    return m_hovered.has_value();
}

void TableHandles::hoverEnded()
{
    setHovered(std::nullopt);
}

void TableHandles::setHovered(const std::optional<Handle>& handle)
{
    if (handle == m_hovered)
        return;
    for (const auto& each : {m_hovered, handle}) {
        if (each)
            m_view.viewport()->update(each->rect.toAlignedRect().adjusted(-1, -1, 1, 1));
    }
    m_hovered = handle;
}

bool TableHandles::mousePressed(const EditorMouse& mouse)
{
    const bool extends = mouse.modifiers == Qt::ShiftModifier;
    if (mouse.button != Qt::LeftButton || (mouse.modifiers != Qt::NoModifier && !extends))
        return false;
    const auto handle = handleAt(mouse.page);
    const auto grid = handle ? tableAt(m_view.store(), m_view.selection().position) : std::nullopt;
    if (!grid)
        return false;
    const int number = nearest(mouse.page, handle->axis, *grid);
    m_sweep = Sweep{handle->axis, number};
    if (extends) {
        const CellRectangle cells = m_tools.cellsAtCaret();
        const bool isColumn = handle->axis == Axis::columns;
        const int first = isColumn ? cells.firstColumn : cells.firstRow;
        const int last = isColumn ? cells.lastColumn : cells.lastRow;
        m_sweep->from = number >= first ? first : last;
    }
    selectTo(number, *grid);
    return true;
}

void TableHandles::mouseMoved(const EditorMouse& mouse)
{
    const auto grid = m_sweep ? tableAt(m_view.store(), m_view.selection().position) : std::nullopt;
    if (!grid)
        return;
    selectTo(nearest(mouse.page, m_sweep->axis, *grid), *grid);
    const qreal y = m_view.toViewport(mouse.page).y();
    if (m_sweep->axis == Axis::rows && (y < 0 || y > m_view.viewport()->height()))
        m_view.ensureCaretVisible();
}

void TableHandles::mouseReleased(const EditorMouse& /*mouse*/)
{
    m_sweep.reset();
}

int TableHandles::nearest(QPointF page, Axis axis, const TableGrid& grid) const
{
    if (axis == Axis::rows) {
        const qsizetype position = m_view.layout().blockAtY(page.y()).position();
        const TextRange range = grid.range();
        const qsizetype within = std::clamp(position, range.location, range.end() - 1);
        return grid.cells[grid.indexAt(within)].row;
    }
    const auto table = this->table();
    const qreal x = m_view.toViewport(page).x();
    int number = 0;
    std::optional<qreal> least;
    for (const auto& column : table ? table->columns : QList<TableOnView::Column>()) {
        const qreal distance = std::max({column.left - x, x - column.right, 0.0});
        if (!least || distance < *least) {
            least = distance;
            number = column.number;
        }
    }
    return number;
}

void TableHandles::selectTo(int number, const TableGrid& grid)
{
    const int first = std::min(m_sweep->from, number);
    const int last = std::max(m_sweep->from, number);
    m_tools.selectCells(grid, m_sweep->axis == Axis::columns
                                  ? CellRectangle{0, first, grid.rows - 1, last}
                                  : CellRectangle{first, 0, last, grid.columns - 1});
}

} // namespace orvane
