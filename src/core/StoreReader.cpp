// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/StoreReader.h"

#include "core/JsonObjectReader.h"
#include "core/StoreConnection.h"
#include "core/StoreStatement.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

std::optional<QUuid> uuid(const StoreStatement& row, int column)
{
    if (!row.isText(column))
        return std::nullopt;
    const QByteArrayView text = row.text(column);
    if (text.size() != 36)
        return std::nullopt;
    const QLatin1String latin(text.data(), text.size());
    const QUuid id = QUuid::fromString(latin);
    if (id.isNull() && latin != "00000000-0000-0000-0000-000000000000"_L1)
        return std::nullopt;
    return id;
}

std::optional<QString> text(const StoreStatement& row, int column)
{
    return row.isText(column) ? std::optional(QString::fromUtf8(row.text(column))) : std::nullopt;
}

std::optional<Timestamp> date(const StoreStatement& row, int column)
{
    return row.isInteger(column) ? std::optional(Timestamp{row.integer(column)}) : std::nullopt;
}

bool boolean(const StoreStatement& row, int column)
{
    return !row.isNull(column) && row.number(column) != 0;
}

std::optional<Blob> inlineBytes(const StoreStatement& row, int column)
{
    if (!row.isBytes(column))
        return std::nullopt;
    return Blob(row.bytes(column).toByteArray());
}

std::optional<Blob> unreadBytes(const StoreStatement& row, int column,
                                const std::shared_ptr<BlobSource>& source, qint64 key)
{
    if (!row.isInteger(column))
        return std::nullopt;
    const qint64 length = row.integer(column);
    return length > 0 ? Blob(length, source, key) : Blob(QByteArray());
}

std::optional<FolderRecord> folderFrom(const StoreStatement& row)
{
    const auto id = uuid(row, 1);
    const auto created = date(row, 3);
    if (!id || !row.isText(2) || !created)
        return std::nullopt;
    FolderRecord folder;
    folder.id = *id;
    folder.name = QString::fromUtf8(row.text(2));
    folder.createdAt = *created;
    folder.parentFolderID = uuid(row, 4);
    folder.iconName = text(row, 5);
    folder.titleRTF = inlineBytes(row, 6);
    folder.tags = tagsFromStore(row.text(7));
    folder.isPinned = boolean(row, 8);
    return folder;
}

constexpr int firstBytesColumn = 13;
constexpr int bodyColumn = firstBytesColumn + int(std::size(noteBytes));

std::optional<NoteRecord> noteFrom(const StoreStatement& row,
                                   const std::shared_ptr<BlobSource>& source)
{
    const auto id = uuid(row, 1);
    const auto folder = uuid(row, 2);
    const auto created = date(row, 4);
    const auto updated = date(row, 5);
    if (!id || !folder || !row.isText(3) || !created || !updated || !row.isText(bodyColumn))
        return std::nullopt;
    NoteRecord note;
    note.id = *id;
    note.folderID = *folder;
    note.title = QString::fromUtf8(row.text(3));
    note.createdAt = *created;
    note.updatedAt = *updated;
    note.tags = tagsFromStore(row.text(6));
    note.iconName = text(row, 7);
    note.embeddedFileType = text(row, 8);
    note.embeddedFileAssetID = text(row, 9);
    note.isPinned = boolean(row, 10);
    note.pdfSourceURLString = text(row, 11);
    note.titleRTF = inlineBytes(row, 12);
    const qint64 key = row.integer(0) * bytesPerNote;
    for (int place = 0; place < int(std::size(noteBytes)); ++place)
        note.*noteBytes[place] = unreadBytes(row, firstBytesColumn + place, source, key + place);
    note.body = QString::fromUtf8(row.text(bodyColumn));
    return note;
}

// Reads a whole table whose columns are the row number, the values, and their checksum.
template <typename Record, typename Map, typename Order>
StoredRows<Record> readRows(StoreStatement& statement, int checksumColumn, qint64 storeKey,
                            const char* kind, Map&& map, Order&& order)
{
    StoredRows<Record> rows;
    while (statement.step()) {
        const qint64 row = statement.integer(0);
        ++rows.rowCount;
        rows.lastRow = std::max(rows.lastRow, row);
        if (!statement.isNull(checksumColumn)) {
            StoreChecksum sum(storeKey);
            statement.addTo(sum, 1, checksumColumn);
            if (sum.value() != statement.integer(checksumColumn))
                throwDamage(
                    u"%1 in row %2 doesn't match its checksum"_s.arg(QLatin1String(kind)).arg(row));
        }
        if (std::optional<Record> record = map(statement)) {
            const qint64 place = order(*record);
            rows.items.push_back({place, row, Shared<Record>(*std::move(record))});
        } else if (statement.isText(1)) {
            rows.unmapped.append({row, QString::fromUtf8(statement.text(1))});
        }
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
    return {statement.integer(0), statement.integer(1), statement.integer(2), statement.integer(3)};
}

StoredRows<FolderRecord> readFolders(SQLite::Database& database, qint64 storeKey)
{
    StoreStatement statement(database,
                             "SELECT row, id, name, createdAt, parentFolderID, iconName, titleRTF, "
                             "tagsJSON, isPinned, checksum FROM OrvaneFolder");
    return readRows<FolderRecord>(
        statement, 9, storeKey, "the folder",
        [](const StoreStatement& row) { return folderFrom(row); },
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
    return readRows<NoteRecord>(
        statement, bodyColumn + 1, storeKey, "the note",
        [&](const StoreStatement& row) { return noteFrom(row, source); },
        [](const NoteRecord& note) { return ~note.updatedAt.msecs; });
}

QStringList tagsFromStore(QByteArrayView json)
{
    if (json.size() <= 2)
        return {};
    const QJsonDocument document =
        QJsonDocument::fromJson(QByteArray::fromRawData(json.data(), json.size()));
    if (!document.isArray())
        return {};
    QStringList tags;
    for (const QJsonValue& value : document.array()) {
        if (!value.isString())
            return {};
        tags.append(value.toString());
    }
    return tags;
}

QByteArray tagsToStore(const QStringList& tags)
{
    if (tags.isEmpty())
        return "[]";
    return QJsonDocument(QJsonArray::fromStringList(tags)).toJson(QJsonDocument::Compact);
}

} // namespace orvane
