// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/OddTables.h"

#include <QGuiApplication>

#include <cstdio>
#include <cstdlib>

using namespace orvane;

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    static QGuiApplication application(*argc, *argv);
    return 0;
}

// Two bytes choose the edit and its place; then six make a cell: row, column, their spans, whether
// it says so by thousands, and which of two tables it is of.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    static const QUuid tables[] = {QUuid::createUuid(), QUuid::createUuid()};
    constexpr std::size_t cellBytes = 6;
    constexpr std::size_t mostCells = 200;
    if (size < 2 + cellBytes)
        return 0;
    QList<TableCellBlock> cells;
    for (std::size_t at = 2; at + cellBytes <= size && std::size_t(cells.size()) < mostCells;
         at += cellBytes) {
        const auto said = [&](std::size_t byte) {
            const auto value = int(static_cast<signed char>(data[at + byte]));
            return data[at + 4] >> byte & 1 ? value * 9'999'999 : value;
        };
        const TextTable table{.id = tables[data[at + 5] & 1], .columns = data[at + 5] >> 1};
        cells.append({table, said(0), said(1), said(2), said(3), {}});
    }
    const std::string fault =
        oddTableFault(cells, data[0] % oddTableEdits, data[1] % int(cells.size()));
    if (!fault.empty()) {
        std::fprintf(stderr, "%s\n", fault.c_str());
        std::abort();
    }
    return 0;
}
