// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/Drawing.h"

#include "appearance/Typography.h"

#include <QFontMetrics>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>
#include <QWidget>

#include <cmath>

namespace orvane {

namespace {

constexpr double rowRadius = 6;

/// On the middle of the pixels, where a line of 1 px is sharp.
QRectF onGrid(const QRectF& rect)
{
    return rect.adjusted(0.5, 0.5, -0.5, -0.5);
}

} // namespace

double deviceRatio(const QPainter& painter)
{
    const QPaintEngine* engine = painter.paintEngine();
    const QPaintDevice* device = engine ? engine->paintDevice() : painter.device();
    return device->devicePixelRatioF();
}

void drawCentred(QPainter& painter, const QRectF& rect, QPixmap picture, double size)
{
    const double ratio = deviceRatio(painter);
    picture.setDevicePixelRatio(ratio);
    const auto snapped = [&](double value) {
        return std::round(value * ratio) / ratio;
    };
    const QPointF corner = rect.center() - QPointF(size / 2, size / 2);
    painter.drawPixmap(QPointF(snapped(corner.x()), snapped(corner.y())), picture);
}

void drawSymbol(QPainter& painter, const QRectF& rect, Symbol symbol, double size,
                const QColor& color)
{
    const int pixels = qRound(size * deviceRatio(painter));
    drawCentred(painter, rect, symbolPixmap(symbol, pixels, color), size);
}

void drawPanel(QPainter& painter, const QRectF& rect, double radius, const QColor& fill,
               const QColor& edge)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(fill.isValid() ? QBrush(fill) : QBrush(Qt::NoBrush));
    if (edge.isValid()) {
        painter.setPen(QPen(edge, 1));
        painter.drawRoundedRect(onGrid(rect), radius - 0.5, radius - 0.5);
    } else {
        painter.setPen(Qt::NoPen);
        painter.drawRoundedRect(rect, radius, radius);
    }
    painter.restore();
}

QRegion panelRegion(const QSize& size, double radius)
{
    QRegion region(QRect(QPoint(), size));
    for (int y = 0; y < int(radius) && 2 * y < size.height(); ++y) {
        // The corner of a pixel that is next to the middle of the arc counts.
        const double below = radius - (y + 1);
        const int inset =
            std::max(0, int(std::floor(radius - std::sqrt(radius * radius - below * below))));
        for (const int line : {y, size.height() - 1 - y}) {
            region -= QRect(0, line, inset, 1);
            region -= QRect(size.width() - inset, line, inset, 1);
        }
    }
    return region;
}

void cutCorners(QWidget& popup)
{
    QStyleOption option;
    option.initFrom(&popup);
    QStyleHintReturnMask mask;
    if (popup.style()->styleHint(QStyle::SH_Menu_Mask, &option, &popup, &mask))
        popup.setMask(mask.region);
}

void drawDashedEdge(QPainter& painter, const QRectF& rect, double radius, const QColor& color)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    QPen pen(color, 1);
    pen.setDashPattern({4, 3});
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(onGrid(rect), radius, radius);
    painter.restore();
}

void drawLineAt(Qt::Edge edge, QPainter& painter, const QRect& rect, const QColor& color)
{
    QRect line = rect;
    switch (edge) {
    case Qt::TopEdge:
        line.setHeight(1);
        break;
    case Qt::BottomEdge:
        line.setTop(rect.bottom());
        break;
    case Qt::LeftEdge:
        line.setWidth(1);
        break;
    case Qt::RightEdge:
        line.setLeft(rect.right());
        break;
    }
    painter.fillRect(line, color);
}

void drawCardShadow(QPainter& painter, const QRectF& card, double radius)
{
    constexpr int depth = 32;
    constexpr int drop = 10;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    for (int step = depth; step > 0; step -= 2) {
        // Thinner outwards, so that no edge of it is seen.
        const double inwards = double(depth - step) / depth;
        painter.setBrush(QColor(0, 0, 0, 1 + qRound(3 * inwards * inwards)));
        painter.drawRoundedRect(card.adjusted(-step, drop - step, step, drop + step), radius + step,
                                radius + step);
    }
    painter.restore();
}

void drawFocusRing(QPainter& painter, const QRectF& rect, double radius, const QColor& color)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(color, 2));
    painter.drawRoundedRect(rect.adjusted(1, 1, -1, -1), radius - 1, radius - 1);
    painter.restore();
}

bool showsKeyboardFocus(const QWidget& widget)
{
    return widget.hasFocus() && widget.window()->testAttribute(Qt::WA_KeyboardFocusChange);
}

void drawRowGround(QPainter& painter, const QRect& row, const RowState& state,
                   const SurfaceTokens& surface)
{
    if (state.isSelected) {
        drawPanel(painter, row, rowRadius, surface.selectedRow);
        painter.fillRect(QRect(row.left(), row.top() + 8, 2, row.height() - 16), surface.accent);
        if (state.hasFocus)
            drawFocusRing(painter, row, rowRadius, surface.accent);
    } else if (state.isHovered) {
        drawPanel(painter, row, rowRadius, surface.hoveredRow);
    }
}

void drawTextLine(QPainter& painter, const QRect& rect, const QFont& font, const QColor& ink,
                  const QString& text)
{
    painter.setFont(font);
    painter.setPen(ink);
    painter.drawText(rect, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                     fitted(text, font, rect.width()));
}

int keyChipWidth(const QString& key)
{
    return QFontMetrics(interfaceFont(TextStyle::Label)).horizontalAdvance(key) + 12;
}

int drawKeyChip(QPainter& painter, const QRect& room, const QString& key, const QColor& ink,
                const QColor& edge)
{
    const int width = keyChipWidth(key);
    const QRect chip(room.right() + 1 - width, room.center().y() - 10, width, 21);
    drawPanel(painter, chip, 4, QColor(), edge);
    painter.setFont(interfaceFont(TextStyle::Label));
    painter.setPen(ink);
    painter.drawText(chip, Qt::AlignCenter, key);
    return chip.left();
}

} // namespace orvane
