// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/window/RecordPage.h"

#include "core/state/AppState.h"
#include "editor/pane/EditorPaneView.h"
#include "editor/session/SelectedNote.h"
#include "shell/window/NoRecordPage.h"
#include "shell/window/TrashStrip.h"

#include <QVBoxLayout>

namespace orvane {

RecordPage::RecordPage(AppState& appState, Look& look, QWidget* parent)
    : QWidget(parent)
    , m_appState(appState)
    , m_look(look)
    , m_text(new EditorPaneView(appState, look, this))
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->setSpacing(0);
    layout->addWidget(m_text);
    m_text->setMakeEmptyState([this](QWidget* parent) {
        auto* empty = new NoRecordPage(m_appState, parent);
        connect(empty, &NoRecordPage::newNoteRequested, this, &RecordPage::newNoteRequested);
        return empty;
    });
    followSelection(m_text->session(), appState);
    connect(&appState, &AppState::notebookReset, this, &RecordPage::showState);
    connect(&appState, &AppState::notebookChanged, this, &RecordPage::showState);
    connect(&appState.selection(), &Selection::selectionChanged, this, &RecordPage::showState);
    showState();
}

void RecordPage::showState()
{
    const auto id = m_appState.selection().selectedNoteID();
    const NoteRecord* note = id ? m_appState.note(*id) : nullptr;
    if (!note || note->folderID != FolderRecord::trashFolderID) {
        if (m_trash)
            m_trash->hide();
        return;
    }
    if (!m_trash) {
        m_trash = new TrashStrip(m_look, this);
        static_cast<QVBoxLayout*>(layout())->insertWidget(0, m_trash);
        const auto tell = [this](void (RecordPage::*signal)(const QUuid&)) {
            if (const auto selected = m_appState.selection().selectedNoteID())
                emit(this->*signal)(*selected);
        };
        connect(m_trash, &TrashStrip::restoreWanted, this,
                [tell] { tell(&RecordPage::restoreWanted); });
        connect(m_trash, &TrashStrip::eraseWanted, this,
                [tell] { tell(&RecordPage::eraseWanted); });
    }
    m_trash->show(*note, m_appState.services().clock.now(), m_appState.canCreateOrEdit());
}

} // namespace orvane
