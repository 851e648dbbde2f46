// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/layout/TableColumns.h"

#include <algorithm>
#include <numeric>

namespace orvane {

std::vector<qreal> columnEdges(const TableRow& row, const StyleTable& styles, qreal width)
{
    constexpr int mostColumns = 200;
    const int columns = std::clamp(cellOf(row.first, styles)->table.columns, 1, mostColumns);
    std::vector<double> percents(std::size_t(columns), 0);
    for (QTextBlock block = row.first;; block = block.next()) {
        const TableCellBlock& cell = *cellOf(block, styles);
        if (cell.column >= 0 && cell.column < columns && cell.columnSpan == 1)
            percents[std::size_t(cell.column)] = std::clamp(cell.look->widthPercent, 0.0, 100.0);
        if (block == row.last)
            break;
    }
    const double named = std::accumulate(percents.begin(), percents.end(), 0.0);
    const auto unnamed = std::count(percents.begin(), percents.end(), 0.0);
    const bool sharesAlike = named == 0 || (unnamed > 0 && named >= 100);
    std::vector<qreal> edges{0};
    for (const double percent : percents) {
        double share =
            percent > 0 ? percent / std::max(named, 100.0) : (100 - named) / 100 / double(unnamed);
        if (sharesAlike)
            share = 1.0 / columns;
        else if (unnamed == 0)
            share = percent / named;
        edges.push_back(edges.back() + share * width);
    }
    return edges;
}

} // namespace orvane
