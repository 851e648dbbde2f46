// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/layout/QuickSettingsController.h"

#include "appearance/themes/AppearanceFields.h"
#include "shell/layout/PaneLayoutSettings.h"

namespace orvane::QuickSettingsController {

namespace {

RgbaColor rgba(const AppearanceColor& color)
{
    return {color.red, color.green, color.blue, color.alpha};
}

void captureLook(ProjectWorkspaceState& state, const AppearanceValues& look)
{
    state.orvaneGlassEnabled = look.orvaneGlassEnabled;
    state.orvaneGlassBinder = look.orvaneGlassBinder;
    state.orvaneGlassEditor = look.orvaneGlassEditor;
    state.orvaneGlassInspector = look.orvaneGlassInspector;
    state.orvaneGlassOpacityBinder = look.orvaneGlassOpacityBinder;
    state.orvaneGlassOpacityEditor = look.orvaneGlassOpacityEditor;
    state.orvaneGlassOpacityInspector = look.orvaneGlassOpacityInspector;
    state.binderBackgroundEnabled = look.binderBackground.enabled;
    state.binderBackgroundColor = rgba(look.binderBackground);
    state.editorBackgroundEnabled = look.editorBackground.enabled;
    state.editorBackgroundColor = rgba(look.editorBackground);
    state.inspectorBackgroundEnabled = look.inspectorBackground.enabled;
    state.inspectorBackgroundColor = rgba(look.inspectorBackground);
}

} // namespace

ProjectWorkspaceState captureCurrentState(const ProjectWorkspaceState& base,
                                          const AppState& appState,
                                          const SplitPaneLayoutModel& layout)
{
    const UserDefaults& defaults = appState.services().defaults;
    ProjectWorkspaceState state = base;
    state.selectedNoteID = appState.selection().selectedNoteID();
    state.selectedFolderID = appState.selection().selectedFolderID();
    state.selectedProjectRoot = !state.selectedNoteID && !state.selectedFolderID;
    const SideVisibility visible = PaneLayoutSettings::readVisibility(defaults);
    state.binderVisible = visible.binder;
    state.inspectorVisible = visible.inspector;
    state.binderLocked = layout.locks().binder;
    state.editorLocked = layout.locks().editor;
    state.inspectorLocked = layout.locks().inspector;
    if (layout.binderWidth() > 0)
        state.binderWidth = layout.binderWidth();
    if (layout.editorWidth() > 0)
        state.editorWidth = layout.editorWidth();
    if (layout.inspectorWidth() > 0)
        state.inspectorWidth = layout.inspectorWidth();
    captureLook(state, readAppearance(defaults));
    return state;
}

void applyPanes(const ProjectWorkspaceState& state, const PaneLocks& locks, UserDefaults& defaults,
                SplitPaneLayoutModel& layout)
{
    // Locks hold panes to their widths, so they go before and come after.
    layout.setLocks({});
    layout.setBinderWidth(state.binderWidth.value_or(PaneMetrics::sideDefault));
    layout.setInspectorWidth(state.inspectorWidth.value_or(PaneMetrics::sideDefault));
    PaneLayoutSettings::binderVisible.write(defaults, state.binderVisible);
    PaneLayoutSettings::inspectorVisible.write(defaults, state.inspectorVisible);
    layout.setLocks(locks);
}

} // namespace orvane::QuickSettingsController
