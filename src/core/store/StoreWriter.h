// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/records/Shared.h"
#include "core/store/StoreConnection.h"
#include "core/store/StoreReader.h"
#include "core/store/StoreStatement.h"

#include <QSet>

#include <memory>
#include <optional>

namespace orvane {

/// Writes rows. Everything here runs inside a transaction of the connection's and throws
/// SQLite::Exception; the caller keeps the image of what is stored and changes it after the commit.
class StoreWriter {
public:
    StoreWriter(StoreConnection& connection, qint64 storeKey);
    ~StoreWriter();

    void writeState(const StoreState& state);

    void insertFolder(qint64 row, const FolderRecord& folder);
    /// Writes nothing when the two are equal.
    void updateFolder(qint64 row, const FolderRecord& stored, const FolderRecord& folder);
    void removeFolder(qint64 row);

    /// Images that the store doesn't have yet are written, too, as far as they can be read.
    void insertNote(qint64 row, const NoteRecord& note);
    /// Writes the columns when one of them changed, and of the rich bytes those that changed.
    /// Stored bytes that are overwritten while somebody may still hold them unread are read first;
    /// `held` says whether somebody holds the stored record.
    void updateNote(qint64 row, const NoteRecord& stored, const NoteRecord& note, bool held);
    void removeNote(qint64 row, const NoteRecord& stored, bool held);

    /// The rows of the images that the store has beside these.
    [[nodiscard]] QList<qint64> imagesBeside(const QSet<QByteArray>& hashes) const;
    void removeImages(const QList<qint64>& rows);

    /// Whether every value of the record is small enough for a store.
    [[nodiscard]] static bool fits(const NoteRecord& note);
    [[nodiscard]] static bool fits(const FolderRecord& folder);

    /// Reads every bytes of the record that writing it would store, so that writing doesn't fail
    /// halfway; `stored` is what its row holds, if it has one. The error is why some can't be read.
    [[nodiscard]] static std::expected<void, QString> readBytes(const NoteRecord* stored,
                                                                const NoteRecord& note);
    [[nodiscard]] static std::expected<void, QString> readBytes(const FolderRecord* stored,
                                                                const FolderRecord& folder);

private:
    struct Statements;

    void updateBytes(qint64 key, const Blob* before, const Blob* after, bool held);
    /// Whether the row is there, and with these bytes where some are given.
    [[nodiscard]] bool hasBytes(qint64 key, const std::optional<QByteArray>& bytes = std::nullopt);
    void writeImages(const NoteRecord& note, const NoteRecord* stored);
    void writeBytes(qint64 key, const Blob& bytes);
    void writeBytes(qint64 key, const QByteArray& bytes);
    void removeBytes(qint64 key);

    StoreConnection& m_connection;
    qint64 m_storeKey;
    std::unique_ptr<Statements> m_statements;
};

/// The bytes of a store's notes, read by row number.
class StoreBytesSource final : public BlobSource {
public:
    StoreBytesSource(StoreConnection& connection, qint64 storeKey);

    [[nodiscard]] std::expected<QByteArray, QString> read(qint64 key, qsizetype size) override;
    /// Goes on reading through another connection to the same store.
    void attach(StoreConnection& connection);
    /// The store closes: every later read is an error.
    void detach();

private:
    StoreConnection* m_connection;
    qint64 m_storeKey;
    std::optional<StoreStatement> m_statement;
};

} // namespace orvane
