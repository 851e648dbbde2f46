// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/store/StoreReader.h"

#include "core/store/ColumnText.h"
#include "core/store/RecordColumns.h"
#include "core/store/StoreConnection.h"
#include "core/store/StoreStatement.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

/// The values of one row, fetched once.
template <typename Record>
struct Row {
    static constexpr int columns = columnsOf<Record>();
    std::array<StoreValue, size_t(columns)> values;

    explicit Row(const StoreStatement& statement)
    {
        for (int column = 0; column < columns; ++column)
            values[size_t(column)] = statement.value(column);
    }
    [[nodiscard]] qint64 number() const { return values.front().integer(); }
    [[nodiscard]] const StoreValue& checksum() const { return values.back(); }
};

/// Where a field's bytes are to be read when they are asked for.
struct BytesPlace {
    const SharedBlobSource& source;
    qint64 key;
    bool isInRecord;
};

// Each takes a field from its column, and tells whether the column has what the field needs.

bool take(QUuid& id, const StoreValue* value, const BytesPlace&)
{
    const auto read = value->isText() ? uuidFromStore(value->bytes()) : std::nullopt;
    id = read.value_or(QUuid());
    return read.has_value();
}

bool take(std::optional<QUuid>& id, const StoreValue* value, const BytesPlace&)
{
    id = value->isText() ? uuidFromStore(value->bytes()) : std::nullopt;
    return true;
}

bool take(QString& text, const StoreValue* value, const BytesPlace&)
{
    if (value->isText() || value->isBytes())
        text = QString::fromUtf8(value->bytes());
    return value->isText();
}

bool take(std::optional<QString>& text, const StoreValue* value, const BytesPlace&)
{
    if (value->isText())
        text = QString::fromUtf8(value->bytes());
    return true;
}

bool take(Rare<QString>& text, const StoreValue* value, const BytesPlace&)
{
    if (value->isText())
        text = QString::fromUtf8(value->bytes());
    return true;
}

bool take(Rare<Timestamp>& date, const StoreValue* value, const BytesPlace&)
{
    if (value->isInteger())
        date = Timestamp{value->integer()};
    return true;
}

bool take(Rare<QUuid>& id, const StoreValue* value, const BytesPlace&)
{
    id = value->isText() ? uuidFromStore(value->bytes()) : std::nullopt;
    return true;
}

bool take(Timestamp& date, const StoreValue* value, const BytesPlace&)
{
    date = {value->integer()};
    return value->isInteger();
}

bool take(QStringList& tags, const StoreValue* value, const BytesPlace&)
{
    tags = tagsFromStore(value->bytes());
    return true;
}

bool take(bool& flag, const StoreValue* value, const BytesPlace&)
{
    flag = !value->isNull() && value->number() != 0;
    return true;
}

bool take(Rare<NoteImages>& images, const StoreValue* value, const BytesPlace& place)
{
    NoteImages found;
    if (value->isText()) {
        for (const ImageEntry& entry : imagesFromStore(value->bytes()))
            found.append({entry.hash, Blob(entry.length, place.source, imageRow(entry.hash))});
    }
    if (!found.isEmpty())
        images = std::move(found);
    return true;
}

Blob unread(qint64 length, const BytesPlace& place, const QByteArray& beginning = {})
{
    return length > 0 ? Blob(length, place.source, place.key, beginning) : Blob(QByteArray());
}

bool take(std::optional<Blob>& bytes, const StoreValue* value, const BytesPlace& place)
{
    if (place.isInRecord && value->isBytes())
        bytes.emplace(value->bytes().toByteArray());
    else if (!place.isInRecord && value->isInteger())
        bytes = unread(value->integer(), place);
    return true;
}

bool take(NoteText& text, const StoreValue* value, const BytesPlace& place)
{
    const StoreValue& firstLine = value[1];
    if (value->isInteger() && value->integer() > 0)
        text = NoteText(unread(value->integer(), place, firstLine.bytes().toByteArray()));
    return value->isInteger();
}

// False when a required value is missing; the others are there all the same.
template <typename Record>
bool fill(Record& record, const Row<Record>& row, const SharedBlobSource& source)
{
    bool isWhole = true;
    const StoreValue* value = row.values.data() + 1;
    forEachField<Record>([&]<typename Type>(const RecordField<Record, Type>& field) {
        const BytesPlace place{source, row.number() * bytesPerNote + field.place,
                               field.place == field.inRecord};
        isWhole = take(record.*field.member, value, place) && isWhole;
        value += columnsOfField<Type>;
    });
    return isWhole;
}

// An id for a row that has none: the same each time the store is read.
QUuid derivedId(qint64 storeKey, const char* kind, qint64 row)
{
    const QUuid space(u"{5f1a3c1e-9f0b-4c57-8a43-0d6f3b1c7e52}"_s);
    return QUuid::createUuidV5(space,
                               u"%1/%2/%3"_s.arg(storeKey).arg(QLatin1String(kind)).arg(row));
}

// Bytes whose length the note's row doesn't say, as they stand in their own.
std::optional<Blob> bytesWithoutLength(SQLite::Database& database, const SharedBlobSource& source,
                                       qint64 key)
{
    StoreStatement statement(database, "SELECT length(bytes) FROM OrvaneNoteBytes WHERE row = ?");
    statement.bindInteger(1, key);
    if (!statement.step() || !statement.value(0).isInteger())
        return std::nullopt;
    return unread(statement.value(0).integer(), {source, key, false});
}

