// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/AppCommandEvents.h"
#include "platform/NotificationCenter.h"

#include <QObject>

namespace orvane {

class AppState;
class EditorSession;
class EditorView;

/// Links in the text of a pane: opens the one that is clicked, and makes one of the selection that
/// leads to another note. Main thread.
class NoteLinks final : public QObject {
    Q_OBJECT
public:
    /// All arguments outlive it.
    NoteLinks(EditorView& view, EditorSession& session, AppState& appState,
              QObject* parent = nullptr);

    /// A link to a note selects it, with a beep where there is no such note. Other addresses are
    /// opened outside.
    void open(const QString& address);
    /// Asks for the note that the selection is to lead to.
    void linkSelectionToNote();
    /// False with a beep where nothing is selected.
    bool linkSelectedText(const QUuid& noteID);

private:
    void say(const QString& title, const QString& text);

    EditorView& m_view;
    EditorSession& m_session;
    AppState& m_appState;
    NotificationCenter::Observation m_command;
};

} // namespace orvane
