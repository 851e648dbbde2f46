// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/Look.h"
#include "editor/find/FindSession.h"
#include "editor/find/FindStrip.h"
#include "editor/formatting/FormattingBarSlot.h"
#include "editor/formatting/FormattingTools.h"
#include "editor/images/ImageTools.h"
#include "editor/lists/ListEditing.h"
#include "editor/markdown/MarkdownHighlighting.h"
#include "editor/pane/CommandReceiver.h"
#include "editor/pane/WritingLibrary.h"
#include "editor/spelling/SpellingMarks.h"
#include "editor/tables/TableTools.h"
#include "editor/writing/WritingBehaviours.h"

namespace orvane {

class EditGateway;
class EditorView;
class StripMenuButton;

/// Everything that helps writing in one text view beside the typing itself: finding and replacing,
/// formatting, lists, Markdown, spelling and what a writer feels, each in the modes that it is for.
/// It wears the look, listens to the commands of the program and to their keys, and is told what
/// the view shows. Main thread.
class WritingTools : public QObject {
    Q_OBJECT
public:
    /// Keys work wherever the keyboard is in `pane`, which becomes the parent of the find strip.
    /// All arguments outlive it.
    WritingTools(EditorView& view, WritingLibrary& library, const Services& services, Look& look,
                 QWidget& pane);

    /// To be placed by the owner, below the text.
    [[nodiscard]] FindStrip& findStrip() { return *m_strip; }
    /// To be placed by the owner, above the text.
    [[nodiscard]] FormattingBarSlot& formattingBar() { return *m_bar; }
    /// The language of the note, for the status strip. Hidden where there is no choice.
    [[nodiscard]] StripMenuButton* languageButton() { return m_language; }

    /// Whether the caret is in a cell of a table.
    [[nodiscard]] bool isInTable() const { return m_tables.isInTable(); }

    /// Before `text` is shown by the view, or after it is written in another mode: what is drawn of
    /// it from the first frame on.
    void prepareText(EditGateway& text, EditorMode mode);
    /// After the text of `note` has been put into the view; nothing for no note. The find strip
    /// stays as it is.
    void showText(const std::optional<QUuid>& note);
    /// Before the text in the view goes.
    void leaveText();

    /// The "Find" command: opens the strip, or goes to it, or closes it where the keyboard is in it
    /// already.
    void toggleFind();
    void openFind(FindStrip::Controls controls);
    [[nodiscard]] ImageTools& images() { return m_images; }

signals:
    /// Formatting was asked for in a plain note. `act` does it, once the note is rich.
    void formattingRefused(const QByteArray& command, const std::function<void()>& act);

private:
    void makeKeys(QWidget& pane, NotificationCenter& notifications);
    void observeCommands(NotificationCenter& notifications);
    void observeListCommands();
    void applyLook();
    void showLanguage();
    [[nodiscard]] bool isCaretInSight() const;
    void findAgain(FindDirection direction);

    EditorView& m_view;
    Spelling& m_languages;
    Look& m_look;
    UserDefaults& m_defaults;
    CommandReceiver m_commands;
    WritingBehaviours m_behaviours; // first in the context menu
    FindSession m_find;
    ListEditing m_lists;
    FormattingTools m_formatting;
    TableTools m_tables;
    ImageTools m_images;
    SpellingMarks m_spelling;
    std::unique_ptr<MarkdownHighlighting> m_markdown; // in Markdown only
    FindStrip* m_strip;
    FormattingBarSlot* m_bar;
    StripMenuButton* m_language;
    std::optional<QUuid> m_note;
    EditorMode m_mode = EditorMode::plainText;
    std::vector<NotificationCenter::Observation> m_observations;
};

} // namespace orvane
