// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/SurfacePanel.h"
#include "core/state/AppState.h"

class QAction;
class QLabel;
class QLineEdit;
class QMenu;
class QStackedLayout;
class QToolButton;

namespace orvane {

class BinderMenus;
class BinderModel;
class BinderTreeView;
class PaneRail;

/// The Binder pane: the tree between a rail with the title filter and a rail with the ways to add
/// something.
class BinderView : public SurfacePanel {
    Q_OBJECT
public:
    /// The actions are the buttons of the bottom rail.
    BinderView(AppState& appState, QAction& newNote, QAction& newFolder, Look& look,
               QWidget* parent = nullptr);

    [[nodiscard]] BinderTreeView* tree() const { return m_tree; }
    void focusFilter();
    /// Takes a note out of the Trash, or for good after a question.
    void restore(const QUuid& note);
    void erase(const QUuid& note);
    /// Looks for the place where the selected rows are to go, unless they lie in the Trash.
    void showMoveSheet();
    /// The place of the current row in `window`, over the width of the pane.
    [[nodiscard]] QRect rectOfRows(const QWidget& window) const;
    /// Opens "Icons and Titles" for the selected note or folder, else for the project.
    void showIconsAndTitles();

signals:
    /// The person goes on to the text of the selected note.
    void noteActivated();
    /// The person looks for a tag among more than a menu holds.
    void tagSheetRequested();
    /// The person looks for the place where the selected rows are to go.
    void moveSheetRequested(const QList<orvane::BinderRowID>& rows);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] QWidget* makeTopRail();
    [[nodiscard]] QWidget* makeBottomRail(QAction& newNote, QAction& newFolder);
    [[nodiscard]] QWidget* makeRowsRail(PaneRail& rail);
    void showRail(PaneRail& rail);
    [[nodiscard]] QToolButton* makeActionButton(PaneRail& rail, QAction& action, Symbol symbol);
    void opensMenu(QToolButton* button, void (BinderMenus::*fill)(QMenu&));
    void connectTree();
    void connectMenus(QAction& newNote, QAction& newFolder);
    void showMenu(const std::optional<BinderRowID>& row, const QPoint& globalPosition);
    [[nodiscard]] std::optional<BinderMove>
    resolve(const BinderRowID& dragged, const std::optional<BinderRowID>& target, double y) const;
    void showExpansion();
    void expandBelow(const QModelIndex& parent);
    void showSelection();
    void showRows(const QList<BinderRowID>& rows);
    void takeSelection();
    /// The rows that a command acts on: those selected together, else the selected one.
    [[nodiscard]] QList<BinderRowID> actedOn() const;
    void moveBy(Qt::Key arrow);
    void drop(const BinderMove& move);
    void showEmptyState();
    void setFilter(const QString& text);
    void follow(const NotebookChange& change);
    void userExpanded(const QModelIndex& index, bool expanded);

    AppState& m_appState;
    BinderModel* m_model;
    BinderTreeView* m_tree;
    BinderMenus* m_menus;
    QLineEdit* m_filter = nullptr;
    QLabel* m_empty = nullptr;
    /// At the foot: ways to add something, or what can be done with the rows that are selected.
    QStackedLayout* m_rail = nullptr;
    QLabel* m_selected = nullptr;
    /// While the tree is made to follow the state, its signals are no wishes.
    bool m_following = false;
    int m_removing = 0;
};

} // namespace orvane
