// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// How the style draws what takes a value: fields, boxes and lists to choose from.
#include "appearance/Contrast.h"
#include "appearance/Drawing.h"
#include "appearance/OrvaneStyle.h"

#include <QAbstractSpinBox>
#include <QPainter>
#include <QPainterPath>
#include <QStyleOption>

namespace orvane {

void OrvaneStyle::drawFieldFrame(const QStyleOption& option, QPainter& painter) const
{
    drawPanel(painter, option.rect, 6, option.palette.color(QPalette::AlternateBase),
              option.palette.color(QPalette::Mid));
    if (option.state.testFlag(State_HasFocus) && option.state.testFlag(State_Enabled))
        drawFocusRing(painter, option.rect, 6, option.palette.color(QPalette::LinkVisited));
}

void OrvaneStyle::drawCheckBoxMark(const QStyleOption& option, QPainter& painter) const
{
    const Tokens& t = m_tokens;
    const bool on = option.state.testFlag(State_On);
    const QColor ground = option.palette.color(QPalette::Window);
    const QColor ink = option.palette.color(QPalette::WindowText);
    const QColor edge = readableInk(blended(ink, 0.4, ground), ground, iconContrast);
    drawPanel(painter, option.rect, 4,
              on ? t.accent : option.palette.color(QPalette::AlternateBase), on ? t.accent : edge);
    if (!on)
        return;
    drawCheckMark(painter, option.rect, t.textOnAccent);
}

void OrvaneStyle::drawCheckMark(QPainter& painter, const QRectF& r, const QColor& color)
{
    QPainterPath mark;
    mark.moveTo(r.left() + r.width() * 0.25, r.top() + r.height() * 0.52);
    mark.lineTo(r.left() + r.width() * 0.43, r.top() + r.height() * 0.70);
    mark.lineTo(r.left() + r.width() * 0.76, r.top() + r.height() * 0.32);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(color, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(mark);
    painter.restore();
}

/// The face of a control that holds a value which is chosen or stepped.
void OrvaneStyle::drawValueFace(const QStyleOption& option, QPainter& painter)
{
    const QColor ground = option.palette.color(QPalette::Window);
    const QColor ink = option.palette.color(QPalette::WindowText);
    const bool hovered =
        option.state.testFlag(State_MouseOver) && option.state.testFlag(State_Enabled);
    drawPanel(painter, option.rect, 6, hovered ? blended(ink, 0.06, ground) : QColor(),
              blended(ink, 0.16, ground));
}

void OrvaneStyle::drawComboBox(const QStyleOptionComboBox& option, QPainter& painter) const
{
    drawValueFace(option, painter);
    if (option.state.testFlag(State_HasFocus) && option.state.testFlag(State_KeyboardFocusChange))
        drawFocusRing(painter, option.rect, 6, option.palette.color(QPalette::LinkVisited));
    drawSymbol(painter,
               QRectF(option.rect.right() - 24, option.rect.top(), 20, option.rect.height()),
               Symbol::ChevronDown, 12, option.palette.color(QPalette::PlaceholderText));
}

void OrvaneStyle::drawSpinBox(const QStyleOptionSpinBox& option, QPainter& painter,
                              const QWidget* widget) const
{
    drawValueFace(option, painter);
    if (option.state.testFlag(State_HasFocus) && option.state.testFlag(State_Enabled))
        drawFocusRing(painter, option.rect, 6, option.palette.color(QPalette::LinkVisited));
    const QColor ink = option.palette.color(QPalette::PlaceholderText);
    const QColor strong = option.palette.color(QPalette::WindowText);
    struct Arrow {
        SubControl part;
        QAbstractSpinBox::StepEnabledFlag step;
        Symbol symbol;
    };
    for (const auto& [part, step, symbol] :
         {Arrow{SC_SpinBoxUp, QAbstractSpinBox::StepUpEnabled, Symbol::ChevronUp},
          Arrow{SC_SpinBoxDown, QAbstractSpinBox::StepDownEnabled, Symbol::ChevronDown}}) {
        const bool hovered =
            option.activeSubControls == part && option.state.testFlag(State_MouseOver);
        QColor color = hovered ? strong : ink;
        if (!option.stepEnabled.testFlag(step) || !option.state.testFlag(State_Enabled))
            color.setAlphaF(0.35F);
        drawSymbol(painter, subControlRect(CC_SpinBox, &option, part, widget), symbol, 10, color);
    }
}

QRect OrvaneStyle::spinBoxPart(const QRect& rect, SubControl part)
{
    constexpr int arrows = 26;
    const int middle = rect.height() / 2;
    const QRect column(rect.right() - arrows, rect.top() + 3, arrows - 3, rect.height() - 6);
    switch (part) {
    case SC_SpinBoxUp:
        return {column.left(), column.top(), column.width(), middle - 3};
    case SC_SpinBoxDown:
        return {column.left(), rect.top() + middle, column.width(), rect.height() - middle - 3};
    case SC_SpinBoxEditField:
        return rect.adjusted(8, 2, -arrows - 1, -2);
    default:
        return rect;
    }
}

QRect OrvaneStyle::subElementRect(SubElement element, const QStyleOption* option,
                                  const QWidget* widget) const
{
    const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
    if (element == SE_LineEditContents && frame && frame->lineWidth > 0)
        return QProxyStyle::subElementRect(element, option, widget).adjusted(6, 0, -6, 0);
    return QProxyStyle::subElementRect(element, option, widget);
}

} // namespace orvane
