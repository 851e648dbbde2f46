// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/SurfacePanel.h"
#include "editor/formatting/KeyTextOf.h"
#include "editor/pane/WritingLibrary.h"
#include "editor/session/EditorSession.h"

#include <QSet>

class QLineEdit;
class QStackedLayout;
class QTimer;

namespace orvane {

class EditorTextHost;
class EditorView;
class NoteLinks;
class PasteStrip;
class PageTools;
class SlowNotes;
class StatusStrip;
class WritingTools;

/// The editor pane: title field, text and status strip of its session's note. Owns the session that
/// takes each edit to the disk.
class EditorPaneView : public SurfacePanel {
    Q_OBJECT
public:
    EditorPaneView(AppState& appState, Look& look, QWidget* parent = nullptr);
    ~EditorPaneView() override;

    [[nodiscard]] EditorSession& session() { return m_session; }
    /// Where the text of the note is shown; the same view for all notes and modes.
    [[nodiscard]] EditorView& textView() const;
    /// The place of the formatting bar; not visible where there is none.
    [[nodiscard]] QWidget& formattingBar() const;
    /// The place of what the status strip offers; not visible while there is nothing.
    [[nodiscard]] QWidget& offerPart() const;
    /// Whether the caret is in a cell of a table.
    [[nodiscard]] bool isInTable() const;
    /// What stands in the place of title and text while no note is shown; made when it is first
    /// seen.
    void setMakeEmptyState(std::function<QWidget*(QWidget* parent)> make);
    /// Puts the caret into the title, all of it selected, or into the text.
    void focusTitle();
    void focusText();
    /// As a click on it does: shows the note, and the place in it, or opens it outside.
    void openLink(const QString& address);
    /// For the tool tips of controls that post commands; again whenever keys have changed.
    void setKeyTexts(const KeyTextOf& keyTextOf);

signals:
    /// The person wants to make or change the link at the selection, which may be done.
    void linkSheetWanted();
    /// The text view is about to show another text, or the same in another mode: tools that work
    /// on it let go of its gateway now.
    void textAboutToChange();
    /// The text view shows another note, another text of the same note or another mode; the session
    /// tells which.
    void textChanged();
    /// The words and characters of the text as it is typed, some time after the last key.
    void counted(const QUuid& note, int words, qsizetype characters);
    /// The title as it is while it stands above what is seen; empty while it is in sight.
    void titleOutOfSight(const QString& title);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void focusBeforeText();
    [[nodiscard]] QWidget* makePage();
    void showPageOrEmptiness();
    void connectSession();
    void connectTools();
    void applyHostLook();
    void placeTitle();
    void loadDraft();
    void updateCounts();
    void showZoom();
    void tellTitle();
    void placeCaret();
    void rememberCaret();
    void updateSavingState();
    void updateEditable();
    void updateMode();
    void settingChanged(const QString& key);
    void observeModeCommands();
    void offerFormatting(const QByteArray& command, const std::function<void()>& act);

    AppState& m_appState;
    EditorSession m_session;
    WritingLibrary m_library;
    QStackedLayout* m_stack;
    QWidget* m_head = nullptr;
    QLineEdit* m_title = nullptr;
    EditorTextHost* m_text = nullptr;
    std::unique_ptr<WritingTools> m_tools;
    std::function<QWidget*(QWidget*)> m_makeEmptyState;
    std::unique_ptr<SlowNotes> m_slowNotes;
    StatusStrip* m_status;
    QTimer* m_countTimer;
    std::unique_ptr<NoteLinks> m_links;
    PasteStrip* m_pasteStrip = nullptr;
    std::unique_ptr<PageTools> m_pageTools;
    /// The note whose caret is remembered once it is left, and those that have come to theirs.
    std::optional<QUuid> m_caretNote;
    QSet<QUuid> m_placed;
    /// Notes to which formatting was offered since the program has started.
    QSet<QUuid> m_offered;
    std::vector<NotificationCenter::Observation> m_observations;
};

} // namespace orvane
