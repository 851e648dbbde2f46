// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/records/JsonObjectReader.h"
#include "platform/AtomicFile.h"
#include "platform/Timestamp.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QUrl>

#include <expected>
#include <optional>

namespace orvane {

/// What happened to a damaged store: where its files are now, and what was wrong. As the JSON file
/// "PersistentStoreRecovery.latest.json" in the project's data folder it keeps the project closed
/// until a person has looked and removes it.
struct PersistentStoreRecovery {
    QUrl backupDirectoryURL;
    QString errorDescription;

    bool operator==(const PersistentStoreRecovery&) const = default;

    [[nodiscard]] QByteArray encoded() const;
    [[nodiscard]] static std::expected<PersistentStoreRecovery, JsonError>
    decoded(const QByteArray& bytes);

    [[nodiscard]] static QString markerPath(const QString& dataFolder);
    /// The marker of a data folder: nothing only where nothing has its name. One that can't be read
    /// or isn't one keeps the project closed as well; the newest recovery folder then stands for
    /// the place, or the data folder where there is none.
    [[nodiscard]] static std::optional<PersistentStoreRecovery> read(const QString& dataFolder);
    [[nodiscard]] std::expected<void, FileError> write(const QString& dataFolder) const;
};

/// The store file of a data folder: "OrvaneWorkspace.store", or "OrvaneNotes.store" when only
/// files (or links) of that earlier name are there.
[[nodiscard]] QString storePath(const QString& dataFolder);

/// The store's file and its two write-ahead log companions, whether they exist or not.
[[nodiscard]] QStringList persistentStoreFiles(const QString& storePath);

/// The folder to which a backup at `now` goes: "PersistentStoreRecovery-<unix seconds>", beside
/// the store.
[[nodiscard]] QString backupDirectory(const QString& storePath, Timestamp now);

/// Moves what exists of the store's files into `backupDirectory`, which is created; files of the
/// same name there are replaced. A file that can't be moved stays, and the others are still moved.
/// Returns that folder.
QString backUpPersistentStoreFiles(const QString& storePath, Timestamp now);

} // namespace orvane
