// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// The part of AppState that says what is selected.
#include "core/AppState.h"
#include "core/SessionKeys.h"
#include "platform/Log.h"

namespace orvane {

namespace {

QString text(const std::optional<QUuid>& id)
{
    return id ? uuidText(*id) : QStringLiteral("nil");
}

} // namespace

std::optional<BinderRowID> AppState::selectedBinderRowID() const
{
    if (m_selectedNoteID)
        return BinderRowID{BinderRowID::Kind::Note, *m_selectedNoteID};
    if (m_selectedFolderID)
        return BinderRowID{BinderRowID::Kind::Folder, *m_selectedFolderID};
    return std::nullopt;
}

void AppState::setSelection(const std::optional<QUuid>& folder, const std::optional<QUuid>& note)
{
    if (m_selectedFolderID == folder && m_selectedNoteID == note)
        return;
    if (m_selectedNoteID != note)
        emit selectedNoteAboutToChange(m_selectedNoteID, note);
    m_selectedFolderID = folder;
    m_selectedNoteID = note;
    if (note)
        setNoteHeldBack(std::nullopt);
    emit selectionChanged();
}

void AppState::setNoteHeldBack(const std::optional<QUuid>& id)
{
    if (m_noteHeldBack == id)
        return;
    m_noteHeldBack = id;
    emit noteHeldBackChanged();
}

void AppState::selectNote(const std::optional<QUuid>& id)
{
    const NoteRecord* selected = id ? note(*id) : nullptr;
    if (id && !selected)
        return;
    if (!selected || !m_currentProject) {
        setSelection(m_selectedFolderID, id);
        if (m_currentProject)
            m_services.defaults.remove(SessionKeys::lastOpenedNoteID(m_currentProject->id));
        return;
    }
    const QUuid container = selected->folderID;
    const QUuid projectID = m_currentProject->id;
    setSelection(m_folders.contains(container) ? std::optional(container) : m_selectedFolderID, id);
    m_services.defaults.set(SessionKeys::lastOpenedNoteID(projectID), uuidText(*id));
    m_services.defaults.set(SessionKeys::lastOpenedProjectID, uuidText(projectID));
    setSelectedProject(m_currentProject->rootPath);
    recordHistory(*id);
    logSelection("selectNote");
}

void AppState::recordHistory(const QUuid& noteID)
{
    if (!m_suppressHistory)
        m_history.record(noteID);
    emit historyFlagsChanged();
}

void AppState::selectFolder(const QUuid& id)
{
    if (!m_folders.contains(id))
        return;
    setSelection(id, std::nullopt);
    if (m_currentProject)
        setSelectedProject(m_currentProject->rootPath);
    logSelection("selectFolder");
}

void AppState::selectBinderRow(const std::optional<BinderRowID>& row)
{
    if (!row) {
        selectProjectRoot();
        logSelection("selectBinderRow.nil");
    } else if (row->kind == BinderRowID::Kind::Note) {
        selectNote(row->id);
    } else {
        selectFolder(row->id);
    }
}

void AppState::openNote(const QUuid& id)
{
    const NoteRecord* found = note(id);
    if (!found)
        return;
    // The way down to the note is opened, so that its row can be seen.
    const QUuid container = found->folderID;
    std::optional<QUuid> at =
        m_folders.contains(container) ? std::optional(container) : std::nullopt;
    for (qsizetype steps = 0; at && steps <= m_folders.size(); ++steps) {
        const FolderRecord* each = folder(*at);
        if (!each)
            break;
        if (!m_order.expandedFolderIDs.contains(*at)) {
            m_order.expandedFolderIDs.insert(*at);
            emit folderExpansionChanged(*at, true);
        }
        at = each->parentFolderID;
    }
    selectNote(id);
}

void AppState::navigateMainEditorHistory(int delta)
{
    const auto target =
        m_history.navigate(delta, [this](const QUuid& id) { return m_notes.contains(id); });
    if (target) {
        m_suppressHistory = true;
        openNote(*target);
        m_suppressHistory = false;
    }
    emit historyFlagsChanged();
}

void AppState::selectProjectTile(const std::optional<QString>& folder)
{
    setSelectedProject(folder);
    if (m_mode == RootPresentationMode::Projects && m_currentProject &&
        folder == m_currentProject->rootPath)
        setSelection(std::nullopt, std::nullopt);
}

void AppState::selectProjectRoot()
{
    if (!m_currentProject)
        return;
    setSelectedProject(m_currentProject->rootPath);
    setSelection(std::nullopt, std::nullopt);
}

void AppState::logSelection(const char* reason) const
{
    const NoteRecord* selected = m_selectedNoteID ? note(*m_selectedNoteID) : nullptr;
    qCDebug(selectionSyncLog,
            "binderSelection reason=%s selectedRow=%ls selectedDocumentID=%ls "
            "selectedDocumentTitle=%ls",
            reason, qUtf16Printable(text(m_selectedNoteID ? m_selectedNoteID : m_selectedFolderID)),
            qUtf16Printable(text(m_selectedNoteID)),
            qUtf16Printable(selected ? selected->title : QString()));
}

} // namespace orvane
