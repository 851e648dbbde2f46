// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/records/TextDifference.h"

#include "core/records/SequenceDifference.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;
using Kind = TextPiece::Kind;

QString marked(const QList<TextPiece>& pieces)
{
    QString text;
    for (const TextPiece& piece : pieces) {
        text += piece.kind == Kind::Same      ? piece.text
                : piece.kind == Kind::Removed ? u'[' + piece.text + u']'
                                              : u'{' + piece.text + u'}';
    }
    return text;
}

QString side(const QList<TextPiece>& pieces, Kind dropped)
{
    QString text;
    for (const TextPiece& piece : pieces) {
        if (piece.kind != dropped)
            text += piece.text;
    }
    return text;
}

TEST(TextDifferenceTest, ReadsAsAPersonWouldMarkIt)
{
    struct Case {
        const char* name;
        QString before, after, marked;
    };
    const Case cases[] = {
        {"equal", u"Low water."_s, u"Low water."_s, u"Low water."_s},
        {"from nothing", {}, u"Low water."_s, u"{Low water.}"_s},
        {"to nothing", u"Low water."_s, {}, u"[Low water.]"_s},
        {"one word", u"Mara counts the posts."_s, u"Mara paints the posts."_s,
         u"Mara [counts ]{paints }the posts."_s},
        {"at the end", u"Mara counts"_s, u"Mara counts again"_s, u"Mara counts {again}"_s},
        {"spaces alone", u"two  spaces here"_s, u"two spaces here"_s, u"two spaces here"_s},
        {"a paragraph between", u"One.\nThree."_s, u"One.\nTwo.\nThree."_s,
         u"One.\n{Two.\n}Three."_s},
        {"paragraphs joined", u"One.\n\nTwo."_s, u"One. Two."_s, u"One. [\n\n]Two."_s},
        {"the last line break", u"One."_s, u"One.\n"_s, u"One.{\n}"_s},
        {"chance agreement", u"the harbour and the ledger lay open"_s,
         u"nobody remembered and somebody always forgot"_s,
         u"[the harbour and the ledger lay open]{nobody remembered and somebody always forgot}"_s},
        {"far apart", u"alpha stays here and here, omega"_s, u"beta stays here and here, psi"_s,
         u"[alpha ]{beta }stays here and here, [omega]{psi}"_s},
    };
    for (const Case& each : cases)
        EXPECT_EQ(marked(textDifference(each.before, each.after)), each.marked) << each.name;
}

TEST(TextDifferenceTest, BothSidesCanBeReadBackFromRandomEdits)
{
    QRandomGenerator random(20261121);
    const QStringList vocabulary{u"tide"_s, u"post"_s, u"the"_s, u"wall"_s, u"\n"_s, u"a"_s};
    for (int round = 0; round < 400; ++round) {
        QStringList before;
        for (int i = random.bounded(60); i > 0; --i)
            before.append(vocabulary.at(random.bounded(int(vocabulary.size()))));
        QStringList after = before;
        for (int i = random.bounded(12); i > 0; --i) {
            const int at = random.bounded(int(after.size()) + 1);
            if (at < after.size() && random.bounded(2) == 0)
                after.removeAt(at);
            else
                after.insert(at, vocabulary.at(random.bounded(int(vocabulary.size()))));
        }
        const QString from = before.join(u' ');
        const QString to = after.join(u' ');
        const auto pieces = textDifference(from, to);
        ASSERT_EQ(side(pieces, Kind::Removed), to);
        ASSERT_EQ(side(pieces, Kind::Added).remove(u' '), QString(from).remove(u' '));
    }
}

/// The length of the longest common subsequence by the textbook table.
int commonLength(const std::vector<int>& a, const std::vector<int>& b)
{
    std::vector<std::vector<int>> best(a.size() + 1, std::vector<int>(b.size() + 1));
    for (size_t i = 0; i < a.size(); ++i) {
        for (size_t j = 0; j < b.size(); ++j)
            best[i + 1][j + 1] =
                a[i] == b[j] ? best[i][j] + 1 : std::max(best[i][j + 1], best[i + 1][j]);
    }
    return best[a.size()][b.size()];
}

TEST(SequenceDifferenceTest, IsTheSmallestThereIs)
{
    QRandomGenerator random(7);
    const auto sequence = [&random] {
        std::vector<int> result(size_t(random.bounded(25)));
        for (int& each : result)
            each = random.bounded(4);
        return result;
    };
    for (int round = 0; round < 3000; ++round) {
        const std::vector<int> a = sequence();
        const std::vector<int> b = sequence();
        qint64 budget = 1'000'000;
        const SequenceDifference difference = sequenceDifference(a, b, budget);
        std::vector<int> keptOfA;
        std::vector<int> keptOfB;
        for (size_t i = 0; i < a.size(); ++i) {
            if (!difference.removed[i])
                keptOfA.push_back(a[i]);
        }
        for (size_t j = 0; j < b.size(); ++j) {
            if (!difference.added[j])
                keptOfB.push_back(b[j]);
        }
        ASSERT_EQ(keptOfA, keptOfB);
        ASSERT_EQ(int(keptOfA.size()), commonLength(a, b)) << round;
    }
}

TEST(TextDifferenceTest, AHundredThousandOtherWordsEndSoon)
{
    QRandomGenerator random(3);
    const auto text = [&random](int breakEvery) {
        QString words;
        for (int i = 1; i <= 100'000; ++i)
            words += QString::number(random.bounded(20'000)) + (i % breakEvery ? u' ' : u'\n');
        return words;
    };
    for (const int breakEvery : {7, 100'001}) {
        const QString before = text(breakEvery);
        const QString after = text(breakEvery);
        QElapsedTimer timer;
        timer.start();
        const auto pieces = textDifference(before, after);
        EXPECT_LT(timer.elapsed(), 20'000) << breakEvery;
        EXPECT_EQ(side(pieces, Kind::Removed), after);
    }
}

} // namespace
} // namespace orvane
