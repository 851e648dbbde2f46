// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/library/ProjectWorkspaceState.h"
#include "core/state/AppState.h"
#include "shell/layout/SplitPaneLayoutModel.h"

/// What a project's window looks like, to and from the value that is kept with the project.
namespace orvane::QuickSettingsController {

/// The state on the screen: selection, panes, and glass and background of each pane as the look
/// has them. What has no place on the screen is taken from `base`.
[[nodiscard]] ProjectWorkspaceState captureCurrentState(const ProjectWorkspaceState& base,
                                                        const AppState& appState,
                                                        const SplitPaneLayoutModel& layout);

/// Shows, hides, sizes and locks the panes as the state says. A width that the state lacks is the
/// default. The look is the person's own, for all projects, and stays.
void applyPanes(const ProjectWorkspaceState& state, const PaneLocks& locks, UserDefaults& defaults,
                SplitPaneLayoutModel& layout);

} // namespace orvane::QuickSettingsController
