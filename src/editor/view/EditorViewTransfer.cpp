// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// What goes out of a text view and comes into it: clipboard, drag and drop.
#include "editor/view/EditorView.h"
#include "editor/view/MouseSelection.h"
#include "editor/view/PageScroller.h"
#include "text/attachments/AttachmentManager.h"
#include "text/store/TextStore.h"

#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QMimeData>
#include <QScrollBar>

namespace orvane {

void EditorView::setImageSource(ImagePictures::Fetch fetch, ImageReader readNow)
{
    m_ownPainter.pictures().setFetch(std::move(fetch));
    m_readImage = std::move(readNow);
}

bool EditorView::isUndoAvailable() const
{
    return isEditable() && m_gateway->canUndo();
}

bool EditorView::isRedoAvailable() const
{
    return isEditable() && m_gateway->canRedo();
}

void EditorView::undo()
{
    if (isEditable() && m_gateway->undo())
        ensureCaretVisible();
}

void EditorView::redo()
{
    if (isEditable() && m_gateway->redo())
        ensureCaretVisible();
}

void EditorView::copy()
{
    (void)copySelected();
}

bool EditorView::copySelected()
{
    const EditorExtension* holder = m_extensions.withSelection();
    if (!holder && selection().isEmpty())
        return false;
    std::unique_ptr<QMimeData> data = holder ? holder->copySelection() : selectedMime();
    if (!data)
        return false;
    QGuiApplication::clipboard()->setMimeData(data.release());
    return true;
}

void EditorView::cut()
{
    if (isEditable() && copySelected())
        removeSelected(tr("Cut"));
}

void EditorView::deleteSelection()
{
    if (isEditable())
        removeSelected(tr("Delete"));
}

void EditorView::dragSelection()
{
    m_mouse->startDrag();
}

void EditorView::removeSelected(const QString& actionName)
{
    if (EditorExtension* holder = m_extensions.withSelection())
        holder->removeSelection(actionName);
    else if (!selection().isEmpty())
        m_gateway->remove(selection().range(), EditKind::other, actionName);
    ensureCaretVisible();
}

void EditorView::paste()
{
    pasteFrom(QGuiApplication::clipboard()->mimeData(), m_formatting);
}

void EditorView::pastePlain()
{
    pasteFrom(QGuiApplication::clipboard()->mimeData(), TextFormatting::plain);
}

void EditorView::pastePlain(const QString& text)
{
    QMimeData data;
    data.setText(text);
    pasteFrom(&data, TextFormatting::plain);
}

void EditorView::pasteFrom(const QMimeData* data, TextFormatting formatting)
{
    if (!data || !isEditable())
        return;
    const bool isHandled =
        formatting == m_formatting &&
        m_extensions.firstThat([&](EditorExtension& extension) { return extension.paste(*data); });
    if (!isHandled)
        insertFrom(*data, tr("Paste"), formatting);
    ensureCaretVisible();
}

bool EditorView::canPaste(const QMimeData* data) const
{
    return data && (textMime::canDecode(*data, m_formatting) ||
                    m_extensions.firstThat([&](const EditorExtension& extension) {
                        return extension.canTake(*data);
                    }));
}

bool EditorView::insertFrom(const QMimeData& data, const QString& actionName,
                            TextFormatting formatting)
{
    const SharedParagraphStyle paragraph = store().paragraphStyle(selection().range().location);
    const auto content = textMime::decode(data, formatting, {m_gateway->typingStyle(), paragraph});
    if (!content || !m_gateway->insert(content->text, actionName))
        return false;
    tellPasted(content->account, data);
    return true;
}

void EditorView::tellPasted(const ImportAccount& account, const QMimeData& data)
{
    if (account.isEmpty())
        return;
    const auto plain = textMime::decode(data, TextFormatting::plain, {{}, {}});
    emit pasted(account, plain ? plain->text.text() : QString());
}

void EditorView::selectAll()
{
    m_gateway->setSelection({0, store().length()});
    publishPrimarySelection();
}

void EditorView::publishPrimarySelection()
{
    QClipboard* clipboard = QGuiApplication::clipboard();
    if (!clipboard->supportsSelection() || selection().isEmpty())
        return;
    clipboard->setMimeData(selectedMime().release(), QClipboard::Selection);
}

std::unique_ptr<QMimeData> EditorView::selectedMime() const
{
    // With a large selection every further step of it would copy all of it.
    constexpr qsizetype copiedAtOnce = 20'000;
    const TextRange range = selection().range();
    const EditorExtension* holder =
        range.length <= copiedAtOnce ? m_extensions.withSelection() : nullptr;
    if (auto data = holder ? holder->copySelection() : nullptr)
        return data;
    if (range.length <= copiedAtOnce)
        return textMimeOf(range);
    return textMime::encodeLater(
        [range, snapshot = store().snapshot(), read = m_readImage] {
            return AttachmentManager::withImageBytes(snapshot.toAttributedString().sliced(range),
                                                     read);
        },
        m_formatting, m_headingSizes);
}

std::unique_ptr<QMimeData> EditorView::textMimeOf(TextRange range) const
{
    auto text = [text = store().attributedText(range), read = m_readImage] {
        return AttachmentManager::withImageBytes(text, read);
    };
    const bool isOneImage = range.length == 1 && m_formatting == TextFormatting::rich &&
                            store().characterStyle(range.location)->imageAttachment();
    return isOneImage ? textMime::encodeImageLater(std::move(text), m_headingSizes)
                      : textMime::encodeLater(std::move(text), m_formatting, m_headingSizes);
}

void EditorView::dragEnterEvent(QDragEnterEvent* event)
{
    dragMoveEvent(event);
    // A drag that is refused now is not heard of again, though it may be welcome a little further
    // on.
    const QMimeData& data = *event->mimeData();
    if (isEditable() && m_extensions.firstThat([&](const EditorExtension& extension) {
            return extension.canTake(data);
        }))
        event->acceptProposedAction();
}

EditorDrag EditorView::dragOf(const QDropEvent& event) const
{
    return {*event.mimeData(), toPage(event.position()), positionAt(event.position()),
            event.proposedAction()};
}

std::optional<EditorView::DropTarget> EditorView::dropTarget(const QDropEvent& event)
{
    if (!isEditable())
        return std::nullopt;
    const std::optional<DropFeedback> feedback = m_extensions.drag(dragOf(event));
    if (feedback == DropFeedback::none)
        return DropTarget{};
    if (!feedback && !textMime::canDecode(*event.mimeData(), m_formatting))
        return std::nullopt;
    CaretPlace place;
    place.position = positionAt(event.position(), &place.side);
    return DropTarget{place};
}

void EditorView::dragMoveEvent(QDragMoveEvent* event)
{
    m_mouse->endHover();
    const std::optional<DropTarget> target = dropTarget(*event);
    setDropCaret(target ? target->caret : std::nullopt);
    if (!target) {
        event->ignore();
        return;
    }
    const qreal edge = 24;
    const qreal y = event->position().y();
    if (y < edge)
        m_scroller->scrollBy(y - edge);
    else if (y > viewport()->height() - edge)
        m_scroller->scrollBy(y - viewport()->height() + edge);
    event->acceptProposedAction();
}

void EditorView::dragLeaveEvent(QDragLeaveEvent* /*event*/)
{
    m_extensions.endDrag();
    setDropCaret(std::nullopt);
}

void EditorView::dropEvent(QDropEvent* event)
{
    setDropCaret(std::nullopt);
    const Qt::DropAction done = isEditable() ? takeDrop(*event) : Qt::IgnoreAction;
    event->setDropAction(done);
    event->setAccepted(done != Qt::IgnoreAction);
    if (done == Qt::IgnoreAction)
        return;
    setFocus(Qt::MouseFocusReason);
    ensureCaretVisible();
}

/// What has been done. Who gave the text deletes it after a move, so that is said only where all of
/// it has come in.
Qt::DropAction EditorView::takeDrop(const QDropEvent& event)
{
    const QMimeData& data = *event.mimeData();
    CaretSide side = CaretSide::lowerLine;
    const qsizetype position = positionAt(event.position(), &side);
    if (m_extensions.drop(dragOf(event)))
        return event.proposedAction();
    const bool isFromHere = event.source() == viewport() || event.source() == this;
    if (isFromHere && event.dropAction() == Qt::MoveAction)
        return m_gateway->move(selection().range(), position, tr("Drag")) ? Qt::MoveAction
                                                                          : Qt::IgnoreAction;
    const auto style = m_gateway->typingStyleAt(position);
    const auto content =
        textMime::decode(data, m_formatting, {style, store().paragraphStyle(position)});
    if (!content)
        return Qt::IgnoreAction;
    const bool canCopy = event.possibleActions().testFlag(Qt::CopyAction);
    const bool bringsAll = textMime::bringsAll(data, content->text);
    if (!bringsAll && !canCopy)
        return Qt::IgnoreAction;
    const TextSelection before = selection();
    setSelection(TextSelection::caret(position), side);
    if (!m_gateway->insert(content->text, tr("Drag"))) {
        setSelection(before);
        return Qt::IgnoreAction;
    }
    m_gateway->setSelection({position, selection().position});
    tellPasted(content->account, data);
    const bool isMove = event.proposedAction() == Qt::MoveAction;
    return isMove && !bringsAll ? Qt::CopyAction : event.proposedAction();
}

} // namespace orvane
