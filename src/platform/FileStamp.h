// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QByteArray>
#include <QString>

namespace orvane {

/// What tells cheaply whether a file or folder is still the one that was looked at: the time of
/// its last change, its size and its identity on the file system.
struct FileStamp {
    bool exists = false;
    bool isFolder = false;
    qint64 changedNsecs = 0;
    qint64 size = 0;
    quint64 identity = 0;

    bool operator==(const FileStamp& other) const
    {
        return exists == other.exists && isFolder == other.isFolder &&
               changedNsecs == other.changedNsecs && size == other.size &&
               identity == other.identity;
    }

    /// Follows symbolic links. A path that can't be looked at does not exist.
    [[nodiscard]] static FileStamp of(const QString& path);

    /// Whether a later change is sure to show: file systems tell times in steps of some
    /// milliseconds, so a stamp taken in the same step as the last change proves nothing.
    bool isSettled = false;
};

/// Looks at many files below one folder, each at the cost of a single system call. Any thread.
class FolderStamps {
public:
    /// Of a folder that doesn't exist everything below doesn't exist either.
    explicit FolderStamps(const QString& folder);
    ~FolderStamps();
    FolderStamps(const FolderStamps&) = delete;
    FolderStamps& operator=(const FolderStamps&) = delete;

    /// The path below the folder in the file system's encoding (`QFile::encodeName`); empty for
    /// the folder itself. `isSettled` is left false: compare the stamp, don't keep it.
    [[nodiscard]] FileStamp of(const QByteArray& relativePath) const;

private:
    QString m_folder;
    int m_descriptor = -1;
};

} // namespace orvane
