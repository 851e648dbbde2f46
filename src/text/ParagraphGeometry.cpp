// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// Where positions of the text stand on the page, and back.
#include "text/LayoutUnits.h"
#include "text/ParagraphLayout.h"

#include <QGlyphRun>
#include <QRawFont>
#include <QTextDocument>

#include <algorithm>
#include <cmath>

namespace orvane {

namespace {

constexpr qreal u = layoutUnitsPerPoint;
/// How a selected "\n" shows in a line that is full.
constexpr qreal newlineWidth = 4 * u;

using Stretch = std::pair<qreal, qreal>;

bool isRightToLeft(QChar character)
{
    if (character.unicode() < 0x590)
        return false;
    const QChar::Direction direction = character.direction();
    return direction == QChar::DirR || direction == QChar::DirAL || direction == QChar::DirAN ||
           direction == QChar::DirRLE || direction == QChar::DirRLO || direction == QChar::DirRLI;
}

/// Where the glyphs of [from, to) stand, as few stretches as they form. For lines in which
/// neighbouring characters may stand far apart.
QList<Stretch> glyphStretches(const QTextLine& line, int from, int to)
{
    QList<Stretch> glyphs;
    for (const QGlyphRun& run : line.glyphRuns(from, to - from)) {
        const QList<QPointF> positions = run.positions();
        const QList<QPointF> advances = run.rawFont().advancesForGlyphIndexes(run.glyphIndexes());
        for (qsizetype i = 0; i < positions.size(); ++i)
            glyphs.append({positions[i].x(), positions[i].x() + advances[i].x()});
    }
    std::sort(glyphs.begin(), glyphs.end());
    // Kerning and justification leave small gaps between neighbours.
    const qreal gap = (line.ascent() + line.descent()) / 6;
    QList<Stretch> joined;
    for (const Stretch& glyph : glyphs) {
        if (!joined.isEmpty() && glyph.first <= joined.last().second + gap)
            joined.last().second = std::max(joined.last().second, glyph.second);
        else
            joined.append(glyph);
    }
    return joined;
}

/// The stretches of [from, to) in a line, left and right, in layout units.
QList<Stretch> stretchesOf(const QTextLine& line, QStringView lineText, int from, int to)
{
    if (std::any_of(lineText.begin(), lineText.end(), isRightToLeft))
        return glyphStretches(line, from, to);
    const qreal a = line.cursorToX(from);
    const qreal b = line.cursorToX(to);
    return {{std::min(a, b), std::max(a, b)}};
}

} // namespace

int ParagraphLayout::toLayoutPosition(const QTextBlock& block, int position) const
{
    const int inBlock = position - block.position();
    if (!hasPreedit() || !block.contains(m_preedit.position))
        return inBlock;
    const int at = m_preedit.position - block.position();
    if (inBlock < at)
        return inBlock;
    return inBlock == at ? at + m_preedit.caret : inBlock + int(m_preedit.text.size());
}

int ParagraphLayout::toDocumentPosition(const QTextBlock& block, int layoutPosition) const
{
    if (!hasPreedit() || !block.contains(m_preedit.position))
        return block.position() + layoutPosition;
    const int at = m_preedit.position - block.position();
    if (layoutPosition <= at)
        return block.position() + layoutPosition;
    return block.position() + std::max(at, layoutPosition - int(m_preedit.text.size()));
}

int ParagraphLayout::lineNumberAt(const QTextBlock& block, int layoutPosition, CaretSide side) const
{
    const QTextLayout& layout = *block.layout();
    const QTextLine line = layout.lineForTextPosition(layoutPosition);
    const int number = line.isValid() ? line.lineNumber() : layout.lineCount() - 1;
    if (side == CaretSide::upperLine && number > 0 &&
        layout.lineAt(number).textStart() == layoutPosition)
        return number - 1;
    return number;
}

LaidOutLine ParagraphLayout::lineOf(const QTextBlock& block, int lineNumber)
{
    const ParagraphBox& about = box(block);
    const QTextLayout& layout = *block.layout();
    const QTextLine line = layout.lineAt(lineNumber);
    LaidOutLine result;
    result.endsParagraph = lineNumber == layout.lineCount() - 1;
    const int from = toDocumentPosition(block, line.textStart());
    const int to = result.endsParagraph
                       ? block.position() + block.length() - 1
                       : toDocumentPosition(block, line.textStart() + line.textLength());
    result.range = TextRange::between(from, to);
    const auto& place = about.lines[std::size_t(lineNumber)];
    result.rect =
        QRectF(about.content.left() / u, topOf(block) + (about.content.top() + place.top) / u,
               about.content.width() / u, place.height / u);
    return result;
}

LaidOutLine ParagraphLayout::lineAt(int position, CaretSide side)
{
    const QTextBlock block = document()->findBlock(position);
    ensureLaidOut(block);
    return lineOf(block, lineNumberAt(block, toLayoutPosition(block, position), side));
}

QRectF ParagraphLayout::caretRect(int position, CaretSide side)
{
    const QTextBlock block = document()->findBlock(position);
    ensureLaidOut(block);
    const int inLayout = toLayoutPosition(block, position);
    const QTextLine line = block.layout()->lineAt(lineNumberAt(block, inLayout, side));
    const ParagraphBox& about = box(block);
    const qreal x = about.content.left() + line.cursorToX(inLayout);
    qreal height = line.ascent() + line.descent();
    if (block.length() == 1 && !hasPreedit()) {
        const QFontMetricsF metrics(closingFont(block));
        height = metrics.ascent() + metrics.descent();
    }
    return {x / u, topOf(block) + (about.content.top() + line.y()) / u, 0, height / u};
}

int ParagraphLayout::positionInLine(const LaidOutLine& line, qreal x, CaretSide* side)
{
    if (side)
        *side = CaretSide::lowerLine;
    const QTextBlock block = document()->findBlock(int(line.range.location));
    ensureLaidOut(block);
    const int start = toLayoutPosition(block, int(line.range.location));
    const int number = lineNumberAt(block, start, CaretSide::lowerLine);
    const QTextLine laidOut = block.layout()->lineAt(number);
    const int hit = laidOut.xToCursor(x * u - box(block).content.left());
    const int lineEnd = laidOut.textStart() + laidOut.textLength();
    if (hit < lineEnd || line.endsParagraph || laidOut.textLength() == 0)
        return toDocumentPosition(block, std::min(hit, lineEnd));
    // Beyond the end of a wrapped line: before its last blank or its line break, or, where a word
    // was cut, at the cut itself.
    const QChar last = block.layout()->preeditAreaText().isEmpty()
                           ? document()->characterAt(block.position() + lineEnd - 1)
                           : QChar();
    if (last.isSpace())
        return toDocumentPosition(block, lineEnd - 1);
    if (side)
        *side = CaretSide::upperLine;
    return toDocumentPosition(block, lineEnd);
}

LaidOutLine ParagraphLayout::lineAtY(const QTextBlock& block, qreal y)
{
    const ParagraphBox& about = box(block);
    const qreal inContent = (y - topOf(block)) * u - about.content.top();
    std::size_t number = 0;
    while (number + 1 < about.lines.size() &&
           inContent >= about.lines[number].top + about.lines[number].height)
        ++number;
    return lineOf(block, int(number));
}

QTextBlock ParagraphLayout::cellAt(const QTextBlock& rowStart, QPointF point)
{
    if (!isCell(rowStart, m_styles))
        return rowStart;
    const TableRow row = rowOf(rowStart, m_styles);
    const qreal x = point.x() * u;
    const qreal y = (point.y() - topOf(rowStart)) * u;
    QTextBlock nearest = row.first;
    qreal distance = std::numeric_limits<qreal>::max();
    for (QTextBlock cell = row.first;; cell = cell.next()) {
        const ParagraphBox& about = box(cell);
        const qreal outside = std::max({about.cell.left() - x, x - about.cell.right(), 0.0});
        const qreal away = std::max({about.content.top() - y, y - about.content.bottom(), 0.0});
        // The column decides; among paragraphs stacked in one cell it is the nearest.
        if (outside * 1e6 + away < distance) {
            distance = outside * 1e6 + away;
            nearest = cell;
        }
        if (cell == row.last)
            return nearest;
    }
}

int ParagraphLayout::positionAt(QPointF point, CaretSide* side)
{
    QTextBlock block = blockAtY(point.y());
    // An estimate may have led to the wrong paragraph; what is laid out stays.
    for (int tries = 0; tries < 8 && !isLaidOut(block); ++tries) {
        ensureLaidOut(block);
        block = blockAtY(point.y());
    }
    ensureLaidOut(block);
    block = cellAt(block, point);
    if (isPageBreak(block)) {
        // Nobody writes within one: its upper half leads above it and its lower half below.
        const bool isUpper = point.y() < (topOf(block) + bottomOf(block)) / 2;
        const QTextBlock next = isUpper ? block.previous() : block.next();
        if (next.isValid() && !isPageBreak(next)) {
            if (side)
                *side = CaretSide::lowerLine;
            return isUpper ? next.position() + next.length() - 1 : next.position();
        }
    }
    return positionInLine(lineAtY(block, point.y()), point.x(), side);
}

std::optional<LaidOutLine> ParagraphLayout::lineAbove(const LaidOutLine& line, qreal x)
{
    QTextBlock block = document()->findBlock(int(line.range.location));
    ensureLaidOut(block);
    const int number = lineNumberAt(block, toLayoutPosition(block, int(line.range.location)), {});
    if (number > 0)
        return lineOf(block, number - 1);
    block = above(block);
    if (!block.isValid())
        return std::nullopt;
    ensureLaidOut(block);
    const qreal bottom = bottomOf(block);
    block = cellAt(block, {x, bottom});
    return lineAtY(block, bottom);
}

std::optional<LaidOutLine> ParagraphLayout::lineBelow(const LaidOutLine& line, qreal x)
{
    QTextBlock block = document()->findBlock(int(line.range.location));
    ensureLaidOut(block);
    const int number = lineNumberAt(block, toLayoutPosition(block, int(line.range.location)), {});
    if (number + 1 < block.layout()->lineCount())
        return lineOf(block, number + 1);
    block = below(rowStart(block));
    if (!block.isValid())
        return std::nullopt;
    ensureLaidOut(block);
    block = cellAt(block, {x, topOf(block)});
    return lineAtY(block, topOf(block));
}

QList<QRectF> ParagraphLayout::rectsInBlock(const QTextBlock& block, int from, int to,
                                            bool fillsLines)
{
    QList<QRectF> rects;
    const ParagraphBox& about = box(block);
    const QTextLayout& layout = *block.layout();
    const QString text = block.text();
    const qreal top = topOf(block);
    const int first = toLayoutPosition(block, std::max(from, block.position()));
    const int past = toLayoutPosition(block, std::min(to, block.position() + block.length() - 1));
    const bool goesOn = to >= block.position() + block.length();
    for (int i = 0; i < layout.lineCount(); ++i) {
        const QTextLine line = layout.lineAt(i);
        const int lineStart = line.textStart();
        const int lineEnd = lineStart + line.textLength();
        const bool isLast = i == layout.lineCount() - 1;
        const auto& place = about.lines[std::size_t(i)];
        const qreal y = top + (about.content.top() + place.top) / u;
        const auto add = [&](qreal left, qreal right) {
            if (left < right) {
                rects.append(QRectF((about.content.left() + left) / u, y, (right - left) / u,
                                    place.height / u));
            }
        };
        const int a = std::max(first, lineStart);
        const int b = std::min(past, lineEnd);
        if (a < b) {
            for (const auto& [left, right] :
                 stretchesOf(line, QStringView(text).mid(lineStart, lineEnd - lineStart), a, b))
                add(left, right);
        }
        // A selection that goes on in the next line fills this one to its end.
        const bool begins = first < lineEnd || (isLast && first <= lineEnd);
        const bool continues = begins && (isLast ? goesOn : past > lineEnd);
        if (fillsLines && continues) {
            const qreal end = line.naturalTextRect().right();
            add(std::min(end, about.column),
                std::max(isLast ? end + newlineWidth : end, about.column));
        }
    }
    return rects;
}

QList<QRectF> ParagraphLayout::rectsOf(TextRange range)
{
    QList<QRectF> rects;
    for (QTextBlock block = document()->findBlock(int(range.location));
         block.isValid() && block.position() < range.end(); block = block.next()) {
        ensureLaidOut(block);
        rects += rectsInBlock(block, int(range.location), int(range.end()), false);
    }
    return rects;
}

QRectF ParagraphLayout::cellRect(const QTextBlock& block)
{
    ensureLaidOut(block);
    const QRectF cell = box(block).cell;
    return {cell.left() / u, topOf(block) + cell.top() / u, cell.width() / u, cell.height() / u};
}

} // namespace orvane
