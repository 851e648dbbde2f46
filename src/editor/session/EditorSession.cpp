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
constexpr double defaultFontSize = 16;

std::chrono::milliseconds autosaveDelay(const UserDefaults& defaults)
{
    constexpr double longest = 86'400;
    const double asked = autoSaveSecondsSetting.read(defaults);
    const double seconds = std::isnan(asked) ? 0 : std::min(asked, longest);
    return std::max(shortestAutosaveDelay, std::chrono::milliseconds(qint64(seconds * 1000)));
}

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
    connect(&appState, &AppState::notebookChanged, this, [this](const NotebookChange& change) {
        constexpr RecordAspects drafted =
            RecordAspect::Title | RecordAspect::Text | RecordAspect::Shapes;
        if (m_draft.noteID && change.ofNote(*m_draft.noteID) & drafted)
            recordChanged(*m_draft.noteID);
        if (m_draft.noteID && change.ofNote(*m_draft.noteID) & RecordAspect::Place)
            emit trashedChanged();
    });
    connect(&appState.projectSession(), &ProjectSession::projectMayBeLeft, this,
            &EditorSession::flushDraft);
    connect(&appState.projectSession(), &ProjectSession::projectAboutToClose, this,
            &EditorSession::flushDraft);
    connect(&appState.projectSession(), &ProjectSession::willTerminate, this,
            &EditorSession::flushDraft);
    connect(&appState, &AppState::noteAboutToBeReplaced, this, &EditorSession::flushDraftToDisk);
    connect(&appState.services().defaults, &UserDefaults::changed, this,
            &EditorSession::settingChanged);
    m_saveCommand = appState.services().notifications.observe(
        AppCommandEvents::saveDocument, [this](const NoPayload&) { saveFromExplicitCommand(); });
    connect(&m_formsMaker, &RichFormsMaker::finished, this, &EditorSession::formsFinished);
    takeValues(PerNoteEditorProfile::current(appState.services().defaults));
    showText();
}

EditorSession::~EditorSession() = default;

const EditorDraft& EditorSession::draft()
{
    pullText();
    return m_draft;
}

QString EditorSession::currentTitle() const
{
    return m_draft.title;
}

QString EditorSession::currentBodyPlain()
{
    pullPlain();
    return m_draft.bodyPlain;
}

bool EditorSession::isEditable() const
{
    return mayEdit() && m_appState.canCreateOrEdit();
}

bool EditorSession::isTrashed() const
{
    const NoteRecord* note = m_draft.noteID ? m_appState.note(*m_draft.noteID) : nullptr;
    return note && note->folderID == FolderRecord::trashFolderID;
}

void EditorSession::setTitle(const QString& title)
{
    if (!mayEdit())
        return;
    m_draft.title = title;
    setDirty(true);
    m_appState.applyLiveTitle(*m_draft.noteID, title);
    scheduleAutosave();
    log("titleEdited");
}

void EditorSession::setShapes(const std::optional<Blob>& payload)
{
    if (!mayEdit())
        return;
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
    if (!dirty)
        m_bound = BoundState::Off{};
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
    m_autosave = AutosaveState::Idle{};
}

void EditorSession::scheduleAutosave()
{
    const Services& services = m_appState.services();
    AutosaveState::Delayed delayed;
    // A pause is when making the forms of a long text disturbs nobody; at a flush they are there.
    if (needsLongForms())
        delayed.prepare = services.clock.after(shortestAutosaveDelay, [this] { prepareForms(); });
    const bool isOn = autosaveEnabledSetting.read(services.defaults);
    if (isOn)
        delayed.write =
            services.clock.after(autosaveDelay(services.defaults), [this] { runAutosaveToDisk(); });
    m_autosave = std::move(delayed);
    if (isOn && std::holds_alternative<BoundState::Off>(m_bound))
        m_bound = BoundState::Running{
            services.clock.after(needsLongForms() ? longestUnsavedOfLongText : longestUnsaved,
                                 [this] { boundUnsaved(); })};
}

