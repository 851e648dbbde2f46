// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/records/RecordJson.h"

#include "core/records/RecordFields.h"

#include <QCryptographicHash>
#include <QJsonArray>
#include <QJsonDocument>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

// One value of a record. Absent ones are left out.
std::optional<QJsonValue> jsonOf(const QUuid& id)
{
    return uuidText(id);
}
std::optional<QJsonValue> jsonOf(const QString& text)
{
    return text;
}
std::optional<QJsonValue> jsonOf(const NoteText& text)
{
    return text.readOrNothing();
}
std::optional<QJsonValue> jsonOf(const Timestamp& date)
{
    return toIso8601(date);
}
std::optional<QJsonValue> jsonOf(const QStringList& texts)
{
    return QJsonArray::fromStringList(texts);
}
std::optional<QJsonValue> jsonOf(bool value)
{
    return value;
}
std::optional<QJsonValue> jsonOf(const Blob& bytes)
{
    return QString::fromLatin1(bytes.readOrNothing().toBase64());
}
std::optional<QJsonValue> jsonOf(const NoteImages& images)
{
    QJsonArray files;
    for (const NoteImage& image : images) {
        if (const auto bytes = image.bytes.readOnce())
            files.append(QString::fromLatin1(bytes->toBase64()));
    }
    return files;
}
template <typename T>
std::optional<QJsonValue> jsonOf(const std::optional<T>& value)
{
    return value ? jsonOf(*value) : std::nullopt;
}

template <typename T>
std::optional<QJsonValue> jsonOf(const Rare<T>& value)
{
    return value ? jsonOf(*value) : std::nullopt;
}

void read(JsonObjectReader& reader, QLatin1String key, QUuid& id)
{
    id = reader.uuid(key);
}
void read(JsonObjectReader& reader, QLatin1String key, QString& text)
{
    text = reader.string(key);
}
void read(JsonObjectReader& reader, QLatin1String key, NoteText& text)
{
    text = reader.string(key);
}
void read(JsonObjectReader& reader, QLatin1String key, Timestamp& date)
{
    date = reader.date(key);
}
void read(JsonObjectReader& reader, QLatin1String key, QStringList& texts)
{
    texts = reader.optionalStrings(key).value_or(QStringList());
}
void read(JsonObjectReader& reader, QLatin1String key, bool& value)
{
    value = reader.optionalBoolean(key).value_or(false);
}
void read(JsonObjectReader& reader, QLatin1String key, std::optional<QString>& text)
{
    text = reader.optionalString(key);
}
void read(JsonObjectReader& reader, QLatin1String key, Rare<QString>& text)
{
    text = reader.optionalString(key);
}
void read(JsonObjectReader& reader, QLatin1String key, Rare<Timestamp>& date)
{
    date = reader.optionalDate(key);
}
void read(JsonObjectReader& reader, QLatin1String key, Rare<QUuid>& id)
{
    id = reader.optionalUuid(key);
}
void read(JsonObjectReader& reader, QLatin1String key, std::optional<QUuid>& id)
{
    id = reader.optionalUuid(key);
}
void read(JsonObjectReader& reader, QLatin1String key, std::optional<Blob>& blob)
{
    if (auto bytes = reader.optionalBytes(key))
        blob.emplace(*std::move(bytes));
}

void read(JsonObjectReader& reader, QLatin1String key, Rare<NoteImages>& images)
{
    const auto files = reader.optionalStrings(key);
    NoteImages found;
    for (const QString& file : files.value_or(QStringList())) {
        const QByteArray bytes = QByteArray::fromBase64(file.toLatin1());
        found.append({QCryptographicHash::hash(bytes, QCryptographicHash::Sha256), Blob(bytes)});
    }
    if (!found.isEmpty())
        images = found;
}

template <typename Record>
QJsonObject recordToJson(const Record& record)
{
    QJsonObject object;
    forEachField<Record>([&](const auto& field) {
        if (const auto value = jsonOf(record.*field.member))
            object.insert(QLatin1String(field.key), *value);
    });
    return object;
}

template <typename Record>
std::expected<Record, JsonError> recordFromJson(const QJsonValue& value, const QString& path)
{
    JsonObjectReader reader(value, path);
    Record record;
    forEachField<Record>(
        [&](const auto& field) { read(reader, QLatin1String(field.key), record.*field.member); });
    return reader.finish(std::move(record));
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
    return recordToJson(note);
}

QJsonObject toJson(const FolderRecord& folder)
{
    return recordToJson(folder);
}

QJsonObject toJson(const BinderFolderOrderEntry& entry)
{
    QJsonObject object{{"childFolderIDs"_L1, idArray(entry.childFolderIDs)}};
    if (entry.parentFolderID)
        object.insert("parentFolderID"_L1, uuidText(*entry.parentFolderID));
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
    return recordFromJson<NoteRecord>(value, path);
}

template <>
std::expected<FolderRecord, JsonError> fromJson(const QJsonValue& value, const QString& path)
{
    return recordFromJson<FolderRecord>(value, path);
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
