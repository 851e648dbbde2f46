// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/records/RecordJson.h"

#include "core/Records.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

NoteRecord fullNote()
{
    NoteRecord note = makeNote(7, idOf(1));
    note.tags = {u"tide"_s, u"Ålesund"_s};
    note.bodyRTF = Blob("{\\rtf1 x}");
    note.richContentPayload = Blob(QByteArray("\0\1\2", 3));
    note.editorTypingAttributesPayload = Blob("t");
    note.titleRTF = Blob("{\\rtf1 Title}");
    note.iconName = u"sparkles"_s;
    note.embeddedFileType = u"com.adobe.pdf"_s;
    note.embeddedFileAssetID = u"asset"_s;
    note.embeddedFilePayload = Blob("%PDF");
    note.isPinned = true;
    note.shapesPayload = Blob("[]");
    note.pdfSourceURLString = u"orvaneworkspace://pdf/1"_s;
    return note;
}

QJsonObject without(QJsonObject object, const QString& key)
{
    object.remove(key);
    return object;
}

QJsonObject with(QJsonObject object, const QString& key, const QJsonValue& value)
{
    object.insert(key, value);
    return object;
}

TEST(RecordJson, WhatIsWrittenIsReadBack)
{
    FolderRecord folder = makeFolder(2, idOf(1));
    folder.titleRTF = Blob("{\\rtf1 F}");
    folder.tags = {u"a"_s};
    NotebookSnapshot snapshot{
        {makeFolder(1), folder, makeTrash()},
        {fullNote(), makeNote(8, idOf(2))},
        BinderLayoutSnapshot{
            {{std::nullopt, {idOf(1)}}, {idOf(1), {idOf(2)}}}, {{idOf(1), {idOf(7)}}}, {idOf(1)}}};
    const auto text = encodeJson(toJson(snapshot));
    const auto read = fromJson<NotebookSnapshot>(*parseJson(text));
    ASSERT_TRUE(read) << qPrintable(read.error().text());
    EXPECT_EQ(*read, snapshot);
    EXPECT_EQ(qHash(*read->notes[0]), qHash(fullNote()));
}

TEST(RecordJson, AbsentOptionalsAreLeftOutAndReadAsAbsent)
{
    const QJsonObject json = toJson(makeNote(1, idOf(9)));
    EXPECT_EQ(json.keys(), (QStringList{u"body"_s, u"createdAt"_s, u"folderID"_s, u"id"_s,
                                        u"isPinned"_s, u"tags"_s, u"title"_s, u"updatedAt"_s}));
    EXPECT_EQ(json.value("id"_L1).toString(), u"00000007-0000-4000-8000-000000000001"_s);
    const auto read =
        fromJson<NoteRecord>(without(without(with(json, u"later"_s, 1), u"tags"_s), u"isPinned"_s));
    ASSERT_TRUE(read);
    EXPECT_EQ(*read, makeNote(1, idOf(9)));
}

