// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/AppState.h"
#include "shell/desktop/OpenRequest.h"

#include <QObject>

namespace orvane {

class MainWindow;

/// Opens what a start of the program was asked to show: the note of a link, a project by its folder
/// or manifest, a text file as a new note of the open project. What can't be opened is said in one
/// message. Both arguments outlive it.
class RequestOpener : public QObject {
    Q_OBJECT
public:
    RequestOpener(AppState& appState, MainWindow& window, QObject* parent = nullptr);

    /// Brings the window to the front, and opens everything once no sheet asks something.
    void open(const OpenRequest& request);

private:
    void openPending();
    /// Nothing, or a sentence that says why not.
    [[nodiscard]] QString openLink(const QString& link);
    [[nodiscard]] QString openFile(const QString& path);
    [[nodiscard]] QString openText(const QString& path);

    AppState& m_appState;
    MainWindow& m_window;
    QList<OpenRequest> m_pending;
    bool m_opening = false;
};

} // namespace orvane
