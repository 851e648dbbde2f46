// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/binder/BinderActions.h"
#include "core/binder/BinderOrder.h"
#include "core/notebook/NotebookEdit.h"
#include "core/notebook/NotebookUndo.h"
#include "core/records/FolderRecord.h"
#include "core/records/NoteContent.h"
#include "core/records/NoteRecord.h"
#include "core/records/RecordTable.h"
#include "core/records/Refusal.h"
#include "core/state/OpenNotebook.h"
#include "core/state/ProjectSession.h"
#include "core/state/Selection.h"
#include "core/tags/TagSettings.h"
#include "core/tags/Tags.h"
#include "core/versions/NoteVersionHistoryStore.h"
#include "platform/Services.h"

#include <QObject>
#include <QSet>
#include <QUuid>

#include <expected>
#include <optional>

namespace orvane {

/// Why the Trash was not emptied, or not whole.
struct EmptyTrashError {
    Refusal refusal = Refusal::NotAllowed;
    /// What stands in the way of handing a note over, where that failed.
    std::optional<FileError> file;
};

/// The one owner of the open notebook and the selection; lives as long as the program and is shared
/// with every window. Every change of the notebook goes through `apply`: it happens in memory
/// first, is told by one signal, and is saved in one transaction in the same call; a save that
/// fails leaves memory as it is. What changes content first asks the licence question and says
/// `Refusal::NotAllowed` on a no. Main thread.
class AppState : public QObject, private OpenNotebook {
    Q_OBJECT
public:
    explicit AppState(const Services& services, QObject* parent = nullptr);

    [[nodiscard]] const Services& services() const { return m_services; }
    /// Whether content may be created or changed now: the licence says yes and the open project,
    /// if there is one, can be written.
    [[nodiscard]] bool canCreateOrEdit() const;

    /// The projects and the life of the open one.
    [[nodiscard]] ProjectSession& projectSession() { return m_session; }
    [[nodiscard]] const ProjectSession& projectSession() const { return m_session; }

    // --- The notebook -----------------------------------------------------------------------

    [[nodiscard]] const Notebook& notebook() const override { return m_notebook; }
    /// Shows a notebook. Without an open project nothing of it is saved.
    void loadNotebookSnapshot(const NotebookSnapshot& snapshot, bool restoreLastNote,
                              const std::optional<ProjectWorkspaceState>& workspaceState);
    [[nodiscard]] const RecordTable<FolderRecord>& folders() const { return m_notebook.folders; }
    [[nodiscard]] const RecordTable<NoteRecord>& notes() const { return m_notebook.notes; }
    [[nodiscard]] const NoteRecord* note(const QUuid& id) const;
    [[nodiscard]] const FolderRecord* folder(const QUuid& id) const;
    [[nodiscard]] const BinderOrder& order() const { return m_notebook.order; }
    [[nodiscard]] std::optional<QUuid> projectRootContainerID() const;
    [[nodiscard]] QList<Shared<NoteRecord>> orderedNotes(const QUuid& container) const;

    /// The one door for changes, made by the functions of `NotebookEdits` from the notebook as it
    /// is: one signal, one save, one step to take back.
    Accepted apply(const NotebookEdit& edit);
    /// Takes back the last of up to 100 steps of this project (places, titles, icons, tags, order;
    /// not what is written in a note), or does it again.
    Accepted undoNotebookStep();
    Accepted redoNotebookStep();
    [[nodiscard]] bool canUndoNotebookStep() const { return m_undo.canUndo(); }
    /// Whether words were stored after the last step was made, taken back or done again.
    [[nodiscard]] bool hasWordsSinceNotebookStep() const { return m_hasWordsSinceStep; }
    [[nodiscard]] bool canRedoNotebookStep() const { return m_undo.canRedo(); }

