// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/Look.h"
#include "core/state/AppState.h"
#include "shell/sheets/QuestionSheet.h"

#include <QObject>
#include <QTimer>

#include <memory>

class QSessionManager;

namespace orvane {

class AppearanceObserver;
class AppUndoRedoRouter;
class AppearanceThemeLibrary;
class DesktopMotion;
class DesktopThemeFollower;
class MainWindow;
class PortalColorScheme;
class RequestOpener;
class SettingsWindow;
class ShortcutCenter;
struct OpenRequest;

/// The program: makes the services of this machine, the look, the central state and the main
/// window, in the order in which they need each other, and takes them down again. Needs a
/// QApplication that outlives it.
class OrvaneWorkspaceApp : public QObject {
    Q_OBJECT
public:
    /// `folders` says where a person's things are; the settings are kept in its configuration
    /// folder. Without a trash the desktop's is used, without a clock the machine's.
    explicit OrvaneWorkspaceApp(const UserFolders& folders,
                                std::unique_ptr<SystemTrash> trash = nullptr,
                                std::unique_ptr<Clock> clock = nullptr);
    ~OrvaneWorkspaceApp() override;

    /// Finds the projects, opens the one that the settings ask for, and shows the window.
    void start();
    /// Brings the window to the front and opens what is asked for. After `start`.
    void open(const orvane::OpenRequest& request);
    /// Writes what is not written yet and closes the project. Further calls do nothing.
    void finish();

    [[nodiscard]] AppState& appState() { return *m_appState; }
    [[nodiscard]] MainWindow& window() { return *m_window; }
    [[nodiscard]] Look& look() { return m_look; }
    [[nodiscard]] AppearanceThemeLibrary& themes() { return *m_themes; }

    /// Opens the settings, or brings them to the front.
    SettingsWindow& showSettings();

signals:
    /// The person closed the main window, or the system asked the program to end.
    void quitRequested();

private:
    [[nodiscard]] AppUndoRedoRouter undoRouter();
    /// The desktop's session ends.
    void endSession(QSessionManager& manager);
    void tellOfSettingsObstacle();

    Look m_look;
    UserDefaults m_defaults;
    NotificationCenter m_notifications;
    SheetQuestions m_questions;
    std::unique_ptr<Beeper> m_beeper;
    std::unique_ptr<SystemTrash> m_trash;
    std::unique_ptr<Clock> m_clock;
    std::unique_ptr<AppearanceThemeLibrary> m_themes;
    std::unique_ptr<PortalColorScheme> m_desktopScheme;
    std::unique_ptr<DesktopThemeFollower> m_themeFollower;
    std::unique_ptr<AppearanceObserver> m_appearance;
    LicencePolicy m_licence;
    std::unique_ptr<ShortcutCenter> m_shortcuts;
    std::unique_ptr<AppState> m_appState;
    std::unique_ptr<DesktopMotion> m_motion;
    std::unique_ptr<MainWindow> m_window;
    std::unique_ptr<RequestOpener> m_opener;
    QTimer m_checkTimer;
    std::unique_ptr<ShownQuestion> m_settingsQuestion;
    std::unique_ptr<SettingsWindow> m_settings;
    NotificationCenter::Observation m_selectionToSave;
    NotificationCenter::Observation m_settingsWanted;
    NotificationCenter::Observation m_bulletsWanted;
    bool m_finished = false;
};

} // namespace orvane
