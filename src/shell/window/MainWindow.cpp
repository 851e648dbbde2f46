// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/window/MainWindow.h"

#include "commands/AppCommandEvents.h"
#include "editor/pane/EditorPaneView.h"
#include "editor/view/EditorView.h"
#include "editor/writing/FocusMode.h"
#include "editor/writing/TypewriterScroll.h"
#include "shell/app/WorkspaceStateKeeper.h"
#include "shell/binder/BinderTreeView.h"
#include "shell/binder/BinderView.h"
#include "shell/binder/MoveToSheet.h"
#include "shell/binder/TagFilterSheet.h"
#include "shell/commands/AppMenus.h"
#include "shell/commands/CommandPalette.h"
#include "shell/inspector/InspectorView.h"
#include "shell/layout/OrvaneWorkspaceSplitViewController.h"
#include "shell/layout/PaneFocus.h"
#include "shell/layout/PaneLayoutSettings.h"
#include "shell/layout/SplitDivider.h"
#include "shell/layout/WindowPlacement.h"
#include "shell/projects/ProjectActions.h"
#include "shell/projects/ProjectTroubleSheets.h"
#include "shell/projects/ProjectsBrowserView.h"
#include "shell/sheets/LinkSheet.h"
#include "shell/sheets/NameSheet.h"
#include "shell/shortcuts/ShortcutCenter.h"
#include "shell/toolbar/ProjectMenu.h"
#include "shell/window/RecordPage.h"

#include <QAction>
#include <QCloseEvent>
#include <QMenu>
#include <QPointer>
#include <QShortcut>
#include <QStackedLayout>

