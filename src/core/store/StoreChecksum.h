// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QByteArrayView>

namespace orvane {

/// The checksum of a stored row: XXH3 (64 bits), taken over the values in column order, each
/// seeded with the result of the one before and with its type. The first seed is the store's own
/// key, so that a row of one store doesn't pass for a row of another.
class StoreChecksum {
public:
    explicit StoreChecksum(qint64 storeKey)
        : m_value(quint64(storeKey))
    {}

    void addNull();
    void addInteger(qint64 value);
    void addText(QByteArrayView utf8);
    void addBytes(QByteArrayView bytes);

    [[nodiscard]] qint64 value() const { return qint64(m_value); }

private:
    quint64 m_value;
};

} // namespace orvane
