// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/ParagraphLayout.h"

#include "RandomText.h"
#include "text/EditGateway.h"
#include "text/Graphemes.h"
#include "text/TextStore.h"

#include <gtest/gtest.h>

#include <ctime>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

constexpr qreal width = 400;

/// All paragraphs laid out, by place and height, and where each line of text begins.
struct Laid {
    QList<QRectF> paragraphs;
    QList<qsizetype> lines;

    explicit Laid(const TextStore& store)
    {
        ParagraphLayout& layout = store.layout();
        layout.setWidth(width);
        QTextBlock block = store.document().begin();
        for (; block.isValid(); block = block.next())
            layout.ensureLaidOut(block);
        for (block = store.document().begin(); block.isValid(); block = block.next()) {
            paragraphs.append(layout.blockBoundingRect(block));
            for (int i = 0; i < block.layout()->lineCount(); ++i)
                lines.append(block.position() + block.layout()->lineAt(i).textStart());
        }
    }
};

void expectSame(const Laid& left, const Laid& right, const std::string& where)
{
    ASSERT_EQ(left.lines, right.lines) << where;
    ASSERT_EQ(left.paragraphs.size(), right.paragraphs.size()) << where;
    for (qsizetype i = 0; i < left.paragraphs.size(); ++i) {
        ASSERT_NEAR(left.paragraphs[i].top(), right.paragraphs[i].top(), 0.01)
            << where << " paragraph " << i;
        ASSERT_NEAR(left.paragraphs[i].height(), right.paragraphs[i].height(), 0.01)
            << where << " paragraph " << i;
    }
}

TEST(ParagraphLayout, AfterRandomEditsItIsAsIfLaidOutAnew)
{
    for (const unsigned seed : {1U, 2U, 3U}) {
        RandomText random(seed);
        TextStore store;
        EditGateway gateway(store);
        gateway.load(random.document(), {});
        const Laid start(store);
        for (int step = 0; step < 60; ++step) {
            const auto length = int(store.length());
            const QString text = store.text();
            const auto from = int(graphemeStart(text, random.upTo(length)));
            const auto to = graphemeEnd(text, from + std::min(length - from, random.upTo(30)));
            const auto range = TextRange::between(from, to);
            const AttributedString piece = random.oneIn(3) ? random.document() : AttributedString();
            gateway.performUndoableDocumentEdit(u"Edit"_s, [&](DocumentEditor& editor) {
                if (random.oneIn(3))
                    editor.setCharacterStyle(range, random.characterStyle());
                else if (random.oneIn(3))
                    editor.setParagraphStyle(range, random.paragraphStyle());
                else
                    editor.replace(range,
                                   piece.length() < 400 ? piece : AttributedString(u"x\ny"_s));
            });
            TextStore fresh;
            EditGateway loader(fresh);
            loader.load(store.attributedText(), {});
            expectSame(Laid(store), Laid(fresh),
                       "seed " + std::to_string(seed) + " step " + std::to_string(step));
            if (::testing::Test::HasFatalFailure())
                return;
        }
        while (gateway.undo()) {
        }
        expectSame(Laid(store), start, "undone, seed " + std::to_string(seed));
    }
}

TEST(ParagraphLayout, EveryPositionHasAPlaceThatLeadsBackToIt)
{
    TextStore store;
    EditGateway gateway(store);
    gateway.loadPlainText(
        u"Some words that go on until they have to be broken into three lines or so, as this does "
        "at this width.\n\nשלום עולם\nmixed שלום text\u2028and a line\ttabbed"_s);
    ParagraphLayout& layout = store.layout();
    layout.setWidth(300);
    const qsizetype mixed = store.text().indexOf(u"mixed"_s);
    for (qsizetype position = 0; position <= store.length(); ++position) {
        const QRectF caret = layout.caretRect(int(position));
        EXPECT_GT(caret.height(), 5) << position;
        const QRectF back = layout.caretRect(layout.positionAt(caret.center()));
        EXPECT_NEAR(back.y(), caret.y(), 0.01) << position;
        // Where directions meet, one place stands for two positions, of which either may be found.
        if (!TextRange{mixed, 17}.contains(position)) {
            EXPECT_NEAR(back.x(), caret.x(), 0.6) << position;
        }
    }
}