void EditorSession::boundUnsaved()
{
    auto* making = std::get_if<BoundState::MakingForms>(&m_bound);
    if (making)
        making->over.reset();
    else
        m_bound = BoundState::Off{};
    const Services& services = m_appState.services();
    if (!m_draft.isDirty || !autosaveEnabledSetting.read(services.defaults))
        return;
    if (!needsLongForms()) {
        (void)writeDraft(*m_draft.noteID);
        log("autosave.bound");
        return;
    }
    if (making)
        return; // its forms take longer than this
    prepareForms();
    m_bound = BoundState::MakingForms{
        m_generation, services.clock.after(longestUnsavedOfLongText, [this] { boundUnsaved(); })};
    if (m_formsMaker.hasFinished(m_generation))
        formsFinished(m_generation);
}

void EditorSession::stopMakingForBound()
{
    auto* making = std::get_if<BoundState::MakingForms>(&m_bound);
    if (!making)
        return;
    auto over = std::move(making->over);
    if (over)
        m_bound = BoundState::Running{std::move(over)};
    else
        m_bound = BoundState::Off{};
}

void EditorSession::runAutosaveToDisk()
{
    if (!m_draft.isDirty || !m_draft.noteID)
        return;
    prepareForms();
    if (needsLongForms() && !m_formsMaker.hasFinished(m_generation)) {
        m_autosave = AutosaveState::AwaitingForms{};
        return;
    }
    (void)writeDraft(*m_draft.noteID);
    log("autosave");
}

Accepted EditorSession::writeDraft(const QUuid& noteID)
{
    pullText();
    if (std::holds_alternative<AutosaveState::AwaitingForms>(m_autosave))
        cancelAutosave();
    const auto written = write(noteID, m_draft.content());
    if (!m_refusal)
        setDirty(false);
    else if (std::holds_alternative<BoundState::Running>(m_bound))
        m_bound = BoundState::Off{}; // asked for again with the next edit
    return written;
}

