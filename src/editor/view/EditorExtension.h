// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/value/TextRange.h"

#include <QList>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <Qt>

#include <memory>
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

/// Something that is dragged over the text.
struct EditorDrag {
    const QMimeData& data;
    QPointF page;           ///< where the pointer is, in points from the top left of the text
    qsizetype position = 0; ///< of the text there
    Qt::DropAction action = Qt::CopyAction; ///< what a drop would do
};

/// What the view shows of itself while an extension would take a drop.
enum class DropFeedback {
    caret, ///< between the characters where it would go
    none,  ///< the extension draws what there is to see
};

/// How what an extension draws stands to the page.
struct EditorPaint {
    QPointF origin;  ///< of the text, in the painter's coordinates
    qreal scale = 1; ///< painter's units for a point
    QRectF clip;     ///< in the painter's coordinates
};

/// Where an extension stands among the others of its view, from the bottom up.
enum class ExtensionPriority {
    page,       ///< the sheet that the text stands on
    matches,    ///< what was searched for
    spelling,   ///< words and their marks
    writing,    ///< what typing and pasting bring along
    formatting, ///< of characters and paragraphs
    lists,
    tables,
    objects, ///< images and shapes
    guides,  ///< of what is being moved on the page
};

/// A part of the editor that lives on the text view: it may draw behind and over the text, and
/// handle what a person does before the text does.
///
/// The view draws its extensions by rising priority, and asks them by falling priority; the first
/// that answers yes has handled the event. It may add and remove extensions while it is asked.
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
    /// The pointer has come to `page` with no button pressed, or the page has moved under it.
    /// Whoever answers true is told when that ends: the pointer goes elsewhere, or a button is
    /// pressed.
    virtual bool hovered(QPointF page);
    virtual void hoverEnded();

    /// Whether it takes a key that the window may have a shortcut on.
    [[nodiscard]] virtual bool takesKey(const QKeyEvent& event) const;
    virtual bool keyPressed(const QKeyEvent& event);
    virtual bool command(EditAction command);
    virtual bool textTyped(const QString& text);

    /// Whether something of this extension is selected. Then it is what is copied, cut and deleted,
    /// not the text that is selected.
    [[nodiscard]] virtual bool hasSelection() const;
    /// The stretches of text in it, where text is what is selected.
    [[nodiscard]] virtual QList<TextRange> selectedRanges() const;
    /// What is selected, for the clipboard. Null where it can't be copied: nor is it cut then.
    [[nodiscard]] virtual std::unique_ptr<QMimeData> copySelection() const;
    /// Takes what is selected out of the text, in one step to undo that is called `actionName`.
    virtual void removeSelection(const QString& actionName);

    /// Whether it takes such data, pasted or dropped somewhere on the page. A drag that nobody
    /// takes is left to what stands around the view.
    [[nodiscard]] virtual bool canTake(const QMimeData& data) const;
    virtual bool paste(const QMimeData& data);

    /// How it would take a drop of what it can take here, if it would. Whoever answers is told when
    /// the drag goes elsewhere or ends, also before it is given the drop.
    virtual std::optional<DropFeedback> dragMoved(const EditorDrag& drag);
    virtual void dragEnded();
    /// False where nothing came of it; then the text may take the drop.
    virtual bool drop(const EditorDrag& drag);

    /// Adds to the context menu, above the usual entries. `position` is that of the text under the
    /// click.
    virtual void addToContextMenu(QMenu& menu, QPointF page, qsizetype position);
};

} // namespace orvane
