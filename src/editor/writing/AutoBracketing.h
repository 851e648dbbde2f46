// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/view/EditorExtension.h"
#include "text/value/TextSelection.h"

#include <QChar>
#include <QObject>

#include <functional>

namespace orvane {

class EditorView;
class TextStore;

/// Where a character is typed, as far as brackets need to know.
struct BracketPlace {
    bool hasSelection = false;
    QChar before;                                ///< a null character at the start of the text
    QChar next;                                  ///< a null character at its end
    std::function<qsizetype(QChar)> countBefore; ///< how often a character stands before the caret
};

/// What typing a bracket or a quote does.
enum class BracketAction {
    type,     ///< what typing always does
    wrap,     ///< puts both sides round the selection and keeps it selected
    pair,     ///< puts both sides there, with the caret between them
    stepOver, ///< passes the same character, which is there already
};

/// The character that closes what `open` opens, a quote itself; null for all other characters.
[[nodiscard]] QChar closingBracket(QChar open);

/// A quote opens where their number before the caret is even, except a single one behind a letter
/// or a digit, which is an apostrophe.
[[nodiscard]] BracketAction bracketAction(QChar typed, const BracketPlace& place);

/// How many quotes stand before a place. Counts from where it was asked the last time, so a quote
/// in a long text costs no more than in a short one as long as one writes on.
class QuoteCount {
public:
    [[nodiscard]] qsizetype before(const TextStore& store, qsizetype position, QChar quote);
    void follow(const TextChange& change);
    /// Another text.
    void reset() { *this = {}; }

private:
    qsizetype m_position = 0;
    qsizetype m_single = 0;
    qsizetype m_double = 0;
};

/// Closes brackets and quotes while they are typed in a view. Off until told otherwise.
class AutoBracketing final : public EditorExtension {
public:
    /// Adds itself to `view`, which outlives it.
    explicit AutoBracketing(EditorView& view);
    ~AutoBracketing() override;

    void setEnabled(bool enabled) { m_isEnabled = enabled; }
    /// The view shows another text.
    void showText() { m_quotes.reset(); }

    bool textTyped(const QString& text) override;

private:
    void surround(QChar open, QChar close);

    EditorView& m_view;
    QMetaObject::Connection m_changes;
    QuoteCount m_quotes;
    bool m_isEnabled = false;
};

} // namespace orvane
