// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QList>
#include <QUuid>

#include <optional>

namespace orvane {

/// The order of one folder's subfolders; without a parent, of the top level.
struct BinderFolderOrderEntry {
    std::optional<QUuid> parentFolderID;
    QList<QUuid> childFolderIDs;

    bool operator==(const BinderFolderOrderEntry&) const = default;
};

/// The order of the notes of one container (a folder, the Trash or the project).
struct BinderNoteOrderEntry {
    QUuid folderID;
    QList<QUuid> noteIDs;

    bool operator==(const BinderNoteOrderEntry&) const = default;
};

/// The order of everything in the Binder and what is expanded. It may name records that are gone
/// and miss records that are there; it is repaired against them when a project opens.
struct BinderLayoutSnapshot {
    QList<BinderFolderOrderEntry> folderOrderEntries;
    QList<BinderNoteOrderEntry> noteOrderEntries;
    QList<QUuid> expandedFolderIDs;

    bool operator==(const BinderLayoutSnapshot&) const = default;
};

} // namespace orvane
