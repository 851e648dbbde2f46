// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/records/RecordJson.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

void put(QJsonObject& object, QLatin1String key, const std::optional<QString>& value)
{
    if (value)
        object.insert(key, *value);
}

void put(QJsonObject& object, QLatin1String key, const std::optional<QUuid>& value)
{
    if (value)
        object.insert(key, uuidText(*value));
}

void put(QJsonObject& object, QLatin1String key, const std::optional<Blob>& value)
{
    if (value)
        object.insert(key, QString::fromLatin1(value->bytes().toBase64()));
}

QJsonArray idArray(const QList<QUuid>& ids)
{
    QJsonArray array;
    for (const QUuid& id : ids)
        array.append(uuidText(id));
    return array;
}

template <typename Records>
QJsonArray recordArray(const Records& records)
{
    QJsonArray array;
    for (const auto& record : records) {
        if constexpr (requires { *record; })
            array.append(toJson(*record));
        else
            array.append(toJson(record));
    }
    return array;
}

std::optional<Blob> blob(std::optional<QByteArray> bytes)
{
    return bytes ? std::optional<Blob>(std::in_place, *std::move(bytes)) : std::nullopt;
}

template <typename Record, typename List>
void readRecords(JsonObjectReader& reader, QLatin1String key, List& list)
{
    const QJsonArray values = reader.array(key);
    list.reserve(values.size());
    for (qsizetype i = 0; i < values.size() && !reader.failed(); ++i) {
        auto record = fromJson<Record>(values.at(i), u"%1[%2]"_s.arg(reader.pathOf(key)).arg(i));
        if (!record)
            reader.adopt(record.error());
        else
            list.append(*std::move(record));
    }
}

} // namespace

QJsonObject toJson(const NoteRecord& note)
{
    QJsonObject object{
        {"id"_L1, uuidText(note.id)},
        {"folderID"_L1, uuidText(note.folderID)},
        {"title"_L1, note.title},
        {"body"_L1, note.body.text()},
        {"createdAt"_L1, toIso8601(note.createdAt)},
        {"updatedAt"_L1, toIso8601(note.updatedAt)},
        {"tags"_L1, QJsonArray::fromStringList(note.tags)},
        {"isPinned"_L1, note.isPinned},
    };
    put(object, "bodyRTF"_L1, note.bodyRTF);
    put(object, "richContentPayload"_L1, note.richContentPayload);
    put(object, "editorTypingAttributesPayload"_L1, note.editorTypingAttributesPayload);
    put(object, "titleRTF"_L1, note.titleRTF);
    put(object, "iconName"_L1, note.iconName);
    put(object, "embeddedFileType"_L1, note.embeddedFileType);
    put(object, "embeddedFileAssetID"_L1, note.embeddedFileAssetID);
    put(object, "embeddedFilePayload"_L1, note.embeddedFilePayload);
    put(object, "shapesPayload"_L1, note.shapesPayload);
    put(object, "pdfSourceURLString"_L1, note.pdfSourceURLString);
    return object;
}

QJsonObject toJson(const FolderRecord& folder)
{
    QJsonObject object{
        {"id"_L1, uuidText(folder.id)},
        {"name"_L1, folder.name},
        {"createdAt"_L1, toIso8601(folder.createdAt)},
        {"tags"_L1, QJsonArray::fromStringList(folder.tags)},
        {"isPinned"_L1, folder.isPinned},
    };
    put(object, "parentFolderID"_L1, folder.parentFolderID);
    put(object, "iconName"_L1, folder.iconName);
    put(object, "titleRTF"_L1, folder.titleRTF);
    return object;
}

QJsonObject toJson(const BinderFolderOrderEntry& entry)
{
    QJsonObject object{{"childFolderIDs"_L1, idArray(entry.childFolderIDs)}};
    put(object, "parentFolderID"_L1, entry.parentFolderID);
    return object;
}

QJsonObject toJson(const BinderNoteOrderEntry& entry)
{
    return {{"folderID"_L1, uuidText(entry.folderID)}, {"noteIDs"_L1, idArray(entry.noteIDs)}};
}

QJsonObject toJson(const BinderLayoutSnapshot& layout)
{
    return {
        {"folderOrderEntries"_L1, recordArray(layout.folderOrderEntries)},
        {"noteOrderEntries"_L1, recordArray(layout.noteOrderEntries)},
        {"expandedFolderIDs"_L1, idArray(layout.expandedFolderIDs)},
    };
}

QJsonObject toJson(const NotebookSnapshot& snapshot)
{
    QJsonObject object{
        {"folders"_L1, recordArray(snapshot.folders)},
        {"notes"_L1, recordArray(snapshot.notes)},
    };
    if (snapshot.binderLayout)
        object.insert("binderLayout"_L1, toJson(*snapshot.binderLayout));
    return object;
}

