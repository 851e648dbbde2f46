// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/store/StoreSchema.h"

#include "core/store/StoreStatement.h"

#include <QHash>

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Exception.h>
#include <sqlite3.h>

namespace orvane {

namespace {

// Columns that are read at opening stand before those that may be long. A note's body and its
// rich bytes are rows of their own, numbered 8 * the note's row + their place; the note's column
// then holds their length. docs/formats.md describes every column.
std::string noteTable(const char* body)
{
    return std::string(R"(
CREATE TABLE OrvaneNote (
    row INTEGER PRIMARY KEY,
    id TEXT, folderID TEXT, title TEXT, createdAt INTEGER, updatedAt INTEGER, tagsJSON TEXT,
    iconName TEXT, embeddedFileType TEXT, embeddedFileAssetID TEXT, isPinned INTEGER,
    pdfSourceURLString TEXT, titleRTF BLOB,
    bodyRTF INTEGER, richContentPayload INTEGER, editorTypingAttributesPayload INTEGER,
    embeddedFilePayload INTEGER, shapesPayload INTEGER,
    body )") +
           body + R"(,
    checksum INTEGER
);
)";
}

// With the body of a note as a column of that type.
std::string allTables(const char* body)
{
    return R"(
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
)" + noteTable(body);
}

// One form for statements that differ only in how they are laid out and quoted.
QByteArray plainForm(QByteArrayView statement)
{
    QByteArray form = statement.toByteArray().simplified();
    form.replace('"', QByteArray());
    form.replace("CREATE TABLE IF NOT EXISTS ", "CREATE TABLE ");
    for (const char mark : {'(', ')', ','}) {
        form.replace(QByteArray(" ") + mark, QByteArray(1, mark));
        form.replace(QByteArray(1, mark) + ' ', QByteArray(1, mark));
    }
    return form;
}

// By the name of their table.
QHash<QByteArray, QByteArray> plainForms(const std::string& tables)
{
    constexpr QByteArrayView beginning("CREATE TABLE ");
    QHash<QByteArray, QByteArray> forms;
    for (const QByteArray& statement : QByteArray::fromStdString(tables).split(';')) {
        const QByteArray form = plainForm(statement);
        if (form.startsWith(beginning))
            forms.insert(form.mid(beginning.size()).split('(').first(), form);
    }
    return forms;
}

// The first schema kept the body of a note in the note's own row.
void moveBodiesOut(SQLite::Database& database)
{
    database.exec("INSERT INTO OrvaneNoteBytes (row, checksum, bytes) "
                  "SELECT 8 * row + 5, NULL, CAST(body AS BLOB) FROM OrvaneNote "
                  "WHERE length(CAST(body AS BLOB)) > 0");
    database.exec("ALTER TABLE OrvaneNote RENAME TO OrvaneNote1");
    database.exec(noteTable("INTEGER"));
    database.exec("INSERT INTO OrvaneNote SELECT row, id, folderID, title, createdAt, updatedAt, "
                  "tagsJSON, iconName, embeddedFileType, embeddedFileAssetID, isPinned, "
                  "pdfSourceURLString, titleRTF, bodyRTF, richContentPayload, "
                  "editorTypingAttributesPayload, embeddedFilePayload, shapesPayload, "
                  "length(CAST(body AS BLOB)), NULL FROM OrvaneNote1");
    database.exec("DROP TABLE OrvaneNote1");
}

} // namespace

const StoreSchema& StoreSchema::current()
{
    static const StoreSchema schema{
        2, allTables("INTEGER"), {{1, allTables("TEXT"), moveBodiesOut}}};
    return schema;
}

const std::string* StoreSchema::tablesOf(int number) const
{
    if (number == version)
        return &tables;
    for (const StoreMigration& step : steps) {
        if (step.from == number)
            return &step.tables;
    }
    return nullptr;
}

SchemaDifference compareSchema(SQLite::Database& database, const std::string& tables)
{
    QHash<QByteArray, QByteArray> expected = plainForms(tables);
    SchemaDifference difference;
    StoreStatement statement(database, "SELECT type, name, sql FROM sqlite_schema");
    while (statement.step()) {
        const QByteArray type = statement.value(0).bytes().toByteArray();
        const QByteArray name = statement.value(1).bytes().toByteArray();
        // A name of this kind can be given by SQLite alone.
        const bool isInternal = name.startsWith("sqlite_") && type != "trigger" && type != "view";
        if (isInternal)
            continue;
        const bool isOurs =
            type == "table" && expected.value(name) == plainForm(statement.value(2).bytes());
        if (type == "table")
            expected.remove(name);
        if (!isOurs)
            difference.strangers.append(QString::fromUtf8(type + ' ' + name));
    }
    for (auto table = expected.cbegin(); table != expected.cend(); ++table)
        difference.missing.append(QString::fromUtf8(table.key()));
    return difference;
}

void createTables(SQLite::Database& database, const StoreSchema& schema, qint64 storeKey)
{
    database.exec(schema.tables);
    database.exec("INSERT INTO OrvaneStore VALUES (1, " + std::to_string(storeKey) + ", 0, 0, 0)");
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
