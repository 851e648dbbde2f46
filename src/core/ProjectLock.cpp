// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/ProjectLock.h"

#include <QFile>
#include <QLockFile>

namespace orvane {

using namespace Qt::StringLiterals;

ProjectLock::ProjectLock(std::unique_ptr<QLockFile> file, bool wasStale)
    : m_file(std::move(file))
    , m_wasStale(wasStale)
{}

ProjectLock::ProjectLock(ProjectLock&&) noexcept = default;
ProjectLock& ProjectLock::operator=(ProjectLock&&) noexcept = default;
ProjectLock::~ProjectLock() = default;

QString ProjectLock::pathIn(const QString& folder)
{
    return folder + "/OrvaneWorkspace.lock"_L1;
}

std::expected<ProjectLock, ProjectLock::Failure> ProjectLock::take(const QString& folder)
{
    const QString path = pathIn(folder);
    const bool leftBehind = QFile::exists(path);
    auto file = std::make_unique<QLockFile>(path);
    // Age alone makes no lock stale: a project may stay open for weeks.
    file->setStaleLockTime(0);
    if (file->tryLock(0))
        return ProjectLock(std::move(file), leftBehind);

    Failure failure{Problem::Other, path, std::nullopt};
    if (file->error() == QLockFile::PermissionError)
        failure.problem = Problem::NoAccess;
    if (file->error() == QLockFile::LockFailedError) {
        failure.problem = Problem::Held;
        LockHolder holder;
        if (file->getLockInfo(&holder.processId, &holder.host, &holder.program))
            failure.holder = holder;
    }
    return std::unexpected(failure);
}

} // namespace orvane
