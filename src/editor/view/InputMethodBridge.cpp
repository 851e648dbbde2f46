// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/view/InputMethodBridge.h"

#include "editor/view/EditorView.h"
#include "text/store/Graphemes.h"
#include "text/store/TextStore.h"

#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QScopedValueRollback>

namespace orvane {

namespace {

/// How much of a paragraph an input method is told.
constexpr qsizetype surroundingLimit = 2000;

/// What an input method knows of the text: the part of the paragraph that is near the caret.
TextRange surroundings(const TextStore& store, qsizetype caret)
{
    const TextRange paragraph = paragraphTextAt(store, caret);
    const qsizetype from = std::max(paragraph.location, caret - surroundingLimit);
    return TextRange::between(from, std::min(paragraph.end(), caret + surroundingLimit));
}

} // namespace

InputMethodBridge::InputMethodBridge(EditorView& view)
    : m_view(view)
{}

void InputMethodBridge::handle(const QInputMethodEvent& event)
{
    const QScopedValueRollback handling(m_isHandling, true);
    const bool changesText = !event.commitString().isEmpty() || event.replacementLength() > 0;
    const bool composes = !event.preeditString().isEmpty();
    if (m_view.layout().hasPreedit() && (changesText || !composes))
        m_view.layout().setPreedit(int(m_view.selection().position), {}, 0, {});
    if (composes && !changesText && !m_view.selection().isEmpty())
        m_view.deleteSelection();
    if (changesText)
        commit(event);
    for (const QInputMethodEvent::Attribute& attribute : event.attributes()) {
        if (attribute.type != QInputMethodEvent::Selection)
            continue;
        const qsizetype from =
            surroundings(m_view.store(), m_view.selection().position).location + attribute.start;
        m_view.setSelection({from, from + attribute.length});
    }
    compose(event);
    m_view.ensureCaretVisible();
}

void InputMethodBridge::commit(const QInputMethodEvent& event)
{
    const bool replaces = event.replacementLength() > 0;
    QString text = event.commitString();
    if (replaces || event.replacementStart() != 0) {
        const qsizetype caret = m_view.selection().position;
        const TextRange replaced =
            TextRange{caret + event.replacementStart(), event.replacementLength()}.clampedTo(
                m_view.store().length());
        // A vowel sign may be exchanged alone, and the letter that it belongs to stays.
        const TextRange whole =
            aroundWholeGraphemes(m_view.store(), TextSelection::of(replaced)).range();
        const auto kept = [&](qsizetype from, qsizetype to) {
            return m_view.store().text(TextRange::between(from, std::max(from, to)));
        };
        if (replaces)
            text =
                kept(whole.location, replaced.location) + text + kept(replaced.end(), whole.end());
        m_view.setSelection(TextSelection::of(whole));
    }
    // What takes the place of a word is no typing, and no tool has a say in it.
    if (replaces && !text.isEmpty())
        m_view.gateway().type(text);
    else if (!text.isEmpty())
        m_view.typeText(text);
    else
        m_view.deleteSelection();
}

void InputMethodBridge::compose(const QInputMethodEvent& event)
{
    const QString& text = event.preeditString();
    int caret = int(text.size());
    QList<QTextLayout::FormatRange> formats;
    for (const QInputMethodEvent::Attribute& attribute : event.attributes()) {
        if (attribute.type == QInputMethodEvent::Cursor) {
            caret = attribute.length ? std::clamp(attribute.start, 0, int(text.size())) : -1;
        } else if (attribute.type == QInputMethodEvent::TextFormat) {
            const QTextCharFormat format =
                qvariant_cast<QTextFormat>(attribute.value).toCharFormat();
            if (format.isValid())
                formats.append({attribute.start, attribute.length, format});
        }
    }
    if (formats.isEmpty() && !text.isEmpty()) {
        QTextCharFormat underlined;
        underlined.setFontUnderline(true);
        formats.append({0, int(text.size()), underlined});
    }
    if (text.isEmpty() && !m_view.layout().hasPreedit())
        return;
    m_view.layout().setPreedit(int(m_view.selection().position), text, std::max(caret, 0), formats);
}

void InputMethodBridge::cancel()
{
    if (m_isHandling || !m_view.layout().hasPreedit())
        return;
    m_view.layout().setPreedit(m_view.layout().preeditPosition(), {}, 0, {});
    QGuiApplication::inputMethod()->reset();
}

QVariant InputMethodBridge::answer(Qt::InputMethodQuery query) const
{
    const TextStore& store = m_view.store();
    const TextSelection selection = m_view.selection();
    const TextRange near = surroundings(store, selection.position);
    switch (query) {
    case Qt::ImEnabled:
        return m_view.isEditable();
    case Qt::ImReadOnly:
        return !m_view.isEditable();
    case Qt::ImCursorRectangle: {
        QRectF caret = m_view.caretRect();
        caret.setWidth(1);
        return caret.translated(m_view.viewport()->pos());
    }
    case Qt::ImAnchorRectangle:
        return m_view.toViewport(m_view.layout().caretRect(int(selection.anchor)))
            .translated(m_view.viewport()->pos());
    case Qt::ImHints:
        return int(Qt::ImhMultiLine);
    case Qt::ImCursorPosition:
        return int(selection.position - near.location);
    case Qt::ImAnchorPosition:
        return int(std::clamp(selection.anchor, near.location, near.end()) - near.location);
    case Qt::ImAbsolutePosition:
        return int(selection.position);
    case Qt::ImSurroundingText:
        return store.text(near);
    case Qt::ImTextBeforeCursor:
        return store.text(TextRange::between(near.location, selection.position));
    case Qt::ImTextAfterCursor:
        return store.text(TextRange::between(selection.position, near.end()));
    case Qt::ImCurrentSelection:
        return store.text(selection.range().length > surroundingLimit ? TextRange{}
                                                                      : selection.range());
    default:
        return {};
    }
}

} // namespace orvane
