// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/tables/TableEngine.h"

#include <QMimeData>

namespace orvane {

using CellContents = QList<QList<AttributedString>>;

/// Rows and cells of tab-separated text, as spreadsheets put it on the clipboard: a cell in quotes
/// may hold tabs, line ends, which become U+2028, and doubled quotes.
[[nodiscard]] CellContents cellsOfTabbedText(QStringView text);
/// The cells of the first table of a text that holds nothing else but empty lines; else nothing.
[[nodiscard]] CellContents cellsOfTable(const AttributedString& text);
/// The same from the clipboard or a drag: a table of our own form, RTF or HTML, or text with tabs.
[[nodiscard]] CellContents cellsIn(const QMimeData& data);
/// Lines with a tab between cells, in the plain form of a text that has tables.
[[nodiscard]] QString tabbedText(const AttributedString& text);

namespace TableEngine {

/// Makes a table of the paragraphs that `range` touches, a row of each: cells are parted by tabs,
/// else by bars, else by commas outside of quotes. The first row is the header.
Result convertToTable(EditGateway& gateway, TextRange range, const TableStyle& style);
/// Makes a paragraph of each row, with tabs between its cells.
Result convertToText(EditGateway& gateway, qsizetype position);

} // namespace TableEngine
} // namespace orvane
