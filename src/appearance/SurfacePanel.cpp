// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/SurfacePanel.h"

#include "appearance/Drawing.h"

#include <QPaintEvent>
#include <QPainter>

namespace orvane {

SurfacePanel::SurfacePanel(Look& look, Surface surface, QWidget* parent)
    : QWidget(parent)
    , m_look(look)
    , m_surface(surface)
{
    if (!isRail(surface))
        setAttribute(Qt::WA_OpaquePaintEvent);
    applyLook();
    connect(&look, &Look::changed, this, &SurfacePanel::applyLook);
}

void SurfacePanel::applyLook()
{
    setPalette(m_look.palette(m_surface));
}

/// Where the backdrop's gradient shows, it runs over the whole window behind every panel.
QBrush SurfacePanel::ground() const
{
    const SurfaceTokens& s = m_look.tokens().on(m_surface);
    if (s.groundTop == s.groundBottom)
        return s.ground;
    const double top = -mapTo(window(), QPoint()).y();
    QLinearGradient gradient(0, top, 0, top + window()->height());
    gradient.setColorAt(0, s.groundTop);
    gradient.setColorAt(0.5, s.ground);
    gradient.setColorAt(1, s.groundBottom);
    return gradient;
}

void SurfacePanel::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    if (!isRail(m_surface)) {
        painter.fillRect(event->rect(), ground());
        return;
    }
    drawPanel(painter, rect(), 8, m_look.ground(m_surface));
}

} // namespace orvane
