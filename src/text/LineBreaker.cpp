// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/LineBreaker.h"

#include "text/LayoutUnits.h"

#include <QFontMetricsF>
#include <QTextDocument>

#include <algorithm>
#include <optional>
#include <private/qtextengine_p.h>

namespace orvane {

namespace {

constexpr qreal u = layoutUnitsPerPoint;
constexpr qreal pageBreakHeight = 28 * u;
constexpr qreal narrowestLine = 8 * u;
/// In UTF-16 units; more than any line holds.
constexpr qsizetype longWord = 4'000;
/// Lines are as high as a whole number of pixels at the usual zoom of 1.25: so they stand at equal
/// distances, and what is below a new line moves by whole pixels.
constexpr qreal lineGrid = 0.8 * u;
/// Keeps a stored number that makes no sense from leading to positions that can't be drawn.
constexpr qreal largestLength = 20000;

qreal units(double points)
{
    return std::clamp(points, -largestLength, largestLength) * u;
}

Qt::Alignment alignmentOf(TextAlignment alignment, bool rightToLeft)
{
    switch (alignment) {
    case TextAlignment::left:
        return Qt::AlignLeft;
    case TextAlignment::center:
        return Qt::AlignHCenter;
    case TextAlignment::right:
        return Qt::AlignRight;
    case TextAlignment::justified:
        return Qt::AlignJustify;
    case TextAlignment::natural:
        break;
    }
    return rightToLeft ? Qt::AlignRight : Qt::AlignLeft;
}

Qt::LayoutDirection directionOf(WritingDirection direction)
{
    switch (direction) {
    case WritingDirection::leftToRight:
        return Qt::LeftToRight;
    case WritingDirection::rightToLeft:
        return Qt::RightToLeft;
    case WritingDirection::natural:
        break;
    }
    return Qt::LayoutDirectionAuto;
}

QTextOption::TabType tabTypeOf(TabAlignment alignment)
{
    switch (alignment) {
    case TabAlignment::left:
        return QTextOption::LeftTab;
    case TabAlignment::center:
        return QTextOption::CenterTab;
    case TabAlignment::right:
        return QTextOption::RightTab;
    case TabAlignment::decimal:
        break;
    }
    return QTextOption::DelimiterTab;
}

/// Tab positions count from the margin, while a line counts from where it begins.
QList<QTextOption::Tab> tabsFrom(const ParagraphStyle& style, qreal lineStart)
{
    QList<QTextOption::Tab> tabs;
    for (const TextTab& stop : style.tabStops) {
        const qreal position = units(stop.location) - lineStart;
        if (position > 0)
            tabs.append(QTextOption::Tab(position, tabTypeOf(stop.alignment), u'.'));
    }
    const qreal interval = units(style.defaultTabInterval);
    // The layout knows one interval from the line's own start, so the stops after the last one
    // are spelled out where the line begins elsewhere or stops come first.
    if (interval >= u && (lineStart != 0 || !tabs.isEmpty())) {
        const qreal from = std::max(
            lineStart, style.tabStops.isEmpty() ? 0 : units(style.tabStops.last().location));
        qreal next = (std::floor(from / interval) + 1) * interval;
        for (int i = 0; i < 40; ++i, next += interval)
            tabs.append(QTextOption::Tab(next - lineStart, QTextOption::LeftTab));
    }
    return tabs;
}

QTextOption optionFor(const ParagraphStyle& style, const LineSettings& settings, bool rightToLeft)
{
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    option.setAlignment(alignmentOf(style.alignment, rightToLeft));
    option.setTextDirection(directionOf(style.direction));
    const double interval =
        style.defaultTabInterval > 0 ? style.defaultTabInterval : settings.tabInterval;
    option.setTabStopDistance(std::max(u, units(interval)));
    return option;
}

qreal lineHeightFor(qreal natural, const ParagraphStyle& style, qreal stretch)
{
    qreal height = natural * stretch;
    if (style.lineHeightMultiple > 0)
        height *= std::min(style.lineHeightMultiple, 100.0);
    height = std::max(1.0, std::round(height / lineGrid)) * lineGrid;
    if (style.minimumLineHeight > 0)
        height = std::max(height, units(style.minimumLineHeight));
    if (style.maximumLineHeight > 0)
        height = std::min(height, units(style.maximumLineHeight));
    return height;
}

constexpr qsizetype longestMarker = 12;
constexpr qreal widestOverhang = 16 * u; // every column has a wider margin

/// How many characters of a list's item stand before its text: tabs, the marker, a space. 0 where
/// there is no marker.
int markerLength(const QTextBlock& block, const ParagraphStyle& style)
{
    if (style.textLists.isEmpty() || style.headIndent <= 0 ||
        style.alignment == TextAlignment::center || style.alignment == TextAlignment::right)
        return 0;
    const QString text = block.text();
    qsizetype tabs = 0;
    while (tabs < text.size() && text.at(tabs) == u'\t')
        ++tabs;
    const qsizetype space = text.indexOf(u' ', tabs);
    return space > tabs && space - tabs <= longestMarker ? int(space) + 1 : 0;
}

/// Finds lines that stand within a word so long that no line holds it. To break such a line at a
/// word, the toolkit looks through the word to its end, for each line anew, and then breaks it
/// anywhere after all; so it is told at once.
class LongWords {
public:
    explicit LongWords(const QTextLayout& layout)
        : m_attributes(layout.engine()->attributes())
        , m_length(layout.engine()->layoutData->string.size())
    {}

