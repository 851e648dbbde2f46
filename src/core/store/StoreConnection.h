// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/store/StoreError.h"

#include <QByteArray>
#include <QString>

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Exception.h>
#include <expected>
#include <memory>
#include <utility>

namespace orvane {

/// What SQLite, or a check of ours, said about a store's file.
struct StoreFailure {
    /// A result code of SQLite's, extended where there is one.
    int code = 0;
    /// The system's own number behind a failure to open, read or write, where it is known.
    int systemError = 0;
    QString detail;

    /// True when the file's contents are wrong; false when something stands in the way of reading
    /// or writing it, in which case nothing is known about the contents.
    [[nodiscard]] bool isDamage() const;
    [[nodiscard]] StoreError toStoreError() const;

    static StoreFailure damage(const QString& detail);
    static StoreFailure from(const SQLite::Exception& exception);
};

/// Thrown inside the store's own files where a check fails; `StoreConnection::run` catches it.
[[noreturn]] void throwDamage(const QString& detail);

/// One connection to a store's file. No exception leaves `run` and `transact`.
class StoreConnection {
public:
    enum class Access {
        ReadWrite,
        ReadOnly,  ///< beside a connection that writes
        Immutable, ///< the file alone, without write-ahead log and locks; nothing may be writing it
    };

    [[nodiscard]] static std::expected<std::unique_ptr<StoreConnection>, StoreFailure>
    open(const QString& path, Access access);

    /// Leaves the write-ahead log as it is, unless `closeCheckpointed` was called.
    ~StoreConnection();
    StoreConnection(const StoreConnection&) = delete;
    StoreConnection& operator=(const StoreConnection&) = delete;

    [[nodiscard]] SQLite::Database& database() { return *m_database; }

    /// Calls `work()` and gives its result, or the failure that it threw.
    template <typename Work>
    auto run(Work&& work) -> std::expected<decltype(work()), StoreFailure>
    {
        try {
            if constexpr (std::is_void_v<decltype(work())>) {
                work();
                return {};
            } else {
                return work();
            }
        } catch (const SQLite::Exception& exception) {
            return std::unexpected(failure(exception));
        }
    }

    /// Calls `work()` inside a transaction: all of it is stored and on the disk when this
    /// succeeds, and nothing of it otherwise.
    template <typename Work>
    std::expected<void, StoreFailure> transact(Work&& work)
    {
        auto done = run([&] {
            m_database->exec("BEGIN IMMEDIATE");
            work();
            m_database->exec("COMMIT");
        });
        if (!done)
            rollBack();
        return done;
    }

    /// Pages in the write-ahead log after the last commit.
    [[nodiscard]] int walPages() const { return m_walPages; }
    /// Copies the write-ahead log's pages into the store's file. True when all of them are there.
    [[nodiscard]] std::expected<bool, StoreFailure> checkpoint();
    /// Lets the destructor checkpoint the write-ahead log into the file and remove it.
    void closeCheckpointed();

    /// The write-ahead log that is open, as its file holds it, even when the file has no name any
    /// more.
    [[nodiscard]] std::expected<QByteArray, StoreFailure> walBytes();

    /// Whether SQLite could open the file for reading only.
    [[nodiscard]] bool isReadOnly() const;

private:
    explicit StoreConnection(std::unique_ptr<SQLite::Database> database);
    void configure(Access access);
    [[nodiscard]] StoreFailure failure(const SQLite::Exception& exception);
    void rollBack();

    std::unique_ptr<SQLite::Database> m_database;
    int m_walPages = 0;
};

} // namespace orvane
