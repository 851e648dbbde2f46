// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/rtf/RtfState.h"
#include "text/rtf/RtfText.h"
#include "text/rtf/RtfWriter.h"

#include <array>
#include <cmath>

namespace orvane {
namespace {

// The width that tables are written in: six and a half inches, divisible by most column counts.
constexpr int tableTwips = 9360;
constexpr int mostColumns = 1'000;
constexpr int narrowestTwips = 180;

int columnCount(const QList<TableCellBlock>& cells)
{
    int columns = 1;
    for (const TableCellBlock& cell : cells)
        columns = std::max(columns, cell.column + std::max(1, cell.columnSpan));
    return std::min(columns, mostColumns);
}

/// Where each column ends, in twips, from the widths that single cells ask for.
QList<int> columnEdges(const QList<TableCellBlock>& cells)
{
    QList<double> widths(columnCount(cells), 0);
    for (const TableCellBlock& cell : cells) {
        if (cell.columnSpan == 1 && cell.column < widths.size() && cell.look->widthPercent > 0)
            widths[cell.column] = cell.look->widthPercent;
    }
    const double taken = std::reduce(widths.begin(), widths.end());
    const auto open = std::count(widths.begin(), widths.end(), 0.0);
    for (double& width : widths) {
        if (width == 0)
            width = std::max(1.0, (100 - taken) / double(open));
    }
    const double total = std::reduce(widths.begin(), widths.end());
    QList<int> edges;
    double sum = 0;
    for (const double width : widths) {
        sum += width;
        edges.append(int(std::lround(tableTwips * sum / total)));
    }
    return edges;
}

} // namespace

void RtfWriter::writeTable(const QList<Paragraph>& cells)
{
    QList<TableCellBlock> blocks;
    blocks.reserve(cells.size());
    for (const Paragraph& cell : cells)
        blocks.append(*cell.style->cell);
    const QList<int> edges = columnEdges(blocks);
    QHash<int, Merge> merges; // by the column where they begin
    for (qsizetype first = 0; first < cells.size();) {
        qsizetype past = first + 1;
        while (past < cells.size() && blocks[past].row == blocks[first].row &&
               blocks[past].column >= blocks[past - 1].column)
            ++past;
        writeRow(cells, TextRange::between(first, past), edges, merges);
        first = past;
    }
    m_hasParagraphStyle = false;
}

// The definition of a row comes before its cells: one entry for each cell and for each place that a
// cell from above reaches into.
void RtfWriter::writeRow(const QList<Paragraph>& cells, TextRange rowCells, const QList<int>& edges,
                         QHash<int, Merge>& merges)
{
    static const TableCellBlock empty;
    const int row = cells[rowCells.location].style->cell->row;
    const auto rightEdge = [&](int past) {
        const int beyond = past - int(edges.size());
        return beyond <= 0 ? edges[past - 1] : edges.last() + beyond * narrowestTwips;
    };
    m_body.append("\\trowd\\trgaph0\\trleft0");
    QList<bool> isFilled;
    int column = 0;
    const auto fillGap = [&] {
        const Merge merge = merges.value(column);
        const bool mergesUp = merge.rowBelow > row;
        column += mergesUp ? merge.columns : 1;
        appendCellDefinition(empty, rightEdge(column), mergesUp);
        isFilled.append(false);
    };
    for (qsizetype i = rowCells.location; i < rowCells.end(); ++i) {
        const TableCellBlock& cell = *cells[i].style->cell;
        if (i > rowCells.location && cells[i - 1].style->cell->column == cell.column)
            continue;
        while (column < std::min(cell.column, int(edges.size())))
            fillGap();
        const int columns = std::clamp(cell.columnSpan, 1, int(edges.size()));
        if (cell.rowSpan > 1)
            merges[column] = {row + cell.rowSpan, columns};
        column += columns;
        appendCellDefinition(cell, rightEdge(column), false);
        isFilled.append(true);
    }
    while (merges.value(column).rowBelow > row)
        fillGap();
    m_body.append('\n');
    qsizetype next = rowCells.location;
    for (const bool filled : isFilled) {
        if (filled)
            writeCellContents(cells, next);
        else
            m_body.append("\\pard\\intbl ");
        m_hasParagraphStyle = m_hasParagraphStyle && filled;
        m_body.append("\\cell\n");
    }
    m_body.append("\\row\n");
}

void RtfWriter::writeCellContents(const QList<Paragraph>& cells, qsizetype& next)
{
    const int column = cells[next].style->cell->column;
    useParagraphStyle(cells[next].style);
    for (;;) {
        writeText(cells[next].range);
        useStyle(m_document.characterStyle(cells[next].range.end()));
        ++next;
        if (next == cells.size() || cells[next].style->cell->column != column ||
            cells[next].style->cell->row != cells[next - 1].style->cell->row)
            return;
        m_body.append("\\line ");
    }
}

void RtfWriter::appendCellDefinition(const TableCellBlock& cell, int rightEdge, bool mergesUp)
{
    if (mergesUp)
        m_body.append("\\clvmrg");
    else if (cell.rowSpan > 1)
        m_body.append("\\clvmgf");
    static constexpr std::array<QByteArrayView, 4> borders{"\\clbrdrt", "\\clbrdrr", "\\clbrdrb",
                                                           "\\clbrdrl"};
    // The long-standing names of top and left padding are each other's.
    static constexpr std::array<QByteArrayView, 4> paddings{
        "\\clpadfl3\\clpadl", "\\clpadfr3\\clpadr", "\\clpadfb3\\clpadb", "\\clpadft3\\clpadt"};
    for (std::size_t edge = 0; edge < 4; ++edge) {
        const int width =
            std::clamp(int(std::lround(cell.look->borderWidth[edge] * twipsPerPoint)), 0, 255);
        if (width > 0) {
            m_body.append(borders[edge]);
            appendRtfWord(m_body, "\\brdrs\\brdrw", width);
            appendRtfWord(m_body, "\\brdrcf", m_palette.color(cell.look->borderColor[edge]));
        }
        const int padding =
            std::clamp(int(std::lround(cell.look->padding[edge] * twipsPerPoint)), 0, 1440);
        appendRtfWord(m_body, paddings[edge], padding);
    }
    if (cell.look->background && cell.look->background->alpha > 0)
        appendRtfWord(m_body, "\\clcbpat", m_palette.color(*cell.look->background));
    appendRtfWord(m_body, "\\cellx", rightEdge);
}

} // namespace orvane
