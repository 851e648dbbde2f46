// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/state/AppState.h"

#include "core/state/SessionKeys.h"
#include "platform/Log.h"

namespace orvane {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto checkPause = 3s;

} // namespace

AppState::AppState(const Services& services, QObject* parent)
    : QObject(parent)
    , m_services(services)
    , m_selection(m_notebook, services.defaults)
    , m_library(services.folders)
    , m_versionHistory(services.defaults, services.notifications)
    , m_known(KnownProjects::load(services.defaults))
    , m_tagSettings(TagSettings::load(services.defaults))
{}

AppState::~AppState()
{
    dropController();
}

bool AppState::canCreateOrEdit() const
{
    return m_services.licence.canCreateOrEdit() && !isReadOnly();
}

bool AppState::isReadOnly() const
{
    return m_controller && m_controller->isReadOnly();
}

bool AppState::passesLicence()
{
    if (m_services.licence.canCreateOrEdit())
        return true;
    emit licenceUnlockAsked();
    m_services.beeper.beep();
    return false;
}

bool AppState::passesEditGuard()
{
    if (!passesLicence())
        return false;
    if (isReadOnly())
        m_services.beeper.beep();
    return !isReadOnly();
}

// --- Opening and closing -------------------------------------------------------------------------

void AppState::openProject(const QUuid& id, bool restoreLastNote)
{
    if (m_currentProject && m_currentProject->id == id && m_controller)
        return presentEditor();
    if (const OrvaneProjectRecord* found = project(id))
        openProjectAt(QString(found->rootPath), restoreLastNote);
}

void AppState::openProjectAt(const QString& folder, bool restoreLastNote)
{
    const OrvaneProjectRecord* listed = projectAt(folder);
    if (!listed)
        return;
    if (m_currentProject && m_controller && isSameFolder(m_currentProject->rootPath, folder))
        return presentEditor();
    auto present = presentProject(folder);
    if (!present)
        return tellVanished(OrvaneProjectRecord(*listed));
    const auto identity = askWhoItIs(*present);
    if (!identity)
        return;
    OrvaneProjectRecord project = *std::move(present);

    const QString dataFolder = ProjectLibraryController::projectDataDirectoryPath(project.rootPath);
    if (const auto marker = PersistentStoreRecovery::read(dataFolder))
        return blockProjectOpenAfterRecovery(project, *marker);
    auto [held, controller, notebook] = takeProject(project);
    if (!controller) {
        qCInfo(projectBootstrapLog, "project not opened projectID=%ls: %ls",
               qUtf16Printable(uuidText(project.id)), qUtf16Printable(controller.error().text()));
        return refuseToOpen(project,
                            ProjectOpenProblem::of(project.titleForDisplay(), controller.error()));
    }
    if ((*controller)->hadExistingPersistentStore() && (*controller)->persistentStoreRecovery())
        return blockProjectOpenAfterRecovery(project, *(*controller)->persistentStoreRecovery());
    if (*identity == Identity::NewForCopy) {
        const QUuid former = std::exchange(project.id, QUuid::createUuid());
        project.hasStore = true;
        if (const auto written = ProjectLibraryController::writeManifest(project, held->path());
            !written)
            return refuseToOpen(project,
                                ProjectOpenProblem::of(project.titleForDisplay(), written.error()));
        giveOwnRoot(notebook, former, project.id);
    }
    if (!mayLeaveProject())
        return;

    closeOpenProject();
    becomeOpen(project, std::move(held), *std::move(controller));
    qCInfo(projectBootstrapLog,
           "openProject projectID=%ls projectName=%ls folders=%lld notes=%lld restoreLastNote=%d",
           qUtf16Printable(uuidText(project.id)), qUtf16Printable(project.name),
           qlonglong(notebook.folders.size()), qlonglong(notebook.notes.size()),
           int(restoreLastNote));
    showNotebook(std::move(notebook), restoreLastNote, m_workspaceState);
    if (*identity == Identity::NewForCopy)
        persist();
    resumeErasingVersions();
    setMode(RootPresentationMode::Editor);
    emit rescuesChanged();
}

void AppState::becomeOpen(const OrvaneProjectRecord& project,
                          std::shared_ptr<const FolderHandle> folder,
                          std::unique_ptr<PersistenceController> controller)
{
    m_controller = std::move(controller);
    m_folder = std::move(folder);
    m_currentProject = project;
    m_selection.setProject(project.id, project.rootPath);
    m_known.open(project, m_services.clock.now());
    m_known.save(m_services.defaults);
    m_selection.selectProjectFolder(project.rootPath);
    m_services.defaults.set(SessionKeys::lastOpenedProjectID, uuidText(project.id));
    markProjectAsOpened(project.id);
    refreshProjects(); // an id or a place may be new
    emit currentProjectChanged();
    m_workspaceState = ProjectWorkspaceStateStore::load(projectAccessPath());
    if (!project.hasStore && !isReadOnly()) {
        m_currentProject->hasStore = true;
        if (const auto written =
                ProjectLibraryController::writeManifest(*m_currentProject, projectAccessPath());
            !written)
            qWarning().noquote() << "OrvaneWorkspace project manifest error:"
                                 << written.error().text();
    }
    scheduleCheck();
}

