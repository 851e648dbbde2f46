// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "platform/FileStamp.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>

#include <chrono>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
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

} // namespace

FileStamp FileStamp::of(const QString& path)
{
    FileStamp stamp;
#ifdef Q_OS_UNIX
    struct ::stat status {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0)
        return stamp;
    stamp.exists = true;
    stamp.isFolder = S_ISDIR(status.st_mode);
    stamp.changedNsecs = qint64(status.st_mtim.tv_sec) * 1'000'000'000 + status.st_mtim.tv_nsec;
    stamp.size = status.st_size;
    stamp.identity = status.st_ino;
#else
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

} // namespace orvane
