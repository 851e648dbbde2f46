// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/SurfacePanel.h"
#include "core/state/AppState.h"

class QHBoxLayout;

namespace orvane {

/// The tags that the Binder is filtered for, as chips below its rail; each goes with a click.
/// Hidden while there is no filter.
class TagFilterBar : public SurfacePanel {
    Q_OBJECT
public:
    TagFilterBar(AppState& appState, Look& look, QWidget* parent = nullptr);

private:
    void refresh();

    AppState& m_appState;
    QHBoxLayout* m_row;
};

} // namespace orvane
