// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/notebook/Notebook.h"

#include <algorithm>

namespace orvane {

FolderRecord trashFolder(Timestamp now)
{
    FolderRecord trash;
    trash.id = FolderRecord::trashFolderID;
    trash.name = QStringLiteral("Trash");
    trash.createdAt = now;
    return trash;
}

void ensureTrashFolder(RecordTable<FolderRecord>& folders, Timestamp now)
{
    if (!folders.contains(FolderRecord::trashFolderID))
        folders.append(trashFolder(now));
}

void giveOwnRoot(Notebook& notebook, const QUuid& former, const QUuid& own)
{
    const QList<Shared<NoteRecord>> notes = notebook.notes.records();
    for (const Shared<NoteRecord>& note : notes) {
        if (note->folderID == former)
            notebook.notes.replace(note.with([&](NoteRecord& each) { each.folderID = own; }));
    }
    if (notebook.order.noteOrderByFolder.contains(former))
        notebook.order.noteOrderByFolder[own] = notebook.order.noteOrderByFolder.take(former);
}

Notebook notebookOf(const NotebookSnapshot& snapshot, const QUuid& projectID, Timestamp now)
{
    namespace Ordering = BinderDisplayOrdering;
    Notebook notebook;
    notebook.folders = RecordTable<FolderRecord>(snapshot.folders);
    notebook.notes = RecordTable<NoteRecord>(snapshot.notes);
    ensureTrashFolder(notebook.folders, now);
    notebook.tags.rebuild(notebook.folders, notebook.notes);
    (void)notebook.tags.library(); // sorted here, where nobody waits for a key
    notebook.order = snapshot.binderLayout
                         ? Ordering::reconciled(Ordering::orderOf(*snapshot.binderLayout),
                                                notebook.folders, notebook.notes, projectID)
                         : Ordering::orderOf(Ordering::defaultLayout(notebook.folders,
                                                                     notebook.notes, projectID));
    return notebook;
}

Notebook notebookOfSome(const NotebookSnapshot& snapshot, Timestamp now)
{
    Notebook notebook;
    notebook.folders = RecordTable<FolderRecord>(snapshot.folders);
    notebook.notes = RecordTable<NoteRecord>(snapshot.notes);
    ensureTrashFolder(notebook.folders, now);
    notebook.tags.rebuild(notebook.folders, notebook.notes);
    if (snapshot.binderLayout)
        notebook.order = BinderDisplayOrdering::orderOf(*snapshot.binderLayout);
    return notebook;
}

void takeOverBeginnings(const RecordTable<NoteRecord>& known, const RecordTable<NoteRecord>& whole,
                        qsizetype units)
{
    for (const Shared<NoteRecord>& note : known) {
        const QByteArray beginning = note->body.utf8().known();
        if (const auto* same = beginning.isEmpty() ? nullptr : whole.find(note->id))
            (*same)->body.utf8().learn(
                beginning.first(std::min(beginning.size(), NoteText::bytesFor(units))));
    }
}

NotebookSnapshot snapshotOf(const Notebook& notebook)
{
    return {notebook.folders.records(), notebook.notes.records(),
            BinderDisplayOrdering::layoutOf(notebook.order)};
}

} // namespace orvane
