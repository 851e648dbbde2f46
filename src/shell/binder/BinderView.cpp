// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/binder/BinderView.h"

#include "core/tags/TagColorPalette.h"
#include "shell/binder/BinderMenus.h"
#include "shell/binder/BinderModel.h"
#include "shell/binder/BinderTreeView.h"
#include "shell/binder/IconsAndTitlesWindow.h"
#include "shell/binder/TagFilterBar.h"
#include "shell/window/PaneRail.h"

#include <QAction>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QScopedValueRollback>
#include <QStackedLayout>
#include <QToolButton>
#include <QVBoxLayout>

namespace orvane {

namespace {

// In the order from the top to the bottom of a tree.
bool standsBefore(const QModelIndex& one, const QModelIndex& other)
{
    const auto wayTo = [](QModelIndex index) {
        QList<int> way;
        for (; index.isValid(); index = index.parent())
            way.prepend(index.row());
        return way;
    };
    return wayTo(one) < wayTo(other);
}

} // namespace

BinderView::BinderView(AppState& appState, QAction& newNote, QAction& newFolder, Look& look,
                       QWidget* parent)
    : SurfacePanel(look, Surface::Binder, parent)
    , m_appState(appState)
    , m_model(new BinderModel(appState, this))
    , m_tree(new BinderTreeView(look, this))
    , m_menus(new BinderMenus(appState, look, this))
{
    setMinimumWidth(220);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 8, 0, 8);
    layout->setSpacing(0);
    layout->addWidget(makeTopRail());
    layout->addWidget(new TagFilterBar(appState, look, this));
    layout->addSpacing(8);
    m_empty = makeLabel({}, TextStyle::Body, LabelInk::Secondary);
    m_empty->setWordWrap(true);
    m_empty->setAlignment(Qt::AlignCenter);
    m_empty->setContentsMargins(24, 24, 24, 24);
    layout->addWidget(m_empty);
    layout->addWidget(m_tree, 1);
    layout->addSpacing(8);
    layout->addWidget(makeBottomRail(newNote, newFolder));
    // A row that goes takes the tree's current row elsewhere; that is not the person's choice.
    // Connected before the tree is, so as to be told first.
    connect(m_model, &QAbstractItemModel::rowsAboutToBeRemoved, this, [this] { ++m_removing; });
    m_tree->setModel(m_model);
    connectTree();
    connectMenus(newNote, newFolder);
    showExpansion();
    showSelection();
    showEmptyState();
}

QWidget* BinderView::makeTopRail()
{
    auto* rail = new PaneRail(look(), Surface::BinderTopRail, this);
    auto* row = new QHBoxLayout(rail->capsule());
    row->setContentsMargins(4, 0, 4, 0);
    m_filter = new QLineEdit(rail->capsule());
    m_filter->setFrame(false);
    m_filter->setPlaceholderText(tr("Filter titles"));
    m_filter->setAccessibleName(tr("Filter titles"));
    m_filter->addAction(
        look().icon(Symbol::Search, Surface::BinderTopRail, &SurfaceTokens::textSecondary),
        QLineEdit::LeadingPosition);
    m_filter->installEventFilter(this);
    row->addWidget(m_filter);
    QToolButton* tags = rail->makeButton(Symbol::Tag, tr("Filter by Tag"));
    QToolButton* sort = rail->makeButton(Symbol::Sort, tr("Sort Notes"));
    row->addWidget(tags);
    row->addWidget(sort);
    opensMenu(tags, &BinderMenus::fillTagMenu);
    opensMenu(sort, &BinderMenus::fillSortMenu);
    connect(m_filter, &QLineEdit::textChanged, this, &BinderView::setFilter);
    const auto applyFont = [this] {
        m_filter->setFont(interfaceFont(TextStyle::Body, look().polarity(Surface::BinderTopRail)));
    };
    connect(&look(), &Look::changed, this, applyFont);
    applyFont();
    return rail;
}

QToolButton* BinderView::makeActionButton(PaneRail& rail, QAction& action, Symbol symbol)
{
    QToolButton* button = rail.makeButton(symbol, action.text());
    button->setDefaultAction(&action);
    // The action's own picture has the ink of a dark pane.
    const auto showPicture = [this, button, symbol] {
        button->setIcon(look().icon(symbol, Surface::BinderRail));
    };
    connect(&action, &QAction::changed, button, showPicture);
    showPicture();
    return button;
}

