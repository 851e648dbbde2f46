// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/binder/BinderActions.h"
#include "core/binder/BinderOrder.h"
#include "core/library/BootstrapDecision.h"
#include "core/library/KnownProjects.h"
#include "core/library/ProjectLibraryController.h"
#include "core/library/ProjectOpenProblem.h"
#include "core/library/ProjectWorkspaceState.h"
#include "core/notebook/NotebookEdit.h"
#include "core/notebook/NotebookUndo.h"
#include "core/records/FolderRecord.h"
#include "core/records/NoteContent.h"
#include "core/records/NoteRecord.h"
#include "core/records/ProjectRecord.h"
#include "core/records/RecordTable.h"
#include "core/records/Refusal.h"
#include "core/state/RescueFile.h"
#include "core/state/Selection.h"
#include "core/state/UnsavedWork.h"
#include "core/store/PersistenceController.h"
#include "core/tags/TagSettings.h"
#include "core/tags/Tags.h"
#include "core/versions/NoteVersionHistoryStore.h"
#include "platform/FolderHandle.h"
#include "platform/Services.h"

#include <QObject>
#include <QSet>
#include <QUuid>

#include <expected>
#include <future>
#include <memory>
#include <optional>

namespace orvane {

/// What the main window shows: the browser of projects, or the open project.
enum class RootPresentationMode { Projects, Editor };

/// Saving fails, and since when; nothing in memory is lost.
struct SaveFailure {
    Timestamp since;
    QString error;
    StoreError::Code code = StoreError::Code::Other;

    bool operator==(const SaveFailure&) const = default;
};

/// Why the Trash was not emptied, or not whole.
struct EmptyTrashError {
    Refusal refusal = Refusal::NotAllowed;
    /// What stands in the way of handing a note over, where that failed.
    std::optional<FileError> file;
};

/// The one owner of the open notebook, the selection and the list of projects; lives as long as
/// the program and is shared with every window. Every change of the notebook goes through `apply`:
/// it happens in memory first, is told by one signal, and is saved in one transaction in the same
/// call; a save that fails leaves memory as it is. What changes content first asks the licence
/// question, and on a no emits `licenceUnlockAsked`, beeps and says `Refusal::NotAllowed`. Main
/// thread.
class AppState : public QObject {
    Q_OBJECT
public:
    explicit AppState(const Services& services, QObject* parent = nullptr);
    ~AppState() override;

    [[nodiscard]] const Services& services() const { return m_services; }
    [[nodiscard]] ProjectLibraryController& library() { return m_library; }
    /// Whether content may be created or changed now: the licence says yes and the open project,
    /// if there is one, can be written.
    [[nodiscard]] bool canCreateOrEdit() const;

    // --- The life of the program and of a project -------------------------------------------

