// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/inspector/TagChip.h"

#include "appearance/Contrast.h"
#include "appearance/Drawing.h"
#include "shell/commands/AppMenus.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QPainter>

namespace orvane {

namespace {

constexpr int padding = 10;
constexpr int dotSize = 6;
constexpr int dotGap = 6;

} // namespace

QColor tagDotInk(const QColor& color, const QColor& ground)
{
    return readableInk(color, ground, iconContrast);
}

TagChip::TagChip(const QString& tag, const QColor& color, Look& look, QWidget* parent)
    : QAbstractButton(parent)
    , m_tag(tag)
    , m_color(color)
    , m_look(look)
{
    setTextStyle(this, TextStyle::Body);
    setText(menuText(tag));
    setToolTip(tag);
    setAccessibleName(tr("Tag %1").arg(tag));
    setAccessibleDescription(tr("Space opens its menu, Delete removes it."));
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    connect(this, &QAbstractButton::clicked, this,
            [this] { emit menuRequested(m_tag, mapToGlobal(QPoint(0, TagChip::chipHeight + 4))); });
}

void TagChip::setColor(const QColor& color)
{
    m_color = color;
    update();
}

QSize TagChip::sizeHint() const
{
    return {2 * padding + dotSize + dotGap + fontMetrics().horizontalAdvance(m_tag) + 1,
            chipHeight};
}

void TagChip::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const SurfaceTokens& t = m_look.tokens().on(Surface::Inspector);
    const QColor ground = blended(t.text, underMouse() && isEnabled() ? 0.14 : 0.08, t.ground);
    drawPanel(painter, rect(), chipHeight / 2.0, ground);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(tagDotInk(m_color, ground));
    painter.drawEllipse(QRectF(padding, (chipHeight - dotSize) / 2.0, dotSize, dotSize));
    const QRect words = rect().adjusted(padding + dotSize + dotGap, 0, -padding, 0);
    painter.setPen(readableInk(t.text, ground));
    painter.drawText(words, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                     fontMetrics().elidedText(m_tag, Qt::ElideRight, words.width() + 1));
    if (hasFocus())
        drawFocusRing(painter, rect(), chipHeight / 2.0, t.accent);
}

void TagChip::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Delete:
    case Qt::Key_Backspace:
        emit removalRequested(m_tag);
        return;
    case Qt::Key_Left:
    case Qt::Key_Up:
        emit stepRequested(-1);
        return;
    case Qt::Key_Right:
    case Qt::Key_Down:
        emit stepRequested(1);
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        click();
        return;
    default:
        QAbstractButton::keyPressEvent(event);
    }
}

void TagChip::contextMenuEvent(QContextMenuEvent* event)
{
    setFocus(Qt::OtherFocusReason);
    emit menuRequested(m_tag, event->reason() == QContextMenuEvent::Mouse
                                  ? event->globalPos()
                                  : mapToGlobal(QPoint(0, chipHeight + 4)));
    event->accept();
}

} // namespace orvane
