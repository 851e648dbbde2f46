// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/value/CharacterStyle.h"
#include "text/value/TextSelection.h"

#include <QString>

#include <functional>
#include <variant>
#include <vector>

namespace orvane {

/// What an edit does, as far as joining it with the one before goes.
enum class EditKind { typing, deletingBackward, deletingForward, other };

/// What comes back with undo beside the text.
struct EditState {
    TextSelection selection;
    SharedCharacterStyle typingStyle;

    bool operator==(const EditState&) const = default;
};

/// A step that is not a change of the text, such as a moved shape.
struct CustomStep {
    std::function<void()> undo;
    std::function<void()> redo;
};

/// That many steps of the document's own undo stack.
struct DocumentSteps {
    int count = 0;
};

/// What a person undoes at once.
struct HistoryEntry {
    QString name;
    EditKind kind = EditKind::other;
    EditState before;
    EditState after;
    std::vector<std::variant<DocumentSteps, CustomStep>> steps;

    void addDocumentSteps(int count);
};

/// The undo and redo lists of one text: changes of the text and custom steps in the order in which
/// they were made.
class EditHistory {
public:
    [[nodiscard]] bool canUndo() const { return m_done > 0; }
    [[nodiscard]] bool canRedo() const { return m_done < m_entries.size(); }
    [[nodiscard]] QString undoName() const;
    [[nodiscard]] QString redoName() const;

    /// Forgets what could be redone, and adds `entry`.
    void push(HistoryEntry entry);
    void forgetRedo();
    /// The newest entry while more may be joined to it, or null.
    [[nodiscard]] HistoryEntry* openEntry();
    /// Nothing more is joined to the newest entry.
    void close() { m_isOpen = false; }
    void clear();

    /// Moves over one entry and returns it, for the caller to undo or redo.
    [[nodiscard]] const HistoryEntry& stepBack();
    [[nodiscard]] const HistoryEntry& stepForward();

private:
    std::vector<HistoryEntry> m_entries;
    std::size_t m_done = 0;
    bool m_isOpen = false;
};

} // namespace orvane
