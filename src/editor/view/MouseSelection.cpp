// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/view/MouseSelection.h"

#include "editor/view/EditorExtension.h"
#include "editor/view/EditorView.h"
#include "editor/view/PageScroller.h"
#include "text/store/TextStore.h"

#include <QApplication>
#include <QClipboard>
#include <QDrag>
#include <QMouseEvent>
#include <QStyleHints>

#include <algorithm>
#include <cmath>

namespace orvane {

namespace {

constexpr int autoscrollInterval = 16; // milliseconds

EditorMouse asEditorMouse(const EditorView& view, const QMouseEvent& event, int clicks)
{
    return {view.toPage(event.position()), event.button(), event.modifiers(), clicks};
}

} // namespace

MouseSelection::MouseSelection(EditorView& view)
    : m_view(view)
{}

void MouseSelection::forget(const EditorExtension* extension)
{
    if (m_grabber == extension)
        m_grabber = nullptr;
}

void MouseSelection::hoverAgain()
{
    if (m_isHovering)
        m_view.m_extensions.hover(m_view.toPage(m_lastPoint));
}

void MouseSelection::endHover()
{
    m_isHovering = false;
    m_view.m_extensions.endHover();
}

bool MouseSelection::offerPress(const QMouseEvent& event, int clicks)
{
    endHover();
    const EditorMouse mouse = asEditorMouse(m_view, event, clicks);
    m_grabber = m_view.m_extensions.firstThat(
        [&](EditorExtension& extension) { return extension.mousePressed(mouse); });
    return m_grabber != nullptr;
}

bool MouseSelection::isOnSelection(QPointF point) const
{
    const TextRange range = m_view.selection().range();
    if (range.isEmpty())
        return false;
    const QPointF page = m_view.toPage(point);
    const qsizetype at = m_view.positionAt(point);
    if (at < range.location || at > range.end())
        return false;
    const qsizetype from = std::max(range.location, at - 2);
    const auto near = TextRange::between(from, std::min(range.end(), at + 2));
    const QList<QRectF> rects = m_view.layout().rectsOf(near);
    return std::any_of(rects.begin(), rects.end(),
                       [&](const QRectF& rect) { return rect.contains(page); });
}

TextRange MouseSelection::unitAt(QPointF point) const
{
    const qsizetype position = m_view.positionAt(point);
    switch (m_unit) {
    case Unit::character:
        return {position, 0};
    case Unit::paragraph:
        return m_view.store().paragraphRange(position);
    case Unit::word:
        break;
    }
    // Between two characters the one under the pointer counts.
    const QRectF caret = m_view.layout().caretRect(int(position));
    const bool isBefore = m_view.toPage(point).x() < caret.x() &&
                          position > m_view.store().paragraphRange(position).location;
    return wordAt(m_view.store(), isBefore ? position - 1 : position);
}

void MouseSelection::begin(QPointF point, Unit unit, SelectionMode mode)
{
    m_unit = unit;
    m_isSelecting = true;
    const TextSelection before = m_view.selection();
    if (mode == SelectionMode::extend) {
        m_origin = {before.anchor, 0};
        extendTo(point);
        return;
    }
    m_origin = unitAt(point);
    CaretSide side = CaretSide::lowerLine;
    if (unit == Unit::character)
        m_origin.location = m_view.positionAt(point, &side);
    m_view.setSelection(TextSelection::of(m_origin), side);
}

void MouseSelection::extendTo(QPointF point)
{
    CaretSide side = CaretSide::lowerLine;
    if (m_unit == Unit::character) {
        const qsizetype position = m_view.positionAt(point, &side);
        m_view.setSelection({m_origin.location, position}, side);
        return;
    }
    const TextRange unit = unitAt(point);
    if (unit.location < m_origin.location)
        m_view.setSelection({m_origin.end(), unit.location});
    else
        m_view.setSelection({m_origin.location, std::max(unit.end(), m_origin.end())});
}

void MouseSelection::press(QMouseEvent& event)
{
    const QPointF point = event.position();
    m_pressPoint = m_lastPoint = point;
    m_mayDrag = m_hasMoved = false;
    if (m_view.layout().hasPreedit())
        QGuiApplication::inputMethod()->commit();
    const bool isTriple =
        event.button() == Qt::LeftButton && m_sinceDoubleClick.isValid() &&
        m_sinceDoubleClick.elapsed() < QGuiApplication::styleHints()->mouseDoubleClickInterval();
    m_sinceDoubleClick.invalidate();
    if (offerPress(event, isTriple ? 3 : 1))
        return;
    if (event.button() == Qt::MiddleButton) {
        pastePrimary(point);
        return;
    }
    if (event.button() == Qt::RightButton) {
        if (!isOnSelection(point))
            m_view.setSelection(TextSelection::caret(m_view.positionAt(point)));
        return;
    }
    if (event.button() != Qt::LeftButton)
        return;
    m_pressedLink = m_view.linkAt(point);
    const bool extends = event.modifiers().testFlag(Qt::ShiftModifier);
    if (isTriple)
        begin(point, Unit::paragraph, SelectionMode::replace);
    else if (!extends && isOnSelection(point))
        m_mayDrag = true;
    else
        begin(point, Unit::character, extends ? SelectionMode::extend : SelectionMode::replace);
}

void MouseSelection::doubleClick(QMouseEvent& event)
{
    m_lastPoint = event.position();
    if (offerPress(event, 2) || event.button() != Qt::LeftButton)
        return;
    m_sinceDoubleClick.start();
    m_mayDrag = false;
    m_pressedLink.clear();
    begin(event.position(), Unit::word, SelectionMode::replace);
}

void MouseSelection::move(QMouseEvent& event)
{
    m_lastPoint = event.position();
    if (m_grabber) {
        m_grabber->mouseMoved(asEditorMouse(m_view, event, 1));
        return;
    }
    if (event.buttons() == Qt::NoButton) {
        m_isHovering = true;
        hoverAgain();
        updatePointer(event.position());
        return;
    }
    const bool isFar =
        (event.position() - m_pressPoint).manhattanLength() >= QApplication::startDragDistance();
    m_hasMoved |= isFar;
    if (m_mayDrag && isFar) {
        m_mayDrag = false;
        startDrag();
        return;
    }
    if (!m_isSelecting ||
        (m_unit == Unit::character && !m_hasMoved && m_view.selection().isEmpty() && !isFar))
        return;
    extendTo(event.position());
    updateAutoscroll();
}

void MouseSelection::release(QMouseEvent& event)
{
    if (m_grabber) {
        EditorExtension* grabber = std::exchange(m_grabber, nullptr);
        grabber->mouseReleased(asEditorMouse(m_view, event, 1));
        return;
    }
    m_autoscroll.stop();
    m_isSelecting = false;
    if (event.button() != Qt::LeftButton)
        return;
    if (m_mayDrag) {
        // A press on the selection that became no drag is a click.
        m_mayDrag = false;
        CaretSide side = CaretSide::lowerLine;
        const qsizetype position = m_view.positionAt(event.position(), &side);
        m_view.setSelection(TextSelection::caret(position), side);
    }
    m_view.publishPrimarySelection();
    if (!m_hasMoved && !m_pressedLink.isEmpty() && m_view.selection().isEmpty() &&
        m_view.linkAt(event.position()) == m_pressedLink)
        emit m_view.linkActivated(std::exchange(m_pressedLink, QString()));
}

void MouseSelection::updateAutoscroll()
{
    const bool isOutside = m_lastPoint.y() < 0 || m_lastPoint.y() > m_view.viewport()->height();
    if (isOutside && !m_autoscroll.isActive())
        m_autoscroll.start(autoscrollInterval, &m_view);
    else if (!isOutside)
        m_autoscroll.stop();
}

bool MouseSelection::timer(int id)
{
    if (id != m_autoscroll.timerId())
        return false;
    const qreal height = m_view.viewport()->height();
    const qreal beyond = m_lastPoint.y() < 0 ? m_lastPoint.y() : m_lastPoint.y() - height;
    // The farther out, the faster; one screen in a fifth of a second at most.
    m_view.m_scroller->scrollBy(std::clamp(beyond * 0.25, -height / 12, height / 12));
    extendTo({m_lastPoint.x(), std::clamp(m_lastPoint.y(), 0.0, height - 1)});
    return true;
}

void MouseSelection::startDrag()
{
    m_grabber = nullptr;
    const TextRange range = m_view.selection().range();
    auto* drag = new QDrag(m_view.viewport());
    drag->setMimeData(m_view.selectedMime().release());
    const Qt::DropActions actions =
        m_view.isEditable() ? Qt::CopyAction | Qt::MoveAction : Qt::DropActions(Qt::CopyAction);
    const Qt::DropAction done = drag->exec(actions, Qt::MoveAction);
    // A move within this view has been done by the drop.
    if (done == Qt::MoveAction && drag->target() != m_view.viewport() && drag->target() != &m_view)
        m_view.gateway().remove(range, EditKind::other, EditorView::tr("Drag"));
}

void MouseSelection::pastePrimary(QPointF point)
{
    const QClipboard* clipboard = QGuiApplication::clipboard();
    const QMimeData* data =
        clipboard->supportsSelection() ? clipboard->mimeData(QClipboard::Selection) : nullptr;
    if (!data || !m_view.isEditable())
        return;
    CaretSide side = CaretSide::lowerLine;
    const qsizetype position = m_view.positionAt(point, &side);
    const auto content = textMime::decode(
        *data, m_view.formatting(),
        {m_view.gateway().typingStyleAt(position), m_view.store().paragraphStyle(position)});
    if (!content)
        return;
    m_view.setSelection(TextSelection::caret(position), side);
    if (m_view.gateway().insert(content->text, EditorView::tr("Paste")))
        m_view.tellPasted(content->account, *data);
}

void MouseSelection::updatePointer(QPointF point)
{
    const QPointF page = m_view.toPage(point);
    std::optional<Qt::CursorShape> shape;
    m_view.m_extensions.firstThat([&](EditorExtension& extension) {
        shape = extension.cursorAt(page);
        return shape.has_value();
    });
    if (shape)
        m_view.viewport()->setCursor(*shape);
    else if (!m_view.linkAt(point).isEmpty())
        m_view.viewport()->setCursor(Qt::PointingHandCursor);
    else if (isOnSelection(point))
        m_view.viewport()->setCursor(Qt::ArrowCursor);
    else
        m_view.viewport()->setCursor(Qt::IBeamCursor);
}

} // namespace orvane
