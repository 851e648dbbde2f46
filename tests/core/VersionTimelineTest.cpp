// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/versions/VersionTimeline.h"

#include "core/Records.h"

#include <QDateTime>
#include <QJsonDocument>
#include <gtest/gtest.h>

#include <random>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

NoteVersionSnapshot version(int number, const QString& body)
{
    NoteVersionSnapshot version;
    version.id = idOf(1000 + number);
    version.noteID = idOf(1);
    version.capturedAt = {number};
    version.title = u"Title \"%1\""_s.arg(number);
    version.bodyPlain = body;
    version.wordCount = wordCount(body);
    return version;
}

QByteArray timelineOf(const QList<NoteVersionSnapshot>& versions)
{
    QByteArray text = VersionTimeline::timelineOf({}, {});
    for (const NoteVersionSnapshot& each : versions)
        text = VersionTimeline::timelineOf(text, VersionTimeline::summaries(text).value(),
                                           VersionTimeline::pieceOf(each));
    return text;
}

void expectSame(const QByteArray& text, const QList<NoteVersionSnapshot>& versions)
{
    const auto decoded = VersionTimeline::decoded(text);
    ASSERT_TRUE(decoded) << text.constData();
    EXPECT_EQ(*decoded, versions);
    const auto summaries = VersionTimeline::summaries(text);
    ASSERT_TRUE(summaries) << text.constData();
    ASSERT_EQ(summaries->size(), versions.size());
    for (qsizetype i = 0; i < versions.size(); ++i) {
        const NoteVersionSummary& summary = summaries->at(i);
        const NoteVersionSnapshot& whole = versions.at(i);
        EXPECT_EQ(summary.id, whole.id);
        EXPECT_EQ(summary.noteID, whole.noteID);
        EXPECT_EQ(summary.capturedAt, whole.capturedAt);
        EXPECT_EQ(summary.title, whole.title);
        EXPECT_EQ(summary.label, whole.label);
        EXPECT_EQ(summary.wordCount, wordCount(whole.bodyPlain));
        EXPECT_EQ(VersionTimeline::decodedPiece(text.sliced(summary.piece.at, summary.piece.size)),
                  whole);
    }
}

TEST(VersionTimeline, IsReadAlikeWithAndWithoutItsTexts)
{
    std::mt19937 random(7);
    const QStringList pieces{u"\""_s, u"\\"_s, u"\\\\"_s,   u"\n"_s, u"{"_s,      u"}]"_s,
                             u","_s,  u"ä"_s,  u"words "_s, u"\t"_s, u"\u2028"_s, u":"_s};
    for (int round = 0; round < 200; ++round) {
        QList<NoteVersionSnapshot> versions;
        for (int i = int(random() % 5); i > 0; --i) {
            QString body;
            for (int k = int(random() % 12); k > 0; --k)
                body += pieces.at(qsizetype(random() % unsigned(pieces.size())));
            versions.append(version(i, body));
            if (random() % 2)
                versions.last().label = body;
            if (random() % 2)
                versions.last().bodyRTFBase64 = u"e30="_s;
            if (random() % 3 == 0)
                versions.last().richContentPayloadBase64 = u"e30="_s;
            if (random() % 4 == 0)
                versions.last().wordCount.reset(); // as an earlier writer left it
        }
        const QByteArray text = timelineOf(versions);
        expectSame(text, versions);
        const QJsonDocument document = QJsonDocument::fromJson(text);
        EXPECT_EQ(text.simplified(), document.toJson().simplified());
        expectSame("\xEF\xBB\xBF" + document.toJson(QJsonDocument::Compact), versions);
    }
}

TEST(VersionTimeline, WhatItDoesNotKnowIsPassedOver)
{
    QByteArray text = timelineOf({version(1, u"one"_s)});
    text.replace("\"title\"", R"("more": {"a": [1, "}]", {"b": null}]}, "yes": true, "title")");
    expectSame(text, {version(1, u"one"_s)});
}