    /// Takes over a library-wide notebook if there is one, finds the projects, and decides whether
    /// to show the browser or to open the project that the launch setting asks for;
    /// `rootPresentationMode` tells. That project's store is read on a second thread from here on,
    /// while the caller makes what shows it.
    void prepareBootstrap();
    /// Goes on from `prepareBootstrap`, which it calls if nobody has: shows the browser or opens
    /// the project.
    void bootstrapProjects();
    void refreshProjects();
    /// Opens a project, or leaves everything as it is and tells why: see
    /// `projectLoadProtectionAlert` and `projectOpenProblem`. Of several folders with that id the
    /// one that was opened before is meant.
    void openProject(const QUuid& id, bool restoreLastNote);
    /// Opens the project of this folder, which the library lists. A folder whose id is known at
    /// another place that is still there is asked about first: a copy gets an id of its own, a
    /// project that was moved keeps its own, and Cancel opens nothing.
    void openProjectAt(const QString& folder, bool restoreLastNote);
    /// Creates and opens a project. The error is a sentence for a person; it is empty when the
    /// licence question was answered with no.
    std::expected<QUuid, QString> createProject(const QString& name,
                                                const std::optional<QString>& iconName);
    /// Shows a notebook. Part of opening a project; without an open project nothing of it is saved.
    void loadNotebookSnapshot(const NotebookSnapshot& snapshot, bool restoreLastNote,
                              const std::optional<ProjectWorkspaceState>& workspaceState);
    void presentProjectsBrowser();
    /// Back to the editor of the project that is open behind the browser.
    void presentEditor();
    void selectProjectTile(const std::optional<QString>& folder);
    void updateProjectMetadata(const QString& folder, const QString& plainName,
                               const std::optional<QByteArray>& titleRTF,
                               const std::optional<QString>& iconName);
    void updateProjectIcon(const QString& folder, const std::optional<QString>& iconName);
    /// Gives the folder to the desktop's trash; the open project is left first, and it alone when
    /// the folder is its own. The error is a sentence for a person, empty when they or the licence
    /// decided otherwise.
    std::expected<void, QString> moveProjectToTrash(const QString& folder);
    /// Projects that were seen and whose folder isn't there now, the last seen first.
    [[nodiscard]] const QList<KnownProject>& missingProjects() const { return m_missingProjects; }
    /// Takes a missing project off the list.
    void forgetProject(const QString& folder);
    [[nodiscard]] const KnownProjects& knownProjects() const { return m_known; }
    /// Closes the open project behind the protection alert, its store's files moved aside; for
    /// damage that is found while the project is open.
    void closeDamagedProject(const QString& errorDescription);
    /// Reads every page of the open project's store on a thread of its own, once; what it finds
    /// closes the project by `closeDamagedProject`.
    void checkStoreInBackground();
    /// Closes the open project and shows the browser, unless there is something to stay for.
    void closeProject();
    /// Tells `willTerminate`, so that drafts are written, and closes the project. What can't be
    /// saved is kept in a rescue file, without asking; ask `mayLeaveProject` before where there is
    /// time for an answer.
    void terminate();

    // --- Leaving, and what isn't saved ------------------------------------------------------

    /// The one door for leaving the open project: writes the drafts, tries once more to save, and
    /// asks where something would be left behind. False when the person stays.
    bool mayLeaveProject();
    /// What is in memory and not in the store.
    [[nodiscard]] UnsavedWork unsavedWork() const;
    /// Why saving has stopped, where a person has to know more than that it fails.
    [[nodiscard]] const std::optional<ProjectTrouble>& projectTrouble() const { return m_trouble; }
    /// Keeps what isn't saved in a rescue file, without asking; for an end that doesn't wait.
    void rescueNow();
    /// Seconds between two tries to save.
    static constexpr int retrySeconds = 5;
    /// Tries to save what isn't saved, now; otherwise that happens every few seconds by itself.
    void trySavingAgain();
    /// Follows the open project's folder when it was moved, and notices when it can't be reached
    /// or its store was replaced. Happens every few seconds by itself.
    void checkProjectFolder();
    /// Makes a project of all that is open here at a path where nothing is yet. Gives how many
    /// notes could not be read and are not in it; the error is a sentence for a person.
    std::expected<int, QString> saveCopyOfProject(const QString& path);
    /// Both sides of a store that was replaced; the other one is read from a copy.
    [[nodiscard]] std::expected<StoreSides, StoreOpenError> storeSides();
    /// What is open here becomes the project's store; the other one becomes a project of its own.
    std::expected<void, QString> keepMyStore();
    /// The store at the project's place is opened; what is only here goes into versions and a
    /// rescue file.
    std::expected<void, QString> takeTheirStore();
    /// Words that were rescued in an earlier run and not put in place yet.
    [[nodiscard]] QList<FoundRescue> rescues() const;
    /// Puts the words into the project that is open, and gives the rescue file to the trash. What
    /// has changed there meanwhile stays, the rescued words beside it.
    std::expected<void, QString> putInPlace(const FoundRescue& rescue);
    /// Makes a project of the words and opens it, where their own is not there.
    std::expected<void, QString> makeProjectOf(const FoundRescue& rescue);

