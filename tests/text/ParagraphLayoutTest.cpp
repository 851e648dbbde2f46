// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/layout/ParagraphLayout.h"

#include "LaidParagraphs.h"
#include "RandomText.h"
#include "text/store/EditGateway.h"
#include "text/store/Graphemes.h"
#include "text/store/TextStore.h"

#include <QImage>
#include <QPainter>
#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

constexpr qreal width = laidWidth;

/// The rows of pixels that one letter in the middle of a line is drawn on, and its width.
struct Ink {
    int top = 0;
    int bottom = 0;
    qreal width = 0;
};

Ink inkOf(BaselineShift shift)
{
    TextStore store;
    EditGateway gateway(store);
    CharacterStyle style;
    style.font = TextFont{u"DejaVu Sans"_s, 24};
    CharacterStyle shifted = style;
    shifted.baselineShift = shift;
    AttributedString text(u" "_s, style);
    text.append(u"H", shifted);
    text.append(u" ", style);
    gateway.load(text, {});
    ParagraphLayout layout(store);
    layout.setWidth(width);
    layout.ensureLaidOut(store.document().begin());
    QImage image(100, 60, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    TextPaint paint;
    paint.clip = image.rect();
    paint.colors.text = Qt::black;
    layout.paint(painter, paint);
    Ink ink{image.height(), 0, layout.rectsOf({1, 1}).first().width()};
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qGray(image.pixel(x, y)) < 128) {
                ink.top = std::min(ink.top, y);
                ink.bottom = y;
            }
        }
    }
    return ink;
}

TEST(ParagraphLayout, SuperscriptStandsHigherAndSubscriptLowerAndBothAreSmaller)
{
    const Ink plain = inkOf(BaselineShift::none);
    const Ink high = inkOf(BaselineShift::superscript);
    const Ink low = inkOf(BaselineShift::subscript);
    ASSERT_LT(plain.top, plain.bottom);
    EXPECT_LT(high.bottom, plain.bottom - 3);
    EXPECT_GT(low.bottom, plain.bottom);
    EXPECT_GT(low.top, plain.top);
    for (const Ink& shifted : {high, low}) {
        EXPECT_LT(shifted.bottom - shifted.top, plain.bottom - plain.top);
        EXPECT_LT(shifted.width, plain.width);
    }
}

TEST(ParagraphLayout, AfterRandomEditsItIsAsIfLaidOutAnew)
{
    const unsigned seeds = qEnvironmentVariableIsSet("ORVANE_LONG") ? 100 : 7;
    for (unsigned seed = 1; seed <= seeds; ++seed) {
        RandomText random(seed);
        TextStore store;
        EditGateway gateway(store);
        gateway.load(random.document(), {});
        ParagraphLayout layout(store);
        ParagraphLayout narrow(store);
        layout.setWidth(width);
        narrow.setWidth(width / 2);
        layout.setPieceLength(seed % 3 == 1 ? 1'500 : 20);
        narrow.setPieceLength(60);
        const Laid start(layout, store);
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
            // What was laid out anew is in one piece, the other is not.
            expectSame(Laid(layout, store), Laid(fresh),
                       "seed " + std::to_string(seed) + " step " + std::to_string(step));
            ParagraphLayout other(fresh);
            other.setWidth(width / 2);
            expectSame(Laid(narrow, store), Laid(other, fresh), "narrow");
            if (::testing::Test::HasFatalFailure())
                return;
        }
        while (gateway.undo()) {
        }
        expectSame(Laid(layout, store), start, "undone, seed " + std::to_string(seed));
    }
}

