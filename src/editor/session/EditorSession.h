// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "commands/AppCommandEvents.h"
#include "core/state/AppState.h"
#include "editor/session/EditorDraft.h"
#include "editor/session/OpenTexts.h"
#include "editor/session/PerNoteEditorProfile.h"
#include "editor/session/RichFormsMaker.h"
#include "editor/view/EditorSettings.h"
#include "platform/NotificationCenter.h"
#include "text/archive/NoteEditorTypingAttributesCodec.h"

#include <QObject>

namespace orvane {

/// The life of a pane's draft, from keystroke to disk. Follows the selection of `AppState`: loads
/// a draft when a note is selected, marks it dirty on each edit, writes it when no edit has come
/// for the autosave delay and at the latest `longestUnsaved` after the first one, and writes it at
/// once before the selection changes, the project closes or the program ends. A dirty draft is
/// never overwritten by a change of the record, only its shapes follow; a clean one follows it. A
/// draft that is refused stays dirty, and comes back with its note for as long as the project is
/// open. Main thread.
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
    /// False when what is stored of the note's text can't be read now. It is then left alone.
    [[nodiscard]] bool isReadable() const { return m_isReadable; }

    // --- Text and mode ---

    /// The text of the draft, with its selection and undo; an empty one without a note. Another one
    /// after `textReplaced`.
    [[nodiscard]] EditGateway& gateway() { return m_text->gateway; }
    [[nodiscard]] EditorMode mode() const { return m_mode; }
    /// Changes the working value of the mode, and with it the note's profile.
    void setMode(EditorMode mode);
    /// The font of the note's profile.
    [[nodiscard]] const TextFont& baseFont() const { return m_baseFont; }

    // --- Edits. Without a selected note they do nothing. ---
    void setTitle(const QString& title);
    void setShapes(const std::optional<Blob>& payload);

    /// Writes the draft now if it is dirty and belongs to `noteID`.
    void flushDraftToDisk(const QUuid& noteID);
    /// The "Save" command: writes the draft whether it is dirty or not and keeps a version. Tells
    /// `manualSaveCompleted` once both are on the disk.
    void saveFromExplicitCommand();
    /// Loads the draft from the selected note; what was not written is dropped, unless it was
    /// refused.
    void syncDraftsFromSelection(bool resetFindUI);

signals:
    /// `gateway()` is about to be another one, or to hold another text: whoever works on it lets go
    /// of it now.
    void textAboutToBeReplaced();
    /// Another text or another mode. The text before may be gone after this.
    void textReplaced();
    /// Another draft, or the same note's with other contents.
    void draftLoaded(bool resetFindUI);
    /// One edit has brought a text so long that it was written at once. Comes before views lay it
    /// out.
    void longTextWritten();
    void bodyEdited();
    void dirtyChanged(bool dirty);
    void refusalChanged();
    void titleChanged();
    /// The font of the shown note.
    void baseFontChanged();

private:
    void selectionAboutToChange(const std::optional<QUuid>& from, const std::optional<QUuid>& to);
    void selectionChanged();
    void recordChanged(const QUuid& noteID);
    void settingChanged(const QString& key);
    void flushBeforeClosing();
    bool beginEdit(bool resetFindUI);
    void markDirty();
    void scheduleAutosave();
    void cancelAutosave();
    void runAutosaveToDisk();
    void boundUnsaved();
    Accepted writeDraft(const QUuid& noteID);
    Accepted write(const QUuid& noteID, const NoteContent& content);
    void setDirty(bool dirty);
    void setRefusal(std::optional<Refusal> refusal);
    [[nodiscard]] EditorDraft selectedDraft() const;

    void readWorkingValues();
    void applyEditorProfile(const QUuid& noteID);
    void persistEditorProfileForActiveNote();

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
    /// Begins to make the forms of a long text, unless that has begun.
    void prepareForms();
    void formsFinished(quint64 generation);
    void writeForms(const RichForms& forms);
    [[nodiscard]] TextForm form() const
    {
        return m_mode == EditorMode::richText ? TextForm::rich : TextForm::plain;
    }

    void log(const char* reason) const;
    [[nodiscard]] bool currentDraftMatchesSelection() const;
    [[nodiscard]] const NoteRecord* activeNote() const;

    AppState& m_appState;
    PerNoteEditorProfiles m_profiles;
    bool m_appliesProfile = false;
    EditorMode m_mode = EditorMode::plainText;
    TextFont m_baseFont;

    EditorDraft m_draft;
    std::optional<QUuid> m_lastStableEditingNoteID;
    std::unique_ptr<Clock::Delay> m_autosaveTask;
    /// Runs from the first edit that is not on the disk, however many follow.
    std::unique_ptr<Clock::Delay> m_boundTask;
    std::optional<Refusal> m_refusal;
    /// As the record had them when it was last looked at.
    std::optional<Blob> m_recordShapes;
    NotificationCenter::Observation m_saveCommand;

    OpenTexts m_texts;
    std::unique_ptr<OpenText> m_text;
    QList<QMetaObject::Connection> m_textConnections;
    std::optional<EditorMode> m_shownMode;
    bool m_isReadable = true;
    bool m_isWriting = false;
    bool m_isMerging = false;
    bool m_plainIsStale = false;
    bool m_formsAreStale = false;
    /// Counts the changes of rich texts.
    quint64 m_generation = 0;
    RichFormsMaker m_formsMaker;
    std::unique_ptr<Clock::Delay> m_prepareTask;
    /// The delay is over; the draft is written when its forms are made.
    bool m_writesWhenMade = false;
    /// The generation whose forms are written when they are made, whatever is typed meanwhile.
    std::optional<quint64> m_boundGeneration;
    bool m_isAsking = false;
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
