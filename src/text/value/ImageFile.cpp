// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/value/ImageFile.h"

#include "platform/Guarded.h"

#include <QCryptographicHash>

namespace orvane {

struct ImageFile::Cell {
    QByteArray hash;
    qsizetype size = 0;
    Guarded<std::optional<QByteArray>> bytes;
};

ImageFile::ImageFile(QByteArray bytes)
{
    if (bytes.isEmpty())
        return;
    m_cell = std::make_shared<Cell>();
    m_cell->hash = QCryptographicHash::hash(bytes, QCryptographicHash::Sha256);
    m_cell->size = bytes.size();
    m_cell->bytes.with([&](auto& held) { held = std::move(bytes); });
}

ImageFile::ImageFile(QByteArray hash, qsizetype size)
    : m_cell(std::make_shared<Cell>())
{
    Q_ASSERT(hash.size() == hashSize);
    m_cell->hash = std::move(hash);
    m_cell->size = size;
}

QByteArray ImageFile::hash() const
{
    return m_cell ? m_cell->hash : QByteArray();
}

qsizetype ImageFile::size() const
{
    return m_cell ? m_cell->size : 0;
}

std::optional<QByteArray> ImageFile::bytes() const
{
    if (!m_cell)
        return std::nullopt;
    return m_cell->bytes.with([](const auto& held) { return held; });
}

void ImageFile::release() const
{
    if (m_cell)
        m_cell->bytes.with([](auto& held) { held.reset(); });
}

bool operator==(const ImageFile& one, const ImageFile& other)
{
    return one.m_cell == other.m_cell || one.hash() == other.hash();
}

} // namespace orvane
