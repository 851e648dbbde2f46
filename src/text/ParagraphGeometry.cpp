// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// Where positions of the text stand on the page, and back.
#include "text/LayoutUnits.h"
#include "text/ParagraphLayout.h"

#include <QTextDocument>

#include <algorithm>
#include <cmath>

namespace orvane {

namespace {

constexpr qreal u = layoutUnitsPerPoint;

/// The stretches of [from, to) in a line, left and right, in layout units. Text in one direction is
/// one stretch; in mixed text neighbouring characters may stand far apart.
QList<std::pair<qreal, qreal>> stretchesOf(const QTextLine& line, const QString& text, int from,
                                           int to)
{
    QList<std::pair<qreal, qreal>> stretches;
    const auto hasRightToLeft =
        std::any_of(text.cbegin() + line.textStart(),
                    text.cbegin() + line.textStart() + line.textLength(), [](QChar c) {
                        return c.unicode() >= 0x590 &&
                               (c.direction() == QChar::DirR || c.direction() == QChar::DirAL ||
                                c.direction() == QChar::DirRLE || c.direction() == QChar::DirRLO ||
                                c.direction() == QChar::DirRLI || c.direction() == QChar::DirAN);
                    });
    if (!hasRightToLeft) {
        const qreal a = line.cursorToX(from);
        const qreal b = line.cursorToX(to);
        stretches.append({std::min(a, b), std::max(a, b)});
        return stretches;
    }
    for (int position = from; position < to; ++position) {
        const qreal a = line.cursorToX(position, QTextLine::Leading);
        const qreal b = line.cursorToX(position, QTextLine::Trailing);
        const std::pair<qreal, qreal> one{std::min(a, b), std::max(a, b)};
        if (!stretches.isEmpty() && std::abs(stretches.last().second - one.first) < 0.5)
            stretches.last().second = one.second;
        else if (!stretches.isEmpty() && std::abs(stretches.last().first - one.second) < 0.5)
            stretches.last().first = one.first;
        else if (one.first < one.second)
            stretches.append(one);
    }
    return stretches;
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
    const QString text = layout.preeditAreaText().isEmpty() ? block.text() : QString();
    const qreal top = topOf(block);
    const int first = toLayoutPosition(block, std::max(from, block.position()));
    const int past = toLayoutPosition(block, std::min(to, block.position() + block.length() - 1));
    const bool goesOn = to >= block.position() + block.length();
    for (int i = 0; i < layout.lineCount(); ++i) {
        const QTextLine line = layout.lineAt(i);
        const int lineStart = line.textStart();
        const int lineEnd = lineStart + line.textLength();
        const bool isLast = i == layout.lineCount() - 1;
        if (past < lineStart || (past == lineStart && !(isLast && goesOn)) ||
            (first >= lineEnd && !isLast))
            continue;
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
                 text.isEmpty()
                     ? QList<std::pair<qreal, qreal>>{{line.cursorToX(a), line.cursorToX(b)}}
                     : stretchesOf(line, text, a, b))
                add(left, right);
        }
        // A selection that goes on in the next line fills this one to its end.
        const bool continues = isLast ? goesOn : past > lineEnd;
        if (fillsLines && continues) {
            const qreal end = line.cursorToX(lineEnd);
            add(std::min(end, about.column), std::max(end + 4 * u, about.column));
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
