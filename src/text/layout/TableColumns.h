// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/store/TableRow.h"

#include <vector>

namespace orvane {

/// Where the columns of a row begin, and last where the row ends, in a table of `width`. Columns
/// that name no width share what is left; where nothing is left for them, all share alike.
[[nodiscard]] std::vector<qreal> columnEdges(const TableRow& row, const StyleTable& styles,
                                             qreal width);

} // namespace orvane
