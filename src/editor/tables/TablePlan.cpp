// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/tables/TablePlan.h"

#include <QHash>

#include <algorithm>
#include <climits>
#include <numeric>

namespace orvane {

namespace {

std::pair<int, int> placeOf(const PlannedCell& cell)
{
    return {cell.style->cell->row, cell.style->cell->column};
}

bool isPlaced(const GridCell& cell, const TableCellBlock& block)
{
    return block.row == cell.row && block.column == cell.column && block.rowSpan == cell.rowSpan &&
           block.columnSpan == cell.columnSpan;
}

/// Carries a plan out on the text.
class Applying {
public:
    Applying(DocumentEditor& editor, const TablePlan& plan)
        : m_editor(editor)
        , m_plan(plan)
        , m_start(plan.grid().range().location)
    {}

    void run()
    {
        const TextSelection before = m_editor.selection();
        const qsizetype end = m_plan.grid().range().end();
        endTable();
        const auto [anchor, position] =
            std::pair(placeAfter(before.anchor), placeAfter(before.position));
        if (std::ranges::is_sorted(keptOrder()))
            changeCells();
        else
            replaceAll();
        const qsizetype growth = lengthAfter() - (end - m_start);
        const auto moved = [&](qsizetype from, std::optional<qsizetype> inTable) {
            return inTable.value_or(from < m_start ? from : from + growth);
        };
        m_editor.setSelection({moved(before.anchor, anchor), moved(before.position, position)});
    }

private:
    // A table that ends the text has nothing that closes its last cell.
    void endTable()
    {
        const qsizetype length = m_editor.store().length();
        const TextRange last = m_plan.grid().cells.last().range;
        const bool isClosed =
            !last.isEmpty() && m_editor.store().characterAt(last.end() - 1) == u'\n';
        if (last.end() < length || (isClosed && !m_editor.store().paragraphStyle(length)->cell))
            return;
        const SharedCharacterStyle style = m_plan.endOf(m_plan.grid().cells.size() - 1);
        if (!isClosed) {
            AttributedString end(QStringLiteral("\n"), style,
                                 m_editor.store().paragraphStyle(length));
            end.setParagraphStyle({1, 0}, {});
            m_editor.replace({length, 0}, end);
            ++m_added;
        } else {
            m_editor.setParagraphStyle({length, 0}, {});
        }
    }

    [[nodiscard]] TextRange rangeOf(qsizetype index) const
    {
        TextRange range = m_plan.grid().cells[index].range;
        if (index == m_plan.grid().cells.size() - 1)
            range.length += m_added;
        return range;
    }

    [[nodiscard]] qsizetype lengthOf(const PlannedCell& cell) const
    {
        return cell.content ? cell.content->length() + 1 : rangeOf(cell.from).length;
    }

    [[nodiscard]] qsizetype lengthAfter() const
    {
        return std::accumulate(
            m_plan.cells().begin(), m_plan.cells().end(), qsizetype(0),
            [&](qsizetype sum, const PlannedCell& cell) { return sum + lengthOf(cell); });
    }

    [[nodiscard]] std::vector<qsizetype> keptOrder() const
    {
        std::vector<qsizetype> order;
        for (const PlannedCell& cell : m_plan.cells()) {
            if (cell.from >= 0)
                order.push_back(cell.from);
        }
        return order;
    }

    /// Where a position of the table comes to stand; nothing for one outside of it.
    [[nodiscard]] std::optional<qsizetype> placeAfter(qsizetype position) const
    {
        const TableGrid& grid = m_plan.grid();
        const qsizetype index = grid.indexAt(position);
        if (index < 0 || position >= rangeOf(index).end())
            return std::nullopt;
        const GridCell& cell = grid.cells[index];
        const int row = std::min(cell.row, m_plan.rows() - 1);
        const int column = std::min(cell.column, m_plan.columns() - 1);
        qsizetype at = m_start;
        qsizetype nearest = m_start;
        std::pair least{INT_MAX, INT_MAX};
        for (const PlannedCell& planned : m_plan.cells()) {
            if (planned.from == index) {
                const qsizetype within = position - cell.range.location;
                return at + std::min(within, lengthOf(planned) - 1);
            }
            const TableCellBlock& block = *planned.style->cell;
            const std::pair distance{std::abs(block.row - row), std::abs(block.column - column)};
            if (distance < least) {
                least = distance;
                nearest = at;
            }
            at += lengthOf(planned);
        }
        return nearest;
    }

