// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/WorkspaceStateKeeper.h"

namespace orvane {

namespace {

constexpr std::chrono::milliseconds saveDelay{400};

} // namespace

WorkspaceStateKeeper::WorkspaceStateKeeper(AppState& appState, SplitPaneLayoutModel& layout,
                                           const Look& look, QObject* parent)
    : QObject(parent)
    , m_appState(appState)
    , m_layout(layout)
    , m_look(look)
{
    connect(&appState, &AppState::notebookReset, this, &WorkspaceStateKeeper::projectOpened);
    connect(&appState, &AppState::selectionChanged, this, &WorkspaceStateKeeper::schedule);
    connect(&layout, &SplitPaneLayoutModel::changed, this, &WorkspaceStateKeeper::schedule);
    connect(&appState, &AppState::projectAboutToClose, this, &WorkspaceStateKeeper::finish);
    connect(&appState, &AppState::willTerminate, this, &WorkspaceStateKeeper::finish);
    projectOpened();
}

WorkspaceStateKeeper::~WorkspaceStateKeeper() = default;

void WorkspaceStateKeeper::projectOpened()
{
    // Every notebook has its Trash; without it this is the emptiness after a project.
    const auto& project = m_appState.currentProject();
    if (!project || m_appState.folders().isEmpty())
        return;
    m_projectRootPath = project->rootPath;
    const auto& stored = m_appState.openedWorkspaceState();
    const QColor ground = m_look.ground(Surface::Window);
    m_state = stored ? *stored
                     : QuickSettingsDefaults::defaultWorkspaceState(RgbaColor::fromQColor(ground));
    if (stored && stored->binderWidth)
        m_layout.setBinderWidth(*stored->binderWidth);
    if (stored && stored->inspectorWidth)
        m_layout.setInspectorWidth(*stored->inspectorWidth);
}

ProjectWorkspaceState WorkspaceStateKeeper::captured() const
{
    ProjectWorkspaceState state = m_state;
    state.selectedNoteID = m_appState.selectedNoteID();
    state.selectedFolderID = m_appState.selectedFolderID();
    state.selectedProjectRoot = !state.selectedNoteID && !state.selectedFolderID;
    if (m_layout.binderWidth() > 0)
        state.binderWidth = m_layout.binderWidth();
    if (m_layout.inspectorWidth() > 0)
        state.inspectorWidth = m_layout.inspectorWidth();
    return state;
}

void WorkspaceStateKeeper::schedule()
{
    if (!m_projectRootPath.isEmpty() && !m_pending)
        m_pending = m_appState.services().clock.after(saveDelay, [this] { save(); });
}

void WorkspaceStateKeeper::save()
{
    m_pending.reset();
    const ProjectWorkspaceState state = captured();
    if (m_projectRootPath.isEmpty() || state == m_state || m_appState.isReadOnly())
        return;
    m_state = state;
    (void)ProjectWorkspaceStateStore::save(m_state, m_projectRootPath);
}

void WorkspaceStateKeeper::finish()
{
    save();
    m_projectRootPath.clear();
}

} // namespace orvane
