// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/library/ProjectWorkspaceState.h"
#include "core/notebook/NotebookEdit.h"
#include "core/records/NoteContent.h"
#include "core/records/Refusal.h"
#include "core/versions/NoteVersionHistoryStore.h"

#include <QHash>

#include <expected>

namespace orvane {

/// The notebook of the open project, as the session needs it that opens and closes projects: what
/// is in it, and what follows from the project's coming and going. Main thread.
class OpenNotebook {
public:
    [[nodiscard]] virtual const Notebook& notebook() const = 0;
    /// What was refused to existing notes and is stored nowhere: the latest content of each.
    [[nodiscard]] virtual const QHash<QUuid, NoteContent>& refusedContents() const = 0;

    /// Shows the notebook of the project that has just been opened, and what of it was selected.
    virtual void show(Notebook notebook, bool restoreLastNote,
                      const std::optional<ProjectWorkspaceState>& workspaceState) = 0;
    /// The whole notebook of the project of which some was shown until now: nothing visible
    /// changes.
    virtual void complete(Notebook notebook) = 0;
    virtual void clear() = 0;
    /// The project is open, and its notebook shown.
    virtual void projectOpened() = 0;
    virtual void openNote(const QUuid& id) = 0;

    /// Adds records and their places, as a step that can be taken back.
    virtual Accepted place(const NotebookEdit& edit) = 0;
    /// Saves the whole notebook through the session.
    virtual void storeAll() = 0;
    /// Nothing is left that isn't stored.
    virtual void allStored() = 0;
    /// Stores what was refused, where it may be stored by now.
    virtual void storeRefused() = 0;
    /// Something else is about to replace the note's content: a draft of it is written now.
    virtual void writeDraft(const QUuid& note) = 0;
    /// Keeps a version of the note and waits until it is on the disk.
    virtual std::expected<void, VersionHistoryError>
    keepVersion(const QUuid& note, const std::optional<QString>& label) = 0;
    /// Waits for every version that is being written.
    virtual void finishVersions() = 0;

protected:
    ~OpenNotebook() = default;
};

} // namespace orvane
