// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/projects/ProjectsBrowserView.h"

#include "core/records/Wording.h"
#include "shell/projects/ProjectActions.h"
#include "shell/projects/ProjectTileDelegate.h"
#include "shell/projects/ProjectTilesModel.h"
#include "shell/shortcuts/KeyRouting.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QPushButton>
#include <QStackedLayout>
#include <QTimer>
#include <QToolButton>

#include <chrono>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

constexpr int margin = 64;
constexpr int narrowestTile = 260;
constexpr int scrollBarWidth = 10;
constexpr std::chrono::seconds timeBetweenLooks{2};
const Setting<QString> orderSetting{u"settings.projects.browserOrder", u"recentlyOpened"_s};
const QStringList orderValues{u"recentlyOpened"_s, u"recentlyChanged"_s, u"title"_s};

} // namespace

ProjectsBrowserView::ProjectsBrowserView(AppState& appState, ProjectActions& actions, Look& look,
                                         QWidget* parent)
    : SurfacePanel(look, Surface::Window, parent)
    , m_appState(appState)
    , m_actions(actions)
    , m_model(new ProjectTilesModel(appState.services().clock, this))
    , m_delegate(new ProjectTileDelegate(look, this))
    , m_stack(new QStackedLayout)
    , m_lookAgain(new QTimer(this))
{
    m_lookAgain->setInterval(timeBetweenLooks);
    connect(m_lookAgain, &QTimer::timeout, this, &ProjectsBrowserView::lookAgain);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 44, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(makeHeader());
    layout->addSpacing(24);
    makeTiles();
    makeEmptyState();
    // The gap behind the last column and the scroll bar lie in the right margin.
    auto* tiles = new QWidget(this);
    auto* row = new QHBoxLayout(tiles);
    row->setContentsMargins(margin, 0, margin - ProjectTileDelegate::gap - 2 * scrollBarWidth, 0);
    row->addWidget(m_tiles);
    m_stack->addWidget(tiles);
    m_stack->addWidget(m_empty);
    layout->addLayout(m_stack, 1);
    layout->addWidget(makeFooter());
    connect(&appState.projectSession(), &ProjectSession::projectsChanged, this,
            &ProjectsBrowserView::showProjects);
    connect(&appState.projectSession(), &ProjectSession::currentProjectChanged, this,
            &ProjectsBrowserView::showCounts);
    connect(&appState.selection(), &Selection::selectedProjectChanged, this,
            &ProjectsBrowserView::showSelection);
    showProjects();
}

QWidget* ProjectsBrowserView::makeHeader()
{
    auto* header = new QWidget(this);
    auto* row = new QHBoxLayout(header);
    row->setContentsMargins(margin, 0, margin, 0);
    row->setSpacing(16);
    m_back = new QToolButton(header);
    m_back->setIcon(look().icon(Symbol::Back));
    m_back->setAccessibleName(tr("Back to the open project"));
    m_back->setFixedSize(32, 32);
    m_back->setToolTip(m_back->accessibleName());
    connect(m_back, &QToolButton::clicked, &m_appState.projectSession(),
            &ProjectSession::presentEditor);
    m_filter = new QLineEdit(header);
    m_filter->setPlaceholderText(tr("Filter projects"));
    m_filter->setAccessibleName(tr("Filter projects"));
    m_filter->setFixedWidth(260);
    m_filter->addAction(look().icon(Symbol::Search, Surface::Window, &SurfaceTokens::textSecondary),
                        QLineEdit::LeadingPosition);
    m_filter->setClearButtonEnabled(false);
    m_filter->installEventFilter(this);
    connect(m_filter, &QLineEdit::textChanged, this, [this](const QString& text) {
        m_model->setFilter(text);
        showCounts();
        showSelection();
    });
    m_order = new QComboBox(header);
    m_order->addItems({tr("Recently opened"), tr("Recently changed"), tr("By title")});
    m_order->setAccessibleName(tr("Order of the projects"));
    const QString stored = orderSetting.read(m_appState.services().defaults);
    m_order->setCurrentIndex(int(qMax(qsizetype(0), orderValues.indexOf(stored))));
    connect(m_order, &QComboBox::activated, this, [this](int index) {
        orderSetting.write(m_appState.services().defaults, orderValues.at(index));
        showProjects();
    });
    auto* create = new QPushButton(look().icon(Symbol::Plus, &Tokens::textOnAccent),
                                   tr("New Project"), header);
    create->setDefault(true);
    connect(create, &QPushButton::clicked, &m_actions, &ProjectActions::showNewProjectSheet);
    row->addWidget(m_back);
    row->addWidget(makeLabel(tr("Projects"), TextStyle::ScreenTitle));
    row->addStretch();
    row->addWidget(m_filter);
    row->addWidget(m_order);
    row->addWidget(create);
    row->addWidget(makeMenuButton());
    return header;
}

