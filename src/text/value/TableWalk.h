// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/value/AttributedString.h"

#include <functional>

namespace orvane {

/// A paragraph of a text: its place without the "\n", and how it looks.
struct TextParagraph {
    TextRange range;
    SharedParagraphStyle style;
};

/// One place in a row of a table.
struct TablePlace {
    enum class Kind {
        cell,
        empty,            ///< no paragraph says what stands here
        reachedFromAbove, ///< a cell of a row above reaches down to here
    };

    Kind kind = Kind::cell;
    int column = 0;
    int columns = 1;                 ///< how many it takes
    QList<TextParagraph> paragraphs; ///< of a cell, one below the other

    /// What the first paragraph of a cell says about it.
    [[nodiscard]] const TableCellBlock& cell() const { return *paragraphs.first().style->cell; }
};

/// Consecutive cells of one table, row by row. The places of a row follow each other without gaps
/// from column 0; columns behind its last cell have none.
struct TableRows {
    static constexpr int mostColumns = 1'000;

    int columns = 1; ///< of the widest row, at most `mostColumns`
    QList<QList<TablePlace>> rows;

    /// Whether the columns follow one another from the right: the first cell is a paragraph that
    /// was set to run so.
    [[nodiscard]] bool runsRightToLeft() const;
};

/// The lines of a cell's paragraph, which U+2028 parts, in their order; at least one.
[[nodiscard]] QList<TextRange> linesOf(const AttributedString& text, TextRange paragraph);

/// Walks a text from its start: `visitParagraph` is called for each paragraph that stands by
/// itself, `visitTable` for each table. A row holds consecutive cells of one row of which none
/// stands left of the one before; the last paragraph of a text is never a cell, whatever its style.
void walkParagraphsAndTables(const AttributedString& text,
                             const std::function<void(const TextParagraph&)>& visitParagraph,
                             const std::function<void(const TableRows&)>& visitTable);

} // namespace orvane
