// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/store/StoreReader.h"

#include "core/store/ColumnText.h"
#include "core/store/StoreConnection.h"
#include "core/store/StoreStatement.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

/// The values of one row, fetched once.
template <int count>
struct Row {
    std::array<StoreValue, count> values;

    explicit Row(const StoreStatement& statement)
    {
        for (int column = 0; column < count; ++column)
            values[size_t(column)] = statement.value(column);
    }
    const StoreValue& operator[](int column) const { return values[size_t(column)]; }
};

std::optional<QUuid> uuid(const StoreValue& value)
{
    return value.isText() ? uuidFromStore(value.bytes()) : std::nullopt;
}

std::optional<QString> text(const StoreValue& value)
{
    return value.isText() ? std::optional(QString::fromUtf8(value.bytes())) : std::nullopt;
}

bool boolean(const StoreValue& value)
{
    return !value.isNull() && value.number() != 0;
}

std::optional<Blob> inlineBytes(const StoreValue& value)
{
    return value.isBytes() ? std::optional<Blob>(value.bytes().toByteArray()) : std::nullopt;
}

std::optional<Blob> unreadBytes(const StoreValue& value, const std::shared_ptr<BlobSource>& source,
                                qint64 key)
{
    if (!value.isInteger())
        return std::nullopt;
    const qint64 length = value.integer();
    return length > 0 ? Blob(length, source, key) : Blob(QByteArray());
}

QString readableText(const StoreValue& value)
{
    return value.isText() || value.isBytes() ? QString::fromUtf8(value.bytes()) : QString();
}

// An id for a row that has none: the same each time the store is read.
QUuid derivedId(qint64 storeKey, const char* kind, qint64 row)
{
    const QUuid space(u"{5f1a3c1e-9f0b-4c57-8a43-0d6f3b1c7e52}"_s);
    return QUuid::createUuidV5(space,
                               u"%1/%2/%3"_s.arg(storeKey).arg(QLatin1String(kind)).arg(row));
}

constexpr int folderColumns = 10;

bool isWhole(const FolderRecord&, const Row<folderColumns>& row)
{
    return uuid(row[1]) && row[2].isText() && row[3].isInteger();
}

void fill(FolderRecord& folder, const Row<folderColumns>& row)
{
    folder.id = uuid(row[1]).value_or(QUuid());
    folder.name = QString::fromUtf8(row[2].bytes());
    folder.createdAt = {row[3].integer()};
    folder.parentFolderID = uuid(row[4]);
    folder.iconName = text(row[5]);
    folder.titleRTF = inlineBytes(row[6]);
    folder.tags = tagsFromStore(row[7].bytes());
    folder.isPinned = boolean(row[8]);
}

void recover(FolderRecord& folder, const Row<folderColumns>& row, qint64 storeKey)
{
    fill(folder, row);
    if (folder.id.isNull())
        folder.id = derivedId(storeKey, "folder", row[0].integer());
    folder.name = readableText(row[2]);
    if (folder.name.isEmpty())
        folder.name = QCoreApplication::translate("StoreReader", "Recovered folder");
}

constexpr int firstBytesColumn = 13;
constexpr int bodyColumn = firstBytesColumn + bodyPlace;
constexpr int noteColumns = bodyColumn + 2;

bool isWhole(const NoteRecord&, const Row<noteColumns>& row)
{
    return uuid(row[1]) && uuid(row[2]) && row[3].isText() && row[4].isInteger() &&
           row[5].isInteger() && row[bodyColumn].isInteger();
}

void fill(NoteRecord& note, const Row<noteColumns>& row, const std::shared_ptr<BlobSource>& source)
{
    note.id = uuid(row[1]).value_or(QUuid());
    note.folderID = uuid(row[2]).value_or(QUuid());
    note.title = QString::fromUtf8(row[3].bytes());
    note.createdAt = {row[4].integer()};
    note.updatedAt = {row[5].integer()};
    note.tags = tagsFromStore(row[6].bytes());
    note.iconName = text(row[7]);
    note.embeddedFileType = text(row[8]);
    note.embeddedFileAssetID = text(row[9]);
    note.isPinned = boolean(row[10]);
    note.pdfSourceURLString = text(row[11]);
    note.titleRTF = inlineBytes(row[12]);
    const qint64 key = row[0].integer() * bytesPerNote;
    for (int place = 0; place < int(std::size(noteBytes)); ++place)
        note.*noteBytes[place] = unreadBytes(row[firstBytesColumn + place], source, key + place);
    if (const auto body = unreadBytes(row[bodyColumn], source, key + bodyPlace))
        note.body = NoteText(*body);
}