QWidget* ProjectsBrowserView::makeMenuButton()
{
    m_menuButton = new QToolButton(this);
    m_menuButton->setIcon(look().icon(Symbol::Menu, Surface::Window));
    m_menuButton->setIconSize({16, 16});
    m_menuButton->setFixedSize(32, 32);
    m_menuButton->setAccessibleName(tr("Menu"));
    m_menuButton->setToolTip(tr("Menu") + u"  F10"_s);
    connect(m_menuButton, &QToolButton::clicked, this, &ProjectsBrowserView::openMenu);
    return m_menuButton;
}

void ProjectsBrowserView::setMenu(QMenu& menu)
{
    m_menu = &menu;
}

void ProjectsBrowserView::openMenu()
{
    const QPoint corner = m_menuButton->mapToGlobal(m_menuButton->rect().bottomRight());
    m_menu->popup(corner + QPoint(1 - m_menu->sizeHint().width(), 5));
    m_menuButton->setDown(false);
}

void ProjectsBrowserView::makeTiles()
{
    m_tiles = new QListView(this);
    m_tiles->setViewMode(QListView::IconMode);
    m_tiles->setMovement(QListView::Static);
    m_tiles->setResizeMode(QListView::Adjust);
    m_tiles->setUniformItemSizes(true);
    m_tiles->setSelectionMode(QAbstractItemView::SingleSelection);
    m_tiles->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_tiles->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_tiles->setFrameShape(QFrame::NoFrame);
    m_tiles->setMouseTracking(true);
    m_tiles->setContextMenuPolicy(Qt::CustomContextMenu);
    m_tiles->setAccessibleName(tr("Projects"));
    m_tiles->viewport()->setAutoFillBackground(false);
    m_tiles->setItemDelegate(m_delegate);
    m_tiles->setModel(m_model);
    m_tiles->installEventFilter(this);
    declareKeyFocus(m_tiles, KeyFocus::Control);
    connect(m_tiles, &QListView::doubleClicked, this, &ProjectsBrowserView::activate);
    connect(m_tiles, &QListView::clicked, this, [this](const QModelIndex& index) {
        if (m_model->folderAt(index).isEmpty())
            m_actions.showNewProjectSheet();
        else if (m_model->isMissing(index))
            m_actions.explainMissing(m_model->folderAt(index));
    });
    connect(m_tiles, &QListView::customContextMenuRequested, this,
            &ProjectsBrowserView::showContextMenu);
    connect(m_tiles->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& current) {
                const QString folder = m_model->folderAt(current);
                if (!folder.isEmpty() && !m_model->isMissing(current) &&
                    m_appState.selection().selectedProjectFolder() != folder)
                    m_appState.projectSession().selectProjectTile(folder);
            });
}

void ProjectsBrowserView::makeEmptyState()
{
    m_empty = new QWidget(this);
    auto* layout = new QVBoxLayout(m_empty);
    layout->setSpacing(16);
    m_emptyText = makeLabel({}, TextStyle::SheetText, LabelInk::Secondary);
    m_emptyAction = new QPushButton(m_empty);
    layout->addStretch(3);
    layout->addWidget(m_emptyText, 0, Qt::AlignHCenter);
    layout->addWidget(m_emptyAction, 0, Qt::AlignHCenter);
    layout->addStretch(4);
    connect(m_emptyAction, &QPushButton::clicked, this, [this] {
        if (m_model->filter().isEmpty())
            return m_actions.showNewProjectSheet();
        m_filter->clear();
        m_filter->setFocus();
    });
}

