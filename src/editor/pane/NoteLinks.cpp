// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/pane/NoteLinks.h"

#include "core/records/InternalNoteLink.h"
#include "editor/session/EditorSession.h"
#include "editor/view/EditorView.h"
#include "editor/writing/LinkAddress.h"
#include "text/store/TextStore.h"
#include "text/value/LinkTargets.h"

#include <QDesktopServices>
#include <QUrl>

namespace orvane {

using namespace Qt::StringLiterals;

QList<LinkableNote> linkableNotes(const AppState& appState, const std::optional<QUuid>& without)
{
    QList<LinkableNote> notes;
    for (const auto& note : appState.notes()) {
        if (note->id == without)
            continue;
        const QString title = editableTitle(*note).trimmed();
        notes.append({note->id, title.isEmpty() ? NoteLinks::tr("Untitled") : title});
    }
    std::stable_sort(notes.begin(), notes.end(),
                     [](const LinkableNote& left, const LinkableNote& right) {
                         return QString::localeAwareCompare(left.title, right.title) < 0;
                     });
    return notes;
}

NoteLinks::NoteLinks(EditorView& view, EditorSession& session, AppState& appState, QObject* parent)
    : QObject(parent)
    , m_view(view)
    , m_session(session)
    , m_appState(appState)
{
    connect(&view, &EditorView::linkActivated, this, &NoteLinks::open);
    connect(
        &session, &EditorSession::draftLoaded, this,
        [this] {
            if (const QString target = std::exchange(m_wantedTarget, {}); !target.isEmpty())
                goTo(target);
        },
        Qt::QueuedConnection);
    const auto observe = [&](const Notification<CommandTarget>& command, void (NoteLinks::*act)()) {
        return appState.services().notifications.observe(
            command, [this, act](const CommandTarget& target) {
                const auto shown = m_session.noteID();
                if (shown && (target.noteID ? target.noteID == shown : m_view.isVisible()))
                    (this->*act)();
            });
    };
    m_commands = {observe(AppCommandEvents::linkSelectionToNote, &NoteLinks::linkSelectionToNote),
                  observe(AppCommandEvents::insertEditLink, &NoteLinks::insertEditLink)};
}

void NoteLinks::open(const QString& address)
{
    const QString target = linkedTargetName(address);
    const auto note = InternalNoteLink::noteID(address);
    if (note && note != m_session.noteID()) {
        if (!m_appState.note(*note))
            return m_appState.services().beeper.beep();
        m_wantedTarget = target;
        return m_appState.openNote(*note);
    }
    if (!target.isEmpty())
        return goTo(target);
    if (note)
        return;
    const QUrl url = QUrl::fromUserInput(address);
    if (!opensOutside(url) || !QDesktopServices::openUrl(url))
        m_appState.services().beeper.beep();
}

void NoteLinks::goTo(const QString& targetName)
{
    const auto place = findLinkTarget(m_view.store().snapshot().toAttributedString(), targetName);
    if (!place)
        return m_appState.services().beeper.beep();
    m_view.setSelection(TextSelection::caret(place->location));
    m_view.scrollToRange(*place);
    m_view.setFocus();
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
    const QList<LinkableNote> targets = linkableNotes(m_appState, m_session.noteID());
    if (targets.isEmpty())
        return say(tr("No Target Notes"),
                   tr("Create another note before linking selected text to a note."));
    Question question;
    question.title = tr("Link Selection to Note");
    question.text = tr("Choose the note this selected text should open.");
    for (const LinkableNote& target : targets)
        question.choices.append(target.title);
    question.buttons = {tr("Link"), tr("Cancel")};
    const Answer answer = m_appState.services().questions.ask(question);
    if (answer.button == 0 && answer.choice >= 0 && answer.choice < targets.size())
        linkSelectedText(targets.at(answer.choice).id);
}

void NoteLinks::insertEditLink()
{
    if (m_session.mode() != EditorMode::richText)
        return say(tr("Rich Text Required"),
                   tr("Switch this note to Rich Text before putting a link into it."));
    if (!m_session.isEditable())
        return m_appState.services().beeper.beep();
    m_view.setFocus();
    emit linkSheetWanted();
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
