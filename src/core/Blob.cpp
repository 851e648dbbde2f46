// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/Blob.h"

#include <QLoggingCategory>
#include <QMultiHash>

namespace orvane {

struct Blob::Cell {
    qsizetype size = 0;
    bool loaded = false;
    QByteArray bytes;
    Reader read;

    std::expected<void, QString> load()
    {
        if (loaded)
            return {};
        auto result = read();
        if (!result)
            return std::unexpected(result.error());
        bytes = std::move(*result);
        size = bytes.size();
        loaded = true;
        read = nullptr;
        return {};
    }
};

Blob::Blob(QByteArray bytes)
    : m_cell(std::make_shared<Cell>())
{
    m_cell->size = bytes.size();
    m_cell->bytes = std::move(bytes);
    m_cell->loaded = true;
}

Blob::Blob(qsizetype size, Reader read)
    : m_cell(std::make_shared<Cell>())
{
    m_cell->size = size;
    m_cell->read = std::move(read);
}

qsizetype Blob::size() const
{
    return m_cell->size;
}

bool Blob::isLoaded() const
{
    return m_cell->loaded;
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
    if (auto loaded = m_cell->load(); !loaded)
        return std::unexpected(loaded.error());
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

struct BlobRegistry::Private {
    QMultiHash<QString, std::weak_ptr<Blob::Cell>> cells;
};

BlobRegistry::BlobRegistry()
    : m_private(std::make_unique<Private>())
{}

BlobRegistry::~BlobRegistry() = default;

void BlobRegistry::add(const QString& key, const Blob& blob)
{
    m_private->cells.insert(key, blob.m_cell);
}

std::expected<void, QString> BlobRegistry::readHeld(const QString& key)
{
    const auto [first, last] = std::as_const(m_private->cells).equal_range(key);
    if (first == last)
        return {};
    for (auto it = first; it != last; ++it) {
        if (const auto cell = it.value().lock()) {
            if (auto loaded = cell->load(); !loaded)
                return loaded;
        }
    }
    m_private->cells.remove(key);
    return {};
}

void BlobRegistry::detachAll(const QString& reason)
{
    for (const auto& weak : std::as_const(m_private->cells)) {
        const auto cell = weak.lock();
        if (cell && !cell->loaded)
            cell->read = [reason] {
                return std::expected<QByteArray, QString>(std::unexpect, reason);
            };
    }
    m_private->cells.clear();
}

} // namespace orvane
