// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/binder/BinderOrder.h"
#include "core/records/NotebookSnapshot.h"
#include "core/records/RecordTable.h"
#include "core/tags/Tags.h"

namespace orvane {

/// A notebook as it is worked with: its records by id, and what follows from them.
struct Notebook {
    RecordTable<FolderRecord> folders;
    RecordTable<NoteRecord> notes;
    TagIndex tags;
    BinderOrder order;
};

/// The Trash of a project, made now.
[[nodiscard]] FolderRecord trashFolder(Timestamp now);
/// Adds a Trash to `folders` where there is none.
void ensureTrashFolder(RecordTable<FolderRecord>& folders, Timestamp now);

/// A copy of a project gets an id of its own: what lies at the root of `former` lies at its root.
void giveOwnRoot(Notebook& notebook, const QUuid& former, const QUuid& own);

/// The notebook as it is stored.
[[nodiscard]] NotebookSnapshot snapshotOf(const Notebook& notebook);

/// What is stored of a project, ready to be worked with, and with a Trash. On any thread.
[[nodiscard]] Notebook notebookOf(const NotebookSnapshot& snapshot, const QUuid& projectID,
                                  Timestamp now);

/// The same of a snapshot that has some of the notes only: the order is taken as it is, notes that
/// it names and that aren't there included. To be looked at, not to be changed. On any thread.
[[nodiscard]] Notebook notebookOfSome(const NotebookSnapshot& snapshot, Timestamp now);

/// Notes of `whole` get to know what is known of the beginnings of their texts, at most so many
/// UTF-16 units, so that nothing that is shown of them changes.
void takeOverBeginnings(const RecordTable<NoteRecord>& known, const RecordTable<NoteRecord>& whole,
                        qsizetype units);

} // namespace orvane
