// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/binder/BinderActions.h"
#include "core/notebook/NotebookEdit.h"
#include "core/tags/TagSettings.h"

#include <QList>

#include <optional>
#include <utility>

namespace orvane {

/// One step that a person can take back outside of the text: an edit of the notebook, and what was
/// changed with it of the Binder's sort order and of the tags' colours and other names.
struct NotebookStep {
    NotebookEdit edit;
    /// Before and after.
    std::optional<std::pair<BinderSortOrder, BinderSortOrder>> sortOrder;
    std::optional<std::pair<TagSettings, TagSettings>> tagSettings;

    [[nodiscard]] bool isEmpty() const { return edit.isEmpty() && !sortOrder && !tagSettings; }
};

/// The steps of one project that can be taken back, and those that were.
class NotebookUndo {
public:
    static constexpr qsizetype maximumSteps = 100;

    /// A new step; what was taken back before can't be done again.
    void push(NotebookStep step);
    void clear();
    [[nodiscard]] bool canUndo() const { return !m_done.isEmpty(); }
    [[nodiscard]] bool canRedo() const { return !m_undone.isEmpty(); }
    /// The newest step, taken off; whoever takes it back says by `undone` how. Ask `canUndo` first.
    [[nodiscard]] NotebookStep takeForUndo() { return m_done.takeLast(); }
    [[nodiscard]] NotebookStep takeForRedo() { return m_undone.takeLast(); }
    /// The step by which one was taken back, or done again.
    void undone(NotebookStep step) { m_undone.append(std::move(step)); }
    void redone(NotebookStep step) { m_done.append(std::move(step)); }

private:
    QList<NotebookStep> m_done;
    QList<NotebookStep> m_undone;
};

} // namespace orvane
