// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QtGlobal>

#include <functional>
#include <vector>

namespace SQLite {
class Database;
}

namespace orvane {

/// One step forward. `apply` changes the tables and their rows from the schema `from` to the next
/// one, inside a transaction, and throws SQLite::Exception on failure.
struct StoreMigration {
    int from = 0;
    std::function<void(SQLite::Database&)> apply;
};

/// The tables of a store, by number. A store says its number in the file's `user_version`; an
/// older one is brought forward step by step when it is opened, a newer one is refused.
struct StoreSchema {
    int version = 0;
    /// Makes the tables of `version` in an empty database, with the one row of "OrvaneStore".
    std::function<void(SQLite::Database&, qint64 storeKey)> create;
    /// One for each earlier number, in order.
    std::vector<StoreMigration> steps;

    /// The schema that this version of the program writes.
    [[nodiscard]] static const StoreSchema& current();
};

/// The file's `application_id`: "OrWs".
inline constexpr quint32 storeApplicationId = 0x4f725773;

/// Runs the steps that lead from `from` to the schema's version and sets `user_version`. Throws
/// SQLite::Exception. Call it inside a transaction.
void migrateStore(SQLite::Database& database, int from, const StoreSchema& schema);

} // namespace orvane
