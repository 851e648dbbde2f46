// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/view/CaretNavigator.h"
#include "text/value/TextRange.h"

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QPointF>
#include <QString>

class QMouseEvent;

namespace orvane {

class EditorExtension;
class EditorView;

/// What the mouse does in a text view: places the caret, selects by characters, words and
/// paragraphs, scrolls while a selection is dragged beyond the edge, drags selected text away, and
/// hands events to extensions first. Coordinates are those of the viewport.
class MouseSelection {
public:
    explicit MouseSelection(EditorView& view);

    void press(QMouseEvent& event);
    void move(QMouseEvent& event);
    void release(QMouseEvent& event);
    void doubleClick(QMouseEvent& event);
    /// Drags the selection away, whoever has held the button till now.
    void startDrag();
    /// `extension` is going away.
    void forget(const EditorExtension* extension);
    /// A turn of the timer that scrolls while the mouse is held outside; false for other timers.
    bool timer(int id);
    /// Tells extensions where the pointer is, as the page may have moved under it.
    void hoverAgain();
    /// The pointer has gone, or does something else than to point.
    void endHover();
    /// Shows the pointer that fits what is under `point`.
    void updatePointer(QPointF point);

private:
    enum class Unit { character, word, paragraph };

    bool offerPress(const QMouseEvent& event, int clicks);
    void begin(QPointF point, Unit unit, SelectionMode mode);
    void extendTo(QPointF point);
    [[nodiscard]] TextRange unitAt(QPointF point) const;
    void updateAutoscroll();
    void pastePrimary(QPointF point);
    [[nodiscard]] bool isOnSelection(QPointF point) const;

    EditorView& m_view;
    EditorExtension* m_grabber = nullptr;
    bool m_isHovering = false;
    bool m_isSelecting = false;
    bool m_mayDrag = false;
    bool m_hasMoved = false;
    QString m_pressedLink;
    Unit m_unit = Unit::character;
    TextRange m_origin; ///< the unit that the selection was begun with
    QPointF m_pressPoint;
    QPointF m_lastPoint;
    QElapsedTimer m_sinceDoubleClick;
    QBasicTimer m_autoscroll;
};

} // namespace orvane
