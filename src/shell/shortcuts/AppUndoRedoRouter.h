// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <functional>
#include <optional>
#include <vector>

class QWidget;

namespace orvane {

/// Something that can take back what was done in it.
struct UndoTarget {
    std::function<bool()> canUndo;
    std::function<bool()> canRedo;
    std::function<void()> undo;
    std::function<void()> redo;
};

/// The undo of a text view, text field or any other widget that has slots `undo()` and `redo()`;
/// whether there is something to undo is asked of `isUndoAvailable()` and `isRedoAvailable()` of
/// the widget, or of its document. Nothing for a widget without them, and for null.
[[nodiscard]] std::optional<UndoTarget> undoTargetOf(QWidget* widget);

/// Finds where "Undo" and "Redo" act: the first of a fixed row of places that has something to
/// undo, or redo.
class AppUndoRedoRouter {
public:
    enum class Direction { Undo, Redo };
    using Source = std::function<std::optional<UndoTarget>()>;

    /// In the order in which they are asked: the active document text view, what has the keyboard,
    /// the active window, the main window, the text view last used. A source gives nothing when
    /// its place is empty.
    explicit AppUndoRedoRouter(std::vector<Source> sources = {});

    [[nodiscard]] bool canPerform(Direction direction) const;
    /// Whether something was undone or redone.
    bool perform(Direction direction) const;

private:
    [[nodiscard]] std::optional<UndoTarget> find(Direction direction) const;

    std::vector<Source> m_sources;
};

} // namespace orvane
