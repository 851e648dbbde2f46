// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/state/ProjectSession.h"

#include "core/state/ProjectFigures.h"
#include "core/state/SessionKeys.h"
#include "platform/Log.h"

namespace orvane {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto checkPause = 3s;

} // namespace

ProjectSession::ProjectSession(const Services& services, OpenNotebook& open, Selection& selection)
    : m_services(services)
    , m_open(open)
    , m_selection(selection)
    , m_library(services.folders)
    , m_known(KnownProjects::load(services.defaults))
{}

ProjectSession::~ProjectSession()
{
    dropController();
}

bool ProjectSession::isReadOnly() const
{
    return m_controller && m_controller->isReadOnly();
}

bool ProjectSession::passesLicence()
{
    if (m_services.licence.canCreateOrEdit())
        return true;
    emit licenceUnlockAsked();
    m_services.beeper.beep();
    return false;
}

bool ProjectSession::passesEditGuard()
{
    finishOpening();
    if (!passesLicence())
        return false;
    if (isReadOnly())
        m_services.beeper.beep();
    return !isReadOnly();
}

// --- Opening and closing -------------------------------------------------------------------------

void ProjectSession::openProject(const QUuid& id, bool restoreLastNote)
{
    finishOpening();
    if (m_currentProject && m_currentProject->id == id && m_controller)
        return presentEditor();
    if (const OrvaneProjectRecord* found = project(id))
        openProjectAt(QString(found->rootPath), restoreLastNote);
}

void ProjectSession::openProjectAt(const QString& folder, bool restoreLastNote)
{
    finishOpening();
    openFolder(folder, restoreLastNote, Showing::All);
}

void ProjectSession::openFolder(const QString& folder, bool restoreLastNote, Showing showing)
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
    if (showing == Showing::TheRest)
        m_open.complete(std::move(notebook));
    else
        m_open.show(std::move(notebook), restoreLastNote, m_workspaceState);
    if (*identity == Identity::NewForCopy)
        m_open.storeAll();
    m_open.projectOpened();
    setMode(RootPresentationMode::Editor);
    emit rescuesChanged();
}

void ProjectSession::becomeOpen(const OrvaneProjectRecord& project,
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

void ProjectSession::refuseToOpen(const OrvaneProjectRecord& project,
                                  const ProjectOpenProblem& problem)
{
    m_selection.selectProjectFolder(project.rootPath);
    if (!m_currentProject)
        setMode(RootPresentationMode::Projects);
    m_openProblem = problem;
    emit projectOpenProblemChanged();
}

void ProjectSession::tellVanished(const OrvaneProjectRecord& project)
{
    refreshProjects();
    refuseToOpen(project,
                 ProjectOpenProblem::vanished(project.titleForDisplay(), project.rootPath));
}

void ProjectSession::blockProjectOpenAfterRecovery(const OrvaneProjectRecord& project,
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

void ProjectSession::closeDamagedProject(const QString& errorDescription)
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
    m_open.clear();
    emit currentProjectChanged();
    const auto recovery = PersistenceController::protectAfterDamage(
        std::move(controller), errorDescription, m_services.clock);
    if (recovery)
        return blockProjectOpenAfterRecovery(project, *recovery);
    m_openProblem = ProjectOpenProblem::of(project.titleForDisplay(), recovery.error());
    setMode(RootPresentationMode::Projects);
    emit projectOpenProblemChanged();
}

void ProjectSession::checkStoreInBackground()
{
    if (!m_controller)
        return;
    m_controller->checkInBackground([this](const StoreCheckResult& result) {
        if (result.outcome == StoreCheckResult::Outcome::Damaged)
            closeDamagedProject(result.problem);
    });
}

void ProjectSession::closeOpenProject()
{
    if (!m_currentProject)
        return;
    emit projectAboutToClose();
    m_open.clear();
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

void ProjectSession::dropController()
{
    if (m_controller && std::exchange(m_leavesUnsaved, false))
        m_controller->discardUnsaved();
    m_nextCheck.reset();
    m_nextTry.reset();
    m_isClosing = true;
    writePendingTouch();
    m_isClosing = false;
    m_open.finishVersions();
    m_figures.reset(); // reads the store
    m_controller.reset();
    m_folder.reset();
    m_rescue.reset(); // stays on the disk
    m_unsavedSince.clear();
    setTrouble(std::nullopt);
}

void ProjectSession::closeProject()
{
    finishOpening();
    if (!mayLeaveProject())
        return;
    closeOpenProject();
    presentProjectsBrowser();
}

void ProjectSession::terminate()
{
    finishOpening();
    m_terminating = true;
    emit willTerminate();
    rescueNow();
    m_leavesUnsaved = m_leavesUnsaved || m_rescue; // an end that doesn't wait doesn't try again
    dropController();
    (void)m_services.defaults.flush();
}

void ProjectSession::scheduleCheck()
{
    m_nextCheck = m_services.clock.after(checkPause, [this] {
        m_nextCheck.reset();
        checkProjectFolder();
    });
}

std::expected<QUuid, QString> ProjectSession::createProject(const QString& name,
                                                            const std::optional<QString>& iconName)
{
    finishOpening();
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

void ProjectSession::presentProjectsBrowser()
{
    finishOpening();
    refreshProjects();
    if (m_currentProject)
        m_selection.selectProjectFolder(m_currentProject->rootPath);
    else
        m_selection.selectProjectFolder(
            m_projects.isEmpty() ? std::nullopt : std::optional(m_projects.first().rootPath));
    setMode(RootPresentationMode::Projects);
}

void ProjectSession::presentEditor()
{
    if (!m_currentProject)
        return;
    m_selection.selectProjectFolder(m_currentProject->rootPath);
    setMode(RootPresentationMode::Editor);
}

void ProjectSession::clearProjectLoadProtectionAlert()
{
    m_protectionAlert.reset();
    emit projectLoadProtectionAlertChanged();
}

void ProjectSession::clearProjectOpenProblem()
{
    m_openProblem.reset();
    emit projectOpenProblemChanged();
}

void ProjectSession::setMode(RootPresentationMode mode)
{
    if (m_mode == mode)
        return;
    m_mode = mode;
    emit rootPresentationModeChanged(mode);
}

void ProjectSession::selectProjectTile(const std::optional<QString>& folder)
{
    m_selection.selectProjectFolder(folder);
    if (m_mode == RootPresentationMode::Projects && m_currentProject &&
        folder == m_currentProject->rootPath)
        m_selection.select(std::nullopt, std::nullopt);
}

// --- Saving --------------------------------------------------------------------------------------

void ProjectSession::save(const NotebookSnapshot& snapshot)
{
    if (m_controller)
        saved(m_controller->save(snapshot),
              "OrvaneWorkspace persistence error:", CountsAsChange::Yes);
}

void ProjectSession::saveNote(const Shared<NoteRecord>& note)
{
    if (m_controller)
        saved(m_controller->saveNote(note),
              "OrvaneWorkspace single-note persistence error:", CountsAsChange::Yes);
}

void ProjectSession::saveFolder(const Shared<FolderRecord>& folder)
{
    if (m_controller)
        saved(m_controller->saveFolder(folder),
              "OrvaneWorkspace single-folder persistence error:", CountsAsChange::Yes);
}

void ProjectSession::saveLayout(const BinderLayoutSnapshot& layout)
{
    // Expanding a folder is not worth an error where nothing can be written at all.
    if (m_controller && !isReadOnly())
        saved(m_controller->saveLayout(layout),
              "OrvaneWorkspace layout persistence error:", CountsAsChange::No);
}

} // namespace orvane
