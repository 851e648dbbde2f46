// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/studio/ColorRow.h"

#include "appearance/AppearanceTokens.h"
#include "appearance/Drawing.h"
#include "appearance/Look.h"
#include "appearance/studio/ColorSliders.h"
#include "appearance/studio/ContrastChip.h"
#include "text/value/RgbaColor.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace orvane {

namespace {

constexpr int hexWidth = 78;
constexpr QSize swatchSize(44, 24);

} // namespace

ColorRow::ColorRow(const StudioColor& color, Look& look, QWidget* parent)
    : QAbstractButton(parent)
    , m_color(color)
    , m_look(look)
{
    setText(color.name);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setAttribute(Qt::WA_Hover);
    setMinimumWidth(260);
}

void ColorRow::showValues(const AppearanceValues& values,
                          const std::optional<InkContrast>& contrast)
{
    const AppearanceColor color = m_color.get(values);
    const RgbaColor chosen{color.red, color.green, color.blue, color.alpha};
    m_shown = color.enabled ? chosen.toQColor() : m_color.shown(m_look.tokens());
    m_hex = color.enabled ? toHex(chosen) : tr("Automatic");
    m_enough = !contrast || contrast->ratio >= contrast->minimum;
    m_contrast =
        contrast ? orvane::contrastText(contrast->ratio, contrast->minimum, contrast->madeReadable)
                 : QString();
    const QString spoken = m_color.name + QStringLiteral(", ") + m_hex;
    setAccessibleName(m_contrast.isEmpty() ? spoken : spoken + QStringLiteral(", ") + m_contrast);
    update();
}

QRect ColorRow::swatchRect() const
{
    return {QPoint(width() - hexWidth - swatchSize.width(), (height() - swatchSize.height()) / 2),
            swatchSize};
}

void ColorRow::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const SurfaceTokens& s = m_look.tokens().on(Surface::Page);
    if (underMouse() || isDown())
        drawPanel(painter, QRectF(rect()).adjusted(-1, 2, 1, -3), 6, s.hoveredRow);
    drawLineAt(Qt::BottomEdge, painter, rect(), s.border);

    const QRect swatch = swatchRect();
    const QFont font = interfaceFont(TextStyle::Body);
    painter.setFont(font);
    painter.setPen(s.text);
    const QFontMetricsF metrics(font);
    const double room = swatch.left() - 16;
    const int nameWidth = int(std::ceil(std::min(metrics.horizontalAdvance(text()) + 1, room)));
    painter.drawText(QRect(4, 0, nameWidth, height()), Qt::AlignVCenter | Qt::AlignLeft,
                     metrics.elidedText(text(), Qt::ElideRight, nameWidth));
    if (!m_contrast.isEmpty()) {
        const QSize size = contrastChipSize(m_contrast);
        const QRect chip(QPoint(4 + nameWidth + 12, (height() - size.height()) / 2), size);
        drawContrastChip(painter, chip, m_contrast, m_enough, s.ground);
    }

    QPainterPath path;
    path.addRoundedRect(swatch, 6, 6);
    painter.save();
    painter.setClipPath(path);
    if (m_shown.alpha() < 255)
        drawTransparencyPattern(painter, swatch);
    painter.fillRect(swatch, m_shown);
    painter.restore();
    drawPanel(painter, swatch, 6, {}, s.border);

    painter.setFont(editorFont(QStringLiteral("Menlo"), 11));
    painter.setPen(s.textSecondary);
    painter.drawText(QRect(swatch.right() + 1, 0, width() - swatch.right() - 5, height()),
                     Qt::AlignVCenter | Qt::AlignRight, m_hex);
    if (showsKeyboardFocus(*this))
        drawFocusRing(painter, QRectF(rect()).adjusted(0, 1, 0, -2), 6, s.accent);
}

} // namespace orvane
