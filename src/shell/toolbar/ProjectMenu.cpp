// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/toolbar/ProjectMenu.h"

#include "shell/commands/AppMenus.h"
#include "shell/projects/ProjectActions.h"

#include <QMenu>

namespace orvane {

namespace {

constexpr qsizetype mostProjects = 10;
constexpr int longestTitle = 300; // pixels

void fill(QMenu& menu, AppState& appState, ProjectActions& actions, QAction& showProjects)
{
    menu.clear();
    const QList<OrvaneProjectRecord> projects = appState.projectSession().projectsByRecentOpen();
    for (const OrvaneProjectRecord& project :
         projects.first(std::min(projects.size(), mostProjects))) {
        const QString title = menu.fontMetrics().elidedText(project.titleForDisplay().simplified(),
                                                            Qt::ElideRight, longestTitle);
        QAction* item = menu.addAction(menuText(title));
        const bool isOpen =
            appState.projectSession().currentProject() &&
            appState.projectSession().currentProject()->rootPath == project.rootPath;
        item->setCheckable(true);
        item->setChecked(isOpen);
        // After the menu has gone: a question may come first.
        if (!isOpen)
            QObject::connect(
                item, &QAction::triggered, &menu,
                [&actions, folder = project.rootPath] { actions.openFromTile(folder); },
                Qt::QueuedConnection);
    }
    menu.addSeparator();
    QAction* create = menu.addAction(ProjectActions::tr("New Project…"));
    QObject::connect(
        create, &QAction::triggered, &menu, [&actions] { actions.showNewProjectSheet(); },
        Qt::QueuedConnection);
    QAction* all = menu.addAction(ProjectActions::tr("All Projects"));
    QObject::connect(all, &QAction::triggered, &showProjects, &QAction::trigger,
                     Qt::QueuedConnection);
}

} // namespace

QMenu* makeProjectMenu(AppState& appState, ProjectActions& actions, QAction& showProjects,
                       QWidget* parent)
{
    auto* menu = new QMenu(parent);
    QObject::connect(menu, &QMenu::aboutToShow, menu, [menu, &appState, &actions, &showProjects] {
        fill(*menu, appState, actions, showProjects);
    });
    return menu;
}

} // namespace orvane