    [[nodiscard]] const QList<OrvaneProjectRecord>& projects() const { return m_projects; }
    /// Of several folders with that id the open one, else the one that was opened before.
    [[nodiscard]] const OrvaneProjectRecord* project(const QUuid& id) const;
    [[nodiscard]] const OrvaneProjectRecord* projectAt(const QString& folder) const;
    /// Recently opened first, then by the browser's order.
    [[nodiscard]] QList<OrvaneProjectRecord> projectsByRecentOpen() const;
    [[nodiscard]] QList<QUuid> projectOpenHistoryIDs() const;
    [[nodiscard]] const std::optional<OrvaneProjectRecord>& currentProject() const
    {
        return m_currentProject;
    }
    /// Where the open project's folder is reached whatever its name is now: for everything that
    /// the program reads and writes in it. Empty without an open project.
    [[nodiscard]] QString projectAccessPath() const;
    [[nodiscard]] std::optional<QUuid> selectedProjectID() const;
    [[nodiscard]] RootPresentationMode rootPresentationMode() const { return m_mode; }
    [[nodiscard]] const std::optional<ProjectLoadProtectionAlert>&
    projectLoadProtectionAlert() const
    {
        return m_protectionAlert;
    }
    void clearProjectLoadProtectionAlert();
    [[nodiscard]] const std::optional<ProjectOpenProblem>& projectOpenProblem() const
    {
        return m_openProblem;
    }
    void clearProjectOpenProblem();
    /// True while the open project can be read but not written.
    [[nodiscard]] bool isReadOnly() const;
    [[nodiscard]] const std::optional<SaveFailure>& saveFailure() const { return m_saveFailure; }
    [[nodiscard]] bool isAppTerminating() const { return m_terminating; }
    [[nodiscard]] PersistenceController* persistenceController() const
    {
        return m_controller.get();
    }
    /// What the project's window looked like when it was last used; read when it opens.
    [[nodiscard]] const std::optional<ProjectWorkspaceState>& openedWorkspaceState() const
    {
        return m_workspaceState;
    }

    // --- The notebook -----------------------------------------------------------------------

    [[nodiscard]] const Notebook& notebook() const { return m_notebook; }
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
    [[nodiscard]] const QHash<QUuid, NoteContent>& refusedContents() const
    {
        return m_refusedContents;
    }
    /// Shows a title while it is typed; nothing is stored until `updateNote`.
    void applyLiveTitle(const QUuid& id, const QString& title);
    void toggleExpanded(const QUuid& folderID);

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
    /// Carries out a drop as `resolveDrop` understood it.
    Accepted apply(const BinderMove& move);
    /// Moves the notes at `fromOffsets` of a container's list to where `toOffset` stands now.
    Accepted reorderNotes(const QUuid& container, QList<qsizetype> fromOffsets, qsizetype toOffset);

    // --- Duplicating and removing -----------------------------------------------------------

    std::expected<QUuid, Refusal> duplicateNote(const QUuid& id);
    /// The folder alone, without what is in it.
    std::expected<QUuid, Refusal> duplicateFolder(const QUuid& id);
    Accepted moveNoteToTrash(const QUuid& id);
    /// Always to the top level: the old folder isn't remembered.
    Accepted restoreNoteFromTrash(const QUuid& id);
    /// The note and, once its removal is stored, its versions.
    Accepted eraseNotePermanently(const QUuid& id);
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
    [[nodiscard]] HistoryPlace historyPlace() const { return {projectAccessPath(), m_folder}; }

    // --- Selection --------------------------------------------------------------------------

