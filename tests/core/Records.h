// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/records/FolderRecord.h"
#include "core/records/NoteRecord.h"

namespace orvane {

/// An id that is the same in every run: `number` in its last field.
inline QUuid idOf(int number)
{
    return QUuid(7, 0, 0x4000, 0x80, 0, 0, 0, uchar(number >> 24), uchar(number >> 16),
                 uchar(number >> 8), uchar(number));
}

inline NoteRecord makeNote(int number, const QUuid& container, qint64 changed = 0)
{
    NoteRecord note;
    note.id = idOf(number);
    note.folderID = container;
    note.title = QStringLiteral("Note %1").arg(number);
    note.body = QStringLiteral("Body of note %1").arg(number);
    note.createdAt = {1000 + number};
    note.updatedAt = {changed ? changed : 1000 + number};
    return note;
}

inline FolderRecord makeFolder(int number, std::optional<QUuid> parent = {})
{
    FolderRecord folder;
    folder.id = idOf(number);
    folder.name = QStringLiteral("Folder %1").arg(number);
    folder.createdAt = {1000 + number};
    folder.parentFolderID = parent;
    return folder;
}

inline FolderRecord makeTrash()
{
    FolderRecord trash;
    trash.id = FolderRecord::trashFolderID;
    trash.name = QStringLiteral("Trash");
    trash.createdAt = {1};
    return trash;
}

} // namespace orvane
