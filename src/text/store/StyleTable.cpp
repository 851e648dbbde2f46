// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/store/StyleTable.h"

#include "text/value/LayoutUnits.h"

#include <algorithm>
#include <cmath>

namespace orvane {

template <typename T>
static std::size_t qHash(const SharedValue<T>& value, std::size_t seed = 0) noexcept
{
    return qHash(*value, seed);
}

namespace {

constexpr int styleNumber = QTextFormat::UserProperty + 1;
constexpr int largestFontPixels = 4000;

QTextCharFormat::UnderlineStyle underlineStyle(TextLine line)
{
    switch (line) {
    case TextLine::none:
        return QTextCharFormat::NoUnderline;
    case TextLine::dotted:
        return QTextCharFormat::DotLine;
    case TextLine::dashed:
        return QTextCharFormat::DashUnderline;
    case TextLine::wavy:
        return QTextCharFormat::WaveUnderline;
    case TextLine::single:
    case TextLine::thick:
    case TextLine::doubled:
        break;
    }
    return QTextCharFormat::SingleUnderline;
}

} // namespace

void setFont(QTextCharFormat& format, const TextFont& font)
{
    if (!font.family.isEmpty())
        format.setFontFamilies({font.family});
    setFontSize(format, font.size);
    format.setFontWeight(QFont::Weight(std::clamp(font.weight, 1, 1000)));
    format.setFontItalic(font.italic);
    format.setFontHintingPreference(QFont::PreferNoHinting);
}

void setFontSize(QTextCharFormat& format, double points)
{
    const double pixels = std::round(points * layoutUnitsPerPoint);
    format.setProperty(QTextFormat::FontPixelSize,
                       int(std::clamp(pixels, 1.0, double(largestFontPixels))));
}

template <typename Style>
int StyleTable::Numbered<Style>::numberOf(const Style& style)
{
    const auto known = numbers.constFind(style);
    if (known != numbers.constEnd())
        return *known;
    const int number = int(styles.size());
    styles.push_back(style);
    numbers.insert(style, number);
    return number;
}

StyleTable::StyleTable()
{
    clear();
}

void StyleTable::clear()
{
    m_characters = {};
    m_paragraphs = {};
    // Number 0, which every format without a number reads as.
    m_characters.numberOf({});
    m_paragraphs.numberOf({});
}

QTextCharFormat StyleTable::formatFor(const SharedCharacterStyle& style)
{
    QTextCharFormat format;
    if (const int number = m_characters.numberOf(style); number != 0)
        format.setProperty(styleNumber, number);
    if (style->font)
        setFont(format, *style->font);
    if (style->foreground)
        format.setForeground(style->foreground->toQColor());
    if (style->underline != TextLine::none)
        format.setUnderlineStyle(underlineStyle(style->underline));
    if (style->strikethrough != TextLine::none)
        format.setFontStrikeOut(true);
    if (style->baselineShift == BaselineShift::superscript)
        format.setVerticalAlignment(QTextCharFormat::AlignSuperScript);
    else if (style->baselineShift == BaselineShift::subscript)
        format.setVerticalAlignment(QTextCharFormat::AlignSubScript);
    return format;
}

QTextBlockFormat StyleTable::formatFor(const SharedParagraphStyle& style)
{
    QTextBlockFormat format;
    if (const int number = m_paragraphs.numberOf(style); number != 0)
        format.setProperty(styleNumber, number);
    return format;
}

const SharedCharacterStyle& StyleTable::styleOf(const QTextCharFormat& format) const
{
    return m_characters.styles[std::size_t(format.intProperty(styleNumber))];
}

const SharedParagraphStyle& StyleTable::styleOf(const QTextBlockFormat& format) const
{
    return m_paragraphs.styles[std::size_t(format.intProperty(styleNumber))];
}

} // namespace orvane
