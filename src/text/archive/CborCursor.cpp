// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/archive/CborCursor.h"

#include <QFloat16>

#include <cmath>

namespace orvane {

void CborCursor::step()
{
    require(m_reader.next());
}

quint64 CborCursor::readUnsigned(quint64 most)
{
    require(m_reader.isUnsignedInteger());
    if (m_hasFailed)
        return 0;
    const quint64 value = m_reader.toUnsignedInteger();
    step();
    require(value <= most);
    return m_hasFailed ? 0 : value;
}

qint64 CborCursor::readInteger(qint64 least, qint64 most)
{
    if (m_reader.isUnsignedInteger())
        return qint64(readUnsigned(quint64(std::max<qint64>(0, most))));
    require(m_reader.isNegativeInteger());
    if (m_hasFailed)
        return 0;
    const qint64 value = m_reader.toInteger();
    step();
    require(value < 0 && value >= least);
    return m_hasFailed ? 0 : value;
}

double CborCursor::readFloat()
{
    double value = 0;
    if (m_reader.isDouble())
        value = m_reader.toDouble();
    else if (m_reader.isFloat())
        value = double(m_reader.toFloat());
    else if (m_reader.isFloat16())
        value = double(float(m_reader.toFloat16()));
    else
        fail();
    require(std::isfinite(value));
    if (m_hasFailed)
        return 0;
    step();
    return value;
}

bool CborCursor::readBool()
{
    require(m_reader.isBool());
    if (m_hasFailed)
        return false;
    const bool value = m_reader.toBool();
    step();
    return value;
}

bool CborCursor::stringLength(QCborStreamReader::Type type, qsizetype& length)
{
    require(m_reader.type() == type && m_reader.isLengthKnown());
    if (m_hasFailed)
        return false;
    const quint64 announced = m_reader.length();
    require(m_reader.lastError() == QCborError::NoError &&
            announced <= quint64(m_size - m_reader.currentOffset()));
    length = m_hasFailed ? 0 : qsizetype(announced);
    return !m_hasFailed;
}

QByteArray CborCursor::readBytes()
{
    qsizetype length = 0;
    if (!stringLength(QCborStreamReader::ByteArray, length))
        return {};
    QByteArray bytes(length, Qt::Uninitialized);
    qsizetype filled = 0;
    for (;;) {
        const auto chunk = m_reader.readStringChunk(bytes.data() + filled, length - filled);
        if (chunk.status == QCborStreamReader::EndOfString)
            break;
        require(chunk.status == QCborStreamReader::Ok);
        if (m_hasFailed)
            return {};
        filled += chunk.data;
    }
    require(filled == length);
    return m_hasFailed ? QByteArray() : bytes;
}

QString CborCursor::readText()
{
    qsizetype length = 0;
    if (!stringLength(QCborStreamReader::String, length))
        return {};
    QString text;
    for (;;) {
        auto chunk = m_reader.readString();
        if (chunk.status == QCborStreamReader::EndOfString)
            break;
        require(chunk.status == QCborStreamReader::Ok);
        if (m_hasFailed)
            return {};
        if (text.isEmpty())
            text = std::move(chunk.data);
        else
            text += chunk.data;
    }
    return text;
}

bool CborCursor::readNull()
{
    if (m_hasFailed || !m_reader.isNull())
        return false;
    step();
    return true;
}

qsizetype CborCursor::enter(QCborStreamReader::Type type)
{
    require(m_reader.type() == type && m_reader.isLengthKnown());
    if (m_hasFailed)
        return 0;
    const quint64 length = m_reader.length();
    // Each element takes a byte at least.
    require(length <= quint64(m_size) && m_reader.enterContainer());
    return m_hasFailed ? 0 : qsizetype(length);
}

void CborCursor::leave()
{
    require(!m_hasFailed && !m_reader.hasNext() && m_reader.leaveContainer());
}

} // namespace orvane
