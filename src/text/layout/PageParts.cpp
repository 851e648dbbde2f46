// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// What the page is made of, and where on it the parts of the text stand.
#include "text/layout/ParagraphLayout.h"
#include "text/value/LayoutUnits.h"

#include <algorithm>

namespace orvane {

namespace {

constexpr qreal u = layoutUnitsPerPoint;

} // namespace

bool ParagraphLayout::isOnePart(const QTextBlock& block) const
{
    const ParagraphBox* known = existingBox(block);
    return isCell(block, m_styles) || (known && known->isWhole());
}

PagePart ParagraphLayout::layOutPartAt(qsizetype position)
{
    const QTextBlock block = m_store.blockAt(position);
    ParagraphBox& known = arrange(block);
    const int index = layOutPiece(block, known, int(position) - block.position());
    if (isOnePart(block))
        return {rowStart(block).position(), topOf(block), bottomOf(block)};
    const bool isLast = index + 1 == int(known.pieces.size());
    const qreal top = index == 0 ? topOf(block) : pieceTop(block, known, index);
    const qreal bottom = isLast ? bottomOf(block) : pieceTop(block, known, index + 1);
    return {block.position() + known.pieces[std::size_t(index)].start, top, bottom};
}

std::optional<PagePart> ParagraphLayout::layOutPartBelow(const PagePart& part)
{
    const QTextBlock block = m_store.blockAt(part.position);
    const ParagraphBox& known = arrange(block);
    if (!isOnePart(block)) {
        const int index = known.pieceAt(int(part.position) - block.position());
        if (index + 1 < int(known.pieces.size()))
            return layOutPartAt(block.position() + known.pieces[std::size_t(index) + 1].start);
    }
    const QTextBlock next = below(block);
    return next.isValid() ? std::optional(layOutPartAt(next.position())) : std::nullopt;
}

std::optional<PagePart> ParagraphLayout::layOutPartAbove(const PagePart& part)
{
    const QTextBlock block = m_store.blockAt(part.position);
    const ParagraphBox& known = arrange(block);
    if (!isOnePart(block)) {
        const int index = known.pieceAt(int(part.position) - block.position());
        if (index > 0)
            return layOutPartAt(block.position() + known.pieces[std::size_t(index)].start - 1);
    }
    const QTextBlock previous = above(block);
    if (!previous.isValid())
        return std::nullopt;
    return layOutPartAt(isCell(previous, m_styles) ? previous.position()
                                                   : previous.position() + previous.length() - 1);
}

PagePlace ParagraphLayout::placeAt(qsizetype position)
{
    const QTextBlock block = m_store.blockAt(position);
    if (isCell(block, m_styles) || block.length() - 1 <= 2 * m_pieceLength)
        return {rowStart(block).position(), topOf(block)};
    const ParagraphBox& known = arrange(block);
    const int inBlock = int(position) - block.position();
    const int index = known.pieceAt(inBlock);
    const ParagraphPiece& piece = known.pieces[std::size_t(index)];
    const BrokenLine none{0, 0, piece.start, 0};
    const BrokenLine* line = &none;
    for (const BrokenLine& one : piece.lines) {
        if (one.start <= inBlock)
            line = &one;
    }
    if (line->start == 0)
        return {block.position(), topOf(block)};
    return {block.position() + line->start, pieceTop(block, known, index) + line->top / u};
}

qreal ParagraphLayout::bottomAt(qsizetype position)
{
    const QTextBlock block = m_store.blockAt(position);
    if (isCell(block, m_styles) || block.length() - 1 <= 2 * m_pieceLength)
        return bottomOf(block);
    const ParagraphBox& known = arrange(block);
    const int index = known.pieceAt(int(position) - block.position());
    return index + 1 == int(known.pieces.size()) ? bottomOf(block)
                                                 : pieceTop(block, known, index + 1);
}

TextRange ParagraphLayout::textBetween(qreal top, qreal bottom)
{
    const qsizetype first = placeAtY(top).position;
    const qsizetype last = placeAtY(bottom).position;
    const QTextBlock block = m_store.blockAt(last);
    const QTextBlock next = below(block);
    qsizetype end = next.isValid() ? qsizetype(next.position()) : m_store.length();
    if (last > block.position() || !isOnePart(block)) {
        const ParagraphBox& known = arrange(block);
        const int index = known.pieceAt(int(last) - block.position());
        if (index + 1 < int(known.pieces.size()))
            end = block.position() + known.pieces[std::size_t(index)].end();
    }
    return TextRange::between(first, end);
}

PagePlace ParagraphLayout::placeAtY(qreal y)
{
    const QTextBlock block = blockAtY(y);
    if (isCell(block, m_styles) || block.length() - 1 <= 2 * m_pieceLength)
        return {block.position(), topOf(block)};
    const ParagraphBox& known = arrange(block);
    const qreal inContent = (y - topOf(block)) * u - known.content.top();
    const int index = known.pieceAtHeight(inContent);
    const ParagraphPiece& piece = known.pieces[std::size_t(index)];
    const qreal inPiece = inContent - known.topOf(index);
    int position = piece.start;
    for (const BrokenLine& line : piece.lines) {
        if (line.top <= inPiece)
            position = line.start;
    }
    return placeAt(block.position() + position);
}

qreal ParagraphLayout::topOf(const QTextBlock& block) const
{
    return m_heights.topOf(rowStart(block).blockNumber());
}

qreal ParagraphLayout::bottomOf(const QTextBlock& block) const
{
    const int number = rowStart(block).blockNumber();
    return m_heights.topOf(number) + m_heights.at(number);
}

QTextBlock ParagraphLayout::rowStart(const QTextBlock& block) const
{
    QTextBlock start = block;
    while (continuesRow(start, m_styles))
        start = start.previous();
    return start;
}

QTextBlock ParagraphLayout::blockAtY(qreal y) const
{
    return rowStart(document().findBlockByNumber(int(m_heights.indexAt(y))));
}

QTextBlock ParagraphLayout::below(const QTextBlock& block) const
{
    QTextBlock next = block.next();
    while (next.isValid() && continuesRow(next, m_styles))
        next = next.next();
    return next;
}

QTextBlock ParagraphLayout::above(const QTextBlock& block) const
{
    const QTextBlock previous = rowStart(block).previous();
    return previous.isValid() ? rowStart(previous) : previous;
}

} // namespace orvane
