// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "platform/AtomicFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <cerrno>
#include <cstring>
#include <filesystem>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <unistd.h>
#endif

namespace orvane {

namespace {

FileError::Code codeOf(const std::error_code& error)
{
    if (error == std::errc::no_such_file_or_directory)
        return FileError::Code::NotFound;
    if (error == std::errc::permission_denied || error == std::errc::read_only_file_system ||
        error == std::errc::operation_not_permitted)
        return FileError::Code::NoAccess;
    if (error == std::errc::no_space_on_device || error == std::errc::file_too_large)
        return FileError::Code::NoSpace;
    return FileError::Code::Other;
}

FileError failure(const QFileDevice& file, const QString& path)
{
    const std::error_code system(errno, std::generic_category());
    FileError::Code code = codeOf(system);
    if (file.error() == QFileDevice::PermissionsError)
        code = FileError::Code::NoAccess;
    else if (file.error() == QFileDevice::ResourceError)
        code = FileError::Code::NoSpace;
    return {code, path, file.errorString()};
}

// File systems without syncing are content with what they have.
bool syncToDisk([[maybe_unused]] const QFileDevice& file)
{
#ifdef Q_OS_UNIX
    return ::fsync(file.handle()) == 0 || errno == EINVAL || errno == ENOTSUP;
#else
    return true;
#endif
}

// A rename is on the disk only when its folder is.
void syncFolderOf([[maybe_unused]] const QString& path)
{
#ifdef Q_OS_UNIX
    const QByteArray folder = QFile::encodeName(QFileInfo(path).absolutePath());
    const int descriptor = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor >= 0) {
        ::fsync(descriptor);
        ::close(descriptor);
    }
#endif
}

} // namespace

QString FileError::text() const
{
    return path + QLatin1String(": ") + detail;
}

std::expected<QByteArray, FileError> readFile(const QString& path)
{
    QFile file(path);
    errno = 0;
    if (!file.exists())
        return std::unexpected(FileError{FileError::Code::NotFound, path,
                                         QString::fromLocal8Bit(std::strerror(ENOENT))});
    if (!file.open(QIODevice::ReadOnly))
        return std::unexpected(failure(file, path));
    QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return std::unexpected(failure(file, path));
    return bytes;
}

std::expected<void, FileError> writeFileAtomically(const QString& path, const QByteArray& bytes)
{
    QSaveFile file(path);
    errno = 0;
    if (!file.open(QIODevice::WriteOnly))
        return std::unexpected(failure(file, path));
    // By us: QSaveFile takes a failure to write what it holds back, or to sync, for success, and
    // would put a file with nothing in it in the old one's place.
    if (file.write(bytes) != bytes.size() || !file.flush() || !syncToDisk(file)) {
        const FileError error = failure(file, path);
        file.cancelWriting();
        return std::unexpected(error);
    }
    if (!file.commit())
        return std::unexpected(failure(file, path));
    syncFolderOf(path);
    return {};
}

std::expected<void, FileError> makeFolder(const QString& path)
{
    std::error_code error;
    std::filesystem::create_directories(path.toStdU16String(), error);
    if (error)
        return std::unexpected(
            FileError{codeOf(error), path, QString::fromStdString(error.message())});
    return {};
}

} // namespace orvane
