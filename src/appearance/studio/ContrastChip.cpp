// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/studio/ContrastChip.h"

#include "appearance/Contrast.h"
#include "appearance/Drawing.h"
#include "appearance/SystemColors.h"

#include <QCoreApplication>
#include <QPainter>

#include <cmath>

namespace orvane {

QString contrastText(double ratio, double minimum, bool madeReadable)
{
    double shown = std::round(ratio * 10) / 10;
    // A figure never claims what it doesn't reach.
    if (ratio < minimum && shown >= minimum)
        shown = std::floor(ratio * 10) / 10;
    const QString figure = QLocale().toString(shown, 'f', 1);
    const auto tr = [](const char* text) {
        return QCoreApplication::translate("ContrastChip", text);
    };
    if (ratio >= minimum)
        return tr("%1 : 1").arg(figure);
    return madeReadable ? tr("%1 : 1, made readable").arg(figure)
                        : tr("%1 : 1, hard to read").arg(figure);
}

QSize contrastChipSize(const QString& text)
{
    const QFontMetrics metrics(interfaceFont(TextStyle::Label));
    return {metrics.horizontalAdvance(text) + 16, 22};
}

void drawContrastChip(QPainter& painter, const QRectF& rect, const QString& text, bool enough,
                      const QColor& ground)
{
    const SystemColors& system = systemColors(schemeOfGround(ground));
    const QColor tint = enough ? system.success : system.danger;
    const QColor face = blended(tint, 0.15, ground);
    drawPanel(painter, rect, rect.height() / 2, face);
    painter.setPen(readableInk(tint, face));
    painter.setFont(interfaceFont(TextStyle::Label));
    painter.drawText(rect, Qt::AlignCenter, text);
}

ContrastChip::ContrastChip(Look& look, Surface surface, QWidget* parent)
    : QWidget(parent)
    , m_look(look)
    , m_surface(surface)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void ContrastChip::setContrast(double ratio, double minimum, bool madeReadable)
{
    m_text = contrastText(ratio, minimum, madeReadable);
    m_enough = ratio >= minimum;
    setAccessibleName(m_text);
    updateGeometry();
    update();
}

QSize ContrastChip::sizeHint() const
{
    return contrastChipSize(m_text);
}

void ContrastChip::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    drawContrastChip(painter, rect(), m_text, m_enough, m_look.tokens().on(m_surface).ground);
}

} // namespace orvane
