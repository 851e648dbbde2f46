// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/SurfacePanel.h"
#include "core/state/AppState.h"

class QAction;
class QHBoxLayout;
class QMenu;
class QToolButton;

namespace orvane {

class ElidedLabel;
class FinderButton;
class ProjectSwitcher;

/// The band along the top of the main window. Its buttons are the window's actions; where it is too
/// narrow for all of them, those that matter least go into a menu behind "More", one after the
/// other.
class MainToolbar : public SurfacePanel {
    Q_OBJECT
public:
    struct Actions {
        QAction* showProjects;
        QAction* back;
        QAction* forward;
        QAction* newNote;
        QAction* newFolder;
        QAction* find;
        QAction* toggleBinder;
        QAction* toggleInspector;
    };
    struct Menus {
        QMenu& application; ///< at the button at the end
        QMenu& projects;    ///< at the project's title
        QMenu& insert;
        std::function<bool()> hasInsert; ///< whether there is anything to insert
    };

    MainToolbar(AppState& appState, const Actions& actions, const Menus& menus, Look& look,
                QWidget* parent = nullptr);

    void openMenu();
    /// The name of the note whose title is out of sight; empty for none.
    void setNoteTitle(const QString& title);
    /// Puts a tool of another part of the program, such as a badge, before the toggles of the
    /// panes; the toolbar takes it over.
    void addTool(QWidget* tool);
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    QToolButton* addButton(QAction* action);
    QToolButton* addMenuButton(Symbol symbol, const QString& name);
    QWidget* addSeparator();
    void addWritingButtons(const Actions& actions);
    void addFinder(QAction& find);
    void addTrailingButtons(const Actions& actions);
    void openBelow(QToolButton& button, QMenu& menu);
    void showProject();
    void fit();
    void fillOverflow();
    [[nodiscard]] bool isTooNarrow() const;

    AppState& m_appState;
    QHBoxLayout* m_row;
    ProjectSwitcher* m_project;
    FinderButton* m_finder = nullptr;
    QWidget* m_titleSeparator = nullptr;
    ElidedLabel* m_noteTitle = nullptr;
    QToolButton* m_insertButton = nullptr;
    QToolButton* m_overflowButton = nullptr;
    QToolButton* m_menuButton = nullptr;
    QMenu* m_menu;
    QMenu* m_insertMenu;
    std::function<bool()> m_hasInsert;
    QMenu* m_overflow;
    int m_toolPlace = 0;
    /// What goes first where there is no room. The finder has no action.
    struct Optional {
        QWidget* widget;
        QAction* action;
    };
    QList<Optional> m_optional;
};

} // namespace orvane
