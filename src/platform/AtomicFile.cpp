// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "platform/AtomicFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <limits>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <sys/stat.h>
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

constexpr qint64 pieceSize = 1 << 20;
constexpr qint64 megabyte = 1 << 20;
constexpr int mostLinks = 40; // as the system follows

struct FileWords {
    Q_DECLARE_TR_FUNCTIONS(FileWords)
public:
    static QString notAFile()
    {
        return tr("It is no ordinary file, but a folder, a pipe, a device or a circle of links.");
    }
    static QString tooBig(qint64 limit)
    {
        return tr("It is larger than %n megabytes, which no such file is.", nullptr,
                  int(limit / megabyte));
    }
};

FileError tooBig(const QString& path, qint64 limit)
{
    return {FileError::Code::TooBig, path, FileWords::tooBig(limit)};
}

#ifdef Q_OS_UNIX

struct Descriptor {
    explicit Descriptor(int descriptor)
        : number(descriptor)
    {}
    ~Descriptor()
    {
        if (number >= 0)
            ::close(number);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    const int number;
};

/// From errno.
FileError systemFailure(const QString& path)
{
    const std::error_code error(errno, std::generic_category());
    if (error == std::errc::too_many_symbolic_link_levels)
        return {FileError::Code::NotAFile, path, FileWords::notAFile()};
    return {codeOf(error), path, QString::fromStdString(error.message())};
}

std::optional<FileError> obstacle(const struct ::stat& status, const QString& path, qint64 limit)
{
    if (!S_ISREG(status.st_mode))
        return FileError{FileError::Code::NotAFile, path, FileWords::notAFile()};
    return status.st_size > limit ? std::optional(tooBig(path, limit)) : std::nullopt;
}

/// A descriptor to read from, which is the caller's to close, and the file's state.
std::expected<int, FileError> openRegularFile(const QString& path, qint64 limit,
                                              struct ::stat& status)
{
    const QByteArray name = QFile::encodeName(path);
    // First without opening: to open a device can set it going.
    if (::stat(name.constData(), &status) != 0)
        return std::unexpected(systemFailure(path));
    if (auto error = obstacle(status, path, limit))
        return std::unexpected(*std::move(error));
    const int file = ::open(name.constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (file < 0)
        return std::unexpected(systemFailure(path));
    // Another one may stand there by now.
    auto error = ::fstat(file, &status) != 0 ? std::optional(systemFailure(path))
                                             : obstacle(status, path, limit);
    if (!error)
        return file;
    ::close(file);
    return std::unexpected(*std::move(error));
}

#endif

/// Where a file is written so that links to it stay, also one that leads to nothing yet.
QString endOfLinks(const QString& path)
{
    QString end = path;
    for (int i = 0; i < mostLinks && QFileInfo(end).isSymLink(); ++i)
        end = QFileInfo(end).symLinkTarget();
    return end;
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

} // namespace

QString FileError::text() const
{
    return path + QLatin1String(": ") + detail;
}

std::optional<FileError> obstacleAt(const QString& path, qint64 limit)
{
#ifdef Q_OS_UNIX
    struct ::stat status {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0)
        return errno == ELOOP ? std::optional(systemFailure(path)) : std::nullopt;
    return obstacle(status, path, limit);
#else
    const QFileInfo info(path);
    if (info.exists() && !info.isFile())
        return FileError{FileError::Code::NotAFile, path, FileWords::notAFile()};
    return info.size() > limit ? std::optional(tooBig(path, limit)) : std::nullopt;
#endif
}

std::optional<FileError> obstacleAt(const QString& path)
{
    return obstacleAt(path, std::numeric_limits<qint64>::max());
}

std::expected<QByteArray, FileError> readFile(const QString& path, qint64 limit)
{
    return readFile(path, limit, [](qint64, qint64) { return true; });
}

std::expected<QByteArray, FileError> readFile(const QString& path)
{
    return readFile(path, FileLimit::ofNoKind);
}

#ifdef Q_OS_UNIX

std::expected<QByteArray, FileError>
readFile(const QString& path, qint64 limit,
         const std::function<bool(qint64 read, qint64 whole)>& piece)
{
    struct ::stat status {};
    const auto opened = openRegularFile(path, limit, status);
    if (!opened)
        return std::unexpected(opened.error());
    const Descriptor file(*opened);
    QByteArray bytes;
    bytes.reserve(qsizetype(status.st_size));
    qint64 room = pieceSize;
    do {
        // One byte more than there may be, so that a file that grows meanwhile is found out.
        room = std::min(pieceSize, limit + 1 - bytes.size());
        const qsizetype before = bytes.size();
        bytes.resize(before + qsizetype(room));
        const ssize_t count = ::read(file.number, bytes.data() + before, size_t(room));
        bytes.truncate(before + std::max<qsizetype>(0, count));
        if (count < 0 && errno != EINTR)
            return std::unexpected(systemFailure(path));
        if (bytes.size() > limit)
            return std::unexpected(tooBig(path, limit));
        if (count == 0)
            break;
    } while (piece(bytes.size(), std::max<qint64>(status.st_size, bytes.size())));
    return bytes;
}

std::expected<QByteArray, FileError> readFilePart(const QString& path, qint64 at, qint64 size)
{
    struct ::stat status {};
    const auto opened = openRegularFile(path, std::numeric_limits<qint64>::max(), status);
    if (!opened)
        return std::unexpected(opened.error());
    const Descriptor file(*opened);
    QByteArray bytes(std::clamp<qint64>(status.st_size - at, 0, size), Qt::Uninitialized);
    qsizetype read = 0;
    while (read < bytes.size()) {
        const ssize_t count =
            ::pread(file.number, bytes.data() + read, size_t(bytes.size() - read), at + read);
        if (count < 0 && errno != EINTR)
            return std::unexpected(systemFailure(path));
        if (count == 0)
            break;
        read += std::max<ssize_t>(0, count);
    }
    bytes.truncate(read);
    return bytes;
}

#else

std::expected<QByteArray, FileError>
readFile(const QString& path, qint64 limit,
         const std::function<bool(qint64 read, qint64 whole)>& piece)
{
    QFile file(path);
    errno = 0;
    if (!file.exists())
        return std::unexpected(FileError{FileError::Code::NotFound, path,
                                         QString::fromLocal8Bit(std::strerror(ENOENT))});
    if (auto error = obstacleAt(path, limit))
        return std::unexpected(*std::move(error));
    if (!file.open(QIODevice::ReadOnly))
        return std::unexpected(failure(file, path));
    QByteArray bytes;
    do {
        const QByteArray more = file.read(pieceSize);
        if (more.isEmpty())
            break;
        bytes.append(more);
        if (bytes.size() > limit)
            return std::unexpected(tooBig(path, limit));
    } while (piece(bytes.size(), std::max(file.size(), qint64(bytes.size()))));
    if (file.error() != QFileDevice::NoError)
        return std::unexpected(failure(file, path));
    return bytes;
}

std::expected<QByteArray, FileError> readFilePart(const QString& path, qint64 at, qint64 size)
{
    QFile file(path);
    errno = 0;
    if (auto error = obstacleAt(path))
        return std::unexpected(*std::move(error));
    if (!file.open(QIODevice::ReadOnly) || !file.seek(at))
        return std::unexpected(failure(file, path));
    return file.read(std::max<qint64>(0, size));
}

#endif

std::expected<void, FileError> writeFileAtomically(const QString& path, const QByteArray& bytes)
{
    if (auto error = obstacleAt(path))
        return std::unexpected(*std::move(error));
    QSaveFile file(endOfLinks(path));
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
    // A rename is on the disk only when its folder is.
    (void)syncFolder(QFileInfo(file.fileName()).absolutePath());
    return {};
}

namespace {

#ifdef Q_OS_UNIX
// Opens a folder for `sync`, which gives 0 when all is on the disk.
std::expected<void, FileError> syncBelow(const QString& path, int (*sync)(int))
{
    const auto failed = [&] {
        const std::error_code error(errno, std::generic_category());
        return std::unexpected(
            FileError{codeOf(error), path, QString::fromStdString(error.message())});
    };
    const int descriptor =
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return failed();
    std::expected<void, FileError> result;
    if (sync(descriptor) != 0)
        result = failed();
    ::close(descriptor);
    return result;
}
#endif

} // namespace

std::expected<void, FileError> syncFolder([[maybe_unused]] const QString& path)
{
#ifdef Q_OS_UNIX
    return syncBelow(path, ::fsync);
#else
    return {};
#endif
}

std::expected<void, FileError> syncFileSystem([[maybe_unused]] const QString& path)
{
#ifdef Q_OS_LINUX
    return syncBelow(path, ::syncfs);
#elif defined(Q_OS_UNIX)
    ::sync();
    return {};
#else
    return {};
#endif
}

std::expected<void, FileError> writeUnsyncedFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    errno = 0;
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly))
        return std::unexpected(failure(file, path));
    if (file.write(bytes) == bytes.size() && file.flush())
        return {};
    const FileError error = failure(file, path);
    file.remove();
    return std::unexpected(error);
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
