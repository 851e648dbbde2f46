// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/binder/BinderOrder.h"

#include <variant>

namespace orvane {

/// One row of the Binder as a plain walk finds it, for comparison.
struct NaiveRow {
    std::variant<Shared<FolderRecord>, Shared<NoteRecord>> record;
    int depth = 0;

    [[nodiscard]] bool isFolder() const { return record.index() == 0; }
    [[nodiscard]] const FolderRecord& folder() const { return *std::get<0>(record); }
    [[nodiscard]] const NoteRecord& note() const { return *std::get<1>(record); }
};

/// Each root folder, when expanded followed by its subfolders and then its notes one level deeper;
/// then the notes at the project root; the Trash last.
inline QList<NaiveRow> naiveRows(const BinderOrder& order, const RecordTable<FolderRecord>& folders,
                                 const RecordTable<NoteRecord>& notes, const QUuid& project)
{
    QList<NaiveRow> rows;
    const auto addNotes = [&](const QUuid& container, int depth) {
        for (const auto& note : BinderDisplayOrdering::orderedNotes(order, notes, container))
            rows.append({note, depth});
    };
    const auto addFolder = [&](const auto& self, const QUuid& id, int depth) -> void {
        const auto* folder = folders.find(id);
        if (!folder)
            return;
        rows.append({*folder, depth});
        if (!order.expandedFolderIDs.contains(id))
            return;
        for (const QUuid& child : order.childFolderOrder.value(id))
            self(self, child, depth + 1);
        addNotes(id, depth + 1);
    };
    for (const QUuid& id : order.rootFolderOrder)
        addFolder(addFolder, id, 0);
    addNotes(project, 0);
    addFolder(addFolder, FolderRecord::trashFolderID, 0);
    return rows;
}

} // namespace orvane
