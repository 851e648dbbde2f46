// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/app/WorkspaceStateKeeper.h"

#include "shell/layout/PaneLayoutSettings.h"
#include "shell/layout/QuickSettingsController.h"

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
    connect(&appState.selection(), &Selection::selectionChanged, this,
            &WorkspaceStateKeeper::schedule);
    connect(&layout, &SplitPaneLayoutModel::changed, this, &WorkspaceStateKeeper::schedule);
    connect(&appState.services().defaults, &UserDefaults::changed, this,
            [this](const QString& key) {
                if (key == PaneLayoutSettings::binderVisible.keyText() ||
                    key == PaneLayoutSettings::inspectorVisible.keyText())
                    schedule();
            });
    connect(&appState.projectSession(), &ProjectSession::projectAboutToClose, this,
            &WorkspaceStateKeeper::finish);
    connect(&appState.projectSession(), &ProjectSession::willTerminate, this,
            &WorkspaceStateKeeper::finish);
    projectOpened();
}

WorkspaceStateKeeper::~WorkspaceStateKeeper() = default;

void WorkspaceStateKeeper::projectOpened()
{
    // Every notebook has its Trash; without it this is the emptiness after a project.
    const auto& project = m_appState.projectSession().currentProject();
    if (!project || m_appState.folders().isEmpty())
        return;
    m_projectRootPath = m_appState.projectSession().projectAccessPath();
    m_projectID = project->id;
    const auto& stored = m_appState.projectSession().openedWorkspaceState();
    const QColor ground = m_look.ground(Surface::Window);
    m_state = stored ? *stored
                     : QuickSettingsDefaults::defaultWorkspaceState(RgbaColor::fromQColor(ground));
    QuickSettingsController::applyPanes(m_state, m_locks.value(m_projectID),
                                        m_appState.services().defaults, m_layout);
}

void WorkspaceStateKeeper::schedule()
{
    if (!m_projectRootPath.isEmpty() && !m_pending)
        m_pending = m_appState.services().clock.after(saveDelay, [this] { save(); });
}

void WorkspaceStateKeeper::save()
{
    m_pending.reset();
    if (m_projectRootPath.isEmpty() || m_appState.projectSession().isReadOnly())
        return;
    const ProjectWorkspaceState state =
        QuickSettingsController::captureCurrentState(m_state, m_appState, m_layout);
    if (state == m_state)
        return;
    m_state = state;
    (void)ProjectWorkspaceStateStore::save(m_state, m_projectRootPath);
}

void WorkspaceStateKeeper::finish()
{
    save();
    if (!m_projectRootPath.isEmpty())
        m_locks.insert(m_projectID, m_layout.locks());
    m_projectRootPath.clear();
}

} // namespace orvane
