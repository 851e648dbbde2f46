// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// Where positions of the text stand on the page, and back.
#include "text/layout/LineGeometry.h"
#include "text/layout/ParagraphLayout.h"
#include "text/value/LayoutUnits.h"

#include <QTextDocument>

#include <algorithm>
#include <limits>

namespace orvane {

namespace {

constexpr qreal u = layoutUnitsPerPoint;
/// How a selected "\n" shows in a line that is full.
constexpr qreal newlineWidth = 4 * u;

LineGeometry geometryOf(const PieceLayout& piece, int line)
{
    return {piece.text(), piece.line(line), piece.characters()};
}

} // namespace

qreal ParagraphLayout::pieceTop(const QTextBlock& block, const ParagraphBox& box, int piece) const
{
    return topOf(block) + (box.content.top() + box.topOf(piece)) / u;
}

/// The line that holds a position of the paragraph, laid out.
ParagraphLayout::LineIndex ParagraphLayout::lineIndexAt(const QTextBlock& block, int position,
                                                        CaretSide side)
{
    ParagraphBox& about = arrange(block);
    LineIndex index{layOutPiece(block, about, position), 0};
    const ParagraphPiece& piece = about.pieces[std::size_t(index.piece)];
    const int place = piece.layout->toLayout(position);
    const int last = int(piece.lines.size()) - 1;
    const int line = piece.layout->lineAt(place);
    index.line = line >= 0 ? std::min(line, last) : last;
    const int lineStart = piece.layout->line(index.line).textStart();
    if (side == CaretSide::lowerLine || std::max(lineStart, piece.layout->lead()) != place)
        return index;
    if (index.line > 0)
        return {index.piece, index.line - 1};
    if (index.piece == 0)
        return index;
    index.piece = layOutPiece(block, about, piece.start - 1);
    index.line = int(about.pieces[std::size_t(index.piece)].lines.size()) - 1;
    return index;
}

LaidOutLine ParagraphLayout::lineOf(const QTextBlock& block, LineIndex index)
{
    const ParagraphBox& about = box(block);
    const ParagraphPiece& piece = about.pieces[std::size_t(index.piece)];
    const BrokenLine& line = piece.lines[std::size_t(index.line)];
    LaidOutLine result;
    result.endsParagraph =
        index.piece + 1 == int(about.pieces.size()) && index.line + 1 == int(piece.lines.size());
    const int end = result.endsParagraph ? block.length() - 1 : line.start + line.length;
    result.range = TextRange::between(block.position() + line.start, block.position() + end);
    result.rect =
        QRectF(about.content.left() / u, pieceTop(block, about, index.piece) + line.top / u,
               about.content.width() / u, line.height / u);
    return result;
}

LaidOutLine ParagraphLayout::lineAt(int position, CaretSide side)
{
    const QTextBlock block = document().findBlock(position);
    return lineOf(block, lineIndexAt(block, position - block.position(), side));
}

QRectF ParagraphLayout::caretRect(int position, CaretSide side)
{
    const QTextBlock block = document().findBlock(position);
    const int inBlock = position - block.position();
    const LineIndex index = lineIndexAt(block, inBlock, side);
    const ParagraphBox& about = box(block);
    const PieceLayout& piece = *about.pieces[std::size_t(index.piece)].layout;
    const QTextLine line = piece.line(index.line);
    const qreal x =
        about.content.left() + geometryOf(piece, index.line).caretX(piece.toLayout(inBlock));
    qreal height = line.ascent() + line.descent();
    if (block.length() == 1 && !hasPreedit()) {
        const QFontMetricsF metrics(closingFont(block, m_font));
        height = metrics.ascent() + metrics.descent();
    }
    return {x / u, pieceTop(block, about, index.piece) + line.y() / u, 0, height / u};
}

int ParagraphLayout::positionInLine(const LaidOutLine& line, qreal x, CaretSide* side)
{
    if (side)
        *side = CaretSide::lowerLine;
    const QTextBlock block = document().findBlock(int(line.range.location));
    const LineIndex index =
        lineIndexAt(block, int(line.range.location) - block.position(), CaretSide::lowerLine);
    const ParagraphBox& about = box(block);
    const PieceLayout& piece = *about.pieces[std::size_t(index.piece)].layout;
    const QTextLine laidOut = piece.line(index.line);
    const int hit = geometryOf(piece, index.line).placeAt(x * u - about.content.left());
    const int lineEnd = laidOut.textStart() + laidOut.textLength();
    if (hit < lineEnd || line.endsParagraph || laidOut.textLength() == 0)
        return block.position() + piece.toParagraph(hit);
    return endOfLine(line, side);
}

int ParagraphLayout::endOfLine(const LaidOutLine& line, CaretSide* side) const
{
    if (side)
        *side = CaretSide::lowerLine;
    const auto end = int(line.range.end());
    if (line.endsParagraph || line.range.isEmpty())
        return end;
    const bool isWithinPreedit =
        hasPreedit() && document().findBlock(end) == document().findBlock(m_preedit.position);
    if (!isWithinPreedit && document().characterAt(end - 1).isSpace())
        return end - 1;
    if (side)
        *side = CaretSide::upperLine;
    return end;
}

LaidOutLine ParagraphLayout::lineAtY(const QTextBlock& block, qreal y)
{
    ParagraphBox& about = arrange(block);
    ensureLaidOut(block, y, y);
    const qreal inContent = (y - topOf(block)) * u - about.content.top();
    const int start = about.pieces[std::size_t(about.pieceAtHeight(inContent))].start;
    LineIndex index{layOutPiece(block, about, start), 0};
    const auto& lines = about.pieces[std::size_t(index.piece)].lines;
    const qreal inPiece = inContent - about.topOf(index.piece);
    const auto isAbove = [&](const BrokenLine& line) {
        return inPiece >= line.top + line.height;
    };
    while (index.line + 1 < int(lines.size()) && isAbove(lines[std::size_t(index.line)]))
        ++index.line;
    return lineOf(block, index);
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
    // An estimate may have led to the wrong place; what is laid out stays.
    for (int tries = 0; tries < 8; ++tries) {
        ensureLaidOut(block, point.y(), point.y());
        const QTextBlock found = blockAtY(point.y());
        if (found == block)
            break;
        block = found;
    }
    ensureLaidOut(block, point.y(), point.y());
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
    QTextBlock block = document().findBlock(int(line.range.location));
    const int inBlock = int(line.range.location) - block.position();
    const LineIndex index = lineIndexAt(block, inBlock, CaretSide::lowerLine);
    if (index.line > 0)
        return lineOf(block, {index.piece, index.line - 1});
    if (index.piece > 0) {
        ParagraphBox& about = arrange(block);
        const int piece = layOutPiece(block, about, inBlock - 1);
        const int last = int(about.pieces[std::size_t(piece)].lines.size()) - 1;
        return lineOf(block, {piece, last});
    }
    block = above(block);
    if (!block.isValid())
        return std::nullopt;
    // Lines at the end of a long paragraph; its height is another once they are known.
    (void)layOutPartAt(block.position() + block.length() - 1);
    const qreal bottom = bottomOf(block);
    block = cellAt(block, {x, bottom});
    return lineAtY(block, bottom);
}

std::optional<LaidOutLine> ParagraphLayout::lineBelow(const LaidOutLine& line, qreal x)
{
    QTextBlock block = document().findBlock(int(line.range.location));
    const int inBlock = int(line.range.location) - block.position();
    const LineIndex index = lineIndexAt(block, inBlock, CaretSide::lowerLine);
    ParagraphBox& about = arrange(block);
    const ParagraphPiece& piece = about.pieces[std::size_t(index.piece)];
    if (index.line + 1 < int(piece.lines.size()))
        return lineOf(block, {index.piece, index.line + 1});
    if (index.piece + 1 < int(about.pieces.size()))
        return lineOf(block, {layOutPiece(block, about, piece.end()), 0});
    block = below(rowStart(block));
    if (!block.isValid())
        return std::nullopt;
    (void)layOutPartAt(block.position());
    block = cellAt(block, {x, topOf(block)});
    return lineAtY(block, topOf(block));
}

QList<QRectF> ParagraphLayout::rectsInPiece(const QTextBlock& block, int index, int from, int to,
                                            LineFill fill) const
{
    QList<QRectF> rects;
    const ParagraphBox& about = box(block);
    const ParagraphPiece& piece = about.pieces[std::size_t(index)];
    const PieceLayout& laidOut = *piece.layout;
    const qreal top = pieceTop(block, about, index);
    const bool endsText = index + 1 == int(about.pieces.size());
    const int textEnd = block.length() - 1;
    const int first = laidOut.toLayout(std::max(from, piece.start));
    // Up to the end of the piece; what is behind it counts where lines are filled.
    const int past = to > piece.end() && !endsText ? std::numeric_limits<int>::max()
                                                   : laidOut.toLayout(std::min(to, textEnd));
    const bool goesOn = to > textEnd;
    const int count = int(piece.lines.size());
    for (int i = 0; i < count; ++i) {
        const QTextLine line = laidOut.line(i);
        const int lineStart = line.textStart();
        const int lineEnd = lineStart + line.textLength();
        const bool isLast = endsText && i == count - 1;
        const BrokenLine& place = piece.lines[std::size_t(i)];
        const qreal y = top + place.top / u;
        const auto add = [&](qreal left, qreal right) {
            if (left < right) {
                rects.append(QRectF((about.content.left() + left) / u, y, (right - left) / u,
                                    place.height / u));
            }
        };
        const int a = std::max(first, lineStart);
        const int b = std::min(past, lineEnd);
        if (a < b) {
            for (const auto& [left, right] : geometryOf(laidOut, i).stretchesOf(a, b))
                add(left, right);
        }
        // A selection that goes on in the next line fills this one to its end.
        const bool begins = first < lineEnd || (isLast && first <= lineEnd);
        const bool continues = begins && (isLast ? goesOn : past > lineEnd);
        if (fill == LineFill::wholeLines && continues) {
            const QRectF drawn = line.naturalTextRect();
            const qreal newline = isLast ? newlineWidth : 0;
            if (laidOut.text().textOption().textDirection() == Qt::RightToLeft) {
                add(std::min(drawn.left() - newline, 0.0), std::max(drawn.left(), 0.0));
            } else {
                add(std::min(drawn.right(), about.column),
                    std::max(drawn.right() + newline, about.column));
            }
        }
    }
    return rects;
}

QList<QRectF> ParagraphLayout::rectsInBlock(const QTextBlock& block, qsizetype from, qsizetype to,
                                            LineFill fill) const
{
    QList<QRectF> rects;
    const ParagraphBox& about = box(block);
    const auto inBlock = [&](qsizetype position) {
        return int(std::clamp<qsizetype>(position - block.position(), 0, block.length()));
    };
    const int first = about.pieceAt(inBlock(from));
    const int last = about.pieceAt(inBlock(to));
    for (int i = first; i <= last; ++i) {
        if (about.pieces[std::size_t(i)].hasLines())
            rects += rectsInPiece(block, i, inBlock(from), inBlock(to), fill);
    }
    return rects;
}

QList<QRectF> ParagraphLayout::rectsOf(TextRange range)
{
    QList<QRectF> rects;
    for (QTextBlock block = document().findBlock(int(range.location));
         block.isValid() && block.position() < range.end(); block = block.next()) {
        ParagraphBox& about = arrange(block);
        const int to = int(std::min<qsizetype>(range.end() - block.position(), block.length() - 1));
        int position = int(std::max<qsizetype>(range.location - block.position(), 0));
        for (;;) {
            const int piece = layOutPiece(block, about, position);
            position = about.pieces[std::size_t(piece)].end();
            if (position >= to)
                break;
        }
        rects += rectsInBlock(block, range.location, range.end(), LineFill::textAlone);
    }
    return rects;
}

QRectF ParagraphLayout::objectRect(int position)
{
    const QTextBlock block = document().findBlock(position);
    const int inBlock = position - block.position();
    const LineIndex index = lineIndexAt(block, inBlock, CaretSide::lowerLine);
    const ParagraphBox& about = box(block);
    const PieceLayout& piece = *about.pieces[std::size_t(index.piece)].layout;
    const QTextLine line = piece.line(index.line);
    const int place = piece.toLayout(inBlock);
    const qreal left = std::min(line.cursorToX(place), line.cursorToX(place + 1));
    const SharedCharacterStyle style = m_store.characterStyle(position);
    const QSizeF taken = m_objects.roomFor(*style, piece.objectRoom());
    const QRectF rect =
        m_objects.rectOf(*style, QRectF({left, line.y() + line.ascent() - taken.height()}, taken),
                         piece.objectRoom());
    return {(about.content.left() + rect.left()) / u,
            pieceTop(block, about, index.piece) + rect.top() / u, rect.width() / u,
            rect.height() / u};
}

QRectF ParagraphLayout::cellRect(const QTextBlock& block)
{
    ensureLaidOut(block);
    const QRectF cell = box(block).cell;
    return {cell.left() / u, topOf(block) + cell.top() / u, cell.width() / u, cell.height() / u};
}

} // namespace orvane
