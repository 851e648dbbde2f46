// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/window/RecordPage.h"

#include "editor/pane/EditorPaneView.h"
#include "editor/session/SelectedNote.h"

#include <QVBoxLayout>

namespace orvane {

RecordPage::RecordPage(AppState& appState, Look& look, QWidget* parent)
    : QWidget(parent)
    , m_text(new EditorPaneView(appState, look, this))
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(m_text);
    followSelection(m_text->session(), appState);
}

} // namespace orvane
