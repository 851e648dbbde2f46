// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// The part of AppState that changes notes and folders and saves them.
#include "core/AppState.h"

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype longestDerivedTitle = 40;

QString titleFromBody(const QString& body)
{
    QString line = body.section(u'\n', 0, 0).left(longestDerivedTitle);
    if (!line.isEmpty() && line.back().isHighSurrogate())
        line.chop(1);
    return line;
}

} // namespace

const NoteRecord* AppState::note(const QUuid& id) const
{
    const auto* found = m_notes.find(id);
    return found ? &**found : nullptr;
}

const FolderRecord* AppState::folder(const QUuid& id) const
{
    const auto* found = m_folders.find(id);
    return found ? &**found : nullptr;
}

std::optional<QUuid> AppState::projectRootContainerID() const
{
    return m_currentProject ? std::optional(m_currentProject->id) : std::nullopt;
}

QList<BinderDisplayRow> AppState::visibleBinderRows() const
{
    return BinderDisplayOrdering::visibleRows(m_order, m_folders, m_notes,
                                              projectRootContainerID().value_or(QUuid()));
}

QList<Shared<NoteRecord>> AppState::orderedNotes(const QUuid& container) const
{
    return BinderDisplayOrdering::orderedNotes(m_order, m_notes, container);
}

std::optional<QUuid> AppState::containerForNewNote() const
{
    if (m_selectedFolderID && *m_selectedFolderID != FolderRecord::trashFolderID &&
        m_folders.contains(*m_selectedFolderID))
        return m_selectedFolderID;
    if (const auto root = projectRootContainerID())
        return root;
    for (const Shared<FolderRecord>& each : m_folders) {
        if (!each->isTrash())
            return each->id;
    }
    return std::nullopt;
}

std::optional<QUuid> AppState::createNote()
{
    return insertNewNote({});
}

std::optional<QUuid> AppState::createNote(const QString& body, const std::optional<Blob>& bodyRTF)
{
    NoteRecord note;
    note.title = titleFromBody(body);
    note.body = body;
    note.bodyRTF = bodyRTF;
    return insertNewNote(std::move(note));
}

std::optional<QUuid> AppState::createNoteWithTitle(const QString& title, NoteText body)
{
    NoteRecord note;
    note.title = title;
    note.body = std::move(body);
    return insertNewNote(std::move(note));
}

std::optional<QUuid> AppState::insertNewNote(NoteRecord note)
{
    if (!passesEditGuard())
        return std::nullopt;
    const auto container = containerForNewNote();
    if (!container)
        return std::nullopt;
    const QUuid id = QUuid::createUuid();
    note.id = id;
    note.folderID = *container;
    note.createdAt = m_services.clock.now();
    note.updatedAt = note.createdAt;
    m_tags.add(note);
    m_notes.append(std::move(note));
    m_order.noteOrderByFolder[*container].append(id);
    emit binderStructureChanged();
    selectNote(id);
    persist();
    return id;
}

std::optional<QUuid> AppState::createFolder(const QString& name)
{
    if (!passesEditGuard())
        return std::nullopt;
    const QString trimmed = name.trimmed();
    if (trimmed.isEmpty() || !m_currentProject)
        return std::nullopt;
    FolderRecord folder;
    folder.id = QUuid::createUuid();
    folder.name = trimmed;
    folder.createdAt = m_services.clock.now();
    // The Trash holds notes only.
    if (m_selectedFolderID && *m_selectedFolderID != FolderRecord::trashFolderID)
        folder.parentFolderID = m_selectedFolderID;
    const QUuid id = folder.id;
    const auto parent = folder.parentFolderID;
    m_folders.append(std::move(folder));
    if (parent) {
        m_order.childFolderOrder[*parent].append(id);
        m_order.expandedFolderIDs.insert(*parent);
    } else {
        m_order.rootFolderOrder.append(id);
    }
    emit binderStructureChanged();
    if (parent)
        emit folderExpansionChanged(*parent, true);
    setSelection(id, std::nullopt);
    setSelectedProject(m_currentProject->rootPath);
    persist();
    return id;
}

std::expected<void, NoteUpdateError> AppState::updateNote(const QUuid& id,
                                                          const NoteContent& content)
{
    if (!m_notes.contains(id))
        return std::unexpected(NoteUpdateError::Missing);
    if (!passesEditGuard()) {
        m_refusedContents.insert(id, content);
        return std::unexpected(NoteUpdateError::Refused);
    }
    m_refusedContents.remove(id);
    const auto* found = m_notes.find(id);
    // Before the title was typed, where it was; a record is shared rather than copied.
    Shared<NoteRecord> previous = *found;
    if (m_storedTitles.contains(id))
        previous = previous.with([&](NoteRecord& note) { note.title = m_storedTitles.take(id); });
    const Shared<NoteRecord> current = found->with([&](NoteRecord& note) {
        content.applyTo(note);
        note.updatedAt = m_services.clock.now();
    });
    replaceNote(current);
    captureVersionSnapshotIfNeeded(*previous, *current);
    persistNote(id);
    if (!m_controller || m_saveFailure)
        return std::unexpected(NoteUpdateError::NotStored);
    return {};
}

void AppState::applyLiveTitle(const QUuid& id, const QString& title)
{
    const auto* found = m_notes.find(id);
    if (!found || (*found)->title == title)
        return;
    if (!m_storedTitles.contains(id))
        m_storedTitles.insert(id, (*found)->title);
    replaceNote(found->with([&](NoteRecord& note) {
        note.title = title;
        note.titleRTF.reset(); // a rich title that no longer says the same
    }));
}

void AppState::toggleExpanded(const QUuid& folderID)
{
    if (!m_folders.contains(folderID))
        return;
    const bool expand = !m_order.expandedFolderIDs.contains(folderID);
    if (expand)
        m_order.expandedFolderIDs.insert(folderID);
    else
        m_order.expandedFolderIDs.remove(folderID);
    emit folderExpansionChanged(folderID, expand);
    persistLayout();
}

// --- Saving --------------------------------------------------------------------------------------

NotebookSnapshot AppState::currentSnapshot() const
{
    return {m_folders.records(), m_notes.records(), BinderDisplayOrdering::layoutOf(m_order)};
}

void AppState::persist()
{
    if (m_controller)
        saved(m_controller->save(currentSnapshot()),
              "OrvaneWorkspace persistence error:", CountsAsChange::Yes);
}

void AppState::persistNote(const QUuid& id)
{
    const auto* found = m_controller ? m_notes.find(id) : nullptr;
    if (found)
        saved(m_controller->saveNote(*found),
              "OrvaneWorkspace single-note persistence error:", CountsAsChange::Yes);
}

void AppState::persistFolder(const QUuid& id)
{
    const auto* found = m_folders.find(id);
    if (m_controller && found)
        saved(m_controller->saveFolder(*found),
              "OrvaneWorkspace single-folder persistence error:", CountsAsChange::Yes);
}

void AppState::persistLayout()
{
    // Expanding a folder is not worth an error where nothing can be written at all.
    if (m_controller && !isReadOnly())
        saved(m_controller->saveLayout(BinderDisplayOrdering::layoutOf(m_order)),
              "OrvaneWorkspace layout persistence error:", CountsAsChange::No);
}

} // namespace orvane
