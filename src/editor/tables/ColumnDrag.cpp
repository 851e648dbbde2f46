// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/tables/ColumnDrag.h"

#include "appearance/Contrast.h"
#include "appearance/Drawing.h"
#include "appearance/Look.h"
#include "editor/view/EditorView.h"
#include "text/layout/ParagraphLayout.h"
#include "text/store/TableRow.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QPainter>

#include <cmath>
#include <numeric>

namespace orvane {

namespace {

struct Words {
    Q_DECLARE_TR_FUNCTIONS(ColumnDrag)
};

constexpr qreal reach = 4;          // pixels to both sides of a border
constexpr double leastPercent = 3;  // of a column
constexpr QSizeF labelSize(48, 24); // pixels

} // namespace

ColumnDrag::ColumnDrag(EditorView& view, Look& look)
    : m_view(view)
    , m_look(look)
{
    m_view.addExtension(this, ExtensionPriority::guides);
}

ColumnDrag::~ColumnDrag()
{
    m_view.removeExtension(this);
}

// The outer borders stay: a table is as wide as the text.
std::optional<ColumnDrag::Border> ColumnDrag::borderAt(QPointF page) const
{
    if (!m_view.isEditable())
        return std::nullopt;
    const TextStore& store = m_view.store();
    const qsizetype position = m_view.positionAt(m_view.toViewport(page));
    const QTextBlock block = store.blockAt(position);
    if (!isCell(block, store.styles()))
        return std::nullopt;
    const QRectF rect = m_view.layout().cellRect(block);
    if (page.y() < rect.top() || page.y() > rect.bottom())
        return std::nullopt;
    const TableCellBlock& cell = *cellOf(block, store.styles());
    const bool isMirrored = runsRightToLeft(rowOf(block, store.styles()), store.styles());
    const qreal near = reach / m_view.zoom();
    const qreal start = isMirrored ? rect.right() : rect.left();
    const qreal end = isMirrored ? rect.left() : rect.right();
    if (std::abs(page.x() - start) <= near && cell.column > 0)
        return Border{block.position(), cell.column - 1};
    const int last = cell.column + cell.columnSpan - 1;
    if (std::abs(page.x() - end) <= near && last < cell.table.columns - 1)
        return Border{block.position(), last};
    return std::nullopt;
}

std::optional<Qt::CursorShape> ColumnDrag::cursorAt(QPointF page)
{
    return borderAt(page) ? std::optional(Qt::SplitHCursor) : std::nullopt;
}

bool ColumnDrag::mousePressed(const EditorMouse& mouse)
{
    if (mouse.button != Qt::LeftButton || mouse.modifiers != Qt::NoModifier)
        return false;
    const auto border = borderAt(mouse.page);
    const auto grid = border ? tableAt(m_view.store(), border->position) : std::nullopt;
    if (!grid || border->column + 1 >= grid->columns)
        return false;
    const ParagraphLayout& layout = m_view.layout();
    const TableRow row = rowOf(m_view.store().blockAt(border->position), m_view.store().styles());
    Drag drag{border->position, border->column,
              TableEngine::columnWidths(m_view.store(), border->position)};
    const bool isMirrored = runsRightToLeft(row, m_view.store().styles());
    const qreal width = m_view.layout().width();
    const qreal left = isMirrored ? 0 : m_view.layout().cellRect(row.first).left();
    drag.table =
        QRectF(QPointF(left, layout.topOf(m_view.store().blockAt(grid->range().location))),
               QPointF(left + width,
                       layout.bottomOf(m_view.store().blockAt(grid->cells.last().range.location))));
    const auto xOf = [&](int column) {
        const double before = std::reduce(drag.widths.begin(), drag.widths.begin() + column);
        return isMirrored ? width * (100 - before) / 100 : left + width * before / 100;
    };
    drag.start = xOf(drag.column);
    drag.end = xOf(drag.column + 2);
    drag.x = mouse.page.x();
    m_drag = drag;
    update();
    return true;
}

double ColumnDrag::share() const
{
    const double both = m_drag->widths[m_drag->column] + m_drag->widths[m_drag->column + 1];
    const double percent = (m_drag->x - m_drag->start) / (m_drag->end - m_drag->start) * both;
    return std::clamp(percent, std::min(leastPercent, both / 2),
                      std::max(both - leastPercent, both / 2));
}

void ColumnDrag::update()
{
    const qreal label = labelSize.width() / m_view.zoom();
    m_view.updatePage(QRectF(m_drag->x - label / 2, m_drag->table.top(), label,
                             m_drag->table.height() + 2 * labelSize.height() / m_view.zoom()));
}

void ColumnDrag::mouseMoved(const EditorMouse& mouse)
{
    if (!m_drag)
        return;
    update();
    m_drag->x = std::clamp(mouse.page.x(), std::min(m_drag->start, m_drag->end),
                           std::max(m_drag->start, m_drag->end));
    update();
}

void ColumnDrag::mouseReleased(const EditorMouse& mouse)
{
    if (!m_drag)
        return;
    mouseMoved(mouse);
    update();
    const double both = m_drag->widths[m_drag->column] + m_drag->widths[m_drag->column + 1];
    const double first = std::round(share() * 10) / 10;
    Drag drag = *std::exchange(m_drag, std::nullopt);
    if (std::abs(first - drag.widths[drag.column]) < 0.1)
        return;
    drag.widths[drag.column] = first;
    drag.widths[drag.column + 1] = both - first;
    (void)TableEngine::setColumnWidths(m_view.gateway(), drag.position, drag.widths);
}

bool ColumnDrag::keyPressed(const QKeyEvent& event)
{
    if (!m_drag || event.key() != Qt::Key_Escape)
        return m_drag.has_value();
    update();
    m_drag.reset();
    return true;
}

void ColumnDrag::paintOverText(QPainter& painter, const EditorPaint& paint)
{
    if (!m_drag)
        return;
    const SurfaceTokens& page = m_look.tokens().on(Surface::Page);
    const auto onView = [&](QPointF point) {
        return paint.origin + point * paint.scale;
    };
    const QPointF top = onView({m_drag->x, m_drag->table.top()});
    const QPointF bottom = onView({m_drag->x, m_drag->table.bottom()});
    painter.save();
    painter.setPen(QPen(page.accent, 2, Qt::DashLine));
    painter.drawLine(QPointF(top.x(), std::max(top.y(), paint.clip.top() - 8)),
                     QPointF(bottom.x(), std::min(bottom.y(), paint.clip.bottom() + 8)));
    const qreal lowest = m_view.viewport()->height() - labelSize.height() - 4;
    const QRectF label(
        QPointF(bottom.x() - labelSize.width() / 2, std::min(bottom.y() + 4, lowest)), labelSize);
    drawPanel(painter, label, 5, page.accent, page.accent);
    painter.setPen(inkFor(page.accent));
    painter.drawText(label, Qt::AlignCenter, Words::tr("%1 %").arg(std::lround(share())));
    painter.restore();
}

} // namespace orvane
