// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/store/PersistenceController.h"

#include <QString>

#include <memory>

struct sqlite3;
struct sqlite3_stmt;

namespace orvane::bench {

/// How large the notes of a sample project are, in bytes.
struct SampleSizes {
    int notes = 0;
    int body = 2048;
    int rtf = 4096;
    int payload = 8192;
};

/// Makes a project's store in `dataFolder`: notes in folders of fifty, ordered in the Binder, each
/// with text that differs.
void makeSampleStore(const QString& dataFolder, const SampleSizes& sizes);

[[nodiscard]] std::unique_ptr<PersistenceController> openSample(const QString& dataFolder,
                                                                const Clock& clock);

/// SQLite's own interface, as the measure of what must be paid in any case. A failure ends the
/// program.
class PlainSQLite {
public:
    /// With the settings that the store uses for writing.
    explicit PlainSQLite(const QString& path);
    ~PlainSQLite();
    PlainSQLite(const PlainSQLite&) = delete;
    PlainSQLite& operator=(const PlainSQLite&) = delete;

    void run(const char* sql);
    [[nodiscard]] sqlite3_stmt* prepare(const char* sql);

private:
    sqlite3* m_database = nullptr;
};

/// A statement that changes something, prepared once; each run is a transaction.
class PlainStatement {
public:
    PlainStatement(PlainSQLite& database, const char* sql);
    ~PlainStatement();
    PlainStatement(const PlainStatement&) = delete;
    PlainStatement& operator=(const PlainStatement&) = delete;

    template <typename... Integers>
    void run(Integers... values)
    {
        int parameter = 0;
        (bind(++parameter, values), ...);
        step();
    }

private:
    void bind(int parameter, qint64 value);
    void step();

    sqlite3_stmt* m_statement;
};

} // namespace orvane::bench
