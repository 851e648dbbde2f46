// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QByteArray>
#include <QString>

#include <expected>
#include <memory>

namespace orvane {

/// Where the bytes of unread blobs come from. Main thread.
class BlobSource {
public:
    virtual ~BlobSource() = default;
    /// The bytes that stand under `key`, a number of the source's own; `size` is their length.
    /// The error is the reason why they can't be read now.
    [[nodiscard]] virtual std::expected<QByteArray, QString> read(qint64 key, qsizetype size) = 0;
};

/// Opaque bytes of a record: shared, immutable, and knowing their length without reading them.
/// A blob made from bytes holds them. A blob made from a source fetches them on first use and
/// keeps them. Copies share one cell. Main thread.
class Blob {
public:
    explicit Blob(QByteArray bytes);
    /// `size` is the length of what the source will give for `key`.
    Blob(qsizetype size, std::shared_ptr<BlobSource> source, qint64 key);

    [[nodiscard]] qsizetype size() const { return m_cell->size; }
    [[nodiscard]] bool isEmpty() const { return size() == 0; }
    [[nodiscard]] bool isLoaded() const { return !m_cell->source; }

    /// The bytes. A failed read is logged and gives empty bytes; the blob stays unread, so that
    /// saving it again still leaves what is stored alone.
    [[nodiscard]] QByteArray bytes() const;
    /// The bytes, or the reason why they can't be read.
    [[nodiscard]] std::expected<QByteArray, QString> tryBytes() const;

    /// True when both share one cell, which tells equality without reading.
    [[nodiscard]] bool isSameCell(const Blob& other) const { return m_cell == other.m_cell; }
    /// True when no copy of this blob exists.
    [[nodiscard]] bool isOnlyCopy() const { return m_cell.use_count() == 1; }
    /// Equality of the bytes. The cell is compared first, then the length, then the bytes; bytes
    /// that can't be read equal nothing.
    bool operator==(const Blob& other) const;

private:
    struct Cell {
        qsizetype size = 0;
        QByteArray bytes;
        std::shared_ptr<BlobSource> source;
        qint64 key = 0;
    };
    std::shared_ptr<Cell> m_cell;
};

size_t qHash(const Blob& blob, size_t seed = 0);

} // namespace orvane
