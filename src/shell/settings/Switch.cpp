// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/settings/Switch.h"

#include "appearance/Contrast.h"
#include "appearance/Drawing.h"
#include "appearance/Look.h"

#include <QPainter>

namespace orvane {

namespace {

constexpr QSize track(38, 22);
constexpr double knobInset = 3;

} // namespace

Switch::Switch(const Look& look, QWidget* parent)
    : QCheckBox(parent)
    , m_look(look)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize Switch::sizeHint() const
{
    return track;
}

bool Switch::hitButton(const QPoint& position) const
{
    return rect().contains(position);
}

void Switch::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setOpacity(isEnabled() ? 1 : 0.45);
    const Tokens& t = m_look.tokens();
    const QColor ground = palette().color(QPalette::Window);
    const QColor ink = palette().color(QPalette::Active, QPalette::WindowText);
    const QColor edge = readableInk(blended(ink, 0.4, ground), ground, iconContrast);
    QRectF face = rect();
    if (showsKeyboardFocus(*this)) {
        drawFocusRing(painter, face, face.height() / 2, palette().color(QPalette::LinkVisited));
        face.adjust(3, 3, -3, -3);
    }
    const double radius = face.height() / 2;
    if (isChecked())
        drawPanel(painter, face, radius, underMouse() ? t.accentHovered : t.accent);
    else
        drawPanel(painter, face, radius, palette().color(QPalette::AlternateBase), edge);
    const double side = face.height() - 2 * knobInset;
    const double left = isChecked() ? face.right() - knobInset - side : face.left() + knobInset;
    drawPanel(painter, QRectF(left, face.top() + knobInset, side, side), side / 2,
              isChecked() ? t.textOnAccent : edge);
}

} // namespace orvane
