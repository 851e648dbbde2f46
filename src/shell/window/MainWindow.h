// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "commands/ShortcutAction.h"
#include "core/state/AppState.h"
#include "shell/commands/CommandCenter.h"
#include "shell/layout/SplitPaneLayoutModel.h"
#include "shell/sheets/SheetHost.h"
#include "shell/toolbar/MainToolbar.h"

#include <QWidget>

class QMenu;
class QStackedLayout;

namespace orvane {

class BinderView;
class EditorPaneView;
class InspectorView;
class OrvaneWorkspaceSplitViewController;
class ProjectActions;
class ProjectTroubleSheets;
class ProjectsBrowserView;
class ShortcutCenter;

/// The main window: the Projects browser, or the open project in three panes, with sheets above
/// either. Wiring only.
class MainWindow : public QWidget {
    Q_OBJECT
public:
    MainWindow(AppState& appState, ShortcutCenter& shortcuts, Look& look);

    [[nodiscard]] SheetHost& sheets() { return *m_sheets; }
    [[nodiscard]] EditorPaneView& editorPane() { return *m_editor; }
    [[nodiscard]] CommandCenter& commands() { return m_commands; }
    /// Asked before anything moves; while unset, things move.
    void setReducedMotion(std::function<bool()> reducedMotion);
    void openCommandPalette();
    /// Writes what is being edited now.
    void flushDrafts();

signals:
    /// The person closed the window.
    void closed();

protected:
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void makeActions();
    void observeCommands();
    void makeDirectCommands();
    void addKey(FixedKey key, std::function<void()> act);
    [[nodiscard]] CommandContext commandContext() const;
    [[nodiscard]] QWidget* makePanes(QWidget* parent);
    void showPaneToggles();
    void showAbout();
    void showKeys();
    [[nodiscard]] QWidget* makeWorkspace();
    void connectAppState();
    ProjectsBrowserView& browser();
    void showMode();
    void showTitle();
    void updateActions();
    void newNote();
    void presentMoveSheet(const QList<BinderRowID>& rows);
    void newFolder();
    void toggleBrowser();
    void findByTitle();
    template <const auto& command>
    QAction* makeAction(Symbol symbol, const QString& text,
                        std::optional<ShortcutAction> keys = std::nullopt);
    template <typename Action>
    void observe(const Notification<NoPayload>& command, Action action);

    /// An action of the toolbar and the command of the shortcuts that is the same.
    struct KeyedAction {
        QAction* action;
        std::optional<ShortcutAction> keys;
    };

    AppState& m_appState;
    ShortcutCenter& m_shortcuts;
    Look& m_look;
    SheetHost* m_sheets;
    ProjectActions* m_projectActions;
    ProjectTroubleSheets* m_troubleSheets;
    MainToolbar::Actions m_actions{};
    CommandCenter m_commands;
    SplitPaneLayoutModel m_paneLayout;
    OrvaneWorkspaceSplitViewController* m_paneController = nullptr;
    MainToolbar* m_toolbar = nullptr;
    QMenu* m_menu = nullptr;
    QAction* m_guide = nullptr;
    std::vector<KeyedAction> m_keyedActions;
    std::vector<NotificationCenter::Observation> m_observations;
    ProjectsBrowserView* m_browser = nullptr;
    QWidget* m_workspace = nullptr;
    BinderView* m_binder = nullptr;
    EditorPaneView* m_editor = nullptr;
    InspectorView* m_inspector = nullptr;
    QStackedLayout* m_stack;
    bool m_hasAppeared = false;
};

} // namespace orvane
