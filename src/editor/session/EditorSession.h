// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "commands/AppCommandEvents.h"
#include "core/state/AppState.h"
#include "editor/session/EditorDraft.h"
#include "editor/session/OpenTexts.h"
#include "editor/session/PerNoteEditorProfile.h"
#include "editor/session/RichFormsMaker.h"
#include "editor/session/SavingStates.h"
#include "editor/view/EditorSettings.h"
#include "platform/NotificationCenter.h"
#include "text/archive/NoteEditorTypingAttributesCodec.h"

#include <QObject>

namespace orvane {

/// What to do with a search in the text when another draft comes.
enum class FindControls { keep, reset };

/// The life of a pane's draft, from keystroke to disk. Shows the note that it is told to show:
/// loads its draft, marks it dirty on each edit, writes it when no edit has come for the autosave
/// delay and at the latest `longestUnsaved` after the first one, and writes it at once before
/// another note is shown, the project closes or the program ends. A dirty draft is never
/// overwritten by a change of the record, only its shapes follow; a clean one follows it. A draft
/// that is refused stays dirty, and comes back with its note for as long as the project is open.
/// Main thread.
///
/// Mode and font are the note's own, kept in its profile.
///
/// The text itself stands behind `gateway()`, where views show and change it. What is stored of it
/// is made when it is needed and not with each keystroke.
class EditorSession : public QObject {
    Q_OBJECT
public:
    explicit EditorSession(AppState& appState, QObject* parent = nullptr);
    ~EditorSession() override;

    /// The draft with its text brought up to date.
    const EditorDraft& draft();
    [[nodiscard]] std::optional<QUuid> noteID() const { return m_draft.noteID; }
    [[nodiscard]] bool isDirty() const { return m_draft.isDirty; }
    /// Why the dirty draft was not taken when it was last to be written.
    [[nodiscard]] std::optional<Refusal> refusal() const { return m_refusal; }
    [[nodiscard]] QString currentTitle() const;
    QString currentBodyPlain();
    /// Whether anything may be edited now.
    [[nodiscard]] bool isEditable() const;
    /// Whether the note lies in the Trash, where it can't be changed.
    [[nodiscard]] bool isTrashed() const;
    /// False when what is stored of the note's text can't be read now. It is then left alone.
    [[nodiscard]] bool isReadable() const { return m_stage != Stage::unreadable; }

    // --- Which note ---

    /// Another note is about to be shown: writes the draft and asks for no autosave any more.
    void prepareToLeave();
    /// Shows a note, or none; the one that is shown already stays as it is.
    void show(const std::optional<QUuid>& noteID);
    /// From now on the working keys of the user defaults are those of the note shown here: its mode
    /// and font are written to them, and what somebody else writes there changes the note's.
    /// Without this the session leaves them alone.
    void holdWorkingKeys();
    /// Loads the draft of the note, also of the one that is shown; what was not written is dropped,
    /// unless it was refused.
    void load(const std::optional<QUuid>& noteID, FindControls find);

    // --- Text and mode ---

    /// The text of the draft, with its selection and undo; an empty one without a note. Another one
    /// after `textReplaced`.
    [[nodiscard]] EditGateway& gateway() { return m_text->gateway; }
    [[nodiscard]] EditorMode mode() const { return m_mode; }
    /// Changes the mode, and with it the note's profile.
    void setMode(EditorMode mode);
    /// The font of the note's profile.
    [[nodiscard]] const TextFont& baseFont() const { return m_baseFont; }
    /// By which the headings of this text are told.
    [[nodiscard]] HeadingSizes headingSizes() const;

    // --- Edits. Without a note they do nothing. ---
    void setTitle(const QString& title);
    void setShapes(const std::optional<Blob>& payload);

    /// Writes the draft now if it is dirty and belongs to `noteID`.
    void flushDraftToDisk(const QUuid& noteID);
    /// The "Save" command: writes the draft whether it is dirty or not and keeps a version. Tells
    /// `manualSaveCompleted` once both are on the disk.
    void saveFromExplicitCommand();

signals:
    /// `gateway()` is about to be another one, or to hold another text: whoever works on it lets go
    /// of it now.
    void textAboutToBeReplaced();
    /// Another text or another mode. The text before may be gone after this.
    void textReplaced();
    /// Another draft, or the same note's with other contents.
    void draftLoaded(orvane::FindControls find);
    /// One edit has brought a text so long that it was written at once. Comes before views lay it
    /// out.
    void longTextWritten();
    void bodyEdited();
    /// The note went to the Trash or came out of it.
    void trashedChanged();
    void dirtyChanged(bool dirty);
    void refusalChanged();
    void titleChanged();
    /// The font of the shown note.
    void baseFontChanged();

private:
    /// What there is to edit.
    enum class Stage { empty, unreadable, open };
    /// What the session does itself, so that what follows from it isn't taken for another's doing.
    enum class Activity { none, writing, mergingFont, asking };

