// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/StoreSchema.h"

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Exception.h>
#include <sqlite3.h>

namespace orvane {

namespace {

// Columns that are read at opening stand before those that may be long. A note's body and its
// rich bytes are rows of their own, numbered 8 * the note's row + their place; the note's column
// then holds their length. docs/formats.md describes every column.
constexpr const char* tables = R"(
CREATE TABLE OrvaneStore (
    row INTEGER PRIMARY KEY CHECK (row = 1),
    storeKey INTEGER NOT NULL,
    generation INTEGER NOT NULL,
    folderCount INTEGER NOT NULL,
    noteCount INTEGER NOT NULL
);
CREATE TABLE OrvaneFolder (
    row INTEGER PRIMARY KEY,
    id TEXT, name TEXT, createdAt INTEGER, parentFolderID TEXT, iconName TEXT, titleRTF BLOB,
    tagsJSON TEXT, isPinned INTEGER,
    checksum INTEGER
);
CREATE TABLE OrvaneNoteBytes (
    row INTEGER PRIMARY KEY,
    checksum INTEGER,
    bytes BLOB
);
CREATE TABLE OrvaneNotebookMeta (
    row INTEGER PRIMARY KEY,
    id TEXT, binderLayoutJSON BLOB,
    checksum INTEGER
);
)";

constexpr const char* noteTable = R"(
CREATE TABLE OrvaneNote (
    row INTEGER PRIMARY KEY,
    id TEXT, folderID TEXT, title TEXT, createdAt INTEGER, updatedAt INTEGER, tagsJSON TEXT,
    iconName TEXT, embeddedFileType TEXT, embeddedFileAssetID TEXT, isPinned INTEGER,
    pdfSourceURLString TEXT, titleRTF BLOB,
    bodyRTF INTEGER, richContentPayload INTEGER, editorTypingAttributesPayload INTEGER,
    embeddedFilePayload INTEGER, shapesPayload INTEGER,
    body INTEGER,
    checksum INTEGER
);
)";

void createTables(SQLite::Database& database, qint64 storeKey)
{
    database.exec(tables);
    database.exec(noteTable);
    database.exec("INSERT INTO OrvaneStore VALUES (1, " + std::to_string(storeKey) + ", 0, 0, 0)");
}

} // namespace

// The first schema kept the body of a note in the note's own row.
void moveBodiesOut(SQLite::Database& database)
{
    database.exec("INSERT INTO OrvaneNoteBytes (row, checksum, bytes) "
                  "SELECT 8 * row + 5, NULL, CAST(body AS BLOB) FROM OrvaneNote "
                  "WHERE length(CAST(body AS BLOB)) > 0");
    database.exec("ALTER TABLE OrvaneNote RENAME TO OrvaneNote1");
    database.exec(noteTable);
    database.exec("INSERT INTO OrvaneNote SELECT row, id, folderID, title, createdAt, updatedAt, "
                  "tagsJSON, iconName, embeddedFileType, embeddedFileAssetID, isPinned, "
                  "pdfSourceURLString, titleRTF, bodyRTF, richContentPayload, "
                  "editorTypingAttributesPayload, embeddedFilePayload, shapesPayload, "
                  "length(CAST(body AS BLOB)), NULL FROM OrvaneNote1");
    database.exec("DROP TABLE OrvaneNote1");
}

const StoreSchema& StoreSchema::current()
{
    static const StoreSchema schema{2, createTables, {{1, moveBodiesOut}}};
    return schema;
}

void migrateStore(SQLite::Database& database, int from, const StoreSchema& schema)
{
    for (const StoreMigration& step : schema.steps) {
        if (step.from != from)
            continue;
        step.apply(database);
        ++from;
    }
    if (from != schema.version)
        throw SQLite::Exception("no step leads from this schema", SQLITE_MISMATCH);
    database.exec("PRAGMA user_version = " + std::to_string(from));
}

} // namespace orvane
