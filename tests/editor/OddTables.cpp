// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "OddTables.h"

#include "editor/tables/TableEngine.h"
#include "editor/tables/TableText.h"
#include "text/archive/TextArchive.h"
#include "text/store/TextStore.h"

#include <algorithm>
#include <array>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

QString wordOf(qsizetype index)
{
    return u"c%1;"_s.arg(index);
}

std::string faultOf(const TableGrid& grid)
{
    constexpr qsizetype mostCompared = 1'000;
    qsizetype past = grid.cells.first().range.location;
    for (const GridCell& cell : grid.cells) {
        if (cell.range.location != past || cell.range.length < 1)
            return "cells don't follow one another";
        past = cell.range.end();
        if (cell.row < 0 || cell.column < 0 || cell.rowSpan < 1 || cell.columnSpan < 1 ||
            cell.pastRow() > grid.rows || cell.pastColumn() > grid.columns)
            return "a cell stands outside";
        if (cell.columnSpan > TableGrid::mostColumns ||
            cell.column > TableGrid::mostColumns + grid.cells.size() ||
            cell.row > 2 * mostCompared + grid.cells.size())
            return "a cell stands far out";
        const auto overlaps = [&](const GridCell& other) {
            return &other != &cell && other.row < cell.pastRow() && cell.row < other.pastRow() &&
                   other.column < cell.pastColumn() && cell.column < other.pastColumn();
        };
        if (grid.cells.size() <= mostCompared && std::ranges::any_of(grid.cells, overlaps))
            return "two cells overlap";
    }
    return {};
}

using Edit = TableEngine::Result (*)(EditGateway&, qsizetype);

const std::array<Edit, oddTableEdits>& edits()
{
    namespace T = TableEngine;
    using enum TableSide;
    static const std::array<Edit, oddTableEdits> all{
        [](EditGateway& text, qsizetype at) { return T::insertRow(text, at, before, {}); },
        [](EditGateway& text, qsizetype at) { return T::insertRow(text, at, after, {}); },
        [](EditGateway& text, qsizetype at) { return T::insertColumn(text, at, before, {}); },
        [](EditGateway& text, qsizetype at) { return T::insertColumn(text, at, after, {}); },
        [](EditGateway& text, qsizetype at) { return T::moveRow(text, at, after); },
        [](EditGateway& text, qsizetype at) { return T::moveColumn(text, at, before); },
        [](EditGateway& text, qsizetype at) {
            return T::sortRows(text, at, 0, Qt::DescendingOrder);
        },
        [](EditGateway& text, qsizetype at) {
            return T::setCellFill(text, at, {0, 0, 1, 1}, RgbaColor());
        },
        [](EditGateway& text, qsizetype at) { return T::convertToText(text, at); },
        [](EditGateway& text, qsizetype at) {
            QList<double> widths = T::columnWidths(text.store(), at);
            widths.first() += 1;
            return T::setColumnWidths(text, at, widths);
        },
        // From here on words go.
        [](EditGateway& text, qsizetype at) { return T::removeRow(text, at, {}); },
        [](EditGateway& text, qsizetype at) { return T::removeColumn(text, at); },
        [](EditGateway& text, qsizetype at) {
            return T::fillCells(
                text, at,
                {{AttributedString(u"p"_s), AttributedString(u"q"_s)}, {AttributedString(u"r"_s)}},
                u"Paste"_s, {});
        },
    };
    return all;
}

constexpr int firstThatRemoves = 10;

} // namespace

AttributedString oddTable(const QList<TableCellBlock>& cells)
{
    AttributedString text(u"x\n"_s);
    for (qsizetype i = 0; i < cells.size(); ++i) {
        ParagraphStyle style;
        style.cell = cells[i];
        text.append(wordOf(i) + u'\n', {}, style);
    }
    return text;
}

std::string oddTableFault(const QList<TableCellBlock>& cells, int edit, int at)
{
    const AttributedString made = oddTable(cells);
    // What an archive refuses may come from elsewhere all the same.
    const AttributedString text = TextArchive::decode(TextArchive::encode(made)).value_or(made);
    TextStore store;
    EditGateway gateway(store);
    gateway.load(text, {});
    const AttributedString loaded = store.attributedText();
    const auto fault = [&]() -> std::string {
        for (qsizetype place = 0; place < store.length();) {
            const auto grid = tableAt(store, place);
            if (grid) {
                if (std::string found = faultOf(*grid); !found.empty())
                    return found;
            }
            place = grid ? grid->range().end() : store.paragraphRange(place).end();
        }
        return {};
    };
    if (std::string found = fault(); !found.empty())
        return "as it came: " + found;
    qsizetype position = 2;
    for (int i = 0; i < at; ++i)
        position = store.paragraphRange(position).end();
    gateway.setSelection(TextSelection::caret(position));
    (void)edits()[std::size_t(edit)](gateway, position);
    if (std::string found = fault(); !found.empty())
        return found;
    if (edit < firstThatRemoves) {
        const QString words = store.text();
        for (qsizetype i = 0; i < cells.size(); ++i) {
            if (words.count(wordOf(i)) != 1)
                return "a word is lost";
        }
    }
    while (gateway.canUndo())
        (void)gateway.undo();
    return store.attributedText() == loaded ? std::string() : "undo doesn't lead back";
}

} // namespace orvane
