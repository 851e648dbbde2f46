// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// What a person does to the text: keys, mouse, wheel, menu, input methods.
#include "commands/KeyTable.h"
#include "editor/view/EditorView.h"
#include "editor/view/InputMethodBridge.h"
#include "editor/view/MouseSelection.h"
#include "editor/view/PageScroller.h"
#include "text/store/TextStore.h"

#include <QApplication>
#include <QClipboard>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QScrollBar>

namespace orvane {

namespace {

struct MoveKey {
    QKeySequence::StandardKey key;
    CaretMove move;
    SelectionMode mode;
};

using enum SelectionMode;

constexpr MoveKey moveKeys[] = {
    {QKeySequence::MoveToNextChar, CaretMove::right, replace},
    {QKeySequence::MoveToPreviousChar, CaretMove::left, replace},
    {QKeySequence::SelectNextChar, CaretMove::right, extend},
    {QKeySequence::SelectPreviousChar, CaretMove::left, extend},
    {QKeySequence::MoveToNextWord, CaretMove::wordRight, replace},
    {QKeySequence::MoveToPreviousWord, CaretMove::wordLeft, replace},
    {QKeySequence::SelectNextWord, CaretMove::wordRight, extend},
    {QKeySequence::SelectPreviousWord, CaretMove::wordLeft, extend},
    {QKeySequence::MoveToNextLine, CaretMove::lineDown, replace},
    {QKeySequence::MoveToPreviousLine, CaretMove::lineUp, replace},
    {QKeySequence::SelectNextLine, CaretMove::lineDown, extend},
    {QKeySequence::SelectPreviousLine, CaretMove::lineUp, extend},
    {QKeySequence::MoveToStartOfLine, CaretMove::lineStart, replace},
    {QKeySequence::MoveToEndOfLine, CaretMove::lineEnd, replace},
    {QKeySequence::SelectStartOfLine, CaretMove::lineStart, extend},
    {QKeySequence::SelectEndOfLine, CaretMove::lineEnd, extend},
    {QKeySequence::MoveToNextPage, CaretMove::pageDown, replace},
    {QKeySequence::MoveToPreviousPage, CaretMove::pageUp, replace},
    {QKeySequence::SelectNextPage, CaretMove::pageDown, extend},
    {QKeySequence::SelectPreviousPage, CaretMove::pageUp, extend},
    {QKeySequence::MoveToStartOfDocument, CaretMove::documentStart, replace},
    {QKeySequence::MoveToEndOfDocument, CaretMove::documentEnd, replace},
    {QKeySequence::SelectStartOfDocument, CaretMove::documentStart, extend},
    {QKeySequence::SelectEndOfDocument, CaretMove::documentEnd, extend},
};

/// The keys that a text takes for itself even where the window has a shortcut on them.
bool isTextKey(const QKeyEvent& event)
{
    constexpr QKeySequence::StandardKey own[] = {
        QKeySequence::Copy,
        QKeySequence::Cut,
        QKeySequence::Paste,
        QKeySequence::Undo,
        QKeySequence::Redo,
        QKeySequence::SelectAll,
        QKeySequence::Delete,
        QKeySequence::Backspace,
        QKeySequence::DeleteEndOfWord,
        QKeySequence::DeleteStartOfWord,
    };
    for (const QKeySequence::StandardKey key : own) {
        if (event.matches(key))
            return true;
    }
    for (const MoveKey& key : moveKeys) {
        if (event.matches(key.key))
            return true;
    }
    const Qt::KeyboardModifiers modifiers = event.modifiers() & ~Qt::KeypadModifier;
    if (modifiers != Qt::NoModifier && modifiers != Qt::ShiftModifier)
        return false;
    return event.key() < Qt::Key_Escape || event.key() == Qt::Key_Return ||
           event.key() == Qt::Key_Enter || event.key() == Qt::Key_Tab ||
           event.key() == Qt::Key_Backtab || event.key() == Qt::Key_Delete ||
           event.key() == Qt::Key_Backspace;
}

/// Text that a key brings, as opposed to what a shortcut leaves behind in its event.
bool bringsText(const QKeyEvent& event)
{
    const QString text = event.text();
    if (text.isEmpty() ||
        (!text.front().isPrint() && text.front() != u'\t' &&
         text.front().category() != QChar::Other_Format && !text.front().isSurrogate()))
        return false;
    const Qt::KeyboardModifiers modifiers = event.modifiers();
    // AltGr arrives as both together on some keyboards.
    return modifiers.testFlag(Qt::ControlModifier) == modifiers.testFlag(Qt::AltModifier) &&
           !modifiers.testFlag(Qt::MetaModifier);
}

} // namespace

bool EditorView::event(QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride) {
        auto* key = static_cast<QKeyEvent*>(event);
        if (isTextKey(*key) || m_extensions.firstThat([&](const EditorExtension& extension) {
                return extension.takesKey(*key);
            })) {
            key->accept();
            return true;
        }
    }
    return QAbstractScrollArea::event(event);
}