void AppState::refuseToOpen(const OrvaneProjectRecord& project, const ProjectOpenProblem& problem)
{
    m_selection.selectProjectFolder(project.rootPath);
    if (!m_currentProject)
        setMode(RootPresentationMode::Projects);
    m_openProblem = problem;
    emit projectOpenProblemChanged();
}

void AppState::tellVanished(const OrvaneProjectRecord& project)
{
    refreshProjects();
    refuseToOpen(project,
                 ProjectOpenProblem::vanished(project.titleForDisplay(), project.rootPath));
}

void AppState::blockProjectOpenAfterRecovery(const OrvaneProjectRecord& project,
                                             const PersistentStoreRecovery& recovery)
{
    // What is open stays where the person wants to stay; the alert comes all the same.
    if (mayLeaveProject()) {
        closeOpenProject();
        setMode(RootPresentationMode::Projects);
    }
    m_protectionAlert = ProjectLoadProtectionAlert{QUuid::createUuid(), project.titleForDisplay(),
                                                   recovery.backupDirectoryURL.toLocalFile(),
                                                   recovery.errorDescription};
    qCCritical(
        projectBootstrapLog,
        "blocked project open after store recovery projectID=%ls projectName=%ls backupPath=%ls",
        qUtf16Printable(uuidText(project.id)), qUtf16Printable(project.name),
        qUtf16Printable(m_protectionAlert->backupPath));
    m_selection.selectProjectFolder(project.rootPath);
    emit projectLoadProtectionAlertChanged();
}

void AppState::closeDamagedProject(const QString& errorDescription)
{
    if (!m_currentProject || !m_controller)
        return;
    const OrvaneProjectRecord project = *m_currentProject;
    emit projectAboutToClose(); // what is typed goes to the store while it still takes it
    writePendingTouch();
    auto controller = std::move(m_controller);
    dropController();
    m_currentProject.reset();
    m_selection.setProject(std::nullopt, {});
    clearNotebookState();
    emit currentProjectChanged();
    const auto recovery = PersistenceController::protectAfterDamage(
        std::move(controller), errorDescription, m_services.clock);
    if (recovery)
        return blockProjectOpenAfterRecovery(project, *recovery);
    m_openProblem = ProjectOpenProblem::of(project.titleForDisplay(), recovery.error());
    setMode(RootPresentationMode::Projects);
    emit projectOpenProblemChanged();
}

void AppState::checkStoreInBackground()
{
    if (!m_controller)
        return;
    m_controller->checkInBackground([this](const StoreCheckResult& result) {
        if (result.outcome == StoreCheckResult::Outcome::Damaged)
            closeDamagedProject(result.problem);
    });
}

void AppState::closeOpenProject()
{
    if (!m_currentProject)
        return;
    emit projectAboutToClose();
    clearNotebookState();
    dropController();
    m_currentProject.reset();
    m_selection.setProject(std::nullopt, {});
    m_workspaceState.reset();
    if (m_saveFailure) {
        m_saveFailure.reset();
        emit saveFailureChanged();
    }
    emit currentProjectChanged();
}

void AppState::dropController()
{
    if (m_controller && std::exchange(m_leavesUnsaved, false))
        m_controller->discardUnsaved();
    m_nextCheck.reset();
    m_nextTry.reset();
    writePendingTouch();
    m_versionHistory.waitForAll();
    m_controller.reset();
    m_folder.reset();
    m_rescue.reset(); // stays on the disk
    m_unsavedSince.clear();
    setTrouble(std::nullopt);
}

void AppState::closeProject()
{
    if (!mayLeaveProject())
        return;
    closeOpenProject();
    presentProjectsBrowser();
}

void AppState::terminate()
{
    m_terminating = true;
    emit willTerminate();
    rescueNow();
    m_leavesUnsaved = m_leavesUnsaved || m_rescue; // an end that doesn't wait doesn't try again
    dropController();
    (void)m_services.defaults.flush();
}

void AppState::scheduleCheck()
{
    m_nextCheck = m_services.clock.after(checkPause, [this] {
        m_nextCheck.reset();
        checkProjectFolder();
    });
}

