// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// Where positions of the text stand on the page, and back.
#include "text/layout/ParagraphLayout.h"
#include "text/value/LayoutUnits.h"

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
    const qreal x = about.content.left() + line.cursorToX(piece.toLayout(inBlock));
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
    const auto toDocument = [&](int inLayout) {
        return block.position() + piece.toParagraph(inLayout);
    };
    const int hit = laidOut.xToCursor(x * u - about.content.left());
    const int lineEnd = laidOut.textStart() + laidOut.textLength();
    if (hit < lineEnd || line.endsParagraph || laidOut.textLength() == 0)
        return toDocument(std::min(hit, lineEnd));
    // Beyond the end of a wrapped line: before its last blank or its line break, or, where a word
    // was cut, at the cut itself.
    const QChar last = hasPreedit() && block.contains(m_preedit.position)
                           ? QChar()
                           : document().characterAt(toDocument(lineEnd) - 1);
    if (last.isSpace())
        return toDocument(lineEnd - 1);
    if (side)
        *side = CaretSide::upperLine;
    return toDocument(lineEnd);
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
    const QString& text = laidOut.characters();
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
            for (const auto& [left, right] :
                 stretchesOf(line, QStringView(text).mid(lineStart, lineEnd - lineStart), a, b))
                add(left, right);
        }
        // A selection that goes on in the next line fills this one to its end.
        const bool begins = first < lineEnd || (isLast && first <= lineEnd);
        const bool continues = begins && (isLast ? goesOn : past > lineEnd);
        if (fill == LineFill::wholeLines && continues) {
            const qreal end = line.naturalTextRect().right();
            add(std::min(end, about.column),
                std::max(isLast ? end + newlineWidth : end, about.column));
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

QRectF ParagraphLayout::cellRect(const QTextBlock& block)
{
    ensureLaidOut(block);
    const QRectF cell = box(block).cell;
    return {cell.left() / u, topOf(block) + cell.top() / u, cell.width() / u, cell.height() / u};
}

} // namespace orvane
