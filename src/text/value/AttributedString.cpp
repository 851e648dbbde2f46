// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/value/AttributedString.h"

namespace orvane {

AttributedString::AttributedString()
{
    m_paragraphs.append(1, {});
}

AttributedString::AttributedString(const QString& text, const SharedCharacterStyle& style,
                                   const SharedParagraphStyle& paragraphStyle)
    : m_text(text)
{
    m_characters.append(text.size(), style);
    m_paragraphs.append(text.size() + 1, paragraphStyle);
}

std::optional<AttributedString> AttributedString::fromRuns(QString text, CharacterRuns characters,
                                                           ParagraphRuns paragraphs)
{
    if (characters.length() != text.size() || paragraphs.length() != text.size() + 1)
        return std::nullopt;
    for (const auto& run : paragraphs.runs()) {
        if (run.end <= text.size() && text[run.end - 1] != u'\n')
            return std::nullopt;
    }
    AttributedString result;
    result.m_text = std::move(text);
    result.m_characters = std::move(characters);
    result.m_paragraphs = std::move(paragraphs);
    return result;
}

AttributedString AttributedString::object(TextAttachment attachment, CharacterStyle style)
{
    style.attachment = std::move(attachment);
    return AttributedString(QString(QChar(objectCharacter)), std::move(style));
}

const SharedCharacterStyle& AttributedString::characterStyle(qsizetype position) const
{
    Q_ASSERT(position >= 0 && position < length());
    return m_characters.runs()[m_characters.indexAt(position)].style;
}

const SharedParagraphStyle& AttributedString::paragraphStyle(qsizetype position) const
{
    Q_ASSERT(position >= 0 && position <= length());
    return m_paragraphs.runs()[m_paragraphs.indexAt(position)].style;
}

bool AttributedString::isParagraphStart(qsizetype position) const
{
    return position == 0 || m_text[position - 1] == u'\n';
}

TextRange AttributedString::paragraphRange(qsizetype position) const
{
    return paragraphsRange({position, 0});
}

TextRange AttributedString::paragraphsRange(TextRange range) const
{
    const qsizetype from =
        range.location == 0 ? 0 : m_text.lastIndexOf(u'\n', range.location - 1) + 1;
    const qsizetype lastTouched = range.isEmpty() ? range.location : range.end() - 1;
    const qsizetype newline = m_text.indexOf(u'\n', lastTouched);
    return TextRange::between(from, newline < 0 ? length() : newline + 1);
}

// The positions of whole paragraphs, counting the last paragraph's end as one.
TextRange AttributedString::paragraphPositions(TextRange range) const
{
    TextRange positions = paragraphsRange(range);
    if (positions.end() == length() && (positions.isEmpty() || m_text.back() != u'\n'))
        ++positions.length;
    return positions;
}

AttributedString AttributedString::sliced(TextRange range) const
{
    if (range == fullRange())
        return *this;
    AttributedString slice;
    slice.m_text = m_text.sliced(range.location, range.length);
    slice.m_characters.append(m_characters, range);
    slice.m_paragraphs.truncate(0);
    slice.m_paragraphs.append(m_paragraphs, {range.location, range.length + 1});
    return slice;
}

void AttributedString::replace(TextRange range, const AttributedString& insertion)
{
    Q_ASSERT(range.location >= 0 && range.length >= 0 && range.end() <= length());
    if (range.isEmpty() && insertion.isEmpty())
        return;
    const bool joinsParagraph = !isParagraphStart(range.location);
    const bool reachesEnd = range.end() == length();
    const SharedParagraphStyle joined = paragraphStyle(std::max<qsizetype>(0, range.location - 1));
    const SharedParagraphStyle own = paragraphStyle(range.end());
    const QString& inserted = insertion.m_text;

    ParagraphRuns paragraphs;
    if (!inserted.isEmpty()) {
        const qsizetype newline = inserted.indexOf(u'\n');
        const qsizetype head = newline < 0 ? inserted.size() : newline + 1;
        if (joinsParagraph)
            paragraphs.append(head, joined);
        else
            paragraphs.append(insertion.m_paragraphs, {0, head});
        paragraphs.append(insertion.m_paragraphs, TextRange::between(head, inserted.size()));
    }
    // What follows begins a paragraph of its own, or ends one that began before.
    SharedParagraphStyle following = own;
    const bool followsNewline = inserted.isEmpty() ? !joinsParagraph : inserted.back() == u'\n';
    if (!followsNewline)
        following = paragraphs.length() > 0 ? paragraphs.runs().last().style : joined;
    else if (reachesEnd && !inserted.isEmpty())
        following = insertion.paragraphStyle(inserted.size());
    const qsizetype newline = m_text.indexOf(u'\n', range.end());
    const qsizetype tail = (newline < 0 ? length() : newline) + 1;
    paragraphs.append(tail - range.end(), following);

    m_paragraphs.replace(TextRange::between(range.location, tail), paragraphs);
    m_characters.replace(range, insertion.m_characters);
    m_text.replace(range.location, range.length, inserted);
}

void AttributedString::replace(TextRange range, const QString& text,
                               const SharedCharacterStyle& style)
{
    replace(range, AttributedString(text, style, paragraphStyle(range.location)));
}

void AttributedString::insert(qsizetype position, const AttributedString& insertion)
{
    replace({position, 0}, insertion);
}

void AttributedString::remove(TextRange range)
{
    replace(range, AttributedString());
}

void AttributedString::append(const AttributedString& other)
{
    if (isEmpty() && !other.isEmpty())
        *this = other;
    else
        replace({length(), 0}, AttributedString(other));
}

void AttributedString::append(QStringView text, const SharedCharacterStyle& style,
                              const SharedParagraphStyle& paragraphStyle)
{
    if (text.isEmpty())
        return;
    const bool joinsParagraph = !isParagraphStart(length());
    const SharedParagraphStyle joined = this->paragraphStyle(length());
    const qsizetype newline = text.indexOf(u'\n');
    const qsizetype head = newline < 0 ? text.size() : newline + 1;
    m_paragraphs.truncate(length());
    m_paragraphs.append(head, joinsParagraph ? joined : paragraphStyle);
    m_paragraphs.append(text.size() - head + 1,
                        newline < 0 && joinsParagraph ? joined : paragraphStyle);
    m_characters.append(text.size(), style);
    m_text.append(text);
}

void AttributedString::setCharacterStyle(TextRange range, const SharedCharacterStyle& style)
{
    m_characters.transform(range, [&](const SharedCharacterStyle&) { return style; });
}

void AttributedString::setParagraphStyle(TextRange range, const SharedParagraphStyle& style)
{
    m_paragraphs.transform(paragraphPositions(range),
                           [&](const SharedParagraphStyle&) { return style; });
}

} // namespace orvane
