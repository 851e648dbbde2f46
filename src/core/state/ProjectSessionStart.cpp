// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// The part of ProjectSession that starts: what is shown first, and its store read meanwhile.
#include "core/state/ProjectQuestions.h"
#include "core/state/ProjectSession.h"
#include "core/state/SessionKeys.h"
#include "platform/Log.h"

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

QString text(const std::optional<QUuid>& id)
{
    return id ? uuidText(*id) : u"nil"_s;
}

StoreOpenError openError(const FileError& error)
{
    using Code = StoreOpenError::Code;
    auto code = Code::Unreadable;
    if (error.code == FileError::Code::NotFound)
        code = Code::Missing;
    else if (error.code == FileError::Code::NoAccess)
        code = Code::NoAccess;
    else if (error.code == FileError::Code::NoSpace)
        code = Code::NoSpace;
    return {code, error.path, error.detail, std::nullopt};
}

constexpr qsizetype listedAtFirst = 100;

// Notes that the Binder shows when the project opens, or some of them: what is below the root and
// the folders that stand open.
QList<Shared<NoteRecord>> listedFirst(const Notebook& notebook, const QUuid& root)
{
    QList<QUuid> containers = notebook.order.expandedFolderIDs.values();
    containers.append(root);
    QList<Shared<NoteRecord>> listed;
    for (const QUuid& container : containers) {
        const QList<QUuid> ids = notebook.order.noteOrderByFolder.value(container);
        for (const QUuid& id : ids.first(std::min(ids.size(), listedAtFirst))) {
            if (const auto* note = notebook.notes.find(id))
                listed.append(*note);
        }
    }
    return listed.first(std::min(listed.size(), 3 * listedAtFirst));
}

} // namespace

void ProjectSession::prepareBootstrap()
{
    m_library.removeUnfinishedProjects(m_services.clock.now());
    migrateLegacyNotebookIfNeeded();
    refreshProjects();
    qCInfo(projectBootstrapLog,
           "bootstrap projectsDirectory=%ls manifestCount=%lld loadedProjects=%lld",
           qUtf16Printable(m_library.projectsDirectoryPath()), qlonglong(m_library.manifestCount()),
           qlonglong(m_projects.size()));

    const UserDefaults& defaults = m_services.defaults;
    m_bootstrapDecision =
        decideBootstrap(m_projects, SessionKeys::welcomeDismissed.read(defaults),
                        SessionKeys::readLaunchDestination(defaults),
                        SessionKeys::readUuid(defaults, SessionKeys::lastOpenedProjectID));
    const auto* saved = std::get_if<OpenSavedProject>(&*m_bootstrapDecision);
    if (const OrvaneProjectRecord* found = saved ? project(saved->projectID) : nullptr) {
        readProjectAhead(*found);
        setMode(RootPresentationMode::Editor);
    }
}

void ProjectSession::bootstrapProjects()
{
    if (!m_bootstrapDecision)
        prepareBootstrap();
    const BootstrapDecision decision = *std::exchange(m_bootstrapDecision, std::nullopt);
    if (const auto* saved = std::get_if<OpenSavedProject>(&decision)) {
        qCInfo(projectBootstrapLog, "bootstrap opening saved projectID=%ls restoreLastNote=true",
               qUtf16Printable(uuidText(saved->projectID)));
        if (!showBeginning(saved->projectID))
            openProject(saved->projectID, true);
        return;
    }
    const auto& browser = std::get<ShowBrowser>(decision);
    switch (browser.reason) {
    case ShowBrowser::Reason::NoProjects:
        qCInfo(projectBootstrapLog, "bootstrap loaded no projects; showing Projects browser");
        m_open.clear();
        break;
    case ShowBrowser::Reason::FirstLaunchWelcome:
        qCInfo(projectBootstrapLog, "bootstrap showing Projects browser for first-launch welcome");
        break;
    case ShowBrowser::Reason::Ordinary:
        qCInfo(projectBootstrapLog, "bootstrap showing Projects browser selectedProjectID=%ls",
               qUtf16Printable(text(browser.selectedProjectID)));
        break;
    }
    const auto* selected =
        browser.selectedProjectID ? project(*browser.selectedProjectID) : nullptr;
    m_selection.selectProjectFolder(selected ? std::optional(selected->rootPath) : std::nullopt);
    setMode(RootPresentationMode::Projects);
}

