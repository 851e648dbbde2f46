// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "commands/AppCommandEvents.h"
#include "platform/NotificationCenter.h"

#include <QList>
#include <QObject>
#include <QUuid>

#include <array>
#include <optional>

namespace orvane {

class AppState;
class EditorSession;
class EditorView;

/// A note that a link may lead to, with its title as a list shows it.
struct LinkableNote {
    QUuid id;
    QString title;
};

/// All notes of the project but `without`, by title.
[[nodiscard]] QList<LinkableNote> linkableNotes(const AppState& appState,
                                                const std::optional<QUuid>& without);

/// Links in the text of a pane: opens the one that is clicked, makes one of the selection that
/// leads to another note, and asks for the sheet in which any link is made. Main thread.
class NoteLinks final : public QObject {
    Q_OBJECT
public:
    /// All arguments outlive it.
    NoteLinks(EditorView& view, EditorSession& session, AppState& appState,
              QObject* parent = nullptr);

    /// A link to a note selects it, and goes to the place in it that the link names; with a beep
    /// where there is no such note or place. Other addresses are opened outside.
    void open(const QString& address);
    /// Asks for the note that the selection is to lead to.
    void linkSelectionToNote();
    /// Wants the sheet for the link at the selection, in rich notes; says so in others.
    void insertEditLink();
    /// False with a beep where nothing is selected.
    bool linkSelectedText(const QUuid& noteID);

signals:
    void linkSheetWanted();

private:
    /// To a place of the note that is shown.
    void goTo(const QString& targetName);
    void say(const QString& title, const QString& text);

    EditorView& m_view;
    EditorSession& m_session;
    AppState& m_appState;
    /// Where to go as soon as the text of the note that is being opened is there.
    QString m_wantedTarget;
    std::array<NotificationCenter::Observation, 2> m_commands;
};

} // namespace orvane
