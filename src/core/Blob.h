// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QByteArray>
#include <QString>

#include <expected>
#include <functional>
#include <memory>

namespace orvane {

/// Opaque bytes of a record: shared, immutable, and knowing their length without reading them.
/// A blob made from bytes holds them. A blob made from a reader fetches them on first use and
/// keeps them. Copies share one cell. Main thread.
class Blob {
public:
    /// Gives the bytes, or the reason why they can't be read now.
    using Reader = std::function<std::expected<QByteArray, QString>()>;

    explicit Blob(QByteArray bytes);
    /// `size` is the length of what `read` will give.
    Blob(qsizetype size, Reader read);

    [[nodiscard]] qsizetype size() const;
    [[nodiscard]] bool isEmpty() const { return size() == 0; }
    [[nodiscard]] bool isLoaded() const;

    /// The bytes. A failed read is logged and gives empty bytes; the blob stays unread, so that
    /// saving it again still leaves what is stored alone.
    [[nodiscard]] QByteArray bytes() const;
    /// The bytes, or the reason why they can't be read.
    [[nodiscard]] std::expected<QByteArray, QString> tryBytes() const;

    /// True when both share one cell, which tells equality without reading.
    [[nodiscard]] bool isSameCell(const Blob& other) const { return m_cell == other.m_cell; }
    /// Equality of the bytes. The cell is compared first, then the length, then the bytes.
    bool operator==(const Blob& other) const;

private:
    friend class BlobRegistry;
    struct Cell;
    std::shared_ptr<Cell> m_cell;
};

/// The unread blobs that one owner of bytes has given out, by a key of its own (a row). Before
/// the owner overwrites what a key stands for, `readHeld` fetches the bytes of every blob of that
/// key that somebody still holds, so that a value never changes under its holder.
class BlobRegistry {
public:
    BlobRegistry();
    ~BlobRegistry();
    BlobRegistry(const BlobRegistry&) = delete;
    BlobRegistry& operator=(const BlobRegistry&) = delete;

    void add(const QString& key, const Blob& blob);
    /// Reads what is held under `key`, and forgets the key. The first failure is the error; the
    /// key is then kept.
    [[nodiscard]] std::expected<void, QString> readHeld(const QString& key);
    /// Blobs that are still unread can't be read any more; each later read gives `reason`.
    void detachAll(const QString& reason);

private:
    struct Private;
    std::unique_ptr<Private> m_private;
};

size_t qHash(const Blob& blob, size_t seed = 0);

} // namespace orvane