void ProjectSession::migrateLegacyNotebookIfNeeded()
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
    const auto project =
        m_library.createProject(u"OrvaneWorkspace Library"_s, u"sf:archivebox.fill"_s,
                                m_services.clock.now(), [&](const QString& dataFolder) {
                                    return storeSnapshotIn(dataFolder, snapshot, m_services.clock);
                                });
    if (!project)
        return failed(project.error().text());
    qCInfo(projectBootstrapLog, "migrated legacy notebook into projectID=%ls",
           qUtf16Printable(uuidText(project->id)));
}

ProjectSession::OpenedProject ProjectSession::readProject(const OrvaneProjectRecord& project,
                                                          const Clock& clock, BeginningWish wish,
                                                          const TakeBeginning& take)
{
    auto held = FolderHandle::open(project.rootPath);
    if (!held)
        return {nullptr, std::unexpected(openError(held.error())), {}};
    const auto failed = [&](const FileError& error) -> OpenedProject {
        StoreOpenError told = openError(error);
        told.path = (*held)->named(told.path);
        told.detail = (*held)->named(told.detail);
        return {*held, std::unexpected(std::move(told)), {}};
    };
    const QString dataFolder = ProjectLibraryController::projectDataDirectoryPath((*held)->path());
    PersistenceController::Options options;
    if (ProjectLibraryController::hadStore(project, (*held)->path()))
        options.ifMissing = PersistenceController::IfMissing::Refuse;
    else if (const auto made = makeFolder(dataFolder); !made)
        return failed(made.error());
    auto data = FolderHandle::open(dataFolder);
    if (!data)
        return failed(data.error());
    options.folder = *std::move(data);
    if (take) {
        wish.take = [&](const std::optional<NotebookSnapshot>& some) {
            take(some ? std::optional(Beginning{*held, notebookOfSome(*some, clock.now())})
                      : std::nullopt);
        };
        options.beginning = &wish;
    }
    OpenedProject opened{*held, PersistenceController::open(dataFolder, clock, options), {}};
    if (opened.store && !(*opened.store)->persistentStoreRecovery()) {
        opened.notebook = notebookOf((*opened.store)->load(), project.id, clock.now());
        (*opened.store)->readBeginnings(listedFirst(opened.notebook, project.id), listedUnits);
    }
    return opened;
}

void ProjectSession::readProjectAhead(const OrvaneProjectRecord& project)
{
    // What waits behind a protection marker is not touched.
    if (PersistentStoreRecovery::read(
            ProjectLibraryController::projectDataDirectoryPath(project.rootPath)))
        return;
    std::promise<std::optional<Beginning>> beginning;
    auto awaited = beginning.get_future();
    auto read = [this, project, &clock = m_services.clock, wish = beginningOf(project),
                 beginning = std::move(beginning)]() mutable {
        bool isTold = false;
        bool isShown = false;
        OpenedProject opened =
            readProject(project, clock, wish, [&](std::optional<Beginning> some) {
                isTold = true;
                isShown = some.has_value();
                beginning.set_value(std::move(some));
            });
        if (!isTold)
            beginning.set_value(std::nullopt);
        if (isShown)
            QMetaObject::invokeMethod(this, &ProjectSession::finishOpening, Qt::QueuedConnection);
        return opened;
    };
    m_openingProject = OpeningProject{project.rootPath, std::move(awaited),
                                      std::async(std::launch::async, std::move(read))};
}

