// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QObject>

namespace orvane {

class ProjectSession;

/// Whoever types, clicks or drops something while a large project is still being opened means the
/// whole of it: the first such event waits until it is open, some hundredths of a second, and then
/// goes where it was going. Lets go of the application once the project is open.
class InputAfterOpening : public QObject {
    Q_OBJECT
public:
    /// The session outlives this.
    explicit InputAfterOpening(ProjectSession& session, QObject* parent = nullptr);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    ProjectSession& m_session;
};

} // namespace orvane
