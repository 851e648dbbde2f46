// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/rtf/RtfText.h"

#include <array>

namespace orvane {
namespace {

// Code page 1252 from 0x80 to 0x9F; 0 where it has no character.
constexpr std::array<char16_t, 32> western{
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178,
};

void appendByte(QByteArray& rtf, uchar byte)
{
    constexpr char digits[] = "0123456789abcdef";
    rtf.append("\\'");
    rtf.append(digits[byte >> 4]);
    rtf.append(digits[byte & 15]);
}

void appendUnicode(QByteArray& rtf, char16_t unit)
{
    appendRtfWord(rtf, "\\u", qint16(unit));
    const auto known = std::find(western.begin(), western.end(), unit);
    if (known != western.end())
        appendByte(rtf, uchar(0x80 + (known - western.begin())));
    else
        rtf.append('?');
}

void appendSpecial(QByteArray& rtf, char16_t unit)
{
    switch (unit) {
    case u'\\':
    case u'{':
    case u'}':
        rtf.append('\\');
        rtf.append(char(unit));
        return;
    case u'\t':
        rtf.append("\\tab ");
        return;
    case u'\f':
        rtf.append("\\page ");
        return;
    case u'\u2028':
        rtf.append("\\line ");
        return;
    default:
        break;
    }
    if (unit < 0x20 || (unit >= 0xA0 && unit <= 0xFF))
        appendByte(rtf, uchar(unit));
    else
        appendUnicode(rtf, unit);
}

bool isSpecial(QChar c)
{
    const char16_t unit = c.unicode();
    return unit < 0x20 || unit > 0x7E || unit == u'\\' || unit == u'{' || unit == u'}';
}

} // namespace

void appendRtfText(QByteArray& rtf, QStringView text)
{
    auto from = text.begin();
    while (from != text.end()) {
        const auto special = std::find_if(from, text.end(), isSpecial);
        const qsizetype plain = special - from;
        const qsizetype size = rtf.size();
        rtf.resize(size + plain);
        std::transform(from, special, rtf.begin() + size,
                       [](QChar c) { return char(c.unicode()); });
        from = special;
        if (from != text.end())
            appendSpecial(rtf, (from++)->unicode());
    }
}

void appendRtfWord(QByteArray& rtf, QByteArrayView word, int number)
{
    std::array<char, 12> digits;
    char* at = digits.data() + digits.size();
    unsigned rest = number < 0 ? 0U - unsigned(number) : unsigned(number);
    do {
        *--at = char('0' + rest % 10);
        rest /= 10;
    } while (rest > 0);
    if (number < 0)
        *--at = '-';
    rtf.append(word);
    rtf.append(at, digits.data() + digits.size() - at);
}

} // namespace orvane
