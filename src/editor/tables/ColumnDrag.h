// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/tables/TableEngine.h"
#include "editor/view/EditorExtension.h"

namespace orvane {

class EditorView;
class Look;

/// Drags the border between two columns of a table. While it is held a dashed line shows where it
/// would go, with the share of the width that the column before it has; the table changes when it
/// is let go, as one step to undo.
class ColumnDrag final : public EditorExtension {
public:
    /// Adds itself to `view`; both outlive it.
    ColumnDrag(EditorView& view, Look& look);
    ~ColumnDrag() override;
    Q_DISABLE_COPY_MOVE(ColumnDrag)

    bool mousePressed(const EditorMouse& mouse) override;
    void mouseMoved(const EditorMouse& mouse) override;
    void mouseReleased(const EditorMouse& mouse) override;
    std::optional<Qt::CursorShape> cursorAt(QPointF page) override;
    bool keyPressed(const QKeyEvent& event) override;
    void paintOverText(QPainter& painter, const EditorPaint& paint) override;

private:
    struct Border {
        qsizetype position = 0; ///< of a cell beside it
        int column = 0;         ///< the one before it
    };
    struct Drag {
        qsizetype position = 0;
        int column = 0;
        QList<double> widths{};
        QRectF table{};  ///< on the page
        qreal start = 0; ///< where the first of both columns begins
        qreal end = 0;   ///< where the other one ends: left of that in a table from the right
        qreal x = 0;
    };

    [[nodiscard]] std::optional<Border> borderAt(QPointF page) const;
    [[nodiscard]] double share() const;
    void update();

    EditorView& m_view;
    Look& m_look;
    std::optional<Drag> m_drag;
};

} // namespace orvane