TEST(RecordJson, BadRecordsAreRefusedWithTheirPlace)
{
    const QJsonObject note = toJson(fullNote());
    struct Row {
        const char* name;
        QJsonObject note;
        const char* path;
    };
    const Row rows[] = {
        {"no updatedAt", without(note, u"updatedAt"_s), "notes[0].updatedAt"},
        {"no body", without(note, u"body"_s), "notes[0].body"},
        {"id is not one", with(note, u"id"_s, u"note-1"_s), "notes[0].id"},
        {"title of the wrong type", with(note, u"title"_s, 5), "notes[0].title"},
        {"date in words", with(note, u"createdAt"_s, u"today"_s), "notes[0].createdAt"},
        {"tags that are not texts", with(note, u"tags"_s, QJsonArray{1}), "notes[0].tags[0]"},
        {"optional of the wrong type", with(note, u"iconName"_s, true), "notes[0].iconName"},
        {"bytes that are not Base64", with(note, u"bodyRTF"_s, u"%%%"_s), "notes[0].bodyRTF"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const QJsonObject snapshot{{"folders"_L1, QJsonArray()},
                                   {"notes"_L1, QJsonArray{row.note}}};
        const auto read = fromJson<NotebookSnapshot>(snapshot);
        ASSERT_FALSE(read);
        EXPECT_EQ(read.error().path, QLatin1String(row.path));
    }
    const QJsonObject halfLayout{
        {"folders"_L1, QJsonArray()},
        {"notes"_L1, QJsonArray()},
        {"binderLayout"_L1, QJsonObject{{"folderOrderEntries"_L1, QJsonArray()},
                                        {"noteOrderEntries"_L1, QJsonArray()}}}};
    ASSERT_FALSE(fromJson<NotebookSnapshot>(halfLayout));
    for (const QByteArray bytes : {"", "{", "[1,", "null", "\xff\xfe"}) {
        const auto parsed = parseJson(bytes);
        EXPECT_FALSE(parsed && fromJson<NotebookSnapshot>(*parsed)) << bytes.constData();
    }
}

TEST(NoteRecord, KnowsAnEmbeddedPDF)
{
    struct Row {
        const char* name;
        std::optional<QString> type;
        std::optional<QString> asset;
        bool payload;
        bool isPDF;
    };
    const Row rows[] = {
        {"plain note", {}, {}, false, false},
        {"asset without a type", {}, u"key"_s, false, true},
        {"blank asset without a type", {}, u" \n"_s, true, false},
        {"type in capitals and blanks, with payload", u" COM.Adobe.PDF\n"_s, {}, true, true},
        {"type with asset", u"com.adobe.pdf"_s, u"key"_s, false, true},
        {"type alone", u"com.adobe.pdf"_s, {}, false, false},
        {"another type with an asset", u"public.png"_s, u"key"_s, true, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        NoteRecord note;
        note.embeddedFileType = row.type;
        note.embeddedFileAssetID = row.asset;
        if (row.payload)
            note.embeddedFilePayload = Blob("%PDF");
        EXPECT_EQ(note.isEmbeddedPDF(), row.isPDF);
    }
}

TEST(NoteRecord, TitleForListFallsFromRichToBody)
{
    NoteRecord note;
    EXPECT_EQ(note.titleForList(), u"Untitled"_s);
    note.body = u"\n  \n\t A first line \nsecond"_s;
    EXPECT_EQ(note.titleForList(), u"A first line"_s);
    note.title = u"  Title "_s;
    EXPECT_EQ(note.titleForList(), u"Title"_s);
    note.titleRTF = Blob("no rtf");
    EXPECT_EQ(note.titleForList(), u"Title"_s);
    note.titleRTF = Blob("{\\rtf1\\ansi \\b Rich\\b0  one}");
    EXPECT_EQ(note.titleForList(), u"Rich one"_s);
}

struct CountingSource final : BlobSource {
    int reads = 0;
    std::expected<QByteArray, QString> answer = QByteArray("bytes");

    std::expected<QByteArray, QString> read(qint64, qsizetype) override
    {
        ++reads;
        return answer;
    }
};

TEST(Blob, ReadsOnceAndStaysUnreadWhenReadingFails)
{
    auto* const source = new CountingSource;
    const SharedBlobSource held(source);
    const Blob blob(5, held, 1);
    const Blob copy = blob;
    EXPECT_EQ(blob.size(), 5);
    EXPECT_EQ(blob, copy);
    EXPECT_NE(blob, Blob("other length"));
    EXPECT_EQ(source->reads, 0);

    source->answer = std::unexpected(u"not now"_s);
    EXPECT_EQ(blob.read().error(), u"not now"_s);
    EXPECT_NE(blob, Blob("bytes"));
    source->answer = QByteArray("bytes");
    EXPECT_EQ(copy, Blob("bytes"));
    EXPECT_TRUE(blob.isLoaded());
    EXPECT_EQ(blob.known(), "bytes");
    EXPECT_EQ(source->reads, 3);
}

} // namespace
} // namespace orvane
