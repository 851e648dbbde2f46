// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// How a paragraph or a row of cells gets its lines, and how high it is taken to be without.
#include "text/layout/ParagraphLayout.h"
#include "text/layout/TableColumns.h"
#include "text/store/Graphemes.h"
#include "text/value/LayoutUnits.h"

#include <QHash>

#include <algorithm>
#include <cmath>

namespace orvane {

namespace {

constexpr qreal u = layoutUnitsPerPoint;

} // namespace

void ParagraphLayout::estimateAll()
{
    std::vector<double> heights;
    heights.reserve(std::size_t(document().blockCount()));
    for (QTextBlock block = document().firstBlock(); block.isValid(); block = block.next())
        heights.push_back(estimate(block));
    m_heights.assign(heights);
}

double ParagraphLayout::estimate(const QTextBlock& block) const
{
    const ParagraphStyle& style = *m_styles.styleOf(block.blockFormat());
    if (!style.cell)
        return estimateText(block, m_width * u) + style.spacingBefore + style.spacingAfter;
    if (continuesRow(block, m_styles))
        return 0;
    double height = 0;
    const TableRow row = rowOf(block, m_styles);
    for (QTextBlock cell = row.first;; cell = cell.next()) {
        const TableCellBlock& about = *cellOf(cell, m_styles);
        const qreal column = m_width * u / std::max(1, about.table.columns);
        height = std::max(height, estimateText(cell, column) + about.look->padding[0] +
                                      about.look->padding[2]);
        if (cell == row.last)
            return height;
    }
}

double ParagraphLayout::estimateText(const QTextBlock& block, qreal column) const
{
    const qreal inLine = std::max(1.0, column / m_characterWidth);
    const qreal lines = std::max(1.0, std::ceil(qreal(block.length() - 1) / inLine));
    return lines * m_plainLineHeight / u;
}

double ParagraphLayout::expected(const QTextBlock& block) const
{
    const ParagraphBox* known = existingBox(block);
    if (!known || known->pieces.empty() || isCell(block, m_styles))
        return estimate(block);
    return (known->content.top() + known->topOf(int(known->pieces.size()))) / u +
           std::max(0.0, known->style->spacingAfter);
}

ParagraphBox::Cutting ParagraphLayout::cutting() const
{
    const qreal inLine = std::max(1.0, m_width * u / m_characterWidth);
    return {m_pieceLength, m_plainLineHeight / inLine};
}

ParagraphSource ParagraphLayout::sourceFor(const QTextBlock& block, const ParagraphBox& box)
{
    ParagraphSource source{m_store, block,       *box.style, m_settings,
                           m_font,  m_decorator, m_objects,  m_fonts};
    if (hasPreedit() && block.contains(m_preedit.position))
        source.preedit = &m_preedit;
    source.column = box.column;
    source.characterWidth = m_characterWidth;
    source.rightToLeft = box.rightToLeft;
    source.tallestObject = m_tallestObject * u;
    return source;
}

/// Cuts the paragraph into pieces, unless it is cut and its lines stand in the same way.
void ParagraphLayout::prepare(const QTextBlock& block, ParagraphBox& box, qreal column)
{
    const SharedParagraphStyle& style = m_styles.styleOf(block.blockFormat());
    const bool isSame =
        box.column == column && box.style == style && box.textLength() == block.length() - 1;
    if (!isSame)
        box.pieces.clear();
    box.column = column;
    box.style = style;
    box.generation = m_generation;
    if (box.pieces.empty() || box.directionAt < 0) {
        const BaseDirection direction = baseDirection(m_store, block, style->direction);
        if (direction.rightToLeft != box.rightToLeft)
            box.pieces.clear();
        box.rightToLeft = direction.rightToLeft;
        box.directionAt = direction.decidedAt;
    }
    if (box.pieces.empty())
        box.cut(block.length() - 1, cutting());
}

void ParagraphLayout::arrangeParagraph(const QTextBlock& block, ParagraphBox& box)
{
    const ParagraphStyle& style = *m_styles.styleOf(block.blockFormat());
    prepare(block, box, m_width * u);
    box.cell = {};
    box.content = QRectF(0, std::max(0.0, style.spacingBefore) * u, box.column, 0);
    updateHeight(block, box);
}

ParagraphBox& ParagraphLayout::arrange(const QTextBlock& block)
{
    ParagraphBox& known = boxFor(block);
    if (isCell(block, m_styles)) {
        if (!isLaidOut(block))
            layOutRow(block);
    } else if (known.generation != m_generation) {
        arrangeParagraph(block, known);
    }
    return known;
}

void ParagraphLayout::updateHeight(const QTextBlock& block, ParagraphBox& box)
{
    box.content.setHeight(box.topOf(int(box.pieces.size())));
    if (box.cell.isNull()) {
        m_heights.set(block.blockNumber(),
                      box.content.bottom() / u + std::max(0.0, box.style->spacingAfter));
    }
}

/// A guessed start is moved to where a line might begin.
void ParagraphLayout::chooseStart(const QTextBlock& block, ParagraphBox& box, int piece) const
{
    constexpr int searched = 200;
    const int start = box.pieces[std::size_t(piece)].start;
    const int reach = std::min(searched, box.pieces[std::size_t(piece)].length - 1);
    const qsizetype at = block.position() + start;
    const QString behind = m_store.text({at, std::max(0, reach)});
    qsizetype found = behind.indexOf(QChar(lineSeparator));
    if (found < 0)
        found = behind.indexOf(u' ');
    if (found >= 0)
        box.moveStart(piece, int(found) + 1);
    else if (const auto whole = aroundWholeGraphemes(m_store, TextSelection::caret(at)).position;
             whole - at < reach)
        box.moveStart(piece, int(whole - at));
}

void ParagraphLayout::breakPieceAt(const QTextBlock& block, ParagraphBox& box, int index)
{
    const ParagraphSource source = sourceFor(block, box);
    const ParagraphPiece& piece = box.pieces[std::size_t(index)];
    if (piece.start > 0 && !box.hanging && !box.style->textLists.isEmpty())
        (void)breakPiece(source, 0, 1, box.hanging);
    // What has grown or shrunk too far is cut elsewhere.
    const bool isLast = piece.end() == box.textLength();
    const bool isFitting =
        piece.length <= 2 * m_pieceLength && (isLast || 8 * piece.length >= m_pieceLength);
    // A little less will do: a key above lets each piece begin a character earlier, and end so.
    constexpr int leeway = 8;
    const int wanted = isFitting ? std::max(1, piece.length - leeway) : m_pieceLength;
    BrokenPiece broken = breakPiece(source, piece.start, wanted, box.hanging,
                                    std::move(box.pieces[std::size_t(index)].layout));
    m_laidOutCharacters += broken.length;
    box.place(index, std::move(broken), cutting());
}

int ParagraphLayout::layOutPiece(const QTextBlock& block, ParagraphBox& box, int position)
{
    bool isChanged = false;
    int index = box.pieceAt(position);
    for (;; index = box.pieceAt(position)) {
        const ParagraphPiece& piece = box.pieces[std::size_t(index)];
        if (piece.hasLines() && piece.isFirm)
            break;
        isChanged = true;
        if (piece.isFirm) {
            breakPieceAt(block, box, index);
            continue;
        }
        // Lines that begin at different places soon come to end at the same, so where this piece
        // begins is found by those of the piece before it, wherever they begin.
        const ParagraphPiece& before = box.pieces[std::size_t(index) - 1];
        if (!before.isFirm && !before.hasLines())
            chooseStart(block, box, index - 1);
        breakPieceAt(block, box, index - 1);
    }
    if (isChanged)
        updateHeight(block, box);
    return index;
}

void ParagraphLayout::layOutAllPieces(const QTextBlock& block, ParagraphBox& box)
{
    for (int position = 0;;) {
        const int index = layOutPiece(block, box, position);
        const ParagraphPiece& piece = box.pieces[std::size_t(index)];
        if (index + 1 == int(box.pieces.size()))
            return;
        position = piece.end();
    }
}

void ParagraphLayout::ensureLaidOut(const QTextBlock& block)
{
    if (!block.isValid())
        return;
    ParagraphBox& known = arrange(block);
    layOutAllPieces(block, known);
}

void ParagraphLayout::ensureLaidOut(const QTextBlock& block, qreal top, qreal bottom)
{
    ParagraphBox& known = arrange(block);
    if (isOnePart(block)) {
        layOutAllPieces(block, known);
        return;
    }
    const qreal first = (top - topOf(block)) * u - known.content.top();
    int position = known.pieces[std::size_t(known.pieceAtHeight(first))].start;
    for (;;) {
        const int index = layOutPiece(block, known, position);
        const ParagraphPiece& piece = known.pieces[std::size_t(index)];
        if (index + 1 == int(known.pieces.size()) || pieceTop(block, known, index + 1) >= bottom)
            return;
        position = piece.end();
    }
}

void ParagraphLayout::layOutRow(const QTextBlock& cell)
{
    const TableRow row = rowOf(cell, m_styles);
    const TableCellBlock& table = *cellOf(row.first, m_styles);
    const qreal percent = std::clamp(table.table.contentWidthPercent, 1.0, 100.0);
    const std::vector<qreal> edges = columnEdges(row, m_styles, m_width * u * percent / 100);
    const int columns = int(edges.size()) - 1;
    const bool isMirrored = runsRightToLeft(row, m_styles);

    // Cells stand at their column, each paragraph of a cell below the one before.
    qreal rowHeight = 0;
    QHash<int, qreal> filled;
    std::vector<QTextBlock> cells;
    for (QTextBlock block = row.first;; block = block.next()) {
        const ParagraphStyle& style = *m_styles.styleOf(block.blockFormat());
        const TableCellBlock& about = *style.cell;
        const int column = std::clamp(about.column, 0, columns - 1);
        const int span = std::clamp(about.columnSpan, 1, columns - column);
        const auto inset = [&](BoxEdge edge) {
            const auto i = std::size_t(edge);
            return std::clamp(about.look->padding[i], 0.0, 100.0) * u +
                   std::clamp(about.look->borderWidth[i], 0.0, 20.0) * u;
        };
        ParagraphBox& box = boxFor(block);
        const qreal start = edges[std::size_t(column)];
        const qreal end = edges[std::size_t(column) + std::size_t(span)];
        box.cell = QRectF(isMirrored ? m_width * u - end : start, 0, end - start, 0);
        const qreal left = box.cell.left() + inset(BoxEdge::left);
        prepare(block, box,
                std::max(u, box.cell.width() - inset(BoxEdge::left) - inset(BoxEdge::right)));
        const auto standing = filled.constFind(column);
        const qreal top = (standing == filled.constEnd() ? inset(BoxEdge::top) : *standing) +
                          std::max(0.0, style.spacingBefore) * u;
        box.content = QRectF(left, top, box.column, 0);
        layOutAllPieces(block, box);
        updateHeight(block, box);
        const qreal bottom = box.content.bottom() + std::max(0.0, style.spacingAfter) * u;
        filled.insert(column, bottom);
        rowHeight = std::max(rowHeight, bottom + inset(BoxEdge::bottom));
        cells.push_back(block);
        if (block == row.last)
            break;
    }
    const int first = row.first.blockNumber();
    for (std::size_t i = 0; i < cells.size(); ++i) {
        existingBox(cells[i])->cell.setHeight(rowHeight);
        m_heights.set(first + int(i), i == 0 ? rowHeight / u : 0);
    }
}

} // namespace orvane
