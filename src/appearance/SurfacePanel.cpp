// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/SurfacePanel.h"

#include <QPaintEvent>
#include <QPainter>

namespace orvane {

SurfacePanel::SurfacePanel(Look& look, Surface surface, QWidget* parent)
    : QWidget(parent)
    , m_look(look)
    , m_surface(surface)
{
    if (surface != Surface::Rail)
        setAttribute(Qt::WA_OpaquePaintEvent);
    applyLook();
    connect(&look, &Look::changed, this, &SurfacePanel::applyLook);
}

void SurfacePanel::applyLook()
{
    setPalette(m_look.palette(m_surface));
}

void SurfacePanel::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    if (m_surface != Surface::Rail) {
        painter.fillRect(event->rect(), m_look.ground(m_surface));
        return;
    }
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_look.tokens().rail);
    painter.drawRoundedRect(rect(), 8, 8);
}

} // namespace orvane
