// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/formatting/BarControls.h"

#include "appearance/Contrast.h"
#include "appearance/Drawing.h"

#include <QPainter>
#include <QStyleOptionToolButton>

namespace orvane {

namespace {

constexpr int controlHeight = 28;
constexpr int symbolSize = 16;
constexpr int arrowSize = 10;
constexpr int symbolWidth = 42;
constexpr int arrowWidth = 16;
constexpr int frameMargin = 9;
constexpr double fadedInk = 0.35;

} // namespace

BarMenuButton::BarMenuButton(Shape shape, Look& look, QWidget* parent)
    : QToolButton(parent)
    , m_look(look)
    , m_shape(shape)
{
    setFixedHeight(controlHeight);
    if (shape == Shape::arrow)
        setFixedWidth(arrowWidth);
    else if (shape == Shape::color)
        setFixedWidth(controlHeight);
    else
        setFixedWidth(symbolWidth);
}

void BarMenuButton::setSymbol(Symbol symbol)
{
    m_symbol = symbol;
    update();
}

void BarMenuButton::setChoice(const QString& text)
{
    if (m_choice == text)
        return;
    m_choice = text;
    update();
}

void BarMenuButton::setColor(const std::optional<QColor>& color)
{
    if (m_color == color)
        return;
    m_color = color;
    update();
}

void BarMenuButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    QStyleOptionToolButton option;
    initStyleOption(&option);
    const SurfaceTokens& surface = m_look.tokens().on(Surface::FormattingBar);
    if (m_shape == Shape::choice) {
        const QColor ground = palette().color(QPalette::Window);
        const QColor edge = blended(surface.text, 0.16, ground);
        drawPanel(painter, rect(), 6, QColor(), edge);
    }
    style()->drawPrimitive(QStyle::PE_PanelButtonTool, &option, &painter, this);
    QColor ink = m_shape == Shape::choice ? surface.text : surface.icon;
    if (!isEnabled())
        ink.setAlphaF(float(fadedInk));
    switch (m_shape) {
    case Shape::choice:
        return paintChoice(painter, ink);
    case Shape::color:
        return paintColor(painter, ink);
    case Shape::symbol:
    case Shape::arrow:
        return paintSymbol(painter, ink);
    }
}

void BarMenuButton::paintSymbol(QPainter& painter, const QColor& ink)
{
    QRectF arrow(0, 0, width(), controlHeight);
    if (m_shape == Shape::symbol) {
        drawSymbol(painter, QRectF(6, 0, symbolSize, controlHeight), m_symbol, symbolSize, ink);
        arrow.setLeft(width() - arrowWidth - 2);
    }
    QColor faint = m_look.tokens().on(Surface::FormattingBar).textSecondary;
    faint.setAlphaF(ink.alphaF());
    drawSymbol(painter, arrow, Symbol::ChevronDown, arrowSize, faint);
}

void BarMenuButton::paintChoice(QPainter& painter, const QColor& ink)
{
    const QRect room = rect().adjusted(frameMargin, 0, -frameMargin - arrowSize - 4, 0);
    painter.setPen(ink);
    painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     fontMetrics().elidedText(m_choice, Qt::ElideRight, room.width()));
    const QRectF arrow(room.right() + 5, 0, arrowSize, controlHeight);
    drawSymbol(painter, arrow, Symbol::ChevronDown, arrowSize,
               m_look.tokens().on(Surface::FormattingBar).textSecondary);
}

void BarMenuButton::paintColor(QPainter& painter, const QColor& ink)
{
    drawSymbol(painter, QRectF(0, 2, width(), 18), m_symbol, symbolSize, ink);
    const QRectF strip((width() - 16) / 2.0, 21, 16, 3);
    QColor empty = ink;
    empty.setAlphaF(float(fadedInk) * ink.alphaF());
    drawPanel(painter, strip, 1.5, m_color ? *m_color : empty);
}

BarSeparator::BarSeparator(Look& look, QWidget* parent)
    : QWidget(parent)
    , m_look(look)
{
    setFixedSize(13, 18);
}

void BarSeparator::paintEvent(QPaintEvent*)
{
    const SurfaceTokens& surface = m_look.tokens().on(Surface::FormattingBar);
    QPainter(this).fillRect(width() / 2, 0, 1, height(),
                            blended(surface.text, 0.16, surface.ground));
}

} // namespace orvane
