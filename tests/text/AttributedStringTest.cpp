// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/value/AttributedString.h"

#include <gtest/gtest.h>

#include <random>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

CharacterStyle sized(double size)
{
    CharacterStyle style;
    style.font = TextFont{u"Charis"_s, size};
    return style;
}

ParagraphStyle indented(double indent)
{
    ParagraphStyle style;
    style.headIndent = indent;
    return style;
}

/// The plainest thing that could hold the same text: one record a position.
struct NaiveText {
    struct Unit {
        QChar character; // the end counts as one more unit
        double size = 0;
        double indent = 0;
    };
    std::vector<Unit> units{Unit{}};

    static NaiveText from(const AttributedString& text)
    {
        NaiveText naive;
        naive.units.clear();
        for (qsizetype i = 0; i <= text.length(); ++i) {
            Unit unit;
            unit.indent = text.paragraphStyle(i)->headIndent;
            if (i < text.length()) {
                unit.character = text.text()[i];
                unit.size = text.characterStyle(i)->font->size;
            }
            naive.units.push_back(unit);
        }
        return naive;
    }

    void replace(TextRange range, const NaiveText& insertion)
    {
        auto source = insertion.units;
        const bool keepsOwnEnd =
            insertion.units.size() == 1 || std::size_t(range.end()) + 1 < units.size();
        if (keepsOwnEnd)
            source.pop_back();
        const auto at = units.begin() + range.location;
        const auto past = units.begin() + range.end() + (keepsOwnEnd ? 0 : 1);
        units.insert(units.erase(at, past), source.begin(), source.end());
        for (std::size_t i = 1; i < units.size(); ++i) {
            if (units[i - 1].character != u'\n')
                units[i].indent = units[i - 1].indent;
        }
    }

    void expectEqual(const AttributedString& text) const
    {
        ASSERT_EQ(qsizetype(units.size()), text.length() + 1);
        for (qsizetype i = 0; i <= text.length(); ++i) {
            ASSERT_EQ(units[i].indent, text.paragraphStyle(i)->headIndent) << i;
            if (i < text.length()) {
                ASSERT_EQ(units[i].character, text.text()[i]) << i;
                ASSERT_EQ(units[i].size, text.characterStyle(i)->font->size) << i;
            }
        }
    }
};

class Random {
public:
    explicit Random(unsigned seed)
        : m_engine(seed)
    {}
    qsizetype upTo(qsizetype limit)
    {
        return std::uniform_int_distribution<qsizetype>(0, limit)(m_engine);
    }
    TextRange range(qsizetype length)
    {
        const qsizetype from = upTo(length);
        return {from, std::min(length - from, upTo(8))};
    }
    AttributedString text()
    {
        AttributedString result;
        for (qsizetype piece = upTo(6); piece > 0; --piece) {
            QString letters;
            for (qsizetype i = upTo(9); i > 0; --i)
                letters += upTo(3) == 0 ? u'\n' : QChar(char16_t(u'a' + upTo(3)));
            result.append(letters, sized(10 + double(upTo(3))), indented(double(upTo(3))));
        }
        return result;
    }

private:
    std::mt19937 m_engine;
};

TEST(AttributedString, RandomEditsAgreeWithOneRecordAPosition)
{
    for (unsigned seed = 1; seed <= 40; ++seed) {
        SCOPED_TRACE(seed);
        Random random(seed);
        AttributedString text;
        NaiveText naive;
        for (int step = 0; step < 200; ++step) {
            const TextRange range = random.range(text.length());
            switch (random.upTo(4)) {
            case 0: {
                const double size = 20 + double(random.upTo(2));
                text.modifyCharacterStyles(range,
                                           [&](CharacterStyle& style) { style.font->size = size; });
                for (qsizetype i = range.location; i < range.end(); ++i)
                    naive.units[i].size = size;
                break;
            }
            case 1: {
                const double indent = 5 + double(random.upTo(2));
                const TextRange touched = text.paragraphsRange(range);
                text.setParagraphStyle(range, indented(indent));
                for (qsizetype i = touched.location; i < touched.end(); ++i)
                    naive.units[i].indent = indent;
                const bool last = touched.end() == text.length() &&
                                  (touched.isEmpty() || text.text().back() != u'\n');
                if (last)
                    naive.units.back().indent = indent;
                break;
            }
            case 2:
                text.remove(range);
                naive.replace(range, {});
                break;
            default: {
                const AttributedString insertion = random.text();
                text.replace(range, insertion);
                naive.replace(range, NaiveText::from(insertion));
            }
            }
            naive.expectEqual(text);
            if (HasFatalFailure())
                return;
            const qsizetype cut = random.upTo(text.length());
            AttributedString joined = text.sliced({0, cut});
            joined.append(text.sliced(TextRange::between(cut, text.length())));
            ASSERT_TRUE(joined == text) << "cut at " << cut;
        }
    }
}

TEST(AttributedString, EqualityIgnoresHowRunsWereCut)
{
    const AttributedString whole(u"one two\nthree"_s, sized(12), indented(3));
    AttributedString pieces;
    for (const QChar& c : whole.text())
        pieces.append(QStringView(&c, 1), sized(12), indented(3));
    EXPECT_TRUE(pieces == whole);
    pieces.setCharacterStyle({2, 3}, sized(14));
    EXPECT_FALSE(pieces == whole);
    pieces.setCharacterStyle({2, 3}, sized(12));
    EXPECT_TRUE(pieces == whole);
    pieces.setParagraphStyle({9, 0}, indented(4));
    EXPECT_FALSE(pieces == whole);
}

TEST(AttributedString, EnumeratesOneAttributeOverItsLongestStretches)
{
    AttributedString text(u"plain linked plain"_s, sized(12));
    text.setAttribute(&CharacterStyle::link, u"https://example.org"_s, {6, 6});
    text.modifyCharacterStyles({8, 8}, [](CharacterStyle& style) { style.font->italic = true; });
    std::vector<TextRange> links;
    text.enumerate(&CharacterStyle::link, {2, 14},
                   [&](TextRange range, const QString&) { links.push_back(range); });
    EXPECT_EQ(links, (std::vector<TextRange>{{2, 4}, {6, 6}, {12, 4}}));
}

TEST(AttributedString, ACopyKeepsItsContentsWhileTheOriginalChanges)
{
    AttributedString text(u"draft"_s, sized(12));
    const AttributedString copy = text;
    text.append(u" two", sized(20));
    text.setParagraphStyle({0, 1}, indented(9));
    EXPECT_TRUE(copy == AttributedString(u"draft"_s, sized(12)));
}

} // namespace
} // namespace orvane
