// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/html/HtmlParagraphs.h"

#include "text/layout/LineBreaker.h"
#include "text/rtf/ImportedList.h"

#include <algorithm>

namespace orvane {
namespace {

bool isBlank(QChar c)
{
    return c == u' ' || c == u'\t' || c == u'\n' || c == u'\r' || c == u'\f';
}

// Characters that mean something else in attributed text.
QString cleaned(QStringView text)
{
    QString result = text.toString();
    result.removeIf([](QChar c) {
        return c == QChar(objectCharacter) || c == u'\0' || c == u'\r' || c == u'\f' || c == u'\v';
    });
    result.replace(u'\u2029', QChar(lineSeparator));
    return result;
}

} // namespace

bool HtmlParagraphs::isAtLineStart() const
{
    return m_pending.isEmpty() || m_pending.text().back() == QChar(lineSeparator);
}

void HtmlParagraphs::append(QStringView text, const SharedCharacterStyle& style,
                            const SharedParagraphStyle& paragraph)
{
    if (m_pending.isEmpty()) {
        m_pendingStyle = paragraph;
        const auto level = std::exchange(m_itemLevel, std::nullopt);
        if (level && !m_marker.isEmpty()) {
            CharacterStyle markerStyle = *style;
            markerStyle.foreground = m_markerColor;
            markerStyle.link.clear();
            markerStyle.targetName.clear();
            m_pending.append(ImportedList::prefix(m_marker, *level), std::move(markerStyle));
            m_pendingStyle = shared(ImportedList::style(*paragraph, m_marker, *level));
        }
    }
    const auto isWord = [](QChar c) {
        return c.isLetterOrNumber();
    };
    if (std::exchange(m_isBehindAlternative, false) && isWord(text.front()) &&
        !m_pending.isEmpty() && isWord(m_pending.text().back()))
        m_pending.append(u" ", style);
    m_pending.append(text, style);
}

void HtmlParagraphs::collapsedText(QStringView text, const SharedCharacterStyle& style,
                                   const SharedParagraphStyle& paragraph)
{
    while (!text.isEmpty()) {
        const auto word = std::find_if_not(text.begin(), text.end(), isBlank);
        if (word != text.begin() && !m_hasBlank && !isAtLineStart()) {
            m_hasBlank = true;
            m_blankStyle = style;
        }
        const auto end = std::find_if(word, text.end(), isBlank);
        const QString letters = cleaned(QStringView(word, end));
        text = QStringView(end, text.end());
        if (letters.isEmpty())
            continue;
        if (std::exchange(m_hasBlank, false))
            append(u" ", m_blankStyle, paragraph);
        append(letters, style, paragraph);
    }
}

void HtmlParagraphs::preservedText(QStringView text, const SharedCharacterStyle& style,
                                   const SharedParagraphStyle& paragraph)
{
    if (std::exchange(m_hasBlank, false))
        append(u" ", m_blankStyle, paragraph);
    for (;;) {
        const qsizetype newline = text.indexOf(u'\n');
        const QString line = cleaned(newline < 0 ? text : text.first(newline));
        if (!line.isEmpty())
            append(line, style, paragraph);
        if (newline < 0)
            return;
        if (m_pending.isEmpty())
            append(QStringView(&lineSeparator, 1), style, paragraph);
        endBlock();
        text = text.sliced(newline + 1);
    }
}

void HtmlParagraphs::object(const SharedCharacterStyle& style,
                            const SharedParagraphStyle& paragraph)
{
    if (std::exchange(m_hasBlank, false))
        append(u" ", m_blankStyle, paragraph);
    append(QStringView(&objectCharacter, 1), style, paragraph);
}

void HtmlParagraphs::lineBreak(const SharedCharacterStyle& style,
                               const SharedParagraphStyle& paragraph)
{
    m_hasBlank = false;
    append(QStringView(&lineSeparator, 1), style, paragraph);
}

void HtmlParagraphs::pageBreak(const SharedCharacterStyle& style,
                               const SharedParagraphStyle& paragraph)
{
    if (m_table)
        return;
    endBlock();
    m_pendingStyle = paragraph;
    m_pending.append(QStringView(&pageBreakCharacter, 1), style);
    emitParagraph();
}

// A line break at the end of a block ends its last line and begins no other.
void HtmlParagraphs::endBlock()
{
    m_hasBlank = false;
    if (m_pending.isEmpty())
        return;
    if (m_pending.text().back() != QChar(lineSeparator))
        return emitParagraph();
    const SharedCharacterStyle style = m_pending.characterStyle(m_pending.length() - 1);
    m_pending.remove({m_pending.length() - 1, 1});
    if (m_pending.isEmpty() && !(m_table && m_table->isCellOpen())) {
        m_text.append(u"\n", style, m_pendingStyle);
        return;
    }
    emitParagraph();
}

void HtmlParagraphs::emitParagraph()
{
    AttributedString line = std::exchange(m_pending, {});
    if (m_table && m_table->isCellOpen())
        return m_table->appendLine(line, m_pendingStyle);
    line.append(u"\n", line.characterStyle(line.length() - 1));
    line.forEachCharacterRun(line.fullRange(), [&](TextRange run, const auto& style) {
        m_text.append(QStringView(line.text()).sliced(run.location, run.length), style,
                      m_pendingStyle);
    });
}

void HtmlParagraphs::beginItem(const QString& marker, int level,
                               const std::optional<RgbaColor>& color)
{
    m_marker = marker;
    m_markerColor = color;
    m_itemLevel = level;
}

bool HtmlParagraphs::replaceMarker(const QString& marker)
{
    if (!m_itemLevel || !m_pending.isEmpty())
        return false;
    m_marker = marker;
    return true;
}

void HtmlParagraphs::alternativeText(const QString& text, const SharedCharacterStyle& style,
                                     const SharedParagraphStyle& paragraph)
{
    if (text.isEmpty())
        return;
    m_isBehindAlternative = true;
    collapsedText(text, style, paragraph);
    m_isBehindAlternative = true;
}

void HtmlParagraphs::beginTable(const HtmlToken& token, const QUuid& id)
{
    endBlock();
    m_table = std::make_unique<HtmlTable>(token, id);
}

void HtmlParagraphs::endTable()
{
    endBlock();
    if (const auto table = std::exchange(m_table, nullptr))
        table->appendTo(m_text, m_styles, m_looks);
}

AttributedString HtmlParagraphs::finish()
{
    endTable();
    const bool endsInCell =
        !m_text.isEmpty() && m_text.paragraphStyle(m_text.length() - 1)->cell.has_value();
    if (!m_text.isEmpty() && !endsInCell)
        m_text.remove({m_text.length() - 1, 1});
    if (endsInCell)
        m_text.setParagraphStyle({m_text.length(), 0}, {});
    return std::move(m_text);
}

} // namespace orvane