void BinderView::opensMenu(QToolButton* button, void (BinderMenus::*fill)(QMenu&))
{
    auto* menu = new QMenu(button);
    connect(menu, &QMenu::aboutToShow, this, [this, menu, fill] {
        menu->clear();
        (m_menus->*fill)(*menu);
    });
    connect(button, &QToolButton::clicked, menu,
            [button, menu] { menu->popup(button->mapToGlobal(button->rect().bottomLeft())); });
}

void BinderView::connectMenus(QAction& newNote, QAction& newFolder)
{
    connect(m_menus, &BinderMenus::tagSheetRequested, this, &BinderView::tagSheetRequested);
    connect(m_menus, &BinderMenus::newNoteRequested, &newNote, &QAction::trigger);
    connect(m_menus, &BinderMenus::newFolderRequested, &newFolder, &QAction::trigger);
    connect(m_menus, &BinderMenus::renameRequested, m_tree, &BinderTreeView::renameCurrent);
    connect(m_menus, &BinderMenus::iconsAndTitlesRequested, this, &BinderView::showIconsAndTitles);
    connect(m_tree, &BinderTreeView::menuRequested, this, &BinderView::showMenu);
    connect(m_menus, &BinderMenus::moveSheetRequested, this, &BinderView::showMoveSheet);
    connect(m_tree, &BinderTreeView::removalRequested, this, [this] {
        const QList<BinderRowID> rows = m_appState.selection().rows();
        if (!rows.isEmpty())
            m_menus->remove(rows);
        else if (const auto row = m_appState.selection().selectedBinderRowID())
            m_menus->remove(*row);
    });
    connect(m_tree, &BinderTreeView::dropped, this, &BinderView::drop);
    connect(m_tree, &BinderTreeView::moveRequested, this, &BinderView::moveBy);
    m_tree->setDropResolver([this](const BinderRowID& dragged,
                                   const std::optional<BinderRowID>& target,
                                   double y) { return resolve(dragged, target, y); });
    m_tree->setTagColor(
        [this](const QString& tag) { return tagColor(m_appState.tagSettings(), tag).toQColor(); });
}

QRect BinderView::rectOfRows(const QWidget& window) const
{
    QRect rows;
    for (const QModelIndex& index : m_tree->selectionModel()->selectedIndexes())
        rows |= m_tree->visualRect(index);
    const QWidget* viewport = m_tree->viewport();
    rows &= viewport->rect();
    const int top = viewport->mapTo(&window, rows.isEmpty() ? QPoint() : rows.topLeft()).y();
    return {mapTo(&window, QPoint()).x(), top, width(), qMax(1, rows.height())};
}

void BinderView::showIconsAndTitles()
{
    TitledItem item;
    const auto row = m_appState.selection().selectedBinderRowID();
    if (row && row->id != FolderRecord::trashFolderID) {
        const bool isNote = row->kind == BinderRowID::Kind::Note;
        item = {isNote ? TitledItem::Kind::Note : TitledItem::Kind::Folder, row->id};
    } else if (const auto& project = m_appState.projectSession().currentProject()) {
        item = {TitledItem::Kind::Project, project->id};
    }
    IconsAndTitlesWindow::open(item, m_appState, look(), window());
}

std::optional<BinderMove> BinderView::resolve(const BinderRowID& dragged,
                                              const std::optional<BinderRowID>& target,
                                              double y) const
{
    const auto project = m_appState.projectRootContainerID();
    if (!project || !m_appState.canCreateOrEdit() || !m_appState.activeTagFilter().isEmpty())
        return std::nullopt;
    if (target)
        return resolveDrop(dragged, *target, y, m_appState.order(), m_appState.folders(),
                           m_appState.notes(), *project);
    // Below all rows: to the end of the top level.
    if (dragged.kind == BinderRowID::Kind::Note)
        return BinderMove{dragged, project, std::nullopt};
    return canReparentFolder(dragged.id, std::nullopt, m_appState.folders())
               ? std::optional(BinderMove{dragged, std::nullopt, std::nullopt})
               : std::nullopt;
}

