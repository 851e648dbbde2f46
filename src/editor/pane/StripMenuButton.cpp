// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/pane/StripMenuButton.h"

#include "appearance/Drawing.h"
#include "appearance/Look.h"

#include <QMenu>
#include <QPainter>
#include <QStyleOptionToolButton>

namespace orvane {

namespace {

constexpr int margin = 6;
constexpr int gap = 4;
constexpr int arrowSize = 10;
constexpr int stripHeight = 28;

} // namespace

StripMenuButton::StripMenuButton(QWidget* parent)
    : QToolButton(parent)
    , m_choices(new QMenu(this))
{
    setTextStyle(this, TextStyle::Label);
    setFocusPolicy(Qt::TabFocus);
    connect(this, &QToolButton::clicked, this, [this] {
        if (m_fill) {
            m_choices->clear();
            m_fill(*m_choices);
        }
        m_choices->popup(mapToGlobal(QPoint(0, -m_choices->sizeHint().height())));
    });
}

void StripMenuButton::setChoice(const QString& what, const QString& text)
{
    setText(text);
    setToolTip(what);
    setAccessibleName(tr("%1: %2").arg(what, text));
    updateGeometry();
}

QSize StripMenuButton::sizeHint() const
{
    return {fontMetrics().horizontalAdvance(text()) + gap + arrowSize + 2 * margin, stripHeight};
}

void StripMenuButton::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    QStyleOptionToolButton option;
    initStyleOption(&option);
    option.rect.adjust(0, 2, 0, -2);
    style()->drawPrimitive(QStyle::PE_PanelButtonTool, &option, &painter, this);
    const QColor ink = palette().color(QPalette::PlaceholderText);
    const QRect room = rect().adjusted(margin, 0, -margin, 0);
    painter.setPen(ink);
    painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, text());
    drawSymbol(painter, QRect(room.right() + 1 - arrowSize, 0, arrowSize, stripHeight),
               Symbol::ChevronDown, arrowSize, ink);
}

} // namespace orvane
