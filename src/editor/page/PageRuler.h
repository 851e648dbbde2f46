// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/Look.h"
#include "editor/page/RulerMarks.h"
#include "editor/view/EditorExtension.h"
#include "platform/UserDefaults.h"

#include <QWidget>

#include <optional>
#include <vector>

namespace orvane {

class EditorTextHost;
class RulerMarker;

/// The ruler over a rich note: the column in the locale's unit, with the indents and tab stops of
/// the paragraph at the caret. What a person does to a mark is one step to undo and holds for all
/// paragraphs of the selection. Main thread.
///
/// A mark is dragged, or reached by Tab and moved by the arrow keys: by a step, with Shift by a
/// whole unit, with Ctrl by a point. A press on the free scale adds a tab stop; Insert does too.
/// Space gives a tab stop another alignment, Delete or drawing it off the ruler takes it away.
/// Escape goes back to the text.
class PageRuler final : public QWidget, public EditorExtension {
    Q_OBJECT
public:
    /// The host stands below it in the same parent; Tab leads from it to `next`. All outlive it.
    PageRuler(EditorTextHost& host, Look& look, const UserDefaults& defaults, QWidget& next,
              QWidget* parent);
    ~PageRuler() override;

    /// Shows what the host shows now; does nothing while it is hidden.
    void refresh();

    [[nodiscard]] LengthUnit unit() const { return m_unit; }
    [[nodiscard]] const Tokens& tokens() const { return m_tokens; }
    /// The column that the paragraph has, in points.
    [[nodiscard]] double columnWidth() const { return m_paragraph.width; }
    /// Where a position stands across the ruler, in pixels, and back.
    [[nodiscard]] double toRuler(double position) const;
    [[nodiscard]] double fromRuler(double x) const;
    [[nodiscard]] bool isRightToLeft() const { return m_paragraph.isRightToLeft; }

    /// Gives `mark` another place, held to what it may have.
    void moveMark(const RulerMark& mark, double position);
    void addTab();
    void removeTab(const RulerMark& mark);
    void turnTab(const RulerMark& mark);
    void leave();

    // A drag of a marker; `x` is across the ruler, `y` down from its top.
    void beginDrag(RulerMarker& marker);
    void drag(double x, double y, bool isFine);
    void endDrag();
    void cancelDrag();
    [[nodiscard]] bool isDragging() const { return m_drag.has_value(); }

    void paintOverText(QPainter& painter, const EditorPaint& paint) override;
    /// Escape drops a drag: the keyboard stays in the text meanwhile.
    bool keyPressed(const QKeyEvent& event) override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    struct Paragraph {
        double left = 0; ///< of its column on the page, in points
        double width = 0;
        bool isRightToLeft = false;
        SharedParagraphStyle style;

        bool operator==(const Paragraph&) const = default;
    };
    /// What else decides where marks stand and how they look.
    struct Placement {
        double origin = 0; ///< of the text across the ruler, in pixels
        double zoom = 0;
        bool isEditable = false;

        bool operator==(const Placement&) const = default;
    };
    struct Drag {
        RulerMarker* marker = nullptr;
        std::optional<RulerMark> from; ///< nothing for a tab stop that is new
        bool isOff = false;
    };

    [[nodiscard]] Paragraph paragraph() const;
    [[nodiscard]] double origin() const;
    void applyLook();
    void keepTabOrder();
    void place();
    void change(const RulerChange& change);
    void paintScale(QPainter& painter) const;
    void updateGuide();

    EditorTextHost& m_host;
    Look& m_look;
    const UserDefaults& m_defaults;
    QWidget& m_next;
    Tokens m_tokens;
    LengthUnit m_unit;
    Paragraph m_paragraph;
    Placement m_placement;
    std::vector<RulerMarker*> m_markers;
    std::optional<Drag> m_drag;
};

} // namespace orvane