// Bytes whose length the note's row doesn't say, as they stand in their own.
std::optional<Blob> bytesWithoutLength(SQLite::Database& database,
                                       const std::shared_ptr<BlobSource>& source, qint64 key)
{
    StoreStatement statement(database, "SELECT length(bytes) FROM OrvaneNoteBytes WHERE row = ?");
    statement.bindInteger(1, key);
    return statement.step() ? unreadBytes(statement.value(0), source, key) : std::nullopt;
}

void recover(NoteRecord& note, const Row<noteColumns>& row, qint64 storeKey,
             SQLite::Database& database, const std::shared_ptr<BlobSource>& source)
{
    fill(note, row, source);
    const qint64 number = row[0].integer();
    if (note.id.isNull())
        note.id = derivedId(storeKey, "note", number);
    note.title = readableText(row[3]);
    if (note.title.isEmpty())
        note.title = QCoreApplication::translate("StoreReader", "Recovered note");
    if (!row[4].isInteger())
        note.createdAt = note.updatedAt;
    if (!row[5].isInteger())
        note.updatedAt = note.createdAt;
    for (int place = 0; place < placesInNote; ++place) {
        if (row[firstBytesColumn + place].isInteger())
            continue;
        auto bytes = bytesWithoutLength(database, source, number * bytesPerNote + place);
        if (bytes && place == bodyPlace)
            note.body = NoteText(*std::move(bytes));
        else if (bytes)
            note.*noteBytes[place] = std::move(bytes);
    }
}

// Reads a whole table whose columns are the row's number, the values, and their checksum.
template <typename Record, int columns, typename Fill, typename Recover, typename Order>
StoredRows<Record> readRows(StoreStatement& statement, qint64 storeKey, const char* kind,
                            Fill&& fill, Recover&& recover, Order&& order)
{
    StoredRows<Record> rows;
    while (statement.step()) {
        const Row<columns> row(statement);
        const qint64 number = row[0].integer();
        ++rows.rowCount;
        rows.lastRow = std::max(rows.lastRow, number);
        if (const StoreValue& checksum = row[columns - 1]; !checksum.isNull()) {
            StoreChecksum sum(storeKey);
            for (int column = 0; column < columns - 1; ++column)
                row[column].addTo(sum);
            if (sum.value() != checksum.integer())
                throwDamage(u"%1 in row %2 doesn't match its checksum"_s.arg(QLatin1String(kind))
                                .arg(number));
        }
        auto record = std::make_shared<Record>();
        if (isWhole(*record, row)) {
            fill(*record, row);
        } else {
            qWarning("%s in row %lld lacks a value and is shown as recovered", kind,
                     qlonglong(number));
            recover(*record, row);
        }
        const qint64 place = order(*record);
        rows.items.push_back({place, number, Shared<Record>(std::move(record))});
    }
    std::stable_sort(rows.items.begin(), rows.items.end(),
                     [](const auto& a, const auto& b) { return a.order < b.order; });
    return rows;
}

} // namespace

StoreState readStoreState(SQLite::Database& database)
{
    StoreStatement statement(
        database, "SELECT storeKey, generation, folderCount, noteCount FROM OrvaneStore");
    if (!statement.step())
        throwDamage(u"the store doesn't say who it is"_s);
    return {statement.value(0).integer(), statement.value(1).integer(),
            statement.value(2).integer(), statement.value(3).integer()};
}

StoredRows<FolderRecord> readFolders(SQLite::Database& database, qint64 storeKey)
{
    StoreStatement statement(database,
                             "SELECT row, id, name, createdAt, parentFolderID, iconName, titleRTF, "
                             "tagsJSON, isPinned, checksum FROM OrvaneFolder");
    return readRows<FolderRecord, folderColumns>(
        statement, storeKey, "the folder",
        [](FolderRecord& folder, const Row<folderColumns>& row) { fill(folder, row); },
        [&](FolderRecord& folder, const Row<folderColumns>& row) {
            recover(folder, row, storeKey);
        },
        [](const FolderRecord& folder) { return folder.createdAt.msecs; });
}

StoredRows<NoteRecord> readNotes(SQLite::Database& database, qint64 storeKey,
                                 const std::shared_ptr<BlobSource>& source)
{
    StoreStatement statement(
        database,
        "SELECT row, id, folderID, title, createdAt, updatedAt, tagsJSON, iconName, "
        "embeddedFileType, embeddedFileAssetID, isPinned, pdfSourceURLString, titleRTF, bodyRTF, "
        "richContentPayload, editorTypingAttributesPayload, embeddedFilePayload, shapesPayload, "
        "body, checksum FROM OrvaneNote");
    return readRows<NoteRecord, noteColumns>(
        statement, storeKey, "the note",
        [&](NoteRecord& note, const Row<noteColumns>& row) { fill(note, row, source); },
        [&](NoteRecord& note, const Row<noteColumns>& row) {
            recover(note, row, storeKey, database, source);
        },
        [](const NoteRecord& note) { return ~note.updatedAt.msecs; });
}

} // namespace orvane
