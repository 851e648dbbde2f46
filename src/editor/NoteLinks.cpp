// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/NoteLinks.h"

#include "core/InternalNoteLink.h"
#include "editor/EditorSession.h"
#include "editor/EditorView.h"

#include <QDesktopServices>
#include <QUrl>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

/// What a click may hand to the desktop: nothing that would be run or read on this machine.
bool opensOutside(const QUrl& url)
{
    return url.isValid() && (url.scheme() == "http"_L1 || url.scheme() == "https"_L1 ||
                             url.scheme() == "mailto"_L1 || url.scheme() == "ftp"_L1);
}

struct Target {
    QUuid id;
    QString title;
};

/// All notes but one, by title.
QList<Target> otherNotes(const AppState& appState, const std::optional<QUuid>& without)
{
    QList<Target> targets;
    for (const auto& note : appState.notes()) {
        if (note->id == without)
            continue;
        const QString title = editableTitle(*note).trimmed();
        targets.append({note->id, title.isEmpty() ? NoteLinks::tr("Untitled") : title});
    }
    std::stable_sort(targets.begin(), targets.end(), [](const Target& left, const Target& right) {
        return QString::localeAwareCompare(left.title, right.title) < 0;
    });
    return targets;
}

} // namespace

NoteLinks::NoteLinks(EditorView& view, EditorSession& session, AppState& appState, QObject* parent)
    : QObject(parent)
    , m_view(view)
    , m_session(session)
    , m_appState(appState)
{
    connect(&view, &EditorView::linkActivated, this, &NoteLinks::open);
    m_command = appState.services().notifications.observe(
        AppCommandEvents::linkSelectionToNote, [this](const CommandTarget& target) {
            if (!target.noteID || target.noteID == m_session.noteID())
                linkSelectionToNote();
        });
}

void NoteLinks::open(const QString& address)
{
    if (const auto note = InternalNoteLink::noteID(address)) {
        if (m_appState.note(*note))
            m_appState.openNote(*note);
        else
            m_appState.services().beeper.beep();
        return;
    }
    const QUrl url = QUrl::fromUserInput(address);
    if (!opensOutside(url) || !QDesktopServices::openUrl(url))
        m_appState.services().beeper.beep();
}

void NoteLinks::say(const QString& title, const QString& text)
{
    Question message;
    message.title = title;
    message.text = text;
    message.buttons = {tr("OK")};
    m_appState.services().questions.ask(message);
}

void NoteLinks::linkSelectionToNote()
{
    if (!m_session.noteID())
        return;
    if (m_session.mode() != EditorMode::richText)
        return say(tr("Rich Text Required"),
                   tr("Switch this note to Rich Text before linking selected text to another "
                      "note."));
    const QList<Target> targets = otherNotes(m_appState, m_session.noteID());
    if (targets.isEmpty())
        return say(tr("No Target Notes"),
                   tr("Create another note before linking selected text to a note."));
    Question question;
    question.title = tr("Link Selection to Note");
    question.text = tr("Choose the note this selected text should open.");
    for (const Target& target : targets)
        question.choices.append(target.title);
    question.buttons = {tr("Link"), tr("Cancel")};
    const Answer answer = m_appState.services().questions.ask(question);
    if (answer.button == 0 && answer.choice >= 0 && answer.choice < targets.size())
        linkSelectedText(targets.at(answer.choice).id);
}

bool NoteLinks::linkSelectedText(const QUuid& noteID)
{
    EditGateway& text = m_session.gateway();
    const TextRange selected = text.selection().range();
    if (selected.isEmpty() || m_session.mode() != EditorMode::richText || !m_session.isEditable()) {
        m_appState.services().beeper.beep();
        return false;
    }
    m_view.setFocus();
    text.performUndoableDocumentEdit(tr("Link Selection to Note"), [&](DocumentEditor& editor) {
        editor.modifyCharacterStyles(
            selected, [&](CharacterStyle& style) { style.link = InternalNoteLink::link(noteID); });
    });
    return true;
}

} // namespace orvane
