// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/archive/TextArchive.h"

#include "text/archive/StyleArchive.h"
#include "text/value/OrvaneNoteImageAttachment.h"
#include "text/value/StyleInterner.h"

#include <algorithm>

namespace orvane::TextArchive {
namespace {

using namespace Qt::StringLiterals;

constexpr auto magic = "OrvaneText"_L1;
constexpr quint64 version = 2;
/// What is written where no image lies elsewhere, so that earlier programs read it.
constexpr quint64 versionWithoutReferences = 1;
constexpr quint64 sections = 10;

/// The different styles of a document, each once, and the runs that refer to them.
template <typename Style>
struct StyleTable {
    explicit StyleTable(const AttributeRuns<Style>& source)
    {
        QHash<const void*, quint64> known;
        indices.reserve(source.runs().size());
        for (const auto& run : source.runs()) {
            auto index = known.constFind(run.style.identity());
            if (index == known.constEnd())
                index = known.insert(run.style.identity(), quint64(styles.indexOf(run.style)));
            indices.append(*index);
        }
    }

    IndexTable<Style> styles;
    QList<quint64> indices;
};

template <typename Values>
void writeAll(QCborStreamWriter& writer, const Values& values)
{
    writer.startArray(quint64(values.size()));
    for (const auto& value : values)
        write(writer, value);
    writer.endArray();
}

template <typename Style>
void writeStyles(QCborStreamWriter& writer, const StyleTable<Style>& table, ArchiveTables& tables)
{
    writer.startArray(quint64(table.styles.values.size()));
    for (const Style& style : table.styles.values)
        write(writer, *style, tables);
    writer.endArray();
}

template <typename Style>
void writeRuns(QCborStreamWriter& writer, const AttributeRuns<Style>& source,
               const StyleTable<Style>& table)
{
    writer.startArray(2 * quint64(table.indices.size()));
    for (qsizetype i = 0; i < table.indices.size(); ++i) {
        writer.append(quint64(source.runs()[i].end - source.startOf(i)));
        writer.append(table.indices[i]);
    }
    writer.endArray();
}

template <typename Value, typename Read>
QList<Value> readAll(CborCursor& cursor, Read&& read)
{
    QList<Value> values;
    for (qsizetype i = cursor.enterArray(); i > 0 && !cursor.hasFailed(); --i)
        values.append(Value(read()));
    cursor.leave();
    return values;
}

// More and larger styles than the bytes can stand for are a sign of damage.
template <typename Style, typename Read>
QList<SharedValue<Style>> readStyles(CborCursor& cursor, qsizetype archiveSize, Read&& read)
{
    StyleInterner<Style> interner(8'000'000 + 48 * archiveSize);
    SharedValue<Style> none;
    return readAll<SharedValue<Style>>(cursor, [&]() -> SharedValue<Style> {
        const Style style = read();
        if (style == *none)
            return none;
        const SharedValue<Style> shared = interner.intern(style, none);
        cursor.require(shared.identity() != nullptr);
        return shared;
    });
}

template <typename Style>
AttributeRuns<Style> readRuns(CborCursor& cursor, const QList<Style>& styles, qsizetype length)
{
    AttributeRuns<Style> runs;
    const qsizetype count = cursor.enterArray();
    cursor.require(count % 2 == 0);
    for (qsizetype i = 0; i < count / 2 && !cursor.hasFailed(); ++i) {
        const auto stretch = qsizetype(cursor.readUnsigned(quint64(length - runs.length())));
        const auto index = qsizetype(cursor.readUnsigned());
        cursor.require(stretch > 0 && index >= 0 && index < styles.size());
        if (!cursor.hasFailed())
            runs.append(stretch, styles[index]);
    }
    cursor.leave();
    cursor.require(runs.length() == length);
    return runs;
}

bool refersToImages(const QList<TextAttachment>& attachments, ImageBytes images)
{
    return std::ranges::any_of(attachments, [&](const TextAttachment& each) {
        const auto* image = each.image();
        return image && !image->file.isNull() &&
               (images == ImageBytes::elsewhere || !image->file.bytes());
    });
}

} // namespace

QByteArray encode(const AttributedString& text, ImageBytes images)
{
    const StyleTable characters(text.characterRuns());
    const StyleTable paragraphs(text.paragraphRuns());
    ArchiveTables tables;
    for (const SharedCharacterStyle& style : characters.styles.values)
        collect(*style, tables);
    for (const SharedParagraphStyle& style : paragraphs.styles.values)
        collect(*style, tables);

    QByteArray archive;
    archive.reserve(text.length() + 4 * (characters.indices.size() + paragraphs.indices.size()));
    QCborStreamWriter writer(&archive);
    writer.startArray(sections);
    writer.append(magic);
    writer.append(refersToImages(tables.attachments, images) ? version : versionWithoutReferences);
    writer.append(text.text());
    writer.startArray(quint64(tables.attachments.size()));
    for (const auto& attachment : tables.attachments)
        write(writer, attachment, images);
    writer.endArray();
    writeStyles(writer, characters, tables);
    writeRuns(writer, text.characterRuns(), characters);
    writeAll(writer, tables.tables.values);
    writer.startArray(quint64(tables.looks.values.size()));
    for (const auto& look : tables.looks.values)
        write(writer, *look);
    writer.endArray();
    writeStyles(writer, paragraphs, tables);
    writeRuns(writer, text.paragraphRuns(), paragraphs);
    writer.endArray();
    return archive;
}

std::expected<AttributedString, Error> decode(const QByteArray& archive)
{
    CborCursor cursor(archive);
    const qsizetype announced = cursor.enterArray();
    if (cursor.readText() != magic)
        return std::unexpected(Error::notAnArchive);
    const quint64 found = cursor.readUnsigned();
    if (!cursor.hasFailed() && (found < versionWithoutReferences || found > version))
        return std::unexpected(Error::unknownVersion);
    cursor.require(announced == sections);

    QString text = cursor.readText();
    ArchiveTables tables;
    tables.attachments = readAll<TextAttachment>(cursor, [&] { return readAttachment(cursor); });
    const auto characterStyles = readStyles<CharacterStyle>(
        cursor, archive.size(), [&] { return readCharacterStyle(cursor, tables); });
    auto characters = readRuns(cursor, characterStyles, text.size());
    tables.tables.values = readAll<TextTable>(cursor, [&] { return readTable(cursor); });
    tables.looks.values =
        readAll<SharedValue<CellLook>>(cursor, [&] { return readCellLook(cursor); });
    const auto paragraphStyles = readStyles<ParagraphStyle>(
        cursor, archive.size(), [&] { return readParagraphStyle(cursor, tables); });
    auto paragraphs = readRuns(cursor, paragraphStyles, text.size() + 1);
    cursor.leave();
    if (cursor.hasFailed() || !cursor.isAtEnd())
        return std::unexpected(Error::damaged);
    auto result =
        AttributedString::fromRuns(std::move(text), std::move(characters), std::move(paragraphs));
    if (!result)
        return std::unexpected(Error::damaged);
    return std::move(*result);
}

} // namespace orvane::TextArchive
