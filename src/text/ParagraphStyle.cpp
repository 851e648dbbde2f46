// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/ParagraphStyle.h"

#include <QHash>

namespace orvane {

std::size_t qHash(const ParagraphStyle& style, std::size_t seed) noexcept
{
    const std::size_t cell =
        style.cell ? qHashMulti(1, style.cell->table.id, style.cell->row, style.cell->column) : 0;
    return qHashMulti(seed, int(style.alignment), style.firstLineHeadIndent, style.headIndent,
                      style.tailIndent, style.lineHeightMultiple, style.lineSpacing,
                      style.spacingBefore, style.spacingAfter, style.tabStops.size(),
                      style.textLists.size(), cell);
}

} // namespace orvane
