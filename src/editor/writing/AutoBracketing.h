// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/view/EditorExtension.h"
#include "text/value/TextSelection.h"

#include <QChar>

#include <functional>

namespace orvane {

class EditorView;

/// Where a character is typed, as far as brackets need to know.
struct BracketPlace {
    bool hasSelection = false;
    QChar before;                           ///< a null character at the start of the text
    QChar next;                             ///< a null character at its end
    std::function<bool(QChar)> isQuoteOpen; ///< whether one before the caret waits to be closed
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

/// A quote opens where none is open, except a single one behind a letter, which is an apostrophe,
/// and one behind a digit, which counts feet or inches.
[[nodiscard]] BracketAction bracketAction(QChar typed, const BracketPlace& place);

/// Whether a quote in `paragraph`, what stands of one before the caret, waits to be closed. Behind
/// a digit one that closes nothing is a mark of length.
[[nodiscard]] bool isQuoteOpen(QStringView paragraph, QChar quote);

/// Closes brackets and quotes while they are typed in a view. Off until told otherwise.
class AutoBracketing final : public EditorExtension {
public:
    /// Adds itself to `view`, which outlives it.
    explicit AutoBracketing(EditorView& view);
    ~AutoBracketing() override;

    void setEnabled(bool enabled) { m_isEnabled = enabled; }
    bool textTyped(const QString& text) override;

private:
    void surround(QChar open, QChar close);

    EditorView& m_view;
    bool m_isEnabled = false;
};

} // namespace orvane
