// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "platform/AtomicFile.h"

#include <QString>

#include <expected>
#include <memory>

namespace orvane {

/// What tells one file or folder from every other of this machine while both exist.
struct FileIdentity {
    quint64 device = 0;
    quint64 inode = 0;

    bool operator==(const FileIdentity&) const = default;

    /// Of what stands at the path, links followed.
    [[nodiscard]] static std::expected<FileIdentity, FileError> of(const QString& path);
};

/// A folder that is held while it is worked in: another program may rename or move it, and what
/// stands below `path()` is still the same folder; one that takes its old name is not. Nothing
/// that is made below `path()` ever makes a folder above it. Any thread.
class FolderHandle {
public:
    /// Holds the folder at `path`, links followed. An error where no folder is.
    [[nodiscard]] static std::expected<std::shared_ptr<const FolderHandle>, FileError>
    open(const QString& path);

    ~FolderHandle();
    FolderHandle(const FolderHandle&) = delete;
    FolderHandle& operator=(const FolderHandle&) = delete;

    /// By this path the folder is reached as long as the handle lives, wherever it is; not for a
    /// person's eyes, and of no use to another process. On systems without such paths the path
    /// that was opened.
    [[nodiscard]] const QString& path() const { return m_path; }
    [[nodiscard]] const FileIdentity& identity() const { return m_identity; }

    /// What stands under this name in the folder, in the file system's encoding; a link is
    /// followed. Cheaper than by the handle's path, which the system walks.
    [[nodiscard]] std::expected<FileIdentity, FileError> identityOf(const QByteArray& name) const;

    /// Where the folder is now: its path as the system tells it, or why it can't be reached
    /// (removed, its disk gone).
    [[nodiscard]] std::expected<QString, FileError> place() const;
    /// A text for a person's eyes: in it `path()` is replaced by where the folder is, or was when
    /// it was opened.
    [[nodiscard]] QString named(QString text) const;

private:
    FolderHandle() = default;

    int m_descriptor = -1;
    QString m_path;
    QString m_openedPath;
    FileIdentity m_identity;
};

} // namespace orvane
