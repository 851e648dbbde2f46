// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/rtf/RtfState.h"
#include "text/value/AttributedString.h"
#include "text/value/StyleInterner.h"

#include <QUuid>

#include <functional>
#include <memory>
#include <optional>

namespace orvane {

/// Puts together the text of an RTF document: paragraphs as they end, and tables once all their
/// rows are known. A cell becomes one paragraph, the paragraphs within it lines.
class RtfBuilder {
public:
    RtfBuilder(qsizetype inputSize, std::function<QUuid()> newTableId);

    void text(QStringView text, const SharedCharacterStyle& style);
    /// The style of the first character of the paragraph, or line of a cell, that has begun;
    /// `fallback` where there is none.
    [[nodiscard]] SharedCharacterStyle lineStyle(const SharedCharacterStyle& fallback) const
    {
        return isAtLineStart() ? fallback : m_pending.characterStyle(m_lineStart);
    }
    /// Puts text before it.
    void textBefore(const QString& text, const SharedCharacterStyle& style);
    void endParagraph(const ParagraphStyle& paragraph, const SharedCharacterStyle& style);
    /// A page break before the paragraph that has begun, unless it is the first.
    void pageBreakBefore(const ParagraphStyle& paragraph, const SharedCharacterStyle& style);
    /// A paragraph that ends inside a cell. Where the first is an item of a list, the cell has its
    /// style.
    void endLineInCell(const ParagraphStyle& paragraph, const SharedCharacterStyle& style);
    void endCell(const ParagraphStyle& paragraph, const SharedCharacterStyle& style);
    void endRow(std::shared_ptr<const RtfRowDefinition> definition);
    [[nodiscard]] bool isAtParagraphStart() const { return m_pending.isEmpty(); }
    /// The same for a line of a cell, too.
    [[nodiscard]] bool isAtLineStart() const { return m_pending.length() == m_lineStart; }
    [[nodiscard]] qsizetype lineLength() const { return m_pending.length() - m_lineStart; }
    /// Whether lines of the same cell have ended before.
    [[nodiscard]] bool isBehindLine() const { return m_lineStart > 0; }

    /// The whole text. What follows the last paragraph's end becomes the last paragraph.
    [[nodiscard]] AttributedString finish(const ParagraphStyle& lastParagraph);

private:
    struct Cell {
        qsizetype end; // in m_cells
        SharedParagraphStyle paragraph;
    };
    struct Row {
        qsizetype endCell;
        std::shared_ptr<const RtfRowDefinition> definition;
    };
    struct PlacedCell {
        qsizetype index;
        int row;
        int column;
        int rowSpan;
        int columnSpan;
        const RtfCellDefinition* definition;
        const RtfRowDefinition* rowDefinition;
    };

    [[nodiscard]] SharedParagraphStyle shared(const ParagraphStyle& style);
    [[nodiscard]] QList<int> columnEdges() const;
    [[nodiscard]] QList<PlacedCell> placeCells(const QList<int>& edges) const;
    [[nodiscard]] TableCellBlock cellBlock(const PlacedCell& cell, const TextTable& table,
                                           const QList<int>& edges);
    [[nodiscard]] static CellLook cellLook(const PlacedCell& cell, const QList<int>& edges);
    void flushTable();
    [[nodiscard]] AttributedString takePending();

    AttributedString m_text;
    AttributedString m_pending; // the paragraph that has begun
    qsizetype m_lineStart = 0;  // in m_pending, where its last line within a cell begins
    std::optional<ParagraphStyle> m_itemStyle; // of the cell's first line
    AttributedString m_cells; // the contents of the pending table's cells, one after the other
    QList<Cell> m_pendingCells;
    QList<Row> m_pendingRows;
    StyleInterner<ParagraphStyle> m_paragraphStyles;
    StyleInterner<CellLook> m_cellLooks;
    std::function<QUuid()> m_newTableId;
};

} // namespace orvane