QWidget* ProjectsBrowserView::makeFooter()
{
    auto* footer = new QWidget(this);
    auto* row = new QHBoxLayout(footer);
    row->setContentsMargins(margin, 8, margin, 16);
    const QString path = m_appState.projectSession().library().projectsDirectoryPath();
    m_place = makeLabel(shortPath(path, m_appState.services().folders.home), TextStyle::Label,
                        LabelInk::Secondary);
    m_place->setToolTip(path);
    m_count = makeLabel({}, TextStyle::Label, LabelInk::Secondary);
    row->addWidget(m_place);
    row->addStretch();
    row->addWidget(m_count);
    return footer;
}

void ProjectsBrowserView::appear()
{
    m_appState.projectSession().refreshProjects();
    if (!m_appState.selection().selectedProjectFolder() &&
        !m_appState.projectSession().projects().isEmpty())
        m_appState.projectSession().selectProjectTile(
            m_appState.projectSession().projects().first().rootPath);
    showProjects();
    focusTiles();
    m_actions.showWelcomeIfNeeded();
}

void ProjectsBrowserView::showEvent(QShowEvent* event)
{
    SurfacePanel::showEvent(event);
    m_lookAgain->start();
}

void ProjectsBrowserView::hideEvent(QHideEvent* event)
{
    SurfacePanel::hideEvent(event);
    m_lookAgain->stop();
}

// Folders come and go while it is on the screen, and others open them; looking costs some system
// calls a project. While something is asked nothing changes behind it.
void ProjectsBrowserView::lookAgain()
{
    if (!isActiveWindow() || m_actions.isAsking())
        return;
    m_appState.projectSession().refreshProjects();
    fillTiles();
}

void ProjectsBrowserView::changeEvent(QEvent* event)
{
    SurfacePanel::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isVisible())
        lookAgain();
}

void ProjectsBrowserView::focusTiles()
{
    m_tiles->setFocus(Qt::OtherFocusReason);
}

void ProjectsBrowserView::focusFilter()
{
    m_filter->setFocus(Qt::ShortcutFocusReason);
    m_filter->selectAll();
}

ProjectOrder ProjectsBrowserView::order() const
{
    return ProjectOrder(m_order->currentIndex());
}

QList<OrvaneProjectRecord> ProjectsBrowserView::orderedProjects() const
{
    switch (order()) {
    case ProjectOrder::RecentlyOpened:
        return m_appState.projectSession().projectsByRecentOpen();
    case ProjectOrder::RecentlyChanged:
        return m_appState.projectSession().projects();
    case ProjectOrder::ByTitle:
        break;
    }
    QList<OrvaneProjectRecord> projects = m_appState.projectSession().projects();
    std::stable_sort(projects.begin(), projects.end(), [](const auto& one, const auto& other) {
        return QString::localeAwareCompare(one.titleForDisplay().toCaseFolded(),
                                           other.titleForDisplay().toCaseFolded()) < 0;
    });
    return projects;
}

void ProjectsBrowserView::fillTiles()
{
    ProjectSession& session = m_appState.projectSession();
    ProjectTilesModel::Holders holders;
    for (const OrvaneProjectRecord& project : session.projects()) {
        const QString data = ProjectLibraryController::projectDataDirectoryPath(project.rootPath);
        if (const auto holder = ProjectLock::holder(data))
            holders.insert(project.rootPath, *holder);
    }
    m_model->setProjects(orderedProjects(), session.knownProjects(), session.missingProjects(),
                         holders);
}

void ProjectsBrowserView::showProjects()
{
    fillTiles();
    showCounts();
    showSelection();
}

void ProjectsBrowserView::showCounts()
{
    const int missing = int(m_appState.projectSession().missingProjects().size());
    const int count = int(m_appState.projectSession().projects().size()) + missing;
    const bool filtering = !m_model->filter().isEmpty();
    const bool nothing = count == 0 || (filtering && m_model->tileCount() == 0);
    m_stack->setCurrentIndex(nothing ? 1 : 0);
    m_emptyText->setText(count == 0
                             ? tr("Projects are folders on your own disk. Create one to "
                                  "start writing.")
                             : tr("No project has “%1” in its title.").arg(m_model->filter()));
    m_emptyAction->setText(count == 0 ? tr("New Project") : tr("Clear Filter"));
    const QString projects = count == 1 ? tr("1 project") : tr("%1 projects").arg(grouped(count));
    m_count->setText(missing == 0
                         ? projects
                         : tr("%1, %Ln not there", "projects, of which", missing).arg(projects));
    const auto& open = m_appState.projectSession().currentProject();
    m_back->setVisible(open.has_value());
    if (open)
        m_back->setToolTip(tr("Back to “%1”  Esc").arg(open->titleForDisplay()));
}

