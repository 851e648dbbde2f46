// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/archive/TextArchive.h"

#include "text/RandomText.h"
#include "text/archive/NoteEditorTypingAttributesCodec.h"
#include "text/attachments/AttachmentManager.h"
#include "text/attachments/RichNoteContentPayload.h"
#include "text/value/OWChartBlock.h"
#include "text/value/OrvaneNoteImageAttachment.h"

#include <QCborArray>
#include <QCborMap>
#include <QCborValue>
#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

TEST(TextArchive, GivesBackEveryDocument)
{
    for (unsigned seed = 1; seed <= 400; ++seed) {
        RandomText random(seed);
        const AttributedString text = random.document();
        const auto decoded = TextArchive::decode(TextArchive::encode(text));
        ASSERT_TRUE(decoded.has_value()) << seed;
        ASSERT_TRUE(*decoded == text) << seed;
    }
}

// A change of the stored form must be a decision: these bytes are spelt out from the format's page.
TEST(TextArchive, ReadsTheDocumentedBytes)
{
    const QByteArray archive = QByteArray::fromHex("8a" // ten sections
                                                   "6a"
                                                   "4f7276616e6554657874"
                                                   "01" // "OrvaneText", 1
                                                   "64"
                                                   "4f6e650a" // "One\n"
                                                   "80"       // no attachments
                                                   "82"
                                                   "a0"
                                                   "a1"
                                                   "01"
                                                   "84"
                                                   "61"
                                                   "41"
                                                   "f94900" // {}, font "A" of 10 points,
                                                   "190190"
                                                   "f5" //   weight 400, italic
                                                   "84"
                                                   "03"
                                                   "01"
                                                   "01"
                                                   "00" // 3 units of style 1, 1 of style 0
                                                   "80"
                                                   "80" // no tables, no cell looks
                                                   "82"
                                                   "a1"
                                                   "01"
                                                   "02"
                                                   "a0" // centred; plain
                                                   "84"
                                                   "04"
                                                   "00"
                                                   "01"
                                                   "01"); // the paragraph, and the empty last one
    AttributedString expected;
    CharacterStyle italic;
    italic.font = TextFont{u"A"_s, 10, 400, true};
    ParagraphStyle centred;
    centred.alignment = TextAlignment::center;
    expected.append(u"One", italic, centred);
    expected.append(u"\n", {}, centred);
    expected.setParagraphStyle({4, 0}, {});
    const auto decoded = TextArchive::decode(archive);
    ASSERT_TRUE(decoded.has_value());
    EXPECT_TRUE(*decoded == expected);
}

struct BrokenRow {
    const char* name;
    int section; // of the archive, replaced
    QCborValue value;
    TextArchive::Error error;
};

TEST(TextArchive, RefusesWhatBreaksItsForm)
{
    using Error = TextArchive::Error;
    const AttributedString text(u"ab\ncd"_s);
    const QCborArray sound = QCborValue::fromCbor(TextArchive::encode(text)).toArray();
    const BrokenRow rows[] = {
        {"another kind of bytes", 0, u"OrvaneShape"_s, Error::notAnArchive},
        {"later version", 1, 3, Error::unknownVersion},
        {"version 0", 1, 0, Error::unknownVersion},
        {"text shorter than its runs", 2, u"ab\nc"_s, Error::damaged},
        {"text longer than its runs", 2, u"ab\ncde"_s, Error::damaged},
        {"run of a style that is not there", 5, QCborArray{5, 1}, Error::damaged},
        {"run without length", 5, QCborArray{0, 0, 5, 0}, Error::damaged},
        {"run past the end", 5, QCborArray{6, 0}, Error::damaged},
        {"odd runs", 5, QCborArray{5, 0, 1}, Error::damaged},
        {"unknown key of a style", 4, QCborArray{QCborMap{{40, 1}}}, Error::damaged},
        {"number that is not finite", 4, QCborArray{QCborMap{{9, qInf()}}}, Error::damaged},
        {"attachment that is not there", 4, QCborArray{QCborMap{{7, 0}}}, Error::damaged},
        {"cell of a table that is not there", 8,
         QCborArray{QCborMap{{19, QCborArray{0, 0, 0, 0, 1, 1}}}}, Error::damaged},
    };
    for (const BrokenRow& row : rows) {
        SCOPED_TRACE(row.name);
        QCborArray broken = sound;
        broken[row.section] = row.value;
        const auto decoded = TextArchive::decode(QCborValue(broken).toCbor());
        ASSERT_FALSE(decoded.has_value());
        EXPECT_EQ(decoded.error(), row.error);
    }
    // Paragraph styles that change within "ab\n".
    QCborArray split = sound;
    split[8] = QCborArray{QCborMap{}, QCborMap{{1, 1}}};
    split[9] = QCborArray{1, 0, 5, 1};
    EXPECT_FALSE(TextArchive::decode(QCborValue(split).toCbor()).has_value());
}

