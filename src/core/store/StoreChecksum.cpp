// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/store/StoreChecksum.h"

#include <QtEndian>

#define XXH_INLINE_ALL
#include <xxhash.h>

namespace orvane {

namespace {

enum Kind : quint64 { Null = 1, Integer, Text, Bytes };

quint64 hash(const void* data, qsizetype size, Kind kind, quint64 before)
{
    return XXH3_64bits_withSeed(data, size_t(size), before + kind);
}

} // namespace

void StoreChecksum::addNull()
{
    m_value = hash("", 0, Null, m_value);
}

void StoreChecksum::addInteger(qint64 value)
{
    const qint64 littleEndian = qToLittleEndian(value);
    m_value = hash(&littleEndian, sizeof littleEndian, Integer, m_value);
}

void StoreChecksum::addText(QByteArrayView utf8)
{
    m_value = hash(utf8.data(), utf8.size(), Text, m_value);
}

void StoreChecksum::addBytes(QByteArrayView bytes)
{
    m_value = hash(bytes.data(), bytes.size(), Bytes, m_value);
}

} // namespace orvane