    void appendCell(AttributedString& text, const PlannedCell& cell) const
    {
        const SharedCharacterStyle end = cell.from < 0 ? cell.end : m_plan.endOf(cell.from);
        AttributedString own;
        if (cell.content) {
            own = *cell.content;
            own.append(u"\n", end);
        } else {
            own = m_editor.store().attributedText(rangeOf(cell.from));
        }
        own.forEachCharacterRun(own.fullRange(), [&](TextRange run, const auto& style) {
            text.append(QStringView(own.text()).sliced(run.location, run.length), style,
                        cell.style);
        });
    }

    void replaceAll()
    {
        AttributedString text;
        for (const PlannedCell& cell : m_plan.cells())
            appendCell(text, cell);
        const auto range =
            TextRange::between(m_start, rangeOf(m_plan.grid().cells.size() - 1).end());
        replace(range, std::move(text));
    }

    void replace(TextRange range, AttributedString text)
    {
        text.setParagraphStyle({text.length(), 0}, m_editor.store().paragraphStyle(range.end()));
        m_editor.replace(range, text);
    }

    // From the end on, so that what comes before stays where it is.
    void changeCells()
    {
        const TableGrid& grid = m_plan.grid();
        qsizetype last = grid.cells.size(); // what comes from here on is done
        for (qsizetype i = m_plan.cells().size(); i > 0 || last > 0;) {
            const qsizetype pastNew = i;
            while (i > 0 && m_plan.cells()[i - 1].from < 0)
                --i;
            const qsizetype kept = i > 0 ? m_plan.cells()[i - 1].from : -1;
            AttributedString text;
            for (qsizetype added = i; added < pastNew; ++added)
                appendCell(text, m_plan.cells()[added]);
            const qsizetype from = kept < 0 ? m_start : rangeOf(kept).end();
            const qsizetype past = last > kept + 1 ? rangeOf(last - 1).end() : from;
            if (past > from || !text.isEmpty())
                replace(TextRange::between(from, past), std::move(text));
            if (i == 0)
                return;
            changeCell(m_plan.cells()[--i]);
            last = kept;
        }
    }

    void changeCell(const PlannedCell& cell)
    {
        const TextRange range = rangeOf(cell.from);
        if (cell.content) {
            AttributedString text;
            appendCell(text, cell);
            replace(range, std::move(text));
            return;
        }
        for (qsizetype at = range.location; at < range.end();) {
            const SharedParagraphStyle& own = m_editor.store().paragraphStyle(at);
            SharedParagraphStyle style = cell.style;
            if (at > range.location) { // one below the other, each looks as it does
                ParagraphStyle other = *own;
                other.cell = cell.style->cell;
                style = std::move(other);
            }
            if (own != style)
                m_editor.setParagraphStyle({at, 0}, style);
            at = m_editor.store().paragraphRange(at).end();
        }
    }

