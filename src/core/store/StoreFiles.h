// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/store/StoreError.h"
#include "platform/FolderHandle.h"

#include <QByteArray>
#include <QString>

#include <expected>
#include <memory>
#include <optional>

namespace orvane {

/// The files of one store, reached through its held data folder, and whether those that stand
/// under their names are the ones that were opened: other programs rename folders, put another
/// file in the store's place, and take files away. Any thread, one at a time.
class StoreFiles {
public:
    explicit StoreFiles(std::shared_ptr<const FolderHandle> folder);

    /// The data folder and the store's file, for working with. The file is the one to which a link
    /// leads where a link has the store's name; its write-ahead log is beside it.
    [[nodiscard]] const QString& folder() const { return m_folder->path(); }
    [[nodiscard]] const QString& path() const { return m_path; }
    /// The same for a person's eyes: where they are now, or were last.
    [[nodiscard]] QString folderPlace() const;
    [[nodiscard]] QString place() const { return named(m_path); }
    /// A path or a text with paths in it, with the working paths exchanged for those that a person
    /// knows.
    [[nodiscard]] QString named(QString text) const;

    /// Whether anything stands under the store's name or its write-ahead log's, a link to nowhere
    /// included.
    [[nodiscard]] bool anyStands() const;
    /// Whether the store is a link: to a file elsewhere, to nothing, or in a circle.
    [[nodiscard]] bool isLink() const { return m_isLink; }
    /// Whether it is a link that leads to no file.
    [[nodiscard]] bool isBrokenLink() const { return m_isLink && !m_target; }

    /// Takes what stands under the names now for what is open. Call it when the connection has
    /// just read through both files.
    void remember();
    /// Whether the file under the store's name is the one that was remembered: `Replaced`,
    /// `Missing`, or `Other` where the system doesn't tell.
    [[nodiscard]] std::expected<void, StoreError> storeInPlace() const;
    /// Whether the write-ahead log's name still has the file that was remembered, if one was. The
    /// error is that the system doesn't tell.
    [[nodiscard]] std::expected<bool, StoreError> walInPlace() const;
    /// Renames what stands under the write-ahead log's name to a name that is free, "-wal.aside-1"
    /// and so on. Nothing is lost by it: a write-ahead log that is open is still written and read.
    [[nodiscard]] std::expected<void, StoreError> setWalAside() const;

private:
    /// Of a file beside the store, or of the store.
    [[nodiscard]] std::expected<FileIdentity, FileError> identityOf(const QString& path) const;
    [[nodiscard]] StoreError unreachable(const FileError& error) const;

    std::shared_ptr<const FolderHandle> m_folder;
    /// The folder of the file to which the store's name leads, where that is a link.
    std::shared_ptr<const FolderHandle> m_target;
    bool m_isLink = false;
    QString m_path;
    mutable QString m_lastPlace;
    std::optional<FileIdentity> m_store;
    std::optional<FileIdentity> m_wal;
};

/// Renames a file where nothing, not even a link, has the new name. Both are in one folder.
[[nodiscard]] std::expected<void, FileError> renameToFreeName(const QString& from,
                                                              const QString& to);

/// Makes a file of these bytes where nothing, not even a link, has the name: complete and on the
/// disk when it is there.
[[nodiscard]] std::expected<void, FileError> writeNewFile(const QString& path,
                                                          const QByteArray& bytes);

/// What was written to the file, and that it has its name, is on the disk.
[[nodiscard]] std::expected<void, FileError> syncFile(const QString& path);

} // namespace orvane