void recover(FolderRecord& folder, qint64 number, qint64 storeKey, SQLite::Database&,
             const SharedBlobSource&)
{
    if (folder.id.isNull())
        folder.id = derivedId(storeKey, "folder", number);
    if (folder.name.isEmpty())
        folder.name = QCoreApplication::translate("StoreReader", "Recovered folder");
}

void recover(NoteRecord& note, qint64 number, qint64 storeKey, SQLite::Database& database,
             const SharedBlobSource& source)
{
    if (note.id.isNull())
        note.id = derivedId(storeKey, "note", number);
    if (note.title.isEmpty())
        note.title = QCoreApplication::translate("StoreReader", "Recovered note");
    if (note.createdAt == Timestamp())
        note.createdAt = note.updatedAt;
    if (note.updatedAt == Timestamp())
        note.updatedAt = note.createdAt;
    forEachField<NoteRecord>([&]<typename Type>(const RecordField<NoteRecord, Type>& field) {
        const qint64 key = number * bytesPerNote + field.place;
        if constexpr (std::is_same_v<Type, NoteText>) {
            auto bytes = (note.*field.member).isEmpty() ? bytesWithoutLength(database, source, key)
                                                        : std::nullopt;
            if (bytes)
                note.*field.member = NoteText(*std::move(bytes));
        } else if constexpr (std::is_same_v<Type, std::optional<Blob>>) {
            if (field.place != field.inRecord && !(note.*field.member))
                note.*field.member = bytesWithoutLength(database, source, key);
        }
    });
}

qint64 orderOf(const FolderRecord& folder)
{
    return folder.createdAt.msecs;
}

qint64 orderOf(const NoteRecord& note)
{
    return ~note.updatedAt.msecs;
}

// The row that the statement stands on, verified.
template <typename Record>
typename StoredRows<Record>::Item readRow(const StoreStatement& statement,
                                          SQLite::Database& database, qint64 storeKey,
                                          const char* kind, const SharedBlobSource& source)
{
    const Row<Record> row(statement);
    const qint64 number = row.number();
    if (const StoreValue& checksum = row.checksum(); !checksum.isNull()) {
        StoreChecksum sum(storeKey);
        for (int column = 0; column < row.columns - 1; ++column)
            row.values[size_t(column)].addTo(sum);
        if (sum.value() != checksum.integer())
            throwDamage(
                u"%1 in row %2 doesn't match its checksum"_s.arg(QLatin1String(kind)).arg(number));
    }
    Record record;
    if (!fill(record, row, source)) {
        qWarning("%s in row %lld lacks a value and is shown as recovered", kind, qlonglong(number));
        recover(record, number, storeKey, database, source);
    }
    const qint64 order = orderOf(record);
    return {order, number, Shared<Record>(std::move(record))};
}

// Reads a whole table.
template <typename Record>
StoredRows<Record> readRows(SQLite::Database& database, qint64 storeKey, const char* kind,
                            const SharedBlobSource& source)
{
    StoreStatement statement(database, selectStatement<Record>().c_str());
    StoredRows<Record> rows;
    while (statement.step()) {
        auto item = readRow<Record>(statement, database, storeKey, kind, source);
        ++rows.rowCount;
        rows.lastRow = std::max(rows.lastRow, item.row);
        rows.items.push_back(std::move(item));
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

QHash<qint64, QByteArray> readBeginnings(SQLite::Database& database, const QList<qint64>& rows,
                                         qsizetype size)
{
    QHash<qint64, QByteArray> found;
    StoreStatement text(database, "SELECT substr(bytes, 1, ?) FROM OrvaneNoteBytes WHERE row = ?");
    for (const qint64 row : rows) {
        text.bindInteger(1, size);
        text.bindInteger(2, row * bytesPerNote + placeOf(&NoteRecord::body));
        if (text.step())
            found.insert(row, text.value(0).bytes().toByteArray());
        text.reset();
    }
    return found;
}

StoredRows<FolderRecord> readFolders(SQLite::Database& database, qint64 storeKey)
{
    return readRows<FolderRecord>(database, storeKey, "the folder", {});
}

StoredRows<NoteRecord> readNotes(SQLite::Database& database, qint64 storeKey,
                                 const SharedBlobSource& source)
{
    return readRows<NoteRecord>(database, storeKey, "the note", source);
}

QHash<QUuid, qint64> findNotes(SQLite::Database& database, const QSet<QUuid>& ids)
{
    QHash<QUuid, qint64> rows;
    StoreStatement statement(database, "SELECT row, id FROM OrvaneNote");
    while (rows.size() < ids.size() && statement.step()) {
        const auto id = uuidFromStore(statement.value(1).bytes());
        if (id && ids.contains(*id))
            rows.insert(*id, statement.value(0).integer());
    }
    return rows;
}

QList<Shared<NoteRecord>> readNotes(SQLite::Database& database, qint64 storeKey,
                                    const SharedBlobSource& source, const QList<qint64>& rows)
{
    QList<Shared<NoteRecord>> notes;
    StoreStatement statement(database, (selectStatement<NoteRecord>() + " WHERE row = ?").c_str());
    for (const qint64 row : rows) {
        statement.bindInteger(1, row);
        if (statement.step())
            notes.append(
                readRow<NoteRecord>(statement, database, storeKey, "the note", source).record);
        statement.reset();
    }
    return notes;
}

} // namespace orvane
