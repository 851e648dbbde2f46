// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/spelling/Spelling.h"
#include "editor/spelling/SpellingResults.h"
#include "editor/view/EditorExtension.h"
#include "text/value/TextSelection.h"

#include <QColor>
#include <QObject>
#include <QTextBlock>

namespace orvane {

class EditorView;

/// Marks misspelt words in a text view and offers help with them in its context menu. Only what is
/// seen is checked, and never while a key is at work: until the new text of a place has been
/// checked, the marks of before go along with the words that they stand under. The word that is
/// being typed is not marked before the caret has left it. Main thread.
class SpellingMarks final : public QObject, public EditorExtension {
    Q_OBJECT
public:
    /// Adds itself to `view`; both arguments outlive it.
    SpellingMarks(EditorView& view, Spelling& spelling, QObject* parent = nullptr);
    ~SpellingMarks() override;

    /// Checks in the language of this note from now on; nothing for no note.
    void setNote(const std::optional<QUuid>& note);
    /// Where a paragraph has code, which is not checked, in positions of the text.
    using CodeSource = std::function<QList<TextRange>(const QTextBlock&)>;
    void setCodeSource(CodeSource source);

    /// The misspelt words that touch `range`, within one paragraph; finds them out if need be.
    [[nodiscard]] QList<TextRange> misspellingsIn(TextRange range);

    void paintOverText(QPainter& painter, const EditorPaint& paint) override;
    void addToContextMenu(QMenu& menu, QPointF page, qsizetype position) override;

private:
    void updateChecker();
    void forgetChecks();
    void onTextChanged(const TextChange& change);
    void moveMarks(const TextChange& change);
    void onSelectionChanged();
    void updateParagraph(qsizetype position);
    [[nodiscard]] TextRange seenPart(const QTextBlock& block, const EditorPaint& paint) const;
    [[nodiscard]] QList<TextRange> marksOf(TextRange piece);
    void dropCode(QList<TextRange>& words, const QTextBlock& block) const;
    void addSuggestions(QMenu& menu, TextRange word);
    void replaceWord(TextRange word, const QString& replacement);

    EditorView& m_view;
    Spelling& m_spelling;
    std::optional<QUuid> m_note;
    SpellChecker* m_checker = nullptr; // of m_spelling; null for no checking
    QMetaObject::Connection m_checkerChanged;
    CodeSource m_codeSource;
    SpellingResults m_results;
    QList<TextRange> m_shown;            // by rising position, where they stand now
    std::optional<qsizetype> m_typingAt; // the caret, as long as it stands where typing left it
};

} // namespace orvane
