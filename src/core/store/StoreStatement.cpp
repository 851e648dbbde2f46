// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/store/StoreStatement.h"

#include <cstring>
#include <sqlite3.h>

namespace orvane {

namespace {

// A null pointer would bind NULL, and empty text or bytes are not that.
const char* nonNull(QByteArrayView bytes)
{
    return bytes.isNull() ? "" : bytes.data();
}

} // namespace

void StoreStatement::Finalize::operator()(sqlite3_stmt* statement) const
{
    sqlite3_finalize(statement);
}

StoreStatement::StoreStatement(SQLite::Database& database, const char* sql)
    : m_database(&database)
{
    sqlite3_stmt* statement = nullptr;
    check(sqlite3_prepare_v3(database.getHandle(), sql, -1, SQLITE_PREPARE_PERSISTENT, &statement,
                             nullptr));
    m_statement.reset(statement);
}

void StoreStatement::check(int code) const
{
    if (code != SQLITE_OK)
        throw SQLite::Exception(m_database->getHandle(), code);
}

void StoreStatement::bindNull(int parameter)
{
    check(sqlite3_bind_null(m_statement.get(), parameter));
}

void StoreStatement::bindInteger(int parameter, qint64 value)
{
    check(sqlite3_bind_int64(m_statement.get(), parameter, value));
}

void StoreStatement::bindText(int parameter, QByteArrayView utf8)
{
    check(sqlite3_bind_text64(m_statement.get(), parameter, nonNull(utf8),
                              sqlite3_uint64(utf8.size()), SQLITE_STATIC, SQLITE_UTF8));
}

void StoreStatement::bindBytes(int parameter, QByteArrayView bytes)
{
    check(sqlite3_bind_blob64(m_statement.get(), parameter, nonNull(bytes),
                              sqlite3_uint64(bytes.size()), SQLITE_STATIC));
}

void StoreStatement::bindValue(int parameter, const StoreValue& value)
{
    check(sqlite3_bind_value(m_statement.get(), parameter, value.m_value));
}

bool StoreStatement::step()
{
    const int code = sqlite3_step(m_statement.get());
    if (code == SQLITE_ROW)
        return true;
    sqlite3_reset(m_statement.get());
    if (code != SQLITE_DONE)
        check(code);
    return false;
}

void StoreStatement::run()
{
    while (step())
        ;
}

void StoreStatement::reset()
{
    sqlite3_reset(m_statement.get());
}

StoreValue StoreStatement::value(int column) const
{
    return StoreValue(sqlite3_column_value(m_statement.get(), column));
}

StoreValue::StoreValue(sqlite3_value* value)
    : m_value(value)
{
    switch (sqlite3_value_type(value)) {
    case SQLITE_INTEGER:
        m_type = Type::Integer;
        break;
    case SQLITE_FLOAT:
        m_type = Type::Number;
        break;
    case SQLITE_TEXT:
        m_type = Type::Text;
        break;
    case SQLITE_BLOB:
        m_type = Type::Bytes;
        break;
    default:
        break;
    }
}

qint64 StoreValue::integer() const
{
    return sqlite3_value_int64(m_value);
}

double StoreValue::number() const
{
    return sqlite3_value_double(m_value);
}

QByteArrayView StoreValue::bytes() const
{
    // Asked for as bytes, a text is given where it stands; asked for as text, it would be copied
    // to get a zero behind it.
    const auto* bytes = static_cast<const char*>(sqlite3_value_blob(m_value));
    return {bytes, bytes ? sqlite3_value_bytes(m_value) : 0};
}

void StoreValue::addTo(StoreChecksum& sum) const
{
    switch (m_type) {
    case Type::Null:
        return sum.addNull();
    case Type::Integer:
        return sum.addInteger(integer());
    case Type::Text:
        return sum.addText(bytes());
    case Type::Number: // is in no column of ours; its text stands for it
    case Type::Bytes:
        return sum.addBytes(bytes());
    }
}

void RowBinder::integer(qint64 value)
{
    m_statement.bindInteger(m_parameter++, value);
    m_sum.addInteger(value);
}

void RowBinder::text(QByteArrayView utf8)
{
    m_statement.bindText(m_parameter++, utf8);
    m_sum.addText(utf8);
}

void RowBinder::bytes(QByteArrayView bytes)
{
    m_statement.bindBytes(m_parameter++, bytes);
    m_sum.addBytes(bytes);
}

void RowBinder::null()
{
    m_statement.bindNull(m_parameter++);
    m_sum.addNull();
}

void RowBinder::checksum()
{
    m_statement.bindInteger(m_parameter++, m_sum.value());
}

} // namespace orvane