bool EditorView::viewportEvent(QEvent* event)
{
    if (event->type() == QEvent::Leave)
        m_mouse->endHover();
    return QAbstractScrollArea::viewportEvent(event);
}

bool EditorView::focusNextPrevChild(bool next)
{
    // Tab is typed, but not where the head has the keyboard.
    if (m_head && m_head->isAncestorOf(QApplication::focusWidget()))
        return QAbstractScrollArea::focusNextPrevChild(next);
    return false; // Tab belongs to the text.
}

// Keys

void EditorView::keyPressEvent(QKeyEvent* event)
{
    event->setAccepted(handleKey(event));
    if (event->isAccepted())
        setPointerHidden(bringsText(*event));
}

bool EditorView::handleKey(QKeyEvent* event)
{
    if (m_extensions.firstThat(
            [&](EditorExtension& extension) { return extension.keyPressed(*event); }))
        return true;
    if (handleMoveKey(event) || handleCommandKey(event))
        return true;
    if (!bringsText(*event) || !isEditable())
        return false;
    typeText(event->text());
    return true;
}

bool EditorView::handleMoveKey(QKeyEvent* event)
{
    for (const MoveKey& key : moveKeys) {
        if (event->matches(key.key)) {
            moveCaret(key.move, key.mode);
            return true;
        }
    }
    const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;
    const bool selects = modifiers == (Qt::ControlModifier | Qt::ShiftModifier);
    if (modifiers != Qt::ControlModifier && !selects)
        return false;
    const auto mode = selects ? SelectionMode::extend : SelectionMode::replace;
    if (event->key() == Qt::Key_Up)
        moveCaret(CaretMove::paragraphUp, mode);
    else if (event->key() == Qt::Key_Down)
        moveCaret(CaretMove::paragraphDown, mode);
    else
        return false;
    return true;
}

bool EditorView::handleCommandKey(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Copy))
        copy();
    else if (event->matches(QKeySequence::Cut))
        cut();
    else if (event->matches(QKeySequence::Paste))
        paste();
    else if (event->matches(QKeySequence::Undo))
        undo();
    else if (event->matches(QKeySequence::Redo) ||
             event->keyCombination() == keySequence(FixedKey::redoByY)[0])
        redo();
    else if (event->matches(QKeySequence::SelectAll))
        selectAll();
    else
        return isEditable() && handleDeleteKey(event);
    return true;
}

