// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/store/StoreChecksum.h"

#include <QByteArrayView>

#include <SQLiteCpp/Database.h>
#include <memory>
#include <optional>

struct sqlite3_stmt;
struct sqlite3_value;

namespace orvane {

/// One value of a row that was read. Texts are UTF-8.
class StoreValue {
public:
    StoreValue() = default;
    explicit StoreValue(sqlite3_value* value);

    [[nodiscard]] bool isNull() const { return m_type == Type::Null; }
    [[nodiscard]] bool isInteger() const { return m_type == Type::Integer; }
    [[nodiscard]] bool isText() const { return m_type == Type::Text; }
    [[nodiscard]] bool isBytes() const { return m_type == Type::Bytes; }

    [[nodiscard]] qint64 integer() const;
    [[nodiscard]] double number() const;
    /// The bytes of a text or of bytes, where they stand.
    [[nodiscard]] QByteArrayView bytes() const;
    void addTo(StoreChecksum& sum) const;

private:
    friend class StoreStatement;
    enum class Type { Null, Integer, Number, Text, Bytes };

    sqlite3_value* m_value = nullptr;
    Type m_type = Type::Null;
};

/// A prepared statement on SQLite's own interface: values are bound and read without a copy, and
/// a whole row can be folded into a checksum. Failures are thrown as SQLite::Exception, which
/// `StoreConnection` turns into values.
class StoreStatement {
public:
    StoreStatement(SQLite::Database& database, const char* sql);

    /// Columns and parameters count from 0 and 1, as SQLite has them. Bound memory must live
    /// until the statement has run.
    void bindNull(int parameter);
    void bindInteger(int parameter, qint64 value);
    void bindText(int parameter, QByteArrayView utf8);
    void bindBytes(int parameter, QByteArrayView bytes);
    /// A value of another statement's present row.
    void bindValue(int parameter, const StoreValue& value);

    /// The next row; false at the end, after which the statement can be bound and run again.
    bool step();
    /// Runs a statement that gives no rows.
    void run();
    void reset();

    /// A column of the present row. Valid until the next step.
    [[nodiscard]] StoreValue value(int column) const;

private:
    struct Finalize {
        void operator()(sqlite3_stmt* statement) const;
    };
    void check(int code) const;

    SQLite::Database* m_database;
    std::unique_ptr<sqlite3_stmt, Finalize> m_statement;
};

/// Binds the values of one row in order and keeps their checksum.
class RowBinder {
public:
    RowBinder(StoreStatement& statement, qint64 storeKey, int firstParameter)
        : m_statement(statement)
        , m_sum(storeKey)
        , m_parameter(firstParameter)
    {}

    /// Counts the row's number in, which is bound elsewhere.
    void addRowNumber(qint64 row) { m_sum.addInteger(row); }
    void integer(qint64 value);
    void text(QByteArrayView utf8);
    void bytes(QByteArrayView bytes);
    void null();
    /// Binds the checksum of what was bound so far.
    void checksum();

    [[nodiscard]] int nextParameter() const { return m_parameter; }

private:
    StoreStatement& m_statement;
    StoreChecksum m_sum;
    int m_parameter;
};

} // namespace orvane
