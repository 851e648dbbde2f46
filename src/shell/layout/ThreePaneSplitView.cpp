// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/layout/ThreePaneSplitView.h"

#include "shell/layout/SplitDivider.h"

#include <QResizeEvent>
#include <QVariantAnimation>

#include <cmath>

namespace orvane {

namespace {

/// Shows one pane's content, whole or cut off while the pane is narrower than it.
class PaneClip final : public QWidget {
public:
    using QWidget::QWidget;

    QWidget* content = nullptr;

    /// `align` says at which edge the content stands when it is wider.
    void layOut(const QRect& rect, int contentWidth, Qt::AlignmentFlag align)
    {
        setGeometry(rect);
        if (!content)
            return;
        const int width = std::max(rect.width(), contentWidth);
        const int left = align == Qt::AlignRight ? rect.width() - width : 0;
        content->setGeometry(left, 0, width, rect.height());
    }
};

constexpr auto binderIndex = size_t(ThreePaneSplitView::Pane::Binder);
constexpr auto editorIndex = size_t(ThreePaneSplitView::Pane::Editor);
constexpr auto inspectorIndex = size_t(ThreePaneSplitView::Pane::Inspector);

PaneClip* clipOf(QWidget* widget)
{
    return static_cast<PaneClip*>(widget);
}

/// The last widget of the Tab order that stands in `container`, or itself.
QWidget* lastInTabOrder(QWidget* container)
{
    QWidget* last = container;
    for (QWidget* widget = container->nextInFocusChain(); widget && widget != container;
         widget = widget->nextInFocusChain()) {
        if (container->isAncestorOf(widget))
            last = widget;
    }
    return last;
}

double between(double from, double to, double progress)
{
    return from + (to - from) * progress;
}

} // namespace

ThreePaneSplitView::ThreePaneSplitView(QWidget* parent)
    : QWidget(parent)
{
    for (QWidget*& clip : m_clips)
        clip = new PaneClip(this);
    m_dividers = {new SplitDivider(SidePane::Binder, this),
                  new SplitDivider(SidePane::Inspector, this)};
    for (SplitDivider* divider : m_dividers)
        divider->raise();
}

ThreePaneSplitView::~ThreePaneSplitView() = default;

void ThreePaneSplitView::setPane(Pane pane, QWidget* content)
{
    PaneClip* clip = clipOf(m_clips[size_t(pane)]);
    delete clip->content;
    clip->content = content;
    if (content) {
        content->setParent(clip);
        // In a window that is not shown yet it is laid out once, when that is.
        if (isVisible())
            content->show();
        if (pane == Pane::Binder)
            setTabOrder(lastInTabOrder(clip), divider(SidePane::Binder));
        else if (pane == Pane::Editor)
            setTabOrder(lastInTabOrder(clip), divider(SidePane::Inspector));
    }
    placeSettled();
}

QWidget* ThreePaneSplitView::pane(Pane pane) const
{
    return clipOf(m_clips[size_t(pane)])->content;
}

SplitDivider* ThreePaneSplitView::divider(SidePane pane) const
{
    return m_dividers[size_t(pane)];
}

QSize ThreePaneSplitView::minimumSizeHint() const
{
    return {int(PaneMetrics::editorMinimumLow), 200};
}

void ThreePaneSplitView::setSplitLayout(const SplitLayout& layout, Motion motion)
{
    const SideVisibility before = m_layout.visible;
    const PaneWidths from = m_live;
    m_layout = layout;
    m_layout.total = width();
    const bool slides =
        motion == Motion::Sliding && before != layout.visible && isVisible() && m_slideDuration > 0;
    if (slides)
        slideFrom(from);
    else
        placeSettled();
}

bool ThreePaneSplitView::isSliding() const
{
    return m_slide != nullptr;
}

void ThreePaneSplitView::resizePane(SidePane pane, double width)
{
    SplitLayout layout = m_layout;
    layout.preferred = layout.resized(pane, width);
    if (layout.preferred == m_layout.preferred)
        return;
    setSplitLayout(layout);
    emit draggedByPerson();
}

void ThreePaneSplitView::setInLiveResize(bool inLiveResize)
{
    m_inLiveResize = inLiveResize;
}

void ThreePaneSplitView::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    m_layout.total = width();
    placeSettled();
    emit laidOut();
}

void ThreePaneSplitView::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    emit laidOut();
}

void ThreePaneSplitView::placeSettled()
{
    endSlide();
    const PaneWidths widths = m_layout.widths();
    place(widths, {widths.binder, widths.inspector});
}

void ThreePaneSplitView::place(const PaneWidths& widths, const SideWidths& contentWidths)
{
    const int binder = int(std::round(widths.binder));
    const int inspector = int(std::round(widths.inspector));
    const bool showsBinder = binder > 0;
    const bool showsInspector = inspector > 0;
    const int editorLeft = binder + int(showsBinder);
    const int inspectorLeft = width() - inspector;
    const int editorWidth = std::max(inspectorLeft - int(showsInspector) - editorLeft, 0);
    m_live = {double(binder), double(editorWidth), double(inspector)};

    // Content narrower than this is cut off rather than squeezed.
    const auto contentWidth = [](double width) {
        return int(std::round(std::max(width, PaneMetrics::sideMinimum)));
    };
    if (showsBinder)
        clipOf(m_clips[binderIndex])
            ->layOut({0, 0, binder, height()}, contentWidth(contentWidths.binder), Qt::AlignRight);
    if (showsInspector)
        clipOf(m_clips[inspectorIndex])
            ->layOut({inspectorLeft, 0, inspector, height()}, contentWidth(contentWidths.inspector),
                     Qt::AlignLeft);
    clipOf(m_clips[editorIndex])
        ->layOut({editorLeft, 0, editorWidth, height()}, editorWidth, Qt::AlignLeft);
    m_clips[binderIndex]->setVisible(showsBinder);
    m_clips[inspectorIndex]->setVisible(showsInspector);
    const int lines[] = {binder, inspectorLeft - 1};
    const bool shown[] = {showsBinder, showsInspector};
    for (size_t i = 0; i < m_dividers.size(); ++i) {
        m_dividers[i]->setGeometry(lines[i] - SplitDivider::grabMargin, 0, SplitDivider::grabWidth,
                                   height());
        m_dividers[i]->setVisible(shown[i]);
    }
}

void ThreePaneSplitView::slideFrom(const PaneWidths& from)
{
    endSlide();
    m_slideFrom = from;
    m_slideTo = m_layout.widths();
    const SideWidths content{std::max(from.binder, m_slideTo.binder),
                             std::max(from.inspector, m_slideTo.inspector)};
    m_slide = new QVariantAnimation(this);
    m_slide->setStartValue(0.0);
    m_slide->setEndValue(1.0);
    m_slide->setDuration(m_slideDuration);
    m_slide->setEasingCurve(QEasingCurve::OutCubic);
    connect(m_slide, &QVariantAnimation::valueChanged, this, [this, content](const QVariant& v) {
        const double progress = v.toDouble();
        place({between(m_slideFrom.binder, m_slideTo.binder, progress), 0,
               between(m_slideFrom.inspector, m_slideTo.inspector, progress)},
              content);
    });
    connect(m_slide, &QVariantAnimation::finished, this, [this] {
        placeSettled();
        emit slideFinished();
    });
    m_slide->start();
}

void ThreePaneSplitView::endSlide()
{
    if (!m_slide)
        return;
    m_slide->disconnect(this);
    m_slide->stop();
    m_slide->deleteLater();
    m_slide = nullptr;
}

} // namespace orvane
