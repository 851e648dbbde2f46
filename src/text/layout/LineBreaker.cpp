// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/layout/LineBreaker.h"

#include "text/store/TextStore.h"
#include "text/value/LayoutUnits.h"

#include <QFontMetricsF>
#include <QTextBoundaryFinder>
#include <QTextDocument>

#include <algorithm>

namespace orvane {

namespace {

constexpr qreal u = layoutUnitsPerPoint;
constexpr qreal pageBreakHeight = 28 * u;
constexpr qreal narrowestLine = 8 * u;
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

/// What a paragraph without text leaves open, the keyboard decides.
Qt::LayoutDirection directionOf(const ParagraphSource& source)
{
    if (source.style.direction == WritingDirection::natural && source.textLength() == 0)
        return Qt::LayoutDirectionAuto;
    return source.rightToLeft ? Qt::RightToLeft : Qt::LeftToRight;
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

QTextOption optionFor(const ParagraphSource& source)
{
    const ParagraphStyle& style = source.style;
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    option.setAlignment(alignmentOf(style.alignment, source.rightToLeft));
    option.setTextDirection(directionOf(source));
    const double interval =
        style.defaultTabInterval > 0 ? style.defaultTabInterval : source.settings.tabInterval;
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
int markerLength(const ParagraphSource& source)
{
    const ParagraphStyle& style = source.style;
    if (style.textLists.isEmpty() || style.headIndent <= 0 ||
        style.alignment == TextAlignment::center || style.alignment == TextAlignment::right)
        return 0;
    constexpr int mostTabs = 100;
    const auto length = std::min<qsizetype>(source.textLength(), mostTabs + longestMarker + 1);
    const QString text = source.store.text({source.block.position(), length});
    qsizetype tabs = 0;
    while (tabs < text.size() && text.at(tabs) == u'\t')
        ++tabs;
    const qsizetype space = text.indexOf(u' ', tabs);
    if (space <= tabs || space - tabs > longestMarker)
        return 0;
    // A word is none, as where the marker was removed by hand.
    const QStringView marker = QStringView(text).sliced(tabs, space - tabs);
    const bool isWord =
        marker.back() != u'.' && marker.back() != u')' &&
        std::any_of(marker.begin(), marker.end(), [](QChar c) { return c.isLetterOrNumber(); });
    return isWord ? 0 : int(space) + 1;
}

/// Finds lines that stand within a word so long that no line holds it. To break such a line at a
/// word, the toolkit looks through the word to its end, for each line anew, and then breaks it
/// anywhere after all; so it is told at once.
class LongWords {
public:
    /// `longer` is more than any line holds.
    LongWords(QStringView text, qsizetype longer)
        : m_text(text)
        , m_longer(longer)
    {}

    [[nodiscard]] bool hasLineIn(qsizetype lineStart)
    {
        if (lineStart >= m_nextBreak)
            m_nextBreak = breakBehind(lineStart);
        return m_nextBreak - lineStart > m_longer;
    }

private:
    [[nodiscard]] qsizetype breakBehind(qsizetype position)
    {
        // Mostly there is a blank nearby, which is found at once.
        const QStringView near =
            m_text.sliced(position).first(std::min(m_longer, m_text.size() - position));
        const auto blank = std::find_if(near.begin(), near.end(), [](QChar c) {
            return c.isSpace() || c == QChar(QChar::ObjectReplacementCharacter);
        });
        if (blank != near.end())
            return position + (blank - near.begin()) + 1;
        if (!m_boundaries.isValid()) {
            m_boundaries =
                QTextBoundaryFinder(QTextBoundaryFinder::Line, m_text.data(), m_text.size());
        }
        m_boundaries.setPosition(position);
        const qsizetype next = m_boundaries.toNextBoundary();
        return next < 0 ? m_text.size() : next;
    }

    QStringView m_text;
    qsizetype m_longer;
    qsizetype m_nextBreak = 0;
    QTextBoundaryFinder m_boundaries;
};

/// How high the highest object of a line stands above its baseline; 0 without one.
qreal objectHeight(const ParagraphSource& source, const PieceLayout& layout, const QTextLine& line)
{
    qreal height = 0;
    const int end = line.textStart() + line.textLength();
    for (int i = line.textStart(); i < end; ++i) {
        if (layout.characters()[i] != QChar(QChar::ObjectReplacementCharacter))
            continue;
        const qsizetype position = source.block.position() + layout.toParagraph(i);
        if (position < source.store.length())
            height = std::max(
                height,
                source.objects.roomFor(*source.store.characterStyle(position), layout.objectRoom())
                    .height());
    }
    return height;
}

/// The lines of one paragraph, one by one.
struct LineMaker {
    const ParagraphSource& source;
    QTextLayout& layout;
    qreal hanging; ///< where lines after the first begin, from the leading margin

    [[nodiscard]] qreal startFor(qreal indent) const
    {
        return std::clamp(indent, 0.0, std::max(0.0, source.column - narrowestLine));
    }
    [[nodiscard]] qreal firstStart() const
    {
        return startFor(units(source.style.firstLineHeadIndent));
    }
    /// Gives `line` its width and returns where it begins, from the leading margin.
    qreal place(QTextLine& line, bool isFirst)
    {
        const qreal start = isFirst ? firstStart() : startFor(hanging);
        setWidth(line, start);
        const int marker = isFirst ? markerLength(source) : 0;
        return marker > 0 && marker < line.textLength() ? hangMarker(line, start, marker) : start;
    }
    [[nodiscard]] qreal widthFrom(qreal start) const
    {
        const qreal tail = units(source.style.tailIndent);
        const qreal end = tail > 0 ? std::min(tail, source.column) : source.column + tail;
        return std::max(narrowestLine, end - start);
    }
    void setWidth(QTextLine& line, qreal start) const { line.setLineWidth(widthFrom(start)); }

    /// All lines of an item begin at its head indent, and the marker stands before them: so numbers
    /// end below each other. A number of several digits reaches into the margin; a marker that is
    /// wider still moves the text of all lines.
    qreal hangMarker(QTextLine& line, qreal start, int marker)
    {
        const qreal x = line.cursorToX(marker);
        const qreal width = source.rightToLeft ? line.width() - x : x;
        const qreal moved = std::max(source.style.cell ? 0.0 : -widestOverhang, hanging - width);
        hanging = moved + width;
        if (moved != start)
            setWidth(line, moved);
        return moved;
    }
};

/// A layout of the text up to `end` whose lines are to begin at `start`.
std::unique_ptr<PieceLayout> layoutFrom(const ParagraphSource& source, int start, int end)
{
    const int margin = PieceLayout::marginBefore(source, start);
    for (const int from : {start - margin, start}) {
        auto layout = std::make_unique<PieceLayout>(source, from, end);
        layout->text().setTextOption(optionFor(source));
        layout->text().setCacheEnabled(true); // else every drawing shapes the text again
        if (layout->beginLines(start) || from == start)
            return layout;
    }
    return nullptr;
}

/// Breaks the text of `text` from `start` on, where its lines begin, until `wanted` characters are
/// in lines.
BrokenPiece breakUpTo(const ParagraphSource& source, int start, int wanted,
                      std::unique_ptr<PieceLayout> text, std::optional<qreal>& hanging)
{
    BrokenPiece piece;
    piece.layout = std::move(text);
    const int end = piece.layout->end();
    QTextLayout& layout = piece.layout->text();
    const ParagraphStyle& style = source.style;
    const qreal stretch = lineStretch(source.font, source.settings.lineHeight);
    const bool reachesEnd = end == source.textLength();
    const bool isEmpty = reachesEnd && end == 0 && piece.layout->characters().isEmpty();
    LineMaker maker{source, layout, hanging.value_or(units(style.headIndent))};
    LongWords longWords(piece.layout->characters(),
                        lineReach(source.column, source.characterWidth));

    QTextOption option = optionFor(source);
    option.setTabs(tabsFrom(style, maker.firstStart()));
    layout.setTextOption(option);
    bool isWithinPreedit = false;
    while (piece.length < wanted || reachesEnd || isWithinPreedit) {
        QTextLine line = layout.createLine();
        if (!line.isValid())
            break;
        const auto wrap = longWords.hasLineIn(line.textStart())
                              ? QTextOption::WrapAnywhere
                              : QTextOption::WrapAtWordBoundaryOrAnywhere;
        if (option.wrapMode() != wrap) {
            option.setWrapMode(wrap);
            layout.setTextOption(option);
        }
        const bool isFirst = start == 0 && piece.lines.empty();
        const qreal lineStart = maker.place(line, isFirst);
        if (isFirst)
            hanging = maker.hanging;
        // To the toolkit an object is as high as a letter, for it makes a line as high as an object
        // that it has tried and moved to the next.
        const qreal object = objectHeight(source, *piece.layout, line);
        const qreal raised = std::max(0.0, object - line.ascent());
        qreal natural = line.ascent() + line.descent();
        if (isEmpty) {
            const QFontMetricsF metrics(closingFont(source.block, source.font));
            natural = metrics.ascent() + metrics.descent();
        }
        qreal height = lineHeightFor(natural, style, stretch);
        if (raised > 0) {
            // No rule for text cuts an object.
            height = std::ceil((std::max(height, natural) + raised) / lineGrid) * lineGrid;
        }
        if (isPageBreak(source.block))
            height = std::max(height, pageBreakHeight);
        const qreal x = source.rightToLeft ? source.column - lineStart - line.width() : lineStart;
        line.setPosition({x, piece.height + (height - natural - raised) / 2 + raised});
        height += std::max(0.0, units(style.lineSpacing));
        const int lineEnd = line.textStart() + line.textLength();
        const int first = piece.layout->toParagraph(line.textStart());
        const int past = piece.layout->toParagraph(lineEnd);
        isWithinPreedit = piece.layout->partsPreedit(lineEnd);
        piece.lines.push_back({piece.height, height, first, past - first});
        piece.height += height;
        piece.length = past - start;
    }
    // The end of a layout's last line is that of a paragraph to the toolkit, and a caret there
    // stands elsewhere. So another line follows, out of every clip.
    if (QTextLine after = reachesEnd ? QTextLine() : layout.createLine(); after.isValid()) {
        maker.place(after, false);
        after.setPosition({0, outOfSight});
    }
    layout.endLayout();
    return piece;
}

} // namespace

int lineReach(qreal column, qreal characterWidth)
{
    constexpr qreal least = 120;
    constexpr qreal most = 4'000;
    return int(std::clamp(4 * column / characterWidth, least, most));
}

BaseDirection baseDirection(const TextStore& store, const QTextBlock& block,
                            WritingDirection direction)
{
    if (direction != WritingDirection::natural)
        return {direction == WritingDirection::rightToLeft, 0};
    // The first strong character outside of isolates (UAX #9, P2), read bit by bit: mostly it is
    // the very first.
    constexpr int window = 64;
    const int length = block.length() - 1;
    int isolates = 0;
    for (int from = 0; from < length; from += window) {
        const QString text =
            store.text(TextRange{block.position() + from, std::min(window + 1, length - from)});
        for (int i = 0; i < std::min<int>(window, int(text.size())); ++i) {
            const QChar c = text[i];
            if (c.isLowSurrogate())
                continue;
            const bool isPair = c.isHighSurrogate() && i + 1 < text.size();
            switch (isPair ? QChar::direction(QChar::surrogateToUcs4(c, text[i + 1]))
                           : c.direction()) {
            case QChar::DirL:
                if (isolates == 0)
                    return {false, from + i};
                break;
            case QChar::DirR:
            case QChar::DirAL:
                if (isolates == 0)
                    return {true, from + i};
                break;
            case QChar::DirLRI:
            case QChar::DirRLI:
            case QChar::DirFSI:
                ++isolates;
                break;
            case QChar::DirPDI:
                isolates = std::max(0, isolates - 1);
                break;
            default:
                break;
            }
        }
    }
    return {false, length};
}

BrokenPiece breakPiece(const ParagraphSource& source, int start, int wanted,
                       std::optional<qreal>& hanging, std::unique_ptr<PieceLayout> before)
{
    // So near to the end of what it knows, a line may have been broken for want of more.
    constexpr int nearness = 40;
    // Only signs without any width fill a line with more.
    constexpr int mostReach = 100'000;
    const auto knowsEnough = [&](const BrokenPiece& piece) {
        const int end = piece.layout->end();
        return end == source.textLength() || start + piece.length + nearness <= end;
    };
    if (before && !source.preedit && before->isGoodFrom(start) && before->beginLines(start)) {
        BrokenPiece piece = breakUpTo(source, start, wanted, std::move(before), hanging);
        if (!piece.lines.empty() && knowsEnough(piece))
            return piece;
    }
    for (int reach = lineReach(source.column, source.characterWidth) / 2;; reach *= 4) {
        const int end = int(std::min<qint64>(source.textLength(), qint64(start) + wanted + reach));
        BrokenPiece piece =
            breakUpTo(source, start, wanted, layoutFrom(source, start, end), hanging);
        if (knowsEnough(piece) || reach > mostReach)
            return piece;
    }
}

bool isPageBreak(const QTextBlock& block)
{
    return block.length() == 2 && block.text().at(0) == QChar(pageBreakCharacter);
}

QFont closingFont(const QTextBlock& block, const QFont& font)
{
    const QTextBlock next = block.next();
    const QTextCharFormat format = next.isValid() ? next.charFormat() : block.charFormat();
    return format.font().resolve(font);
}

qreal lineStretch(const QFont& font, qreal lineHeight)
{
    const QFontMetricsF metrics(font);
    const qreal natural = metrics.ascent() + metrics.descent();
    return natural > 0 ? std::max(1.0, lineHeight * font.pixelSize() / natural) : 1.0;
}

} // namespace orvane
