// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/records/Blob.h"

#include <QLoggingCategory>

namespace orvane {

Blob::Blob(QByteArray bytes)
    : m_cell(std::make_shared<Cell>())
{
    // Encoders make room for the longest case, up to three times what they write. Bytes that are
    // kept let go of it.
    if (bytes.isDetached())
        bytes.squeeze();
    m_cell->size = bytes.size();
    m_cell->bytes = std::move(bytes);
}

Blob::Blob(qsizetype size, std::shared_ptr<BlobSource> source, qint64 key)
    : m_cell(std::make_shared<Cell>())
{
    m_cell->size = size;
    m_cell->source = std::move(source);
    m_cell->key = key;
}

QByteArray Blob::bytes() const
{
    auto result = tryBytes();
    if (!result) {
        qWarning("A stored attachment of %lld bytes can't be read: %ls", qlonglong(size()),
                 qUtf16Printable(result.error()));
        return {};
    }
    return *std::move(result);
}

std::expected<QByteArray, QString> Blob::tryBytes() const
{
    if (!isLoaded()) {
        auto read = m_cell->source->read(m_cell->key, m_cell->size);
        if (!read)
            return std::unexpected(read.error());
        m_cell->bytes = *std::move(read);
        m_cell->source.reset();
    }
    return m_cell->bytes;
}

bool Blob::operator==(const Blob& other) const
{
    if (m_cell == other.m_cell)
        return true;
    if (size() != other.size())
        return false;
    const auto mine = tryBytes();
    const auto theirs = other.tryBytes();
    return mine && theirs && *mine == *theirs;
}

size_t qHash(const Blob& blob, size_t seed)
{
    return ::qHash(blob.size(), seed);
}

} // namespace orvane