    [[nodiscard]] Selection& selection() { return m_selection; }
    [[nodiscard]] const Selection& selection() const { return m_selection; }
    /// Selects a note and shows its folder expanded.
    void openNote(const QUuid& id);
    void navigateMainEditorHistory(int delta);

    // --- Saving -----------------------------------------------------------------------------

    /// The whole notebook with its order; only what differs is written.
    void persist();
    void persistNote(const QUuid& id);
    void persistFolder(const QUuid& id);
    /// The order and the expansion; does not count as a change of the project.
    void persistLayout();

signals:
    /// Something that the licence doesn't allow was asked for.
    void licenceUnlockAsked();
    /// The list of projects, or what one of them says of itself, as when it was last changed.
    void projectsChanged();
    /// Another project is open, or none, or the open one has another title, icon or place.
    void currentProjectChanged();
    void rootPresentationModeChanged(orvane::RootPresentationMode mode);
    void projectLoadProtectionAlertChanged();
    void projectOpenProblemChanged();
    /// Another notebook, or none: everything below is new.
    void notebookReset();
    /// Which records changed, and in what, after each edit.
    void notebookChanged(const orvane::NotebookChange& change);
    /// Sent before something other than the editor replaces a note's content: a draft of it is
    /// written now.
    void noteAboutToBeReplaced(const QUuid& id);
    void binderSortOrderChanged();
    void activeTagFilterChanged();
    /// Colours, aliases or exceptions changed.
    void tagSettingsChanged();
    void saveFailureChanged();
    void projectTroubleChanged();
    /// Rescued words came or went.
    void rescuesChanged();
    /// Sent before it is asked whether the open project may be left: a draft is written now.
    void projectMayBeLeft();
    /// Sent before an open project is closed or replaced: the last moment to write a draft.
    void projectAboutToClose();
    void willTerminate();

private:
    bool passesEditGuard();
    bool passesLicence();
    void captureVersionSnapshotIfNeeded(const NoteRecord& previous, const NoteRecord& current);
    void setMode(RootPresentationMode mode);
    void showWayTo(const QUuid& noteID);
    void clearNotebookState();
    void dropController();
    void refuseToOpen(const OrvaneProjectRecord& project, const ProjectOpenProblem& problem);
    void tellVanished(const OrvaneProjectRecord& project);
    /// The manifest as it is on disk, or nothing when the project isn't there any more.
    [[nodiscard]] std::optional<OrvaneProjectRecord> presentProject(const QString& folder);
    enum class Identity { Unchanged, NewForCopy };
    /// Nothing when the person cancels.
    [[nodiscard]] std::optional<Identity> askWhoItIs(const OrvaneProjectRecord& project);
    void becomeOpen(const OrvaneProjectRecord& project, std::shared_ptr<const FolderHandle> folder,
                    std::unique_ptr<PersistenceController> controller);
    void scheduleCheck();
    void scheduleRetry();
    void setTrouble(const std::optional<ProjectTrouble::Kind>& kind);
    void noteUnsaved();
    /// Notes that the store doesn't have as they are, with what was refused to them.
    [[nodiscard]] QList<Shared<NoteRecord>> unsavedNotes() const;
    [[nodiscard]] bool hasUnsaved() const;
    /// Stores what was refused, where it may be stored by now.
    void storeRefused();
    [[nodiscard]] QList<Shared<NoteRecord>> notesToRescue();
    void rescueUnsaved();
    void finishRescue();
    [[nodiscard]] QStringList rescueFolders() const;
    void placeRescued(NotebookEditor& editor, const Shared<NoteRecord>& note,
                      const FoundRescue& rescue);
    bool writeUnsavedToFile();
    [[nodiscard]] QString openStorePath() const;
    [[nodiscard]] std::expected<QString, FileError> setTheirStoreAside();
    std::expected<void, QString> reopenWith(const QList<Shared<FolderRecord>>& folders,
                                            const QList<Shared<NoteRecord>>& notes,
                                            const BinderOrder& order,
                                            const std::optional<QUuid>& selected);
    std::expected<void, FileError> keepBeside(const QList<Shared<NoteRecord>>& notes);
    void projectMoved(const QString& to);
    void blockProjectOpenAfterRecovery(const OrvaneProjectRecord& project,
                                       const PersistentStoreRecovery& recovery);
    void restoreWorkspaceSelectionIfNeeded(const ProjectWorkspaceState& state,
                                           bool restoreLastNote);
    void restoreLastOpenedNoteIfNeeded();
    bool holdsBack(const QUuid& noteID);
    void markProjectAsOpened(const QUuid& id);
    void migrateLegacyNotebookIfNeeded();
    void touchCurrentProjectUpdatedAt();
    void writePendingTouch();
    enum class CountsAsChange { No, Yes };
    void saved(const std::expected<void, StoreError>& result, const char* failureLine,
               CountsAsChange counts);
    void closeOpenProject();
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
    Accepted
    changeTagsEverywhere(const std::function<std::optional<QStringList>(const QStringList&)>& edit,
                         const std::function<void(TagSettings&)>& settings);
    void replaceInTagFilter(const QString& tag, const std::optional<QString>& by);
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
    [[nodiscard]] NotebookSnapshot currentSnapshot() const;

