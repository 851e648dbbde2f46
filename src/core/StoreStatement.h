// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/StoreChecksum.h"

#include <QByteArrayView>

#include <SQLiteCpp/Database.h>
#include <memory>
#include <optional>

struct sqlite3_stmt;

namespace orvane {

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

    /// The next row; false at the end, after which the statement can be bound and run again.
    bool step();
    /// Runs a statement that gives no rows.
    void run();
    void reset();

    [[nodiscard]] bool isNull(int column) const;
    [[nodiscard]] bool isInteger(int column) const;
    [[nodiscard]] bool isText(int column) const;
    [[nodiscard]] bool isBytes(int column) const;
    [[nodiscard]] qint64 integer(int column) const;
    [[nodiscard]] double number(int column) const;
    /// Valid until the next step.
    [[nodiscard]] QByteArrayView text(int column) const;
    [[nodiscard]] QByteArrayView bytes(int column) const;
    /// Folds the columns from `first` to before `end` into `sum`.
    void addTo(StoreChecksum& sum, int first, int end) const;

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
