// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/store/DocumentPieces.h"
#include "text/store/StyleTable.h"
#include "text/store/TextSnapshot.h"
#include "text/value/AttributedString.h"

#include <QTextBlock>
#include <QTextDocument>

#include <functional>
#include <vector>

namespace orvane {

/// Follows the changes of a text as they are made: for those who lay it out.
class TextObserver {
public:
    virtual ~TextObserver() = default;

    /// `removed` characters at `from` have given way to `added` others, or look different. The one
    /// that closes the text is counted, too. Comes before the gateway tells of the change.
    virtual void textReplaced(int from, int removed, int added) = 0;
};

/// The text of one open note, stored so that an edit costs the same whatever the text's length.
///
/// This class is read only: all changes go through the one `EditGateway` that is made on it. It
/// lives on the main thread. Positions and paragraphs are those of `AttributedString`; a range must
/// lie within the text.
class TextStore {
public:
    TextStore();
    ~TextStore();
    Q_DISABLE_COPY_MOVE(TextStore)

    [[nodiscard]] qsizetype length() const;
    [[nodiscard]] bool isEmpty() const { return length() == 0; }
    [[nodiscard]] TextRange fullRange() const { return {0, length()}; }

    /// Plain text with "\n" between paragraphs; every other character as it is.
    [[nodiscard]] QString text() const;
    [[nodiscard]] QString text(TextRange range) const;
    /// The character at `position`, or a null character at the end of the text.
    [[nodiscard]] QChar characterAt(qsizetype position) const;

    [[nodiscard]] AttributedString attributedText() const { return attributedText(fullRange()); }
    [[nodiscard]] AttributedString attributedText(TextRange range) const;
    /// The whole content as it stands, for another thread to work on. Costs some ten milliseconds
    /// for a million words.
    [[nodiscard]] TextSnapshot snapshot() const;

    /// The style of the character at `position`, which must be below `length()`.
    [[nodiscard]] const SharedCharacterStyle& characterStyle(qsizetype position) const;
    /// The style of the paragraph that holds `position`, from 0 to `length()`.
    [[nodiscard]] const SharedParagraphStyle& paragraphStyle(qsizetype position) const;
    /// The paragraph that holds `position`, with its "\n".
    [[nodiscard]] TextRange paragraphRange(qsizetype position) const;
    /// All paragraphs that `range` touches, with their "\n"; an empty range touches one.
    [[nodiscard]] TextRange paragraphsRange(TextRange range) const;
    [[nodiscard]] int paragraphCount() const { return m_document.blockCount(); }

    /// Calls `visit(TextRange, const SharedCharacterStyle&)` for the runs of `range` in turn.
    /// Neighbouring runs may be equal.
    template <typename Visit>
    void forEachCharacterRun(TextRange range, Visit&& visit) const;

    /// The same with the formats that stand for the styles. Costs the same in a paragraph of any
    /// length.
    void forEachFormat(TextRange range,
                       const std::function<void(TextRange, const QTextCharFormat&)>& visit) const;

    /// The document, for whoever shows the text. Never change it, nor lay it out: that is done
    /// beside it, by any number of `ParagraphLayout`s.
    [[nodiscard]] QTextDocument& document() const { return m_document; }
    /// Observers belong to someone else, who removes them before they go.
    void addObserver(TextObserver& observer) const { m_observers.push_back(&observer); }
    void removeObserver(TextObserver& observer) const { std::erase(m_observers, &observer); }
    [[nodiscard]] const StyleTable& styles() const { return m_styles; }
    [[nodiscard]] QTextBlock blockAt(qsizetype position) const;

private:
    friend class EditGateway;
    friend class DocumentEditor;

    void setContent(const AttributedString& content);
    void beginEdit();
    void endEdit();
    void undoStep() { m_document.undo(); }
    void redoStep() { m_document.redo(); }
    void replace(TextRange range, const AttributedString& insertion);
    void replace(TextRange range, const QString& text, const SharedCharacterStyle& style);
    void setCharacterStyle(TextRange range, const SharedCharacterStyle& style);
    void setParagraphStyle(TextRange range, const SharedParagraphStyle& style);

    void insertPieces(qsizetype position, const AttributedString& insertion);
    void setBlockStyle(const QTextBlock& block, const SharedParagraphStyle& style);

    class Relay;

    mutable QTextDocument m_document;
    DocumentPieces m_pieces{m_document};
    StyleTable m_styles;
    mutable std::vector<TextObserver*> m_observers;
};

template <typename Visit>
void TextStore::forEachCharacterRun(TextRange range, Visit&& visit) const
{
    forEachFormat(range, [&](TextRange run, const QTextCharFormat& format) {
        visit(run, m_styles.styleOf(format));
    });
}

} // namespace orvane
