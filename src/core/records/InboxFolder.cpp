// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/records/InboxFolder.h"

namespace orvane {

void moveNotesToInboxIfNoFolder(NotebookSnapshot& snapshot, Timestamp now)
{
    if (!snapshot.folders.isEmpty() || snapshot.notes.isEmpty())
        return;
    FolderRecord inbox;
    inbox.id = QUuid::createUuid();
    inbox.name = QStringLiteral("Inbox");
    inbox.createdAt = now;
    for (Shared<NoteRecord>& note : snapshot.notes)
        note = note.with([&](NoteRecord& record) { record.folderID = inbox.id; });
    snapshot.folders.append(std::move(inbox));
}

} // namespace orvane
