// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QList>
#include <QRectF>
#include <QUuid>
#include <Qt>

#include <optional>

namespace orvane {

class EditorView;

/// What of a table is seen in a view. All lengths are pixels of its viewport.
struct TableOnView {
    struct Row {
        qsizetype position = 0; ///< of its first cell
        qreal top = 0;
        qreal bottom = 0;

        bool operator==(const Row&) const = default;
    };
    struct Column {
        int number = 0;
        qreal left = 0;
        qreal right = 0;

        bool operator==(const Column&) const = default;
    };

    QUuid table;
    QRectF rect;               ///< of the rows that are seen
    QRectF caretCell;          ///< empty where that isn't seen
    QList<Row> rows;           ///< from the top down
    QList<Column> columns;     ///< by their numbers; those that a cell of a seen row has for itself
    bool beginsInSight = true; ///< the first row is the table's first
    bool endsInSight = true;
    Qt::LayoutDirection direction = Qt::LeftToRight; ///< in which its columns follow one another

    bool operator==(const TableOnView&) const = default;
};

/// The table whose cell holds `position`, where some of it is seen. Costs what its seen rows cost,
/// however long it is.
[[nodiscard]] std::optional<TableOnView> tableOnView(const EditorView& view, qsizetype position);

} // namespace orvane
