// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// The part of ProjectSession that lists the projects and changes them from outside.
#include "core/state/ProjectFigures.h"
#include "core/state/ProjectSession.h"
#include "core/state/SessionKeys.h"
#include "platform/Log.h"

#include <QCoreApplication>

namespace orvane {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

struct Words {
    Q_DECLARE_TR_FUNCTIONS(ProjectSessionProjects)
};

// A project's date of change moves with every save; its manifest follows at this distance, and at
// once when the project closes.
constexpr auto touchDelay = 2s;
constexpr qsizetype openHistoryLength = 20;
// A hundredth of a second, and what an end may wait for.
constexpr qsizetype bytesCountedAtOnce = 256 * 1024;
constexpr qsizetype bytesCountedAtAnEnd = 4 * 1024 * 1024;

} // namespace

const OrvaneProjectRecord* ProjectSession::projectAt(const QString& folder) const
{
    const auto it = std::ranges::find(m_projects, folder, &OrvaneProjectRecord::rootPath);
    return it == m_projects.end() ? nullptr : &*it;
}

const OrvaneProjectRecord* ProjectSession::project(const QUuid& id) const
{
    const KnownProject* known = m_known.opened(id);
    if (m_currentProject && m_currentProject->id == id) {
        if (const auto* open = projectAt(m_currentProject->rootPath))
            return open;
    } else if (const auto* opened = known ? projectAt(known->folder) : nullptr;
               opened && opened->id == id) {
        return opened;
    }
    const auto it = std::ranges::find(m_projects, id, &OrvaneProjectRecord::id);
    return it == m_projects.end() ? nullptr : &*it;
}

std::optional<QUuid> ProjectSession::selectedProjectID() const
{
    const auto* selected = m_selection.selectedProjectFolder()
                               ? projectAt(*m_selection.selectedProjectFolder())
                               : nullptr;
    return selected ? std::optional(selected->id) : std::nullopt;
}

void ProjectSession::refreshProjects()
{
    writePendingTouch();
    (void)m_library.ensureProjectsDirectoryExists();
    QList<OrvaneProjectRecord> projects = m_library.sortedProjects();
    qCDebug(projectBootstrapLog, "refreshProjects manifestCount=%lld loadedProjects=%lld",
            qlonglong(m_library.manifestCount()), qlonglong(projects.size()));
    const bool listDiffers = projects != m_projects;
    if (listDiffers || !m_missingProjects.isEmpty() || m_known.all().size() != projects.size()) {
        m_projects = std::move(projects);
        m_known.see(m_projects, m_services.clock.now());
        m_known.save(m_services.defaults);
        QList<KnownProject> missing = m_known.missing(m_projects);
        const bool missingDiffer = missing != m_missingProjects;
        m_missingProjects = std::move(missing);
        if (listDiffers || missingDiffer)
            emit projectsChanged();
    }
    if (m_selection.selectedProjectFolder() && !projectAt(*m_selection.selectedProjectFolder()))
        m_selection.selectProjectFolder(std::nullopt);
}

void ProjectSession::forgetProject(const QString& folder)
{
    m_known.forget(folder);
    m_known.save(m_services.defaults);
    m_missingProjects = m_known.missing(m_projects);
    emit projectsChanged();
}

QList<QUuid> ProjectSession::projectOpenHistoryIDs() const
{
    return SessionKeys::readUuids(m_services.defaults, SessionKeys::openProjectHistoryIDs);
}

void ProjectSession::markProjectAsOpened(const QUuid& id)
{
    QList<QUuid> history = projectOpenHistoryIDs();
    history.removeAll(id);
    history.prepend(id);
    history.resize(std::min(history.size(), openHistoryLength));
    SessionKeys::writeUuids(m_services.defaults, SessionKeys::openProjectHistoryIDs, history);
}

QList<OrvaneProjectRecord> ProjectSession::projectsByRecentOpen() const
{
    QHash<QUuid, qsizetype> places;
    const QList<QUuid> history = projectOpenHistoryIDs();
    for (qsizetype i = 0; i < history.size(); ++i)
        places.insert(history.at(i), i);
    QList<OrvaneProjectRecord> sorted = m_projects; // newest change first already
    // Of several folders with one id only the project itself was opened.
    const auto place = [&](const OrvaneProjectRecord& each) {
        const KnownProject* opened = m_known.opened(each.id);
        return !opened || opened->folder == each.rootPath ? places.value(each.id, openHistoryLength)
                                                          : openHistoryLength;
    };
    std::ranges::stable_sort(sorted, {}, place);
    return sorted;
}

