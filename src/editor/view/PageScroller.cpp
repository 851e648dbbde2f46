// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/view/PageScroller.h"

#include "editor/view/EditorView.h"
#include "text/store/TextStore.h"

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
    m_view.placeHead();
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
    const int value = m_view.verticalScrollBar()->value();
    if (hold == Hold::anchor) {
        m_anchor.top -= value - m_settledValue;
        return;
    }
    if (hold == Hold::end) {
        const PagePart last = layout.layOutPartAt(m_view.store().length());
        const PagePlace place = layout.placeAt(m_view.store().length());
        const qreal below = last.bottom - place.top + m_view.roomBelow();
        m_anchor.position = place.position;
        m_anchor.top = m_view.viewport()->height() - below * m_view.zoom();
        return;
    }
    const qreal top = value / m_view.zoom() - m_view.roomAbove();
    const PagePlace place = layout.placeAtY(std::max(0.0, top));
    m_anchor.position = place.position;
    m_anchor.top = (place.top - top) * m_view.zoom();
}

void PageScroller::layOutAround()
{
    ParagraphLayout& layout = m_view.layout();
    const qreal bottom = m_view.viewport()->height();
    m_anchor.position = std::min(m_anchor.position, m_view.store().length());
    enum class Way { up, down };
    const auto layOut = [&](Way way) {
        const bool goesUp = way == Way::up;
        std::optional<PagePart> part = layout.layOutPartAt(m_anchor.position);
        const PagePlace place = layout.placeAt(m_anchor.position);
        m_anchor.position = place.position;
        const qreal start = m_anchor.top + (part->top - place.top) * m_view.zoom();
        qreal y = goesUp ? start : start + (part->bottom - part->top) * m_view.zoom();
        while (goesUp ? y > 0 : y < bottom) {
            part = goesUp ? layout.layOutPartAbove(*part) : layout.layOutPartBelow(*part);
            if (!part)
                return;
            y += (goesUp ? part->top - part->bottom : part->bottom - part->top) * m_view.zoom();
        }
    };
    layOut(Way::down);
    layOut(Way::up);
    // What was laid out above a long paragraph's part may have moved its lines.
    layOut(Way::down);
}

void PageScroller::adjustBar()
{
    ParagraphLayout& layout = m_view.layout();
    QScrollBar& bar = *m_view.verticalScrollBar();
    const qreal above = m_view.roomAbove();
    const qreal zoom = m_view.zoom();
    const int height = m_view.viewport()->height();
    const qreal page = (above + layout.height() + m_view.roomBelow()) * zoom;
    const int maximum = std::max(0, int(std::ceil(page)) - height);

    const qreal anchor = layout.placeAt(m_anchor.position).top;
    const qreal wanted = (above + anchor) * zoom - m_anchor.top;
    m_offset = std::clamp(wanted, 0.0, qreal(maximum));
    bar.setRange(0, maximum);
    bar.setPageStep(height);
    bar.setSingleStep(std::max(1, int(24 * zoom)));
    m_settledValue = int(std::lround(m_offset));
    bar.setValue(m_settledValue);

    // The topmost in sight holds the page the next time.
    const qreal top = m_offset / zoom - above;
    const PagePlace first = layout.placeAtY(std::max(0.0, top));
    m_anchor.position = first.position;
    m_anchor.top = (first.top - top) * zoom;
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
        const PagePlace place = m_view.layout().placeAtY(top);
        m_anchor.position = place.position;
        m_anchor.top = std::round((place.top - top) * m_view.zoom());
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
    const qsizetype shown = std::min(m_shown.position, m_view.store().length());
    const qreal now = m_view.toViewport(QPointF(0, m_view.layout().placeAt(shown).top)).y();
    const qreal distance = now - m_shown.top;
    m_shown = m_anchor;
    if (std::abs(distance) < 0.01)
        return m_view.placeHead();
    const qreal ratio = viewport.devicePixelRatioF();
    const bool isWhole = std::abs(distance - std::round(distance)) < 0.01 && ratio == int(ratio);
    if (isWhole && std::abs(distance) < viewport.height())
        m_view.moveContents(int(std::lround(distance)));
    else
        viewport.update();
    m_view.placeHead();
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
