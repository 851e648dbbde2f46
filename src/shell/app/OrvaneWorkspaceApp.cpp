// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/app/OrvaneWorkspaceApp.h"

#include "appearance/AppearanceObserver.h"
#include "appearance/DesktopMotion.h"
#include "appearance/WornLook.h"
#include "appearance/themes/AppearanceKeysMigration.h"
#include "appearance/themes/AppearanceThemeLibrary.h"
#include "appearance/themes/DesktopThemeFollower.h"
#include "commands/AppCommandEvents.h"
#include "editor/pane/EditorPaneView.h"
#include "editor/session/EditorSession.h"
#include "editor/view/EditorView.h"
#include "shell/app/EnglishSentences.h"
#include "shell/app/InputAfterOpening.h"
#include "shell/app/SessionEnd.h"
#include "shell/app/ShellAccessible.h"
#include "shell/binder/BinderTreeView.h"
#include "shell/desktop/RequestOpener.h"
#include "shell/settings/SettingsWindow.h"
#include "shell/shortcuts/ShortcutCenter.h"
#include "shell/window/MainWindow.h"

#include <QApplication>
#include <QDir>
#include <QIcon>
#include <QSessionManager>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

class DesktopBeeper final : public Beeper {
public:
    void beep() override { QApplication::beep(); }
};

QString settingsPath(const UserFolders& folders)
{
    return folders.configuration + "/settings.json"_L1;
}

/// The locks of the panes hold for one run of the program.
void clearPaneLocks(UserDefaults& defaults)
{
    for (const auto& pane : {"binder"_L1, "editor"_L1, "inspector"_L1})
        defaults.set("settings.layout.lock."_L1 + pane, false);
}

constexpr std::chrono::milliseconds checkDelay{1'500};
constexpr std::chrono::milliseconds lateDelay{300};

} // namespace

OrvaneWorkspaceApp::OrvaneWorkspaceApp(const UserFolders& folders,
                                       std::unique_ptr<SystemTrash> trash,
                                       std::unique_ptr<Clock> clock)
    : m_look({})
    , m_defaults(settingsPath(folders))
    , m_beeper(std::make_unique<DesktopBeeper>())
    , m_trash(trash ? std::move(trash) : std::make_unique<DesktopTrash>())
    , m_clock(clock ? std::move(clock) : std::make_unique<SystemClock>())
{
    installEnglishSentences();
    installShellAccessibility();
    const Services services{.defaults = m_defaults,
                            .notifications = m_notifications,
                            .questions = m_questions,
                            .beeper = *m_beeper,
                            .trash = *m_trash,
                            .clock = *m_clock,
                            .licence = m_licence,
                            .folders = folders};
    m_appState = std::make_unique<AppState>(services);
    connect(&m_appState->projectSession(), &ProjectSession::licenceUnlockAsked, this,
            [this] { m_notifications.post(AppCommandEvents::showLicenseUnlock); });
    m_selectionToSave = m_notifications.observe(
        AppCommandEvents::saveSelectionToNewNote, [this](const SelectionForNewNote& selection) {
            (void)m_appState->createNote(selection.text, selection.rtf.isEmpty()
                                                             ? std::nullopt
                                                             : std::optional(Blob(selection.rtf)));
        });
    m_appState->projectSession().prepareBootstrap();
    // Themes come first: a fresh installation is known by settings that are all unset.
    migrateAppearanceKeys(m_defaults);
    m_themes = std::make_unique<AppearanceThemeLibrary>(m_defaults, *m_clock);
    m_themes->load();
    m_desktopScheme = std::make_unique<PortalColorScheme>(schemeOf(QGuiApplication::palette()));
    m_themeFollower =
        std::make_unique<DesktopThemeFollower>(m_defaults, *m_themes, *m_desktopScheme);
    m_appearance = std::make_unique<AppearanceObserver>(m_defaults, m_look);
    m_shortcuts = std::make_unique<ShortcutCenter>(services, undoRouter());
    m_shortcuts->start();
    clearPaneLocks(m_defaults);
    auto* sessionEnd = new SessionEnd(this);
    // The system doesn't wait for answers: what can't be saved is kept in a rescue file.
    connect(sessionEnd, &SessionEnd::requested, this, [this] {
        finish();
        emit quitRequested();
    });
    // The check reads the whole store, so it waits until the project is on the screen.
    m_checkTimer.setSingleShot(true);
    m_checkTimer.setInterval(checkDelay);
    connect(&m_checkTimer, &QTimer::timeout, &m_appState->projectSession(),
            &ProjectSession::checkStoreInBackground);
    connect(&m_appState->projectSession(), &ProjectSession::currentProjectChanged, &m_checkTimer,
            qOverload<>(&QTimer::start));
    connect(qApp, &QGuiApplication::commitDataRequest, this, &OrvaneWorkspaceApp::endSession,
            Qt::DirectConnection);
}

