// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/value/AttributedString.h"

#include <string>

namespace orvane {

/// A table made by hand: each cell says what it likes of its place.
[[nodiscard]] AttributedString oddTable(const QList<TableCellBlock>& cells);

/// As many edits of a table as there are to try on one.
inline constexpr int oddTableEdits = 13;

/// Loads the cells, from an archive where that takes them, makes one edit at a cell and takes it
/// back. What went wrong:
/// cells that overlap or stand outside, a word that is lost, an undo that doesn't lead back. Empty
/// where all is well. A QGuiApplication must live.
[[nodiscard]] std::string oddTableFault(const QList<TableCellBlock>& cells, int edit, int at);

} // namespace orvane
