// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/SurfacePanel.h"
#include "core/AppState.h"

class QAction;
class QHBoxLayout;
class QLabel;
class QMenu;
class QToolButton;

namespace orvane {

/// The band along the top of the main window. Its buttons are the window's actions.
class MainToolbar : public SurfacePanel {
    Q_OBJECT
public:
    struct Actions {
        QAction* showProjects;
        QAction* back;
        QAction* forward;
        QAction* newNote;
        QAction* newFolder;
        QAction* toggleBinder;
        QAction* toggleInspector;
    };

    /// `menu` opens at the button at the end.
    MainToolbar(AppState& appState, const Actions& actions, QMenu& menu, Look& look,
                QWidget* parent = nullptr);

    void openMenu();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QToolButton* addButton(QHBoxLayout& row, QAction* action);
    void addMenuButton(QHBoxLayout& row, QMenu& menu);
    void addSeparator(QHBoxLayout& row);
    void showProject();

    AppState& m_appState;
    QLabel* m_project;
    QToolButton* m_menuButton = nullptr;
    QMenu* m_menu = nullptr;
};

} // namespace orvane
