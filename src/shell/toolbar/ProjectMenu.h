// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/state/AppState.h"

class QMenu;

namespace orvane {

class ProjectActions;

/// A menu of the projects last opened, the open one marked, and the ways to others. Filled when it
/// is about to be shown; all arguments outlive it.
[[nodiscard]] QMenu* makeProjectMenu(AppState& appState, ProjectActions& actions,
                                     QAction& showProjects, QWidget* parent);

} // namespace orvane
