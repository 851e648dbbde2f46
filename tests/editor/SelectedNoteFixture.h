// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/pane/EditorPaneView.h"
#include "editor/session/SelectedNote.h"

namespace orvane {

/// A session, or a pane with its session, that shows the selected note as in the main window.
inline std::unique_ptr<EditorSession> sessionOfSelection(AppState& app)
{
    auto session = std::make_unique<EditorSession>(app);
    followSelection(*session, app);
    return session;
}
inline std::unique_ptr<EditorPaneView> paneOfSelection(AppState& app, Look& look)
{
    auto pane = std::make_unique<EditorPaneView>(app, look);
    followSelection(pane->session(), app);
    return pane;
}

} // namespace orvane
