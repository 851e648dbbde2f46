// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/notebook/NotebookEdit.h"

#include <functional>
#include <optional>

namespace orvane::NotebookEdits {

// Each makes an edit of a notebook that stays as it is; an id that doesn't exist makes an empty
// one, and so does what changes nothing. `root` is the container of notes that lie in no folder.
// Any thread.

/// Puts a new note behind `after` in its container, or at the end of it.
[[nodiscard]] NotebookEdit addNote(const Notebook& notebook, const QUuid& root,
                                   const NoteRecord& note,
                                   const std::optional<QUuid>& after = std::nullopt);
/// Puts a new folder behind `after` among its siblings, or at their end, its parent expanded.
[[nodiscard]] NotebookEdit addFolder(const Notebook& notebook, const QUuid& root,
                                     const FolderRecord& folder,
                                     const std::optional<QUuid>& after = std::nullopt);

using NoteChange = std::function<void(NoteRecord&)>;
using FolderChange = std::function<void(FolderRecord&)>;
/// Fields of records, not where they lie.
[[nodiscard]] NotebookEdit changeNotes(const Notebook& notebook, const QUuid& root,
                                       const QList<QUuid>& ids, const NoteChange& change);
[[nodiscard]] NotebookEdit changeFolder(const Notebook& notebook, const QUuid& root,
                                        const QUuid& id, const FolderChange& change);
/// Rewrites the tags of every record by `retagged`, which gives nothing where nothing changes. The
/// notes get the date `now`.
[[nodiscard]] NotebookEdit
changeTags(const Notebook& notebook, const QUuid& root,
           const std::function<std::optional<QStringList>(const QStringList&)>& retagged,
           Timestamp now);

/// Before `before` in the container's list, or at its end.
[[nodiscard]] NotebookEdit moveNote(const Notebook& notebook, const QUuid& root, const QUuid& id,
                                    const QUuid& container, const std::optional<QUuid>& before);
/// The same for a folder; a new parent is expanded. Empty where `canReparentFolder` says no.
[[nodiscard]] NotebookEdit moveFolder(const Notebook& notebook, const QUuid& root, const QUuid& id,
                                      const std::optional<QUuid>& parent,
                                      const std::optional<QUuid>& before);
/// Moves the notes at `fromOffsets` of a container's list to where `toOffset` stands now.
[[nodiscard]] NotebookEdit reorderNotes(const Notebook& notebook, const QUuid& root,
                                        const QUuid& container, QList<qsizetype> fromOffsets,
                                        qsizetype toOffset);
/// Moves several rows, in this order, into a folder or to the top level: folders before the folder
/// `before`, notes before the note `before`, else to the end. What lies below a folder that moves
/// goes along in its place. Empty where one of them can't go there.
[[nodiscard]] NotebookEdit moveRows(const Notebook& notebook, const QUuid& root,
                                    const QList<BinderRowID>& rows,
                                    const std::optional<QUuid>& folder,
                                    const std::optional<BinderRowID>& before = std::nullopt);
/// The same into a folder that is made for them, at the end of its parent's.
[[nodiscard]] NotebookEdit moveRowsToNewFolder(const Notebook& notebook, const QUuid& root,
                                               const QList<BinderRowID>& rows,
                                               const FolderRecord& folder);
/// Each row that is there is changed by one of the two.
[[nodiscard]] NotebookEdit changeRows(const Notebook& notebook, const QUuid& root,
                                      const QList<BinderRowID>& rows, const NoteChange& change,
                                      const FolderChange& folderChange);
[[nodiscard]] NotebookEdit expandFolders(const Notebook& notebook, const QUuid& root,
                                         const QList<QUuid>& ids, bool expanded);

/// To the end of the Trash's list; notes that are there stay.
[[nodiscard]] NotebookEdit trashNotes(const Notebook& notebook, const QUuid& root,
                                      const QList<QUuid>& ids, Timestamp now);
/// Notes to the end of the Trash's list; folders go, and all that lies below them.
[[nodiscard]] NotebookEdit trashRows(const Notebook& notebook, const QUuid& root,
                                     const QList<BinderRowID>& rows, Timestamp now);
/// Where a note of the Trash lay before, while that is there; else the root.
[[nodiscard]] QUuid containerToRestoreTo(const Notebook& notebook, const QUuid& root,
                                         const NoteRecord& note);
/// Each to the beginning of the list of `containerToRestoreTo`.
[[nodiscard]] NotebookEdit restoreNotes(const Notebook& notebook, const QUuid& root,
                                        const QList<QUuid>& ids, Timestamp now);
[[nodiscard]] NotebookEdit eraseNotes(const Notebook& notebook, const QUuid& root,
                                      const QSet<QUuid>& ids);
/// The folder and all below it go, their notes to the Trash.
[[nodiscard]] NotebookEdit deleteFolder(const Notebook& notebook, const QUuid& root,
                                        const QUuid& id, Timestamp now);

} // namespace orvane::NotebookEdits
