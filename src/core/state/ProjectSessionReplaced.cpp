// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// The part of ProjectSession that decides between two stores: the open one, and the one that
// another program has put in its place; and that copies a project whole.
#include "core/records/RecordFields.h"
#include "core/records/Wording.h"
#include "core/state/ProjectFigures.h"
#include "core/state/ProjectSession.h"
#include "core/store/StoreReader.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

struct Words {
    Q_DECLARE_TR_FUNCTIONS(ProjectSessionReplaced)
};

FileError fileError(const StoreOpenError& error)
{
    return {FileError::Code::Other, error.path, error.detail};
}

FileError fileError(const QString& path, const StoreError& error)
{
    return {FileError::Code::Other, path, error.text()};
}

bool isReadable(const NoteRecord& note)
{
    bool isReadable = !note.titleRTF || note.titleRTF->read();
    forEachBytes(note, [&](int, const Blob* bytes) {
        isReadable = isReadable && (!bytes || bytes->read());
    });
    holdImages(note);
    return isReadable;
}

// A project in this folder lies at a root of its own.
std::expected<void, FileError> giveStoreOwnRoot(const QString& dataFolder, const QUuid& former,
                                                const QUuid& own, const Clock& clock)
{
    auto store = PersistenceController::open(dataFolder, clock);
    if (!store)
        return std::unexpected(fileError(store.error()));
    if (const auto& recovery = (*store)->persistentStoreRecovery())
        return std::unexpected(
            FileError{FileError::Code::Other, dataFolder, recovery->errorDescription});
    Notebook notebook = notebookOf((*store)->load(), former, clock.now());
    giveOwnRoot(notebook, former, own);
    if (const auto saved = (*store)->save(snapshotOf(notebook)); !saved)
        return std::unexpected(fileError(dataFolder, saved.error()));
    return {};
}

std::expected<void, FileError> copyFile(const QString& from, const QString& to)
{
    QFile source(from);
    if (!source.copy(to))
        return std::unexpected(FileError{FileError::Code::Other, from, source.errorString()});
    return {};
}

} // namespace

std::expected<void, FileError> storeSnapshotIn(const QString& dataFolder,
                                               const NotebookSnapshot& snapshot, const Clock& clock)
{
    const auto store = PersistenceController::open(dataFolder, clock);
    if (!store)
        return std::unexpected(fileError(store.error()));
    if (const auto saved = (*store)->save(snapshot); !saved)
        return std::unexpected(fileError(dataFolder, saved.error()));
    return {};
}

QString ProjectSession::openStorePath() const
{
    return storePath(ProjectLibraryController::projectDataDirectoryPath(projectAccessPath()));
}

std::expected<StoreSides, StoreOpenError> ProjectSession::storeSides()
{
    auto theirs = PersistenceController::readOnlyCopy(openStorePath());
    if (!theirs)
        return std::unexpected(theirs.error());
    return StoreSides{snapshotOf(m_open.notebook()), *std::move(theirs)};
}

std::expected<QString, FileError> ProjectSession::setTheirStoreAside()
{
    const Timestamp now = m_services.clock.now();
    const QString theirs = openStorePath();
    const QUuid former = m_currentProject->id;
    const auto copyAll = [&](const QString& dataFolder) -> std::expected<void, FileError> {
        const QStringList from = persistentStoreFiles(theirs);
        const QStringList to = persistentStoreFiles(storePath(dataFolder));
        for (qsizetype i = 0; i < 2; ++i) { // the third is made anew
            if (QFileInfo::exists(from.at(i))) {
                if (auto copied = copyFile(from.at(i), to.at(i)); !copied)
                    return copied;
            }
        }
        return {};
    };
    OrvaneProjectManifest manifest = *m_currentProject;
    manifest.id = QUuid::createUuid();
    manifest.name = Words::tr("%1 (theirs, %2)", "name of a project, day")
                        .arg(m_currentProject->titleForDisplay(), dayOfMonthInWords(now));
    manifest.titleRTF.reset();
    const auto made = ProjectLibraryController::createProjectAt(
        m_library.uniqueProjectRootPath(manifest.name), manifest,
        [&](const QString& dataFolder) -> std::expected<void, FileError> {
            if (auto copied = copyAll(dataFolder); !copied)
                return copied;
            return giveStoreOwnRoot(dataFolder, former, manifest.id, m_services.clock);
        });
    if (!made)
        return std::unexpected(made.error());
    return made->rootPath;
}

