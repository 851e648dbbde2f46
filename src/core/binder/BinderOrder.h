// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/records/BinderLayout.h"
#include "core/records/FolderRecord.h"
#include "core/records/NoteRecord.h"
#include "core/records/RecordTable.h"

#include <QHash>
#include <QList>
#include <QSet>
#include <QUuid>

#include <optional>

namespace orvane {

/// The order in which the Binder shows folders and notes, as lists of ids that live apart from
/// the records. A value; the functions below edit and repair it.
struct BinderOrder {
    QList<QUuid> rootFolderOrder;
    QHash<QUuid, QList<QUuid>> childFolderOrder;
    /// By container: a folder, the Trash or the project.
    QHash<QUuid, QList<QUuid>> noteOrderByFolder;
    QSet<QUuid> expandedFolderIDs;

    bool operator==(const BinderOrder&) const = default;
};

/// A row of the Binder by its identity.
struct BinderRowID {
    enum class Kind { Folder, Note };
    Kind kind = Kind::Note;
    QUuid id;

    bool operator==(const BinderRowID&) const = default;
};
inline size_t qHash(const BinderRowID& row, size_t seed = 0)
{
    return qHashMulti(seed, int(row.kind), row.id);
}

namespace BinderDisplayOrdering {

/// A first order: folders oldest first, notes newest first, nothing expanded. `projectID` is the
/// container of the notes at the project root.
[[nodiscard]] BinderLayoutSnapshot defaultLayout(const RecordTable<FolderRecord>& folders,
                                                 const RecordTable<NoteRecord>& notes,
                                                 const QUuid& projectID);

[[nodiscard]] BinderOrder orderOf(const BinderLayoutSnapshot& layout);
/// The order as stored: the top level first, then parents and containers in no order.
[[nodiscard]] BinderLayoutSnapshot layoutOf(const BinderOrder& order);

/// Repairs the lists against the records, so that no list hides a record or names a dead one:
/// what is gone, doubled or lies elsewhere is dropped, what is missing is appended. A folder whose
/// parent does not exist, or that is its own ancestor, shows at the top level, and a note whose
/// folder does not exist shows at the project root.
[[nodiscard]] BinderOrder reconciled(BinderOrder order, const RecordTable<FolderRecord>& folders,
                                     const RecordTable<NoteRecord>& notes, const QUuid& projectID);

/// The notes of a container in their order.
[[nodiscard]] QList<Shared<NoteRecord>> orderedNotes(const BinderOrder& order,
                                                     const RecordTable<NoteRecord>& notes,
                                                     const QUuid& container);

} // namespace BinderDisplayOrdering

} // namespace orvane
