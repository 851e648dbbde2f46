// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/studio/ColorSliders.h"

#include "appearance/Drawing.h"
#include "appearance/Look.h"

#include <QKeyEvent>
#include <QLinearGradient>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

namespace orvane {

namespace {

constexpr int trackHeight = 12;
constexpr int handleSize = 16;
constexpr double disabledOpacity = 0.35;
constexpr int fieldStep = 4;
constexpr int fieldLongStep = 32;

/// A ring that shows on light and on dark colours alike.
void drawHandle(QPainter& painter, QPointF center, double size, const QColor& fill)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(fill);
    painter.setPen(QPen(QColor(0, 0, 0, 110), 4));
    painter.drawEllipse(center, size / 2 - 2, size / 2 - 2);
    painter.setPen(QPen(Qt::white, 2));
    painter.drawEllipse(center, size / 2 - 2, size / 2 - 2);
}

} // namespace

void drawTransparencyPattern(QPainter& painter, const QRectF& rect)
{
    constexpr double side = 4;
    painter.fillRect(rect, QColor(0xFF, 0xFF, 0xFF));
    for (int row = 0; row * side < rect.height(); ++row) {
        for (int column = row % 2; column * side < rect.width(); column += 2)
            painter.fillRect(
                QRectF(rect.left() + column * side, rect.top() + row * side, side, side)
                    .intersected(rect),
                QColor(0xC4, 0xC4, 0xC8));
    }
}

GradientSlider::GradientSlider(Look& look, int maximum, const QString& name, QWidget* parent)
    : QAbstractSlider(parent)
    , m_look(look)
{
    setOrientation(Qt::Horizontal);
    setRange(0, maximum);
    setSingleStep(1);
    setPageStep(qMax(1, maximum / 16));
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(name);
    setToolTip(name);
}

void GradientSlider::setStops(const QGradientStops& stops)
{
    m_stops = stops;
    update();
}

QSize GradientSlider::sizeHint() const
{
    return {160, 22};
}

QRectF GradientSlider::track() const
{
    return QRectF(3, (height() - trackHeight) / 2.0, width() - 6, trackHeight);
}

void GradientSlider::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF rect = track();
    QPainterPath path;
    path.addRoundedRect(rect, trackHeight / 2.0, trackHeight / 2.0);
    const SurfaceTokens& card = m_look.tokens().on(Surface::Card);
    painter.setOpacity(isEnabled() ? 1 : disabledOpacity);
    painter.save();
    painter.setClipPath(path);
    drawTransparencyPattern(painter, rect);
    QLinearGradient gradient(rect.topLeft(), rect.topRight());
    gradient.setStops(m_stops);
    painter.fillRect(rect, gradient);
    painter.restore();
    painter.setPen(QPen(card.border, 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(path);
    const double share = maximum() > 0 ? double(value()) / maximum() : 0;
    const double reach = rect.width() - trackHeight;
    drawHandle(painter, {rect.left() + trackHeight / 2.0 + share * reach, rect.center().y()},
               handleSize, Qt::transparent);
    if (hasFocus())
        drawFocusRing(painter, QRectF(this->rect()), 9, card.accent);
}

void GradientSlider::moveTo(double x)
{
    const QRectF rect = track();
    const double reach = rect.width() - trackHeight;
    setValue(qRound((x - rect.left() - trackHeight / 2.0) / reach * maximum()));
}

void GradientSlider::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        moveTo(event->position().x());
}

void GradientSlider::mouseMoveEvent(QMouseEvent* event)
{
    if (event->buttons().testFlag(Qt::LeftButton))
        moveTo(event->position().x());
}

void GradientSlider::sliderChange(SliderChange change)
{
    QAbstractSlider::sliderChange(change);
    update();
}

void GradientSlider::focusInEvent(QFocusEvent* event)
{
    QAbstractSlider::focusInEvent(event);
    update();
}

void GradientSlider::focusOutEvent(QFocusEvent* event)
{
    QAbstractSlider::focusOutEvent(event);
    update();
}

SaturationField::SaturationField(Look& look, QWidget* parent)
    : QWidget(parent)
    , m_look(look)
{
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::CrossCursor);
    setAccessibleName(tr("Saturation and brightness"));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void SaturationField::setColor(int hue, int saturation, int brightness)
{
    m_hue = hue;
    m_saturation = saturation;
    m_brightness = brightness;
    setAccessibleDescription(
        tr("Saturation %1 of 255, brightness %2 of 255").arg(saturation).arg(brightness));
    update();
}

void SaturationField::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF area = QRectF(rect()).adjusted(3, 3, -3, -3);
    QPainterPath path;
    path.addRoundedRect(area, 6, 6);
    painter.save();
    painter.setClipPath(path);
    QLinearGradient across(area.topLeft(), area.topRight());
    across.setColorAt(0, Qt::white);
    across.setColorAt(1, QColor::fromHsv(m_hue, 255, 255));
    painter.fillRect(area, across);
    QLinearGradient down(area.topLeft(), area.bottomLeft());
    down.setColorAt(0, Qt::transparent);
    down.setColorAt(1, Qt::black);
    painter.fillRect(area, down);
    painter.restore();
    drawHandle(painter,
               {area.left() + area.width() * m_saturation / 255,
                area.bottom() - area.height() * m_brightness / 255},
               handleSize, QColor::fromHsv(m_hue, m_saturation, m_brightness));
    if (hasFocus())
        drawFocusRing(painter, QRectF(rect()), 8, m_look.tokens().on(Surface::Card).accent);
}

void SaturationField::choose(int saturation, int brightness)
{
    saturation = qBound(0, saturation, 255);
    brightness = qBound(0, brightness, 255);
    if (saturation == m_saturation && brightness == m_brightness)
        return;
    setColor(m_hue, saturation, brightness);
    emit chosen(saturation, brightness);
}

void SaturationField::moveTo(QPointF position)
{
    const QRectF area = QRectF(rect()).adjusted(3, 3, -3, -3);
    choose(qRound((position.x() - area.left()) / area.width() * 255),
           qRound((area.bottom() - position.y()) / area.height() * 255));
}

void SaturationField::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        moveTo(event->position());
}

void SaturationField::mouseMoveEvent(QMouseEvent* event)
{
    if (event->buttons().testFlag(Qt::LeftButton))
        moveTo(event->position());
}

void SaturationField::keyPressEvent(QKeyEvent* event)
{
    const int step = event->modifiers().testFlag(Qt::ShiftModifier) ? fieldLongStep : fieldStep;
    switch (event->key()) {
    case Qt::Key_Left:
        return choose(m_saturation - step, m_brightness);
    case Qt::Key_Right:
        return choose(m_saturation + step, m_brightness);
    case Qt::Key_Up:
        return choose(m_saturation, m_brightness + step);
    case Qt::Key_Down:
        return choose(m_saturation, m_brightness - step);
    default:
        QWidget::keyPressEvent(event);
    }
}

} // namespace orvane