    /// A project's store, or why there is none, and what it holds unless it was just recovered.
    struct OpenedProject {
        std::shared_ptr<const FolderHandle> folder;
        PersistenceController::Opened store;
        Notebook notebook;
    };
    /// A project that another thread opens; going, this waits for it.
    struct OpeningProject {
        QString rootPath;
        std::future<OpenedProject> result;
    };
    [[nodiscard]] static OpenedProject readProject(const OrvaneProjectRecord& project,
                                                   const Clock& clock);
    void readProjectAhead(const OrvaneProjectRecord& project);
    [[nodiscard]] OpenedProject takeProject(const OrvaneProjectRecord& project);
    void showNotebook(Notebook notebook, bool restoreLastNote,
                      const std::optional<ProjectWorkspaceState>& workspaceState);

    Services m_services;
    Notebook m_notebook;
    Selection m_selection;
    ProjectLibraryController m_library;
    NoteVersionHistoryStore m_versionHistory;
    QList<OrvaneProjectRecord> m_projects;
    std::optional<OrvaneProjectRecord> m_currentProject;
    KnownProjects m_known;
    QList<KnownProject> m_missingProjects;
    /// The open project's folder.
    std::shared_ptr<const FolderHandle> m_folder;
    RootPresentationMode m_mode = RootPresentationMode::Projects;
    std::optional<ProjectLoadProtectionAlert> m_protectionAlert;
    std::optional<ProjectOpenProblem> m_openProblem;
    std::optional<SaveFailure> m_saveFailure;
    std::optional<ProjectTrouble> m_trouble;
    std::unique_ptr<RescueFile> m_rescue;
    /// Since when each note is not saved, and how many words of it are stored.
    QHash<QUuid, UnsavedSince> m_unsavedSince;
    std::unique_ptr<Clock::Delay> m_nextCheck;
    std::unique_ptr<Clock::Delay> m_nextTry;
    bool m_isAskingToLeave = false;
    /// The person has decided to leave what isn't saved, or it is kept elsewhere.
    bool m_leavesUnsaved = false;
    std::optional<ProjectWorkspaceState> m_workspaceState;
    std::unique_ptr<PersistenceController> m_controller;
    std::optional<BootstrapDecision> m_bootstrapDecision;
    std::optional<OpeningProject> m_openingProject;
    std::unique_ptr<Clock::Delay> m_pendingTouch;
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
    bool m_terminating = false;
};

/// Saves a notebook in a data folder that has no store yet.
std::expected<void, FileError>
storeSnapshotIn(const QString& dataFolder, const NotebookSnapshot& snapshot, const Clock& clock);

} // namespace orvane
