// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/library/BootstrapDecision.h"
#include "core/library/KnownProjects.h"
#include "core/library/ProjectLibraryController.h"
#include "core/library/ProjectOpenProblem.h"
#include "core/library/ProjectWorkspaceState.h"
#include "core/records/ProjectRecord.h"
#include "core/state/OpenNotebook.h"
#include "core/state/RescueFile.h"
#include "core/state/Selection.h"
#include "core/state/UnsavedWork.h"
#include "core/store/PersistenceController.h"
#include "platform/FolderHandle.h"
#include "platform/Services.h"

#include <QObject>

#include <expected>
#include <future>
#include <memory>
#include <optional>

namespace orvane {

class ProjectFigures;

/// What the main window shows: the browser of projects, or the open project.
enum class RootPresentationMode { Projects, Editor };

/// Saving fails, and since when; nothing in memory is lost.
struct SaveFailure {
    Timestamp since;
    QString error;
    StoreError::Code code = StoreError::Code::Other;

    bool operator==(const SaveFailure&) const = default;
};

/// The projects, and the life of the one that is open: its folder and its lock, its store and what
/// was wrong with it, saving and what couldn't be saved, leaving. Lives as long as the program.
/// What needs the licence asks it first, and on a no emits `licenceUnlockAsked`, beeps and gives an
/// error without a text. Main thread.
class ProjectSession : public QObject {
    Q_OBJECT
public:
    /// All of them outlive this.
    ProjectSession(const Services& services, OpenNotebook& open, Selection& selection);
    ~ProjectSession() override;

    [[nodiscard]] ProjectLibraryController& library() { return m_library; }
    /// Whether the licence lets anything be created or changed; tells the person if not.
    bool passesLicence();
    /// The same, and the open project can be written.
    bool passesEditGuard();

    // --- The life of the program and of a project -------------------------------------------

    /// Takes over a library-wide notebook if there is one, finds the projects, and decides whether
    /// to show the browser or to open the project that the launch setting asks for;
    /// `rootPresentationMode` tells. That project's store is read on a second thread from here on,
    /// while the caller makes what shows it.
    void prepareBootstrap();
    /// Goes on from `prepareBootstrap`, which it calls if nobody has: shows the browser or opens
    /// the project.
    void bootstrapProjects();
    /// True while some of a large project is shown and the rest is read: what stands open in the
    /// Binder and the selected note are there to be looked at. Whatever changes something finishes
    /// opening first.
    [[nodiscard]] bool isOpening() const { return m_isShownAhead; }
    /// Waits for the rest, and opens the project. Where it can't be opened it is no longer shown,
    /// and why is told as at any opening. Nothing is opened in vain: it does nothing unless
    /// `isOpening`.
    void finishOpening();
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
    void presentProjectsBrowser();
    /// Back to the editor of the project that is open behind the browser.
    void presentEditor();
    void selectProjectTile(const std::optional<QString>& folder);
    void updateProjectMetadata(const QString& folder, const QString& plainName,
                               const std::optional<QByteArray>& titleRTF,
                               const std::optional<QString>& iconName);
    void updateProjectIcon(const QString& folder, const std::optional<QString>& iconName);
    /// "#RRGGBB", or nothing for the colour that goes with the icon.
    void updateProjectCover(const QString& folder, const std::optional<QString>& color);
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

    // --- Saving -----------------------------------------------------------------------------

    // Each does nothing without an open project; `saveFailure` says what came of it.
    void save(const NotebookSnapshot& snapshot);
    void saveNote(const Shared<NoteRecord>& note);
    void saveFolder(const Shared<FolderRecord>& folder);
    /// The order and the expansion; does not count as a change of the project.
    void saveLayout(const BinderLayoutSnapshot& layout);
    /// The open project's folder; null without one.
    [[nodiscard]] const std::shared_ptr<const FolderHandle>& folder() const { return m_folder; }

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
    void setMode(RootPresentationMode mode);
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
    void markProjectAsOpened(const QUuid& id);
    void migrateLegacyNotebookIfNeeded();
    void touchCurrentProjectUpdatedAt();
    void writePendingTouch();
    /// What the tile says beside the date, in memory: as far as that means to read no more than so
    /// many bytes now.
    void takeFigures(qsizetype bytesAtOnce);
    void writeProject(const OrvaneProjectRecord& changed);
    enum class CountsAsChange { No, Yes };
    void saved(const std::expected<void, StoreError>& result, const char* failureLine,
               CountsAsChange counts);
    void closeOpenProject();

    /// A project's store, or why there is none, and what it holds unless it was just recovered.
    struct OpenedProject {
        std::shared_ptr<const FolderHandle> folder;
        PersistenceController::Opened store;
        Notebook notebook;
    };
    /// What is there to be looked at before the rest.
    struct Beginning {
        std::shared_ptr<const FolderHandle> folder;
        Notebook notebook;
    };
    using TakeBeginning = std::function<void(std::optional<Beginning>)>;
    /// A project that another thread opens; going, this waits for it.
    struct OpeningProject {
        QString rootPath;
        std::future<std::optional<Beginning>> beginning;
        std::future<OpenedProject> result;
    };
    [[nodiscard]] static OpenedProject readProject(const OrvaneProjectRecord& project,
                                                   const Clock& clock, BeginningWish wish,
                                                   const TakeBeginning& take);
    void readProjectAhead(const OrvaneProjectRecord& project);
    [[nodiscard]] BeginningWish beginningOf(const OrvaneProjectRecord& project) const;
    [[nodiscard]] bool showBeginning(const QUuid& projectID);
    enum class Showing { All, TheRest };
    void openFolder(const QString& folder, bool restoreLastNote, Showing showing);
    [[nodiscard]] OpenedProject takeProject(const OrvaneProjectRecord& project);

    Services m_services;
    OpenNotebook& m_open;
    Selection& m_selection;
    ProjectLibraryController m_library;
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
    /// Of the open project, once something was changed in it.
    std::unique_ptr<ProjectFigures> m_figures;
    std::optional<BootstrapDecision> m_bootstrapDecision;
    std::optional<OpeningProject> m_openingProject;
    bool m_isShownAhead = false;
    std::unique_ptr<Clock::Delay> m_pendingTouch;
    bool m_isClosing = false;
    bool m_terminating = false;
};

/// Saves a notebook in a data folder that has no store yet.
std::expected<void, FileError>
storeSnapshotIn(const QString& dataFolder, const NotebookSnapshot& snapshot, const Clock& clock);

} // namespace orvane
