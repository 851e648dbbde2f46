// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/SurfacePanel.h"
#include "core/state/AppState.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QListView;
class QMenu;
class QPushButton;
class QStackedLayout;
class QToolButton;

namespace orvane {

class ProjectActions;
class ProjectTileDelegate;
class ProjectTilesModel;

/// How the browser orders its tiles.
enum class ProjectOrder { RecentlyOpened, RecentlyChanged, ByTitle };

/// The browser of projects: a tile for each, a field to filter them, and the ways to a new one.
class ProjectsBrowserView : public SurfacePanel {
    Q_OBJECT
public:
    ProjectsBrowserView(AppState& appState, ProjectActions& actions, Look& look,
                        QWidget* parent = nullptr);

    /// The menu of the button at the end; outlives the browser.
    void setMenu(QMenu& menu);
    void openMenu();
    /// Reads the projects anew and shows the welcome where it is due; when the browser comes up.
    void appear();
    void focusTiles();
    void focusFilter();

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] QWidget* makeHeader();
    [[nodiscard]] QWidget* makeMenuButton();
    [[nodiscard]] QWidget* makeFooter();
    void lookAgain();
    void makeTiles();
    void makeEmptyState();
    void fillTiles();
    void showProjects();
    void showSelection();
    void showCounts();
    void activate(const QModelIndex& index);
    void showContextMenu(const QPoint& position);
    void layOutTiles();
    [[nodiscard]] QList<OrvaneProjectRecord> orderedProjects() const;
    [[nodiscard]] ProjectOrder order() const;

    AppState& m_appState;
    ProjectActions& m_actions;
    ProjectTilesModel* m_model;
    ProjectTileDelegate* m_delegate;
    QStackedLayout* m_stack;
    QTimer* m_lookAgain;
    QMenu* m_menu = nullptr;
    QToolButton* m_menuButton = nullptr;
    QToolButton* m_back = nullptr;
    QLineEdit* m_filter = nullptr;
    QComboBox* m_order = nullptr;
    QListView* m_tiles = nullptr;
    QWidget* m_empty = nullptr;
    QLabel* m_emptyText = nullptr;
    QPushButton* m_emptyAction = nullptr;
    QLabel* m_place = nullptr;
    QLabel* m_count = nullptr;
};

} // namespace orvane
