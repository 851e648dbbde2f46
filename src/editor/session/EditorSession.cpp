// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/session/EditorSession.h"

#include "platform/Log.h"

#include <QPointer>
#include <QScopedValueRollback>

#include <cmath>

namespace orvane {

namespace {

constexpr double smallestFont = 1;
constexpr double largestFont = 500;

QString idText(const std::optional<QUuid>& id)
{
    return id ? uuidText(*id) : QStringLiteral("nil");
}

} // namespace

EditorSession::EditorSession(AppState& appState, QObject* parent)
    : QObject(parent)
    , m_appState(appState)
    , m_profiles(appState.services().defaults)
{
    connect(&appState.selection(), &Selection::selectedNoteAboutToChange, this,
            &EditorSession::selectionAboutToChange);
    connect(&appState.selection(), &Selection::selectionChanged, this,
            &EditorSession::selectionChanged);
    connect(&appState, &AppState::notebookReset, this, [this] { syncDraftsFromSelection(true); });
    connect(&appState, &AppState::notebookChanged, this, [this](const NotebookChange& change) {
        constexpr RecordAspects drafted =
            RecordAspect::Title | RecordAspect::Text | RecordAspect::Shapes;
        if (m_draft.noteID && change.ofNote(*m_draft.noteID) & drafted)
            recordChanged(*m_draft.noteID);
    });
    connect(&appState, &AppState::projectMayBeLeft, this, &EditorSession::flushBeforeClosing);
    connect(&appState, &AppState::projectAboutToClose, this, &EditorSession::flushBeforeClosing);
    connect(&appState, &AppState::willTerminate, this, &EditorSession::flushBeforeClosing);
    connect(&appState, &AppState::noteAboutToBeReplaced, this, &EditorSession::flushDraftToDisk);
    connect(&appState.services().defaults, &UserDefaults::changed, this,
            &EditorSession::settingChanged);
    m_saveCommand = appState.services().notifications.observe(
        AppCommandEvents::saveDocument, [this](const NoPayload&) { saveFromExplicitCommand(); });
    connect(&m_formsMaker, &RichFormsMaker::finished, this, &EditorSession::formsFinished);
    readWorkingValues();
    syncDraftsFromSelection(false);
}

EditorSession::~EditorSession() = default;

const EditorDraft& EditorSession::draft()
{
    pullText();
    return m_draft;
}

const NoteRecord* EditorSession::activeNote() const
{
    const auto selected = m_appState.selection().selectedNoteID();
    return selected ? m_appState.note(*selected) : nullptr;
}

bool EditorSession::currentDraftMatchesSelection() const
{
    return m_draft.noteID == m_appState.selection().selectedNoteID();
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
    if (currentDraftMatchesSelection()) {
        pullPlain();
        return m_draft.bodyPlain;
    }
    const NoteRecord* note = activeNote();
    return note ? note->body.text() : QString();
}

bool EditorSession::isEditable() const
{
    return m_draft.noteID && m_isReadable && m_appState.canCreateOrEdit();
}

bool EditorSession::beginEdit(bool resetFindUI)
{
    const auto selected = m_appState.selection().selectedNoteID();
    if (!selected)
        return false;
    if (!currentDraftMatchesSelection())
        syncDraftsFromSelection(resetFindUI);
    if (!m_isReadable)
        return false;
    m_draft.noteID = selected;
    m_lastStableEditingNoteID = selected;
    return true;
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

void EditorSession::setShapes(const std::optional<Blob>& payload)
{
    if (!m_isReadable)
        return;
    beginEdit(false);
    m_draft.shapesPayload = payload;
    m_wouldLoseFormatting.reset();
    markDirty();
}

void EditorSession::markDirty()
{
    setDirty(true);
    scheduleAutosave();
}

void EditorSession::setDirty(bool dirty)
{
    if (!dirty) {
        m_boundTask.reset();
        m_boundGeneration.reset();
    }
    if (m_draft.isDirty == dirty)
        return;
    m_draft.isDirty = dirty;
    emit dirtyChanged(dirty);
}

void EditorSession::setRefusal(std::optional<Refusal> refusal)
{
    if (m_refusal == refusal)
        return;
    m_refusal = refusal;
    emit refusalChanged();
}

void EditorSession::cancelAutosave()
{
    m_autosaveTask.reset();
    m_prepareTask.reset();
    m_writesWhenMade = false;
}

void EditorSession::scheduleAutosave()
{
    cancelAutosave();
    const Services& services = m_appState.services();
    // A pause is when making the forms of a long text disturbs nobody; at a flush they are there.
    if (m_formsAreStale && isLong())
        m_prepareTask = services.clock.after(shortestAutosaveDelay, [this] { prepareForms(); });
    if (!autosaveEnabledSetting.read(services.defaults))
        return;
    constexpr double longest = 86'400;
    const double asked = autoSaveSecondsSetting.read(services.defaults);
    const double seconds = std::isnan(asked) ? 0 : std::min(asked, longest);
    const auto delay =
        std::max(shortestAutosaveDelay, std::chrono::milliseconds(qint64(seconds * 1000)));
    m_autosaveTask = services.clock.after(delay, [this] { runAutosaveToDisk(); });
    const bool makesForms = m_formsAreStale && isLong();
    if (!m_boundTask && !m_boundGeneration)
        m_boundTask = services.clock.after(makesForms ? longestUnsavedOfLongText : longestUnsaved,
                                           [this] { boundUnsaved(); });
}

void EditorSession::boundUnsaved()
{
    m_boundTask.reset();
    if (!m_draft.isDirty || !currentDraftMatchesSelection() ||
        !autosaveEnabledSetting.read(m_appState.services().defaults))
        return;
    if (m_formsAreStale && isLong()) {
        if (m_boundGeneration)
            return; // its forms take longer than this
        prepareForms();
        m_boundGeneration = m_generation;
        m_boundTask =
            m_appState.services().clock.after(longestUnsavedOfLongText, [this] { boundUnsaved(); });
        if (m_formsMaker.hasFinished(m_generation))
            formsFinished(m_generation);
        return;
    }
    (void)writeDraft(*m_draft.noteID);
    log("autosave.bound");
}

void EditorSession::runAutosaveToDisk()
{
    const auto selected = m_appState.selection().selectedNoteID();
    if (!m_draft.isDirty || !selected || m_draft.noteID != selected)
        return;
    prepareForms();
    m_writesWhenMade = m_formsAreStale && isLong() && !m_formsMaker.hasFinished(m_generation);
    if (m_writesWhenMade)
        return;
    (void)writeDraft(*selected);
    log("autosave");
}

Accepted EditorSession::writeDraft(const QUuid& noteID)
{
    pullText();
    m_writesWhenMade = false;
    const auto written = write(noteID, m_draft.content());
    if (m_refusal)
        m_boundTask.reset(); // asked for again with the next edit
    else
        setDirty(false);
    return written;
}

Accepted EditorSession::write(const QUuid& noteID, const NoteContent& content)
{
    // What is written is what stands here already.
    const QScopedValueRollback writes(m_isWriting, true);
    const auto written = m_appState.updateNote(noteID, content);
    // What only the disk didn't take is in the record, which is written again when saving works.
    const bool isTaken = written || written.error() == Refusal::NotStored;
    setRefusal(isTaken ? std::nullopt : std::optional(written.error()));
    if (isTaken)
        m_recordShapes = content.shapesPayload;
    return written;
}

void EditorSession::flushDraftToDisk(const QUuid& noteID)
{
    if (!m_draft.isDirty || m_draft.noteID != noteID)
        return;
    (void)writeDraft(noteID);
    log("flushDraftToDisk");
}

void EditorSession::saveFromExplicitCommand()
{
    const NoteRecord* note = activeNote();
    if (!note || !currentDraftMatchesSelection() || !m_isReadable)
        return;
    const QUuid noteID = note->id;
    cancelAutosave();
    if (!writeDraft(noteID))
        return;
    m_appState.appendVersionSnapshotLater(
        noteID, QStringLiteral("Manual Save"), [self = QPointer(this)](const auto& kept) {
            if (!kept || !self)
                return;
            self->log("manualSave");
            self->m_appState.services().notifications.post(AppCommandEvents::manualSaveCompleted);
        });
}

void EditorSession::selectionAboutToChange(const std::optional<QUuid>& from,
                                           const std::optional<QUuid>& to)
{
    if (m_appState.isAppTerminating())
        return;
    const auto target = m_draft.noteID ? m_draft.noteID : from ? from : m_lastStableEditingNoteID;
    if (target)
        flushDraftToDisk(*target);
    cancelAutosave();
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
    const auto target = m_draft.noteID ? m_draft.noteID : m_appState.selection().selectedNoteID();
    if (target)
        flushDraftToDisk(*target);
}

void EditorSession::recordChanged(const QUuid& noteID)
{
    if (m_isWriting || m_draft.noteID != noteID || !currentDraftMatchesSelection())
        return;
    const NoteRecord* note = m_appState.note(noteID);
    if (m_draft.isDirty) {
        // Shapes are also changed in the record itself; what the draft writes must not undo that.
        if (note && note->shapesPayload != m_recordShapes) {
            m_recordShapes = m_draft.shapesPayload = note->shapesPayload;
            m_wouldLoseFormatting.reset();
        }
        return;
    }
    // Its date alone doesn't tell: a restored version may come within the millisecond of a flush.
    if (note && EditorDraft::of(*note) != m_draft)
        syncDraftsFromSelection(false);
}

void EditorSession::syncDraftsFromSelection(bool resetFindUI)
{
    const bool wasDirty = m_draft.isDirty;
    leaveText();
    const NoteRecord* note = activeNote();
    m_draft = selectedDraft();
    m_boundTask.reset();
    m_boundGeneration.reset();
    m_recordShapes = m_draft.shapesPayload;
    if (note) {
        m_lastStableEditingNoteID = note->id;
        applyEditorProfile(note->id);
    }
    m_isReadable = !note || (note->body.isReadable() && m_draft.text().isReadable());
    showText();
    if (wasDirty != m_draft.isDirty)
        emit dirtyChanged(m_draft.isDirty);
    setRefusal(m_draft.isDirty ? std::optional(Refusal::NotAllowed) : std::nullopt);
    if (m_draft.isDirty && m_appState.canCreateOrEdit())
        scheduleAutosave();
    emit draftLoaded(resetFindUI);
    emit titleChanged();
    log(note ? "syncDraftsFromSelection.loaded" : "syncDraftsFromSelection.empty");
}

EditorDraft EditorSession::selectedDraft() const
{
    const NoteRecord* note = activeNote();
    if (!note)
        return {};
    const auto& refused = m_appState.refusedContents();
    const auto kept = refused.constFind(note->id);
    return kept == refused.cend() ? EditorDraft::of(*note) : EditorDraft::of(note->id, *kept);
}

void EditorSession::readWorkingValues()
{
    const UserDefaults& defaults = m_appState.services().defaults;
    m_mode = editorModeNamed(editorModeSetting.read(defaults));
    m_baseFont = TextFont{editorFontFamilySetting.read(defaults), 16};
    const double size = editorFontSizeSetting.read(defaults);
    if (size >= smallestFont && size <= largestFont)
        m_baseFont.size = size;
}

void EditorSession::applyEditorProfile(const QUuid& noteID)
{
    const auto profile = m_profiles.profile(noteID);
    if (!profile)
        return persistEditorProfileForActiveNote();
    const TextFont font = m_baseFont;
    {
        const QScopedValueRollback applies(m_appliesProfile, true);
        profile->makeCurrent(m_appState.services().defaults);
    }
    readWorkingValues();
    if (m_baseFont != font)
        emit baseFontChanged();
}

void EditorSession::persistEditorProfileForActiveNote()
{
    if (const auto selected = m_appState.selection().selectedNoteID())
        m_profiles.setProfile(*selected,
                              PerNoteEditorProfile::current(m_appState.services().defaults));
}

void EditorSession::setMode(EditorMode mode)
{
    editorModeSetting.write(m_appState.services().defaults, editorModeName(mode));
}

void EditorSession::settingChanged(const QString& key)
{
    const bool isMode = key == editorModeSetting.keyText();
    const bool isFont =
        key == editorFontFamilySetting.keyText() || key == editorFontSizeSetting.keyText();
    if ((!isMode && !isFont) || m_appliesProfile)
        return;
    persistEditorProfileForActiveNote();
    if (isMode) {
        leaveText();
        readWorkingValues();
        showText();
        return;
    }
    readWorkingValues();
    mergeTypingFont();
    emit baseFontChanged();
}

void EditorSession::log(const char* reason) const
{
    qCDebug(selectionSyncLog,
            "editorSelection reason=%s selectedDocumentID=%ls selectedDocumentTitle=%ls "
            "editorLoadedDocumentID=%ls bodyChars=%lld",
            reason, qUtf16Printable(idText(m_appState.selection().selectedNoteID())),
            qUtf16Printable(currentTitle()), qUtf16Printable(idText(m_draft.noteID)),
            qlonglong(m_draft.bodyPlain.size()));
}

} // namespace orvane
