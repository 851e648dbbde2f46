// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/value/ParagraphStyle.h"

#include <QHash>

namespace orvane {

namespace {

std::size_t hashOf(const RgbaColor& color)
{
    return qHashMulti(1, color.red, color.green, color.blue, color.alpha);
}

std::size_t hashOf(const TableCellBlock& cell)
{
    return qHashMulti(1, cell.table.id, cell.row, cell.column, cell.rowSpan, cell.columnSpan,
                      qHash(*cell.look));
}

} // namespace

std::size_t qHash(const CellLook& look, std::size_t seed) noexcept
{
    std::size_t hash =
        qHashMulti(seed, look.widthPercent, look.background ? hashOf(*look.background) : 0);
    hash = qHashRange(look.padding.begin(), look.padding.end(), hash);
    hash = qHashRange(look.borderWidth.begin(), look.borderWidth.end(), hash);
    for (const RgbaColor& color : look.borderColor)
        hash = qHashMulti(hash, hashOf(color));
    return hash;
}

std::size_t qHash(const ParagraphStyle& style, std::size_t seed) noexcept
{
    std::size_t hash = qHashMulti(
        seed, int(style.alignment), int(style.direction), style.firstLineHeadIndent,
        style.headIndent, style.tailIndent, style.defaultTabInterval, style.lineHeightMultiple,
        style.minimumLineHeight, style.maximumLineHeight, style.lineSpacing, style.spacingBefore,
        style.spacingAfter, style.hyphenationFactor, style.keepLinesTogether, style.keepWithNext,
        style.widowControl, style.background ? hashOf(*style.background) : 0, int(style.frame),
        style.cell ? hashOf(*style.cell) : 0);
    for (const TextTab& tab : style.tabStops)
        hash = qHashMulti(hash, tab.location, int(tab.alignment));
    for (const TextList& list : style.textLists)
        hash = qHashMulti(hash, int(list.marker), list.startingNumber);
    return hash;
}

} // namespace orvane
