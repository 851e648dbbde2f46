// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/records/Blob.h"

#include <QLoggingCategory>

namespace orvane {

Blob::Blob(QByteArray bytes)
    : m_cell(new Cell)
{
    Q_ASSERT(bytes.size() <= largestSize);
    // Encoders make room for the longest case, up to three times what they write. Bytes that are
    // kept let go of it.
    if (bytes.isDetached())
        bytes.squeeze();
    m_cell->size = quint32(bytes.size());
    m_cell->bytes = std::make_unique<QByteArray>(std::move(bytes));
}

Blob::Blob(qsizetype size, SharedBlobSource source, qint64 key, const QByteArray& beginning)
    : m_cell(new Cell)
{
    m_cell->size = quint32(size);
    m_cell->key = key;
    m_cell->source = std::move(source);
    if (!beginning.isEmpty())
        m_cell->bytes = std::make_unique<QByteArray>(beginning);
}

void Blob::learn(const QByteArray& beginning) const
{
    if (!isLoaded())
        m_cell->bytes = std::make_unique<QByteArray>(beginning);
}

std::expected<QByteArray, QString> Blob::read() const
{
    if (!isLoaded()) {
        auto read = m_cell->source->read(m_cell->key, m_cell->size);
        if (!read)
            return std::unexpected(read.error());
        m_cell->bytes = std::make_unique<QByteArray>(*std::move(read));
        m_cell->source.reset();
    }
    return *m_cell->bytes;
}

std::expected<QByteArray, QString> Blob::readOnce() const
{
    return isLoaded() ? *m_cell->bytes : m_cell->source->read(m_cell->key, m_cell->size);
}

void Blob::rest(SharedBlobSource source, qint64 key) const
{
    m_cell->bytes.reset();
    m_cell->source = std::move(source);
    m_cell->key = key;
}

QByteArray Blob::readOrNothing() const
{
    auto result = read();
    if (!result) {
        qWarning("A stored attachment of %lld bytes can't be read: %ls", qlonglong(size()),
                 qUtf16Printable(result.error()));
        return {};
    }
    return *std::move(result);
}

bool Blob::operator==(const Blob& other) const
{
    if (m_cell == other.m_cell)
        return true;
    if (size() != other.size())
        return false;
    const auto mine = read();
    const auto theirs = other.read();
    return mine && theirs && *mine == *theirs;
}

size_t qHash(const Blob& blob, size_t seed)
{
    return ::qHash(blob.size(), seed);
}

} // namespace orvane
