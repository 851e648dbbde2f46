// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/tables/TableEngine.h"

#include "text/store/CellRules.h"
#include "text/store/TableRow.h"

#include <QCoreApplication>

#include <algorithm>

namespace orvane {

namespace {

struct Words {
    Q_DECLARE_TR_FUNCTIONS(TableEngine)
};

SharedCharacterStyle charactersOf(const TableStyle& style, int row)
{
    CharacterStyle characters;
    characters.font = row == 0 ? style.headerFont : style.cellFont;
    characters.foreground = style.textColor;
    return characters;
}

CellLook lookOf(const TableStyle& style, int row, int columns)
{
    CellLook look;
    look.widthPercent = 100.0 / columns;
    look.padding.fill(style.cellPadding);
    look.borderWidth.fill(style.borderWidth);
    look.borderColor.fill(style.borderColor);
    if (row == 0)
        look.background = style.headerBackground;
    return look;
}

} // namespace

QString messageFor(TableRefusal refusal)
{
    switch (refusal) {
    case TableRefusal::withinTable:
        return Words::tr("A table can't stand in a cell of another table.");
    case TableRefusal::merged:
        return Words::tr("Cells that reach over several rows or columns are in the way.");
    case TableRefusal::tooLarge:
        return Words::tr("A table has at most %1 columns and %2 cells.")
            .arg(TableGrid::mostColumns)
            .arg(TableEngine::mostCells);
    default:
        return {};
    }
}

namespace TableEngine {

namespace {

using Unexpected = std::unexpected<TableRefusal>;

QString editName()
{
    return Words::tr("Edit Table");
}

struct Edited {
    TablePlan plan;
    GridCell cell; ///< at the place
};

/// The plan of the table at `position`, for an edit to change.
std::expected<Edited, TableRefusal> begin(const EditGateway& gateway, qsizetype position)
{
    if (!gateway.isEditable())
        return Unexpected(TableRefusal::notEditable);
    auto grid = tableAt(gateway.store(), position);
    if (!grid)
        return Unexpected(TableRefusal::noTable);
    const GridCell cell = grid->cells[grid->indexAt(position)];
    return Edited{TablePlan(gateway.store(), *std::move(grid)), cell};
}

Result apply(EditGateway& gateway, TablePlan plan, const QString& actionName = editName())
{
    if (applyPlan(gateway, actionName, std::move(plan)))
        return {};
    return Unexpected(TableRefusal::unchanged);
}

bool isTooLarge(qsizetype rows, qsizetype columns)
{
    return columns > TableGrid::mostColumns || rows * columns > mostCells;
}

/// A new cell that looks as one that is there, or nothing like one.
PlannedCell newCell(const TablePlan& plan, qsizetype like, int row, int column,
                    const TableStyle& style)
{
    ParagraphStyle paragraph;
    if (like >= 0) {
        paragraph = plan.styleOf(like);
        paragraph.textLists.clear();
        paragraph.headIndent = paragraph.firstLineHeadIndent = 0;
    } else {
        paragraph.cell =
            TableCellBlock{.table = plan.grid().table, .look = lookOf(style, row, plan.columns())};
    }
    TableCellBlock& cell = *paragraph.cell;
    const bool isLikeHeader = like >= 0 && cell.row == 0;
    CellLook look = *cell.look;
    look.background = row == 0 ? std::optional(style.headerBackground) : std::nullopt;
    cell.look = look;
    cell.table.columns = plan.columns();
    cell.row = row;
    cell.column = column;
    cell.rowSpan = cell.columnSpan = 1;
    const bool takesOwn = like < 0 || row == 0 || isLikeHeader;
    const SharedCharacterStyle characters = takesOwn ? charactersOf(style, row) : plan.endOf(like);
    return {-1, paragraph, AttributedString(QStringLiteral(" "), characters), characters};
}

/// Position alone makes the header.
void dressHeader(TablePlan& plan, const TableStyle& style)
{
    plan.modify([&](TableCellBlock& cell) {
        if (cell.row > 0 || cell.look->background)
            return;
        CellLook look = *cell.look;
        look.background = style.headerBackground;
        cell.look = look;
    });
}

void setBackground(TableCellBlock& cell, const std::optional<RgbaColor>& color)
{
    if (cell.look->background == color)
        return;
    CellLook look = *cell.look;
    look.background = color;
    cell.look = look;
}

/// Makes room for a row before row `at`, looking as row `like`.
void addRow(TablePlan& plan, int at, int like, const TableStyle& style)
{
    const TableGrid& grid = plan.grid();
    QList<bool> isCovered(plan.columns(), false);
    plan.modify([&](TableCellBlock& cell) {
        if (cell.row >= at) {
            ++cell.row;
        } else if (cell.row + cell.rowSpan > at) {
            ++cell.rowSpan;
            for (int i = cell.column; i < cell.column + cell.columnSpan; ++i)
                isCovered[i] = true;
        }
    });
    plan.setSize(plan.rows() + 1, plan.columns());
    for (int column = 0; column < grid.columns; ++column) {
        if (!isCovered[column])
            plan.add(newCell(plan, grid.indexOver(like, column), at, column, style));
    }
}

void addColumn(TablePlan& plan, int at, int like, const TableStyle& style)
{
    const TableGrid& grid = plan.grid();
    QList<bool> isCovered(plan.rows(), false);
    plan.modify([&](TableCellBlock& cell) {
        if (cell.column >= at) {
            ++cell.column;
        } else if (cell.column + cell.columnSpan > at) {
            ++cell.columnSpan;
            for (int i = cell.row; i < cell.row + cell.rowSpan; ++i)
                isCovered[i] = true;
        }
    });
    QList<double> widths = plan.widths();
    const double share = 100.0 / double(widths.size() + 1);
    for (double& width : widths)
        width *= (100 - share) / 100;
    widths.insert(at, share);
    plan.setSize(plan.rows(), plan.columns() + 1);
    for (int row = 0; row < grid.rows; ++row) {
        if (!isCovered[row])
            plan.add(newCell(plan, grid.indexOver(row, like), row, at, style));
    }
    plan.setWidths(widths);
}

/// A cell that several contents are for has them one below the other. What has no look of its own
/// takes that of the cell.
void fill(TablePlan& plan, qsizetype index, AttributedString content)
{
    const PlannedCell& cell = plan.cells()[index];
    const SharedCharacterStyle end = cell.from < 0 ? cell.end : plan.endOf(cell.from);
    const auto& runs = content.characterRuns().runs();
    if (runs.size() == 1 && runs[0].style == CharacterStyle())
        content.setCharacterStyle(content.fullRange(), end);
    if (cell.from >= 0 && cell.content) {
        AttributedString joined = *cell.content;
        joined.append(QStringView(&lineSeparator, 1), end);
        joined.append(content);
        content = std::move(joined);
    }
    plan.setContent(index, std::move(content));
}

/// Shares the width with columns that have come behind those of the grid.
void widen(TablePlan& plan)
{
    const int before = plan.grid().columns;
    if (plan.columns() == before)
        return;
    QList<double> widths = plan.widths();
    for (double& width : widths)
        width *= double(before) / plan.columns();
    widths.resize(plan.columns(), 100.0 / plan.columns());
    plan.setWidths(widths);
}

} // namespace

AttributedString tableOf(const QList<QList<AttributedString>>& rows, const TableStyle& style)
{
    qsizetype columns = 1;
    for (const auto& row : rows)
        columns = std::max(columns, row.size());
    const TextTable table{.id = QUuid::createUuid(), .columns = int(columns)};
    const SharedValue<CellLook> looks[] = {lookOf(style, 0, int(columns)),
                                           lookOf(style, 1, int(columns))};
    const SharedCharacterStyle ends[] = {charactersOf(style, 0), charactersOf(style, 1)};
    AttributedString text(QStringLiteral("\n"), ends[1]);
    for (int row = 0; row < rows.size(); ++row) {
        const int kind = row == 0 ? 0 : 1;
        for (int column = 0; column < columns; ++column) {
            ParagraphStyle paragraph;
            paragraph.direction = style.direction;
            paragraph.cell =
                TableCellBlock{.table = table, .row = row, .column = column, .look = looks[kind]};
            const SharedParagraphStyle shared = paragraph;
            const AttributedString content = rows[row].value(column);
            content.forEachCharacterRun(
                content.fullRange(), [&](TextRange run, const SharedCharacterStyle& characters) {
                    text.append(QStringView(content.text()).sliced(run.location, run.length),
                                characters, shared);
                });
            text.append(u"\n", ends[kind], shared);
        }
    }
    text.setParagraphStyle({text.length(), 0}, {});
    text.append(u"\n", ends[1], ParagraphStyle{});
    return text;
}

AttributedString makeTable(int rows, int columns, const TableStyle& style)
{
    QList<QList<AttributedString>> contents(rows);
    for (int row = 0; row < rows; ++row) {
        for (int column = 1; column <= columns; ++column) {
            const QString words =
                row == 0 ? Words::tr("Header %1").arg(column) : QStringLiteral(" ");
            contents[row].append(AttributedString(words, charactersOf(style, row)));
        }
    }
    return tableOf(contents, style);
}

Result insertTable(EditGateway& gateway, int rows, int columns, const TableStyle& style)
{
    if (!gateway.isEditable())
        return Unexpected(TableRefusal::notEditable);
    if (isTooLarge(rows, columns))
        return Unexpected(TableRefusal::tooLarge);
    const TextRange selected = gateway.selection().range();
    const TextStore& store = gateway.store();
    if (cellRules::isInCell(store, selected.location))
        return Unexpected(TableRefusal::withinTable);
    gateway.performUndoableDocumentEdit(
        Words::tr("Insert Table"),
        [&](DocumentEditor& editor) {
            const QList<TextRange> parts = cellRules::removableParts(store, selected);
            for (auto part = parts.rbegin(); part != parts.rend(); ++part)
                editor.remove(*part);
            // What stands behind the place is the line behind the table.
            AttributedString table = makeTable(rows, columns, style);
            table.remove({table.length() - 1, 1});
            const SharedParagraphStyle& here = store.paragraphStyle(selected.location);
            table.setParagraphStyle({0, 0}, here);
            table.setParagraphStyle({table.length(), 0}, here);
            editor.replace({selected.location, 0}, table);
            editor.setSelection(TextSelection::caret(selected.location + 1));
        },
        EditEffect::changesText);
    return {};
}

Result insertRow(EditGateway& gateway, qsizetype position, TableSide side, const TableStyle& style)
{
    auto edited = begin(gateway, position);
    if (!edited)
        return Unexpected(edited.error());
    auto& [plan, cell] = *edited;
    if (isTooLarge(plan.rows() + 1, plan.columns()))
        return Unexpected(TableRefusal::tooLarge);
    const int at = side == TableSide::before ? cell.row : cell.pastRow();
    addRow(plan, at, side == TableSide::before ? cell.row : at - 1, style);
    return apply(gateway, std::move(plan));
}

Result insertColumn(EditGateway& gateway, qsizetype position, TableSide side,
                    const TableStyle& style)
{
    auto edited = begin(gateway, position);
    if (!edited)
        return Unexpected(edited.error());
    auto& [plan, cell] = *edited;
    if (isTooLarge(plan.rows(), plan.columns() + 1))
        return Unexpected(TableRefusal::tooLarge);
    const int at = side == TableSide::before ? cell.column : cell.pastColumn();
    addColumn(plan, at, side == TableSide::before ? cell.column : at - 1, style);
    return apply(gateway, std::move(plan));
}

// A cell that begins in the row and reaches further stays with the rest of its rows.
Result removeRow(EditGateway& gateway, qsizetype position, const TableStyle& style)
{
    auto edited = begin(gateway, position);
    if (!edited)
        return Unexpected(edited.error());
    auto& [plan, cell] = *edited;
    const int gone = cell.row;
    if (plan.rows() < 2)
        return Unexpected(TableRefusal::lastRow);
    plan.removeIf([&](const TableCellBlock& one) { return one.row == gone && one.rowSpan == 1; });
    if (plan.cells().isEmpty())
        return Unexpected(TableRefusal::lastRow);
    plan.modify([&](TableCellBlock& one) {
        if (one.row > gone)
            --one.row;
        else if (one.row + one.rowSpan > gone)
            --one.rowSpan;
    });
    plan.setSize(plan.rows() - 1, plan.columns());
    dressHeader(plan, style);
    return apply(gateway, std::move(plan));
}

Result removeColumn(EditGateway& gateway, qsizetype position)
{
    auto edited = begin(gateway, position);
    if (!edited)
        return Unexpected(edited.error());
    auto& [plan, cell] = *edited;
    const int gone = cell.column;
    if (plan.columns() < 2)
        return Unexpected(TableRefusal::lastColumn);
    plan.removeIf(
        [&](const TableCellBlock& one) { return one.column == gone && one.columnSpan == 1; });
    if (plan.cells().isEmpty())
        return Unexpected(TableRefusal::lastColumn);
    plan.modify([&](TableCellBlock& one) {
        if (one.column > gone)
            --one.column;
        else if (one.column + one.columnSpan > gone)
            --one.columnSpan;
    });
    QList<double> widths = plan.widths();
    const double share = widths.takeAt(gone);
    for (double& width : widths)
        width *= 100 / (100 - share);
    plan.setSize(plan.rows(), plan.columns() - 1);
    plan.setWidths(widths);
    return apply(gateway, std::move(plan));
}

Result moveRow(EditGateway& gateway, qsizetype position, TableSide to)
{
    auto edited = begin(gateway, position);
    if (!edited)
        return Unexpected(edited.error());
    auto& [plan, cell] = *edited;
    const int upper = to == TableSide::before ? cell.row - 1 : cell.row;
    if (upper < 0 || upper + 1 >= plan.rows())
        return Unexpected(TableRefusal::edge);
    const auto parts = [&](const GridCell& one) {
        return one.rowSpan > 1 && one.pastRow() > upper && one.row <= upper + 1;
    };
    if (std::ranges::any_of(plan.grid().cells, parts))
        return Unexpected(TableRefusal::merged);
    QHash<int, std::optional<RgbaColor>> fills[2];
    for (const GridCell& one : plan.grid().cells) {
        if (upper == 0 && one.row < 2)
            fills[one.row][one.column] = cellBackground(gateway.store(), one);
    }
    plan.modify([&](TableCellBlock& one) {
        if (one.row != upper && one.row != upper + 1)
            return;
        one.row = one.row == upper ? upper + 1 : upper;
        if (upper == 0)
            setBackground(one, fills[one.row].value(one.column));
    });
    return apply(gateway, std::move(plan));
}

Result moveColumn(EditGateway& gateway, qsizetype position, TableSide to)
{
    auto edited = begin(gateway, position);
    if (!edited)
        return Unexpected(edited.error());
    auto& [plan, cell] = *edited;
    const int left = to == TableSide::before ? cell.column - 1 : cell.column;
    if (left < 0 || left + 1 >= plan.columns())
        return Unexpected(TableRefusal::edge);
    const auto parts = [&](const GridCell& one) {
        return one.columnSpan > 1 && one.pastColumn() > left && one.column <= left + 1;
    };
    if (std::ranges::any_of(plan.grid().cells, parts))
        return Unexpected(TableRefusal::merged);
    QList<double> widths = plan.widths();
    std::swap(widths[left], widths[left + 1]);
    plan.modify([&](TableCellBlock& one) {
        if (one.column == left || one.column == left + 1)
            one.column = one.column == left ? left + 1 : left;
    });
    plan.setWidths(widths);
    return apply(gateway, std::move(plan));
}

Result setHeaderFill(EditGateway& gateway, qsizetype position, const RgbaColor& color)
{
    auto edited = begin(gateway, position);
    if (!edited)
        return Unexpected(edited.error());
    edited->plan.modify([&](TableCellBlock& cell) {
        if (cell.row == 0)
            setBackground(cell, color);
    });
    return apply(gateway, std::move(edited->plan));
}

Result setCellFill(EditGateway& gateway, qsizetype position, const CellRectangle& cells,
                   const std::optional<RgbaColor>& color)
{
    auto edited = begin(gateway, position);
    if (!edited)
        return Unexpected(edited.error());
    edited->plan.modify([&](TableCellBlock& cell) {
        if (cells.holds(cell.row, cell.column))
            setBackground(cell, color);
    });
    return apply(gateway, std::move(edited->plan));
}

Result setColumnWidths(EditGateway& gateway, qsizetype position, const QList<double>& percents)
{
    auto edited = begin(gateway, position);
    if (!edited)
        return Unexpected(edited.error());
    if (percents.size() != edited->plan.columns())
        return Unexpected(TableRefusal::unchanged);
    edited->plan.setWidths(percents);
    return apply(gateway, std::move(edited->plan));
}

Result clearCells(EditGateway& gateway, qsizetype position, const CellRectangle& cells,
                  const QString& actionName)
{
    auto edited = begin(gateway, position);
    if (!edited)
        return Unexpected(edited.error());
    TablePlan& plan = edited->plan;
    for (qsizetype i = 0; i < plan.grid().cells.size(); ++i) {
        const GridCell& cell = plan.grid().cells[i];
        if (cells.holds(cell.row, cell.column) && cell.range.length > 1)
            plan.setContent(i, {});
    }
    return apply(gateway, std::move(plan), actionName);
}

Result deleteTable(EditGateway& gateway, qsizetype position)
{
    if (!gateway.isEditable())
        return Unexpected(TableRefusal::notEditable);
    const auto grid = tableAt(gateway.store(), position);
    if (!grid)
        return Unexpected(TableRefusal::noTable);
    const TextRange range = grid->range();
    gateway.performUndoableDocumentEdit(
        Words::tr("Delete Table"),
        [&](DocumentEditor& editor) {
            const qsizetype last = editor.store().length();
            if (range.end() == last)
                editor.setParagraphStyle({last, 0}, {});
            AttributedString line(QStringLiteral("\n"), {}, ParagraphStyle{});
            line.setParagraphStyle({1, 0}, editor.store().paragraphStyle(range.end()));
            editor.replace(range, line);
            editor.setSelection(TextSelection::caret(range.location));
        },
        EditEffect::changesText);
    return {};
}

Result fillCells(EditGateway& gateway, qsizetype position,
                 const QList<QList<AttributedString>>& contents, const QString& actionName,
                 const TableStyle& style)
{
    auto edited = begin(gateway, position);
    if (!edited)
        return Unexpected(edited.error());
    auto& [plan, cell] = *edited;
    const TableGrid& grid = plan.grid();
    qsizetype wide = 0;
    for (const auto& row : contents)
        wide = std::max(wide, row.size());
    const qsizetype rows = std::max<qsizetype>(grid.rows, cell.row + contents.size());
    const qsizetype columns = std::max<qsizetype>(grid.columns, cell.column + wide);
    if (isTooLarge(rows, columns))
        return Unexpected(TableRefusal::tooLarge);
    plan.setSize(int(rows), int(columns));
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            const int line = row - cell.row;
            const int item = column - cell.column;
            const bool isGiven =
                line >= 0 && item >= 0 && line < contents.size() && item < contents[line].size();
            const bool isThere = row < grid.rows && column < grid.columns;
            if (isThere && !isGiven)
                continue;
            qsizetype at = isThere ? grid.indexOver(row, column) : -1;
            if (at < 0) {
                at = plan.cells().size();
                const qsizetype like = grid.indexOver(std::min(row, grid.rows - 1),
                                                      std::min(column, grid.columns - 1));
                plan.add(newCell(plan, like, row, column, style));
            }
            if (isGiven)
                fill(plan, at, contents[line][item]);
        }
    }
    widen(plan);
    return apply(gateway, std::move(plan), actionName);
}

} // namespace TableEngine
} // namespace orvane
