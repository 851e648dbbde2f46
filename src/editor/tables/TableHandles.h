// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/tables/TableOnView.h"
#include "editor/view/EditorExtension.h"
#include "text/store/TableGrid.h"

#include <functional>

namespace orvane {

class EditorView;
class Look;
class TableTools;

/// Handles above the columns and beside the rows of the table in which the caret is. A click
/// selects a column or row, with Shift up to there, and a drag sweeps over several. Commands do the
/// same for the keyboard.
class TableHandles final : public EditorExtension {
public:
    /// Adds itself to `view`; all outlive it. `painted` is told what of the table was painted, each
    /// time that it is another.
    TableHandles(EditorView& view, TableTools& tools, Look& look, std::function<void()> painted);
    ~TableHandles() override;
    Q_DISABLE_COPY_MOVE(TableHandles)

    void paintOverText(QPainter& painter, const EditorPaint& paint) override;
    bool mousePressed(const EditorMouse& mouse) override;
    void mouseMoved(const EditorMouse& mouse) override;
    void mouseReleased(const EditorMouse& mouse) override;
    std::optional<Qt::CursorShape> cursorAt(QPointF page) override;
    bool hovered(QPointF page) override;
    void hoverEnded() override;

private:
    enum class Axis { columns, rows };
    struct Handle {
        Axis axis = Axis::columns;
        int number = 0; ///< of the column, or of the seen row
        QRectF rect;

        bool operator==(const Handle&) const = default;
    };
    struct Sweep {
        Axis axis = Axis::columns;
        int from = 0;
    };

    [[nodiscard]] std::optional<TableOnView> table() const;
    [[nodiscard]] static QList<Handle> handlesOf(const TableOnView& table);
    [[nodiscard]] std::optional<Handle> handleAt(QPointF page) const;
    void setHovered(const std::optional<Handle>& handle);
    /// The column or row of a grid that is nearest to a point.
    [[nodiscard]] int nearest(QPointF page, Axis axis, const TableGrid& grid) const;
    void selectTo(int number, const TableGrid& grid);

    EditorView& m_view;
    TableTools& m_tools;
    Look& m_look;
    std::function<void()> m_painted;
    std::optional<TableOnView> m_shown;
    std::optional<Handle> m_hovered;
    std::optional<Sweep> m_sweep;
};

} // namespace orvane
