// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QPointF>
#include <QRectF>
#include <QString>
#include <Qt>

#include <optional>

class QKeyEvent;
class QMenu;
class QMimeData;
class QPainter;

namespace orvane {

/// What a person asks of the text with a key, before anything is done about it.
enum class EditAction {
    insertNewline,
    insertLineBreak,
    insertTab,
    insertBacktab,
    deleteBackward,
    deleteForward,
};

/// A mouse event over the text.
struct EditorMouse {
    QPointF page; ///< in points from the top left of the text
    Qt::MouseButton button = Qt::NoButton;
    Qt::KeyboardModifiers modifiers;
    int clicks = 1;
};

/// How what an extension draws stands to the page.
struct EditorPaint {
    QPointF origin;  ///< of the text, in the painter's coordinates
    qreal scale = 1; ///< painter's units for a point
    QRectF clip;     ///< in the painter's coordinates
};

/// A part of the editor that lives on the text view: it may draw behind and over the text, and
/// handle what a person does before the text does. The view asks its extensions in the order in
/// which they were added; the first that answers true has handled the event.
class EditorExtension {
public:
    virtual ~EditorExtension() = default;

    virtual void paintBehindText(QPainter& painter, const EditorPaint& paint);
    virtual void paintOverText(QPainter& painter, const EditorPaint& paint);

    /// Whoever answers true to a press is sent the moves and the release that follow.
    virtual bool mousePressed(const EditorMouse& mouse);
    virtual void mouseMoved(const EditorMouse& mouse);
    virtual void mouseReleased(const EditorMouse& mouse);
    /// The pointer's shape over `page`, where this extension has something there.
    virtual std::optional<Qt::CursorShape> cursorAt(QPointF page);

    virtual bool keyPressed(const QKeyEvent& event);
    virtual bool command(EditAction command);
    virtual bool textTyped(const QString& text);
    virtual bool paste(const QMimeData& data);
    /// Content dropped at `position` of the text.
    virtual bool drop(const QMimeData& data, qsizetype position);

    /// Adds to the context menu, above the usual entries. `position` is that of the text under the
    /// click.
    virtual void addToContextMenu(QMenu& menu, QPointF page, qsizetype position);
};

} // namespace orvane
