// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "shell/desktop/LocalSocket.h"
#include "shell/desktop/OpenRequest.h"

#include <QList>
#include <QLockFile>
#include <QObject>
#include <QTimer>

#include <chrono>

class QSocketNotifier;

namespace orvane {

/// What a running program spends on those that connect to it.
struct ConnectionLimits {
    int held = 32; ///< at once; the oldest goes first
    /// For a message to be whole. A start that hands over sends its message at once.
    std::chrono::milliseconds patience = std::chrono::seconds(5);
    /// Before the next look, when the system had no room for a connection.
    std::chrono::milliseconds pause = std::chrono::seconds(1);
};

/// Sees to it that the program runs once for a person: the first start listens on a socket in the
/// person's runtime folder, every further one hands over what it was asked to open and ends.
class SingleInstance : public QObject {
    Q_OBJECT
public:
    enum class Role {
        First,       ///< this is the running program
        HandedOver,  ///< another one runs and has taken the request
        NotAnswering ///< another one runs and took nothing within the time
    };

    /// `folder` is the runtime folder; both the lock and the socket stand there.
    explicit SingleInstance(const QString& folder, const ConnectionLimits& limits = {},
                            QObject* parent = nullptr);
    ~SingleInstance() override;

    /// Becomes the first, or hands `request` to it. Waits `patience` at most. Where the folder
    /// takes no lock, every start is the first; a project's own lock still keeps two apart.
    [[nodiscard]] Role claim(const OpenRequest& request,
                             std::chrono::milliseconds patience = std::chrono::seconds(5));

signals:
    /// A further start has handed this over. Not told for requests that are no messages of ours.
    void requested(const orvane::OpenRequest& request);

private:
    void listen();
    [[nodiscard]] bool handOver(const OpenRequest& request, std::chrono::milliseconds patience);
    void takeConnections();
    void hold(LocalSocket socket);

    QString m_socketPath;
    QLockFile m_lock;
    ConnectionLimits m_limits;
    LocalSocket m_listening;
    QSocketNotifier* m_incoming = nullptr;
    QTimer m_pause;
    QList<QObject*> m_held; ///< oldest first
};

} // namespace orvane
