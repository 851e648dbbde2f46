// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QByteArray>
#include <QString>

#include <expected>
#include <functional>
#include <optional>

namespace orvane {

/// Why a file could not be read or written.
struct FileError {
    enum class Code {
        NotFound, ///< nothing at that path
        NoAccess, ///< permission or a read-only file system
        NoSpace,  ///< the disk or a quota is full
        Exists,   ///< something has that name already
        NotAFile, ///< a folder, pipe, device or socket stands there, or links in a circle
        TooBig,   ///< larger than a file of its kind ever is
        Other,
    };
    Code code = Code::Other;
    QString path;
    /// The system's own words, or ours for `NotAFile` and `TooBig`.
    QString detail;

    /// "path: detail", for the log.
    [[nodiscard]] QString text() const;
};

/// How large a file of each kind may be, in bytes; docs/formats.md tells why. What is larger is
/// none of ours.
namespace FileLimit {
inline constexpr qint64 manifest = 1 << 20;
inline constexpr qint64 recoveryMarker = 1 << 20;
inline constexpr qint64 theme = 1 << 20;
inline constexpr qint64 personalWords = 16 << 20;
inline constexpr qint64 workspaceState = 16 << 20;
inline constexpr qint64 settings = 64 << 20;
inline constexpr qint64 dictionary = 64 << 20;
inline constexpr qint64 textToOpen = 64 << 20;
inline constexpr qint64 image = 64 << 20;
inline constexpr qint64 earlierNotebook = qint64(1) << 30;
inline constexpr qint64 versionHistory = qint64(2) << 30;
inline constexpr qint64 ofNoKind = qint64(2) << 30;
} // namespace FileLimit

/// What stands at the path, links followed, in the way of reading a file of at most `limit` bytes:
/// `NotAFile` or `TooBig`. Nothing where a regular file or no file is. Opens nothing. Any thread.
[[nodiscard]] std::optional<FileError> obstacleAt(const QString& path, qint64 limit);
/// The same for a file of whatever size.
[[nodiscard]] std::optional<FileError> obstacleAt(const QString& path);

/// Reads a whole regular file of at most `limit` bytes. Never waits for a pipe or a device, and
/// never opens one. Any thread.
[[nodiscard]] std::expected<QByteArray, FileError> readFile(const QString& path, qint64 limit);

/// The same for a file that has no kind, such as a test's own.
[[nodiscard]] std::expected<QByteArray, FileError> readFile(const QString& path);

/// The same in pieces, for large files: `piece` is told how much has been read and how much there
/// is, and says whether to go on; where it doesn't, the result is what has been read so far.
[[nodiscard]] std::expected<QByteArray, FileError>
readFile(const QString& path, qint64 limit,
         const std::function<bool(qint64 read, qint64 whole)>& piece);

/// Reads `size` bytes of a regular file from byte `at` on, and no more than there are. As careful
/// as reading it whole. Any thread.
[[nodiscard]] std::expected<QByteArray, FileError> readFilePart(const QString& path, qint64 at,
                                                                qint64 size);

/// Replaces the file at `path` by `bytes`, or leaves it as it was: the bytes go to a temporary
/// file beside it, reach the disk, and take the name in one step. The folder must exist. A file
/// that is a symbolic link is replaced at its target. What is no regular file is never replaced.
/// Any thread.
[[nodiscard]] std::expected<void, FileError> writeFileAtomically(const QString& path,
                                                                 const QByteArray& bytes);

/// Brings the names in a folder to the disk: what was made, renamed or removed in it.
std::expected<void, FileError> syncFolder(const QString& path);

/// Brings everything that was written to the file system of this folder to the disk: for many
/// files at once.
std::expected<void, FileError> syncFileSystem(const QString& path);

/// Writes a file where none is yet, which is not sure to be on the disk before a sync of its file
/// system; one of many. A failure leaves none.
[[nodiscard]] std::expected<void, FileError> writeUnsyncedFile(const QString& path,
                                                               const QByteArray& bytes);

/// Creates the folder with those above it; an existing folder is success.
[[nodiscard]] std::expected<void, FileError> makeFolder(const QString& path);

} // namespace orvane
