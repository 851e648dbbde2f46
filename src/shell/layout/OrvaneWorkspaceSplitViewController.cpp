// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/layout/OrvaneWorkspaceSplitViewController.h"

#include "commands/AppCommandEvents.h"
#include "shell/layout/PaneLayoutSettings.h"

#include <QApplication>
#include <QScopedValueRollback>

#include <cmath>

namespace orvane {

using namespace std::chrono_literals;
using Motion = ThreePaneSplitView::Motion;

Q_LOGGING_CATEGORY(paneLayoutLog, "com.orvaneworkspace.mac.PaneLayout", QtWarningMsg)

namespace {

constexpr double sameWidth = 0.5;

bool isSame(double left, double right)
{
    return std::abs(left - right) <= sameWidth;
}

double& widthOf(SideWidths& widths, SidePane pane)
{
    return pane == SidePane::Binder ? widths.binder : widths.inspector;
}

double widthOf(const SideWidths& widths, SidePane pane)
{
    return pane == SidePane::Binder ? widths.binder : widths.inspector;
}

bool isVisible(const SideVisibility& visible, SidePane pane)
{
    return pane == SidePane::Binder ? visible.binder : visible.inspector;
}

double liveWidthOf(const PaneWidths& widths, SidePane pane)
{
    return pane == SidePane::Binder ? widths.binder : widths.inspector;
}

constexpr SidePane sidePanes[] = {SidePane::Binder, SidePane::Inspector};

const char* yesOrNo(bool value)
{
    return value ? "true" : "false";
}

} // namespace

OrvaneWorkspaceSplitViewController::OrvaneWorkspaceSplitViewController(
    ThreePaneSplitView& view, SplitPaneLayoutModel& paneLayout, const Services& services,
    QObject* parent)
    : QObject(parent)
    , m_view(view)
    , m_paneLayout(paneLayout)
    , m_services(services)
{
    SplitLayout layout;
    layout.editorMinimum =
        editorMinimumThickness(PaneLayoutSettings::editorPageWidth.read(services.defaults));
    layout.visible = visibilityFromDefaults();
    layout.preferred = sidePaneTargets(paneLayout.sideWidths());
    apply(layout, Motion::None);
    m_lastApplied = layout.visible;
    m_paneLayout.setLocks(PaneLayoutSettings::readLocks(services.defaults));

    connect(&view, &ThreePaneSplitView::laidOut, this,
            &OrvaneWorkspaceSplitViewController::viewDidLayout);
    connect(&view, &ThreePaneSplitView::draggedByPerson, this,
            &OrvaneWorkspaceSplitViewController::publishPaneWidths);
    connect(&view, &ThreePaneSplitView::slideFinished, this, [this] {
        publishPaneWidths();
        tellShown();
    });
    connect(&paneLayout, &SplitPaneLayoutModel::changed, this, [this] {
        PaneLayoutSettings::writeLocks(m_services.defaults, m_paneLayout.locks());
        applyPaneLayoutIfNeeded();
    });
    connect(&services.defaults, &UserDefaults::changed, this,
            &OrvaneWorkspaceSplitViewController::defaultsChanged);
    installLayoutCommandObservers();
}

OrvaneWorkspaceSplitViewController::~OrvaneWorkspaceSplitViewController() = default;

void OrvaneWorkspaceSplitViewController::setReducedMotion(std::function<bool()> reducedMotion)
{
    m_reducedMotion = std::move(reducedMotion);
}

void OrvaneWorkspaceSplitViewController::installLayoutCommandObservers()
{
    const auto observe = [this](const Notification<NoPayload>& command, auto action) {
        m_observers.push_back(m_services.notifications.observe(
            command, [action = std::move(action)](const NoPayload&) { action(); }));
    };
    observe(AppCommandEvents::collapseLeftPane, [this] { collapseLeftPane(); });
    observe(AppCommandEvents::collapseRightPane, [this] { collapseRightPane(); });
    observe(AppCommandEvents::restoreThreePaneLayout, [this] { restoreDefaultThreePaneLayout(); });
    observe(AppCommandEvents::toggleBinder, [this] { toggle(SidePane::Binder); });
    observe(AppCommandEvents::toggleInspector, [this] { toggle(SidePane::Inspector); });
}

SideVisibility OrvaneWorkspaceSplitViewController::shown() const
{
    const SideVisibility wanted = visibilityFromDefaults();
    if (!m_view.isVisible() || m_view.isSliding())
        return wanted;
    return {wanted.binder && m_view.liveWidths().binder > 0,
            wanted.inspector && m_view.liveWidths().inspector > 0};
}

void OrvaneWorkspaceSplitViewController::tellShown()
{
    if (m_lastShown == shown())
        return;
    m_lastShown = shown();
    emit shownChanged();
}

// A pane that is wanted and has no room comes in the place of the other one.
void OrvaneWorkspaceSplitViewController::toggle(SidePane pane)
{
    const SideVisibility wanted = visibilityFromDefaults();
    const bool isSqueezedOut = isVisible(wanted, pane) && !isVisible(shown(), pane);
    if (pane == SidePane::Binder)
        setVisibility({isSqueezedOut || !wanted.binder, !isSqueezedOut && wanted.inspector});
    else
        setVisibility({!isSqueezedOut && wanted.binder, isSqueezedOut || !wanted.inspector});
}

SideVisibility OrvaneWorkspaceSplitViewController::visibilityFromDefaults() const
{
    return PaneLayoutSettings::readVisibility(m_services.defaults);
}

void OrvaneWorkspaceSplitViewController::defaultsChanged(const QString& key)
{
    using namespace PaneLayoutSettings;
    if (key == binderVisible.keyText() || key == inspectorVisible.keyText()) {
        if (!m_isWritingVisibility)
            synchronizePaneVisibilityWithDefaults(Force::No, Motion::None);
    } else if (key == binderLock.keyText() || key == editorLock.keyText() ||
               key == inspectorLock.keyText()) {
        m_paneLayout.setLocks(readLocks(m_services.defaults));
    } else if (key == editorPageWidth.keyText()) {
        SplitLayout layout = m_view.splitLayout();
        layout.editorMinimum = editorMinimumThickness(editorPageWidth.read(m_services.defaults));
        apply(layout, Motion::None);
    }
}

Motion OrvaneWorkspaceSplitViewController::motion() const
{
    return m_reducedMotion && m_reducedMotion() ? Motion::None : Motion::Sliding;
}

void OrvaneWorkspaceSplitViewController::apply(const SplitLayout& layout, Motion motion)
{
    const QScopedValueRollback applying(m_isApplyingPaneLayout, true);
    m_view.setSplitLayout(layout, motion);
}

void OrvaneWorkspaceSplitViewController::viewDidLayout()
{
    applyLockConstraints();
    synchronizePaneVisibilityWithDefaults(Force::No, Motion::None);
    applyInitialBalancedSplitIfNeeded();
    scheduleStartupLayoutRepairIfNeeded();
    applyPaneLayoutIfNeeded();
    publishPaneWidths();
    tellShown();
    const PaneWidths& live = m_view.liveWidths();
    qCDebug(paneLayoutLog, "📏 viewDidLayout widths -> binder=%d editor=%d inspector=%d",
            int(live.binder), int(live.editor), int(live.inspector));
}

void OrvaneWorkspaceSplitViewController::applyLockConstraints()
{
    SplitLayout layout = m_view.splitLayout();
    layout.locks = m_paneLayout.locks();
    for (const SidePane pane : sidePanes) {
        const bool locked = pane == SidePane::Binder ? layout.locks.binder : layout.locks.inspector;
        double& preferred = widthOf(layout.preferred, pane);
        const SideLimits limits =
            sideLimits({.isVisible = isVisible(layout.visible, pane), .isLocked = locked},
                       preferred, widthOf(m_paneLayout.sideWidths(), pane));
        preferred = std::clamp(preferred, limits.minimum, limits.maximum);
    }
    apply(layout, Motion::None);
}

void OrvaneWorkspaceSplitViewController::applyInitialBalancedSplitIfNeeded()
{
    if (!m_needsInitialSplitLayout || !m_view.isVisible() || m_view.width() < 1)
        return;
    SplitLayout layout = m_view.splitLayout();
    layout.preferred = sidePaneTargets(m_paneLayout.sideWidths());
    apply(layout, Motion::None);
    m_needsInitialSplitLayout = false;
}

void OrvaneWorkspaceSplitViewController::scheduleStartupLayoutRepairIfNeeded()
{
    if (m_didScheduleStartupLayoutRepair || !m_view.isVisible())
        return;
    m_didScheduleStartupLayoutRepair = true;
    // A window may settle in more than one step.
    for (const auto delay : {80ms, 200ms})
        m_startupSteps.push_back(
            m_services.clock.after(delay, [this] { repairStartupLayoutIfNeeded(); }));
    m_startupSteps.push_back(m_services.clock.after(240ms, [this] {
        if (m_didPostStartupLayoutRestored || !m_view.isVisible())
            return;
        m_didPostStartupLayoutRestored = true;
        m_services.notifications.post(AppCommandEvents::splitLayoutRestored);
    }));
}

void OrvaneWorkspaceSplitViewController::repairStartupLayoutIfNeeded()
{
    const PaneWidths& live = m_view.liveWidths();
    if (!needsStartupRepair({live.binder, live.inspector}, visibilityFromDefaults()))
        return;
    qCInfo(paneLayoutLog, "🛠️ startup repair triggered (binder=%d inspector=%d)",
           int(live.binder), int(live.inspector));
    if (m_view.width() < 1)
        return;
    SplitLayout layout = m_view.splitLayout();
    layout.preferred = sidePaneTargets(m_paneLayout.sideWidths());
    apply(layout, Motion::None);
    const PaneWidths target = m_view.splitLayout().widths();
    qCInfo(paneLayoutLog, "✅ startup repair applied (target binder=%d inspector=%d)",
           int(target.binder), int(target.inspector));
}

void OrvaneWorkspaceSplitViewController::applyPaneLayoutIfNeeded()
{
    if (m_isApplyingPaneLayout || m_view.isInLiveResize() || !m_view.isVisible())
        return;
    const SideWidths remembered = m_paneLayout.sideWidths();
    SplitLayout layout = m_view.splitLayout();
    for (const SidePane pane : sidePanes) {
        const double width = widthOf(remembered, pane);
        if (width > PaneMetrics::unknownLimit && !isSame(width, widthOf(layout.preferred, pane)))
            widthOf(layout.preferred, pane) = sidePaneTarget(width);
    }
    if (layout.preferred != m_view.splitLayout().preferred)
        apply(layout, Motion::None);
    if (layout.locks != m_paneLayout.locks())
        applyLockConstraints();
}

void OrvaneWorkspaceSplitViewController::publishPaneWidths()
{
    if (m_isApplyingPaneLayout || m_view.isSliding() || m_needsInitialSplitLayout)
        return;
    const QScopedValueRollback applying(m_isApplyingPaneLayout, true);
    publish(SidePane::Binder);
    const double editor = m_view.liveWidths().editor;
    if (editor > PaneMetrics::unknownLimit)
        m_paneLayout.setEditorWidth(editor);
    publish(SidePane::Inspector);
}

void OrvaneWorkspaceSplitViewController::publish(SidePane pane)
{
    const bool visible = isVisible(visibilityFromDefaults(), pane);
    const double live = liveWidthOf(m_view.liveWidths(), pane);
    const bool isSqueezed =
        visible && live < widthOf(m_view.splitLayout().preferred, pane) - sameWidth;
    if (isSqueezed && live >= PaneMetrics::sideMinimum)
        return;
    qCInfo(paneLayoutLog, "%ls", qUtf16Printable(writeBackLogLine(pane, live, visible)));
    if (widthWriteBack(live, visible) == WriteBack::Block)
        return;
    if (pane == SidePane::Binder)
        m_paneLayout.setBinderWidth(live);
    else
        m_paneLayout.setInspectorWidth(live);
}

void OrvaneWorkspaceSplitViewController::setVisibility(const SideVisibility& visible)
{
    {
        // The settings come first, so that the widths of a pane that shrinks away are known to be
        // those of a hidden one.
        const QScopedValueRollback writing(m_isWritingVisibility, true);
        PaneLayoutSettings::binderVisible.write(m_services.defaults, visible.binder);
        PaneLayoutSettings::inspectorVisible.write(m_services.defaults, visible.inspector);
    }
    synchronizePaneVisibilityWithDefaults(Force::Yes, motion());
}

void OrvaneWorkspaceSplitViewController::collapseLeftPane()
{
    setVisibility({false, visibilityFromDefaults().inspector});
}

void OrvaneWorkspaceSplitViewController::collapseRightPane()
{
    setVisibility({visibilityFromDefaults().binder, false});
}

void OrvaneWorkspaceSplitViewController::restoreDefaultThreePaneLayout()
{
    setVisibility({true, true});
    publishPaneWidths();
}

void OrvaneWorkspaceSplitViewController::synchronizePaneVisibilityWithDefaults(Force force,
                                                                               Motion motion)
{
    const SideVisibility visible = visibilityFromDefaults();
    if (visible == m_lastApplied && force == Force::No)
        return;
    m_lastApplied = visible;
    SplitLayout layout = m_view.splitLayout();
    qCInfo(paneLayoutLog, "🔧 synced binder split-item collapse -> %s", yesOrNo(!visible.binder));
    qCInfo(paneLayoutLog, "🔧 synced inspector split-item collapse -> %s",
           yesOrNo(!visible.inspector));
    const auto keepsKeyboard = [this](ThreePaneSplitView::Pane pane) {
        const QWidget* content = m_view.pane(pane);
        return content && content->isAncestorOf(QApplication::focusWidget());
    };
    if ((!visible.binder && keepsKeyboard(ThreePaneSplitView::Pane::Binder)) ||
        (!visible.inspector && keepsKeyboard(ThreePaneSplitView::Pane::Inspector)))
        emit paneWithKeyboardHidden();
    layout.visible = visible;
    const SideWidths targets = sidePaneTargets(m_paneLayout.sideWidths());
    if (visible.binder && !m_view.splitLayout().visible.binder)
        layout.preferred.binder = targets.binder;
    if (visible.inspector && !m_view.splitLayout().visible.inspector)
        layout.preferred.inspector = targets.inspector;
    apply(layout, motion);
    if (!m_view.isSliding())
        publishPaneWidths();
    tellShown();
}

} // namespace orvane