bool EditorView::handleDeleteKey(QKeyEvent* event)
{
    const qsizetype caret = selection().position;
    const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;
    const bool isPlain = modifiers == Qt::NoModifier || modifiers == Qt::ShiftModifier;
    if (event->matches(QKeySequence::DeleteStartOfWord)) {
        removeTo(previousWord(store(), caret), EditKind::other);
    } else if (event->matches(QKeySequence::DeleteEndOfWord)) {
        removeTo(nextWord(store(), caret), EditKind::other);
    } else if (event->key() == Qt::Key_Backspace && isPlain) {
        runCommand(EditAction::deleteBackward);
    } else if (event->matches(QKeySequence::Delete)) {
        runCommand(EditAction::deleteForward);
    } else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        if (!isPlain)
            return false;
        runCommand(modifiers == Qt::ShiftModifier ? EditAction::insertLineBreak
                                                  : EditAction::insertNewline);
    } else if (event->key() == Qt::Key_Tab && modifiers == Qt::NoModifier) {
        runCommand(EditAction::insertTab);
    } else if (event->key() == Qt::Key_Backtab) {
        runCommand(EditAction::insertBacktab);
    } else {
        return false;
    }
    return true;
}

bool EditorView::runCommand(EditAction command)
{
    if (m_extensions.firstThat(
            [&](EditorExtension& extension) { return extension.command(command); })) {
        ensureCaretVisible();
        return true;
    }
    const qsizetype caret = selection().position;
    switch (command) {
    case EditAction::insertNewline:
        m_gateway->insertParagraph();
        break;
    case EditAction::insertLineBreak:
        // Text without formatting has one kind of line end.
        if (m_formatting == TextFormatting::rich)
            m_gateway->insertLineBreak();
        else
            m_gateway->insertParagraph();
        break;
    case EditAction::insertTab:
        m_gateway->type(QStringLiteral("\t"));
        break;
    case EditAction::insertBacktab:
        return false;
    case EditAction::deleteBackward:
        removeTo(previousCharacter(store(), caret), EditKind::deletingBackward);
        break;
    case EditAction::deleteForward:
        removeTo(nextCharacter(store(), caret), EditKind::deletingForward);
        break;
    }
    ensureCaretVisible();
    return true;
}

void EditorView::typeText(const QString& text)
{
    if (!m_extensions.firstThat(
            [&](EditorExtension& extension) { return extension.textTyped(text); }))
        m_gateway->type(text);
    ensureCaretVisible();
}

void EditorView::removeTo(qsizetype position, EditKind kind)
{
    if (!selection().isEmpty() || m_extensions.withSelection()) {
        deleteSelection();
        return;
    }
    const qsizetype caret = selection().position;
    const TextRange range =
        TextRange::between(std::min(caret, position), std::max(caret, position));
    if (!m_gateway->remove(range, kind, tr("Delete")))
        QApplication::beep();
    ensureCaretVisible();
}

// Mouse

void EditorView::mousePressEvent(QMouseEvent* event)
{
    m_mouse->press(*event);
}

void EditorView::mouseMoveEvent(QMouseEvent* event)
{
    setPointerHidden(false);
    m_mouse->move(*event);
}

void EditorView::mouseReleaseEvent(QMouseEvent* event)
{
    m_mouse->release(*event);
}

void EditorView::mouseDoubleClickEvent(QMouseEvent* event)
{
    m_mouse->doubleClick(*event);
}

void EditorView::wheelEvent(QWheelEvent* event)
{
    constexpr qreal notch = 120;
    event->accept();
    if (event->modifiers().testFlag(Qt::ControlModifier)) {
        emit zoomRequested(event->angleDelta().y() / notch);
        return;
    }
    // A touchpad says pixels; a wheel says parts of a notch.
    const QPoint pixels = event->pixelDelta();
    if (!pixels.isNull()) {
        m_scroller->scrollBy(-pixels.y());
        return;
    }
    const qreal lines = event->angleDelta().y() / notch * QApplication::wheelScrollLines();
    m_scroller->scrollBy(-lines * verticalScrollBar()->singleStep());
}