TEST(ParagraphLayout, AShortTextInThePlaceOfALongOneIsLaidOutInAnotherWidth)
{
    TextStore store;
    EditGateway gateway(store);
    for (int round = 0; round < 3; ++round) {
        gateway.load(AttributedString(u"a line\n"_s.repeated(50'000)), {});
        ParagraphLayout layout(store);
        layout.setWidth(width);
        for (int i = 1; i < 200; ++i)
            layout.ensureLaidOut(store.document().findBlockByNumber(50'000 - i));
        gateway.load(AttributedString(u"short"_s), {});
        layout.ensureLaidOut(store.document().begin());
        layout.setWidth(width / 2);
        EXPECT_FALSE(layout.isLaidOut(store.document().begin()));
    }
}

TEST(ParagraphLayout, WhatIsSelectedInALineIsCoveredWhicheverWayItRuns)
{
    struct Row {
        const char* name;
        QString text;
        qreal width;
    };
    // In points, of a font with a tab stop every 28.
    const Row rows[] = {
        {"a tab among letters of one direction", u"a\tb"_s, 34},
        {"a tab among letters of both", u"a\tb שלום"_s, 60},
        {"letters that run against the paragraph", u"שלום\u2028harbour tide"_s, 60},
    };
    for (const Row& row : rows) {
        TextStore store;
        EditGateway gateway(store);
        gateway.loadPlainText(row.text);
        ParagraphLayout layout(store);
        layout.setWidth(300);
        const TextRange line = layout.lineAt(int(store.length())).range;
        const QList<QRectF> rects = layout.rectsOf(line);
        EXPECT_EQ(rects.size(), 1) << row.name;
        EXPECT_GT(rects.value(0).width(), row.width) << row.name;
    }
}

TEST(ParagraphLayout, EveryPositionHasAPlaceThatLeadsBackToIt)
{
    TextStore store;
    EditGateway gateway(store);
    gateway.loadPlainText(
        u"Some words that go on until they have to be broken into three lines or so, as this does "
        "at this width.\n\nשלום עולם\nmixed שלום text\u2028and a line\ttabbed"_s);
    ParagraphLayout layout(store);
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

/// Measures its objects differently from any other.
struct WideObjects : ObjectPainter {
    explicit WideObjects(double side)
        : m_side(side)
    {}
    [[nodiscard]] QSizeF sizeOf(const CharacterStyle& /*style*/) const override
    {
        return {m_side, m_side};
    }
    void paintObject(QPainter& /*painter*/, const QRectF& /*rect*/,
                     const CharacterStyle& /*style*/) override
    {
        ++painted;
    }
    int painted = 0;

private:
    double m_side;
};

TEST(ParagraphLayout, TwoOfOneTextHaveWidthsFontsAndObjectsOfTheirOwn)
{
    TextStore store;
    EditGateway gateway(store);
    gateway.loadPlainText(u"a\ufffcb "_s + u"words of text "_s.repeated(30) + u"\nlast"_s);
    WideObjects small(10);
    WideObjects large(100);
    ParagraphLayout wide(store, 600, {u"Inter"_s, 12}, {});
    auto narrow =
        std::make_unique<ParagraphLayout>(store, 200, TextFont{u"Inter"_s, 24}, LineSettings());
    wide.setObjectPainter(&small);
    narrow->setObjectPainter(&large);
    const auto objectWidth = [](ParagraphLayout& layout) {
        return layout.caretRect(2).x() - layout.caretRect(1).x();
    };
    EXPECT_NEAR(objectWidth(wide), 10, 0.1);
    EXPECT_NEAR(objectWidth(*narrow), 100, 0.1);
    const auto lines = [&](ParagraphLayout& layout) {
        layout.ensureLaidOut(store.blockAt(0));
        return layout.linesOf(store.blockAt(0)).size();
    };
    EXPECT_GT(lines(*narrow), 3 * lines(wide));
    gateway.setSelection(TextSelection::caret(0));
    gateway.type(u"x"_s);
    EXPECT_NEAR(wide.caretRect(3).x() - wide.caretRect(2).x(), 10, 0.1);
    EXPECT_NEAR(narrow->caretRect(3).x() - narrow->caretRect(2).x(), 100, 0.1);
    QImage image(100, 100, QImage::Format_RGB32);
    QPainter painter(&image);
    TextPaint paint;
    paint.clip = image.rect();
    wide.paint(painter, paint);
    EXPECT_EQ(small.painted, 1);
    EXPECT_EQ(large.painted, 0);
    narrow.reset();
    EXPECT_GT(lines(wide), 0) << "and goes on when the other has gone";
    gateway.type(u"y"_s);
    EXPECT_EQ(wide.lineAt(0).range.location, 0);
}

TEST(ParagraphLayout, AnInputMethodsTextStaysWhereItStoodWhoeverEdits)
{
    TextStore store;
    EditGateway gateway(store);
    gateway.loadPlainText(u"one two three"_s);
    ParagraphLayout composing(store);
    ParagraphLayout plain(store);
    const double before = plain.caretRect(8).x();
    composing.setPreedit(4, u"xyz"_s, 3, {});
    EXPECT_GT(composing.caretRect(8).x(), before);
    EXPECT_EQ(plain.caretRect(8).x(), before);
    gateway.setSelection(TextSelection::caret(0));
    gateway.type(u"0"_s);
    EXPECT_EQ(composing.preeditPosition(), 5);
    EXPECT_GT(composing.caretRect(9).x(), plain.caretRect(9).x());
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
    ParagraphLayout layout(store);
    layout.setWidth(width);
    const Laid all(layout, store);
    const qreal height = layout.height();
    layout.evictFarFrom(1000, 1800);
    EXPECT_TRUE(layout.isLaidOut(layout.blockAtY(1400)));
    EXPECT_FALSE(layout.isLaidOut(store.document().lastBlock()));
    EXPECT_EQ(layout.height(), height);
    expectSame(Laid(layout, store), all, "laid out again");
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
        ParagraphLayout layout(store);
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

} // namespace
} // namespace orvane
