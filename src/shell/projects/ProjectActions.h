// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/state/AppState.h"
#include "shell/sheets/SheetHost.h"

#include <QObject>

namespace orvane {

/// What a person does with projects, with the sheets and questions that go with it.
class ProjectActions : public QObject {
    Q_OBJECT
public:
    ProjectActions(AppState& appState, Look& look, SheetHost& sheets, QObject* parent = nullptr);

    /// Opens the project of a tile, after a question where the settings ask for one.
    void openFromTile(const QString& folder);
    /// Says of a tile whose folder is missing what can be done.
    void explainMissing(const QString& folder);
    void showNewProjectSheet();
    void showRenameSheet(const QString& folder);
    /// Title and icon of the project in this folder, to be changed.
    void showIconAndTitle(const QString& folder);
    void moveToTrash(const QString& folder);
    /// Whether a sheet waits for an answer.
    [[nodiscard]] bool isAsking() const { return m_sheets.topSheet(); }
    /// The welcome, unless it has been answered or is on screen.
    void showWelcomeIfNeeded();
    void showGuide();
    /// Opens a folder in the desktop's file manager; makes it where it is missing.
    void showFolder(const QString& path);

private:
    void showPendingAlerts();
    bool passesLicence();
    /// Offers a project that was just made its icon, when what asked for it is off the screen.
    void offerIcon(const QUuid& project);
    void startWithStarterProject();
    void tell(const QString& title, const QString& text);

    AppState& m_appState;
    Look& m_look;
    SheetHost& m_sheets;
    QPointer<Sheet> m_welcome;
    QPointer<Sheet> m_guide;
    bool m_alertIsShown = false;
};

} // namespace orvane