TEST(VersionTimeline, WhatIsNoneIsRefused)
{
    const QByteArray one = timelineOf({version(1, u"one"_s)});
    struct Row {
        const char* name;
        QByteArray text;
    };
    const auto replaced = [&](const char* what, const char* by) {
        return QByteArray(one).replace(what, by);
    };
    const Row rows[] = {
        {"nothing", ""},
        {"an object", "{}"},
        {"a text", "\"[]\""},
        {"cut short", one.chopped(4)},
        {"cut in a text", one.first(one.indexOf("one") + 1)},
        {"something behind", one + "x"},
        {"numbers", "[1]"},
        {"no comma", replaced("]", "{}]")},
        {"a comma too many", replaced("}", "},")},
        {"no body", replaced("bodyPlain", "body")},
        {"a body that is no text", replaced("\"one\"", "1")},
        {"no title", replaced("\"title\"", "\"name\"")},
        {"no colon", replaced("\"title\":", "\"title\"")},
        {"no end of a container", "[{\"a\": [1}"},
    };
    for (const Row& row : rows) {
        EXPECT_FALSE(VersionTimeline::decoded(row.text)) << row.name;
        EXPECT_FALSE(VersionTimeline::summaries(row.text)) << row.name;
    }
}

Timestamp at(const char* text)
{
    return {QDateTime::fromString(QLatin1StringView(text), Qt::ISODate).toMSecsSinceEpoch()};
}

struct Thinned {
    const char* name;
    std::vector<const char*> moments; ///< a "*" at the end for a labelled one
    QList<int> staying;
};

class Thinning : public testing::TestWithParam<Thinned> {};

TEST_P(Thinning, Keeps)
{
    const Thinned& row = GetParam();
    const Timestamp now = at("2026-06-15T12:30:00Z");
    QList<NoteVersionSummary> versions;
    for (const char* moment : row.moments) {
        NoteVersionSummary each;
        QByteArray text(moment);
        if (text.endsWith('*')) {
            each.label = u"Manual Save"_s;
            text.chop(1);
        }
        each.capturedAt = at(text.constData());
        each.wordCount = int(versions.size());
        versions.append(each);
    }
    // The last twenty stay whatever they are.
    for (int i = 0; i < VersionTimeline::latestThatStay; ++i) {
        NoteVersionSummary each;
        each.capturedAt = at("2026-06-15T12:29:00Z");
        each.wordCount = 100 + i;
        versions.append(each);
    }
    const auto staying = VersionTimeline::thinned(versions, now);
    QList<int> numbers;
    for (const NoteVersionSummary& each : staying)
        numbers.append(each.wordCount);
    QList<int> expected = row.staying;
    for (int i = 0; i < VersionTimeline::latestThatStay; ++i)
        expected.append(100 + i);
    EXPECT_EQ(numbers, expected);
    EXPECT_EQ(VersionTimeline::thinned(staying, now), staying);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, Thinning,
    testing::Values(
        Thinned{"TheLastOfAnHour",
                {"2026-06-15T10:00:00Z", "2026-06-15T10:59:59Z", "2026-06-15T11:00:00Z",
                 "2026-06-15T11:05:00Z"},
                {1, 3}},
        Thinned{"HoursUntilADayIsOver",
                {"2026-06-14T12:31:00Z", "2026-06-14T13:00:00Z", "2026-06-14T14:00:00Z"},
                {0, 1, 2}},
        Thinned{"TheLastOfADay",
                {"2026-06-13T01:00:00Z", "2026-06-13T22:00:00Z", "2026-06-14T01:00:00Z",
                 "2026-06-14T02:00:00Z"},
                {1, 3}},
        Thinned{"DaysUntilAMonthIsOver",
                {"2026-05-16T12:31:00Z", "2026-05-17T12:31:00Z", "2026-05-18T12:31:00Z"},
                {0, 1, 2}},
        Thinned{"TheLastOfAMonth",
                {"2024-12-31T23:00:00Z", "2025-01-01T00:00:00Z", "2025-01-31T00:00:00Z",
                 "2026-01-02T00:00:00Z", "2026-05-01T00:00:00Z", "2026-05-16T12:29:00Z"},
                {0, 2, 3, 5}},
        Thinned{"LabelledOnesWithoutTakingAPlace",
                {"2026-06-15T10:00:00Z*", "2026-06-15T10:01:00Z", "2026-06-15T10:02:00Z*",
                 "2026-06-15T10:03:00Z*"},
                {0, 1, 2, 3}},
        Thinned{"WhatAWrongClockDated",
                {"2030-01-01T00:00:00Z", "2030-01-01T00:30:00Z", "2026-06-15T11:05:00Z"},
                {1, 2}}),
    [](const auto& info) { return std::string(info.param.name); });

} // namespace
} // namespace orvane
