// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "platform/FolderHandle.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

std::unexpected<FileError> failed(const QString& path, int error)
{
    auto code = FileError::Code::Other;
    if (error == ENOENT || error == ENOTDIR || error == ELOOP)
        code = FileError::Code::NotFound;
    else if (error == EACCES || error == EPERM)
        code = FileError::Code::NoAccess;
    return std::unexpected(FileError{code, path, qt_error_string(error)});
}

FileIdentity identityOf(const struct ::stat& status)
{
    return {quint64(status.st_dev), quint64(status.st_ino)};
}

} // namespace

std::expected<FileIdentity, FileError> FileIdentity::of(const QString& path)
{
    struct ::stat status {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0)
        return failed(path, errno);
    return identityOf(status);
}

std::expected<std::shared_ptr<const FolderHandle>, FileError>
FolderHandle::open(const QString& path)
{
    // Held for its name only, so that a folder that may not be listed can be held as well.
#ifdef O_PATH
    constexpr int flags = O_PATH | O_DIRECTORY | O_CLOEXEC;
#else
    constexpr int flags = O_RDONLY | O_DIRECTORY | O_CLOEXEC;
#endif
    const int descriptor = ::open(QFile::encodeName(path).constData(), flags);
    if (descriptor < 0)
        return failed(path, errno);
    std::shared_ptr<FolderHandle> handle(new FolderHandle);
    handle->m_descriptor = descriptor;
#ifdef Q_OS_LINUX
    // A name below another handle says nothing once that one is gone.
    if (!path.startsWith("/proc/self/fd/"_L1))
        handle->m_openedPath = path;
    handle->m_path = u"/proc/self/fd/%1"_s.arg(descriptor);
#else
    handle->m_openedPath = path;
    handle->m_path = path;
#endif
    struct ::stat status {};
    if (::fstat(descriptor, &status) != 0)
        return failed(path, errno);
    handle->m_identity = orvane::identityOf(status);
    return handle;
}

FolderHandle::~FolderHandle()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

std::expected<FileIdentity, FileError> FolderHandle::identityOf(const QByteArray& name) const
{
    struct ::stat status {};
    if (::fstatat(m_descriptor, name.constData(), &status, 0) != 0)
        return failed(m_path + u'/' + QFile::decodeName(name), errno);
    return orvane::identityOf(status);
}

std::expected<QString, FileError> FolderHandle::place() const
{
    // The name that was opened first: it may lead through links that a person has made.
    const auto opened = FileIdentity::of(m_openedPath);
    if (opened && *opened == m_identity)
        return m_openedPath;
#ifdef Q_OS_LINUX
    QString named = QFile::symLinkTarget(m_path);
    const auto now = FileIdentity::of(named);
    if (now && *now == m_identity)
        return named;
#endif
    return opened ? failed(m_openedPath, ENOENT) : std::unexpected(opened.error());
}

QString FolderHandle::named(QString text) const
{
    QString here = place().value_or(m_openedPath);
    if (text == m_path)
        return here;
    return text.replace(m_path + u'/', here + u'/');
}

} // namespace orvane
