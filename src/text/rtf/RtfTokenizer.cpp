// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/rtf/RtfTokenizer.h"

#include <QtGlobal>

#include <algorithm>
#include <limits>

namespace orvane {
namespace {

bool isLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

int hexValue(char c)
{
    if (isDigit(c))
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

bool endsText(char c)
{
    return c == '\\' || c == '{' || c == '}' || c == '\r' || c == '\n' || c == '\0';
}

} // namespace

RtfToken RtfTokenizer::next()
{
    if (m_pendingBinary > 0) {
        const qsizetype size = std::min(m_pendingBinary, m_bytes.size() - m_position);
        m_pendingBinary = 0;
        RtfToken token{RtfToken::Kind::binary, m_bytes.sliced(m_position, size)};
        m_position += size;
        return token;
    }
    while (m_position < m_bytes.size()) {
        const char c = m_bytes[m_position];
        if (c == '\r' || c == '\n' || c == '\0') {
            ++m_position;
            continue;
        }
        if (c == '{' || c == '}') {
            ++m_position;
            return {c == '{' ? RtfToken::Kind::groupStart : RtfToken::Kind::groupEnd};
        }
        if (c == '\\') {
            ++m_position;
            return control();
        }
        const auto rest = m_bytes.sliced(m_position);
        const auto stop = std::find_if(rest.begin(), rest.end(), endsText);
        const qsizetype size = stop - rest.begin();
        m_position += size;
        return {RtfToken::Kind::text, rest.first(size)};
    }
    return {};
}

RtfToken RtfTokenizer::control()
{
    if (m_position >= m_bytes.size())
        return {};
    const char c = m_bytes[m_position];
    if (isLetter(c))
        return word();
    if (c == '\'')
        return hexByte();
    RtfToken token{RtfToken::Kind::symbol, m_bytes.sliced(m_position, 1)};
    ++m_position;
    if (c == '\r' && m_position < m_bytes.size() && m_bytes[m_position] == '\n')
        ++m_position;
    return token;
}

RtfToken RtfTokenizer::word()
{
    const qsizetype start = m_position;
    while (m_position < m_bytes.size() && isLetter(m_bytes[m_position]))
        ++m_position;
    RtfToken token{RtfToken::Kind::word, m_bytes.sliced(start, m_position - start)};
    qsizetype digits = m_position;
    const bool negative = digits < m_bytes.size() && m_bytes[digits] == '-';
    if (negative)
        ++digits;
    if (digits < m_bytes.size() && isDigit(m_bytes[digits])) {
        qint64 value = 0;
        constexpr qint64 limit = std::numeric_limits<int>::max();
        for (; digits < m_bytes.size() && isDigit(m_bytes[digits]); ++digits)
            value = std::min(limit, value * 10 + (m_bytes[digits] - '0'));
        token.parameter = int(negative ? -value : value);
        token.hasParameter = true;
        m_position = digits;
    }
    if (m_position < m_bytes.size() && m_bytes[m_position] == ' ')
        ++m_position;
    if (token.text == "bin" && token.parameter > 0)
        m_pendingBinary = token.parameter;
    return token;
}

RtfToken RtfTokenizer::hexByte()
{
    ++m_position;
    RtfToken token{RtfToken::Kind::byte};
    for (int i = 0; i < 2 && m_position < m_bytes.size(); ++i) {
        const int digit = hexValue(m_bytes[m_position]);
        if (digit < 0)
            break;
        token.parameter = token.parameter * 16 + digit;
        token.hasParameter = true;
        ++m_position;
    }
    return token;
}

} // namespace orvane
