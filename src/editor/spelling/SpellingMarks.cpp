// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/spelling/SpellingMarks.h"

#include "editor/spelling/SpellingMenu.h"
#include "editor/view/EditorView.h"
#include "editor/view/MarkGeometry.h"
#include "editor/view/TextEdits.h"
#include "text/layout/ParagraphLayout.h"
#include "text/store/TextStore.h"

#include <QMenu>
#include <QPainter>

#include <cmath>

namespace orvane {

namespace {

/// A row of dots under a word.
void drawMark(QPainter& painter, const QRectF& word, qreal scale, const QColor& color)
{
    const qreal size = std::max(1.4, 1.5 * scale);
    QPen pen(color, size, Qt::CustomDashLine, Qt::RoundCap);
    pen.setDashPattern({0.01, 2});
    painter.setPen(pen);
    // Below the baseline, which stands some four fifths down.
    const qreal y = word.top() + word.height() * 0.9;
    painter.drawLine(QPointF(word.left() + size / 2, y), QPointF(word.right() - size / 2, y));
}

bool continuesWord(QChar c)
{
    return c.isLetterOrNumber() || c.isMark() || c == u'\'' || c == u'\u2019';
}

bool touches(TextRange word, qsizetype position)
{
    return position >= word.location && position <= word.end();
}

} // namespace

SpellingMarks::SpellingMarks(EditorView& view, Spelling& spelling, QObject* parent)
    : QObject(parent)
    , m_view(view)
    , m_spelling(spelling)
{
    m_view.addExtension(this, ExtensionPriority::spelling);
    connect(&m_view, &EditorView::textChanged, this, &SpellingMarks::onTextChanged);
    connect(&m_view, &EditorView::selectionChanged, this, &SpellingMarks::onSelectionChanged);
    connect(&m_spelling, &Spelling::settingsChanged, this, &SpellingMarks::updateChecker);
    connect(&m_results, &SpellingResults::found, this, [this] { m_view.viewport()->update(); });
}

SpellingMarks::~SpellingMarks()
{
    m_view.removeExtension(this);
}

void SpellingMarks::setNote(const std::optional<QUuid>& note)
{
    m_note = note;
    m_typingAt.reset();
    updateChecker();
}

void SpellingMarks::setCodeSource(CodeSource source)
{
    m_codeSource = std::move(source);
    m_view.viewport()->update();
}

void SpellingMarks::updateChecker()
{
    disconnect(m_checkerChanged);
    m_checker = m_note ? m_spelling.checkerFor(*m_note) : nullptr;
    if (m_checker) {
        m_checkerChanged =
            connect(m_checker, &SpellChecker::changed, this, &SpellingMarks::forgetChecks);
    }
    forgetChecks();
}

void SpellingMarks::forgetChecks()
{
    m_results.setChecker(m_checker);
    m_shown.clear();
    m_view.viewport()->update();
}

void SpellingMarks::onTextChanged(const TextChange& change)
{
    const TextSelection selection = m_view.gateway().selection();
    const bool isTyping = change.lengthAfter > 0 && selection.isEmpty() &&
                          selection.position == change.location + change.lengthAfter;
    m_typingAt = isTyping ? std::optional(selection.position) : std::nullopt;
    m_results.waitForPause();
    moveMarks(change);
}

/// A mark goes where its word may have become another.
void SpellingMarks::moveMarks(const TextChange& change)
{
    const TextStore& store = m_view.store();
    const qsizetype endBefore = change.location + change.lengthBefore;
    const qsizetype end = change.location + change.lengthAfter;
    const bool growsBefore = continuesWord(store.characterAt(change.location));
    const bool growsBehind = end > 0 && continuesWord(store.characterAt(end - 1));
    m_shown.removeIf([&](TextRange word) {
        if (word.end() <= change.location)
            return word.end() == change.location && growsBefore;
        if (word.location >= endBefore)
            return word.location == endBefore && growsBehind;
        return true;
    });
    for (TextRange& word : m_shown) {
        if (word.location >= endBefore)
            word.location += change.lengthAfter - change.lengthBefore;
    }
}

void SpellingMarks::onSelectionChanged()
{
    if (!m_typingAt || m_view.selection() == TextSelection::caret(*m_typingAt))
        return;
    updateParagraph(std::min(*m_typingAt, m_view.store().length()));
    m_typingAt.reset();
}

void SpellingMarks::updateParagraph(qsizetype position)
{
    ParagraphLayout& layout = m_view.layout();
    const QTextBlock block = m_view.store().blockAt(position);
    const qreal top = layout.topOf(block);
    m_view.updatePage({0, top, layout.width(), layout.bottomOf(block) - top});
}

void SpellingMarks::dropCode(QList<TextRange>& words, const QTextBlock& block) const
{
    if (words.isEmpty() || !m_codeSource)
        return;
    const QList<TextRange> code = m_codeSource(block);
    auto skip = code.begin();
    words.removeIf([&](TextRange word) {
        while (skip != code.end() && skip->end() <= word.location)
            ++skip;
        return skip != code.end() && skip->location < word.end();
    });
}

QList<TextRange> SpellingMarks::misspellingsIn(TextRange range)
{
    QList<TextRange> misspelt;
    if (!m_checker || !m_checker->isReady())
        return misspelt;
    const QTextBlock block = m_view.store().blockAt(range.location);
    for (const TextRange piece : spellingPieces(m_view.store(), block, range)) {
        for (TextRange word : m_results.check(m_view.store().text(piece))) {
            word.location += piece.location;
            if (word.end() >= range.location && word.location <= range.end())
                misspelt.append(word);
        }
    }
    dropCode(misspelt, block);
    return misspelt;
}

/// The words to be marked in `piece`: those found, or those of before.
QList<TextRange> SpellingMarks::marksOf(TextRange piece)
{
    const auto first =
        std::lower_bound(m_shown.begin(), m_shown.end(), piece.location,
                         [](TextRange word, qsizetype at) { return word.location < at; });
    auto last = first;
    while (last != m_shown.end() && last->end() <= piece.end())
        ++last;
    const QList<TextRange>* found = m_results.find(m_view.store().text(piece));
    if (!found)
        return {first, last};
    QList<TextRange> words = *found;
    for (TextRange& word : words)
        word.location += piece.location;
    if (std::equal(first, last, words.begin(), words.end()))
        return words;
    const qsizetype at = first - m_shown.begin();
    m_shown.erase(first, last);
    for (qsizetype i = 0; i < words.size(); ++i)
        m_shown.insert(at + i, words[i]);
    return words;
}

/// Of a paragraph that is longer than the screen, what the screen shows.
TextRange SpellingMarks::seenPart(const QTextBlock& block, const EditorPaint& paint) const
{
    const TextRange all{block.position(), block.length() - 1};
    if (all.length <= 4 * spellingPieceLength)
        return all;
    ParagraphLayout& layout = m_view.layout();
    const auto page = [&](QPointF point) {
        return (point - paint.origin) / paint.scale;
    };
    const qsizetype from = layout.positionAt(page(paint.clip.topLeft()));
    const qsizetype to = layout.positionAt(page(paint.clip.bottomRight()));
    return TextRange::between(std::clamp(from, all.location, all.end()),
                              std::clamp(to, all.location, all.end()));
}

void SpellingMarks::paintOverText(QPainter& painter, const EditorPaint& paint)
{
    if (!m_checker || !m_checker->isReady())
        return;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const TextRange visible = visibleText(m_view, paint);
    for (QTextBlock block = m_view.store().blockAt(visible.location);
         block.isValid() && block.position() <= visible.end(); block = block.next()) {
        QList<TextRange> words;
        for (const TextRange piece : spellingPieces(m_view.store(), block, seenPart(block, paint)))
            words += marksOf(piece);
        dropCode(words, block);
        for (const TextRange word : words) {
            if (m_typingAt && touches(word, *m_typingAt))
                continue;
            for (const QRectF& rect : markRects(m_view, paint, word))
                drawMark(painter, rect, paint.scale, m_view.look().misspelling);
        }
    }
    painter.restore();
}

void SpellingMarks::addToContextMenu(QMenu& menu, QPointF /*page*/, qsizetype position)
{
    if (m_spelling.dictionaries().isEmpty() || !m_note)
        return;
    for (const TextRange word : misspellingsIn({position, 0}))
        addSuggestions(menu, word);
    fillSpellingMenu(*menu.addMenu(tr("Spelling")), m_spelling, *m_note);
}

void SpellingMarks::addSuggestions(QMenu& menu, TextRange word)
{
    const QString text = m_view.store().text(word);
    const QStringList suggestions =
        m_view.isEditable() ? m_checker->suggestions(text) : QStringList();
    for (const QString& suggestion : suggestions) {
        QAction* action = menu.addAction(QString(suggestion).replace(u'&', QStringLiteral("&&")));
        QFont font = action->font();
        font.setStyleName({}); // which would decide
        font.setBold(true);
        action->setFont(font);
        connect(action, &QAction::triggered, this,
                [this, word, suggestion] { replaceWord(word, suggestion); });
    }
    if (suggestions.isEmpty())
        menu.addAction(tr("No Suggestions"))->setEnabled(false);
    menu.addSeparator();
    connect(menu.addAction(tr("Learn Word")), &QAction::triggered, this, [this, text] {
        if (const auto learned = m_spelling.personalWords().learn(text); !learned)
            qWarning("The word list can't be written: %ls",
                     qUtf16Printable(learned.error().text()));
    });
    connect(menu.addAction(tr("Ignore Word")), &QAction::triggered, this,
            [this, text] { m_spelling.personalWords().ignore(text); });
    menu.addSeparator();
}

void SpellingMarks::replaceWord(TextRange word, const QString& replacement)
{
    TextEdits edits;
    edits.name = tr("Correct Spelling");
    edits.replacements = {{word, replacement, word.location}};
    edits.selection = {word.location + replacement.size(), 0};
    apply(edits, m_view.gateway());
}

} // namespace orvane
