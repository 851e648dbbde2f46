// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "shell/layout/PaneArithmetic.h"

#include <QWidget>

namespace orvane {

class ThreePaneSplitView;

/// The line at the inner edge of a side pane, in an area wide enough to grab. Moves by dragging,
/// back by Escape while it is dragged, and by Left, Right, Home and End while it has the keyboard.
/// Its accessible value is the width of its pane.
class SplitDivider : public QWidget {
    Q_OBJECT
public:
    /// The area begins this far left of the line.
    static constexpr int grabMargin = 4;
    /// And is this wide.
    static constexpr int grabWidth = 9;

    SplitDivider(SidePane pane, ThreePaneSplitView* view);

    [[nodiscard]] SidePane pane() const { return m_pane; }
    [[nodiscard]] double paneWidth() const;
    [[nodiscard]] double widestPane() const;
    void resizePane(double width);

    /// Colours of the line; the palette's `Mid` and `Highlight` where none are set.
    void setColors(const QColor& line, const QColor& focusedLine);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    enum class Step { Narrower, Wider };
    void step(Step step, double by);
    void endDrag();

    SidePane m_pane;
    ThreePaneSplitView* m_view;
    QColor m_line;
    QColor m_focusedLine;
    double m_pressX = 0;
    double m_widthAtPress = 0;
    bool m_dragging = false;
};

} // namespace orvane
