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
constexpr int narrowestTwips = 180;

/// Where each column ends, in twips, from the widths that single cells ask for.
QList<int> columnEdges(const TableRows& table)
{
    QList<double> widths(table.columns, 0);
    for (const QList<TablePlace>& row : table.rows) {
        for (const TablePlace& place : row) {
            if (place.kind != TablePlace::Kind::cell)
                continue;
            const TableCellBlock& cell = place.cell();
            if (cell.columnSpan == 1 && place.column < widths.size() && cell.look->widthPercent > 0)
                widths[place.column] = cell.look->widthPercent;
        }
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

void RtfWriter::writeTable(const TableRows& table)
{
    const QList<int> edges = columnEdges(table);
    for (const QList<TablePlace>& row : table.rows)
        writeRow(row, edges, table.runsRightToLeft());
    m_hasParagraphStyle = false;
}

// The definition of a row comes before its cells.
void RtfWriter::writeRow(const QList<TablePlace>& row, const QList<int>& edges, bool isMirrored)
{
    m_body.append("\\trowd\\trgaph0\\trleft0");
    if (isMirrored)
        m_body.append("\\rtlrow");
    for (const TablePlace& place : row) {
        const int past = place.column + place.columns;
        const int beyond = past - int(edges.size());
        appendCellDefinition(place, beyond <= 0 ? edges[past - 1]
                                                : edges.last() + beyond * narrowestTwips);
    }
    m_body.append('\n');
    for (const TablePlace& place : row) {
        if (place.kind == TablePlace::Kind::cell) {
            writeCellContents(place.paragraphs);
        } else {
            m_body.append("\\pard\\intbl ");
            m_hasParagraphStyle = false;
        }
        m_body.append("\\cell\n");
    }
    m_body.append("\\row\n");
}

void RtfWriter::writeCellContents(const QList<TextParagraph>& paragraphs)
{
    useParagraphStyle(paragraphs.first().style);
    for (const TextParagraph& paragraph : paragraphs) {
        if (&paragraph != &paragraphs.first())
            m_body.append("\\line ");
        if (m_lists.hasItemsIn(paragraph.range))
            writeCellLines(paragraph);
        else
            writeText(paragraph.range);
        useStyle(m_document.characterStyle(paragraph.range.end()));
    }
}

// Only paragraphs can be items of a list.
void RtfWriter::writeCellLines(const TextParagraph& paragraph)
{
    for (TextRange line : linesOf(m_document, paragraph.range)) {
        const RtfListTable::Item* item = m_lists.itemAt(line.location);
        const Role role{.list = item ? item->list : 0, .level = item ? item->level : 0};
        useParagraphStyle(paragraph.style, role);
        if (item) {
            writeMarker(*item);
            line = TextRange::between(item->item.contentStart(), line.end());
        }
        writeText(line);
        if (line.end() < paragraph.range.end()) {
            useStyle(m_document.characterStyle(line.end()));
            m_body.append("\\par\n");
        }
    }
}

void RtfWriter::appendCellDefinition(const TablePlace& place, int rightEdge)
{
    static const TableCellBlock empty;
    const TableCellBlock& cell = place.kind == TablePlace::Kind::cell ? place.cell() : empty;
    if (place.kind == TablePlace::Kind::reachedFromAbove)
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
