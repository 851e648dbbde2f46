// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QObject>

#include <array>

namespace orvane {

/// Turns the system's requests to stop (SIGTERM, SIGINT and SIGHUP) into a signal on the event
/// loop, where saving is safe. One at a time.
class SessionEnd : public QObject {
    Q_OBJECT
public:
    explicit SessionEnd(QObject* parent = nullptr);
    ~SessionEnd() override;

signals:
    void requested();

private:
    std::array<int, 2> m_pipe{-1, -1};
};

} // namespace orvane
