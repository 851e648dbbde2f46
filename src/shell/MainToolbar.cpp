// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/MainToolbar.h"

#include "shell/ElidedLabel.h"

#include <QAction>
#include <QHBoxLayout>
#include <QMenu>
#include <QPainter>
#include <QToolButton>

namespace orvane {

namespace {

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

class SymbolLabel final : public QWidget {
public:
    SymbolLabel(Look& look, Symbol symbol, QWidget* parent)
        : QWidget(parent)
        , m_look(look)
        , m_symbol(symbol)
    {
        setFixedSize(16, 16);
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        Look::drawSymbol(painter, rect(), m_symbol, 16, m_look.tokens().on(Surface::Toolbar).icon);
    }

private:
    Look& m_look;
    Symbol m_symbol;
};

} // namespace

MainToolbar::MainToolbar(AppState& appState, const Actions& actions, QMenu& menu, Look& look,
                         QWidget* parent)
    : SurfacePanel(look, Surface::Toolbar, parent)
    , m_appState(appState)
    , m_project(new ElidedLabel(this))
{
    setFixedHeight(48);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(12, 0, 12, 1);
    row->setSpacing(4);
    addButton(*row, actions.showProjects);
    row->addSpacing(10);
    row->addWidget(new SymbolLabel(look, Symbol::Project, this));
    row->addSpacing(4);
    setTextStyle(m_project, TextStyle::BodyMedium);
    m_project->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    m_project->setMaximumWidth(320);
    row->addWidget(m_project);
    addSeparator(*row);
    addButton(*row, actions.back);
    addButton(*row, actions.forward);
    addSeparator(*row);
    addButton(*row, actions.newNote);
    addButton(*row, actions.newFolder);
    row->addStretch(1);
    addButton(*row, actions.toggleBinder);
    addButton(*row, actions.toggleInspector);
    addMenuButton(*row, menu);
    connect(&appState, &AppState::currentProjectChanged, this, &MainToolbar::showProject);
    showProject();
}

QToolButton* MainToolbar::addButton(QHBoxLayout& row, QAction* action)
{
    auto* button = new QToolButton(this);
    button->setDefaultAction(action);
    button->setIconSize({16, 16});
    button->setFixedSize(32, 32);
    button->setAccessibleName(action->text());
    button->setFocusPolicy(Qt::TabFocus);
    row.addWidget(button);
    return button;
}

void MainToolbar::addMenuButton(QHBoxLayout& row, QMenu& menu)
{
    auto* action = new QAction(look().icon(Symbol::Menu), tr("Menu"), this);
    action->setToolTip(tr("Menu") + QStringLiteral("  F10"));
    m_menu = &menu;
    m_menuButton = addButton(row, action);
    connect(action, &QAction::triggered, this, &MainToolbar::openMenu);
}

void MainToolbar::openMenu()
{
    const QPoint corner = m_menuButton->mapToGlobal(m_menuButton->rect().bottomRight());
    m_menu->popup(corner + QPoint(1 - m_menu->sizeHint().width(), 5));
    m_menuButton->setDown(false);
}

void MainToolbar::addSeparator(QHBoxLayout& row)
{
    row.addWidget(new Separator(look(), this));
}

void MainToolbar::showProject()
{
    const auto& project = m_appState.currentProject();
    m_project->setText(project ? project->titleForDisplay() : QString());
}

void MainToolbar::paintEvent(QPaintEvent* event)
{
    SurfacePanel::paintEvent(event);
    QPainter(this).fillRect(0, height() - 1, width(), 1,
                            look().tokens().on(Surface::Toolbar).border);
}

} // namespace orvane
