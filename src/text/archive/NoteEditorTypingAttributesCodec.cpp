// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/archive/NoteEditorTypingAttributesCodec.h"

#include "text/archive/StyleArchive.h"

namespace orvane::NoteEditorTypingAttributesCodec {
namespace {

using namespace Qt::StringLiterals;

constexpr auto magic = "OrvaneTyping"_L1;
constexpr quint64 version = 1;
constexpr qsizetype sections = 6;

} // namespace

std::optional<QByteArray> archive(const TypingAttributes& attributes)
{
    TypingAttributes stored = attributes;
    stored.characters.attachment = {};
    stored.characters.chartBlockData.clear();
    if (stored == TypingAttributes{})
        return std::nullopt;
    ArchiveTables tables;
    collect(stored.paragraph, tables);
    QByteArray bytes;
    QCborStreamWriter writer(&bytes);
    writer.startArray(quint64(sections));
    writer.append(magic);
    writer.append(version);
    write(writer, stored.characters, tables);
    writer.startArray(quint64(tables.tables.values.size()));
    for (const TextTable& table : tables.tables.values)
        write(writer, table);
    writer.endArray();
    writer.startArray(quint64(tables.looks.values.size()));
    for (const auto& look : tables.looks.values)
        write(writer, *look);
    writer.endArray();
    write(writer, stored.paragraph, tables);
    writer.endArray();
    return bytes;
}

std::optional<TypingAttributes> unarchive(const QByteArray& bytes)
{
    CborCursor cursor(bytes);
    cursor.enterArray(sections);
    cursor.require(cursor.readText() == magic);
    cursor.require(cursor.readUnsigned() == version);
    ArchiveTables tables;
    TypingAttributes attributes;
    attributes.characters = readCharacterStyle(cursor, tables);
    cursor.require(attributes.characters.chartBlockData.isEmpty());
    if (cursor.enterArray() == 1)
        tables.tables.values.append(readTable(cursor));
    cursor.leave();
    if (cursor.enterArray() == 1)
        tables.looks.values.append(readCellLook(cursor));
    cursor.leave();
    attributes.paragraph = readParagraphStyle(cursor, tables);
    cursor.leave();
    if (cursor.hasFailed() || !cursor.isAtEnd())
        return std::nullopt;
    return attributes;
}

} // namespace orvane::NoteEditorTypingAttributesCodec
