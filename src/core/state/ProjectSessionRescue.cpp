// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// The part of ProjectSession that keeps words elsewhere when they can't be saved, and puts them
// back.
#include "core/notebook/NotebookEdit.h"
#include "core/state/ProjectSession.h"
#include "core/state/SessionKeys.h"

#include <QCoreApplication>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

struct Words {
    Q_DECLARE_TR_FUNCTIONS(ProjectSessionRescue)
};

bool isAmong(const QList<Shared<FolderRecord>>& folders, const QUuid& id)
{
    return std::ranges::any_of(folders, [&](const auto& folder) { return folder->id == id; });
}

} // namespace

QStringList ProjectSession::rescueFolders() const
{
    return {m_library.projectsDirectoryPath() + "/Rescued"_L1,
            m_services.folders.state + "/Rescued"_L1};
}

QList<Shared<NoteRecord>> ProjectSession::notesToRescue()
{
    using Kind = ProjectTrouble::Kind;
    if (!m_rescue && m_trouble && m_trouble->kind == Kind::FolderGone)
        return m_open.notebook().notes.records(); // its files may live on in this program alone
    QList<Shared<NoteRecord>> notes = unsavedNotes();
    if (m_rescue || !m_trouble || m_trouble->kind != Kind::StoreReplaced)
        return notes;
    // What this run has saved went into the file that is not at its place any more.
    const auto sides = storeSides();
    if (!sides)
        return m_open.notebook().notes.records();
    notes.clear();
    for (const StoreSides::Difference& each : sides->differences()) {
        if (each.mine)
            notes.append(*each.mine);
    }
    return notes;
}

void ProjectSession::rescueUnsaved()
{
    if (!m_controller || !m_currentProject)
        return;
    const QList<Shared<NoteRecord>> notes = notesToRescue();
    const QList<Shared<FolderRecord>> folders = m_rescue || !m_trouble
                                                    ? m_controller->unsavedFolders()
                                                    : m_open.notebook().folders.records();
    if (notes.isEmpty() && m_controller->unsavedFolders().isEmpty())
        return;
    const auto stored = [this](const QUuid& id) -> std::optional<Timestamp> {
        const auto* note = m_controller->storedNote(id);
        return note ? std::optional((*note)->updatedAt) : std::nullopt;
    };
    const auto keep = [&] {
        return m_rescue->keep(notes, folders, stored);
    };
    if (!m_rescue || !keep()) {
        const RescueOrigin origin{m_currentProject->id, m_currentProject->titleForDisplay(),
                                  m_currentProject->rootPath, m_services.clock.now()};
        for (const QString& parent : rescueFolders()) {
            auto made = RescueFile::createIn(parent, origin, m_services.clock);
            if (made)
                m_rescue = std::move(*made);
            const auto kept = made ? keep() : std::unexpected(made.error());
            if (kept)
                break;
            qWarning().noquote() << "Words can't be kept here:" << kept.error().text();
            m_rescue.reset();
        }
    }
    const QString folder = m_rescue ? m_rescue->folder() : QString();
    if (m_trouble && m_trouble->rescueFolder != folder) {
        m_trouble->rescueFolder = folder;
        emit projectTroubleChanged();
    }
}

void ProjectSession::rescueNow()
{
    if (!hasUnsaved() || m_leavesUnsaved ||
        (m_controller->saveAgain() && m_open.refusedContents().isEmpty()))
        return;
    noteUnsaved();
    rescueUnsaved();
}

void ProjectSession::finishRescue()
{
    if (!m_rescue)
        return;
    const QString folder = m_rescue->folder();
    m_rescue.reset();
    if (const auto moved = m_services.trash.moveToTrash(folder); !moved)
        qWarning().noquote() << moved.error().text();
    emit rescuesChanged();
}

QList<FoundRescue> ProjectSession::rescues() const
{
    QStringList parents = rescueFolders();
    parents += SessionKeys::rescueFolders(m_services.defaults);
    parents.removeDuplicates();
    QList<FoundRescue> found = RescueFile::find(parents);
    if (m_rescue)
        found.removeIf([&](const FoundRescue& each) { return each.folder == m_rescue->folder(); });
    return found;
}

