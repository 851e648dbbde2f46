// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/state/AppState.h"

#include "core/state/SessionKeys.h"
#include "core/store/StoreBeginning.h"
#include "platform/Log.h"

namespace orvane {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

AppState::AppState(const Services& services, QObject* parent)
    : QObject(parent)
    , m_services(services)
    , m_selection(m_notebook, services.defaults)
    , m_versionHistory(services.defaults, services.notifications)
    , m_tagSettings(TagSettings::load(services.defaults))
    , m_session(m_services, *this, m_selection)
{}

bool AppState::canCreateOrEdit() const
{
    return m_services.licence.canCreateOrEdit() && !m_session.isReadOnly();
}

// --- The notebook of the open project ------------------------------------------------------------

void AppState::loadNotebookSnapshot(const NotebookSnapshot& snapshot, bool restoreLastNote,
                                    const std::optional<ProjectWorkspaceState>& workspaceState)
{
    const QUuid projectID = projectRootContainerID().value_or(QUuid());
    show(notebookOf(snapshot, projectID, m_services.clock.now()), restoreLastNote, workspaceState);
}

void AppState::show(Notebook notebook, bool restoreLastNote,
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

void AppState::complete(Notebook notebook)
{
    const auto note = m_selection.selectedNoteID();
    const auto folder = m_selection.selectedFolderID();
    if ((note && !notebook.notes.contains(*note)) ||
        (folder && !notebook.folders.contains(*folder)))
        return show(std::move(notebook), true, m_session.openedWorkspaceState());
    takeOverBeginnings(m_notebook.notes, notebook.notes, listedUnits);
    // Who called this may have a record in hand; what is known of it by now stays a moment.
    QMetaObject::invokeMethod(
        this, [former = std::exchange(m_notebook, std::move(notebook))] {}, Qt::QueuedConnection);
    emit notebookCompleted();
    if (note)
        showWayTo(*note);
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
    const auto destination = SessionKeys::readLaunchDestination(m_services.defaults);
    if (!m_session.currentProject() || destination != OrvaneWorkspaceLaunchDestination::LastNote)
        return;
    const auto note = SessionKeys::readUuid(
        m_services.defaults, SessionKeys::lastOpenedNoteID(m_session.currentProject()->id));
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

void AppState::clear()
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
