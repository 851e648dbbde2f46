// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/versions/NoteVersion.h"
#include "platform/AtomicFile.h"
#include "platform/FileStamp.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>

#include <expected>
#include <functional>
#include <optional>

namespace orvane {

/// A note as a version of it is made of: bytes that are shared with its record.
struct VersionSource {
    QUuid id;
    QUuid noteID;
    Timestamp capturedAt;
    QString title;
    QByteArray bodyUtf8;
    QByteArray bodyRTF;
    std::optional<QByteArray> richContentPayload;
    std::optional<QString> label;
};

/// The files of timelines: one a note under "history" in a project's data folder. A file that was
/// read whole and can't be decoded is set aside (`setAsidePath`) when the next version is added,
/// and a new timeline begins; one that can't be read at the moment is left alone. Any thread, one
/// at a time.
class VersionFiles {
public:
    using Write =
        std::function<std::expected<void, FileError>(const QString& path, const QByteArray& bytes)>;

    /// `write` puts a whole file in its place.
    explicit VersionFiles(Write write = writeFileAtomically);

    [[nodiscard]] static QString folderPath(const QString& projectRootPath);
    [[nodiscard]] static QString filePath(const QString& projectRootPath, const QUuid& noteID);

    /// Adds a version, thins a file that has grown too large by it, and drops the oldest beyond
    /// `most`.
    std::expected<void, VersionHistoryError> append(const QString& projectRootPath,
                                                    const VersionSource& version, qsizetype most);
    /// It is no error when there is no such version.
    std::expected<void, VersionHistoryError> remove(const QString& projectRootPath,
                                                    const QUuid& noteID, const QUuid& id);

    /// The timeline; empty when there is none. The long texts are neither decoded nor checked.
    /// Any thread.
    [[nodiscard]] static std::expected<QList<NoteVersionSummary>, VersionHistoryError>
    list(const QString& projectRootPath, const QUuid& noteID);
    /// One version whole. Any thread.
    [[nodiscard]] static std::expected<NoteVersionSnapshot, VersionHistoryError>
    read(const QString& projectRootPath, const NoteVersionSummary& version);

private:
    struct Timeline {
        QByteArray text;
        QList<NoteVersionSummary> versions;
    };

    /// The file, checked whole unless it was already and nobody has changed it since.
    [[nodiscard]] std::expected<Timeline, VersionHistoryError> checked(const QString& path) const;
    std::expected<void, VersionHistoryError> write(const QString& path, const QByteArray& text);

    Write m_write;
    /// Files that were written here.
    QHash<QString, FileStamp> m_known;
};

} // namespace orvane
