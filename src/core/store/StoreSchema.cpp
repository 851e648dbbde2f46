// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/store/StoreSchema.h"

#include "core/store/RecordColumns.h"
#include "core/store/StoreConnection.h"
#include "core/store/StoreStatement.h"

#include <QHash>

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Exception.h>
#include <sqlite3.h>

namespace orvane {

namespace {

// docs/formats.md describes every column.
constexpr const char* otherTables = R"(
CREATE TABLE OrvaneStore (
    row INTEGER PRIMARY KEY CHECK (row = 1),
    storeKey INTEGER NOT NULL,
    generation INTEGER NOT NULL,
    folderCount INTEGER NOT NULL,
    noteCount INTEGER NOT NULL
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

std::string currentTables()
{
    return otherTables + createTableStatement<FolderRecord>() + createTableStatement<NoteRecord>();
}

// The tables of folders and notes as schemas 1 and 2 had them, with the body of a note as a column
// of that type.
std::string formerNoteTable(const char* body)
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

constexpr const char* formerFolderTable = R"(
CREATE TABLE OrvaneFolder (
    row INTEGER PRIMARY KEY,
    id TEXT, name TEXT, createdAt INTEGER, parentFolderID TEXT, iconName TEXT, titleRTF BLOB,
    tagsJSON TEXT, isPinned INTEGER,
    checksum INTEGER
);
)";

std::string formerTables(const char* body)
{
    return std::string(otherTables) + formerFolderTable + formerNoteTable(body);
}

// Schema 3 didn't say how a note is edited, nor where one in the Trash came from.
std::string noteTable3()
{
    return formerNoteTable("INTEGER, firstLine TEXT");
}

// Schema 4 knew no images.
std::string noteTable4()
{
    return formerNoteTable("INTEGER, firstLine TEXT, editorProfile TEXT, trashedAt INTEGER, "
                           "trashedFrom TEXT");
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
    database.exec(formerNoteTable("INTEGER"));
    database.exec("INSERT INTO OrvaneNote SELECT row, id, folderID, title, createdAt, updatedAt, "
                  "tagsJSON, iconName, embeddedFileType, embeddedFileAssetID, isPinned, "
                  "pdfSourceURLString, titleRTF, bodyRTF, richContentPayload, "
                  "editorTypingAttributesPayload, embeddedFilePayload, shapesPayload, "
                  "length(CAST(body AS BLOB)), NULL FROM OrvaneNote1");
    database.exec("DROP TABLE OrvaneNote1");
}

// Schema 2 had room for eight values beside a note, and no first lines.
constexpr int formerBytesPerNote = 8;
constexpr int formerBodyPlace = 5;

// The bytes of a row of "OrvaneNoteBytes2". Where they are damaged they move as they are, and stay
// unreadable.
void moveBytes(SQLite::Database& database, qint64 storeKey)
{
    StoreStatement from(database, "SELECT row, checksum, bytes FROM OrvaneNoteBytes2");
    StoreStatement to(database, "INSERT INTO OrvaneNoteBytes (row, checksum, bytes) "
                                "VALUES (?, ?, ?)");
    while (from.step()) {
        const qint64 row = from.value(0).integer();
        const qint64 place = row % formerBytesPerNote;
        const qint64 key = row / formerBytesPerNote * bytesPerNote + place;
        const QByteArrayView bytes = from.value(2).bytes();
        StoreChecksum before(storeKey);
        before.addInteger(row);
        before.addBytes(bytes);
        StoreChecksum after(storeKey);
        after.addInteger(key);
        after.addBytes(bytes);
        const StoreValue checksum = from.value(1);
        const bool isSound = checksum.isNull() || checksum.integer() == before.value();
        to.bindInteger(1, key);
        to.bindInteger(2, isSound ? after.value() : ~after.value());
        to.bindBytes(3, bytes);
        to.run();
    }
}

QByteArray firstLineIn(SQLite::Database& database, qint64 row)
{
    StoreStatement body(database, "SELECT bytes FROM OrvaneNoteBytes2 WHERE row = ?");
    body.bindInteger(1, row * formerBytesPerNote + formerBodyPlace);
    return body.step() ? NoteText(Blob(body.value(0).bytes().toByteArray())).firstLine().toUtf8()
                       : QByteArray();
}

// A row of "OrvaneNote2", with the first line of a note that has no title.
void moveNotes(SQLite::Database& database, qint64 storeKey)
{
    constexpr int columns = 20;
    constexpr int titleColumn = 3;
    StoreStatement from(database, "SELECT * FROM OrvaneNote2");
    StoreStatement to(database, "INSERT INTO OrvaneNote VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, "
                                "?, ?, ?, ?, ?, ?, ?, ?, ?, ?)");
    while (from.step()) {
        const qint64 row = from.value(0).integer();
        StoreChecksum before(storeKey);
        StoreChecksum after(storeKey);
        for (int column = 0; column < columns - 1; ++column) {
            const StoreValue value = from.value(column);
            value.addTo(before);
            value.addTo(after);
            to.bindValue(column + 1, value);
        }
        const bool isUntitled =
            QString::fromUtf8(from.value(titleColumn).bytes()).trimmed().isEmpty();
        const QByteArray firstLine = isUntitled ? firstLineIn(database, row) : QByteArray();
        if (isUntitled) {
            after.addText(firstLine);
            to.bindText(columns, firstLine);
        } else {
            after.addNull();
            to.bindNull(columns);
        }
        const StoreValue checksum = from.value(columns - 1);
        if (!checksum.isNull() && checksum.integer() != before.value())
            throwDamage(QStringLiteral("the note in row %1 doesn't match its checksum").arg(row));
        to.bindInteger(columns + 1, after.value());
        to.run();
    }
}

void makeRoomBesideNotes(SQLite::Database& database)
{
    const qint64 storeKey = database.execAndGet("SELECT storeKey FROM OrvaneStore").getInt64();
    for (const char* table : {"OrvaneNote", "OrvaneNoteBytes"})
        database.exec(std::string("ALTER TABLE ") + table + " RENAME TO " + table + '2');
    database.exec("CREATE TABLE OrvaneNoteBytes (row INTEGER PRIMARY KEY, checksum INTEGER, "
                  "bytes BLOB)");
    database.exec(noteTable3());
    moveBytes(database, storeKey);
    moveNotes(database, storeKey);
    database.exec("DROP TABLE OrvaneNote2");
    database.exec("DROP TABLE OrvaneNoteBytes2");
}

// The rows of "OrvaneNote", of so many columns, in a new table that has some more before the
// checksum, which are empty.
void addColumns(SQLite::Database& database, int columns, int added, const std::string& newTable)
{
    const qint64 storeKey = database.execAndGet("SELECT storeKey FROM OrvaneStore").getInt64();
    database.exec("ALTER TABLE OrvaneNote RENAME TO OrvaneNoteBefore");
    database.exec(newTable);
    {
        StoreStatement from(database, "SELECT * FROM OrvaneNoteBefore");
        std::string insert = "INSERT INTO OrvaneNote VALUES (";
        for (int i = 1; i < columns; ++i)
            insert += "?, ";
        for (int i = 0; i < added; ++i)
            insert += "NULL, ";
        StoreStatement to(database, (insert + "?)").c_str());
        while (from.step()) {
            StoreChecksum sum(storeKey);
            for (int column = 0; column < columns - 1; ++column) {
                const StoreValue value = from.value(column);
                value.addTo(sum);
                to.bindValue(column + 1, value);
            }
            const StoreValue checksum = from.value(columns - 1);
            if (!checksum.isNull() && checksum.integer() != sum.value())
                throwDamage(QStringLiteral("the note in row %1 doesn't match its checksum")
                                .arg(from.value(0).integer()));
            for (int i = 0; i < added; ++i)
                sum.addNull();
            to.bindInteger(columns, sum.value());
            to.run();
        }
    }
    database.exec("DROP TABLE OrvaneNoteBefore");
}

} // namespace

const StoreSchema& StoreSchema::current()
{
    static const StoreSchema schema{
        5,
        currentTables(),
        {{1, formerTables("TEXT"), moveBodiesOut},
         {2, formerTables("INTEGER"), makeRoomBesideNotes},
         {3, std::string(otherTables) + formerFolderTable + noteTable3(),
          [](SQLite::Database& database) {
              addColumns(database, 21, 3, noteTable4());
          }},
         {4, std::string(otherTables) + formerFolderTable + noteTable4(),
          [](SQLite::Database& database) {
              addColumns(database, 24, 1, createTableStatement<NoteRecord>());
          }}}};
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
