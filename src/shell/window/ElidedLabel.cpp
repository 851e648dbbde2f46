// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/window/ElidedLabel.h"

#include "appearance/Typography.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace orvane {

ElidedLabel::ElidedLabel(QWidget* parent)
    : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

QSize ElidedLabel::minimumSizeHint() const
{
    return {24, QLabel::minimumSizeHint().height()};
}

void ElidedLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setPen(
        palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, foregroundRole()));
    painter.drawText(contentsRect(), int(alignment()) | Qt::TextSingleLine,
                     fitted(text(), font(), contentsRect().width()));
}

bool ElidedLabel::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip) {
        const bool isCut = fontMetrics().horizontalAdvance(text()) > contentsRect().width();
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), isCut ? text() : toolTip(),
                           this);
        return true;
    }
    return QLabel::event(event);
}

} // namespace orvane