void ProjectsBrowserView::showSelection()
{
    const QModelIndex index =
        m_model->indexOf(m_appState.selection().selectedProjectFolder().value_or(QString()));
    const QSignalBlocker quiet(m_tiles->selectionModel());
    if (index.isValid()) {
        m_tiles->selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
        m_tiles->scrollTo(index);
    } else {
        m_tiles->selectionModel()->clear();
    }
    m_tiles->viewport()->update();
}

void ProjectsBrowserView::activate(const QModelIndex& index)
{
    if (!index.isValid())
        return;
    const QString folder = m_model->folderAt(index);
    if (folder.isEmpty())
        m_actions.showNewProjectSheet();
    else if (m_model->isMissing(index))
        m_actions.explainMissing(folder);
    else
        m_actions.openFromTile(folder);
}

void ProjectsBrowserView::showContextMenu(const QPoint& position)
{
    const QModelIndex index = m_tiles->indexAt(position);
    const QString folder = m_model->folderAt(index);
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    if (m_model->isMissing(index)) {
        menu->addAction(look().icon(Symbol::Project), tr("Open"), this,
                        [this, folder] { m_actions.explainMissing(folder); });
        menu->addAction(look().icon(Symbol::Trash), tr("Take Off the List"), this,
                        [this, folder] { m_appState.projectSession().forgetProject(folder); });
    } else if (folder.isEmpty()) {
        menu->addAction(look().icon(Symbol::Plus), tr("New Project…"), &m_actions,
                        &ProjectActions::showNewProjectSheet);
    } else {
        menu->addAction(look().icon(Symbol::Project), tr("Open"), this,
                        [this, folder] { m_actions.openFromTile(folder); });
        menu->addAction(look().icon(Symbol::Rename), tr("Rename…"), this,
                        [this, folder] { m_actions.showRenameSheet(folder); });
        menu->addAction(look().icon(Symbol::Project), tr("Icon and Title…"), this,
                        [this, folder] { m_actions.showIconAndTitle(folder); });
        menu->addSeparator();
        menu->addAction(look().icon(Symbol::Trash), tr("Move to Trash"), this,
                        [this, folder] { m_actions.moveToTrash(folder); });
    }
    menu->popup(m_tiles->viewport()->mapToGlobal(position));
}

void ProjectsBrowserView::resizeEvent(QResizeEvent* event)
{
    SurfacePanel::resizeEvent(event);
    layOutTiles();
}

void ProjectsBrowserView::layOutTiles()
{
    constexpr int gap = ProjectTileDelegate::gap;
    const int room = width() - 2 * margin;
    const int columns = qMax(1, (room + gap) / (narrowestTile + gap));
    const int tile = (room - gap * (columns - 1)) / columns;
    m_delegate->setTileWidth(tile);
    m_tiles->setGridSize({tile + gap, ProjectTileDelegate::tileHeight + gap});
}

void ProjectsBrowserView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape && m_appState.projectSession().currentProject())
        return m_appState.projectSession().presentEditor();
    SurfacePanel::keyPressEvent(event);
}

bool ProjectsBrowserView::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return SurfacePanel::eventFilter(watched, event);
    const auto* key = static_cast<QKeyEvent*>(event);
    const bool isReturn = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
    if (watched == m_filter) {
        if (key->key() == Qt::Key_Escape && !m_filter->text().isEmpty()) {
            m_filter->clear();
            return true;
        }
        if (key->key() == Qt::Key_Down || (isReturn && m_model->tileCount() > 0)) {
            if (!m_tiles->currentIndex().isValid())
                m_tiles->setCurrentIndex(m_model->index(0));
            focusTiles();
            if (isReturn)
                activate(m_tiles->currentIndex());
            return true;
        }
    }
    if (watched == m_tiles) {
        if (isReturn) {
            activate(m_tiles->currentIndex());
            return true;
        }
    }
    return SurfacePanel::eventFilter(watched, event);
}

} // namespace orvane
