// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// The part of AppState that selects what has to be shown first.
#include "core/notebook/NotebookEdits.h"
#include "core/state/AppState.h"

namespace orvane {

void AppState::openNote(const QUuid& id)
{
    m_session.finishOpening();
    if (!note(id))
        return;
    showWayTo(id);
    m_selection.selectNote(id);
}

void AppState::navigateMainEditorHistory(int delta)
{
    m_session.finishOpening();
    if (const auto target = m_selection.stepThroughHistory(delta)) {
        showWayTo(*target);
        m_selection.selectFromHistory(*target);
    }
    emit m_selection.historyFlagsChanged();
}

void AppState::showWayTo(const QUuid& noteID)
{
    QList<QUuid> way;
    const FolderRecord* at = folder(note(noteID)->folderID);
    while (at && way.size() <= m_notebook.folders.size()) {
        way.append(at->id);
        at = at->parentFolderID ? folder(*at->parentFolderID) : nullptr;
    }
    const auto edit = NotebookEdits::expandFolders(m_notebook, root(), way, true);
    if (!edit.isEmpty())
        show(edit, Saving::Later);
}

} // namespace orvane
