// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QString>

#include <expected>
#include <memory>
#include <optional>

class QLockFile;

namespace orvane {

/// Who has a project open.
struct LockHolder {
    qint64 processId = 0;
    QString program;
    QString host;

    bool operator==(const LockHolder&) const = default;
};

/// Keeps a second process from opening the same project: a lock file in the project's data
/// folder, held as long as this object lives. A lock whose process is gone, or which is from
/// before this machine started, is stale and taken over. A lock from another machine (a shared or
/// synchronised folder) is never taken for stale, because its process can't be looked up.
class ProjectLock {
public:
    enum class Problem {
        Held,     ///< somebody has it
        NoAccess, ///< the folder can't be written
        Other,    ///< most often a full disk
    };
    struct Failure {
        Problem problem = Problem::Other;
        QString path;
        std::optional<LockHolder> holder;
    };

    /// Takes the lock of a folder, without waiting.
    [[nodiscard]] static std::expected<ProjectLock, Failure> take(const QString& folder);

    ProjectLock(ProjectLock&&) noexcept;
    ProjectLock& operator=(ProjectLock&&) noexcept;
    ~ProjectLock();

    /// True when the last holder ended without giving the lock back.
    [[nodiscard]] bool wasStale() const { return m_wasStale; }

    [[nodiscard]] static QString pathIn(const QString& folder);

private:
    ProjectLock(std::unique_ptr<QLockFile> file, bool wasStale);

    std::unique_ptr<QLockFile> m_file;
    bool m_wasStale = false;
};

} // namespace orvane
