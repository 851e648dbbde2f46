// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/page/PageSurface.h"

#include "editor/view/EditorView.h"

#include <cmath>

namespace orvane {

PageSurface::PageSurface(EditorView& view)
    : m_view(view)
{
    view.addExtension(this, ExtensionPriority::page);
    connect(&view, &EditorView::textChanged, this, &PageSurface::followBottom);
}

PageSurface::~PageSurface()
{
    m_view.removeExtension(this);
}

void PageSurface::setFit(const PageFit& fit)
{
    if (fit == m_fit)
        return;
    m_fit = fit;
    m_view.viewport()->update();
}

QRectF PageSurface::sheet() const
{
    const qreal zoom = m_view.zoom();
    const QPointF origin = m_view.textOrigin();
    const qreal left = std::round(origin.x() - m_fit.leftMargin * zoom);
    const qreal end = origin.y() + (m_view.layout().height() + m_view.roomBelow()) * zoom;
    const qreal bottom = std::max(end, qreal(m_view.viewport()->height())) - deskAbovePage;
    // Its upper edge stands above the head; further up nobody sees where it is.
    const qreal head = origin.y() - m_view.roomAbove() * zoom + deskAbovePage;
    const qreal top = std::max(std::round(head), qreal(-4 * sheetShadowReach));
    return {QPointF(left, top),
            QPointF(left + std::round(m_fit.width() * zoom), std::round(bottom))};
}

void PageSurface::paintBehindText(QPainter& painter, const EditorPaint& paint)
{
    if (!m_view.look().sheet)
        return;
    const QRectF paper = sheet();
    m_shownBottom = paper.bottom();
    m_shownEnd = paint.origin.y() + m_view.layout().height() * paint.scale;
    drawPageSheet(painter, paper, paint.clip, *m_view.look().sheet);
}

// What stands below a changed paragraph is moved on the screen as it is. The sheet's lower edge
// stays behind while the sheet reaches to the foot of the view.
void PageSurface::followBottom()
{
    if (!m_view.look().sheet)
        return;
    const qreal end = m_view.textOrigin().y() + m_view.layout().height() * m_view.zoom();
    const qreal bottom = sheet().bottom();
    const qreal moved = m_shownBottom + end - m_shownEnd;
    if (moved == bottom)
        return;
    for (const qreal edge : {bottom, m_shownBottom, moved}) {
        const QRectF strip(0, edge - sheetShadowReach, m_view.viewport()->width(),
                           2 * sheetShadowReach + 2);
        m_view.viewport()->update((strip & QRectF(m_view.viewport()->rect())).toAlignedRect());
    }
}

} // namespace orvane
