// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/toolbar/MainToolbar.h"

#include "appearance/Drawing.h"
#include "shell/toolbar/ToolbarButtons.h"
#include "shell/window/ElidedLabel.h"

#include <QAction>
#include <QHBoxLayout>
#include <QMenu>
#include <QPainter>
#include <QToolButton>

namespace orvane {

namespace {

constexpr int bandHeight = 48;
constexpr int narrowest = 320;
constexpr int widestTitle = 240;

class Separator final : public QWidget {
public:
    Separator(Look& look, QWidget* parent)
        : QWidget(parent)
        , m_look(look)
    {
        setFixedSize(25, 20);
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter(this).fillRect(width() / 2, 0, 1, height(),
                                m_look.tokens().on(Surface::Toolbar).border);
    }

private:
    Look& m_look;
};

} // namespace

MainToolbar::MainToolbar(AppState& appState, const Actions& actions, const Menus& menus, Look& look,
                         QWidget* parent)
    : SurfacePanel(look, Surface::Toolbar, parent)
    , m_appState(appState)
    , m_row(new QHBoxLayout(this))
    , m_menu(&menus.application)
    , m_insertMenu(&menus.insert)
    , m_hasInsert(menus.hasInsert)
    , m_overflow(new QMenu(this))
{
    setFixedHeight(bandHeight);
    setAccessibleName(tr("Toolbar"));
    setMinimumWidth(narrowest);
    m_row->setContentsMargins(12, 0, 12, 1);
    m_row->setSpacing(4);
    addButton(actions.showProjects);
    m_project = new ProjectSwitcher(menus.projects, this);
    m_row->addWidget(m_project);
    addSeparator();
    QToolButton* back = addButton(actions.back);
    QToolButton* forward = addButton(actions.forward);
    addSeparator();
    addWritingButtons(actions);
    m_optional += {{forward, actions.forward}, {back, actions.back}};
    m_titleSeparator = addSeparator();
    m_noteTitle = new ElidedLabel(this);
    setTextStyle(m_noteTitle, TextStyle::BodyMedium);
    m_noteTitle->setAccessibleDescription(tr("Note"));
    m_noteTitle->setMaximumWidth(widestTitle);
    m_row->addWidget(m_noteTitle);
    setNoteTitle({});
    m_row->addStretch(1);
    addFinder(*actions.find);
    m_row->addStretch(1);
    m_toolPlace = m_row->count();
    addTrailingButtons(actions);
    connect(&appState.projectSession(), &ProjectSession::currentProjectChanged, this,
            &MainToolbar::showProject);
    connect(m_overflow, &QMenu::aboutToShow, this, &MainToolbar::fillOverflow);
    showProject();
}

void MainToolbar::addWritingButtons(const Actions& actions)
{
    QToolButton* newNote = addButton(actions.newNote);
    QToolButton* newFolder = addButton(actions.newFolder);
    m_insertButton = addMenuButton(Symbol::Plus, tr("Insert"));
    connect(m_insertButton, &QToolButton::clicked, this,
            [this] { openBelow(*m_insertButton, *m_insertMenu); });
    m_optional += {{newFolder, actions.newFolder}, {newNote, actions.newNote}};
}

void MainToolbar::addFinder(QAction& find)
{
    m_finder = new FinderButton(look(), this);
    m_finder->setToolTip(find.toolTip());
    m_finder->setKeyText(find.shortcut().toString(QKeySequence::NativeText));
    m_finder->setEnabled(find.isEnabled());
    connect(m_finder, &QAbstractButton::clicked, &find, &QAction::trigger);
    connect(&find, &QAction::enabledChanged, m_finder, &QWidget::setEnabled);
    m_row->addWidget(m_finder);
    m_optional.prepend({m_finder, &find});
}

void MainToolbar::addTrailingButtons(const Actions& actions)
{
    m_overflowButton = addMenuButton(Symbol::ChevronDown, tr("More"));
    connect(m_overflowButton, &QToolButton::clicked, this,
            [this] { openBelow(*m_overflowButton, *m_overflow); });
    addButton(actions.toggleBinder);
    addButton(actions.toggleInspector);
    m_menuButton = addMenuButton(Symbol::Menu, tr("Menu"));
    m_menuButton->setToolTip(tr("Menu") + QStringLiteral("  F10"));
    connect(m_menuButton, &QToolButton::clicked, this, &MainToolbar::openMenu);
}

QToolButton* MainToolbar::addButton(QAction* action)
{
    auto* button = new QToolButton(this);
    button->setDefaultAction(action);
    button->setIconSize({16, 16});
    button->setFixedSize(32, 32);
    button->setAccessibleName(action->text());
    button->setFocusPolicy(Qt::TabFocus);
    m_row->addWidget(button);
    return button;
}

QToolButton* MainToolbar::addMenuButton(Symbol symbol, const QString& name)
{
    auto* action = new QAction(look().icon(symbol), name, this);
    action->setToolTip(name);
    return addButton(action);
}

QWidget* MainToolbar::addSeparator()
{
    auto* separator = new Separator(look(), this);
    m_row->addWidget(separator);
    return separator;
}

void MainToolbar::addTool(QWidget* tool)
{
    m_row->insertWidget(m_toolPlace++, tool);
    fit();
}

void MainToolbar::openBelow(QToolButton& button, QMenu& menu)
{
    const QPoint corner = button.mapToGlobal(button.rect().bottomLeft());
    menu.popup(corner + QPoint(0, 5));
    button.setDown(false);
}

void MainToolbar::openMenu()
{
    const QPoint corner = m_menuButton->mapToGlobal(m_menuButton->rect().bottomRight());
    m_menu->popup(corner + QPoint(1 - m_menu->sizeHint().width(), 5));
    m_menuButton->setDown(false);
}

void MainToolbar::setNoteTitle(const QString& title)
{
    m_noteTitle->setText(title);
    m_noteTitle->setMinimumWidth(
        qMin(widestTitle, m_noteTitle->fontMetrics().horizontalAdvance(title) + 1));
    m_noteTitle->setVisible(!title.isEmpty());
    m_titleSeparator->setVisible(!title.isEmpty());
    if (m_finder)
        fit();
}

void MainToolbar::showProject()
{
    const auto& project = m_appState.projectSession().currentProject();
    m_project->setTitle(project ? project->titleForDisplay() : QString());
    fit();
}

QSize MainToolbar::minimumSizeHint() const
{
    return {narrowest, bandHeight};
}

bool MainToolbar::isTooNarrow() const
{
    return m_row->totalMinimumSize().width() > width();
}

void MainToolbar::fit()
{
    for (const Optional& each : m_optional)
        each.widget->show();
    m_overflowButton->hide();
    m_row->invalidate();
    for (const Optional& each : m_optional) {
        if (!isTooNarrow())
            break;
        each.widget->hide();
        m_overflowButton->show();
        m_row->invalidate();
    }
}

void MainToolbar::fillOverflow()
{
    m_overflow->clear();
    for (const Optional& each : m_optional) {
        if (each.widget->isHidden())
            m_overflow->addAction(each.action);
    }
}

void MainToolbar::resizeEvent(QResizeEvent* event)
{
    SurfacePanel::resizeEvent(event);
    fit();
}

void MainToolbar::showEvent(QShowEvent* event)
{
    SurfacePanel::showEvent(event);
    m_insertButton->setVisible(m_hasInsert());
    fit();
}

void MainToolbar::paintEvent(QPaintEvent* event)
{
    SurfacePanel::paintEvent(event);
    QPainter painter(this);
    drawLineAt(Qt::BottomEdge, painter, rect(), look().tokens().on(Surface::Toolbar).border);
}

} // namespace orvane
