// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/commands/FuzzyMatch.h"

#include <gtest/gtest.h>

#include <random>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

/// The text with what was found in brackets, or "no match".
QString shown(const QString& pattern, const QString& text)
{
    const auto match = fuzzyMatch(foldedForMatch(pattern), foldedForMatch(text));
    if (!match)
        return u"no match"_s;
    QString marked;
    for (qsizetype i = 0; i < text.size(); ++i)
        marked += match->positions.contains(i) ? u"[%1]"_s.arg(text[i]) : QString(text[i]);
    return marked.replace(u"]["_s, QString());
}

TEST(FuzzyMatch, FindsWhatAPersonMeans)
{
    struct Row {
        const char* name;
        QString pattern;
        QString text;
        QString expected;
    };
    const Row rows[] = {
        {"a blank asks for the next word", u"ins t"_s, u"Insert Table"_s, u"[Ins]ert [T]able"_s},
        {"but takes less", u"ins t"_s, u"Toggle Right Pane (Inspector)"_s,
         u"Toggle Right Pane ([Ins]pec[t]or)"_s},
        {"initials", u"nnft"_s, u"New Note from Template"_s, u"[N]ew [N]ote [f]rom [T]emplate"_s},
        {"a run before scattered letters", u"note"_s, u"New Not on the note"_s,
         u"New Not on the [note]"_s},
        {"capitals don't matter", u"BoLD"_s, u"Bold"_s, u"[Bold]"_s},
        {"nor do diacritics", u"uber"_s, u"Über allen Gipfeln"_s, u"[Über] allen Gipfeln"_s},
        {"in the pattern neither", u"fä"_s, u"Far away"_s, u"[Fa]r away"_s},
        {"words in another order", u"table insert"_s, u"Insert Table"_s, u"[Insert] [Table]"_s},
        {"letters in another order", u"tni"_s, u"Insert"_s, u"no match"_s},
        {"a letter too many", u"boldd"_s, u"Bold"_s, u"no match"_s},
        {"empty text", u"a"_s, QString(), u"no match"_s},
        {"empty pattern", QString(), u"Bold"_s, u"Bold"_s},
        {"blanks only", u"  "_s, u"Bold"_s, u"Bold"_s},
        {"other scripts", u"лед"_s, u"Морской Лёд"_s, u"Морской [Лёд]"_s},
        {"a pair of surrogates", u"🌊 r"_s, u"🌊 River"_s, u"[🌊] [R]iver"_s},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(shown(row.pattern, row.text), row.expected);
    }
}

TEST(FuzzyMatch, BetterMatchesScoreHigher)
{
    struct Row {
        QString pattern;
        QString better;
        QString worse;
    };
    const Row rows[] = {
        {u"ins t"_s, u"Insert Table"_s, u"Toggle Right Pane (Inspector)"_s},
        {u"exp"_s, u"Export as PDF"_s, u"Show Example Page"_s},
        {u"fold"_s, u"New Folder"_s, u"Four old ledgers"_s},
        {u"low"_s, u"1. Low water"_s, u"Yellow"_s},
        {u"salt"_s, u"Salt"_s, u"The salt road"_s},
        {u"tab ins"_s, u"Tabs inside"_s, u"Insert Table"_s},
    };
    for (const Row& row : rows) {
        const auto better = fuzzyMatch(foldedForMatch(row.pattern), foldedForMatch(row.better));
        const auto worse = fuzzyMatch(foldedForMatch(row.pattern), foldedForMatch(row.worse));
        ASSERT_TRUE(better && worse) << qPrintable(row.better);
        EXPECT_GT(better->score, worse->score) << qPrintable(row.better);
    }
}

TEST(FuzzyMatch, LettersTakenFromATextAreAlwaysFoundInIt)
{
    std::mt19937 random(11);
    const auto below = [&](qsizetype limit) {
        return qsizetype(random() % quint32(limit));
    };
    const QString alphabet = u"aabbccde  -é("_s;
    for (int i = 0; i < 5000; ++i) {
        QString text;
        for (qsizetype length = 1 + below(40); length > 0; --length)
            text += alphabet[below(alphabet.size())];
        QString pattern;
        for (const QChar unit : text) {
            if (!unit.isSpace() && below(3) == 0)
                pattern += unit;
        }
        const QString foldedText = foldedForMatch(text);
        const QString foldedPattern = foldedForMatch(pattern);
        const auto match = fuzzyMatch(foldedPattern, foldedText);
        ASSERT_TRUE(match) << qPrintable(text) << " / " << qPrintable(pattern);
        QString found;
        for (const qsizetype position : match->positions)
            found += foldedText[position];
        ASSERT_EQ(found, foldedPattern);
        ASSERT_TRUE(std::is_sorted(match->positions.begin(), match->positions.end()));
    }
}

} // namespace
} // namespace orvane