void BinderView::showMenu(const std::optional<BinderRowID>& row, const QPoint& globalPosition)
{
    QMenu* menu = m_menus->menuFor(row).release();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(globalPosition);
}

QWidget* BinderView::makeBottomRail(QAction& newNote, QAction& newFolder)
{
    auto* rail = new PaneRail(look(), Surface::BinderRail, this);
    m_rail = new QStackedLayout(rail->capsule());
    auto* adding = new QWidget(rail->capsule());
    auto* row = new QHBoxLayout(adding);
    row->setContentsMargins(4, 0, 4, 0);
    row->setSpacing(0);
    row->addWidget(makeActionButton(*rail, newNote, Symbol::NewNote));
    row->addWidget(makeActionButton(*rail, newFolder, Symbol::NewFolder));
    row->addStretch();
    m_rail->addWidget(adding);
    connect(&m_appState.selection(), &Selection::rowsChanged, this,
            [this, rail] { showRail(*rail); });
    return rail;
}

QWidget* BinderView::makeRowsRail(PaneRail& rail)
{
    auto* rows = new QWidget(rail.capsule());
    auto* row = new QHBoxLayout(rows);
    row->setContentsMargins(10, 0, 4, 0);
    row->setSpacing(0);
    m_selected = rail.makeText(rows);
    row->addWidget(m_selected, 1);
    const auto addButton = [&](Symbol symbol, const QString& name, std::function<void()> act) {
        QToolButton* button = rail.makeButton(symbol, name, rows);
        connect(button, &QToolButton::clicked, this, [act = std::move(act)] { act(); });
        row->addWidget(button);
        return button;
    };
    addButton(Symbol::Folder, tr("Move To…"), [this] { showMoveSheet(); });
    opensMenu(addButton(Symbol::Tag, tr("Tags"), [] {}), &BinderMenus::fillRowsTagMenu);
    addButton(Symbol::Pin, tr("Pin or Unpin"),
              [this] { m_menus->togglePins(m_appState.selection().rows()); });
    addButton(Symbol::Trash, tr("Move to Trash"),
              [this] { m_menus->remove(m_appState.selection().rows()); });
    return rows;
}

// The second rail is made when it is first wanted.
void BinderView::showRail(PaneRail& rail)
{
    const qsizetype count = m_appState.selection().rows().size();
    if (count > 0 && m_rail->count() == 1)
        m_rail->addWidget(makeRowsRail(rail));
    if (count > 0)
        m_selected->setText(tr("%n selected", nullptr, int(count)));
    m_rail->setCurrentIndex(count > 0 ? 1 : 0);
}

void BinderView::connectTree()
{
    connect(m_model, &QAbstractItemModel::modelReset, this, [this] {
        const QSignalBlocker quiet(m_filter);
        m_filter->clear();
        showExpansion();
        showSelection();
        showEmptyState();
    });
    connect(m_model, &QAbstractItemModel::rowsInserted, this, [this](const QModelIndex& parent) {
        expandBelow(parent);
        showEmptyState();
    });
    connect(m_model, &QAbstractItemModel::rowsRemoved, this, [this] {
        --m_removing;
        showEmptyState();
    });
    connect(&m_appState.selection(), &Selection::selectionChanged, this,
            &BinderView::showSelection);
    connect(&m_appState, &AppState::activeTagFilterChanged, this, [this] {
        showExpansion();
        showSelection();
        showEmptyState();
    });
    connect(&m_appState, &AppState::notebookChanged, this, &BinderView::follow);
    connect(m_model, &BinderModel::rowsReplaced, this, &BinderView::showSelection);
    connect(m_tree, &QTreeView::expanded, this,
            [this](const QModelIndex& index) { userExpanded(index, true); });
    connect(m_tree, &QTreeView::collapsed, this,
            [this](const QModelIndex& index) { userExpanded(index, false); });
    connect(m_tree, &BinderTreeView::noteActivated, this, &BinderView::noteActivated);
    connect(m_tree->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &BinderView::takeSelection);
    connect(&m_appState.selection(), &Selection::rowsChanged, this, &BinderView::showSelection);
}

