// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// The part of AppState that starts: what is shown first, and its store read meanwhile.
#include "core/AppState.h"
#include "core/SessionKeys.h"
#include "platform/Log.h"

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

QString text(const std::optional<QUuid>& id)
{
    return id ? uuidText(*id) : u"nil"_s;
}

} // namespace

void AppState::prepareBootstrap()
{
    migrateLegacyNotebookIfNeeded();
    refreshProjects();
    qCInfo(projectBootstrapLog,
           "bootstrap projectsDirectory=%ls manifestCount=%lld loadedProjects=%lld",
           qUtf16Printable(m_library.projectsDirectoryPath()), qlonglong(m_library.manifestCount()),
           qlonglong(m_projects.size()));

    const UserDefaults& defaults = m_services.defaults;
    m_bootstrapDecision =
        decideBootstrap(m_projects, SessionKeys::welcomeDismissed.read(defaults),
                        launchDestination(SessionKeys::launchDestination.read(defaults)),
                        SessionKeys::readUuid(defaults, SessionKeys::lastOpenedProjectID));
    const auto* saved = std::get_if<OpenSavedProject>(&*m_bootstrapDecision);
    if (const OrvaneProjectRecord* found = saved ? project(saved->projectID) : nullptr) {
        readProjectAhead(ProjectLibraryController::projectDataDirectoryPath(found->rootPath),
                         found->id);
        setMode(RootPresentationMode::Editor);
    }
}

void AppState::bootstrapProjects()
{
    if (!m_bootstrapDecision)
        prepareBootstrap();
    const BootstrapDecision decision = *std::exchange(m_bootstrapDecision, std::nullopt);
    if (const auto* saved = std::get_if<OpenSavedProject>(&decision)) {
        qCInfo(projectBootstrapLog, "bootstrap opening saved projectID=%ls restoreLastNote=true",
               qUtf16Printable(uuidText(saved->projectID)));
        openProject(saved->projectID, true);
        return;
    }
    const auto& browser = std::get<ShowBrowser>(decision);
    switch (browser.reason) {
    case ShowBrowser::Reason::NoProjects:
        qCInfo(projectBootstrapLog, "bootstrap loaded no projects; showing Projects browser");
        clearNotebookState();
        break;
    case ShowBrowser::Reason::FirstLaunchWelcome:
        qCInfo(projectBootstrapLog, "bootstrap showing Projects browser for first-launch welcome");
        break;
    case ShowBrowser::Reason::Ordinary:
        qCInfo(projectBootstrapLog, "bootstrap showing Projects browser selectedProjectID=%ls",
               qUtf16Printable(text(browser.selectedProjectID)));
        break;
    }
    setSelectedProjectID(browser.selectedProjectID);
    setMode(RootPresentationMode::Projects);
}

void AppState::migrateLegacyNotebookIfNeeded()
{
    const QString& support = m_services.folders.applicationSupport;
    (void)m_library.ensureProjectsDirectoryExists();
    if (!m_library.projectRootPathsWithManifests().isEmpty() ||
        !PersistenceController::hasLegacyNotebook(support))
        return;
    const auto failed = [](const QString& why) {
        qCInfo(projectBootstrapLog, "legacy project migration error: %ls", qUtf16Printable(why));
    };
    auto legacy = PersistenceController::legacyShared(support, m_services.clock);
    if (!legacy)
        return failed(legacy.error().text());
    const NotebookSnapshot snapshot = (*legacy)->load();
    if (snapshot.folders.isEmpty() && snapshot.notes.isEmpty())
        return;
    const auto project = m_library.createProject(u"OrvaneWorkspace Library"_s,
                                                 u"sf:archivebox.fill"_s, m_services.clock.now());
    if (!project)
        return failed(project.error().text());
    const auto controller = PersistenceController::open(
        ProjectLibraryController::projectDataDirectoryPath(project->rootPath), m_services.clock);
    if (!controller)
        return failed(controller.error().text());
    if (const auto result = (*controller)->save(snapshot); !result)
        return failed(result.error().text());
    qCInfo(projectBootstrapLog, "migrated legacy notebook into projectID=%ls",
           qUtf16Printable(uuidText(project->id)));
}

AppState::OpenedProject AppState::readProject(const QString& dataFolder, const QUuid& id,
                                              const Clock& clock)
{
    OpenedProject opened{PersistenceController::open(dataFolder, clock), {}};
    if (opened.store && !(*opened.store)->persistentStoreRecovery())
        opened.notebook = notebookOf((*opened.store)->load(), id, clock.now());
    return opened;
}

void AppState::readProjectAhead(const QString& dataFolder, const QUuid& id)
{
    // What waits behind a protection marker is not touched.
    if (PersistentStoreRecovery::read(dataFolder))
        return;
    const auto read = [dataFolder, id, &clock = m_services.clock] {
        return readProject(dataFolder, id, clock);
    };
    m_openingProject = OpeningProject{dataFolder, std::async(std::launch::async, read)};
}

AppState::OpenedProject AppState::takeProject(const QString& dataFolder, const QUuid& id)
{
    if (auto ahead = std::exchange(m_openingProject, std::nullopt)) {
        auto opened = ahead->result.get();
        if (ahead->dataFolder == dataFolder)
            return opened;
    }
    return readProject(dataFolder, id, m_services.clock);
}

} // namespace orvane
