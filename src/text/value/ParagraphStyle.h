// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/value/RgbaColor.h"
#include "text/value/SharedValue.h"

#include <QList>
#include <QString>
#include <QUuid>

#include <array>
#include <optional>

namespace orvane {

/// `natural` follows the direction of the text.
enum class TextAlignment { natural, left, center, right, justified };
enum class WritingDirection { natural, leftToRight, rightToLeft };
enum class TabAlignment { left, center, right, decimal };

/// A tab stop, in points from the leading margin.
struct TextTab {
    double location = 0;
    TabAlignment alignment = TabAlignment::left;

    bool operator==(const TextTab&) const = default;
};

enum class ListMarker {
    disc,
    circle,
    square,
    decimal,
    lowerRoman,
    upperRoman,
    lowerAlpha,
    upperAlpha
};

/// A label that a paragraph belongs to a list. The marker that people see is literal text.
struct TextList {
    ListMarker marker = ListMarker::disc;
    int startingNumber = 1;

    bool operator==(const TextList&) const = default;
};

/// The table that cell paragraphs belong to. Tables are told apart by `id` alone.
struct TextTable {
    QUuid id;
    int columns = 1;
    double contentWidthPercent = 100;
    bool hidesEmptyCells = false;

    bool operator==(const TextTable&) const = default;
};

/// One value for each edge of a cell, in the order of `BoxEdge`.
enum class BoxEdge { top, right, bottom, left };
template <typename T>
using PerEdge = std::array<T, 4>;

/// How a cell looks; the cells of a table share few of these. Lengths are in points.
struct CellLook {
    double widthPercent = 0; ///< of the table's width; 0 shares what is left
    PerEdge<double> padding{};
    PerEdge<double> borderWidth{};
    PerEdge<RgbaColor> borderColor{};
    std::optional<RgbaColor> background = std::nullopt;

    bool operator==(const CellLook&) const = default;
};

[[nodiscard]] std::size_t qHash(const CellLook& look, std::size_t seed = 0) noexcept;

/// Makes the paragraph one cell of a table (a cell is one paragraph).
struct TableCellBlock {
    TextTable table;
    int row = 0;
    int column = 0;
    int rowSpan = 1;
    int columnSpan = 1;
    SharedValue<CellLook> look{};

    bool operator==(const TableCellBlock&) const = default;
};

/// What sets a paragraph apart from the text round it, drawn within its own area.
enum class ParagraphFrame {
    none,
    bar,       ///< beside its beginning, in its background's colour: a remark on the text
    ruleAbove, ///< short, before notes
    dashed,    ///< all round: the place of what isn't there
};

/// The attributes of a paragraph. Lengths are in points.
struct ParagraphStyle {
    TextAlignment alignment = TextAlignment::natural;
    WritingDirection direction = WritingDirection::natural;
    double firstLineHeadIndent = 0; ///< from the leading margin, for the first line
    double headIndent = 0;          ///< from the leading margin, for the other lines
    /// Above zero: the line's end counted from the leading margin; else from the trailing margin.
    double tailIndent = 0;
    QList<TextTab> tabStops;       ///< by rising location
    double defaultTabInterval = 0; ///< after the last tab stop; 0 leaves it to the layout
    double lineHeightMultiple = 0; ///< of the natural line height; 0 is the same as 1
    double minimumLineHeight = 0;  ///< 0 for none
    double maximumLineHeight = 0;  ///< 0 for none
    double lineSpacing = 0;        ///< added between the lines of the paragraph
    double spacingBefore = 0;
    double spacingAfter = 0;
    double hyphenationFactor = 0; ///< 0 never hyphenates, 1 always
    bool keepLinesTogether = false;
    bool keepWithNext = false;
    bool widowControl = false; ///< no first or last line alone on a page
    std::optional<RgbaColor> background;
    ParagraphFrame frame = ParagraphFrame::none;
    QList<TextList> textLists; ///< outermost first
    std::optional<TableCellBlock> cell;

    bool operator==(const ParagraphStyle&) const = default;
};

[[nodiscard]] std::size_t qHash(const ParagraphStyle& style, std::size_t seed = 0) noexcept;

using SharedParagraphStyle = SharedValue<ParagraphStyle>;

} // namespace orvane
