// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/store/RecordColumns.h"

#include <vector>

namespace orvane {

namespace {

template <typename Type>
const char* columnType(int place)
{
    if constexpr (std::is_same_v<Type, std::optional<Blob>>)
        return place < 0 ? "BLOB" : "INTEGER";
    else if constexpr (std::is_same_v<Type, Timestamp> || std::is_same_v<Type, Rare<Timestamp>> ||
                       std::is_same_v<Type, bool> || std::is_same_v<Type, NoteText>)
        return "INTEGER";
    else
        return "TEXT";
}

struct Column {
    std::string name;
    std::string type;
};

template <typename Record>
std::vector<Column> columns()
{
    std::vector<Column> all;
    forEachField<Record>([&]<typename Type>(const RecordField<Record, Type>& field) {
        all.push_back({field.column, columnType<Type>(field.place)});
        if constexpr (columnsOfField<Type> == 2)
            all.push_back({firstLineColumn, "TEXT"});
    });
    return all;
}

// Each column as `form` has it, with commas between.
template <typename Record, typename Form>
std::string list(Form&& form)
{
    std::string text;
    for (const Column& column : columns<Record>())
        text += (text.empty() ? "" : ", ") + form(column);
    return text;
}

std::string name(const Column& column)
{
    return column.name;
}

} // namespace

template <>
const char* tableOf<NoteRecord>()
{
    return "OrvaneNote";
}

template <>
const char* tableOf<FolderRecord>()
{
    return "OrvaneFolder";
}

template <typename Record>
std::string createTableStatement()
{
    return std::string("CREATE TABLE ") + tableOf<Record>() + " (row INTEGER PRIMARY KEY, " +
           list<Record>([](const Column& column) { return column.name + ' ' + column.type; }) +
           ", checksum INTEGER);\n";
}

template <typename Record>
std::string selectStatement()
{
    return "SELECT row, " + list<Record>(name) + ", checksum FROM " + tableOf<Record>();
}

template <typename Record>
std::string insertStatement()
{
    return std::string("INSERT INTO ") + tableOf<Record>() + " (" + list<Record>(name) +
           ", checksum, row) VALUES (" +
           list<Record>([](const Column&) { return std::string("?"); }) + ", ?, ?)";
}

template <typename Record>
std::string updateStatement()
{
    return std::string("UPDATE ") + tableOf<Record>() + " SET " +
           list<Record>([](const Column& column) { return column.name + " = ?"; }) +
           ", checksum = ? WHERE row = ?";
}

template std::string createTableStatement<NoteRecord>();
template std::string createTableStatement<FolderRecord>();
template std::string selectStatement<NoteRecord>();
template std::string selectStatement<FolderRecord>();
template std::string insertStatement<NoteRecord>();
template std::string insertStatement<FolderRecord>();
template std::string updateStatement<NoteRecord>();
template std::string updateStatement<FolderRecord>();

std::string expectedBytesStatement()
{
    std::string text;
    forEachField<NoteRecord>([&](const auto& field) {
        if (field.place == field.inRecord)
            return;
        text += std::string(text.empty() ? "" : " UNION ALL ") + "SELECT " +
                std::to_string(bytesPerNote) + " * row + " + std::to_string(field.place) + ", " +
                field.column + " FROM OrvaneNote";
    });
    return text;
}

std::optional<QString> storedFirstLine(const NoteRecord& note)
{
    if (!QStringView(note.title).trimmed().isEmpty())
        return std::nullopt;
    return note.body.firstLine();
}

} // namespace orvane
