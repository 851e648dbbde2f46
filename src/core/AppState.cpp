// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/AppState.h"

#include "core/SessionKeys.h"
#include "platform/Log.h"

#include <QCollator>
#include <QCoreApplication>

namespace orvane {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

// A project's date of change moves with every save; its manifest follows at this distance, and at
// once when the project closes.
constexpr auto touchDelay = 2s;
constexpr qsizetype openHistoryLength = 20;

} // namespace

AppState::AppState(const Services& services, QObject* parent)
    : QObject(parent)
    , m_services(services)
    , m_library(services.folders)
    , m_versionHistory(services.defaults, services.notifications)
    , m_selectionToSave(services.notifications.observe(
          AppCommandEvents::saveSelectionToNewNote, [this](const SelectionForNewNote& selection) {
              createNote(selection.text, selection.rtf.isEmpty()
                                             ? std::nullopt
                                             : std::optional(Blob(selection.rtf)));
          }))
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
    m_services.notifications.post(AppCommandEvents::showLicenseUnlock);
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

// --- The list of projects ------------------------------------------------------------------------

const OrvaneProjectRecord* AppState::project(const QUuid& id) const
{
    const auto it = std::find_if(m_projects.begin(), m_projects.end(),
                                 [&](const OrvaneProjectRecord& each) { return each.id == id; });
    return it == m_projects.end() ? nullptr : &*it;
}

void AppState::refreshProjects()
{
    writePendingTouch();
    (void)m_library.ensureProjectsDirectoryExists();
    QList<OrvaneProjectRecord> projects = m_library.sortedProjects();
    qCDebug(projectBootstrapLog, "refreshProjects manifestCount=%lld loadedProjects=%lld",
            qlonglong(m_library.manifestCount()), qlonglong(projects.size()));
    if (projects != m_projects) {
        m_projects = std::move(projects);
        emit projectsChanged();
    }
    if (m_selectedProjectID && !project(*m_selectedProjectID))
        setSelectedProjectID(std::nullopt);
}

QList<QUuid> AppState::projectOpenHistoryIDs() const
{
    return SessionKeys::readUuids(m_services.defaults, SessionKeys::openProjectHistoryIDs);
}

void AppState::markProjectAsOpened(const QUuid& id)
{
    QList<QUuid> history = projectOpenHistoryIDs();
    history.removeAll(id);
    history.prepend(id);
    history.resize(std::min(history.size(), openHistoryLength));
    SessionKeys::writeUuids(m_services.defaults, SessionKeys::openProjectHistoryIDs, history);
}

QList<OrvaneProjectRecord> AppState::projectsByRecentOpen() const
{
    QHash<QUuid, qsizetype> places;
    const QList<QUuid> history = projectOpenHistoryIDs();
    for (qsizetype i = 0; i < history.size(); ++i)
        places.insert(history.at(i), i);
    QList<OrvaneProjectRecord> sorted = m_projects; // newest change first already
    std::stable_sort(sorted.begin(), sorted.end(),
                     [&](const OrvaneProjectRecord& a, const OrvaneProjectRecord& b) {
                         return places.value(a.id, openHistoryLength) <
                                places.value(b.id, openHistoryLength);
                     });
    return sorted;
}

void AppState::updateProjectMetadata(const QUuid& id, const QString& plainName,
                                     const std::optional<QByteArray>& titleRTF,
                                     const std::optional<QString>& iconName)
{
    if (!passesLicence())
        return;
    const OrvaneProjectRecord* found = project(id);
    if (!found)
        return;
    OrvaneProjectRecord changed = *found;
    changed.name = plainName.trimmed();
    if (changed.name.isEmpty())
        changed.name = QCoreApplication::translate("Project", "Untitled Project");
    changed.titleRTF = titleRTF;
    changed.iconName = iconName;
    changed.updatedAt = m_services.clock.now();
    (void)m_library.ensureProjectsDirectoryExists();
    if (const auto written = ProjectLibraryController::writeManifest(changed); !written) {
        qWarning().noquote() << "OrvaneWorkspace project manifest error:" << written.error().text();
        return;
    }
    if (m_currentProject && m_currentProject->id == id) {
        m_pendingTouch.reset(); // this write carries a newer date
        m_currentProject = changed;
        emit currentProjectChanged();
    }
    refreshProjects();
}

