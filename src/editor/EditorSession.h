// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/AppCommandEvents.h"
#include "core/AppState.h"
#include "editor/EditedTexts.h"
#include "editor/EditorDraft.h"
#include "editor/EditorSettings.h"
#include "editor/PerNoteEditorProfile.h"
#include "editor/RichFormsMaker.h"
#include "platform/NotificationCenter.h"
#include "text/NoteEditorTypingAttributesCodec.h"

#include <QObject>

namespace orvane {

/// The life of a pane's draft, from keystroke to disk. Follows the selection of `AppState`: loads
/// a draft when a note is selected, marks it dirty on each edit, writes it when no edit has come
/// for the autosave delay, and writes it at once before the selection changes, the project closes
/// or the program ends. A dirty draft is never overwritten by a change of the record; a clean one
/// follows it. Main thread.
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
    /// The "Save" command: writes the draft whether it is dirty or not and keeps a version.
    void saveFromExplicitCommand();
    /// Loads the draft from the selected note; what was not written is dropped.
    void syncDraftsFromSelection(bool resetFindUI);

signals:
    /// `gateway()` is about to be another one, or to hold another text: whoever works on it lets go
    /// of it now.
    void textAboutToBeReplaced();
    /// Another text or another mode. The text before may be gone after this.
    void textReplaced();
    /// Another draft, or the same note's with other contents.
    void draftLoaded(bool resetFindUI);
    void bodyEdited();
    void dirtyChanged(bool dirty);
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
    void writeDraft(const QUuid& noteID);
    void setDirty(bool dirty);

    void readWorkingValues();
    void applyEditorProfile(const QUuid& noteID);
    void persistEditorProfileForActiveNote();

    void showText();
    void leaveText();
    void connectText();
    [[nodiscard]] std::unique_ptr<EditedText> loadText() const;
    void onTextChanged(const TextChange& change);
    void eraseRichForms(const TextChange& change);
    [[nodiscard]] bool allowsEdit();
    [[nodiscard]] bool acceptsFormattingLoss();
    void emitTypingAttributesChange();
    [[nodiscard]] TypingAttributes typingAttributes() const;
    void mergeTypingFont();
    void pullPlain();
    void pullText();
    [[nodiscard]] bool isLong() const;
    /// Begins to make the forms of a long text, unless that has begun.
    void prepareForms();
    void formsFinished(quint64 generation);
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
    NotificationCenter::Observation m_saveCommand;

    EditedTexts m_texts;
    std::unique_ptr<EditedText> m_text;
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
    bool m_isAsking = false;
    std::optional<bool> m_wouldLoseFormatting;
    TypingAttributes m_lastTypingAttributes;
    std::optional<QByteArray> m_lastEmittedTypingAttributes;
};

/// No autosave comes sooner than this after an edit.
inline constexpr std::chrono::milliseconds shortestAutosaveDelay{300};

} // namespace orvane
