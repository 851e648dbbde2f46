// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QByteArray>
#include <QString>

#include <expected>

namespace orvane {

/// Why a file could not be read or written.
struct FileError {
    enum class Code {
        NotFound, ///< nothing at that path
        NoAccess, ///< permission or a read-only file system
        NoSpace,  ///< the disk or a quota is full
        Other,
    };
    Code code = Code::Other;
    QString path;
    /// The system's own words.
    QString detail;

    /// "path: detail", for the log.
    [[nodiscard]] QString text() const;
};

/// Reads a whole file. Any thread.
[[nodiscard]] std::expected<QByteArray, FileError> readFile(const QString& path);

/// Replaces the file at `path` by `bytes`, or leaves it as it was: the bytes go to a temporary
/// file beside it, reach the disk, and take the name in one step. The folder must exist. A file
/// that is a symbolic link is replaced at its target. Any thread.
[[nodiscard]] std::expected<void, FileError> writeFileAtomically(const QString& path,
                                                                 const QByteArray& bytes);

/// Creates the folder with those above it; an existing folder is success.
[[nodiscard]] std::expected<void, FileError> makeFolder(const QString& path);

} // namespace orvane