void BinderView::follow(const NotebookChange& change)
{
    const auto show = [this](const QList<QUuid>& folders, bool expanded) {
        const QScopedValueRollback following(m_following, true);
        for (const QUuid& id : folders) {
            const QModelIndex index = m_model->indexOf({BinderRowID::Kind::Folder, id});
            if (index.isValid())
                m_tree->setExpanded(index, expanded);
        }
    };
    show(change.expanded, true);
    show(change.collapsed, false);
    if (change.isStructural)
        showSelection();
}

void BinderView::userExpanded(const QModelIndex& index, bool expanded)
{
    // While the filter is on, folders open to show what was found; that is not kept.
    if (m_following || !m_model->titleFilter().isEmpty())
        return;
    const QUuid id = m_model->rowIdOf(index).id;
    if (m_appState.order().expandedFolderIDs.contains(id) != expanded)
        m_appState.toggleExpanded(id);
}

void BinderView::showExpansion()
{
    expandBelow({});
}

void BinderView::expandBelow(const QModelIndex& parent)
{
    const QScopedValueRollback following(m_following, true);
    const bool filtering = !m_model->titleFilter().isEmpty();
    const QSet<QUuid>& expanded = m_appState.order().expandedFolderIDs;
    for (int row = 0; row < m_model->rowCount(parent); ++row) {
        const QModelIndex index = m_model->index(row, 0, parent);
        const BinderRowID id = m_model->rowIdOf(index);
        if (id.kind != BinderRowID::Kind::Folder)
            continue;
        const bool open = filtering || expanded.contains(id.id);
        if (open != m_tree->isExpanded(index))
            m_tree->setExpanded(index, open);
        if (open)
            expandBelow(index);
    }
}

void BinderView::showSelection()
{
    const QScopedValueRollback following(m_following, true);
    if (const QList<BinderRowID>& rows = m_appState.selection().rows(); !rows.isEmpty())
        return showRows(rows);
    const auto row = m_appState.selection().selectedBinderRowID();
    const QModelIndex index = row ? m_model->indexOf(*row) : QModelIndex();
    if (!index.isValid()) {
        m_tree->selectionModel()->clear();
        return;
    }
    for (QModelIndex above = index.parent(); above.isValid(); above = above.parent()) {
        if (m_tree->isExpanded(above))
            continue;
        m_tree->setExpanded(above, true);
        const QUuid id = m_model->rowIdOf(above).id;
        if (!m_appState.order().expandedFolderIDs.contains(id))
            m_appState.toggleExpanded(id);
    }
    m_tree->selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
    m_tree->scrollTo(index);
}

void BinderView::showRows(const QList<BinderRowID>& rows)
{
    QItemSelection selection;
    for (const BinderRowID& row : rows) {
        if (const QModelIndex index = m_model->indexOf(row); index.isValid())
            selection.select(index, index);
    }
    m_tree->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
}

// What the person has selected in the tree. Rows of the Trash and of the project are not selected
// together: those stay that are on the side of the row that was selected before.
void BinderView::takeSelection()
{
    if (m_following || m_removing > 0)
        return;
    QModelIndexList indexes = m_tree->selectionModel()->selectedIndexes();
    if (indexes.size() > 1) {
        const auto present = m_appState.selection().selectedBinderRowID();
        const auto isTrashed = [this](const BinderRowID& row) {
            const NoteRecord* note =
                row.kind == BinderRowID::Kind::Note ? m_appState.note(row.id) : nullptr;
            return note && note->folderID == FolderRecord::trashFolderID;
        };
        const bool inTrash = present && isTrashed(*present);
        QItemSelection others;
        indexes.removeIf([&](const QModelIndex& index) {
            const bool stays = !index.data(BinderModel::IsTrashRole).toBool() &&
                               isTrashed(m_model->rowIdOf(index)) == inTrash;
            if (!stays)
                others.select(index, index);
            return !stays;
        });
        const QScopedValueRollback following(m_following, true);
        m_tree->selectionModel()->select(others, QItemSelectionModel::Deselect);
    }
    if (indexes.size() == 1)
        return m_appState.selection().selectBinderRow(m_model->rowIdOf(indexes.first()));
    std::ranges::sort(indexes, standsBefore);
    QList<BinderRowID> rows;
    for (const QModelIndex& index : std::as_const(indexes))
        rows.append(m_model->rowIdOf(index));
    m_appState.selection().selectRows(rows);
}