    DocumentEditor& m_editor;
    const TablePlan& m_plan;
    qsizetype m_start;
    qsizetype m_added = 0; // to the last cell
};

} // namespace

TablePlan::TablePlan(const TextStore& store, TableGrid grid)
    : m_store(store)
    , m_grid(std::move(grid))
    , m_rows(m_grid.rows)
    , m_columns(m_grid.columns)
{
    m_cells.reserve(m_grid.cells.size());
    for (qsizetype i = 0; i < m_grid.cells.size(); ++i) {
        const SharedParagraphStyle& own = m_store.paragraphStyle(m_grid.cells[i].range.location);
        const bool isAsSaid =
            isPlaced(m_grid.cells[i], *own->cell) && own->cell->table.columns == m_grid.columns;
        m_cells.append({i, isAsSaid ? own : SharedParagraphStyle(styleOf(i))});
    }
}

bool TablePlan::changesNothing() const
{
    if (m_cells.size() != m_grid.cells.size())
        return false;
    for (qsizetype i = 0; i < m_cells.size(); ++i) {
        const PlannedCell& cell = m_cells[i];
        if (cell.from != i || cell.content ||
            cell.style != m_store.paragraphStyle(m_grid.cells[i].range.location))
            return false;
    }
    return true;
}

ParagraphStyle TablePlan::styleOf(qsizetype index) const
{
    const GridCell& cell = m_grid.cells[index];
    ParagraphStyle style = *m_store.paragraphStyle(cell.range.location);
    style.cell->table.columns = m_grid.columns;
    style.cell->row = cell.row;
    style.cell->column = cell.column;
    style.cell->rowSpan = cell.rowSpan;
    style.cell->columnSpan = cell.columnSpan;
    return style;
}

SharedCharacterStyle TablePlan::endOf(qsizetype index) const
{
    const TextRange range = m_grid.cells[index].range;
    if (range.isEmpty())
        return {};
    CharacterStyle style = *m_store.characterStyle(range.end() - 1);
    style.attachment = {};
    style.chartBlockData.clear();
    style.link.clear();
    style.targetName.clear();
    return style;
}

QList<double> TablePlan::widths() const
{
    QList<double> percents(m_grid.columns, 0);
    for (qsizetype i = 0; i < m_grid.cells.size(); ++i) {
        const GridCell& cell = m_grid.cells[i];
        const double said = m_store.paragraphStyle(cell.range.location)->cell->look->widthPercent;
        if (cell.columnSpan == 1 && percents[cell.column] == 0)
            percents[cell.column] = std::clamp(said, 0.0, 100.0);
    }
    const auto unnamed = std::ranges::count(percents, 0.0);
    const double named = std::reduce(percents.begin(), percents.end());
    for (double& percent : percents) {
        if (percent == 0)
            percent = named < 100 ? (100 - named) / double(unnamed) : 100.0 / m_grid.columns;
    }
    const double total = std::reduce(percents.begin(), percents.end());
    for (double& percent : percents)
        percent *= 100 / total;
    return percents;
}

void TablePlan::removeIf(const std::function<bool(const TableCellBlock&)>& goes)
{
    m_cells.removeIf([&](const PlannedCell& cell) { return goes(*cell.style->cell); });
}

void TablePlan::modify(const std::function<void(TableCellBlock&)>& change)
{
    for (qsizetype i = 0; i < m_cells.size(); ++i) {
        TableCellBlock block = *m_cells[i].style->cell;
        change(block);
        if (block == *m_cells[i].style->cell)
            continue;
        modifyStyle(i, [&](ParagraphStyle& style) { style.cell = block; });
    }
}

void TablePlan::modifyStyle(qsizetype index, const std::function<void(ParagraphStyle&)>& change)
{
    ParagraphStyle style = *m_cells[index].style;
    change(style);
    if (!(style == *m_cells[index].style))
        m_cells[index].style = std::move(style);
}

void TablePlan::setContent(qsizetype index, AttributedString content)
{
    m_cells[index].content = std::move(content);
}

void TablePlan::setSize(int rows, int columns)
{
    m_rows = rows;
    m_columns = columns;
    modify([&](TableCellBlock& cell) { cell.table.columns = columns; });
}

void TablePlan::setWidths(const QList<double>& percents)
{
    QHash<std::pair<const void*, double>, SharedValue<CellLook>> looks;
    modify([&](TableCellBlock& cell) {
        const auto first = percents.begin() + std::min<qsizetype>(cell.column, percents.size());
        const qsizetype taken = std::min<qsizetype>(cell.columnSpan, percents.end() - first);
        const double width = std::reduce(first, first + taken);
        SharedValue<CellLook>& shared = looks[{cell.look.identity(), width}];
        if (shared->widthPercent != width) {
            CellLook look = *cell.look;
            look.widthPercent = width;
            shared = std::move(look);
        }
        cell.look = shared;
    });
}

void TablePlan::sort()
{
    std::ranges::stable_sort(m_cells, {}, placeOf);
}

bool applyPlan(EditGateway& gateway, const QString& actionName, TablePlan plan)
{
    plan.sort();
    if (plan.changesNothing())
        return false;
    return gateway.performUndoableDocumentEdit(
        actionName, [&](DocumentEditor& editor) { Applying(editor, plan).run(); },
        EditEffect::changesText);
}

} // namespace orvane
