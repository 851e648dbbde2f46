// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/EditorSession.h"

#include "platform/Log.h"

#include <cmath>

namespace orvane {

namespace {

QString idText(const std::optional<QUuid>& id)
{
    return id ? uuidText(*id) : QStringLiteral("nil");
}

} // namespace

EditorSession::EditorSession(AppState& appState, QObject* parent)
    : QObject(parent)
    , m_appState(appState)
{
    connect(&appState, &AppState::selectedNoteAboutToChange, this,
            &EditorSession::selectionAboutToChange);
    connect(&appState, &AppState::selectionChanged, this, &EditorSession::selectionChanged);
    connect(&appState, &AppState::notebookReset, this, [this] { syncDraftsFromSelection(true); });
    connect(&appState, &AppState::noteChanged, this, &EditorSession::recordChanged);
    connect(&appState, &AppState::projectAboutToClose, this, &EditorSession::flushBeforeClosing);
    connect(&appState, &AppState::willTerminate, this, &EditorSession::flushBeforeClosing);
    connect(&appState, &AppState::noteAboutToBeReplaced, this, &EditorSession::flushDraftToDisk);
    m_saveCommand = appState.services().notifications.observe(
        AppCommandEvents::saveDocument, [this](const NoPayload&) { saveFromExplicitCommand(); });
    syncDraftsFromSelection(false);
}

EditorSession::~EditorSession() = default;

void EditorSession::setBodySource(std::function<QString()> source)
{
    m_bodySource = std::move(source);
}

const EditorDraft& EditorSession::draft()
{
    pullBody();
    return m_draft;
}

const NoteRecord* EditorSession::activeNote() const
{
    const auto selected = m_appState.selectedNoteID();
    return selected ? m_appState.note(*selected) : nullptr;
}

bool EditorSession::currentDraftMatchesSelection() const
{
    return m_draft.noteID == m_appState.selectedNoteID();
}

QString EditorSession::currentTitle() const
{
    if (currentDraftMatchesSelection())
        return m_draft.title;
    const NoteRecord* note = activeNote();
    return note ? editableTitle(*note) : QString();
}

QString EditorSession::currentBodyPlain()
{
    if (currentDraftMatchesSelection())
        return draft().bodyPlain;
    const NoteRecord* note = activeNote();
    return note ? note->body : QString();
}

bool EditorSession::isEditable() const
{
    return m_draft.noteID && m_appState.canCreateOrEdit();
}

bool EditorSession::beginEdit(bool resetFindUI)
{
    const auto selected = m_appState.selectedNoteID();
    if (!selected)
        return false;
    if (!currentDraftMatchesSelection())
        syncDraftsFromSelection(resetFindUI);
    m_draft.noteID = selected;
    m_lastStableEditingNoteID = selected;
    return true;
}

void EditorSession::bodyEdited()
{
    if (!beginEdit(false))
        return;
    m_bodyIsStale = true;
    markDirty();
    log("contentChanged");
}

void EditorSession::setTitle(const QString& title)
{
    if (!beginEdit(true))
        return;
    m_draft.title = title;
    setDirty(true);
    m_appState.applyLiveTitle(*m_draft.noteID, title);
    scheduleAutosave();
    log("titleEdited");
}

void EditorSession::setTypingAttributes(const std::optional<Blob>& payload)
{
    if (!m_appState.selectedNoteID() || payload == m_draft.editorTypingAttributesPayload ||
        !beginEdit(false))
        return;
    m_draft.editorTypingAttributesPayload = payload;
    markDirty();
    log("typingAttributesChanged");
}

void EditorSession::setShapes(const std::optional<Blob>& payload)
{
    beginEdit(false);
    m_draft.shapesPayload = payload;
    markDirty();
}

void EditorSession::markDirty()
{
    setDirty(true);
    scheduleAutosave();
}

void EditorSession::setDirty(bool dirty)
{
    if (m_draft.isDirty == dirty)
        return;
    m_draft.isDirty = dirty;
    emit dirtyChanged(dirty);
}

void EditorSession::pullBody()
{
    if (!m_bodyIsStale || !m_bodySource)
        return;
    m_bodyIsStale = false;
    QString plain = m_bodySource();
    if (plain == m_draft.bodyPlain)
        return;
    m_draft.bodyPlain = std::move(plain);
    // Plain text can't carry what the rich forms say, so they no longer describe this note.
    m_draft.bodyRTF.reset();
    m_draft.bodyRich.reset();
    m_draft.editorTypingAttributesPayload.reset();
    m_draft.shapesPayload.reset();
}

void EditorSession::scheduleAutosave()
{
    m_autosaveTask.reset();
    const Services& services = m_appState.services();
    if (!autosaveEnabledSetting.read(services.defaults))
        return;
    constexpr double longest = 86'400;
    const double asked = autoSaveSecondsSetting.read(services.defaults);
    const double seconds = std::isnan(asked) ? 0 : std::min(asked, longest);
    const auto delay =
        std::max(shortestAutosaveDelay, std::chrono::milliseconds(qint64(seconds * 1000)));
    m_autosaveTask = services.clock.after(delay, [this] { runAutosaveToDisk(); });
}

void EditorSession::runAutosaveToDisk()
{
    const auto selected = m_appState.selectedNoteID();
    if (!m_draft.isDirty || !selected || m_draft.noteID != selected)
        return;
    writeDraft(*selected);
    log("autosave");
}

void EditorSession::writeDraft(const QUuid& noteID)
{
    pullBody();
    m_appState.updateNote(noteID, m_draft.content());
    if (const NoteRecord* note = m_appState.note(noteID))
        m_loadedUpdatedAt = note->updatedAt;
    setDirty(false);
}

void EditorSession::flushDraftToDisk(const QUuid& noteID)
{
    if (!m_draft.isDirty || m_draft.noteID != noteID)
        return;
    writeDraft(noteID);
    log("flushDraftToDisk");
}

void EditorSession::saveFromExplicitCommand()
{
    const NoteRecord* note = activeNote();
    if (!note || !currentDraftMatchesSelection())
        return;
    const QUuid noteID = note->id;
    m_autosaveTask.reset();
    writeDraft(noteID);
    m_appState.appendVersionSnapshot(noteID, QStringLiteral("Manual Save"));
    log("manualSave");
    m_appState.services().notifications.post(AppCommandEvents::manualSaveCompleted);
}

void EditorSession::selectionAboutToChange(const std::optional<QUuid>& from,
                                           const std::optional<QUuid>& to)
{
    if (m_appState.isAppTerminating())
        return;
    const auto target = m_draft.noteID ? m_draft.noteID : from ? from : m_lastStableEditingNoteID;
    if (target)
        flushDraftToDisk(*target);
    m_autosaveTask.reset();
    qCDebug(selectionSyncLog, "selectedNoteID.changed %ls->%ls", qUtf16Printable(idText(from)),
            qUtf16Printable(idText(to)));
}

void EditorSession::selectionChanged()
{
    if (!m_appState.isAppTerminating() && !currentDraftMatchesSelection())
        syncDraftsFromSelection(true);
}

void EditorSession::flushBeforeClosing()
{
    const auto target = m_draft.noteID ? m_draft.noteID : m_appState.selectedNoteID();
    if (target)
        flushDraftToDisk(*target);
}

void EditorSession::recordChanged(const QUuid& noteID)
{
    if (m_draft.isDirty || m_draft.noteID != noteID || !currentDraftMatchesSelection())
        return;
    const NoteRecord* note = m_appState.note(noteID);
    if (note && note->updatedAt != m_loadedUpdatedAt)
        syncDraftsFromSelection(false);
}

void EditorSession::syncDraftsFromSelection(bool resetFindUI)
{
    const bool wasDirty = m_draft.isDirty;
    const NoteRecord* note = activeNote();
    m_draft = note ? EditorDraft::of(*note) : EditorDraft();
    m_bodyIsStale = false;
    if (note) {
        m_loadedUpdatedAt = note->updatedAt;
        m_lastStableEditingNoteID = note->id;
    }
    if (wasDirty)
        emit dirtyChanged(false);
    emit draftLoaded(resetFindUI);
    emit titleChanged();
    log(note ? "syncDraftsFromSelection.loaded" : "syncDraftsFromSelection.empty");
}

void EditorSession::log(const char* reason) const
{
    qCDebug(selectionSyncLog,
            "editorSelection reason=%s selectedDocumentID=%ls selectedDocumentTitle=%ls "
            "editorLoadedDocumentID=%ls bodyChars=%lld",
            reason, qUtf16Printable(idText(m_appState.selectedNoteID())),
            qUtf16Printable(currentTitle()), qUtf16Printable(idText(m_draft.noteID)),
            qlonglong(m_draft.bodyPlain.size()));
}

} // namespace orvane