Accepted EditorSession::write(const QUuid& noteID, const NoteContent& content)
{
    // What is written is what stands here already.
    const QScopedValueRollback writes(m_activity, Activity::writing);
    const auto written = m_appState.updateNote(noteID, content);
    // What only the disk didn't take is in the record, which is written again when saving works.
    const bool isTaken = written || written.error() == Refusal::NotStored;
    setRefusal(isTaken ? std::nullopt : std::optional(written.error()));
    if (isTaken) {
        m_recordShapes = content.shapesPayload;
        releaseImages(noteID);
        m_appState.keepEditorProfile(noteID, m_profile.text());
    }
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
    if (!mayEdit())
        return;
    const QUuid noteID = *m_draft.noteID;
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

void EditorSession::prepareToLeave()
{
    flushDraft();
    cancelAutosave();
}

void EditorSession::flushDraft()
{
    if (m_draft.noteID)
        flushDraftToDisk(*m_draft.noteID);
}

void EditorSession::recordChanged(const QUuid& noteID)
{
    if (m_activity == Activity::writing)
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
        load(noteID, FindControls::keep);
}

void EditorSession::show(const std::optional<QUuid>& noteID)
{
    if (noteID != m_draft.noteID)
        load(noteID, FindControls::reset);
}

void EditorSession::load(const std::optional<QUuid>& noteID, FindControls find)
{
    const bool wasDirty = m_draft.isDirty;
    leaveText();
    const NoteRecord* note = noteID ? m_appState.note(*noteID) : nullptr;
    m_draft = note ? draftOf(m_appState, *note) : EditorDraft();
    m_bound = BoundState::Off{};
    m_recordShapes = m_draft.shapesPayload;
    m_stage = !note                                                    ? Stage::empty
              : note->body.isReadable() && m_draft.text().isReadable() ? Stage::open
                                                                       : Stage::unreadable;
    if (note)
        showProfileOf(note->id);
    showText();
    if (wasDirty != m_draft.isDirty)
        emit dirtyChanged(m_draft.isDirty);
    setRefusal(m_draft.isDirty ? std::optional(Refusal::NotAllowed) : std::nullopt);
    if (m_draft.isDirty && m_appState.canCreateOrEdit())
        scheduleAutosave();
    emit draftLoaded(find);
    emit titleChanged();
    log(note ? "load.note" : "load.empty");
}

EditorDraft EditorSession::draftOf(const AppState& appState, const NoteRecord& note)
{
    const auto& refused = appState.refusedContents();
    const auto kept = refused.constFind(note.id);
    return kept == refused.cend() ? EditorDraft::of(note) : EditorDraft::of(note.id, *kept);
}

void EditorSession::takeValues(const PerNoteEditorProfile& profile)
{
    m_profile = profile;
    m_mode = editorModeNamed(profile.mode);
    const bool isSize = profile.fontSize >= smallestFont && profile.fontSize <= largestFont;
    m_baseFont = TextFont{profile.fontFamily, isSize ? profile.fontSize : defaultFontSize};
}

// What stands with the note counts first, then what this machine remembers. A note that nothing is
// known of and that has a rich text was written as one.
std::optional<PerNoteEditorProfile> EditorSession::profileOf(const QUuid& noteID)
{
    const NoteRecord* note = m_appState.note(noteID);
    if (note && note->editorProfile) {
        if (auto kept = PerNoteEditorProfile::of(*note->editorProfile))
            return kept;
    }
    if (auto known = m_profiles.profile(noteID))
        return known;
    if (!note || !note->richContentPayload)
        return std::nullopt;
    PerNoteEditorProfile rich = m_profile;
    rich.mode = rawValue(EditorMode::richText);
    return rich;
}

void EditorSession::showProfileOf(const QUuid& noteID)
{
    const auto profile = profileOf(noteID);
    m_profiles.setProfile(noteID, profile.value_or(m_profile));
    if (!profile)
        return;
    const TextFont font = m_baseFont;
    takeValues(*profile);
    writeWorkingKeys(); // read by others once the text is shown
    if (m_baseFont != font)
        emit baseFontChanged();
}

void EditorSession::changeProfile(const PerNoteEditorProfile& profile)
{
    if (profile == m_profile)
        return;
    if (m_draft.noteID) {
        m_profiles.setProfile(*m_draft.noteID, profile);
        m_appState.keepEditorProfile(*m_draft.noteID, profile.text());
    }
    const bool isOtherMode = profile.mode != m_profile.mode;
    const TextFont font = m_baseFont;
    if (isOtherMode)
        leaveText();
    takeValues(profile);
    if (isOtherMode)
        showText();
    if (m_baseFont == font)
        return;
    mergeTypingFont();
    emit baseFontChanged();
}

void EditorSession::setMode(EditorMode mode)
{
    PerNoteEditorProfile profile = m_profile;
    profile.mode = rawValue(mode);
    changeProfile(profile);
    writeWorkingKeys();
}

void EditorSession::holdWorkingKeys()
{
    m_holdsWorkingKeys = true;
    if (m_draft.noteID)
        writeWorkingKeys();
    else
        takeValues(PerNoteEditorProfile::current(m_appState.services().defaults));
}

void EditorSession::writeWorkingKeys()
{
    if (m_holdsWorkingKeys)
        m_profile.makeCurrent(m_appState.services().defaults);
}

// Of the three keys only the one that changed: the session writes its own one after another.
void EditorSession::settingChanged(const QString& key)
{
    if (!m_holdsWorkingKeys)
        return;
    const UserDefaults& defaults = m_appState.services().defaults;
    PerNoteEditorProfile profile = m_profile;
    if (key == editorModeSetting.keyText())
        profile.mode = editorModeSetting.read(defaults);
    else if (key == editorFontFamilySetting.keyText())
        profile.fontFamily = editorFontFamilySetting.read(defaults);
    else if (key == editorFontSizeSetting.keyText())
        profile.fontSize = editorFontSizeSetting.read(defaults);
    changeProfile(profile);
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
