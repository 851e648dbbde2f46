// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/Look.h"
#include "core/library/ProjectWorkspaceState.h"
#include "core/state/AppState.h"
#include "shell/layout/SplitPaneLayoutModel.h"

#include <QObject>

namespace orvane {

/// Keeps, for each project, what was selected and how the panes stood: reads it when a project
/// opens and writes it a moment after each change, and before the project closes or the program
/// ends. A file that can't be written loses the last change only. Lives beside the main window.
class WorkspaceStateKeeper : public QObject {
    Q_OBJECT
public:
    WorkspaceStateKeeper(AppState& appState, SplitPaneLayoutModel& layout, const Look& look,
                         QObject* parent = nullptr);
    ~WorkspaceStateKeeper() override;

private:
    void projectOpened();
    void schedule();
    void save();
    void finish();

    AppState& m_appState;
    SplitPaneLayoutModel& m_layout;
    const Look& m_look;
    /// Where the project is reached; empty while none is followed.
    QString m_projectRootPath;
    QUuid m_projectID;
    ProjectWorkspaceState m_state;
    /// By project, of this run of the program: locks do not outlive it.
    QHash<QUuid, PaneLocks> m_locks;
    std::unique_ptr<Clock::Delay> m_pending;
};

} // namespace orvane