BeginningWish ProjectSession::beginningOf(const OrvaneProjectRecord& project) const
{
    BeginningWish wish{project.id, std::nullopt, std::nullopt, {}};
    const UserDefaults& defaults = m_services.defaults;
    if (const auto state = ProjectWorkspaceStateStore::load(project.rootPath)) {
        wish.note = state->selectedNoteID;
        wish.folder = state->selectedFolderID;
    } else if (SessionKeys::readLaunchDestination(defaults) ==
               OrvaneWorkspaceLaunchDestination::LastNote) {
        wish.note = SessionKeys::readUuid(defaults, SessionKeys::lastOpenedNoteID(project.id));
    }
    return wish;
}

bool ProjectSession::showBeginning(const QUuid& projectID)
{
    const OrvaneProjectRecord* listed = project(projectID);
    const KnownProject* known = m_known.opened(projectID);
    if (!m_openingProject || !listed || listed->rootPath != m_openingProject->rootPath ||
        (known && !isSameFolder(known->folder, listed->rootPath)))
        return false;
    auto beginning = m_openingProject->beginning.get();
    if (!beginning)
        return false;
    m_currentProject = *listed;
    m_folder = std::move(beginning->folder);
    m_selection.setProject(projectID, listed->rootPath);
    m_selection.selectProjectFolder(listed->rootPath);
    m_workspaceState = ProjectWorkspaceStateStore::load(projectAccessPath());
    emit currentProjectChanged();
    m_open.show(std::move(beginning->notebook), true, m_workspaceState);
    setMode(RootPresentationMode::Editor);
    m_isShownAhead = true;
    return true;
}

void ProjectSession::finishOpening()
{
    if (!std::exchange(m_isShownAhead, false))
        return;
    // Until it is opened there is no project: what goes wrong is told as at any other start.
    const QString folder = std::exchange(m_currentProject, std::nullopt)->rootPath;
    openFolder(folder, true, Showing::TheRest);
    if (m_controller)
        return;
    emit projectAboutToClose();
    m_folder.reset();
    m_selection.setProject(std::nullopt, {});
    m_workspaceState.reset();
    m_open.clear();
    emit currentProjectChanged();
}

ProjectSession::OpenedProject ProjectSession::takeProject(const OrvaneProjectRecord& project)
{
    if (auto ahead = std::exchange(m_openingProject, std::nullopt)) {
        auto opened = ahead->result.get();
        if (ahead->rootPath == project.rootPath)
            return opened;
    }
    return readProject(project, m_services.clock, {}, {});
}

std::optional<OrvaneProjectRecord> ProjectSession::presentProject(const QString& folder)
{
    auto manifest = ProjectLibraryController::readManifest(folder);
    if (!manifest) {
        m_openingProject.reset();
        return std::nullopt;
    }
    return OrvaneProjectRecord{*std::move(manifest), folder};
}

std::optional<ProjectSession::Identity>
ProjectSession::askWhoItIs(const OrvaneProjectRecord& project)
{
    using namespace ProjectQuestions;
    const KnownProject* known = m_known.opened(project.id);
    if (!known || isSameFolder(known->folder, project.rootPath) ||
        !holdsProject(known->folder, project.id))
        return Identity::Unchanged;
    const auto claimant = [&](const QString& folder) {
        const bool isOpen = m_currentProject && isSameFolder(m_currentProject->rootPath, folder);
        const auto* listed = projectAt(folder);
        Claimant claimant{folder, std::nullopt, listed ? listed->updatedAt : project.updatedAt};
        if (isOpen)
            claimant.figures = NotebookFigures::of(snapshotOf(m_open.notebook()));
        else if (const auto copy = PersistenceController::readOnlyCopy(
                     storePath(ProjectLibraryController::projectDataDirectoryPath(folder))))
            claimant.figures = NotebookFigures::of(*copy);
        return claimant;
    };
    m_openingProject.reset(); // its lock stands in the way of nobody while the person thinks
    const Answer answer = m_services.questions.ask(
        copyOrMoved(claimant(project.rootPath), claimant(QString(known->folder)),
                    m_services.folders.home, m_services.clock.now()));
    switch (answer.button) {
    case ItIsACopy:
        return Identity::NewForCopy;
    case ItWasMoved:
        return Identity::Unchanged;
    default:
        return std::nullopt;
    }
}

} // namespace orvane
