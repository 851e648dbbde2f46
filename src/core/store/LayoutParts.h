// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QList>
#include <QUuid>

#include <vector>

namespace orvane {

/// One stored piece of an order: a run of its ids in a row of its own. Pieces stand in the order
/// of their numbers, which have gaps, so that a change in the middle rewrites only its own piece.
struct LayoutPart {
    qint64 row = 0;
    qint64 number = 0;
    qsizetype count = 0;

    bool operator==(const LayoutPart&) const = default;
};

/// How the stored parts of one order become those of a new one.
struct LayoutPartsPlan {
    struct Write {
        /// The row to overwrite; 0 for a new one, whose number is filled in when it is written.
        qint64 row = 0;
        /// Index into `parts`.
        size_t part = 0;
        QList<QUuid> ids;
    };
    std::vector<LayoutPart> parts;
    std::vector<Write> writes;
    std::vector<qint64> removedRows;
};

/// The largest number of ids in one part.
inline constexpr qsizetype idsPerLayoutPart = 128;

/// Finds the parts that stay as they are (those wholly before the first and after the last id that
/// differs) and cuts what lies between into new ones. An empty order is one empty part.
[[nodiscard]] LayoutPartsPlan planLayoutParts(const QList<QUuid>& stored,
                                              const std::vector<LayoutPart>& parts,
                                              const QList<QUuid>& wanted);

} // namespace orvane