void ProjectSession::updateProjectMetadata(const QString& folder, const QString& plainName,
                                           const std::optional<QByteArray>& titleRTF,
                                           const std::optional<QString>& iconName)
{
    finishOpening();
    if (!passesLicence())
        return;
    const OrvaneProjectRecord* found = projectAt(folder);
    if (!found)
        return;
    OrvaneProjectRecord changed = *found;
    changed.name = plainName.trimmed();
    if (changed.name.isEmpty())
        changed.name = QCoreApplication::translate("Project", "Untitled Project");
    changed.titleRTF = titleRTF;
    changed.iconName = iconName;
    changed.updatedAt = m_services.clock.now();
    writeProject(changed);
}

void ProjectSession::updateProjectCover(const QString& folder, const std::optional<QString>& color)
{
    finishOpening();
    if (!passesLicence())
        return;
    const OrvaneProjectRecord* found = projectAt(folder);
    if (!found || found->coverColor == color)
        return;
    OrvaneProjectRecord changed = *found;
    changed.coverColor = color;
    writeProject(changed);
}

void ProjectSession::writeProject(const OrvaneProjectRecord& changed)
{
    const bool isOpen = m_currentProject && m_currentProject->rootPath == changed.rootPath;
    const QString place = isOpen ? projectAccessPath() : changed.rootPath;
    if (const auto written = ProjectLibraryController::writeManifest(changed, place); !written) {
        qWarning().noquote() << "OrvaneWorkspace project manifest error:" << written.error().text();
        return;
    }
    if (isOpen) {
        m_currentProject = changed;
        emit currentProjectChanged();
    }
    refreshProjects();
}

void ProjectSession::updateProjectIcon(const QString& folder,
                                       const std::optional<QString>& iconName)
{
    if (const OrvaneProjectRecord* found = projectAt(folder))
        updateProjectMetadata(QString(folder), QString(found->name), found->titleRTF, iconName);
}

std::expected<void, QString> ProjectSession::moveProjectToTrash(const QString& folder)
{
    finishOpening();
    if (!passesLicence())
        return std::unexpected(QString());
    const OrvaneProjectRecord* found = projectAt(folder);
    if (!found)
        return {};
    const QString rootPath = found->rootPath;
    const QString title = found->titleForDisplay();
    if (m_currentProject && isSameFolder(m_currentProject->rootPath, rootPath)) {
        if (!mayLeaveProject())
            return std::unexpected(QString());
        closeOpenProject(); // its store is checkpointed into one file before its folder moves
        setMode(RootPresentationMode::Projects);
    }
    const auto moved = m_services.trash.moveToTrash(rootPath);
    if (moved)
        m_known.forget(rootPath);
    else
        qWarning().noquote() << "OrvaneWorkspace project trash error:" << moved.error().text();
    refreshProjects();
    if (!moved)
        return std::unexpected(
            Words::tr("“%1” stays where it is, and nothing in it was changed. The desktop's trash "
                      "did not take its folder.")
                .arg(title));
    return {};
}

void ProjectSession::touchCurrentProjectUpdatedAt()
{
    if (!m_currentProject)
        return;
    m_currentProject->updatedAt = m_services.clock.now();
    const auto it = std::find_if(m_projects.begin(), m_projects.end(), [&](const auto& each) {
        return each.rootPath == m_currentProject->rootPath;
    });
    if (it != m_projects.end()) {
        it->updatedAt = m_currentProject->updatedAt;
        if (it != m_projects.begin())
            sortProjects(m_projects);
    }
    if (!m_pendingTouch)
        m_pendingTouch = m_services.clock.after(touchDelay, [this] { writePendingTouch(); });
}

void ProjectSession::takeFigures(qsizetype bytesAtOnce)
{
    if (!m_controller || isReadOnly())
        return;
    if (!m_figures)
        m_figures = std::make_unique<ProjectFigures>(openStorePath(), [this] {
            if (!m_pendingTouch)
                m_pendingTouch = m_services.clock.after(0s, [this] { writePendingTouch(); });
        });
    const auto figures = m_figures->of(m_open.notebook(), bytesAtOnce);
    m_currentProject->noteCount = figures.notes;
    if (figures.words)
        m_currentProject->wordCount = figures.words; // else the last, until the count is through
    const auto it =
        std::ranges::find(m_projects, m_currentProject->rootPath, &OrvaneProjectRecord::rootPath);
    if (it != m_projects.end()) {
        it->noteCount = m_currentProject->noteCount;
        it->wordCount = m_currentProject->wordCount;
    }
}

void ProjectSession::writePendingTouch()
{
    if (!m_pendingTouch)
        return;
    m_pendingTouch.reset();
    if (!m_currentProject)
        return;
    takeFigures(m_isClosing ? bytesCountedAtAnEnd : bytesCountedAtOnce);
    if (const auto written =
            ProjectLibraryController::writeManifest(*m_currentProject, projectAccessPath());
        !written)
        qWarning().noquote() << "OrvaneWorkspace project touch error:" << written.error().text();
    emit projectsChanged();
}

} // namespace orvane
