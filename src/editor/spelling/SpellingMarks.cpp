// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/spelling/SpellingMarks.h"

#include "editor/EditorView.h"
#include "editor/MarkGeometry.h"
#include "editor/TextEdits.h"
#include "text/ParagraphLayout.h"
#include "text/TextStore.h"

#include <QActionGroup>
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
    m_view.addExtension(this);
    connect(&m_view, &EditorView::textChanged, this, &SpellingMarks::onTextChanged);
    connect(&m_view, &EditorView::selectionChanged, this, &SpellingMarks::onSelectionChanged);
    connect(&m_spelling, &Spelling::settingsChanged, this, &SpellingMarks::updateChecker);
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

void SpellingMarks::setMarkColor(const QColor& color)
{
    m_markColor = color;
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
    m_checked.clear();
    m_view.viewport()->update();
}

void SpellingMarks::onTextChanged(const TextChange& change)
{
    const TextSelection selection = m_view.gateway().selection();
    const bool isTyping = change.lengthAfter > 0 && selection.isEmpty() &&
                          selection.position == change.location + change.lengthAfter;
    m_typingAt = isTyping ? std::optional(selection.position) : std::nullopt;
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

QList<TextRange> SpellingMarks::misspellingsIn(const QTextBlock& block) const
{
    QList<TextRange> misspelt;
    if (!m_checker || !m_checker->isReady())
        return misspelt;
    const QString text = block.text();
    if (!m_checked.contains(text))
        m_checked.insert(text, new QList<TextRange>(m_checker->misspellings(text)));
    const QList<TextRange> checked = *m_checked.object(text);
    if (checked.isEmpty())
        return misspelt;
    const QList<TextRange> code = m_codeSource ? m_codeSource(block) : QList<TextRange>();
    auto skip = code.begin();
    for (TextRange word : checked) {
        word.location += block.position();
        while (skip != code.end() && skip->end() <= word.location)
            ++skip;
        if (skip == code.end() || skip->location >= word.end())
            misspelt.append(word);
    }
    return misspelt;
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
        for (const TextRange word : misspellingsIn(block)) {
            if (m_typingAt && touches(word, *m_typingAt))
                continue;
            for (const QRectF& rect : markRects(m_view, paint, word))
                drawMark(painter, rect, paint.scale, m_markColor);
        }
    }
    painter.restore();
}

void SpellingMarks::addToContextMenu(QMenu& menu, QPointF /*page*/, qsizetype position)
{
    if (m_spelling.dictionaries().isEmpty() || !m_note)
        return;
    for (const TextRange word : misspellingsIn(m_view.store().blockAt(position))) {
        if (touches(word, position))
            addSuggestions(menu, word);
    }
    addLanguages(menu);
}

void SpellingMarks::addSuggestions(QMenu& menu, TextRange word)
{
    const QString text = m_view.store().text(word);
    const QStringList suggestions =
        m_view.isEditable() ? m_checker->suggestions(text) : QStringList();
    for (const QString& suggestion : suggestions) {
        QAction* action = menu.addAction(QString(suggestion).replace(u'&', QStringLiteral("&&")));
        QFont font = action->font();
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

void SpellingMarks::addLanguages(QMenu& menu)
{
    QMenu* languages = menu.addMenu(tr("Spelling"));
    QAction* enabled = languages->addAction(tr("Check Spelling"));
    enabled->setCheckable(true);
    enabled->setChecked(m_spelling.isEnabled());
    connect(enabled, &QAction::toggled, &m_spelling, &Spelling::setEnabled);
    languages->addSeparator();
    auto* group = new QActionGroup(languages);
    const QString current = m_spelling.languageOf(*m_note);
    const auto add = [&](const QString& name, const QString& language) {
        QAction* action = languages->addAction(name);
        action->setCheckable(true);
        action->setChecked(language == current);
        action->setEnabled(m_spelling.isEnabled());
        group->addAction(action);
        connect(action, &QAction::triggered, &m_spelling,
                [this, note = *m_note, language] { m_spelling.setLanguage(note, language); });
    };
    for (const DictionaryFiles& files : m_spelling.dictionaries())
        add(Spelling::displayName(files.language), files.language);
    add(tr("None"), {});
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