void EditorView::contextMenuEvent(QContextMenuEvent* event)
{
    const QPointF point = event->reason() == QContextMenuEvent::Mouse
                              ? QPointF(viewport()->mapFromGlobal(event->globalPos()))
                              : caretRect().bottomLeft();
    QMenu menu(this);
    fillContextMenu(menu, point);
    menu.exec(event->reason() == QContextMenuEvent::Mouse
                  ? event->globalPos()
                  : viewport()->mapToGlobal(point.toPoint()));
}

void EditorView::fillContextMenu(QMenu& menu, QPointF viewportPoint)
{
    m_extensions.firstThat([&](EditorExtension& extension) {
        extension.addToContextMenu(menu, toPage(viewportPoint), positionAt(viewportPoint));
        return false; // all may add to it
    });
    if (!menu.isEmpty() && !menu.actions().constLast()->isSeparator())
        menu.addSeparator();
    const auto add = [&](const QString& text, const QString& icon, QKeySequence::StandardKey key,
                         bool enabled, void (EditorView::*run)()) {
        QAction* action = menu.addAction(QIcon::fromTheme(icon), text, this, run);
        action->setShortcut(key);
        action->setEnabled(enabled);
    };
    const bool canEdit = isEditable();
    const bool hasSelection = !selection().isEmpty() || m_extensions.withSelection();
    add(tr("Undo"), QStringLiteral("edit-undo"), QKeySequence::Undo,
        canEdit && m_gateway->canUndo(), &EditorView::undo);
    add(tr("Redo"), QStringLiteral("edit-redo"), QKeySequence::Redo,
        canEdit && m_gateway->canRedo(), &EditorView::redo);
    menu.addSeparator();
    const QMimeData* clipboard = QGuiApplication::clipboard()->mimeData();
    add(tr("Cut"), QStringLiteral("edit-cut"), QKeySequence::Cut, canEdit && hasSelection,
        &EditorView::cut);
    add(tr("Copy"), QStringLiteral("edit-copy"), QKeySequence::Copy, hasSelection,
        &EditorView::copy);
    add(tr("Paste"), QStringLiteral("edit-paste"), QKeySequence::Paste,
        canEdit && canPaste(clipboard), &EditorView::paste);
    add(tr("Delete"), QStringLiteral("edit-delete"), QKeySequence::UnknownKey,
        canEdit && hasSelection, &EditorView::deleteSelection);
    menu.addSeparator();
    add(tr("Select All"), QStringLiteral("edit-select-all"), QKeySequence::SelectAll,
        !store().isEmpty(), &EditorView::selectAll);
}

void EditorView::setPointerHidden(bool hidden)
{
    if (hidden == (viewport()->cursor().shape() == Qt::BlankCursor))
        return;
    viewport()->setCursor(hidden ? Qt::BlankCursor : Qt::IBeamCursor);
}

// Input methods, focus, time

void EditorView::inputMethodEvent(QInputMethodEvent* event)
{
    if (!isEditable()) {
        event->ignore();
        return;
    }
    m_inputMethod->handle(*event);
    event->accept();
}

QVariant EditorView::inputMethodQuery(Qt::InputMethodQuery query) const
{
    return m_inputMethod->answer(query);
}

void EditorView::focusInEvent(QFocusEvent* event)
{
    QAbstractScrollArea::focusInEvent(event);
    restartCaretBlink();
    viewport()->update();
}

void EditorView::focusOutEvent(QFocusEvent* event)
{
    QAbstractScrollArea::focusOutEvent(event);
    m_blinkTimer.stop();
    m_gateway->breakUndoCoalescing();
    viewport()->update();
}

void EditorView::changeEvent(QEvent* event)
{
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::EnabledChange || event->type() == QEvent::ActivationChange)
        viewport()->update();
}

void EditorView::timerEvent(QTimerEvent* event)
{
    if (event->timerId() == m_blinkTimer.timerId()) {
        m_blinkShows = !m_blinkShows;
        updateCaret();
        return;
    }
    if (!m_mouse->timer(event->timerId()))
        QAbstractScrollArea::timerEvent(event);
}

} // namespace orvane
