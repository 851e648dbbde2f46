// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/inspector/FlowLayout.h"

#include <QWidget>

namespace orvane {

FlowLayout::FlowLayout(QWidget* parent, int gap)
    : QLayout(parent)
    , m_gap(gap)
{
    setContentsMargins({});
}

FlowLayout::~FlowLayout()
{
    qDeleteAll(m_items);
}

void FlowLayout::addItem(QLayoutItem* item)
{
    m_items.append(item);
}

void FlowLayout::insertWidget(int index, QWidget* widget)
{
    addChildWidget(widget);
    m_items.insert(index, new QWidgetItem(widget));
    invalidate();
}

QLayoutItem* FlowLayout::takeAt(int index)
{
    return index >= 0 && index < m_items.size() ? m_items.takeAt(index) : nullptr;
}

int FlowLayout::heightForWidth(int width) const
{
    return arrange({0, 0, width, 0}, Pass::Measure);
}

QSize FlowLayout::minimumSize() const
{
    QSize size;
    for (const QLayoutItem* item : m_items)
        size = size.expandedTo({0, item->sizeHint().height()});
    return size;
}

void FlowLayout::setGeometry(const QRect& rect)
{
    QLayout::setGeometry(rect);
    arrange(rect, Pass::Place);
}

int FlowLayout::arrange(const QRect& rect, Pass pass) const
{
    int x = rect.x();
    int y = rect.y();
    int lineHeight = 0;
    for (QLayoutItem* item : m_items) {
        if (item->isEmpty())
            continue;
        QSize size = item->sizeHint();
        size.setWidth(qMin(size.width(), rect.width()));
        if (x > rect.x() && x + size.width() > rect.x() + rect.width()) {
            x = rect.x();
            y += lineHeight + m_gap;
            lineHeight = 0;
        }
        if (pass == Pass::Place)
            item->setGeometry({QPoint(x, y), size});
        x += size.width() + m_gap;
        lineHeight = qMax(lineHeight, size.height());
    }
    return y + lineHeight - rect.y();
}

} // namespace orvane