std::expected<void, QString> ProjectSession::keepMyStore()
{
    if (!m_controller || !m_trouble)
        return std::unexpected(Words::tr("There is nothing to decide any more."));
    emit projectMayBeLeft();
    const QString place = openStorePath();
    const QString mine = place + ".mine"_L1;
    QFile::remove(mine);
    if (const auto copied = m_controller->writeCopy(mine); !copied)
        return std::unexpected(copied.error().text());
    // Their file is copied first and removed last: at each moment both are on the disk.
    if (const auto aside = setTheirStoreAside(); !aside)
        return std::unexpected(aside.error().text());

    QList<Shared<NoteRecord>> notes = unsavedNotes();
    notes.removeIf([](const Shared<NoteRecord>& note) { return !isReadable(*note); });
    const QList<Shared<FolderRecord>> folders = m_controller->unsavedFolders();
    const BinderOrder order = m_open.notebook().order;
    const auto selected = m_selection.selectedNoteID();
    m_controller->discardUnsaved();
    m_figures.reset();
    m_controller.reset();
    for (const QString& file : persistentStoreFiles(place))
        QFile::remove(file);
    if (!QFile::rename(mine, place))
        return std::unexpected(Words::tr("Your store is whole, and stands at “%1”.").arg(mine));
    (void)syncFolder(QFileInfo(place).absolutePath());
    return reopenWith(folders, notes, order, selected);
}

std::expected<void, QString> ProjectSession::reopenWith(const QList<Shared<FolderRecord>>& folders,
                                                        const QList<Shared<NoteRecord>>& notes,
                                                        const BinderOrder& order,
                                                        const std::optional<QUuid>& selected)
{
    auto [held, controller, notebook] = readProject(*m_currentProject, m_services.clock, {}, {});
    if (!controller) {
        const auto problem =
            ProjectOpenProblem::of(m_currentProject->titleForDisplay(), controller.error());
        closeOpenProject();
        presentProjectsBrowser();
        return std::unexpected(problem.message);
    }
    m_folder = std::move(held);
    m_controller = *std::move(controller);
    for (const Shared<FolderRecord>& folder : folders) {
        if (!notebook.folders.replace(folder))
            notebook.folders.append(folder);
    }
    for (const Shared<NoteRecord>& note : notes) {
        if (!notebook.notes.replace(note))
            notebook.notes.append(note);
    }
    notebook.order = BinderDisplayOrdering::reconciled(order, notebook.folders, notebook.notes,
                                                       m_currentProject->id);
    notebook.tags.rebuild(notebook.folders, notebook.notes);
    m_open.show(std::move(notebook), false, std::nullopt);
    if (selected && m_open.notebook().notes.contains(*selected))
        m_open.openNote(*selected);
    m_open.storeAll();
    refreshProjects();
    scheduleCheck();
    return {};
}

std::expected<void, QString> ProjectSession::takeTheirStore()
{
    if (!m_controller || !m_trouble)
        return std::unexpected(Words::tr("There is nothing to decide any more."));
    emit projectMayBeLeft();
    const auto sides = storeSides();
    if (!sides)
        return std::unexpected(sides.error().detail);
    QList<Shared<NoteRecord>> mine;
    for (const StoreSides::Difference& each : sides->differences()) {
        if (each.mine)
            mine.append(*each.mine);
    }
    if (const auto kept = keepBeside(mine); !kept)
        return std::unexpected(kept.error().text());
    for (const Shared<NoteRecord>& note : mine)
        (void)m_open.keepVersion(note->id, u"Before Taking Theirs"_s);
    m_controller->discardUnsaved();
    const QString folder = m_currentProject->rootPath;
    const auto selected = m_selection.selectedNoteID();
    finishRescue(); // the words are in the file that was just written
    closeOpenProject();
    refreshProjects();
    openProjectAt(folder, false);
    if (selected && m_open.notebook().notes.contains(*selected))
        m_open.openNote(*selected);
    return {};
}

std::expected<void, FileError> ProjectSession::keepBeside(const QList<Shared<NoteRecord>>& notes)
{
    if (notes.isEmpty())
        return {};
    RescueOrigin origin{m_currentProject->id, m_currentProject->titleForDisplay(),
                        m_currentProject->rootPath, m_services.clock.now()};
    origin.isOffered = false;
    std::expected<void, FileError> kept;
    for (const QString& parent : rescueFolders()) {
        auto rescue = RescueFile::createIn(parent, origin, m_services.clock);
        kept = rescue ? (*rescue)->keep(notes, m_open.notebook().folders.records(),
                                        [](const QUuid&) { return std::nullopt; })
                      : std::unexpected(rescue.error());
        if (kept)
            return kept;
    }
    return kept;
}

std::expected<int, QString> ProjectSession::saveCopyOfProject(const QString& path)
{
    if (!m_controller || !m_currentProject)
        return std::unexpected(Words::tr("No project is open."));
    emit projectMayBeLeft();
    NotebookSnapshot snapshot = snapshotOf(m_open.notebook());
    const qsizetype all = snapshot.notes.size();
    snapshot.notes.removeIf([](const Shared<NoteRecord>& note) { return !isReadable(*note); });
    OrvaneProjectManifest manifest = *m_currentProject;
    manifest.id = QUuid::createUuid();
    Notebook notebook = notebookOf(snapshot, m_currentProject->id, m_services.clock.now());
    giveOwnRoot(notebook, m_currentProject->id, manifest.id);
    const auto made =
        ProjectLibraryController::createProjectAt(path, manifest, [&](const QString& dataFolder) {
            return storeSnapshotIn(dataFolder, snapshotOf(notebook), m_services.clock);
        });
    if (!made)
        return std::unexpected(made.error().text());
    refreshProjects();
    return int(all - snapshot.notes.size());
}

} // namespace orvane