    void recordChanged(const QUuid& noteID);
    void settingChanged(const QString& key);
    [[nodiscard]] bool mayEdit() const { return m_stage == Stage::open && !isTrashed(); }
    void markDirty();
    void scheduleAutosave();
    void cancelAutosave();
    void runAutosaveToDisk();
    void boundUnsaved();
    void stopMakingForBound();
    void flushDraft();
    Accepted writeDraft(const QUuid& noteID);
    Accepted write(const QUuid& noteID, const NoteContent& content);
    void setDirty(bool dirty);
    void setRefusal(std::optional<Refusal> refusal);
    [[nodiscard]] static EditorDraft draftOf(const AppState& appState, const NoteRecord& note);

    void takeValues(const PerNoteEditorProfile& profile);
    void writeWorkingKeys();
    [[nodiscard]] std::optional<PerNoteEditorProfile> profileOf(const QUuid& noteID);
    void showProfileOf(const QUuid& noteID);
    void changeProfile(const PerNoteEditorProfile& profile);

    void showText();
    void leaveText();
    void connectText();
    [[nodiscard]] std::unique_ptr<OpenText> loadText() const;
    void onTextChanged(const TextChange& change);
    void eraseRichForms(const TextChange& change);
    [[nodiscard]] bool allowsEdit();
    [[nodiscard]] bool acceptsFormattingLoss();
    [[nodiscard]] bool keepsFormattedVersion();
    void typeLater(const QString& words);
    void offerWords(QString words);
    void emitTypingAttributesChange();
    [[nodiscard]] TypingAttributes typingAttributes() const;
    void mergeTypingFont();
    void pullPlain();
    void pullText();
    [[nodiscard]] bool isLong() const;
    /// Whether forms must be made that take longer than a keystroke may.
    [[nodiscard]] bool needsLongForms() const;
    /// Begins to make the forms of a long text, unless that has begun.
    void prepareForms();
    void formsFinished(quint64 generation);
    void writeForms(const RichForms& forms);
    [[nodiscard]] NoteImages noteImages(const QList<ImageFile>& files);
    void releaseImages(const QUuid& noteID);
    [[nodiscard]] TextForm form() const
    {
        return m_mode == EditorMode::richText ? TextForm::rich : TextForm::plain;
    }

    void log(const char* reason) const;

    AppState& m_appState;
    PerNoteEditorProfiles m_profiles;
    bool m_holdsWorkingKeys = false;
    PerNoteEditorProfile m_profile;
    // What the profile says.
    EditorMode m_mode = EditorMode::plainText;
    TextFont m_baseFont;

    EditorDraft m_draft;
    Stage m_stage = Stage::empty;
    Activity m_activity = Activity::none;
    Autosave m_autosave;
    UnsavedBound m_bound;
    std::optional<Refusal> m_refusal;
    /// As the record had them when it was last looked at.
    std::optional<Blob> m_recordShapes;
    NotificationCenter::Observation m_saveCommand;

    OpenTexts m_texts;
    std::unique_ptr<OpenText> m_text;
    QList<QMetaObject::Connection> m_textConnections;
    std::optional<EditorMode> m_shownMode;
    DraftParts m_behind;
    /// Counts the changes of rich texts.
    quint64 m_generation = 0;
    RichFormsMaker m_formsMaker;
    QList<ImageFile> m_imagesInMemory;
    std::optional<bool> m_wouldLoseFormatting;
    TypingAttributes m_lastTypingAttributes;
    std::optional<QByteArray> m_lastEmittedTypingAttributes;
};

/// No autosave comes sooner than this after an edit.
inline constexpr std::chrono::milliseconds shortestAutosaveDelay{300};
/// While autosave is on an edit that brings so many UTF-16 units is written before it is shown:
/// whatever laying it out takes, it is not lost.
inline constexpr qsizetype writtenBeforeShown = 100'000;
/// While autosave is on nothing that was typed is longer in memory alone, however long the delay is
/// and however fast one types. What is stored of a long rich text takes time to make, so that
/// begins earlier.
inline constexpr std::chrono::milliseconds longestUnsaved{10'000};
inline constexpr std::chrono::milliseconds longestUnsavedOfLongText{5'000};

} // namespace orvane
