// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "platform/Timestamp.h"

#include <QString>

#include <expected>
#include <memory>
#include <optional>

namespace orvane {

/// Who has a project open.
struct LockHolder {
    qint64 processId = 0;
    QString program;
    QString host;
    Timestamp since;

    bool operator==(const LockHolder&) const = default;
};

/// Keeps a second process from opening the same project: a file in the project's data folder that
/// is there, says who has it, and is locked with the system as long as this object lives. The
/// system's lock ends with its process, so that a file left behind on this machine is taken over
/// at once. One left by another machine (in a shared or synchronised folder) counts as held,
/// because nothing is known about the process there.
class ProjectLock {
public:
    enum class Problem {
        Held,     ///< somebody has it
        NoAccess, ///< the folder can't be written
        NoSpace,  ///< the disk is full
        Other,
    };
    struct Failure {
        Problem problem = Problem::Other;
        QString path;
        QString detail;
        std::optional<LockHolder> holder;
    };

    /// Takes the lock of a folder, without waiting. `now` is told to whoever finds it held.
    [[nodiscard]] static std::expected<ProjectLock, Failure> take(const QString& folder,
                                                                  Timestamp now);

    ProjectLock(ProjectLock&&) noexcept;
    ProjectLock& operator=(ProjectLock&&) noexcept;
    ~ProjectLock();

    /// Who has the project of this data folder open, told without taking anything: nothing where
    /// nobody has, or this process has. The file alone decides where the system doesn't tell its
    /// locks.
    [[nodiscard]] static std::optional<LockHolder> holder(const QString& folder);

    /// True when the last holder ended without giving the lock back.
    [[nodiscard]] bool wasStale() const;

    [[nodiscard]] static QString pathIn(const QString& folder);

private:
    struct Held;
    explicit ProjectLock(std::unique_ptr<Held> held);

    std::unique_ptr<Held> m_held;
};

} // namespace orvane
