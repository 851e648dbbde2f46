// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "commands/AppCommandEvents.h"

#include <QRect>

namespace orvane {

/// A new table of so many rows and columns.
struct TableSize {
    int rows = 3;
    int columns = 3;
    std::optional<QUuid> noteID;

    bool operator==(const TableSize&) const = default;
};

/// The fills of a table that a person chooses.
enum class TableFill { header, cells };

/// Lets a person choose a fill, in a popup below `anchor`, which is in global coordinates.
struct TableFillChoice {
    TableFill fill = TableFill::cells;
    QRect anchor;
    std::optional<QUuid> noteID;

    bool operator==(const TableFillChoice&) const = default;
};

} // namespace orvane

/// What is done to the table in whose cell the caret is. Outside of tables nothing happens.
namespace orvane::TableCommands {

inline constexpr Notification<TableSize> insertOfSize{"OrvaneWorkspace.Table.InsertOfSize"};
inline constexpr Notification<CommandTarget> addRowAbove{"OrvaneWorkspace.Table.AddRowAbove"};
inline constexpr Notification<CommandTarget> addRowBelow{"OrvaneWorkspace.Table.AddRowBelow"};
inline constexpr Notification<CommandTarget> addColumnLeft{"OrvaneWorkspace.Table.AddColumnLeft"};
inline constexpr Notification<CommandTarget> addColumnRight{"OrvaneWorkspace.Table.AddColumnRight"};
inline constexpr Notification<CommandTarget> removeRow{"OrvaneWorkspace.Table.RemoveRow"};
inline constexpr Notification<CommandTarget> removeColumn{"OrvaneWorkspace.Table.RemoveColumn"};
inline constexpr Notification<CommandTarget> headerFillColor{
    "OrvaneWorkspace.Table.HeaderFillColor"};
inline constexpr Notification<CommandTarget> cellFillColor{"OrvaneWorkspace.Table.CellFillColor"};
inline constexpr Notification<CommandTarget> clearCellFill{"OrvaneWorkspace.Table.ClearCellFill"};
inline constexpr Notification<CommandTarget> deleteTable{"OrvaneWorkspace.Table.Delete"};
inline constexpr Notification<CommandTarget> moveRowUp{"OrvaneWorkspace.Table.MoveRowUp"};
inline constexpr Notification<CommandTarget> moveRowDown{"OrvaneWorkspace.Table.MoveRowDown"};
inline constexpr Notification<CommandTarget> moveColumnLeft{"OrvaneWorkspace.Table.MoveColumnLeft"};
inline constexpr Notification<CommandTarget> moveColumnRight{
    "OrvaneWorkspace.Table.MoveColumnRight"};
inline constexpr Notification<CommandTarget> sortAscending{"OrvaneWorkspace.Table.SortAscending"};
inline constexpr Notification<CommandTarget> sortDescending{"OrvaneWorkspace.Table.SortDescending"};
inline constexpr Notification<TableFillChoice> chooseFill{"OrvaneWorkspace.Table.ChooseFill"};
inline constexpr Notification<CommandTarget> selectRow{"OrvaneWorkspace.Table.SelectRow"};
inline constexpr Notification<CommandTarget> selectColumn{"OrvaneWorkspace.Table.SelectColumn"};
inline constexpr Notification<CommandTarget> selectTable{"OrvaneWorkspace.Table.SelectTable"};
/// The keyboard goes to the bar of commands beside the table.
inline constexpr Notification<CommandTarget> goToTools{"OrvaneWorkspace.Table.GoToTools"};
/// The selected paragraphs, or that of the caret; tabs, bars or commas part the cells.
inline constexpr Notification<CommandTarget> convertTextToTable{"OrvaneWorkspace.Table.FromText"};
inline constexpr Notification<CommandTarget> convertTableToText{"OrvaneWorkspace.Table.ToText"};

} // namespace orvane::TableCommands
