// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/page/PageHead.h"

#include "editor/page/PageFit.h"

#include <QPaintEvent>
#include <QPainter>

namespace orvane {

void PageHead::setSheet(const std::optional<PageSheetLook>& look, int left, int width)
{
    m_look = look;
    m_left = left;
    m_width = width;
    update();
}

void PageHead::paintEvent(QPaintEvent* event)
{
    if (!m_look)
        return;
    QPainter painter(this);
    constexpr int below = 4 * sheetShadowReach; // its lower edge is not in sight
    drawPageSheet(painter, QRectF(m_left, deskAbovePage, m_width, height() + below), event->rect(),
                  *m_look);
}

} // namespace orvane
