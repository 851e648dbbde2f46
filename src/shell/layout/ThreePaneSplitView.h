// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "shell/layout/PaneArithmetic.h"

#include <QWidget>

#include <array>

class QVariantAnimation;

namespace orvane {

class SplitDivider;

/// Three panes side by side, Binder, editor, Inspector, with a line that can be dragged at the
/// inner edge of each side pane. Where they stand is decided by a `SplitLayout`; the view keeps
/// its total to its own width, moves the panes and draws the lines. Side panes that are hidden or
/// opened slide; what stands in them keeps its width meanwhile. Main thread.
class ThreePaneSplitView : public QWidget {
    Q_OBJECT
public:
    enum class Pane { Binder, Editor, Inspector };
    enum class Motion { None, Sliding };

    explicit ThreePaneSplitView(QWidget* parent = nullptr);
    ~ThreePaneSplitView() override;

    /// Takes over the widget; what was there before is deleted. Given from left to right, the panes
    /// and dividers follow each other in the Tab order.
    void setPane(Pane pane, QWidget* content);
    [[nodiscard]] QWidget* pane(Pane pane) const;

    [[nodiscard]] const SplitLayout& splitLayout() const { return m_layout; }
    /// Puts the panes in their places; `total` is always the view's own. Sliding applies to side
    /// panes that appear or vanish; a slide that is under way ends at once otherwise.
    void setSplitLayout(const SplitLayout& layout, Motion motion = Motion::None);

    /// As they are on the screen now, also in the middle of a slide.
    [[nodiscard]] const PaneWidths& liveWidths() const { return m_live; }
    [[nodiscard]] bool isSliding() const;
    /// While a divider is held.
    [[nodiscard]] bool isInLiveResize() const { return m_inLiveResize; }

    /// Asks for a width of a side pane as if its divider had been dragged there.
    void resizePane(SidePane pane, double width);

    /// Length of a slide in milliseconds; 0 for none.
    void setSlideDuration(int milliseconds) { m_slideDuration = milliseconds; }

    [[nodiscard]] SplitDivider* divider(SidePane pane) const;
    [[nodiscard]] QSize minimumSizeHint() const override;

signals:
    /// The panes stand where the layout says, after a change of the view's size or its first
    /// appearance.
    void laidOut();
    /// A divider was dragged or moved by keys: the preferred widths are a person's choice.
    void draggedByPerson();
    void slideFinished();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    friend class SplitDivider;
    void setInLiveResize(bool inLiveResize);
    void place(const PaneWidths& widths, const SideWidths& contentWidths);
    void placeSettled();
    void slideFrom(const PaneWidths& from);
    void endSlide();

    SplitLayout m_layout;
    PaneWidths m_live;
    std::array<QWidget*, 3> m_clips{};
    std::array<SplitDivider*, 2> m_dividers{};
    QVariantAnimation* m_slide = nullptr;
    PaneWidths m_slideFrom;
    PaneWidths m_slideTo;
    int m_slideDuration = 160;
    bool m_inLiveResize = false;
};

} // namespace orvane
