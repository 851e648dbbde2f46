// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "platform/Services.h"
#include "shell/layout/SplitPaneLayoutModel.h"
#include "shell/layout/ThreePaneSplitView.h"

#include <QLoggingCategory>
#include <QObject>

#include <functional>
#include <optional>
#include <vector>

namespace orvane {

/// Every decision about the panes' widths, with the reason why one was not remembered.
Q_DECLARE_LOGGING_CATEGORY(paneLayoutLog)

/// Runs the three panes of a main window: opens them at their remembered widths, follows the
/// settings that show, hide and lock them, observes the commands that do so, and remembers the
/// widths that a person has chosen. A side pane that is being hidden, or a window that has not
/// found its size, shows widths that mean nothing; they never reach the remembered ones. Neither
/// does a width to which a narrow window squeezes a pane. Main thread.
class OrvaneWorkspaceSplitViewController : public QObject {
    Q_OBJECT
public:
    /// Both outlive the controller.
    OrvaneWorkspaceSplitViewController(ThreePaneSplitView& view, SplitPaneLayoutModel& paneLayout,
                                       const Services& services, QObject* parent = nullptr);
    ~OrvaneWorkspaceSplitViewController() override;

    /// Whether the desktop asks for less movement; asked before each slide.
    void setReducedMotion(std::function<bool()> reducedMotion);

    void collapseLeftPane();
    void collapseRightPane();
    /// Shows all three panes.
    void restoreDefaultThreePaneLayout();
    /// Follows the settings; does nothing when they are those last applied, unless forced.
    enum class Force { No, Yes };
    void synchronizePaneVisibilityWithDefaults(Force force, ThreePaneSplitView::Motion motion);

    /// The side panes that are on the screen: one that is wanted has no room in a narrow window.
    [[nodiscard]] SideVisibility shown() const;

signals:
    /// A pane is about to vanish with the keyboard in it.
    void paneWithKeyboardHidden();
    void shownChanged();

private:
    void toggle(SidePane pane);
    void tellShown();
    void installLayoutCommandObservers();
    void defaultsChanged(const QString& key);
    void viewDidLayout();
    void applyLockConstraints();
    void applyInitialBalancedSplitIfNeeded();
    void scheduleStartupLayoutRepairIfNeeded();
    void repairStartupLayoutIfNeeded();
    void applyPaneLayoutIfNeeded();
    void publishPaneWidths();
    void publish(SidePane pane);
    void setVisibility(const SideVisibility& visible);
    void apply(const SplitLayout& layout, ThreePaneSplitView::Motion motion);
    [[nodiscard]] ThreePaneSplitView::Motion motion() const;
    [[nodiscard]] SideVisibility visibilityFromDefaults() const;

    ThreePaneSplitView& m_view;
    SplitPaneLayoutModel& m_paneLayout;
    Services m_services;
    std::function<bool()> m_reducedMotion;
    std::vector<NotificationCenter::Observation> m_observers;
    std::vector<std::unique_ptr<Clock::Delay>> m_startupSteps;
    std::optional<SideVisibility> m_lastApplied;
    std::optional<SideVisibility> m_lastShown;
    bool m_needsInitialSplitLayout = true;
    bool m_isApplyingPaneLayout = false;
    bool m_isWritingVisibility = false;
    bool m_didScheduleStartupLayoutRepair = false;
    bool m_didPostStartupLayoutRestored = false;
};

} // namespace orvane