    /// The new note's id; `NotThere` when there is no place for it.
    std::expected<QUuid, Refusal> createNote();
    std::expected<QUuid, Refusal> createNote(const QString& body,
                                             const std::optional<Blob>& bodyRTF);
    std::expected<QUuid, Refusal> createNoteWithTitle(const QString& title, NoteText body);
    std::expected<QUuid, Refusal> createFolder(const QString& name);
    /// The path by which the editor commits; says whether the content is on the disk. A title that
    /// differs from the stored one clears the rich title.
    Accepted updateNote(const QUuid& id, const NoteContent& content);
    /// What was refused to existing notes of the open project and is stored nowhere: the latest
    /// content of each.
    [[nodiscard]] const QHash<QUuid, NoteContent>& refusedContents() const override
    {
        return m_refusedContents;
    }
    /// Writes down with the note how it is edited; no change of its content, and no step. Does
    /// nothing where notes may not be changed.
    void keepEditorProfile(const QUuid& id, const QString& profile);
    /// Shows a title while it is typed; nothing is stored until `updateNote`.
    void applyLiveTitle(const QUuid& id, const QString& title);
    void toggleExpanded(const QUuid& folderID);
    /// Has so many UTF-16 units of the beginnings of these notes' texts read beside this thread;
    /// `done` is told once they are known, and not at all when there is nothing to read.
    void learnBeginnings(const QList<QUuid>& ids, qsizetype units, std::function<void()> done);
    /// Has the image with this hash read beside this thread; `done` is told its bytes, or nothing
    /// where they can't be read.
    void readImage(const QByteArray& hash,
                   std::function<void(const std::optional<QByteArray>&)> done);
    /// The same at once.
    [[nodiscard]] std::optional<QByteArray> imageBytes(const QByteArray& hash) const;

    Accepted updateNoteBinderTitle(const QUuid& id, const QString& plainTitle,
                                   const std::optional<Blob>& titleRTF);
    Accepted updateFolderBinderTitle(const QUuid& id, const QString& plainName,
                                     const std::optional<Blob>& titleRTF);
    Accepted updateNoteIcon(const QUuid& id, const std::optional<QString>& iconName);
    Accepted updateFolderIcon(const QUuid& id, const std::optional<QString>& iconName);
    /// Pinning is no change of content: the note keeps its date.
    Accepted togglePinNote(const QUuid& id);
    Accepted togglePinFolder(const QUuid& id);
    Accepted updatePDFAttachment(const QUuid& id, const std::optional<QString>& assetID,
                                 const std::optional<Blob>& payload);
    Accepted saveShapesPayload(const std::optional<Blob>& payload, const QUuid& noteID);

    // --- Order ------------------------------------------------------------------------------

    [[nodiscard]] BinderSortOrder binderSortOrder() const;
    void setBinderSortOrder(BinderSortOrder order);
    /// Whether the filter of tags shows a note: it has one of them and isn't in the Trash.
    [[nodiscard]] bool passesTagFilter(const NoteRecord& note) const;
    /// Notes that pass the filter of tags, newest first.
    [[nodiscard]] QList<Shared<NoteRecord>> tagFilteredNotes() const;
    /// The notes among which a neighbour is selected: those of the selected folder, else of the
    /// project root.
    [[nodiscard]] QList<Shared<NoteRecord>> filteredNotes() const;
    [[nodiscard]] std::optional<QUuid> nextNoteID(const QUuid& after) const;
    [[nodiscard]] std::optional<QUuid> nextSiblingFolderID(const QUuid& after) const;
    /// Without `before` to the end. Refused for a folder into itself or below itself.
    Accepted moveFolder(const QUuid& id, const std::optional<QUuid>& parent,
                        const std::optional<QUuid>& before);
    Accepted moveNote(const QUuid& id, const QUuid& container, const std::optional<QUuid>& before);
    /// Several rows as one step: see `NotebookEdits::moveRows`.
    Accepted moveRows(const QList<BinderRowID>& rows, const std::optional<QUuid>& folder,
                      const std::optional<BinderRowID>& before = std::nullopt);
    /// Into a folder of that name, which is made below `parent` or at the top.
    Accepted moveRowsToNewFolder(const QList<BinderRowID>& rows, const QString& name,
                                 const std::optional<QUuid>& parent);
    Accepted moveRowsToTrash(const QList<BinderRowID>& rows);
    Accepted setRowsPinned(const QList<BinderRowID>& rows, bool pinned);
    Accepted addTagToRows(const QList<BinderRowID>& rows, const QString& tag);
    Accepted removeTagFromRows(const QList<BinderRowID>& rows, const QString& tag);
    /// Carries out a drop as `resolveDrop` understood it.
    Accepted apply(const BinderMove& move);
    /// Moves the notes at `fromOffsets` of a container's list to where `toOffset` stands now.
    Accepted reorderNotes(const QUuid& container, QList<qsizetype> fromOffsets, qsizetype toOffset);

    // --- Duplicating and removing -----------------------------------------------------------