std::expected<QUuid, QString> AppState::createProject(const QString& name,
                                                      const std::optional<QString>& iconName)
{
    if (!passesLicence() || !mayLeaveProject())
        return std::unexpected(QString());
    const Timestamp now = m_services.clock.now();
    Notebook empty;
    ensureTrashFolder(empty.folders, now);
    const auto project =
        m_library.createProject(name, iconName, now, [&](const QString& dataFolder) {
            return storeSnapshotIn(dataFolder, {empty.folders.records(), {}, std::nullopt},
                                   m_services.clock);
        });
    if (!project)
        return std::unexpected(project.error().text());
    refreshProjects();
    openProjectAt(project->rootPath, false);
    return project->id;
}

void AppState::presentProjectsBrowser()
{
    refreshProjects();
    if (m_currentProject)
        m_selection.selectProjectFolder(m_currentProject->rootPath);
    else
        m_selection.selectProjectFolder(
            m_projects.isEmpty() ? std::nullopt : std::optional(m_projects.first().rootPath));
    setMode(RootPresentationMode::Projects);
}

void AppState::presentEditor()
{
    if (!m_currentProject)
        return;
    m_selection.selectProjectFolder(m_currentProject->rootPath);
    setMode(RootPresentationMode::Editor);
}

void AppState::clearProjectLoadProtectionAlert()
{
    m_protectionAlert.reset();
    emit projectLoadProtectionAlertChanged();
}

void AppState::clearProjectOpenProblem()
{
    m_openProblem.reset();
    emit projectOpenProblemChanged();
}

void AppState::setMode(RootPresentationMode mode)
{
    if (m_mode == mode)
        return;
    m_mode = mode;
    emit rootPresentationModeChanged(mode);
}

// --- The notebook of the open project ------------------------------------------------------------

void AppState::loadNotebookSnapshot(const NotebookSnapshot& snapshot, bool restoreLastNote,
                                    const std::optional<ProjectWorkspaceState>& workspaceState)
{
    const QUuid projectID = projectRootContainerID().value_or(QUuid());
    showNotebook(notebookOf(snapshot, projectID, m_services.clock.now()), restoreLastNote,
                 workspaceState);
}

void AppState::showNotebook(Notebook notebook, bool restoreLastNote,
                            const std::optional<ProjectWorkspaceState>& workspaceState)
{
    m_selection.forget();
    m_storedTitles.clear();
    m_refusedContents.clear();
    m_lastSnapshotTimes.clear();

    m_undo.clear();
    m_hasWordsSinceStep = false;
    m_notebook = std::move(notebook);
    m_activeTagFilter.clear();
    emit notebookReset();
    emit m_selection.historyFlagsChanged();
    if (workspaceState)
        restoreWorkspaceSelectionIfNeeded(*workspaceState, restoreLastNote);
    else if (restoreLastNote)
        restoreLastOpenedNoteIfNeeded();
}

void AppState::restoreWorkspaceSelectionIfNeeded(const ProjectWorkspaceState& state,
                                                 bool restoreLastNote)
{
    if (state.selectedNoteID && m_notebook.notes.contains(*state.selectedNoteID) &&
        !holdsBack(*state.selectedNoteID))
        openNote(*state.selectedNoteID);
    else if (state.selectedFolderID && m_notebook.folders.contains(*state.selectedFolderID))
        m_selection.selectFolder(*state.selectedFolderID);
    else if (state.selectedProjectRoot)
        m_selection.selectProjectRoot();
    else if (restoreLastNote)
        restoreLastOpenedNoteIfNeeded();
}

void AppState::restoreLastOpenedNoteIfNeeded()
{
    const auto destination =
        launchDestination(SessionKeys::launchDestination.read(m_services.defaults));
    if (!m_currentProject || destination != OrvaneWorkspaceLaunchDestination::LastNote)
        return;
    const auto note = SessionKeys::readUuid(m_services.defaults,
                                            SessionKeys::lastOpenedNoteID(m_currentProject->id));
    if (note && !holdsBack(*note))
        openNote(*note);
}

bool AppState::holdsBack(const QUuid& noteID)
{
    const bool isSlow =
        SessionKeys::readUuids(m_services.defaults, SessionKeys::slowNoteIDs).contains(noteID);
    if (isSlow && m_notebook.notes.contains(noteID))
        m_selection.holdBack(noteID);
    return isSlow;
}

void AppState::clearNotebookState()
{
    m_selection.forget();
    m_undo.clear();
    m_hasWordsSinceStep = false;
    m_notebook = {};
    m_activeTagFilter.clear();
    m_storedTitles.clear();
    m_refusedContents.clear();
    m_lastSnapshotTimes.clear();
    m_erasedNotes.clear();

    emit notebookReset();
    emit m_selection.selectionChanged();
    emit m_selection.historyFlagsChanged();
}

} // namespace orvane
