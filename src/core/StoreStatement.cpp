// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/StoreStatement.h"

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

bool StoreStatement::isNull(int column) const
{
    return sqlite3_column_type(m_statement.get(), column) == SQLITE_NULL;
}

bool StoreStatement::isInteger(int column) const
{
    return sqlite3_column_type(m_statement.get(), column) == SQLITE_INTEGER;
}

bool StoreStatement::isText(int column) const
{
    return sqlite3_column_type(m_statement.get(), column) == SQLITE_TEXT;
}

bool StoreStatement::isBytes(int column) const
{
    return sqlite3_column_type(m_statement.get(), column) == SQLITE_BLOB;
}

qint64 StoreStatement::integer(int column) const
{
    return sqlite3_column_int64(m_statement.get(), column);
}

double StoreStatement::number(int column) const
{
    return sqlite3_column_double(m_statement.get(), column);
}

QByteArrayView StoreStatement::text(int column) const
{
    const auto* text =
        reinterpret_cast<const char*>(sqlite3_column_text(m_statement.get(), column));
    return {text, text ? sqlite3_column_bytes(m_statement.get(), column) : 0};
}

QByteArrayView StoreStatement::bytes(int column) const
{
    const auto* bytes = static_cast<const char*>(sqlite3_column_blob(m_statement.get(), column));
    return {bytes, bytes ? sqlite3_column_bytes(m_statement.get(), column) : 0};
}

void StoreStatement::addTo(StoreChecksum& sum, int first, int end) const
{
    for (int column = first; column < end; ++column) {
        switch (sqlite3_column_type(m_statement.get(), column)) {
        case SQLITE_INTEGER:
            sum.addInteger(integer(column));
            break;
        case SQLITE_TEXT:
            sum.addText(text(column));
            break;
        case SQLITE_NULL:
            sum.addNull();
            break;
        default: // a number with fractions is in no column of ours; its text stands for it
            sum.addBytes(bytes(column));
        }
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