namespace orvane {

MainWindow::MainWindow(AppState& appState, ShortcutCenter& shortcuts, Look& look)
    : m_appState(appState)
    , m_shortcuts(shortcuts)
    , m_look(look)
    , m_sheets(new SheetHost(look, this))
    , m_projectActions(new ProjectActions(appState, look, *m_sheets, this))
    , m_troubleSheets(new ProjectTroubleSheets(appState, look, *m_sheets, this))
    , m_commands(appState.services(), shortcuts, [this] { return commandContext(); })
    , m_stack(new QStackedLayout(this))
{
    setObjectName(QStringLiteral("OrvaneWorkspace.MainDocumentWindow"));
    resize(1440, 900);
    setMinimumSize(960, 600);
    new WindowPlacementKeeper(appState.services(), QStringLiteral("session.mainWindow.placement"),
                              this);
    makeActions();
    makeDirectCommands();
    m_workspace = makeWorkspace();
    m_stack->addWidget(m_workspace);
    m_sheets->raise();
    connectAppState();
    new WorkspaceStateKeeper(appState, m_paneLayout, look, this);
    observeCommands();
    showMode();
    showTitle();
    updateActions();
}

template <const auto& command>
QAction* MainWindow::makeAction(Symbol symbol, const QString& text,
                                std::optional<ShortcutAction> keys)
{
    auto* action = new QAction(m_look.icon(symbol), text, this);
    connect(action, &QAction::triggered, this,
            [this] { m_appState.services().notifications.post(command); });
    addAction(action);
    m_keyedActions.push_back({action, keys});
    return action;
}

void MainWindow::makeActions()
{
    using namespace AppCommandEvents;
    m_actions.showProjects = makeAction<AppCommandEvents::showProjects>(
        Symbol::AllProjects, tr("Projects"), ShortcutAction::showProjects);
    m_actions.back = makeAction<mainEditorBack>(Symbol::Back, keyTitle(FixedKey::back));
    m_actions.back->setShortcut(keySequence(FixedKey::back));
    m_actions.forward = makeAction<mainEditorForward>(Symbol::Forward, keyTitle(FixedKey::forward));
    m_actions.forward->setShortcut(keySequence(FixedKey::forward));
    m_actions.newNote = makeAction<AppCommandEvents::newNote>(Symbol::NewNote, tr("New Note"),
                                                              ShortcutAction::newNote);
    m_actions.newFolder = makeAction<AppCommandEvents::newFolder>(
        Symbol::NewFolder, tr("New Folder"), ShortcutAction::newFolder);
    m_actions.toggleBinder = makeAction<AppCommandEvents::toggleBinder>(
        Symbol::LeftPane, tr("Toggle Left Pane"), ShortcutAction::toggleBinder);
    m_actions.toggleInspector = makeAction<AppCommandEvents::toggleInspector>(
        Symbol::RightPane, tr("Toggle Right Pane"), ShortcutAction::toggleInspector);
    m_actions.toggleBinder->setCheckable(true);
    m_actions.toggleInspector->setCheckable(true);
    m_actions.find = new QAction(m_look.icon(Symbol::Search), tr("Find a Note or Command"), this);
    m_actions.find->setShortcut(keySequence(FixedKey::commandPalette));
    addAction(m_actions.find);
    m_keyedActions.push_back({m_actions.find, std::nullopt});
    connect(m_actions.find, &QAction::triggered, this, &MainWindow::openCommandPalette);
    m_guide = new QAction(m_look.icon(Symbol::Help), keyTitle(FixedKey::guide), this);
    m_guide->setShortcut(keySequence(FixedKey::guide));
    addAction(m_guide);
    connect(m_guide, &QAction::triggered, m_projectActions, &ProjectActions::showGuide);
    connect(&m_shortcuts, &ShortcutCenter::bindingsChanged, this, &MainWindow::showKeys);
    showKeys();
}

void MainWindow::showKeys()
{
    if (m_editor) {
        m_editor->setKeyTexts([this](const char* command) {
            for (const ShortcutAction action : allShortcutActions()) {
                const char* name = notification(action).name;
                if (name && qstrcmp(name, command) == 0)
                    return m_shortcuts.bindings().shortcut(action).desktopText();
            }
            return QString();
        });
    }
    for (const KeyedAction& each : m_keyedActions) {
        const QString keys = each.keys ? m_shortcuts.bindings().shortcut(*each.keys).desktopText()
                                       : each.action->shortcut().toString(QKeySequence::NativeText);
        const QString name = each.action->text();
        each.action->setToolTip(keys.isEmpty() ? name : name + QStringLiteral("  ") + keys);
    }
}

template <typename Action>
void MainWindow::observe(const Notification<NoPayload>& command, Action action)
{
    m_observations.push_back(
        m_appState.services().notifications.observe(command, [this, action](const NoPayload&) {
            // What a sheet asks comes first.
            if (!m_sheets->topSheet())
                action();
        }));
}

void MainWindow::observeCommands()
{
    using Mode = RootPresentationMode;
    const auto inEditor = [this](auto action) {
        return [this, action] {
            if (m_appState.projectSession().rootPresentationMode() == Mode::Editor)
                action();
        };
    };
    observe(AppCommandEvents::showProjects, [this] { toggleBrowser(); });
    observe(AppCommandEvents::projectSearch, [this] { findByTitle(); });
    observe(AppCommandEvents::newNote, inEditor([this] { newNote(); }));
    observe(AppCommandEvents::newFolder, inEditor([this] { newFolder(); }));
    observe(AppCommandEvents::mainEditorBack,
            inEditor([this] { m_appState.navigateMainEditorHistory(-1); }));
    observe(AppCommandEvents::mainEditorForward,
            inEditor([this] { m_appState.navigateMainEditorHistory(1); }));
    observe(AppCommandEvents::openNotesLibrary, [this] {
        m_projectActions->showFolder(m_appState.projectSession().library().projectsDirectoryPath());
    });
    observe(AppCommandEvents::openVersionHistoryFolder, inEditor([this] {
                m_projectActions->showFolder(VersionFiles::folderPath(
                    m_appState.projectSession().currentProject()->rootPath));
            }));
    observe(AppCommandEvents::openIconsAndTitles,
            inEditor([this] { m_binder->showIconsAndTitles(); }));
    BinderTreeView* tree = m_binder->tree();
    observe(AppCommandEvents::binderActivateSelection,
            inEditor([tree] { tree->activateCurrent(); }));
    observe(AppCommandEvents::binderExpandFolder, inEditor([tree] { tree->expandCurrent(); }));
    observe(AppCommandEvents::binderCollapseFolder, inEditor([tree] { tree->collapseCurrent(); }));
    observe(AppCommandEvents::binderNextItem, inEditor([tree] { tree->stepCurrent(1); }));
    observe(AppCommandEvents::binderPreviousItem, inEditor([tree] { tree->stepCurrent(-1); }));
    observe(AppCommandEvents::focusBinder,
            inEditor([this] { m_binder->tree()->setFocus(Qt::ShortcutFocusReason); }));
}

void MainWindow::findByTitle()
{
    if (m_appState.projectSession().rootPresentationMode() == RootPresentationMode::Projects)
        browser().focusFilter();
    else
        m_binder->focusFilter();
}

QWidget* MainWindow::makeWorkspace()
{
    auto* workspace = new QWidget(this);
    auto* layout = new QVBoxLayout(workspace);
    layout->setContentsMargins({});
    layout->setSpacing(0);
    m_menu = makeApplicationMenu(m_commands, this);
    const MainToolbar::Menus menus{
        .application = *m_menu,
        .projects = *makeProjectMenu(m_appState, *m_projectActions, *m_actions.showProjects, this),
        .insert = *makeCommandMenu(CommandMenu::Insert, m_commands, this),
        .hasInsert = [this] {
            return hasCommands(CommandMenu::Insert, m_commands);
        }};
    m_toolbar = new MainToolbar(m_appState, m_actions, menus, m_look, workspace);
    layout->addWidget(m_toolbar);
    layout->addWidget(makePanes(workspace), 1);
    connect(m_binder, &BinderView::noteActivated, m_editor, &EditorPaneView::focusText);
    connect(m_editor, &EditorPaneView::titleOutOfSight, m_toolbar, &MainToolbar::setNoteTitle);
    connect(m_editor, &EditorPaneView::linkSheetWanted, this, [this] {
        if (!m_sheets->topSheet())
            m_sheets->present(new LinkSheet(m_editor->session(), m_appState, m_look));
    });
    return workspace;
}

QWidget* MainWindow::makePanes(QWidget* parent)
{
    using Pane = ThreePaneSplitView::Pane;
    auto* panes = new ThreePaneSplitView(parent);
    m_binder = new BinderView(m_appState, *m_actions.newNote, *m_actions.newFolder, m_look, panes);
    connect(m_binder, &BinderView::tagSheetRequested, this,
            [this] { m_sheets->present(new TagFilterSheet(m_appState, m_look)); });
    connect(m_binder, &BinderView::moveSheetRequested, this,
            [this](const QList<BinderRowID>& rows) {
                if (!m_sheets->topSheet())
                    presentMoveSheet(rows);
            });
    auto* page = new RecordPage(m_appState, m_look, panes);
    m_editor = &page->textPane();
    connect(page, &RecordPage::newNoteRequested, this, &MainWindow::newNote);
    connect(page, &RecordPage::restoreWanted, m_binder, &BinderView::restore);
    connect(page, &RecordPage::eraseWanted, m_binder, &BinderView::erase);
    showKeys();
    m_inspector = new InspectorView(m_appState, *m_sheets, m_look, panes);
    connect(m_editor, &EditorPaneView::counted, m_inspector, &InspectorView::showCounts);
    panes->setPane(Pane::Binder, m_binder);
    panes->setPane(Pane::Editor, page);
    panes->setPane(Pane::Inspector, m_inspector);
    m_paneController =
        new OrvaneWorkspaceSplitViewController(*panes, m_paneLayout, m_appState.services(), this);
    const auto color = [this, panes] {
        const SurfaceTokens& s = m_look.tokens().on(Surface::Binder);
        for (const SidePane pane : {SidePane::Binder, SidePane::Inspector})
            panes->divider(pane)->setColors(s.border, s.accent);
    };
    connect(&m_look, &Look::changed, panes, color);
    color();
    connect(m_paneController, &OrvaneWorkspaceSplitViewController::shownChanged, this,
            &MainWindow::showPaneToggles);
    connect(m_paneController, &OrvaneWorkspaceSplitViewController::paneWithKeyboardHidden, m_editor,
            &EditorPaneView::focusText);
    showPaneToggles();
    return panes;
}

void MainWindow::setReducedMotion(std::function<bool()> reducedMotion)
{
    m_paneController->setReducedMotion(std::move(reducedMotion));
}

void MainWindow::showPaneToggles()
{
    const SideVisibility visible = m_paneController->shown();
    m_actions.toggleBinder->setChecked(visible.binder);
    m_actions.toggleInspector->setChecked(visible.inspector);
}

CommandContext MainWindow::commandContext() const
{
    return {.showsProject = m_appState.projectSession().rootPresentationMode() ==
                                RootPresentationMode::Editor &&
                            !m_sheets->topSheet(),
            .mayWrite = m_appState.canCreateOrEdit(),
            .hasNote = m_appState.selection().selectedNoteID().has_value(),
            .canGoBack = m_appState.selection().canNavigateMainEditorBack(),
            .canGoForward = m_appState.selection().canNavigateMainEditorForward(),
            .writesRichText = m_editor && m_editor->session().mode() == EditorMode::richText,
            .mayHaveFormatting = m_editor && m_editor->session().mode() != EditorMode::markdown,
            .showsBinder = m_actions.toggleBinder->isChecked(),
            .showsInspector = m_actions.toggleInspector->isChecked(),
            .showsVersions =
                m_inspector && m_inspector->section() == InspectorView::Section::Versions,
            .isInTable = m_editor && m_editor->isInTable()};
}

void MainWindow::addKey(FixedKey key, std::function<void()> act)
{
    auto* shortcut = new QShortcut(keySequence(key), this);
    connect(shortcut, &QShortcut::activated, this, [this, act = std::move(act)] {
        if (!m_sheets->topSheet())
            act();
    });
}

void MainWindow::makeDirectCommands()
{
    const auto toggleFullScreen = [this] {
        setWindowState(windowState() ^ Qt::WindowFullScreen);
    };
    m_commands.setDirect(DirectCommand::CommandPalette, [this] { openCommandPalette(); });
    const auto showsPanes = [this] {
        return m_appState.projectSession().rootPresentationMode() == RootPresentationMode::Editor;
    };
    const auto goToPane = [this, showsPanes](int by) {
        if (showsPanes())
            focusPane({{m_toolbar},
                       {m_binder},
                       {m_editor, &m_editor->textView()},
                       {&m_editor->offerPart()},
                       {&m_editor->formattingBar()},
                       {m_inspector}},
                      by);
    };
    m_commands.setDirect(
        DirectCommand::NextPane, [goToPane] { goToPane(1); }, showsPanes);
    m_commands.setDirect(
        DirectCommand::PreviousPane, [goToPane] { goToPane(-1); }, showsPanes);
    addKey(FixedKey::nextPane, [goToPane] { goToPane(1); });
    addKey(FixedKey::previousPane, [goToPane] { goToPane(-1); });
    m_commands.setDirect(DirectCommand::CloseWindow, [this] { close(); });
    m_commands.setDirect(DirectCommand::Quit, [this] { close(); });
    m_commands.setDirect(DirectCommand::Minimize, [this] { showMinimized(); });
    m_commands.setDirect(DirectCommand::FullScreen, toggleFullScreen);
    const Services& services = m_appState.services();
    m_commands.setDirect(DirectCommand::ToggleFocusMode, [services] { toggleFocusMode(services); });
    m_commands.setDirect(DirectCommand::FocusParagraph,
                         [services] { setFocusParagraph(services); });
    m_commands.setDirect(DirectCommand::FocusSentence, [services] { setFocusSentence(services); });
    m_commands.setDirect(DirectCommand::ToggleTypewriterMode,
                         [services] { toggleTypewriterMode(services); });
    m_commands.setDirect(
        DirectCommand::MoveTo, [this] { m_binder->showMoveSheet(); },
        [this, showsPanes] {
            return showsPanes() && m_appState.canCreateOrEdit() &&
                   m_appState.selection().selectedBinderRowID();
        });
    const auto showSection = [this](InspectorView::Section section) {
        PaneLayoutSettings::inspectorVisible.write(m_appState.services().defaults, true);
        m_inspector->showSection(section);
        m_inspector->focusSection();
    };
    m_commands.setDirect(DirectCommand::ShowDetails,
                         [showSection] { showSection(InspectorView::Section::Details); });
    m_commands.setDirect(DirectCommand::ShowVersions,
                         [showSection] { showSection(InspectorView::Section::Versions); });
    m_commands.setDirect(DirectCommand::Guide, [this] { m_projectActions->showGuide(); });
    m_commands.setDirect(DirectCommand::About, [this] { showAbout(); });
    addKey(FixedKey::quit, [this] { close(); });
    addKey(FixedKey::fullScreen, toggleFullScreen);
    addKey(FixedKey::menu, [this] {
        if (m_toolbar->isVisible())
            m_toolbar->openMenu();
        else
            browser().openMenu();
    });
    addKey(FixedKey::settings, [this] {
        m_appState.services().notifications.post(AppCommandEvents::openSettingsWindow);
    });
}

void MainWindow::openCommandPalette()
{
    if (!m_sheets->topSheet())
        m_sheets->present(new CommandPalette(m_appState, m_commands, m_look));
}

void MainWindow::showAbout()
{
    m_appState.services().questions.ask(
        {.title = QStringLiteral("OrvaneWorkspace"),
         .text = tr("Version %1\n\nA writing workspace that keeps its projects on your own disk.")
                     .arg(QStringLiteral(ORVANE_VERSION)),
         .buttons = {tr("Close")},
         .defaultButton = 0,
         .suppression = {},
         .choices = {},
         .tone = {}});
}

void MainWindow::connectAppState()
{
    connect(&m_appState.projectSession(), &ProjectSession::rootPresentationModeChanged, this,
            &MainWindow::showMode);
    connect(&m_appState.projectSession(), &ProjectSession::rootPresentationModeChanged, this,
            &MainWindow::updateActions);
    connect(&m_appState.projectSession(), &ProjectSession::currentProjectChanged, this,
            &MainWindow::showTitle);
    connect(&m_appState.projectSession(), &ProjectSession::currentProjectChanged, this,
            &MainWindow::updateActions);
    connect(&m_appState.selection(), &Selection::historyFlagsChanged, this,
            &MainWindow::updateActions);
    connect(m_sheets, &SheetHost::visibleChanged, this, &MainWindow::updateActions);
}

// Who comes back to a project doesn't wait for a page that isn't shown.
ProjectsBrowserView& MainWindow::browser()
{
    if (!m_browser) {
        m_browser = new ProjectsBrowserView(m_appState, *m_projectActions, m_look, this);
        m_browser->setMenu(*m_menu);
        m_stack->addWidget(m_browser);
    }
    return *m_browser;
}

void MainWindow::showMode()
{
    const bool browsing =
        m_appState.projectSession().rootPresentationMode() == RootPresentationMode::Projects;
    m_stack->setCurrentWidget(browsing ? &browser() : m_workspace);
    m_sheets->raise();
    if (!m_hasAppeared)
        return;
    if (browsing)
        browser().appear();
    else if (m_appState.selection().selectedNoteID())
        m_editor->focusText();
    else if (m_binder->tree()->model()->rowCount() <= 1) // nothing but the Trash
        focusPane({{m_editor}}, 1);
    else
        m_binder->tree()->setFocus(Qt::OtherFocusReason);
}

void MainWindow::showTitle()
{
    const auto& project = m_appState.projectSession().currentProject();
    const QString product = QStringLiteral("OrvaneWorkspace");
    setWindowTitle(project ? tr("%1 — %2").arg(project->titleForDisplay(), product) : product);
}

void MainWindow::updateActions()
{
    const bool free = !m_sheets->topSheet();
    const bool editing =
        m_appState.projectSession().rootPresentationMode() == RootPresentationMode::Editor && free;
    m_actions.showProjects->setEnabled(
        free && (editing || m_appState.projectSession().currentProject().has_value()));
    m_actions.back->setEnabled(editing && m_appState.selection().canNavigateMainEditorBack());
    m_actions.forward->setEnabled(editing && m_appState.selection().canNavigateMainEditorForward());
    m_actions.newNote->setEnabled(editing && !m_appState.projectSession().isReadOnly());
    m_actions.newFolder->setEnabled(editing && !m_appState.projectSession().isReadOnly());
    m_actions.toggleBinder->setEnabled(editing);
    m_actions.toggleInspector->setEnabled(editing);
    m_actions.find->setEnabled(free);
}

void MainWindow::toggleBrowser()
{
    if (m_appState.projectSession().rootPresentationMode() == RootPresentationMode::Editor)
        m_appState.projectSession().presentProjectsBrowser();
    else if (m_appState.projectSession().currentProject())
        m_appState.projectSession().presentEditor();
}

void MainWindow::newNote()
{
    if (m_appState.createNote())
        m_editor->focusTitle();
}

void MainWindow::presentMoveSheet(const QList<BinderRowID>& rows)
{
    auto* sheet = new MoveToSheet(m_appState, rows, m_look);
    sheet->setAnchor(m_binder->rectOfRows(*this));
    connect(sheet, &MoveToSheet::newFolderRequested, this,
            [this, sheet, rows](const std::optional<QUuid>& parent) {
                const FolderRecord* above = parent ? m_appState.folder(*parent) : nullptr;
                const auto create = [this, sheet = QPointer(sheet), rows,
                                     parent](const QString& name) -> std::optional<QString> {
                    if (!m_appState.moveRowsToNewFolder(rows, name, parent))
                        return tr("These rows can't be moved there.");
                    if (sheet)
                        sheet->dismiss();
                    return std::nullopt;
                };
                m_sheets->present(new NameSheet(
                    {.title = tr("New Folder"),
                     .hint = above ? tr("It goes into “%1”.").arg(above->titleForList())
                                   : tr("It goes to the top level of the project."),
                     .placeholder = tr("Name of the folder"),
                     .acceptButton = tr("Create Folder"),
                     .initialName = {}},
                    NameSheet::BlankName::Refused, create, m_look));
            });
    m_sheets->present(sheet);
}

void MainWindow::newFolder()
{
    const auto create = [this](const QString& name) -> std::optional<QString> {
        (void)m_appState.createFolder(name);
        return std::nullopt;
    };
    const auto selected = m_appState.selection().selectedFolderID();
    const FolderRecord* parent = selected ? m_appState.folder(*selected) : nullptr;
    const QString hint = parent && !parent->isTrash()
                             ? tr("It goes into “%1”.").arg(parent->titleForList())
                             : tr("It goes to the top level of the project.");
    m_sheets->present(new NameSheet({.title = tr("New Folder"),
                                     .hint = hint,
                                     .placeholder = tr("Name of the folder"),
                                     .acceptButton = tr("Create Folder"),
                                     .initialName = {}},
                                    NameSheet::BlankName::Refused, create, m_look));
}

void MainWindow::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (std::exchange(m_hasAppeared, true))
        return;
    showMode();
}

void MainWindow::flushDrafts()
{
    if (const auto id = m_editor->session().noteID())
        m_editor->session().flushDraftToDisk(*id);
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (!m_appState.projectSession().isAppTerminating() &&
        !m_appState.projectSession().mayLeaveProject()) {
        event->ignore();
        return;
    }
    event->accept();
    emit closed();
}

} // namespace orvane
