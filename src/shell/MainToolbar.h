// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/SurfacePanel.h"
#include "core/AppState.h"

class QAction;
class QHBoxLayout;
class QLabel;

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
    };

    MainToolbar(AppState& appState, const Actions& actions, Look& look, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void addButton(QHBoxLayout& row, QAction* action);
    void addSeparator(QHBoxLayout& row);
    void showProject();

    AppState& m_appState;
    QLabel* m_project;
};

} // namespace orvane
