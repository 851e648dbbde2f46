// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/html/HtmlTokenizer.h"
#include "text/value/AttributedString.h"
#include "text/value/StyleInterner.h"

#include <memory>

namespace orvane {

/// A table while it is being read: its cells' contents one after the other, and their places. The
/// finished table is emitted at its end, when the number of columns is known.
class HtmlTable {
public:
    HtmlTable(const HtmlToken& token, const QUuid& id);

    void beginRow();
    /// Begins a cell at the next free place of the row. False past the last column that a table may
    /// have; what follows then belongs to the cell before.
    bool beginCell(const HtmlToken& token);
    /// A line of the open cell, which becomes one paragraph of `paragraph`'s style.
    void appendLine(const AttributedString& line, const SharedParagraphStyle& paragraph);
    void endCell(const SharedCharacterStyle& style);
    [[nodiscard]] bool isCellOpen() const { return m_isCellOpen; }

    void appendTo(AttributedString& text, StyleInterner<ParagraphStyle>& styles,
                  StyleInterner<CellLook>& looks);

private:
    /// What a cell has of its own.
    struct Look {
        double width = 0; ///< 0 for none
        bool isPercent = false;
        PerEdge<std::optional<double>> border{}; ///< widths in points
        PerEdge<std::optional<RgbaColor>> borderColor{};
        PerEdge<std::optional<double>> padding{};
        std::optional<RgbaColor> background = std::nullopt;
        bool saysBorder = false; ///< a line, or that there is none

        bool operator==(const Look&) const = default;
    };
    struct Cell {
        qsizetype end = 0; // in m_contents
        int row = 0;
        int column = 0;
        int rowSpan = 1;
        int columnSpan = 1;
        SharedParagraphStyle paragraph;
        std::shared_ptr<const Look> look;
    };

    [[nodiscard]] static Look readLook(const HtmlToken& token);
    static void readBorder(Look& look, QStringView name, const QString& value);
    static void readPadding(Look& look, QStringView name, const QString& value);
    [[nodiscard]] QList<double> columnPercents() const;
    [[nodiscard]] CellLook cellLook(const Cell& cell, const QList<double>& percents) const;

    TextTable m_table;
    Look m_look;
    bool m_hasOwnBorders = false; // the document says something about lines
    int m_row = -1;
    int m_column = 0;
    QList<int> m_coveredUntil; // by column: the first row below what covers it
    AttributedString m_contents;
    QList<Cell> m_cells;
    bool m_isCellOpen = false;
    bool m_hasLine = false;
};

} // namespace orvane