TEST(ParagraphLayout, FarParagraphsAreLetGoAndKeepTheirPlace)
{
    TextStore store;
    EditGateway gateway(store);
    QString text;
    for (int i = 0; i < 3000; ++i)
        text +=
            u"Paragraph %1 has enough words to be broken into two lines at this width.\n"_s.arg(i);
    gateway.loadPlainText(text);
    const Laid all(store);
    ParagraphLayout& layout = store.layout();
    const qreal height = layout.height();
    layout.evictFarFrom(1000, 1800);
    EXPECT_TRUE(layout.isLaidOut(layout.blockAtY(1400)));
    EXPECT_FALSE(layout.isLaidOut(store.document().lastBlock()));
    EXPECT_EQ(layout.height(), height);
    expectSame(Laid(store), all, "laid out again");
}

TEST(ParagraphLayout, TheLinesOfAListItemBeginBelowEachOther)
{
    struct Row {
        const char* name;
        const char16_t* marker;
        int level = 0;
        bool reachesHeadIndent = true;
        WritingDirection direction = WritingDirection::natural;
    };
    const Row rows[] = {
        {"bullet", u"\u2022 "},
        {"number", u"9. "},
        {"two digits", u"10. "},
        {"nested behind a tab", u"\t9. ", 1},
        {"nested behind two tabs", u"\t\tb. ", 2},
        {"wider than its place", u"LXXXVIII. ", 0, false},
        {"from the right", u"\u2022 ", 0, true, WritingDirection::rightToLeft},
    };
    for (const Row& row : rows) {
        const QString marker = QString::fromUtf16(row.marker);
        const bool rightToLeft = row.direction == WritingDirection::rightToLeft;
        ParagraphStyle item;
        item.firstLineHeadIndent = 24 * row.level;
        item.headIndent = item.firstLineHeadIndent + 18;
        item.tabStops = {{item.headIndent, TabAlignment::left}};
        item.defaultTabInterval = 24;
        item.direction = row.direction;
        item.textLists = {TextList{}};
        const QString words = rightToLeft ? u"\u05d0\u05d1\u05d2 "_s : u"words "_s;
        AttributedString text(marker + words.repeated(40));
        text.setParagraphStyle(text.fullRange(), SharedParagraphStyle(item));
        TextStore store;
        EditGateway gateway(store);
        gateway.load(text, {});
        ParagraphLayout& layout = store.layout();
        layout.setWidth(width);
        const LaidOutLine second = layout.lineAt(int(text.length()) / 2);
        const double first = layout.caretRect(int(marker.size())).x();
        const double hanging = layout.caretRect(int(second.range.location)).x();
        EXPECT_NEAR(first, hanging, 0.51) << row.name;
        const double indent = rightToLeft ? width - first : first;
        if (row.reachesHeadIndent)
            EXPECT_NEAR(indent, item.headIndent, 0.51) << row.name;
        else
            EXPECT_GT(indent, item.headIndent) << row.name;
    }
}

TEST(ParagraphLayout, AWordWithoutAnEndIsBrokenLikeALongOneAndInTheSameTimePerLetter)
{
    const auto laidOut = [](const QString& text) {
        TextStore store;
        EditGateway gateway(store);
        gateway.loadPlainText(text);
        return Laid(store).lines;
    };
    const QString ahead = u"Encoded below, in one piece: "_s;
    const QString behind = u" and after that some ordinary words of prose that break as ever"_s;
    const auto word = [](qsizetype length) {
        return u"QWxsIHRoZSB0aWRlcw"_s.repeated(length / 18 + 1).first(length);
    };
    const QList<qsizetype> known = laidOut(ahead + word(3'900));
    const QList<qsizetype> lines = laidOut(ahead + word(20'000) + behind);
    ASSERT_GT(known.size(), 20);
    EXPECT_EQ(lines.first(known.size()), known);
    const QString whole = ahead + word(20'000) + behind;
    for (const qsizetype line : lines) {
        EXPECT_TRUE(line <= ahead.size() + 20'000 || whole.at(line - 1) == u' ') << line;
    }
    EXPECT_GT(lines.last(), ahead.size() + 20'000);

    const auto timeOf = [&](qsizetype length) {
        const std::clock_t before = std::clock();
        (void)laidOut(word(length));
        return double(std::clock() - before);
    };
    (void)timeOf(1'000);
    EXPECT_LT(timeOf(160'000), 9 * timeOf(40'000)) << "four times the letters";
}

} // namespace
} // namespace orvane
