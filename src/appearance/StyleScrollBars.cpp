// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// How the style draws scroll bars: a slim handle over the ground, without arrows or groove.
#include "appearance/Drawing.h"
#include "appearance/OrvaneStyle.h"

#include <QPainter>
#include <QStyleOption>

namespace orvane {

void OrvaneStyle::drawScrollBar(const QStyleOptionSlider& option, QPainter& painter,
                                const QWidget* widget) const
{
    painter.fillRect(option.rect, option.palette.color(QPalette::Window));
    if (option.maximum <= option.minimum)
        return;
    const bool active =
        option.state.testFlag(State_MouseOver) || option.state.testFlag(State_Sunken);
    QRectF handle = subControlRect(CC_ScrollBar, &option, SC_ScrollBarSlider, widget);
    const double inset = active ? 2 : 3;
    handle = option.orientation == Qt::Vertical ? handle.adjusted(inset, 2, -inset, -2)
                                                : handle.adjusted(2, inset, -2, -inset);
    QColor ink = option.palette.color(QPalette::WindowText);
    ink.setAlphaF(active ? 0.36F : 0.2F);
    drawPanel(painter, handle, qMin(handle.width(), handle.height()) / 2, ink);
}

QRect OrvaneStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                                  SubControl part, const QWidget* widget) const
{
    if (control == CC_SpinBox)
        return spinBoxPart(option->rect, part);
    const auto* slider = qstyleoption_cast<const QStyleOptionSlider*>(option);
    if (control != CC_ScrollBar || !slider)
        return QProxyStyle::subControlRect(control, option, part, widget);
    const bool vertical = slider->orientation == Qt::Vertical;
    const QRect rect = slider->rect;
    const int length = vertical ? rect.height() : rect.width();
    const int range = slider->maximum - slider->minimum;
    int handleLength = length;
    if (range > 0) {
        const auto share = qint64(length) * slider->pageStep / (qint64(range) + slider->pageStep);
        handleLength = qBound(qMin(32, length), int(share), length);
    }
    const int start =
        sliderPositionFromValue(slider->minimum, slider->maximum, slider->sliderPosition,
                                length - handleLength, slider->upsideDown);
    const auto span = [&](int from, int size) {
        return vertical ? QRect(rect.left(), rect.top() + from, rect.width(), size)
                        : QRect(rect.left() + from, rect.top(), size, rect.height());
    };
    switch (part) {
    case SC_ScrollBarSlider:
        return span(start, handleLength);
    case SC_ScrollBarGroove:
        return rect;
    case SC_ScrollBarSubPage:
        return span(0, start);
    case SC_ScrollBarAddPage:
        return span(start + handleLength, length - start - handleLength);
    default:
        return {};
    }
}

} // namespace orvane
