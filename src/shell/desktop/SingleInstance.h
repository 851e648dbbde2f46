// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "shell/desktop/LocalSocket.h"
#include "shell/desktop/OpenRequest.h"

#include <QLockFile>
#include <QObject>

#include <chrono>

namespace orvane {

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
    explicit SingleInstance(const QString& folder, QObject* parent = nullptr);
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

    QString m_socketPath;
    QLockFile m_lock;
    LocalSocket m_listening;
};

} // namespace orvane