    std::expected<QUuid, Refusal> duplicateNote(const QUuid& id);
    /// The folder alone, without what is in it.
    std::expected<QUuid, Refusal> duplicateFolder(const QUuid& id);
    Accepted moveNoteToTrash(const QUuid& id);
    /// To where it lay before, while that is there; else to the top level. Gives the container.
    std::expected<QUuid, Refusal> restoreNoteFromTrash(const QUuid& id);
    Accepted restoreNotesFromTrash(const QList<QUuid>& ids);
    /// The note and, once its removal is stored, its versions.
    Accepted eraseNotePermanently(const QUuid& id);
    Accepted eraseNotesPermanently(const QList<QUuid>& ids);
    /// The folders vanish; every note below goes to the Trash.
    Accepted deleteFolder(const QUuid& id);
    /// Newest change first.
    [[nodiscard]] QList<Shared<NoteRecord>> notesInTrash() const;
    /// Writes each note in the Trash as an RTF file, gives that to the desktop's trash, and erases
    /// the note. Stops at the first file that fails; what was handled before stays erased.
    std::expected<void, EmptyTrashError> emptyTrashToMacOSUserTrash();
    /// Makes a file's own copy for a duplicated note: asset key, project folder and new note in,
    /// new asset key out. Without one a duplicate shares the asset.
    using AssetDuplicator = std::function<std::expected<QString, QString>(
        const QString& assetID, const QString& projectRootPath, const QUuid& noteID)>;
    void setAssetDuplicator(AssetDuplicator duplicator)
    {
        m_duplicateAsset = std::move(duplicator);
    }

    // --- Tags -------------------------------------------------------------------------------

    [[nodiscard]] QStringList tagsForNote(const QUuid& id) const;
    Accepted updateNoteTags(const QUuid& id, const QStringList& tags);
    Accepted updateFolderTags(const QUuid& id, const QStringList& tags);
    Accepted addTagToNote(const QUuid& noteID, const QString& tag);
    /// In every note and folder; onto an existing name it merges. A change of case alone is none.
    Accepted renameTag(const QString& oldName, const QString& newName);
    Accepted removeTagFromLibrary(const QString& name);
    [[nodiscard]] const QList<TagRecord>& tagLibrary() const { return m_notebook.tags.library(); }
    /// Notes outside the Trash.
    [[nodiscard]] int tagCount(const QString& tag) const { return m_notebook.tags.noteCount(tag); }
    [[nodiscard]] const QSet<QString>& activeTagFilter() const { return m_activeTagFilter; }
    void toggleTagFilter(const QString& tag);
    [[nodiscard]] const TagSettings& tagSettings() const { return m_tagSettings; }
    /// Hex text; absent for the palette's own choice.
    void setTagColor(const QString& tag, const std::optional<QString>& hex);
    void addAlias(const QString& alias, const QString& tag);
    void removeAlias(const QString& alias, const QString& tag);
    void addAutoTagException(const QString& word);

    // --- Versions ---------------------------------------------------------------------------

    /// Keeps a version of the note as it is, with a label such as "Manual Save", and waits until
    /// it is on the disk.
    std::expected<void, VersionHistoryError>
    appendVersionSnapshot(const QUuid& noteID, const std::optional<QString>& label);
    /// The same beside the caller; `done` is told what came of it, at the latest when the project
    /// closes.
    void appendVersionSnapshotLater(
        const QUuid& noteID, const std::optional<QString>& label,
        std::function<void(const std::expected<void, VersionHistoryError>&)> done);
    /// Makes the note what it was, after keeping it as it is under "Before Restore". Where that
    /// can't be kept the note stays as it is.
    std::expected<void, VersionHistoryError> restoreVersion(const NoteVersionSnapshot& snapshot);
    std::expected<void, VersionHistoryError> deleteVersion(const QUuid& noteID, const QUuid& id);
    [[nodiscard]] NoteVersionHistoryStore& versionHistory() { return m_versionHistory; }
    /// Where the versions of the open project are.
    [[nodiscard]] HistoryPlace historyPlace() const
    {
        return {m_session.projectAccessPath(), m_session.folder()};
    }

    // --- Selection --------------------------------------------------------------------------

