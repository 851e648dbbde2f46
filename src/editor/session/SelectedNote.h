// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

namespace orvane {

class AppState;
class EditorSession;

/// Makes a session show the selected note, now and as long as it lives, and hold the working keys.
/// Without this it shows what it is told to.
void followSelection(EditorSession& session, AppState& appState);

} // namespace orvane
