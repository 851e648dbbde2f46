// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/PageScroller.h"

#include "editor/EditorView.h"
#include "text/TextStore.h"

#include <QScopedValueRollback>
#include <QScrollBar>

#include <cmath>

namespace orvane {

PageScroller::PageScroller(EditorView& view)
    : m_view(view)
{}

void PageScroller::reset()
{
    const QScopedValueRollback settling(m_isSettling, true);
    m_anchor = {};
    m_shown = {};
    m_offset = 0;
    m_settledValue = 0;
    m_remainder = 0;
    m_view.verticalScrollBar()->setValue(0);
    m_view.viewport()->update();
}

void PageScroller::Anchor::follow(const TextChange& change)
{
    if (change.location + change.lengthBefore <= position)
        position += change.lengthAfter - change.lengthBefore;
    else if (change.location < position)
        position = change.location;
}

void PageScroller::follow(const TextChange& change)
{
    m_anchor.follow(change);
    m_shown.follow(change);
}

PageScroller::Hold PageScroller::chooseHold() const
{
    const QScrollBar& bar = *m_view.verticalScrollBar();
    const int value = bar.value();
    if (value == m_settledValue)
        return value == 0 ? Hold::value : Hold::anchor;
    if (value == 0)
        return Hold::value;
    if (value == bar.maximum())
        return Hold::end;
    const bool isNear = std::abs(value - m_settledValue) <= 3 * m_view.viewport()->height();
    return isNear ? Hold::anchor : Hold::value;
}

void PageScroller::placeAnchor(Hold hold)
{
    ParagraphLayout& layout = m_view.layout();
    const QTextDocument& document = m_view.store().document();
    const int value = m_view.verticalScrollBar()->value();
    if (hold == Hold::anchor) {
        m_anchor.top -= value - m_settledValue;
        return;
    }
    if (hold == Hold::end) {
        const QTextBlock last = layout.rowStart(document.lastBlock());
        layout.ensureLaidOut(last);
        const qreal below = m_view.roomBelow();
        m_anchor.position = last.position();
        m_anchor.top = m_view.viewport()->height() -
                       (layout.bottomOf(last) - layout.topOf(last) + below) * m_view.zoom();
        return;
    }
    const qreal top = value / m_view.zoom() - m_view.textGeometry().verticalMargin;
    const QTextBlock block = layout.blockAtY(std::max(0.0, top));
    m_anchor.position = block.position();
    m_anchor.top = (layout.topOf(block) - top) * m_view.zoom();
}

void PageScroller::layOutAround()
{
    ParagraphLayout& layout = m_view.layout();
    const QTextBlock found = m_view.store().blockAt(m_anchor.position);
    const QTextBlock anchor =
        layout.rowStart(found.isValid() ? found : m_view.store().document().lastBlock());
    m_anchor.position = anchor.position();
    const auto heightOf = [&](const QTextBlock& block) {
        layout.ensureLaidOut(block);
        return (layout.bottomOf(block) - layout.topOf(block)) * m_view.zoom();
    };
    const qreal bottom = m_view.viewport()->height();
    qreal y = m_anchor.top;
    for (QTextBlock block = anchor; block.isValid() && y < bottom; block = layout.below(block))
        y += heightOf(block);
    y = m_anchor.top;
    for (QTextBlock block = layout.above(anchor); block.isValid() && y > 0;
         block = layout.above(block))
        y -= heightOf(block);
}

void PageScroller::adjustBar()
{
    ParagraphLayout& layout = m_view.layout();
    QScrollBar& bar = *m_view.verticalScrollBar();
    const EditorGeometry& geometry = m_view.textGeometry();
    const qreal zoom = m_view.zoom();
    const int height = m_view.viewport()->height();
    const qreal page = (geometry.verticalMargin + layout.height() + m_view.roomBelow()) * zoom;
    const int maximum = std::max(0, int(std::ceil(page)) - height);

    const QTextBlock anchor = m_view.store().blockAt(m_anchor.position);
    const qreal wanted = (geometry.verticalMargin + layout.topOf(anchor)) * zoom - m_anchor.top;
    m_offset = std::clamp(wanted, 0.0, qreal(maximum));
    bar.setRange(0, maximum);
    bar.setPageStep(height);
    bar.setSingleStep(std::max(1, int(24 * zoom)));
    m_settledValue = int(std::lround(m_offset));
    bar.setValue(m_settledValue);

    // The topmost paragraph in sight holds the page the next time.
    const qreal top = m_offset / zoom - geometry.verticalMargin;
    const QTextBlock first = layout.blockAtY(std::max(0.0, top));
    m_anchor.position = first.position();
    m_anchor.top = (layout.topOf(first) - top) * zoom;
    layout.evictFarFrom(top, top + height / zoom);
}

void PageScroller::settle()
{
    if (m_isSettling)
        return;
    {
        const QScopedValueRollback settling(m_isSettling, true);
        placeAnchor(chooseHold());
        const qreal before = m_anchor.top;
        layOutAround();
        adjustBar();
        // At either end of the page the bar may have stopped short, with more in sight.
        if (m_anchor.top != before) {
            layOutAround();
            adjustBar();
        }
    }
    moveShown();
}

void PageScroller::jumpTo(qreal top)
{
    {
        const QScopedValueRollback settling(m_isSettling, true);
        const QTextBlock block = m_view.layout().blockAtY(top);
        m_anchor.position = block.position();
        m_anchor.top = std::round((m_view.layout().topOf(block) - top) * m_view.zoom());
        layOutAround();
        adjustBar();
        layOutAround();
        adjustBar();
    }
    moveShown();
    emit m_view.scrolled();
}

void PageScroller::moveShown()
{
    QWidget& viewport = *m_view.viewport();
    const QTextBlock shown = m_view.store().blockAt(m_shown.position);
    const qreal now = m_view.toViewport(QPointF(0, m_view.layout().topOf(shown))).y();
    const qreal distance = now - m_shown.top;
    m_shown = m_anchor;
    if (std::abs(distance) < 0.01)
        return;
    const qreal ratio = viewport.devicePixelRatioF();
    const bool isWhole = std::abs(distance - std::round(distance)) < 0.01 && ratio == int(ratio);
    if (isWhole && std::abs(distance) < viewport.height())
        m_view.moveContents(int(std::lround(distance)));
    else
        viewport.update();
}

void PageScroller::scrollBy(qreal pixels)
{
    m_remainder += pixels;
    const int whole = int(std::trunc(m_remainder));
    m_remainder -= whole;
    QScrollBar& bar = *m_view.verticalScrollBar();
    bar.setValue(bar.value() + whole);
}

} // namespace orvane
