// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/writing/AutoBracketing.h"

#include "editor/view/EditorView.h"
#include "text/store/TextStore.h"

#include <QCoreApplication>

#include <algorithm>

namespace orvane {

namespace {

constexpr char16_t bracketPairs[][2] = {
    {u'(', u')'}, {u'[', u']'}, {u'{', u'}'}, {u'"', u'"'}, {u'\'', u'\''},
};

/// A quote further back than this closes nothing.
constexpr qsizetype longestQuotation = 100'000;

bool isQuote(QChar c)
{
    return c == u'"' || c == u'\'';
}

bool closesBracket(QChar c)
{
    return c == u')' || c == u']' || c == u'}';
}

} // namespace

QChar closingBracket(QChar open)
{
    for (const auto& pair : bracketPairs) {
        if (open == pair[0])
            return pair[1];
    }
    return {};
}

BracketAction bracketAction(QChar typed, const BracketPlace& place)
{
    const bool opens = !closingBracket(typed).isNull();
    if (place.hasSelection)
        return opens ? BracketAction::wrap : BracketAction::type;
    if ((isQuote(typed) || closesBracket(typed)) && place.next == typed)
        return BracketAction::stepOver;
    if (!opens)
        return BracketAction::type;
    if (!isQuote(typed))
        return BracketAction::pair;
    const bool isApostrophe = typed == u'\'' && place.before.isLetterOrNumber();
    const bool isAlone = isApostrophe || place.before.isDigit() || place.isQuoteOpen(typed);
    return isAlone ? BracketAction::type : BracketAction::pair;
}

bool isQuoteOpen(QStringView paragraph, QChar quote)
{
    bool isOpen = false;
    for (qsizetype i = paragraph.indexOf(quote); i >= 0; i = paragraph.indexOf(quote, i + 1)) {
        const bool isMark = !isOpen && i > 0 && paragraph[i - 1].isDigit();
        isOpen = isOpen != !isMark;
    }
    return isOpen;
}

AutoBracketing::AutoBracketing(EditorView& view)
    : m_view(view)
{
    m_view.addExtension(this, ExtensionPriority::writing);
}

AutoBracketing::~AutoBracketing()
{
    m_view.removeExtension(this);
}

bool AutoBracketing::textTyped(const QString& text)
{
    if (!m_isEnabled || text.size() != 1)
        return false;
    const QChar typed = text.front();
    const TextStore& store = m_view.store();
    const TextRange selected = m_view.selection().range();
    const BracketPlace place{
        !selected.isEmpty(), store.characterAt(selected.location - 1),
        store.characterAt(selected.end()), [&](QChar c) {
            const qsizetype from = std::max(store.paragraphRange(selected.location).location,
                                            selected.location - longestQuotation);
            return isQuoteOpen(store.text(TextRange::between(from, selected.location)), c);
        }};
    switch (bracketAction(typed, place)) {
    case BracketAction::type:
        return false;
    case BracketAction::stepOver:
        m_view.setSelection(TextSelection::caret(selected.location + 1));
        return true;
    case BracketAction::wrap:
    case BracketAction::pair:
        surround(typed, closingBracket(typed));
        return true;
    }
    return false;
}

void AutoBracketing::surround(QChar open, QChar close)
{
    EditGateway& text = m_view.gateway();
    const TextSelection before = text.selection();
    const TextRange range = before.range();
    if (!text.shouldChangeText(range, open + text.store().text(range) + close))
        return;
    const auto surround = [&](DocumentEditor& editor) {
        const SharedCharacterStyle style = editor.typingStyle();
        editor.replace({range.end(), 0}, QString(close), style);
        editor.replace({range.location, 0}, QString(open), style);
        editor.setSelection({before.anchor + 1, before.position + 1});
        editor.setTypingStyle(style);
    };
    text.performUndoableDocumentEdit(QCoreApplication::translate("orvane::EditGateway", "Typing"),
                                     surround, EditEffect::changesText);
}

} // namespace orvane
