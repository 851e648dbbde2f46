// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/find/FindMatches.h"

#include <gtest/gtest.h>

#include <random>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

TEST(Find, AllMatches)
{
    struct Row {
        const char* name;
        QString text;
        QString query;
        QList<TextRange> found;
    };
    const Row rows[] = {
        {"any case", u"Ab aB"_s, u"AB"_s, {{0, 2}, {3, 2}}},
        {"case beyond Latin", u"ЖУК жук"_s, u"жУк"_s, {{0, 3}, {4, 3}}},
        {"none overlap", u"aaaaa"_s, u"aa"_s, {{0, 2}, {2, 2}}},
        {"empty query", u"abc"_s, QString(), {}},
        {"white space counts", u"a b  a b"_s, u"a b "_s, {{0, 4}}},
        {"joined accent finds both", u"\u00e9 e\u0301"_s, u"\u00c9"_s, {{0, 1}, {2, 2}}},
        {"separate accent finds both", u"\u00e9 e\u0301"_s, u"e\u0301"_s, {{0, 1}, {2, 2}}},
        {"a letter without its accent", u"e\u0301e"_s, u"e"_s, {{2, 1}}},
        {"a heart with its variation", u"\u2764\ufe0f"_s, u"\u2764"_s, {{0, 1}}},
        {"a pair", u"a😀b"_s, u"😀"_s, {{1, 2}}},
        {"over lines", u"a\nb"_s, u"a\nb"_s, {{0, 3}}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(TextSearch(row.query).all(row.text), row.found);
    }
}

TEST(Find, NextWraps)
{
    const QString text = u"one two ONE"_s;
    struct Row {
        const char* name;
        TextRange selection;
        FindDirection direction;
        TextRange found;
    };
    using enum FindDirection;
    const Row rows[] = {
        {"from the caret", {0, 0}, forward, {0, 3}},
        {"behind the selection", {0, 3}, forward, {8, 3}},
        {"round the end", {8, 3}, forward, {0, 3}},
        {"back", {8, 3}, backward, {0, 3}},
        {"round the start", {0, 3}, backward, {8, 3}},
        {"back from within", {9, 0}, backward, {0, 3}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(TextSearch(u"one"_s).next(text, row.selection, row.direction), row.found);
    }
    EXPECT_EQ(TextSearch(u"two"_s).next(text, {4, 3}, forward), (TextRange{4, 3}));
    EXPECT_EQ(TextSearch(u"three"_s).next(text, {0, 0}, backward), std::nullopt);
}

TEST(Find, MatchesFollowEdits)
{
    const QString letters = u"aab\u0301 A"_s;
    for (unsigned seed = 1; seed <= 80; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        const auto letter = [&] {
            return letters[qsizetype(random() % 6)];
        };
        QString text;
        for (int i = 0; i < 60; ++i)
            text += letter();
        const QString queries[] = {u"a"_s, u"aa"_s, u"aba"_s, u"a\u0301"_s, u"aab a"_s};
        FindMatches matches;
        matches.search(queries[seed % 5], text);
        for (int step = 0; step < 80; ++step) {
            TextChange change;
            change.location = qsizetype(random() % unsigned(text.size() + 1));
            change.lengthBefore = std::min(text.size() - change.location, qsizetype(random() % 6));
            change.lengthAfter = qsizetype(random() % 6);
            QString insertion;
            for (qsizetype i = 0; i < change.lengthAfter; ++i)
                insertion += letter();
            text.replace(change.location, change.lengthBefore, insertion);
            const QList<TextRange> shown = matches.ranges(); // someone still draws those of before
            matches.update(change, text.size(), [&](TextRange range) {
                return text.sliced(range.location, range.length);
            });
            ASSERT_EQ(matches.ranges(), matches.query().all(text)) << text.toStdString();
        }
    }
}

TEST(Find, AnEditReadsOnlyItsNeighbourhood)
{
    QString text(1'000'000, u'x');
    FindMatches matches;
    matches.search(u"needle"_s, text);
    text.insert(500'000, u"needle"_s);
    qsizetype read = 0;
    matches.update({500'000, 0, 6}, text.size(), [&](TextRange range) {
        read += range.length;
        return text.sliced(range.location, range.length);
    });
    EXPECT_EQ(matches.ranges(), (QList<TextRange>{{500'000, 6}}));
    EXPECT_LT(read, 100);
    EXPECT_EQ(matches.indexOf({500'000, 6}), 0);
    EXPECT_EQ(matches.indexOf({500'001, 5}), -1);
}

TEST(Find, ReplaceAllKeepsTheSelectionInPlace)
{
    AttributedString text(u"a b a b a"_s);
    const QList<TextRange> matches = TextSearch(u"A"_s).all(text.text());
    const TextEdits edits = replacingAll(text.text(), matches, u"ccc"_s, {4, 3});
    EXPECT_TRUE(replacingAll(text.text(), matches, u"a"_s, {4, 3}).leavesTextAlone());
    apply(edits, text, {});
    EXPECT_EQ(text.text(), u"ccc b ccc b ccc"_s);
    EXPECT_EQ(edits.selection, (TextRange{6, 5}));
}

} // namespace
} // namespace orvane
