// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QByteArray>
#include <QCborStreamReader>
#include <QString>

#include <limits>

namespace orvane {

/// Reads CBOR that must have one expected shape, from bytes that may be hostile. Once something is
/// not as expected the cursor has failed: all later reads give zeros and empty values, so a caller
/// asks once at the end. Nothing is allocated for a length that the bytes can't hold.
class CborCursor {
public:
    explicit CborCursor(const QByteArray& bytes)
        : m_size(bytes.size())
        , m_reader(bytes)
    {}

    [[nodiscard]] bool hasFailed() const { return m_hasFailed; }
    void fail() { m_hasFailed = true; }
    /// Fails when `condition` does not hold.
    void require(bool condition) { m_hasFailed = m_hasFailed || !condition; }

    /// Fails above `most`.
    quint64 readUnsigned(quint64 most = std::numeric_limits<quint64>::max());
    qint64 readInteger(qint64 least, qint64 most);
    double readFloat(); ///< finite
    bool readBool();
    QString readText();
    QByteArray readBytes();
    /// Whether a null stands here, which is then read.
    bool readNull();

    /// Enters an array or map and gives its length (in pairs for a map).
    qsizetype enterArray() { return enter(QCborStreamReader::Array); }
    void enterArray(qsizetype length) { require(enterArray() == length); }
    qsizetype enterMap() { return enter(QCborStreamReader::Map); }
    void leave();

    /// Whether all bytes are read.
    [[nodiscard]] bool isAtEnd() const { return m_reader.currentOffset() == m_size; }

private:
    qsizetype enter(QCborStreamReader::Type type);
    void step();
    [[nodiscard]] bool stringLength(QCborStreamReader::Type type, qsizetype& length);

    qsizetype m_size;
    QCborStreamReader m_reader;
    bool m_hasFailed = false;
};

} // namespace orvane
