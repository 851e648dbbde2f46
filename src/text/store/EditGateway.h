// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/store/EditHistory.h"
#include "text/value/AttributedString.h"
#include "text/value/TextSelection.h"

#include <QObject>

#include <functional>
#include <optional>

namespace orvane {

class EditGateway;
class TextStore;

/// The changes that the body of one edit may make. Ranges are those of the text as it stands after
/// the changes before; the selection moves along with the text.
class DocumentEditor {
public:
    [[nodiscard]] const TextStore& store() const;

    void replace(TextRange range, const AttributedString& insertion);
    /// Plain text in `style`; its paragraphs take the style of the paragraph at the place.
    void replace(TextRange range, const QString& text, const SharedCharacterStyle& style);
    void remove(TextRange range);

    void setCharacterStyle(TextRange range, const SharedCharacterStyle& style);
    /// Calls `change(CharacterStyle&)` on the styles of `range`.
    void modifyCharacterStyles(TextRange range, const std::function<void(CharacterStyle&)>& change);
    /// For all paragraphs that `range` touches; an empty range touches one.
    void setParagraphStyle(TextRange range, const SharedParagraphStyle& style);
    void modifyParagraphStyles(TextRange range, const std::function<void(ParagraphStyle&)>& change);

    [[nodiscard]] TextSelection selection() const;
    void setSelection(TextSelection selection);
    [[nodiscard]] const SharedCharacterStyle& typingStyle() const;
    void setTypingStyle(const SharedCharacterStyle& style);

private:
    friend class EditGateway;
    explicit DocumentEditor(EditGateway& gateway);

    EditGateway& m_gateway;
};

/// Whether a command already knows that it changes the text. Finding out costs a comparison of all
/// paragraphs that it has touched.
enum class EditEffect { unknown, changesText };

/// The only way to change the text of one note: it makes edits undoable, keeps tables whole, and
/// owns what belongs to editing beside the text: selection, typing style, undo and redo.
///
/// It lives as long as the note is open in this run of the program, also while another note is
/// shown, so undo is there when the person comes back. Main thread only.
///
/// **A person's edits** (typing to moving text) respect the rules of table cells and may be refused
/// by the change filter or while not editable; they then return false and nothing has changed.
/// **`performUndoableDocumentEdit`** is for commands: it does to the text what its body says.
///
/// No position parts what a person takes for one character. A selection that would is moved round
/// it; an edit that leaves one there where it changed nothing, or that parts a surrogate pair, has
/// its positions wrong, which a debug build stops at.
class EditGateway : public QObject {
    Q_OBJECT
public:
    using Edit = std::function<void(DocumentEditor&)>;
    /// Asked with a range and its replacement before a person's edit; false refuses it.
    using ChangeFilter = std::function<bool(TextRange, const QString&)>;

    explicit EditGateway(TextStore& store);
    ~EditGateway() override;

    [[nodiscard]] const TextStore& store() const { return m_store; }

    /// Replaces everything without undo: the history is empty afterwards, the caret at the start.
    /// Announced by `textChanged`.
    void load(const AttributedString& content, const SharedCharacterStyle& typingStyle);
    void loadPlainText(const QString& text);

    /// Whether edits are let through at all. `load` always is.
    void setEditable(bool editable) { m_isEditable = editable; }
    [[nodiscard]] bool isEditable() const { return m_isEditable; }
    void setChangeFilter(ChangeFilter filter) { m_filter = std::move(filter); }
    /// Asked before anything that would change the text, commands and undo included; false leaves
    /// it as it is. It may ask the person.
    using EditGuard = std::function<bool()>;
    void setEditGuard(EditGuard guard) { m_guard = std::move(guard); }
    /// Whether a person's edit that replaces `range` by `replacement` would be let through.
    [[nodiscard]] bool shouldChangeText(TextRange range, const QString& replacement) const;

    // Selection and typing style

    [[nodiscard]] TextSelection selection() const { return m_state.selection; }
    /// Positions beyond the text are moved into it, and out of a character. The typing style
    /// becomes that of the text at the caret, and typing that follows is undone apart from what
    /// went before.
    void setSelection(TextSelection selection);
    /// The attributes of the next typed character.
    [[nodiscard]] const SharedCharacterStyle& typingStyle() const { return m_state.typingStyle; }
    void setTypingStyle(const SharedCharacterStyle& style);
    /// What the typing style is after moving the caret to `position`.
    [[nodiscard]] SharedCharacterStyle typingStyleAt(qsizetype position) const;