OrvaneWorkspaceApp::~OrvaneWorkspaceApp()
{
    finish();
    m_settingsQuestion.reset();
    m_questions.setHost(nullptr, nullptr);
    m_opener.reset();
    m_settings.reset();
    m_window.reset();
    m_appState.reset();
}

AppUndoRedoRouter OrvaneWorkspaceApp::undoRouter()
{
    // Where the keyboard is, else the text of the open note, so that the last words can be taken
    // back from the Binder as well; never that of a window behind. In the Binder what was done last
    // goes first, be it there or in the text.
    const auto binder = [this]() -> std::optional<UndoTarget> {
        if (!qobject_cast<BinderTreeView*>(QApplication::focusWidget()))
            return std::nullopt;
        AppState& state = *m_appState;
        return UndoTarget{
            [&state] { return state.canCreateOrEdit() && state.canUndoNotebookStep(); },
            [&state] { return state.canCreateOrEdit() && state.canRedoNotebookStep(); },
            [&state] { (void)state.undoNotebookStep(); },
            [&state] {
                (void)state.redoNotebookStep();
            }};
    };
    const auto text = [this]() -> std::optional<UndoTarget> {
        if (!m_window || !m_window->isActiveWindow())
            return std::nullopt;
        EditorView& view = m_window->editorPane().textView();
        return view.isVisible() ? undoTargetOf(&view) : std::nullopt;
    };
    const auto isBinderNewest = [this] {
        return m_window && !m_appState->hasWordsSinceNotebookStep() &&
               !m_window->editorPane().session().isDirty();
    };
    return AppUndoRedoRouter({[] { return undoTargetOf(QApplication::focusWidget()); },
                              [=] { return isBinderNewest() ? binder() : std::nullopt; }, text,
                              binder});
}

void OrvaneWorkspaceApp::start()
{
    wear(m_look);
    m_window = std::make_unique<MainWindow>(*m_appState, *m_shortcuts, m_look);
    m_questions.setHost(&m_window->sheets(), &m_look);
    connect(m_window.get(), &MainWindow::closed, this, &OrvaneWorkspaceApp::quitRequested);
    m_appState->projectSession().bootstrapProjects();
    new InputAfterOpening(m_appState->projectSession(), m_window.get());
    m_window->show();
    tellOfSettingsObstacle();
    // Asking the desktop and finding the icon are nothing that a first frame waits for.
    QTimer::singleShot(lateDelay, this, [this] {
        m_desktopScheme->ask();
        m_motion = std::make_unique<DesktopMotion>(m_defaults);
        m_window->setReducedMotion([this] { return m_motion->isReduced(); });
        QGuiApplication::setWindowIcon(QIcon::fromTheme(u"orvaneworkspace"_s));
    });
    m_settingsWanted = m_notifications.observe(AppCommandEvents::openSettingsWindow,
                                               [this](const NoPayload&) { showSettings(); });
    m_bulletsWanted = m_notifications.observe(
        AppCommandEvents::openBulletLibrarySettings,
        [this](const NoPayload&) { showSettings().showPage(SettingsPageId::Bullets); });
}

void OrvaneWorkspaceApp::tellOfSettingsObstacle()
{
    const QString path = settingsPath(m_appState->services().folders);
    const auto obstacle = obstacleAt(path, FileLimit::settings);
    if (!obstacle)
        return;
    Question question;
    question.title = tr("The Settings Can't Be Read");
    question.text =
        tr("%1 The program goes on with its defaults and leaves the file alone, so what "
           "you set now is forgotten when it ends. Move this away and start again:\n%2")
            .arg(obstacle->detail, QDir::toNativeSeparators(path));
    question.buttons = {tr("Close")};
    question.tone = Question::Tone::Warning;
    m_settingsQuestion =
        m_questions.show(question, [this](const Answer&) { m_settingsQuestion.reset(); });
}

void OrvaneWorkspaceApp::open(const OpenRequest& request)
{
    if (!m_opener)
        m_opener = std::make_unique<RequestOpener>(*m_appState, *m_window);
    m_opener->open(request);
}

SettingsWindow& OrvaneWorkspaceApp::showSettings()
{
    if (!m_settings)
        m_settings = std::make_unique<SettingsWindow>(m_appState->services(), m_look, *m_shortcuts,
                                                      *m_themes);
    m_settings->present(*m_window);
    return *m_settings;
}

void OrvaneWorkspaceApp::endSession(QSessionManager& manager)
{
    if (!m_window)
        return;
    m_window->flushDrafts();
    if (!manager.allowsInteraction())
        return m_appState->projectSession().rescueNow();
    if (!m_appState->projectSession().mayLeaveProject())
        manager.cancel();
    manager.release();
}

void OrvaneWorkspaceApp::finish()
{
    if (std::exchange(m_finished, true))
        return;
    if (m_window)
        m_appState->projectSession().terminate();
    if (const auto flushed = m_defaults.flush(); !flushed)
        qWarning("The settings could not be saved: %ls", qUtf16Printable(flushed.error().text()));
}

} // namespace orvane