    [[nodiscard]] bool hasLineIn(qsizetype lineStart)
    {
        if (lineStart >= m_nextBreak) {
            m_nextBreak = lineStart + 1;
            while (m_nextBreak < m_length && !isBreak(m_nextBreak))
                ++m_nextBreak;
        }
        return m_nextBreak - lineStart > longerThanLines;
    }

private:
    static constexpr qsizetype longerThanLines = longWord;

    [[nodiscard]] bool isBreak(qsizetype position) const
    {
        return m_attributes[position].lineBreak || m_attributes[position].whiteSpace;
    }

    const QCharAttributes* m_attributes;
    qsizetype m_length;
    qsizetype m_nextBreak = 0;
};

/// The layout of one paragraph, line by line.
struct LineMaker {
    const QTextBlock& block;
    const ParagraphStyle& style;
    qreal column;
    bool rightToLeft;
    qreal hanging = 0; ///< where lines after the first begin, from the leading margin

    /// Gives `line` its width and returns where it begins, from the leading margin.
    qreal place(QTextLine& line, bool isFirst, QTextOption& option)
    {
        const qreal indent = isFirst ? units(style.firstLineHeadIndent) : hanging;
        const qreal start = std::clamp(indent, 0.0, std::max(0.0, column - narrowestLine));
        // Once: the layout looks its tabs up again whenever it is asked for a place.
        if (isFirst) {
            option.setTabs(tabsFrom(style, start));
            block.layout()->setTextOption(option);
        }
        setWidth(line, start);
        const int marker = isFirst ? markerLength(block, style) : 0;
        return marker > 0 && marker < line.textLength() ? hangMarker(line, start, marker) : start;
    }
    [[nodiscard]] qreal widthFrom(qreal start) const
    {
        const qreal tail = units(style.tailIndent);
        const qreal end = tail > 0 ? std::min(tail, column) : column + tail;
        return std::max(narrowestLine, end - start);
    }
    void setWidth(QTextLine& line, qreal start) const { line.setLineWidth(widthFrom(start)); }

    /// All lines of an item begin at its head indent, and the marker stands before them: so numbers
    /// end below each other. A number of several digits reaches into the margin; a marker that is
    /// wider still moves the text of all lines.
    qreal hangMarker(QTextLine& line, qreal start, int marker)
    {
        const qreal x = line.cursorToX(marker);
        const qreal width = rightToLeft ? line.width() - x : x;
        const qreal moved = std::max(style.cell ? 0.0 : -widestOverhang, hanging - width);
        hanging = moved + width;
        if (moved != start)
            setWidth(line, moved);
        return moved;
    }
};

} // namespace

bool isPageBreak(const QTextBlock& block)
{
    return block.length() == 2 && block.text().at(0) == QChar(pageBreakCharacter);
}

QFont closingFont(const QTextBlock& block)
{
    const QTextBlock next = block.next();
    const QTextCharFormat format = next.isValid() ? next.charFormat() : block.charFormat();
    return format.font().resolve(block.document()->defaultFont());
}

qreal lineStretch(const QFont& font, qreal lineHeight)
{
    const QFontMetricsF metrics(font);
    const qreal natural = metrics.ascent() + metrics.descent();
    return natural > 0 ? std::max(1.0, lineHeight * font.pixelSize() / natural) : 1.0;
}

void breakLines(const QTextBlock& block, const ParagraphStyle& style, const LineSettings& settings,
                ParagraphBox& box)
{
    QTextLayout& layout = *block.layout();
    const qreal stretch = lineStretch(block.document()->defaultFont(), settings.lineHeight);
    const bool isEmpty = block.length() == 1 && layout.preeditAreaText().isEmpty();
    const bool rightToLeft =
        style.direction == WritingDirection::rightToLeft ||
        (style.direction == WritingDirection::natural && !isEmpty && block.text().isRightToLeft());
    QTextOption option = optionFor(style, settings, rightToLeft);
    LineMaker maker{block, style, box.column, rightToLeft, units(style.headIndent)};

    box.lines.clear();
    qreal y = 0;
    layout.setTextOption(option);
    layout.setCacheEnabled(true); // else every drawing shapes the text again
    layout.beginLayout();
    std::optional<LongWords> longWords;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        if (!longWords && block.length() > longWord)
            longWords.emplace(layout);
        const bool isWithinWord = longWords && longWords->hasLineIn(line.textStart());
        const auto wrap =
            isWithinWord ? QTextOption::WrapAnywhere : QTextOption::WrapAtWordBoundaryOrAnywhere;
        if (option.wrapMode() != wrap) {
            option.setWrapMode(wrap);
            layout.setTextOption(option);
        }
        const qreal start = maker.place(line, box.lines.empty(), option);
        qreal natural = line.ascent() + line.descent();
        if (isEmpty) {
            const QFontMetricsF metrics(closingFont(block));
            natural = metrics.ascent() + metrics.descent();
        }
        qreal height = lineHeightFor(natural, style, stretch);
        if (isPageBreak(block))
            height = std::max(height, pageBreakHeight);
        const qreal x = rightToLeft ? box.column - start - line.width() : start;
        line.setPosition({x, y + (height - natural) / 2});
        height += std::max(0.0, units(style.lineSpacing));
        box.lines.push_back({y, height, line.textStart(), line.textLength()});
        y += height;
    }
    layout.endLayout();
    box.content.setHeight(y);
}

} // namespace orvane