    // A person's edits

    /// Typed text in the place of the selection; a newline in it is Return. Joined with typing
    /// just before it, up to the start of a word.
    bool type(const QString& text);
    /// While `type` asks whether it may: what is to be typed. Else empty.
    [[nodiscard]] const QString& textBeingTyped() const { return m_textBeingTyped; }
    /// Return: a new paragraph, or within a table cell a new line.
    bool insertParagraph();
    /// A new line in the same paragraph.
    bool insertLineBreak();
    /// Puts `content` in the place of the selection, with the caret behind it.
    bool insert(const AttributedString& content, const QString& actionName);
    /// Removes `range`, which a deleting key at the caret or a command has chosen.
    bool remove(TextRange range, EditKind kind, const QString& actionName);
    /// Moves the text of `range` to `position` and selects it there.
    bool move(TextRange range, qsizetype position, const QString& actionName);

    // Commands

    /// Runs `edit` as one step to undo under `actionName`. Selection and typing style come back
    /// with undo. Where text, selection and typing style are as before afterwards, nothing is
    /// registered. Edits within an edit belong to the outer one. Returns whether the step was
    /// registered.
    bool performUndoableDocumentEdit(const QString& actionName, const Edit& edit,
                                     EditEffect effect = EditEffect::unknown);
    /// Runs `edit` as part of the newest step, so that both are undone at once: what follows from a
    /// keystroke by itself. Becomes a step of its own where there is none.
    bool amendLastEdit(const QString& actionName, const Edit& edit);
    /// Adds a step that is not a change of the text; within an edit, as part of it. `redo` is not
    /// called now.
    void registerUndo(const QString& actionName, CustomStep step);
    /// What is typed from now on is undone apart from what was typed before.
    void breakUndoCoalescing();

    // Undo

    [[nodiscard]] bool canUndo() const { return m_history.canUndo(); }
    [[nodiscard]] bool canRedo() const { return m_history.canRedo(); }
    [[nodiscard]] QString undoName() const { return m_history.undoName(); }
    [[nodiscard]] QString redoName() const { return m_history.redoName(); }
    bool undo();
    bool redo();

signals:
    /// The text or its attributes have changed, after each edit as one change.
    void textChanged(const TextChange& change);
    /// The selection has moved, also along with text. Comes after `textChanged`.
    void selectionChanged();
    void typingStyleChanged();
    /// What can be undone or redone has changed.
    void historyChanged();

private:
    friend class DocumentEditor;

    /// What is noted while an edit runs.
    struct OpenEdit {
        HistoryEntry entry;
        bool joins = false; ///< the newest entry
        EditEffect effect = EditEffect::unknown;
        bool setsTypingStyle = false;
        std::optional<TextRange> touched; ///< in the text as it stands
        AttributedString before;          ///< what stood there
    };
    struct PendingChange {
        bool any = false;
        TextChange change;
    };

    /// Whether an edit is taken back together with the newest one, if that is of its kind.
    enum class Coalescing { none, withNewest };
    enum class StepDirection { undo, redo };

    bool runEdit(HistoryEntry entry, Coalescing coalescing, EditEffect effect, const Edit& edit);
    [[nodiscard]] bool passesGuard() const { return !m_guard || m_guard(); }
    bool finishEdit();
    void keepGraphemesWhole();
    void rememberBefore(TextRange range);
    void noteReplaced(TextRange range, qsizetype newLength);
    void onContentsChange(int from, int removed, int added);
    void onUndoCommandAdded();
    [[nodiscard]] Coalescing coalescingOfTyping(const QString& text) const;
    qsizetype removeParts(DocumentEditor& editor, TextRange range);
    void restore(const HistoryEntry& entry, StepDirection direction);
    void announce(const EditState& before, qsizetype lengthBefore);

    TextStore& m_store;
    EditState m_state;
    EditHistory m_history;
    std::optional<OpenEdit> m_open;
    int m_depth = 0;
    PendingChange m_pending;
    bool m_isEditable = true;
    ChangeFilter m_filter;
    EditGuard m_guard;
    QString m_textBeingTyped;
};

} // namespace orvane
