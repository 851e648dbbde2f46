// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/Notebook.h"

namespace orvane {

void ensureTrashFolder(RecordTable<FolderRecord>& folders, Timestamp now)
{
    if (folders.contains(FolderRecord::trashFolderID))
        return;
    FolderRecord trash;
    trash.id = FolderRecord::trashFolderID;
    trash.name = QStringLiteral("Trash");
    trash.createdAt = now;
    folders.append(trash);
}

Notebook notebookOf(const NotebookSnapshot& snapshot, const QUuid& projectID, Timestamp now)
{
    namespace Ordering = BinderDisplayOrdering;
    Notebook notebook;
    notebook.folders = RecordTable<FolderRecord>(snapshot.folders);
    notebook.notes = RecordTable<NoteRecord>(snapshot.notes);
    ensureTrashFolder(notebook.folders, now);
    notebook.tags.rebuild(notebook.folders, notebook.notes);
    notebook.order = snapshot.binderLayout
                         ? Ordering::reconciled(Ordering::orderOf(*snapshot.binderLayout),
                                                notebook.folders, notebook.notes, projectID)
                         : Ordering::orderOf(Ordering::defaultLayout(notebook.folders,
                                                                     notebook.notes, projectID));
    return notebook;
}

} // namespace orvane