template <>
std::expected<NoteRecord, JsonError> fromJson(const QJsonValue& value, const QString& path)
{
    JsonObjectReader reader(value, path);
    NoteRecord note;
    note.id = reader.uuid("id"_L1);
    note.folderID = reader.uuid("folderID"_L1);
    note.title = reader.string("title"_L1);
    note.body = reader.string("body"_L1);
    note.createdAt = reader.date("createdAt"_L1);
    note.updatedAt = reader.date("updatedAt"_L1);
    note.tags = reader.optionalStrings("tags"_L1).value_or(QStringList());
    note.bodyRTF = blob(reader.optionalBytes("bodyRTF"_L1));
    note.richContentPayload = blob(reader.optionalBytes("richContentPayload"_L1));
    note.editorTypingAttributesPayload =
        blob(reader.optionalBytes("editorTypingAttributesPayload"_L1));
    note.titleRTF = blob(reader.optionalBytes("titleRTF"_L1));
    note.iconName = reader.optionalString("iconName"_L1);
    note.embeddedFileType = reader.optionalString("embeddedFileType"_L1);
    note.embeddedFileAssetID = reader.optionalString("embeddedFileAssetID"_L1);
    note.embeddedFilePayload = blob(reader.optionalBytes("embeddedFilePayload"_L1));
    note.isPinned = reader.optionalBoolean("isPinned"_L1).value_or(false);
    note.shapesPayload = blob(reader.optionalBytes("shapesPayload"_L1));
    note.pdfSourceURLString = reader.optionalString("pdfSourceURLString"_L1);
    return reader.finish(std::move(note));
}

template <>
std::expected<FolderRecord, JsonError> fromJson(const QJsonValue& value, const QString& path)
{
    JsonObjectReader reader(value, path);
    FolderRecord folder;
    folder.id = reader.uuid("id"_L1);
    folder.name = reader.string("name"_L1);
    folder.createdAt = reader.date("createdAt"_L1);
    folder.parentFolderID = reader.optionalUuid("parentFolderID"_L1);
    folder.iconName = reader.optionalString("iconName"_L1);
    folder.titleRTF = blob(reader.optionalBytes("titleRTF"_L1));
    folder.tags = reader.optionalStrings("tags"_L1).value_or(QStringList());
    folder.isPinned = reader.optionalBoolean("isPinned"_L1).value_or(false);
    return reader.finish(std::move(folder));
}

template <>
std::expected<BinderFolderOrderEntry, JsonError> fromJson(const QJsonValue& value,
                                                          const QString& path)
{
    JsonObjectReader reader(value, path);
    BinderFolderOrderEntry entry;
    entry.parentFolderID = reader.optionalUuid("parentFolderID"_L1);
    entry.childFolderIDs = reader.uuids("childFolderIDs"_L1);
    return reader.finish(std::move(entry));
}

template <>
std::expected<BinderNoteOrderEntry, JsonError> fromJson(const QJsonValue& value,
                                                        const QString& path)
{
    JsonObjectReader reader(value, path);
    BinderNoteOrderEntry entry;
    entry.folderID = reader.uuid("folderID"_L1);
    entry.noteIDs = reader.uuids("noteIDs"_L1);
    return reader.finish(std::move(entry));
}

template <>
std::expected<BinderLayoutSnapshot, JsonError> fromJson(const QJsonValue& value,
                                                        const QString& path)
{
    JsonObjectReader reader(value, path);
    BinderLayoutSnapshot layout;
    readRecords<BinderFolderOrderEntry>(reader, "folderOrderEntries"_L1, layout.folderOrderEntries);
    readRecords<BinderNoteOrderEntry>(reader, "noteOrderEntries"_L1, layout.noteOrderEntries);
    layout.expandedFolderIDs = reader.uuids("expandedFolderIDs"_L1);
    return reader.finish(std::move(layout));
}

template <>
std::expected<NotebookSnapshot, JsonError> fromJson(const QJsonValue& value, const QString& path)
{
    JsonObjectReader reader(value, path);
    NotebookSnapshot snapshot;
    readRecords<FolderRecord>(reader, "folders"_L1, snapshot.folders);
    readRecords<NoteRecord>(reader, "notes"_L1, snapshot.notes);
    if (reader.has("binderLayout"_L1)) {
        auto layout = fromJson<BinderLayoutSnapshot>(reader.object("binderLayout"_L1),
                                                     reader.pathOf("binderLayout"_L1));
        if (layout)
            snapshot.binderLayout = *std::move(layout);
        else
            reader.adopt(layout.error());
    }
    return reader.finish(std::move(snapshot));
}

QByteArray encodeJson(const QJsonObject& object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Indented);
}

} // namespace orvane
