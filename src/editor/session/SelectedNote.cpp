// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/session/SelectedNote.h"

#include "editor/session/EditorSession.h"
#include "platform/Log.h"

namespace orvane {

namespace {

QString idText(const std::optional<QUuid>& id)
{
    return id ? uuidText(*id) : QStringLiteral("nil");
}

} // namespace

void followSelection(EditorSession& session, AppState& appState)
{
    const Selection& selection = appState.selection();
    QObject::connect(&selection, &Selection::selectedNoteAboutToChange, &session,
                     [&](const std::optional<QUuid>& from, const std::optional<QUuid>& to) {
                         if (appState.projectSession().isAppTerminating())
                             return;
                         session.prepareToLeave();
                         qCDebug(selectionSyncLog, "selectedNoteID.changed %ls->%ls",
                                 qUtf16Printable(idText(from)), qUtf16Printable(idText(to)));
                     });
    QObject::connect(&selection, &Selection::selectionChanged, &session, [&] {
        if (!appState.projectSession().isAppTerminating())
            session.show(appState.selection().selectedNoteID());
    });
    QObject::connect(&appState, &AppState::notebookReset, &session, [&] {
        session.load(appState.selection().selectedNoteID(), FindControls::reset);
    });
    session.holdWorkingKeys();
    session.load(selection.selectedNoteID(), FindControls::keep);
}

} // namespace orvane
