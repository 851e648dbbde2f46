// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/rtf/RtfInterpreter.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

constexpr double asideIndent = 24; // points
/// The yellow of a marker, thin enough for black and for white letters.
constexpr RgbaColor asideTint{0.98, 0.78, 0.24, 0.18};
constexpr qsizetype nameDigits = 12;
constexpr double ruleRoom = 12; // points above the first footnote
/// The size of a footnote's words beside that of the text; what is up to the second is left alone.
constexpr double footnoteScale = 0.8;
constexpr double largestFootnoteScale = 0.85;

// One paragraph, whatever it was made of.
AttributedString asLines(AttributedString text)
{
    const auto isBlank = [&](qsizetype at) {
        return text.text()[at].isSpace() && text.text()[at] != QChar(objectCharacter);
    };
    while (!text.isEmpty() && isBlank(text.length() - 1))
        text.remove({text.length() - 1, 1});
    qsizetype blanks = 0;
    while (blanks < text.length() && isBlank(blanks))
        ++blanks;
    text.remove({0, blanks});
    AttributedString lines;
    text.forEachCharacterRun(text.fullRange(),
                             [&](TextRange run, const SharedCharacterStyle& style) {
                                 QString words = text.text().sliced(run.location, run.length);
                                 words.replace(u'\n', QChar(lineSeparator)).remove(u'\f');
                                 lines.append(words, style);
                             });
    return lines;
}

CharacterStyle plainStyleOf(const AttributedString& text)
{
    CharacterStyle style;
    if (!text.isEmpty())
        style.font = text.characterStyle(0)->font;
    if (style.font) {
        style.font->weight = 400;
        style.font->italic = false;
    }
    return style;
}

void makeSmaller(AttributedString& words, double textSize)
{
    const double size = plainStyleOf(words).font.value_or(TextFont()).size;
    if (words.isEmpty() || size <= largestFootnoteScale * textSize)
        return;
    const double factor = footnoteScale * textSize / size;
    words.modifyCharacterStyles(words.fullRange(), [&](CharacterStyle& style) {
        if (style.font)
            style.font->size = std::max(0.5, std::round(style.font->size * factor * 2) / 2);
    });
}

void appendLines(AttributedString& target, const AttributedString& lines,
                 const SharedParagraphStyle& paragraph)
{
    lines.forEachCharacterRun(lines.fullRange(), [&](TextRange run,
                                                     const SharedCharacterStyle& style) {
        target.append(QStringView(lines.text()).sliced(run.location, run.length), style, paragraph);
    });
}

} // namespace

void RtfInterpreter::beginAside(AsideKind kind)
{
    const RtfDestination present = state().destination;
    const bool isWithinText = present == RtfDestination::body ||
                              (kind == AsideKind::textBox && present == RtfDestination::shape);
    if (!isWithinText || m_aside || !m_deepDestinations.empty() || !state().characters.isShown())
        return skipGroup();
    QString name;
    const double textSize = currentStyle()->font.value_or(TextFont()).size;
    if (kind == AsideKind::footnote) {
        if (m_isPageBreak)
            endParagraph();
        name = u"footnote-"_s + m_newId().toString(QUuid::Id128).first(nameDigits);
        CharacterStyle style = *currentStyle();
        style.baselineShift = BaselineShift::superscript;
        style.link = u'#' + name;
        style.targetName = name + u"-reference"_s;
        m_builder.text(QString::number(m_footnotes.size() + 1), style);
    }
    m_aside = std::make_unique<Aside>(Aside{
        kind, m_states.size(), name, textSize,
        std::exchange(m_builder, RtfBuilder(m_inputSize, m_newId)), std::exchange(m_listMarker, {}),
        std::exchange(m_isPageBreak, false), std::exchange(m_hasPageToBegin, false)});
    state().destination = RtfDestination::body;
    state().characters = {};
    state().paragraph = QSharedDataPointer<RtfParagraphFormat>(new RtfParagraphFormat);
}

void RtfInterpreter::endAside()
{
    const std::unique_ptr<Aside> aside = std::exchange(m_aside, nullptr);
    AttributedString words = asLines(m_builder.finish(endingParagraphStyle()));
    m_builder = std::move(aside->outer);
    m_listMarker = aside->listMarker;
    m_isPageBreak = aside->isPageBreak;
    m_hasPageToBegin = aside->hasPageToBegin;
    switch (aside->kind) {
    case AsideKind::footnote:
        makeSmaller(words, aside->textSize);
        m_footnotes.append({aside->name, std::move(words)});
        ++account.footnotes;
        return;
    case AsideKind::comment: {
        const QString author = std::exchange(m_commentAuthor, {});
        ++account.comments;
        return addMarked(
            author.isEmpty()
                ? QCoreApplication::translate("RtfAsides", "Comment:")
                : QCoreApplication::translate("RtfAsides", "Comment by %1:").arg(author),
            words);
    }
    case AsideKind::textBox:
        if (words.isEmpty())
            return;
        ++account.textBoxes;
        return addMarked(QCoreApplication::translate("RtfAsides", "Text box:"), words);
    }
}

void RtfInterpreter::addMarked(const QString& label, const AttributedString& words)
{
    CharacterStyle style = plainStyleOf(words);
    if (words.isEmpty())
        style.font = currentStyle()->font;
    if (style.font)
        style.font->italic = true;
    AttributedString marked(label, style);
    if (!words.isEmpty()) {
        marked.append(u" ", style);
        appendLines(marked, words, {});
    }
    m_marked.append(std::move(marked));
}

// Behind the paragraph that they belong to; behind the table, if they stand in one.
void RtfInterpreter::insertMarked()
{
    if (m_marked.isEmpty() || m_aside)
        return;
    ParagraphStyle paragraph;
    paragraph.headIndent = paragraph.firstLineHeadIndent = asideIndent;
    paragraph.background = asideTint;
    paragraph.frame = ParagraphFrame::bar;
    for (const AttributedString& marked : std::exchange(m_marked, {})) {
        marked.forEachCharacterRun(
            marked.fullRange(), [&](TextRange run, const SharedCharacterStyle& style) {
                m_builder.text(QStringView(marked.text()).sliced(run.location, run.length), style);
            });
        m_builder.endParagraph(paragraph, marked.characterStyle(marked.length() - 1));
    }
}

void RtfInterpreter::insertPlaceholder(const QString& words)
{
    ++account.pictures;
    CharacterStyle style = *currentStyle();
    if (style.font)
        style.font->italic = true;
    if (m_isPageBreak)
        endParagraph();
    m_placeholderLength = m_builder.isAtParagraphStart() ? words.size() : 0;
    m_builder.text(words, style);
}

void RtfInterpreter::appendFootnotes(AttributedString& text) const
{
    int number = 0;
    for (const auto& [name, words] : m_footnotes) {
        if (!text.isEmpty() && !text.text().endsWith(u'\n')) {
            CharacterStyle end;
            end.font = text.characterStyle(text.length() - 1)->font;
            text.append(u"\n", end);
        }
        ParagraphStyle paragraph;
        if (number == 0) {
            paragraph.frame = ParagraphFrame::ruleAbove;
            paragraph.spacingBefore = ruleRoom;
        }
        text.setParagraphStyle({text.length(), 0}, {});
        CharacterStyle style = plainStyleOf(words);
        CharacterStyle back = style;
        back.link = u'#' + name + u"-reference"_s;
        back.targetName = name;
        text.append(QString::number(++number) + u'.', back, paragraph);
        text.append(u" ", style);
        appendLines(text, words, {});
    }
}

} // namespace orvane
