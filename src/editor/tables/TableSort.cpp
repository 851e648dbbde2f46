// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/tables/TableEngine.h"

#include <QCollator>
#include <QCoreApplication>
#include <QLocale>

#include <algorithm>

namespace orvane::TableEngine {

namespace {

struct Words {
    Q_DECLARE_TR_FUNCTIONS(TableEngine)
};

struct SortedRow {
    int row = 0;
    QString words;
    std::optional<double> number;
};

std::optional<double> numberIn(QString words)
{
    words.remove(QChar(QChar::Nbsp)).replace(QChar(0x2212), u'-');
    if (words.startsWith(u'+'))
        words.remove(0, 1);
    bool isNumber = false;
    double number = QLocale().toDouble(words, &isNumber);
    if (!isNumber)
        number = QLocale::c().toDouble(words, &isNumber);
    return isNumber ? std::optional(number) : std::nullopt;
}

} // namespace

Result sortRows(EditGateway& gateway, qsizetype position, int column, Qt::SortOrder order)
{
    if (!gateway.isEditable())
        return std::unexpected(TableRefusal::notEditable);
    const auto grid = tableAt(gateway.store(), position);
    if (!grid)
        return std::unexpected(TableRefusal::noTable);
    if (std::ranges::any_of(grid->cells, [](const GridCell& cell) { return cell.rowSpan > 1; }))
        return std::unexpected(TableRefusal::merged);
    QList<SortedRow> rows;
    bool areNumbers = true;
    for (int row = 1; row < grid->rows; ++row) {
        SortedRow one{row, {}, {}};
        if (const qsizetype cell = grid->indexOver(row, column); cell >= 0)
            one.words = cellText(gateway.store(), grid->cells[cell].range).trimmed();
        one.number = numberIn(one.words);
        areNumbers = areNumbers && (one.number || one.words.isEmpty());
        rows.append(one);
    }
    QCollator words;
    words.setNumericMode(true);
    const bool descends = order == Qt::DescendingOrder;
    std::ranges::stable_sort(rows, [&](const SortedRow& left, const SortedRow& right) {
        if (left.words.isEmpty() || right.words.isEmpty())
            return !left.words.isEmpty() && right.words.isEmpty();
        const SortedRow& first = descends ? right : left;
        const SortedRow& second = descends ? left : right;
        return areNumbers ? *first.number < *second.number
                          : words.compare(first.words, second.words) < 0;
    });
    QHash<int, int> places;
    for (qsizetype i = 0; i < rows.size(); ++i)
        places[rows[i].row] = int(i) + 1;
    TablePlan plan(gateway.store(), *grid);
    plan.modify([&](TableCellBlock& cell) { cell.row = places.value(cell.row, cell.row); });
    if (applyPlan(gateway, Words::tr("Sort Table"), std::move(plan)))
        return {};
    return std::unexpected(TableRefusal::unchanged);
}

} // namespace orvane::TableEngine