void AppState::updateProjectIcon(const QUuid& id, const std::optional<QString>& iconName)
{
    if (const OrvaneProjectRecord* found = project(id))
        updateProjectMetadata(id, QString(found->name), found->titleRTF, iconName);
}

void AppState::moveProjectToTrash(const QUuid& id)
{
    if (!passesLicence())
        return;
    const OrvaneProjectRecord* found = project(id);
    if (!found)
        return;
    const QString rootPath = found->rootPath;
    // The store is folded into one file before its folder moves.
    if (m_currentProject && m_currentProject->id == id)
        closeOpenProject();
    if (const auto moved = m_services.trash.moveToTrash(rootPath); !moved)
        qWarning().noquote() << "OrvaneWorkspace project trash error:" << moved.error().text();
    refreshProjects();
}

void AppState::touchCurrentProjectUpdatedAt()
{
    if (!m_currentProject)
        return;
    m_currentProject->updatedAt = m_services.clock.now();
    const auto it = std::find_if(m_projects.begin(), m_projects.end(),
                                 [&](const auto& each) { return each.id == m_currentProject->id; });
    if (it != m_projects.end()) {
        it->updatedAt = m_currentProject->updatedAt;
        if (it != m_projects.begin())
            sortProjects(m_projects);
    }
    if (!m_pendingTouch)
        m_pendingTouch = m_services.clock.after(touchDelay, [this] { writePendingTouch(); });
}

void AppState::writePendingTouch()
{
    if (!m_pendingTouch)
        return;
    m_pendingTouch.reset();
    if (!m_currentProject)
        return;
    if (const auto written = ProjectLibraryController::writeManifest(*m_currentProject); !written)
        qWarning().noquote() << "OrvaneWorkspace project touch error:" << written.error().text();
    emit currentProjectChanged();
    emit projectsChanged();
}

// --- Opening and closing -------------------------------------------------------------------------

void AppState::openProject(const QUuid& id, bool restoreLastNote)
{
    const OrvaneProjectRecord* found = project(id);
    if (!found)
        return;
    if (m_currentProject && m_currentProject->id == id && m_controller)
        return presentEditor();
    const OrvaneProjectRecord project = *found;
    const QString dataFolder = ProjectLibraryController::projectDataDirectoryPath(project.rootPath);

    if (const auto marker = PersistentStoreRecovery::read(dataFolder))
        return blockProjectOpenAfterRecovery(project, *marker);
    auto [controller, notebook] = takeProject(dataFolder, id);
    if (!controller) {
        qCInfo(projectBootstrapLog, "project not opened projectID=%ls: %ls",
               qUtf16Printable(uuidText(id)), qUtf16Printable(controller.error().text()));
        setSelectedProjectID(id);
        if (!m_currentProject)
            setMode(RootPresentationMode::Projects);
        m_openProblem = ProjectOpenProblem::of(project.titleForDisplay(), controller.error());
        emit projectOpenProblemChanged();
        return;
    }
    if ((*controller)->hadExistingPersistentStore() && (*controller)->persistentStoreRecovery())
        return blockProjectOpenAfterRecovery(project, *(*controller)->persistentStoreRecovery());

    closeOpenProject();
    m_controller = *std::move(controller);
    m_currentProject = project;
    setSelectedProjectID(id);
    m_services.defaults.set(SessionKeys::lastOpenedProjectID, uuidText(id));
    markProjectAsOpened(id);
    emit currentProjectChanged();

    m_workspaceState = ProjectWorkspaceStateStore::load(project.rootPath);
    qCInfo(projectBootstrapLog,
           "openProject projectID=%ls projectName=%ls folders=%lld notes=%lld restoreLastNote=%d",
           qUtf16Printable(uuidText(id)), qUtf16Printable(project.name),
           qlonglong(notebook.folders.size()), qlonglong(notebook.notes.size()),
           int(restoreLastNote));
    showNotebook(std::move(notebook), restoreLastNote, m_workspaceState);
    setMode(RootPresentationMode::Editor);
}

