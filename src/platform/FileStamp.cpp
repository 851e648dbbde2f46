// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "platform/FileStamp.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>

#include <chrono>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace orvane {

namespace {

constexpr qint64 timeStepNsecs = 50'000'000;

qint64 nowNsecs()
{
    return std::chrono::duration_cast<std::chrono::nanoseconds>(
               std::chrono::system_clock::now().time_since_epoch())
        .count();
}

#ifdef Q_OS_UNIX
FileStamp stampOf(const struct ::stat& status)
{
    FileStamp stamp;
    stamp.exists = true;
    stamp.isFolder = S_ISDIR(status.st_mode);
    stamp.changedNsecs = qint64(status.st_mtim.tv_sec) * 1'000'000'000 + status.st_mtim.tv_nsec;
    stamp.size = status.st_size;
    stamp.identity = status.st_ino;
    return stamp;
}
#endif

} // namespace

FileStamp FileStamp::of(const QString& path)
{
#ifdef Q_OS_UNIX
    struct ::stat status {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0)
        return {};
    FileStamp stamp = stampOf(status);
#else
    FileStamp stamp;
    const QFileInfo info(path);
    if (!info.exists())
        return stamp;
    stamp.exists = true;
    stamp.isFolder = info.isDir();
    stamp.changedNsecs = info.lastModified().toMSecsSinceEpoch() * 1'000'000;
    stamp.size = info.size();
#endif
    stamp.isSettled = nowNsecs() - stamp.changedNsecs > timeStepNsecs;
    return stamp;
}

#ifdef Q_OS_UNIX

FolderStamps::FolderStamps(const QString& folder)
    : m_descriptor(::open(QFile::encodeName(folder).constData(), O_PATH | O_DIRECTORY | O_CLOEXEC))
{}

FolderStamps::~FolderStamps()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

FileStamp FolderStamps::of(const QByteArray& relativePath) const
{
    struct ::stat status {};
    const char* path = relativePath.isEmpty() ? "." : relativePath.constData();
    return m_descriptor >= 0 && ::fstatat(m_descriptor, path, &status, 0) == 0 ? stampOf(status)
                                                                               : FileStamp();
}

#else

FolderStamps::FolderStamps(const QString& folder)
    : m_folder(folder)
{}

FolderStamps::~FolderStamps() = default;

FileStamp FolderStamps::of(const QByteArray& relativePath) const
{
    return FileStamp::of(m_folder + u'/' + QFile::decodeName(relativePath));
}

#endif

} // namespace orvane
