// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/rtf/RtfBuilder.h"

#include <QHash>

#include <algorithm>

namespace orvane {
namespace {

// Edges that differ by less are one column's: writers round.
constexpr int edgeTolerance = 15;

int columnOf(const QList<int>& edges, int edge)
{
    const auto found = std::lower_bound(edges.begin(), edges.end(), edge - edgeTolerance);
    return int(found - edges.begin());
}

void appendRuns(AttributedString& target, const AttributedString& source, TextRange range,
                const SharedParagraphStyle& paragraph)
{
    source.forEachCharacterRun(range, [&](TextRange run, const SharedCharacterStyle& style) {
        target.append(QStringView(source.text()).sliced(run.location, run.length), style,
                      paragraph);
    });
}

} // namespace

RtfBuilder::RtfBuilder(qsizetype inputSize, std::function<QUuid()> newTableId)
    : m_paragraphStyles(4'000'000 + 16 * inputSize)
    , m_cellLooks(1'000'000 + 8 * inputSize)
    , m_newTableId(std::move(newTableId))
{}

SharedParagraphStyle RtfBuilder::shared(const ParagraphStyle& style)
{
    return m_paragraphStyles.intern(style, {});
}

void RtfBuilder::text(QStringView text, const SharedCharacterStyle& style)
{
    m_pending.append(text, style);
}

void RtfBuilder::textBefore(const QString& text, const SharedCharacterStyle& style)
{
    m_pending.insert(m_lineStart, AttributedString(text, style));
}

AttributedString RtfBuilder::takePending()
{
    m_lineStart = 0;
    m_itemStyle.reset();
    return std::exchange(m_pending, {});
}

void RtfBuilder::endParagraph(const ParagraphStyle& paragraph, const SharedCharacterStyle& style)
{
    flushTable();
    m_pending.append(u"\n", style);
    const AttributedString line = takePending();
    appendRuns(m_text, line, line.fullRange(), shared(paragraph));
}

void RtfBuilder::pageBreakBefore(const ParagraphStyle& paragraph, const SharedCharacterStyle& style)
{
    flushTable();
    if (!m_text.isEmpty())
        m_text.append(u"\f\n", style, shared(paragraph));
}

void RtfBuilder::endLineInCell(const ParagraphStyle& paragraph, const SharedCharacterStyle& style)
{
    if (!isBehindLine() && !paragraph.textLists.isEmpty())
        m_itemStyle = paragraph;
    m_pending.append(QStringView(&lineSeparator, 1), style);
    m_lineStart = m_pending.length();
}

void RtfBuilder::endCell(const ParagraphStyle& paragraph, const SharedCharacterStyle& style)
{
    m_pending.append(u"\n", style);
    const SharedParagraphStyle shared = this->shared(m_itemStyle.value_or(paragraph));
    const AttributedString contents = takePending();
    appendRuns(m_cells, contents, contents.fullRange(), {});
    m_pendingCells.append({m_cells.length(), shared});
}

void RtfBuilder::endRow(std::shared_ptr<const RtfRowDefinition> definition)
{
    const qsizetype earlier = m_pendingRows.isEmpty() ? 0 : m_pendingRows.last().endCell;
    if (m_pendingCells.size() > earlier)
        m_pendingRows.append({m_pendingCells.size(), std::move(definition)});
}

QList<int> RtfBuilder::columnEdges() const
{
    QList<int> edges;
    const RtfRowDefinition* previous = nullptr;
    for (const Row& row : m_pendingRows) {
        if (row.definition.get() == previous)
            continue;
        previous = row.definition.get();
        edges.append(previous->left);
        for (const RtfCellDefinition& cell : previous->cells)
            edges.append(cell.right);
    }
    std::sort(edges.begin(), edges.end());
    QList<int> distinct;
    for (const int edge : edges) {
        if (distinct.isEmpty() || edge - distinct.last() > edgeTolerance)
            distinct.append(edge);
    }
    return distinct;
}

QList<RtfBuilder::PlacedCell> RtfBuilder::placeCells(const QList<int>& edges) const
{
    QList<PlacedCell> placed;
    placed.reserve(m_pendingCells.size());
    QHash<int, qsizetype> above; // the placed cell that ends a column so far
    qsizetype index = 0;
    for (int row = 0; row < m_pendingRows.size(); ++row) {
        const RtfRowDefinition& definition = *m_pendingRows[row].definition;
        int left = definition.left;
        int freeColumn = 0;
        for (qsizetype i = 0; index < m_pendingRows[row].endCell; ++i, ++index) {
            static const RtfCellDefinition plain;
            const bool defined = i < definition.cells.size();
            const RtfCellDefinition& cell = defined ? definition.cells[i] : plain;
            int column = defined ? columnOf(edges, left) : freeColumn;
            column = std::max(column, freeColumn);
            const int next =
                defined ? std::max(columnOf(edges, cell.right), column + 1) : column + 1;
            left = std::max(left, cell.right);
            if (cell.mergesLeft && freeColumn > 0 && i > 0 && !placed.isEmpty()) {
                placed.last().columnSpan += next - column;
                freeColumn = next;
                continue;
            }
            freeColumn = next;
            const auto over = above.constFind(column);
            if (cell.mergesUp && over != above.constEnd() &&
                placed[*over].row + placed[*over].rowSpan == row) {
                ++placed[*over].rowSpan;
                continue;
            }
            above[column] = placed.size();
            placed.append({index, row, column, 1, next - column, &cell, &definition});
        }
    }
    return placed;
}

TableCellBlock RtfBuilder::cellBlock(const PlacedCell& cell, const TextTable& table,
                                     const QList<int>& edges)
{
    TableCellBlock block;
    block.table = table;
    block.row = cell.row;
    block.column = cell.column;
    block.rowSpan = cell.rowSpan;
    block.columnSpan = cell.columnSpan;
    block.look = m_cellLooks.intern(cellLook(cell, edges), {});
    return block;
}

CellLook RtfBuilder::cellLook(const PlacedCell& cell, const QList<int>& edges)
{
    CellLook look;
    const qsizetype right = cell.column + cell.columnSpan;
    if (right < edges.size() && edges.last() > edges.first()) {
        look.widthPercent =
            100.0 * (edges[right] - edges[cell.column]) / (edges.last() - edges.first());
    }
    const RtfCellDefinition& source = *cell.definition;
    for (std::size_t edge = 0; edge < 4; ++edge) {
        const int padding =
            source.padding[edge] >= 0 ? source.padding[edge] : cell.rowDefinition->padding[edge];
        look.padding[edge] = padding / twipsPerPoint;
        look.borderWidth[edge] = source.borderWidth[edge] / twipsPerPoint;
        if (qAlpha(source.borderColor[edge]) != 0)
            look.borderColor[edge] =
                RgbaColor::fromQColor(QColor::fromRgba(source.borderColor[edge]));
    }
    if (qAlpha(source.background) != 0)
        look.background = RgbaColor::fromQColor(QColor::fromRgba(source.background));
    return look;
}

void RtfBuilder::flushTable()
{
    if (m_pendingCells.isEmpty())
        return;
    endRow(m_pendingRows.isEmpty() ? std::make_shared<const RtfRowDefinition>()
                                   : m_pendingRows.last().definition);
    const QList<int> edges = columnEdges();
    const QList<PlacedCell> placed = placeCells(edges);
    TextTable table;
    table.id = m_newTableId();
    for (const PlacedCell& cell : placed)
        table.columns = std::max(table.columns, cell.column + cell.columnSpan);
    for (const PlacedCell& cell : placed) {
        const qsizetype from = cell.index == 0 ? 0 : m_pendingCells[cell.index - 1].end;
        ParagraphStyle style = *m_pendingCells[cell.index].paragraph;
        style.cell = cellBlock(cell, table, edges);
        appendRuns(m_text, m_cells, TextRange::between(from, m_pendingCells[cell.index].end),
                   shared(style));
    }
    m_cells = {};
    m_pendingCells.clear();
    m_pendingRows.clear();
}

AttributedString RtfBuilder::finish(const ParagraphStyle& lastParagraph)
{
    flushTable();
    const SharedParagraphStyle style = shared(lastParagraph);
    const AttributedString line = takePending();
    appendRuns(m_text, line, line.fullRange(), style);
    if (line.isEmpty())
        m_text.setParagraphStyle({m_text.length(), 0}, style);
    return std::move(m_text);
}

} // namespace orvane