void AppState::blockProjectOpenAfterRecovery(const OrvaneProjectRecord& project,
                                             const PersistentStoreRecovery& recovery)
{
    closeOpenProject();
    m_protectionAlert = ProjectLoadProtectionAlert{QUuid::createUuid(), project.titleForDisplay(),
                                                   recovery.backupDirectoryURL.toLocalFile(),
                                                   recovery.errorDescription};
    qCCritical(
        projectBootstrapLog,
        "blocked project open after store recovery projectID=%ls projectName=%ls backupPath=%ls",
        qUtf16Printable(uuidText(project.id)), qUtf16Printable(project.name),
        qUtf16Printable(m_protectionAlert->backupPath));
    setSelectedProjectID(project.id);
    setMode(RootPresentationMode::Projects);
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
    m_currentProject.reset();
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
    m_workspaceState.reset();
    if (m_saveFailure) {
        m_saveFailure.reset();
        emit saveFailureChanged();
    }
    emit currentProjectChanged();
}

void AppState::dropController()
{
    writePendingTouch();
    m_controller.reset();
}

void AppState::closeProject()
{
    closeOpenProject();
    presentProjectsBrowser();
}

void AppState::terminate()
{
    m_terminating = true;
    emit willTerminate();
    dropController();
    (void)m_services.defaults.flush();
}

std::expected<QUuid, QString> AppState::createProject(const QString& name,
                                                      const std::optional<QString>& iconName)
{
    if (!passesLicence())
        return std::unexpected(QString());
    const Timestamp now = m_services.clock.now();
    const auto project = m_library.createProject(name, iconName, now);
    if (!project)
        return std::unexpected(project.error().text());
    FolderRecord trash;
    trash.id = FolderRecord::trashFolderID;
    trash.name = u"Trash"_s;
    trash.createdAt = now;
    {
        const auto controller = PersistenceController::open(
            ProjectLibraryController::projectDataDirectoryPath(project->rootPath),
            m_services.clock);
        if (!controller)
            return std::unexpected(controller.error().text());
        if (const auto result = (*controller)->save({{trash}, {}, std::nullopt}); !result)
            return std::unexpected(result.error().text());
    }
    refreshProjects();
    openProject(project->id, false);
    return project->id;
}

void AppState::presentProjectsBrowser()
{
    refreshProjects();
    if (m_currentProject)
        setSelectedProjectID(m_currentProject->id);
    else
        setSelectedProjectID(m_projects.isEmpty() ? std::nullopt
                                                  : std::optional(m_projects.first().id));
    setMode(RootPresentationMode::Projects);
}

void AppState::presentEditor()
{
    if (!m_currentProject)
        return;
    setSelectedProjectID(m_currentProject->id);
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

void AppState::setSelectedProjectID(const std::optional<QUuid>& id)
{
    if (m_selectedProjectID == id)
        return;
    m_selectedProjectID = id;
    emit selectedProjectIDChanged();
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
    m_history.clear();
    m_storedTitles.clear();
    m_lastSnapshotTimes.clear();
    m_selectedFolderID.reset();
    m_selectedNoteID.reset();
    m_folders = std::move(notebook.folders);
    m_notes = std::move(notebook.notes);
    m_tags = std::move(notebook.tags);
    m_order = std::move(notebook.order);
    m_activeTagFilter.clear();
    emit notebookReset();
    emit historyFlagsChanged();
    if (workspaceState)
        restoreWorkspaceSelectionIfNeeded(*workspaceState, restoreLastNote);
    else if (restoreLastNote)
        restoreLastOpenedNoteIfNeeded();
}

void AppState::ensureTrashFolderExists()
{
    ensureTrashFolder(m_folders, m_services.clock.now());
}

void AppState::restoreWorkspaceSelectionIfNeeded(const ProjectWorkspaceState& state,
                                                 bool restoreLastNote)
{
    if (state.selectedNoteID && m_notes.contains(*state.selectedNoteID))
        openNote(*state.selectedNoteID);
    else if (state.selectedFolderID && m_folders.contains(*state.selectedFolderID))
        selectFolder(*state.selectedFolderID);
    else if (state.selectedProjectRoot)
        selectProjectRoot();
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
    if (note)
        openNote(*note);
}

void AppState::clearNotebookState()
{
    m_history.clear();
    m_folders.clear();
    m_notes.clear();
    m_order = {};
    m_tags = {};
    m_activeTagFilter.clear();
    m_storedTitles.clear();
    m_lastSnapshotTimes.clear();
    m_selectedFolderID.reset();
    m_selectedNoteID.reset();
    emit notebookReset();
    emit selectionChanged();
    emit historyFlagsChanged();
}

} // namespace orvane