std::expected<void, QString> ProjectSession::putInPlace(const FoundRescue& rescue)
{
    if (!m_currentProject || !passesEditGuard())
        return std::unexpected(Words::tr("The project can't be changed now."));
    const auto content = RescueFile::read(rescue.folder, m_services.clock);
    if (!content)
        return std::unexpected(content.error().text());
    if (m_selection.selectedNoteID())
        m_open.writeDraft(*m_selection.selectedNoteID());
    NotebookEditor editor(m_open.notebook(), m_currentProject->id);
    for (const Shared<FolderRecord>& folder : content->folders) {
        if (editor.folder(folder->id))
            continue;
        editor.put(folder);
        const auto& parent = folder->parentFolderID;
        if (!folder->isTrash())
            editor
                .changeList(OrderListID::foldersOf(
                    parent && (editor.folder(*parent) || isAmong(content->folders, *parent))
                        ? parent
                        : std::nullopt))
                .append(folder->id);
    }
    for (const Shared<NoteRecord>& note : content->notes)
        placeRescued(editor, note, rescue);
    (void)m_open.place(editor.edit());
    if (m_saveFailure)
        return std::unexpected(Words::tr("The words can't be saved now. They are kept where they "
                                         "are."));
    if (const auto moved = m_services.trash.moveToTrash(rescue.folder); !moved)
        return std::unexpected(moved.error().text());
    emit rescuesChanged();
    return {};
}

std::expected<void, QString> ProjectSession::makeProjectOf(const FoundRescue& rescue)
{
    if (!passesLicence())
        return std::unexpected(QString());
    const auto content = RescueFile::read(rescue.folder, m_services.clock);
    if (!content)
        return std::unexpected(content.error().text());
    const Timestamp now = m_services.clock.now();
    OrvaneProjectManifest manifest;
    manifest.id = QUuid::createUuid();
    manifest.name = Words::tr("%1 (rescued)", "title of a note").arg(rescue.origin.projectTitle);
    manifest.createdAt = now;
    manifest.updatedAt = now;
    Notebook notebook = notebookOf(*content, rescue.origin.projectID, now);
    giveOwnRoot(notebook, rescue.origin.projectID, manifest.id);
    const auto made = ProjectLibraryController::createProjectAt(
        m_library.uniqueProjectRootPath(manifest.name), manifest, [&](const QString& dataFolder) {
            return storeSnapshotIn(dataFolder, snapshotOf(notebook), m_services.clock);
        });
    if (!made)
        return std::unexpected(made.error().text());
    if (const auto moved = m_services.trash.moveToTrash(rescue.folder); !moved)
        qWarning().noquote() << moved.error().text();
    refreshProjects();
    emit rescuesChanged();
    openProjectAt(made->rootPath, false);
    return {};
}

void ProjectSession::placeRescued(NotebookEditor& editor, const Shared<NoteRecord>& note,
                                  const FoundRescue& rescue)
{
    const auto list = [&](const Shared<NoteRecord>& each) {
        editor.put(each);
        editor.changeList(OrderListID::notesOf(editor.containerOf(*each))).append(each->id);
    };
    const auto* found = editor.note(note->id);
    if (!found)
        return list(note);
    if (**found == *note)
        return;
    const auto known = std::ranges::find(rescue.notes, note->id, &RescuedNote::id);
    const bool isUnchanged =
        known != rescue.notes.end() && known->storedUpdatedAt == (*found)->updatedAt;
    if (isUnchanged && m_open.keepVersion(note->id, u"Before Rescue"_s)) {
        const QUuid place = (*found)->folderID; // it may have been moved since
        editor.put(note.with([&](NoteRecord& each) { each.folderID = place; }));
        return;
    }
    NoteRecord beside = *note;
    beside.id = QUuid::createUuid();
    beside.title = Words::tr("%1 (rescued)", "title of a note").arg(note->titleForList());
    beside.titleRTF.reset();
    list(beside);
}

} // namespace orvane