    [[nodiscard]] Selection& selection() { return m_selection; }
    [[nodiscard]] const Selection& selection() const { return m_selection; }
    /// Selects a note and shows its folder expanded.
    void openNote(const QUuid& id) override;
    void navigateMainEditorHistory(int delta);

signals:
    /// Another notebook, or none: everything below is new.
    void notebookReset();
    /// What was shown of the notebook while its project was opened is all there now, and what
    /// wasn't shown as well.
    void notebookCompleted();
    /// Which records changed, and in what, after each edit.
    void notebookChanged(const orvane::NotebookChange& change);
    /// Sent before something other than the editor replaces a note's content: a draft of it is
    /// written now.
    void noteAboutToBeReplaced(const QUuid& id);
    void binderSortOrderChanged();
    void activeTagFilterChanged();
    /// Colours, aliases or exceptions changed.
    void tagSettingsChanged();

private:
    void show(Notebook notebook, bool restoreLastNote,
              const std::optional<ProjectWorkspaceState>& workspaceState) override;
    void complete(Notebook notebook) override;
    void clear() override;
    void projectOpened() override { resumeErasingVersions(); }
    Accepted place(const NotebookEdit& edit) override { return carryOut(edit, Step::Kept); }
    void storeAll() override { persist(); }
    void allStored() override { eraseVersionsOfErasedNotes(); }
    void storeRefused() override;
    void writeDraft(const QUuid& note) override { emit noteAboutToBeReplaced(note); }
    std::expected<void, VersionHistoryError>
    keepVersion(const QUuid& note, const std::optional<QString>& label) override
    {
        return appendVersionSnapshot(note, label);
    }
    void finishVersions() override { m_versionHistory.waitForAll(); }

    void captureVersionSnapshotIfNeeded(const NoteRecord& previous, const NoteRecord& current);
    void showWayTo(const QUuid& noteID);
    void restoreWorkspaceSelectionIfNeeded(const ProjectWorkspaceState& state,
                                           bool restoreLastNote);
    void restoreLastOpenedNoteIfNeeded();
    bool holdsBack(const QUuid& noteID);
    [[nodiscard]] Accepted mayEdit();
    /// What an edit is besides being applied.
    enum class Step {
        Kept, ///< it can be taken back
        Passing,
    };
    enum class Saving { Now, Later };
    Accepted carryOut(const NotebookEdit& edit, Step step, Saving saving = Saving::Now);
    Accepted carryOut(NotebookStep step);
    /// Memory and the signal; the selection follows what goes.
    void show(const NotebookEdit& edit, Saving saving);
    Accepted store(const NotebookEdit& edit);
    void remember(NotebookStep step);
    [[nodiscard]] std::expected<NotebookStep, Refusal> takeBack(const NotebookStep& step);
    [[nodiscard]] QUuid root() const;
    /// Changes fields of one record behind the guard.
    Accepted editNote(const QUuid& id, const std::function<void(NoteRecord&)>& edit);
    Accepted editFolder(const QUuid& id, const std::function<void(FolderRecord&)>& edit);
    Accepted changeTagsOfRows(const QList<BinderRowID>& rows,
                              const std::function<QStringList(QStringList)>& retagged);
    Accepted
    changeTagsEverywhere(const std::function<std::optional<QStringList>(const QStringList&)>& edit,
                         const std::function<void(TagSettings&)>& settings);
    void replaceInTagFilter(const QString& tag, const std::optional<QString>& by);
    Accepted moveBy(const NotebookEdit& edit);
    void changeTagSettings(const std::function<void(TagSettings&)>& edit);
    Accepted eraseNotes(const QSet<QUuid>& ids);
    /// Takes up what an earlier run could not finish.
    void resumeErasingVersions();
    /// Removes the versions of erased notes; what can't be removed now is tried again later.
    void eraseVersionsOfErasedNotes();
    [[nodiscard]] QUuid shownContainer(const NoteRecord& note) const;
    [[nodiscard]] QList<QUuid> filteredNoteIDs() const;
    [[nodiscard]] std::optional<QUuid> containerForNewNote() const;
    std::expected<QUuid, Refusal> insertNewNote(NoteRecord note);
    void persist();
    void persistNote(const QUuid& id);
    void persistFolder(const QUuid& id);
    void persistLayout();

    Services m_services;
    Notebook m_notebook;
    Selection m_selection;
    NoteVersionHistoryStore m_versionHistory;
    NotebookUndo m_undo;
    bool m_hasWordsSinceStep = false;
    TagSettings m_tagSettings;
    QSet<QString> m_activeTagFilter;
    AssetDuplicator m_duplicateAsset;
    /// Titles as they stand in the store, of notes whose title is being typed.
    QHash<QUuid, QString> m_storedTitles;
    QHash<QUuid, NoteContent> m_refusedContents;
    /// When the last version of each note was kept, since the program began.
    QHash<QUuid, Timestamp> m_lastSnapshotTimes;
    /// Notes that a person has erased and whose versions are still there.
    QSet<QUuid> m_erasedNotes;
    /// Those that the edit at hand erases.
    QSet<QUuid> m_erasing;
    ProjectSession m_session; ///< last: it closes the project when it goes
};

} // namespace orvane