TEST(TextArchive, ImagesLieElsewhereOrInside)
{
    const QByteArray bytes(100'000, 'i');
    auto image =
        OrvaneNoteImageAttachment::fromImageData(bytes, QSizeF(60, 40), QUuid::createUuid());
    image.description = u"The wall at the sluice"_s;
    const AttributedString text = AttributedString::object(image);

    const QByteArray elsewhere = TextArchive::encode(text);
    EXPECT_LT(elsewhere.size(), 1'000);
    EXPECT_EQ(QCborValue::fromCbor(elsewhere).toArray().at(1), 2);
    const auto referred = TextArchive::decode(elsewhere);
    ASSERT_TRUE(referred);
    EXPECT_TRUE(*referred == text) << "the same file, whether it is in memory or not";
    const auto* found = referred->characterStyle(0)->imageAttachment();
    EXPECT_FALSE(found->file.bytes());
    EXPECT_EQ(found->file.size(), bytes.size());
    EXPECT_EQ(found->description, image.description);

    const QByteArray inside = TextArchive::encode(text, ImageBytes::inside);
    EXPECT_EQ(QCborValue::fromCbor(inside).toArray().at(1), 1) << "as earlier programs read it";
    EXPECT_EQ(TextArchive::decode(inside)->characterStyle(0)->imageAttachment()->file.bytes(),
              bytes);
    const AttributedString fetched =
        AttachmentManager::withImageBytes(*referred, [&](const ImageFile&) { return bytes; });
    EXPECT_EQ(TextArchive::encode(fetched, ImageBytes::inside), inside);
    EXPECT_EQ(TextArchive::encode(*referred, ImageBytes::inside), elsewhere)
        << "what can't be had is referred to";
    EXPECT_EQ(AttachmentManager::imageFiles(*referred), QList<ImageFile>{ImageFile(bytes)});
    EXPECT_FALSE(
        AttachmentManager::imageFiles(AttachmentManager::withoutImageBytes(text)).first().bytes());

    const QCborArray sound = QCborValue::fromCbor(elsewhere).toArray();
    const std::pair<QString, QCborValue> rows[] = {{u"imageHash"_s, QByteArray(31, 'h')},
                                                   {u"imageLength"_s, -1},
                                                   {u"description"_s, QString()},
                                                   {u"wrapMode"_s, u"Beside the Moon"_s}};
    for (const auto& [key, value] : rows) {
        QCborArray broken = sound;
        QCborArray attachment = broken[3].toArray()[0].toArray();
        QCborMap map = attachment[1].toMap();
        map[key] = value;
        attachment[1] = map;
        broken[3] = QCborArray{attachment};
        EXPECT_FALSE(TextArchive::decode(QCborValue(broken).toCbor())) << qPrintable(key);
    }
}

TEST(TextArchive, AnUnreadableChartBecomesTheDefaultOneAndStaysIt)
{
    CharacterStyle style;
    style.attachment = TextAttachment(OWChartAttachment{{}, "picture"});
    QByteArray archive =
        TextArchive::encode(AttributedString(QString(QChar(objectCharacter)), style));
    archive.replace("\"kind\":\"bar\"", "\"kind\":\"cow\"");
    const auto decoded = TextArchive::decode(archive);
    ASSERT_TRUE(decoded.has_value());
    const OWChartAttachment* chart = decoded->characterStyle(0)->chartAttachment();
    ASSERT_NE(chart, nullptr);
    EXPECT_EQ(chart->chartBlock.dataPoints, OWChartBlock::defaultDataPoints());
    EXPECT_EQ(chart->renderedImageData, "picture");
    EXPECT_TRUE(TextArchive::decode(TextArchive::encode(*decoded)) == *decoded);
}

// The bound on memory must never refuse what was written by us.
TEST(TextArchive, GivesBackAHugeTableOfEmptyCells)
{
    AttributedString text;
    ParagraphStyle style;
    for (int i = 0; i < 60'000; ++i) {
        style.cell = TableCellBlock{.table = {QUuid(), 20}, .row = i / 20, .column = i % 20};
        text.append(u"\n", {}, style);
    }
    const auto decoded = TextArchive::decode(TextArchive::encode(text));
    ASSERT_TRUE(decoded.has_value());
    EXPECT_TRUE(*decoded == text);
}

TEST(TextArchive, RefusesEveryCutAndWhatFollows)
{
    RandomText random(7);
    const QByteArray archive = TextArchive::encode(random.document());
    for (qsizetype size = 0; size < archive.size(); size += size < 300 ? 1 : 37)
        ASSERT_FALSE(TextArchive::decode(archive.first(size)).has_value()) << size;
    EXPECT_FALSE(TextArchive::decode(archive + '\0').has_value());
}

TEST(RichNoteContentPayload, ReadsItsOwnAndOthersJson)
{
    const RichNoteContentPayload payload{1, "bytes?>"};
    EXPECT_EQ(payload.toJson(), R"({"archiveData":"Ynl0ZXM/Pg==","version":1})");
    struct Row {
        const char* name;
        QByteArray json;
        std::optional<RichNoteContentPayload> expected;
    };
    const Row rows[] = {
        {"own", payload.toJson(), payload},
        {"other order, blanks, escapes", R"({ "version" : 1, "archiveData" : "Ynl0ZXM\/Pg==" })",
         payload},
        {"later version", R"({"archiveData":"Ynl0ZXM/Pg==","version":2})",
         RichNoteContentPayload{2, "bytes?>"}},
        {"no version", R"({"archiveData":"Ynl0ZXM/Pg=="})", std::nullopt},
        {"version in words", R"({"archiveData":"","version":"1"})", std::nullopt},
        {"no base64", R"({"archiveData":"a*b","version":1})", std::nullopt},
        {"no object", R"([1])", std::nullopt},
        {"cut", R"({"archiveData":"Ynl0ZXM/Pg==","vers)", std::nullopt},
        {"empty", "", std::nullopt},
    };
    for (const Row& row : rows)
        EXPECT_EQ(RichNoteContentPayload::fromJson(row.json), row.expected) << row.name;
}

OWChartAttachment chartTitled(const QString& title)
{
    OWChartAttachment chart;
    chart.chartBlock.id = QUuid::createUuidV5(QUuid(), u"chart"_s);
    chart.chartBlock.title = title;
    return chart;
}

TEST(AttachmentManager, TheLiveChartCountsOnSavingAndTheStoredOneOnLoading)
{
    CharacterStyle style;
    style.attachment = TextAttachment(chartTitled(u"Live"_s));
    style.chartBlockData = chartTitled(u"Stored"_s).chartBlock.toJson();
    const AttributedString text(QString(QChar(objectCharacter)), style);

    AttributedString loaded = text;
    AttachmentManager::normalizeAttachments(loaded, AttachmentManager::ChartSource::storedJson);
    EXPECT_EQ(loaded.characterStyle(0)->chartAttachment()->chartBlock.title, u"Stored");

    const auto saved = AttachmentManager::decodePayload(AttachmentManager::archivePayload(text));
    ASSERT_TRUE(saved.has_value());
    EXPECT_EQ(saved->characterStyle(0)->chartAttachment()->chartBlock.title, u"Live");
}

TEST(AttachmentManager, RebuildsAChartFromItsDataAndDrawsIt)
{
    CharacterStyle style;
    style.chartBlockData = chartTitled(u"Only data"_s).chartBlock.toJson();
    AttributedString text(QString(QChar(objectCharacter)), style);
    AttachmentManager::normalizeAttachments(
        text, AttachmentManager::ChartSource::storedJson,
        [](const OWChartBlock& block) { return block.title.toUtf8(); });
    const OWChartAttachment* chart = text.characterStyle(0)->chartAttachment();
    ASSERT_NE(chart, nullptr);
    EXPECT_EQ(chart->renderedImageData, "Only data");

    style = *text.characterStyle(0);
    style.chartBlockData = "{broken";
    text.setCharacterStyle({0, 1}, style);
    AttachmentManager::normalizeAttachments(text, AttachmentManager::ChartSource::storedJson);
    EXPECT_EQ(text.characterStyle(0)->chartAttachment()->chartBlock.title, u"Only data");
}

TEST(AttachmentManager, AnEmptyDocumentOrAnotherVersionGivesNothing)
{
    const QByteArray archive = TextArchive::encode(AttributedString(u"text"_s));
    const auto payload = [&](int version) {
        return AttachmentManager::decodePayload(RichNoteContentPayload{version, archive}.toJson());
    };
    EXPECT_TRUE(payload(1).has_value());
    EXPECT_FALSE(payload(2).has_value());
    EXPECT_FALSE(
        AttachmentManager::decodePayload(AttachmentManager::archivePayload(AttributedString()))
            .has_value());
}

TEST(NoteEditorTypingAttributesCodec, KeepsAllButAttachments)
{
    for (unsigned seed = 1; seed <= 200; ++seed) {
        RandomText random(seed);
        TypingAttributes attributes{random.characterStyle(), random.paragraphStyle()};
        const auto bytes = NoteEditorTypingAttributesCodec::archive(attributes);
        if (bytes) {
            ASSERT_EQ(NoteEditorTypingAttributesCodec::unarchive(*bytes), attributes) << seed;
        }
        TypingAttributes withChart = attributes;
        withChart.characters.attachment = TextAttachment(chartTitled(u"Chart"_s));
        withChart.characters.chartBlockData = "{}";
        ASSERT_EQ(NoteEditorTypingAttributesCodec::archive(withChart), bytes) << seed;
    }
    EXPECT_FALSE(NoteEditorTypingAttributesCodec::archive({}).has_value());
    EXPECT_FALSE(NoteEditorTypingAttributesCodec::unarchive("no CBOR").has_value());
}

} // namespace
} // namespace orvane
