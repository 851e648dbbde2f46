// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QByteArray>
#include <QSharedData>
#include <QString>

#include <expected>
#include <memory>

namespace orvane {

/// Where the bytes of unread blobs come from. Main thread.
class BlobSource : public QSharedData {
public:
    BlobSource() = default;
    BlobSource(const BlobSource&) = delete;
    BlobSource& operator=(const BlobSource&) = delete;
    virtual ~BlobSource() = default;
    /// The bytes that stand under `key`, a number of the source's own; `size` is their length.
    /// The error is the reason why they can't be read now.
    [[nodiscard]] virtual std::expected<QByteArray, QString> read(qint64 key, qsizetype size) = 0;
};

using SharedBlobSource = QExplicitlySharedDataPointer<BlobSource>;

/// Opaque bytes of a record: shared, immutable, and knowing their length without reading them.
/// A blob made from bytes holds them. A blob made from a source fetches them when it is read for
/// the first time and keeps them. Copies share one cell. Main thread, but for being made: what
/// other threads are to see is handed to them as bytes, or read by them from a `StoreReading`.
class Blob {
public:
    static constexpr qsizetype largestSize = 0xffff'ffff;

    explicit Blob(QByteArray bytes);
    /// `size`, at most `largestSize`, is the length of what the source will give for `key`.
    /// `beginning` is what is known of it without reading.
    Blob(qsizetype size, SharedBlobSource source, qint64 key, const QByteArray& beginning = {});

    [[nodiscard]] qsizetype size() const { return m_cell->size; }
    [[nodiscard]] bool isEmpty() const { return size() == 0; }
    [[nodiscard]] bool isLoaded() const { return !m_cell->source; }
    /// All bytes of a loaded blob; of an unread one its beginning, where the source gave it.
    [[nodiscard]] QByteArray known() const { return m_cell->bytes ? *m_cell->bytes : QByteArray(); }

    /// Makes that the known beginning of an unread blob.
    void learn(const QByteArray& beginning) const;

    /// The bytes, or the reason why they can't be read. After a failed read the blob stays unread,
    /// so that saving it again still leaves what is stored alone.
    [[nodiscard]] std::expected<QByteArray, QString> read() const;
    /// The same without keeping what was unread, for bytes that are many.
    [[nodiscard]] std::expected<QByteArray, QString> readOnce() const;
    /// The bytes now stand in the source under `key`: they are given up, for all copies.
    void rest(SharedBlobSource source, qint64 key) const;
    /// The bytes; none where they can't be read, which is logged.
    [[nodiscard]] QByteArray readOrNothing() const;

    /// True when both share one cell, which tells equality without reading.
    [[nodiscard]] bool isSameCell(const Blob& other) const { return m_cell == other.m_cell; }
    /// True when no copy of this blob exists.
    [[nodiscard]] bool isOnlyCopy() const { return m_cell->ref.loadRelaxed() == 1; }
    /// Equality of the bytes. The cell is compared first, then the length, then the bytes, which
    /// are read; bytes that can't be read equal nothing.
    bool operator==(const Blob& other) const;

private:
    // A project has some hundred thousand of these: they are kept small.
    struct Cell : QSharedData {
        quint32 size = 0;
        qint64 key = 0;
        SharedBlobSource source;
        std::unique_ptr<QByteArray> bytes;
    };
    QExplicitlySharedDataPointer<Cell> m_cell;
};

size_t qHash(const Blob& blob, size_t seed = 0);

} // namespace orvane
