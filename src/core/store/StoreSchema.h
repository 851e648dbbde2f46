// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QStringList>

#include <functional>
#include <string>
#include <vector>

namespace SQLite {
class Database;
}

namespace orvane {

/// One step forward. `apply` changes the tables and their rows from the schema `from` to the next
/// one, inside a transaction, and throws SQLite::Exception on failure.
struct StoreMigration {
    int from = 0;
    /// The statements that made the tables of `from`.
    std::string tables;
    std::function<void(SQLite::Database&)> apply;
};

/// The tables of a store, by number. A store says its number in the file's `user_version`; an
/// older one is brought forward step by step when it is opened, a newer one is refused.
struct StoreSchema {
    int version = 0;
    /// The statements that make the tables of `version` in an empty database.
    std::string tables;
    /// One for each earlier number, in order.
    std::vector<StoreMigration> steps;

    /// The schema that this version of the program writes.
    [[nodiscard]] static const StoreSchema& current();
    /// The statements of `number`, null for one that isn't known.
    [[nodiscard]] const std::string* tablesOf(int number) const;
};

/// How the schema that stands in a file differs from the one that the program makes.
struct SchemaDifference {
    /// Tables that are not there.
    QStringList missing;
    /// What is there beside them, or under their name and otherwise: "trigger cleanup".
    QStringList strangers;
};

/// Holds every row of the database's schema against the statements. Layout and quotes don't count,
/// nor do the tables that SQLite keeps for itself. Throws SQLite::Exception.
[[nodiscard]] SchemaDifference compareSchema(SQLite::Database& database, const std::string& tables);

/// Makes the tables of the schema, with the one row of "OrvaneStore". Throws SQLite::Exception.
void createTables(SQLite::Database& database, const StoreSchema& schema, qint64 storeKey);

/// The file's `application_id`: "OrWs".
inline constexpr quint32 storeApplicationId = 0x4f725773;

/// Runs the steps that lead from `from` to the schema's version and sets `user_version`. Throws
/// SQLite::Exception. Call it inside a transaction.
void migrateStore(SQLite::Database& database, int from, const StoreSchema& schema);

} // namespace orvane
