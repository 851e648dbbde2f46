// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/AppCommandEvents.h"
#include "core/AppState.h"
#include "editor/EditorDraft.h"
#include "platform/NotificationCenter.h"

#include <QObject>

#include <functional>

namespace orvane {

/// The life of a pane's draft, from keystroke to disk. Follows the selection of `AppState`: loads
/// a draft when a note is selected, marks it dirty on each edit, writes it when no edit has come
/// for the autosave delay, and writes it at once before the selection changes, the project closes
/// or the program ends. A dirty draft is never overwritten by a change of the record; a clean one
/// follows it. Main thread.
///
/// The text itself stays with the text view; the session fetches it through the body source when
/// it is needed, so that a keystroke costs the same whatever the length of the note.
class EditorSession : public QObject {
    Q_OBJECT
public:
    explicit EditorSession(AppState& appState, QObject* parent = nullptr);
    ~EditorSession() override;

    /// Where the text of the body stands while it is edited. Asked only after `bodyEdited`.
    void setBodySource(std::function<QString()> source);

    /// The draft with the body brought up to date.
    const EditorDraft& draft();
    [[nodiscard]] std::optional<QUuid> noteID() const { return m_draft.noteID; }
    [[nodiscard]] bool isDirty() const { return m_draft.isDirty; }
    [[nodiscard]] QString currentTitle() const;
    QString currentBodyPlain();
    /// Whether anything may be edited now.
    [[nodiscard]] bool isEditable() const;

    // --- Edits. Without a selected note they do nothing. ---
    void bodyEdited();
    void setTitle(const QString& title);
    void setTypingAttributes(const std::optional<Blob>& payload);
    void setShapes(const std::optional<Blob>& payload);

    /// Writes the draft now if it is dirty and belongs to `noteID`.
    void flushDraftToDisk(const QUuid& noteID);
    /// The "Save" command: writes the draft whether it is dirty or not and keeps a version.
    void saveFromExplicitCommand();
    /// Loads the draft from the selected note; what was not written is dropped.
    void syncDraftsFromSelection(bool resetFindUI);

signals:
    /// Another draft, or the same note's with other contents: views load it from `draft()`.
    void draftLoaded(bool resetFindUI);
    void dirtyChanged(bool dirty);
    void titleChanged();

private:
    void selectionAboutToChange(const std::optional<QUuid>& from, const std::optional<QUuid>& to);
    void selectionChanged();
    void recordChanged(const QUuid& noteID);
    void flushBeforeClosing();
    bool beginEdit(bool resetFindUI);
    void markDirty();
    void pullBody();
    void scheduleAutosave();
    void runAutosaveToDisk();
    void writeDraft(const QUuid& noteID);
    void setDirty(bool dirty);
    void log(const char* reason) const;
    [[nodiscard]] bool currentDraftMatchesSelection() const;
    [[nodiscard]] const NoteRecord* activeNote() const;

    AppState& m_appState;
    std::function<QString()> m_bodySource;
    EditorDraft m_draft;
    bool m_bodyIsStale = false;
    Timestamp m_loadedUpdatedAt;
    std::optional<QUuid> m_lastStableEditingNoteID;
    std::unique_ptr<Clock::Delay> m_autosaveTask;
    NotificationCenter::Observation m_saveCommand;
};

/// settings.general.autosaveEnabled and settings.general.autoSaveSeconds.
inline constexpr Setting<bool> autosaveEnabledSetting{u"settings.general.autosaveEnabled", true};
inline constexpr Setting<double> autoSaveSecondsSetting{u"settings.general.autoSaveSeconds", 1.5};
/// No autosave comes sooner than this after an edit.
inline constexpr std::chrono::milliseconds shortestAutosaveDelay{300};

} // namespace orvane
