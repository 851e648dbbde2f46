// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/layout/SplitDivider.h"

#include "shell/layout/ThreePaneSplitView.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <cmath>

namespace orvane {

namespace {

constexpr double keyStep = 8;
constexpr double largeKeyStep = 32;

class AccessibleDivider final : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit AccessibleDivider(SplitDivider* divider)
        : QAccessibleWidget(divider, QAccessible::Splitter)
    {}

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::ValueInterface)
            return static_cast<QAccessibleValueInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }
    QVariant currentValue() const override { return std::round(divider()->paneWidth()); }
    void setCurrentValue(const QVariant& value) override
    {
        divider()->resizePane(value.toDouble());
    }
    QVariant maximumValue() const override { return std::floor(divider()->widestPane()); }
    QVariant minimumValue() const override { return PaneMetrics::sideMinimum; }
    QVariant minimumStepSize() const override { return keyStep; }

private:
    [[nodiscard]] SplitDivider* divider() const { return static_cast<SplitDivider*>(widget()); }
};

QAccessibleInterface* makeAccessible(const QString&, QObject* object)
{
    auto* divider = qobject_cast<SplitDivider*>(object);
    return divider ? new AccessibleDivider(divider) : nullptr;
}

} // namespace

SplitDivider::SplitDivider(SidePane pane, ThreePaneSplitView* view)
    : QWidget(view)
    , m_pane(pane)
    , m_view(view)
{
    static const bool installed = [] {
        QAccessible::installFactory(makeAccessible);
        return true;
    }();
    Q_UNUSED(installed);
    setCursor(Qt::SplitHCursor);
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_NoSystemBackground);
    setAccessibleName(pane == SidePane::Binder ? tr("Width of the left pane")
                                               : tr("Width of the right pane"));
}

double SplitDivider::paneWidth() const
{
    const PaneWidths& live = m_view->liveWidths();
    return m_pane == SidePane::Binder ? live.binder : live.inspector;
}

double SplitDivider::widestPane() const
{
    const SideWidths widest = m_view->splitLayout().resized(m_pane, PaneMetrics::maximumThickness);
    return m_pane == SidePane::Binder ? widest.binder : widest.inspector;
}

void SplitDivider::resizePane(double width)
{
    m_view->resizePane(m_pane, width);
    QAccessibleValueChangeEvent event(this, std::round(paneWidth()));
    QAccessible::updateAccessibility(&event);
}

void SplitDivider::setColors(const QColor& line, const QColor& focusedLine)
{
    m_line = line;
    m_focusedLine = focusedLine;
    update();
}

void SplitDivider::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    if (hasFocus()) {
        painter.fillRect(QRect(grabMargin - 1, 0, 3, height()),
                         m_focusedLine.isValid() ? m_focusedLine
                                                 : palette().color(QPalette::Highlight));
    } else {
        painter.fillRect(QRect(grabMargin, 0, 1, height()),
                         m_line.isValid() ? m_line : palette().color(QPalette::Mid));
    }
}

void SplitDivider::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_pressX = event->globalPosition().x();
    m_widthAtPress = paneWidth();
    m_dragging = true;
    m_view->setInLiveResize(true);
}

void SplitDivider::mouseMoveEvent(QMouseEvent* event)
{
    if (!m_dragging)
        return;
    const double moved = event->globalPosition().x() - m_pressX;
    resizePane(m_widthAtPress + (m_pane == SidePane::Binder ? moved : -moved));
}

void SplitDivider::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        endDrag();
}

void SplitDivider::endDrag()
{
    m_dragging = false;
    m_view->setInLiveResize(false);
}

void SplitDivider::keyPressEvent(QKeyEvent* event)
{
    const double by = event->modifiers() == Qt::ShiftModifier ? largeKeyStep : keyStep;
    const bool opensToTheRight = m_pane == SidePane::Binder;
    switch (event->key()) {
    case Qt::Key_Left:
        step(opensToTheRight ? Step::Narrower : Step::Wider, by);
        return;
    case Qt::Key_Right:
        step(opensToTheRight ? Step::Wider : Step::Narrower, by);
        return;
    case Qt::Key_Home:
        resizePane(PaneMetrics::sideMinimum);
        return;
    case Qt::Key_End:
        resizePane(PaneMetrics::maximumThickness);
        return;
    case Qt::Key_Escape:
        if (m_dragging) {
            resizePane(m_widthAtPress);
            endDrag();
            return;
        }
        break;
    default:
        break;
    }
    QWidget::keyPressEvent(event);
}

void SplitDivider::step(Step step, double by)
{
    resizePane(paneWidth() + (step == Step::Wider ? by : -by));
}

void SplitDivider::focusInEvent(QFocusEvent*)
{
    update();
}

void SplitDivider::focusOutEvent(QFocusEvent*)
{
    update();
}

void SplitDivider::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::PaletteChange)
        update();
    QWidget::changeEvent(event);
}

} // namespace orvane
