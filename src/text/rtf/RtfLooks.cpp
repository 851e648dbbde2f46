// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// The part of RtfInterpreter that makes attributes of the properties in force.
#include "text/rtf/ImportedList.h"
#include "text/rtf/RtfInterpreter.h"

namespace orvane {

using namespace Qt::StringLiterals;

const SharedCharacterStyle& RtfInterpreter::currentStyle()
{
    const RtfCharacterFormat& format = state().characters;
    if (m_styledFormat == format && m_style.identity())
        return m_style;
    const bool mirrors = format.rightToLeft;
    const int halfPoints = mirrors && format.rightToLeftHalfPoints > 0
                               ? format.rightToLeftHalfPoints
                               : format.halfPoints;
    const bool isBold = mirrors ? format.rightToLeftBold.value_or(format.bold) : format.bold;
    const bool isItalic =
        mirrors ? format.rightToLeftItalic.value_or(format.italic) : format.italic;
    CharacterStyle style;
    style.font =
        TextFont{fonts.value(currentFont()).family, halfPoints / 2.0, isBold ? 700 : 400, isItalic};
    style.foreground = colorOf(format.foreground);
    style.background = colorOf(format.background);
    style.underline = TextLine(format.underline);
    style.strikethrough = TextLine(format.strikethrough);
    style.baselineShift = format.baselineShift;
    style.link = m_links.value(format.link);
    m_style = m_characterStyles.intern(style, m_style);
    m_styledFormat = format;
    return m_style;
}

// The level of a list item may stand behind its marker, so the marker waits for the end.
ParagraphStyle RtfInterpreter::endingParagraphStyle()
{
    ParagraphStyle style = currentParagraphStyle();
    const RtfParagraphFormat& format = *std::as_const(state().paragraph);
    QString number = numberedMarker(format);
    if (format.list > 0 && !m_builder.isAtLineStart()) {
        const QString counted = lists.nextMarker(format.list, format.listLevel);
        if (!m_hasListText)
            number = counted;
    }
    m_hasListText = false;
    QString marker = std::exchange(m_listMarker, {});
    const RtfCharacterFormat markerFormat = marker.isEmpty() ? state().characters : m_markerFormat;
    if (marker.isEmpty())
        marker = number;
    if (marker.isEmpty())
        return style;
    const bool isItem = (format.list > 0 || format.numbering >= 0) && !m_builder.isBehindLine();
    const int level = format.list > 0         ? format.listLevel
                      : format.numbering >= 0 ? m_numberings[format.numbering].level
                                              : 0;
    m_builder.textBefore(ImportedList::prefix(marker, level), markerStyle(markerFormat));
    return isItem ? ImportedList::style(std::move(style), marker, level) : style;
}

// Its font is that of the text: markers name fonts of pictures, and often no size.
CharacterStyle RtfInterpreter::markerStyle(const RtfCharacterFormat& format)
{
    const CharacterStyle first = *m_builder.lineStyle(currentStyle());
    CharacterStyle style;
    style.font = first.font;
    if (style.font) {
        style.font->weight = format.bold ? 700 : 400;
        style.font->italic = format.italic;
    }
    style.foreground = colorOf(format.foreground);
    style.background = colorOf(format.background);
    return style;
}

std::optional<RgbaColor> RtfInterpreter::colorOf(int index) const
{
    const QRgb found = color(index);
    if (qAlpha(found) == 0)
        return std::nullopt;
    return RgbaColor::fromQColor(QColor::fromRgba(found));
}

QString RtfInterpreter::numberedMarker(const RtfParagraphFormat& format)
{
    if (format.numbering < 0) {
        m_lastNumbering = -1;
        return {};
    }
    const RtfNumbering& numbers = m_numberings[format.numbering];
    if (numbers.isUnmarked || m_builder.isAtLineStart())
        return {};
    const bool continues = std::exchange(m_lastNumbering, format.numbering) == format.numbering;
    m_lastNumber = continues ? m_lastNumber + 1 : numbers.start;
    if (numbers.isBullet)
        return numbers.before.isEmpty() ? u"•"_s : numbers.before;
    return numbers.before + ImportedList::numberText(numbers.kind, m_lastNumber) + numbers.after;
}

ParagraphStyle RtfInterpreter::currentParagraphStyle() const
{
    const RtfParagraphFormat& format = *std::as_const(m_states.back().paragraph);
    ParagraphStyle style;
    style.alignment = format.alignment;
    style.direction = format.direction;
    style.headIndent = format.leftIndent / twipsPerPoint;
    style.firstLineHeadIndent = (format.leftIndent + format.firstIndent) / twipsPerPoint;
    style.tailIndent = -format.rightIndent / twipsPerPoint + 0.0;
    style.tabStops = format.tabs;
    style.defaultTabInterval = defaultTab / twipsPerPoint;
    if (format.lineSpacing != 0 && format.lineSpacingIsMultiple)
        style.lineHeightMultiple = std::abs(format.lineSpacing) / 240.0;
    else if (format.lineSpacing != 0)
        style.minimumLineHeight = std::abs(format.lineSpacing) / twipsPerPoint;
    if (format.lineSpacing < 0 && !format.lineSpacingIsMultiple)
        style.maximumLineHeight = style.minimumLineHeight;
    style.spacingBefore = format.spaceBefore / twipsPerPoint;
    style.spacingAfter = format.spaceAfter / twipsPerPoint;
    style.hyphenationFactor = format.hyphenates ? 1 : 0;
    style.keepLinesTogether = format.keepsTogether;
    style.keepWithNext = format.keepsWithNext;
    style.widowControl = format.controlsWidows;
    style.background = colorOf(format.background);
    constexpr int left = 1;
    constexpr int top = 2;
    constexpr int allRound = 15;
    style.frame = format.borders == left       ? ParagraphFrame::bar
                  : format.borders == top      ? ParagraphFrame::ruleAbove
                  : format.borders == allRound ? ParagraphFrame::dashed
                                               : ParagraphFrame::none;
    return style;
}

} // namespace orvane
