// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/html/HtmlTokenizer.h"

#include "text/html/HtmlEntities.h"

#include <algorithm>
#include <array>

namespace orvane {
namespace {

constexpr qsizetype longestName = 32;
constexpr qsizetype mostAttributes = 64;

bool isLetter(char16_t c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

bool isBlank(char16_t c)
{
    return c == u' ' || c == u'\t' || c == u'\n' || c == u'\r' || c == u'\f';
}

bool holdsRawText(QStringView element)
{
    static constexpr std::array<QStringView, 9> names{u"script",   u"style",    u"title",
                                                      u"textarea", u"xmp",      u"iframe",
                                                      u"noembed",  u"noframes", u"noscript"};
    return std::ranges::find(names, element) != names.end();
}

} // namespace

QString HtmlToken::attribute(QStringView wanted) const
{
    for (const Attribute& attribute : attributes) {
        if (attribute.name.compare(wanted, Qt::CaseInsensitive) == 0)
            return decodeHtmlEntities(attribute.value);
    }
    return {};
}

char16_t HtmlTokenizer::at(qsizetype offset) const
{
    const qsizetype place = m_position + offset;
    return place < m_html.size() ? m_html[place].unicode() : u'\0';
}

bool HtmlTokenizer::beginsTag() const
{
    const char16_t next = at(1);
    return isLetter(next) || next == u'!' || next == u'?' || (next == u'/' && isLetter(at(2)));
}

HtmlToken HtmlTokenizer::next()
{
    while (m_position < m_html.size()) {
        if (at(0) == u'<' && beginsTag()) {
            if (at(1) == u'!' || at(1) == u'?') {
                skipDeclaration();
                continue;
            }
            return tag();
        }
        qsizetype end = m_html.indexOf(u'<', m_position + 1);
        if (end < 0)
            end = m_html.size();
        HtmlToken token;
        token.kind = HtmlToken::Kind::text;
        token.text = m_html.sliced(m_position, end - m_position);
        m_position = end;
        return token;
    }
    return {};
}

void HtmlTokenizer::skipDeclaration()
{
    const bool isComment = m_html.sliced(m_position).startsWith(u"<!--");
    const QStringView closing = isComment ? QStringView(u"-->") : QStringView(u">");
    // "<!-->" is a comment that is closed at once.
    const qsizetype end = m_html.indexOf(closing, m_position + 2);
    m_position = end < 0 ? m_html.size() : end + closing.size();
}

HtmlToken HtmlTokenizer::tag()
{
    HtmlToken token;
    const bool isEnd = at(1) == u'/';
    token.kind = isEnd ? HtmlToken::Kind::endTag : HtmlToken::Kind::startTag;
    m_position += isEnd ? 2 : 1;
    const qsizetype start = m_position;
    while (m_position < m_html.size() && !isBlank(at(0)) && at(0) != u'>' && at(0) != u'/')
        ++m_position;
    token.name =
        m_html.sliced(start, std::min(m_position - start, longestName)).toString().toLower();
    readAttributes(token.attributes);
    if (!isEnd && holdsRawText(token.name))
        skipRawText(token.name);
    return token;
}

void HtmlTokenizer::readAttributes(QList<HtmlToken::Attribute>& attributes)
{
    for (;;) {
        skipBlanks();
        const char16_t c = at(0);
        if (m_position >= m_html.size())
            return;
        if (c == u'>') {
            ++m_position;
            return;
        }
        if (c == u'/') {
            ++m_position;
            continue;
        }
        const qsizetype start = m_position++;
        while (m_position < m_html.size() && !isBlank(at(0)) && at(0) != u'=' && at(0) != u'>' &&
               at(0) != u'/')
            ++m_position;
        HtmlToken::Attribute attribute{m_html.sliced(start, m_position - start), {}};
        skipBlanks();
        if (at(0) == u'=') {
            ++m_position;
            attribute.value = attributeValue();
        }
        if (attributes.size() < mostAttributes)
            attributes.append(attribute);
    }
}

QStringView HtmlTokenizer::attributeValue()
{
    skipBlanks();
    const char16_t quote = at(0);
    if (quote == u'"' || quote == u'\'') {
        const qsizetype start = m_position + 1;
        const qsizetype end = m_html.indexOf(QChar(quote), start);
        const qsizetype stop = end < 0 ? m_html.size() : end;
        m_position = std::min(stop + 1, m_html.size());
        return m_html.sliced(start, stop - start);
    }
    const qsizetype start = m_position;
    while (m_position < m_html.size() && !isBlank(at(0)) && at(0) != u'>')
        ++m_position;
    return m_html.sliced(start, m_position - start);
}

void HtmlTokenizer::skipRawText(const QString& element)
{
    const QString closing = QStringLiteral("</") + element;
    const qsizetype end = m_html.indexOf(closing, m_position, Qt::CaseInsensitive);
    m_position = end < 0 ? m_html.size() : end;
}

void HtmlTokenizer::skipBlanks()
{
    while (m_position < m_html.size() && isBlank(at(0)))
        ++m_position;
}

} // namespace orvane