QList<BinderRowID> BinderView::actedOn() const
{
    const Selection& selection = m_appState.selection();
    if (!selection.rows().isEmpty())
        return selection.rows();
    const auto row = selection.selectedBinderRowID();
    return row ? QList{*row} : QList<BinderRowID>();
}

void BinderView::restore(const QUuid& note)
{
    m_menus->restore({note});
}

void BinderView::erase(const QUuid& note)
{
    m_menus->remove(BinderRowID{BinderRowID::Kind::Note, note});
}

void BinderView::showMoveSheet()
{
    const QList<BinderRowID> rows = actedOn();
    const auto isTrashed = [this](const BinderRowID& row) {
        const NoteRecord* note = m_appState.note(row.id);
        return row.id == FolderRecord::trashFolderID ||
               (note && note->folderID == FolderRecord::trashFolderID);
    };
    if (rows.isEmpty() || std::ranges::any_of(rows, isTrashed) || !m_appState.canCreateOrEdit())
        m_appState.services().beeper.beep();
    else
        emit moveSheetRequested(rows);
}

void BinderView::drop(const BinderMove& move)
{
    const QList<BinderRowID> rows = m_appState.selection().rows();
    if (!rows.contains(move.row)) {
        (void)m_appState.apply(move);
        return;
    }
    if (move.container == FolderRecord::trashFolderID)
        return m_menus->remove(rows);
    const bool isTop = !move.container || move.container == m_appState.projectRootContainerID();
    (void)m_appState.moveRows(rows, isTop ? std::nullopt : move.container,
                              move.before ? std::optional(BinderRowID{move.row.kind, *move.before})
                                          : std::nullopt);
}

void BinderView::moveBy(Qt::Key arrow)
{
    const auto project = m_appState.projectRootContainerID();
    if (!project || !m_appState.activeTagFilter().isEmpty() || !m_model->titleFilter().isEmpty())
        return m_appState.services().beeper.beep();
    const RowsStep way = arrow == Qt::Key_Up     ? RowsStep::Up
                         : arrow == Qt::Key_Down ? RowsStep::Down
                         : arrow == Qt::Key_Left ? RowsStep::Outward
                                                 : RowsStep::Inward;
    const QList<BinderRowID> rows = actedOn();
    const auto step = resolveStep(rows, way, m_appState.binderSortOrder(), m_appState.order(),
                                  m_appState.folders(), m_appState.notes(), *project);
    if (!step || !m_appState.moveRows(rows, step->folder, step->before))
        m_appState.services().beeper.beep();
}

void BinderView::showEmptyState()
{
    const bool filtering =
        !m_model->titleFilter().isEmpty() || !m_appState.activeTagFilter().isEmpty();
    // A notebook with nothing in it still shows its Trash.
    const bool nothing =
        m_model->rowCount({}) <= (filtering ? 0 : 1) && m_appState.notes().isEmpty();
    const bool noMatch = filtering && m_model->rowCount({}) == 0;
    m_empty->setVisible(nothing || noMatch);
    m_empty->setText(noMatch ? m_model->titleFilter().isEmpty()
                                   ? tr("No note has these tags.")
                                   : tr("No title contains “%1”.").arg(m_model->titleFilter())
                             : tr("Notes and folders appear here. Make the first with the buttons "
                                  "below."));
}

void BinderView::setFilter(const QString& text)
{
    m_model->setTitleFilter(text);
    showExpansion();
    showSelection();
    showEmptyState();
}

void BinderView::focusFilter()
{
    m_filter->setFocus(Qt::ShortcutFocusReason);
    m_filter->selectAll();
}

bool BinderView::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_filter && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Escape && !m_filter->text().isEmpty()) {
            m_filter->clear();
            return true;
        }
        if (key == Qt::Key_Down || key == Qt::Key_Return) {
            m_tree->setFocus(Qt::OtherFocusReason);
            return true;
        }
    }
    return SurfacePanel::eventFilter(watched, event);
}

} // namespace orvane
