// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// Long paragraphs, which are laid out piece by piece.
#include "LaidParagraphs.h"
#include "RandomText.h"
#include "text/store/EditGateway.h"
#include "text/store/Graphemes.h"

#include <QImage>
#include <QPainter>
#include <gtest/gtest.h>

#include <ctime>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

constexpr qreal width = laidWidth;

/// A paragraph in which lines are found to end in each of the ways there are.
enum class Looks { various, same };

AttributedString longParagraph(unsigned seed, int length, Looks looks = Looks::various)
{
    RandomText random(seed);
    AttributedString text;
    const QString words[] = {
        u"tide "_s,        u"harbour "_s,        u"\u05e9\u05dc\u05d5\u05dd "_s,
        u"42. "_s,         u"a\tb "_s,           u"so\u2028it "_s,
        u"\u6f6e\u6c34"_s, u"e\u0301e\u0301 "_s, u"\U0001f469\u200d\U0001f467 "_s,
        u"(x) "_s,         u"underneathitall"_s};
    while (text.length() < length)
        text.append(words[random.upTo(10)], looks == Looks::various && random.oneIn(4)
                                                ? random.characterStyle()
                                                : SharedCharacterStyle());
    return text;
}

struct LongParagraph {
    TextStore store;
    EditGateway gateway{store};
    ParagraphLayout laidOut{store};

    explicit LongParagraph(int pieceLength, const AttributedString& text,
                           const ParagraphStyle& style = {})
    {
        AttributedString content(u"above\n"_s);
        content.append(text);
        content.append(AttributedString(u"\nbelow"_s));
        content.setParagraphStyle({10, 0}, SharedParagraphStyle(style));
        gateway.load(content, {});
        layout().setWidth(width);
        layout().setPieceLength(pieceLength);
    }
    ParagraphLayout& layout() { return laidOut; }
};

/// The share of pixels that are another even one row further up or down, to which a baseline may
/// be rounded.
double differing(const QImage& left, const QImage& right)
{
    qsizetype count = 0;
    for (int y = 1; y + 1 < left.height(); ++y) {
        for (int x = 0; x < left.width(); ++x) {
            const int gray = qGray(left.pixel(x, y));
            const auto isNear = [&](int row) {
                return std::abs(gray - qGray(right.pixel(x, row))) < 64;
            };
            count += !isNear(y - 1) && !isNear(y) && !isNear(y + 1);
        }
    }
    return double(count) / double(left.width() * left.height());
}

TEST(ParagraphPieces, NobodySeesThatALongParagraphIsInPieces)
{
    struct Row {
        const char* name;
        ParagraphStyle style;
    };
    std::vector<Row> rows{{"plain", {}}, {"justified", {}},     {"hanging", {}},
                          {"list", {}},  {"right to left", {}}, {"centred", {}}};
    rows[1].style.alignment = TextAlignment::justified;
    rows[2].style.headIndent = 30;
    rows[2].style.firstLineHeadIndent = 60;
    rows[3].style.headIndent = 18;
    rows[3].style.textLists = {TextList{}};
    rows[4].style.direction = WritingDirection::rightToLeft;
    rows[5].style.alignment = TextAlignment::center;
    for (const Row& row : rows) {
        // In a whole paragraph a tab is moved by the blanks of the justified line before it.
        const bool isJustified = row.style.alignment == TextAlignment::justified;
        const double nearness = isJustified ? 6 : 0.6;
        const AttributedString text = longParagraph(1, 1'500);
        LongParagraph whole(100'000, text, row.style);
        LongParagraph pieces(30, text, row.style);
        ASSERT_EQ(Laid(whole.layout(), whole.store).lines,
                  Laid(pieces.layout(), pieces.store).lines)
            << row.name;
        // Where a line begins with signs that don't run with the paragraph, the toolkit places the
        // caret of a whole paragraph at another run's end.
        const bool rightToLeft = row.style.direction == WritingDirection::rightToLeft;
        const auto isOddStart = [&](qsizetype p) {
            const bool runsAgainst =
                (whole.store.characterAt(p).direction() == QChar::DirR) != rightToLeft;
            return runsAgainst && whole.layout().lineAt(int(p)).range.location == p;
        };
        for (qsizetype p = 0; p <= whole.store.length(); ++p) {
            for (const CaretSide side : {CaretSide::lowerLine, CaretSide::upperLine}) {
                const QRectF place = whole.layout().caretRect(int(p), side);
                const QRectF same = pieces.layout().caretRect(int(p), side);
                const bool isOdd = side == CaretSide::lowerLine && isOddStart(p);
                EXPECT_TRUE(isOdd || std::abs(place.x() - same.x()) < nearness)
                    << row.name << " at " << p;
                EXPECT_NEAR(place.y(), same.y(), 0.03) << row.name << " at " << p;
                ASSERT_EQ(whole.layout().lineAt(int(p), side).range,
                          pieces.layout().lineAt(int(p), side).range)
                    << row.name << " at " << p;
            }
            if (!isGraphemeBoundary(whole.store, p))
                continue;
            const TextRange range{p, std::min<qsizetype>(70, whole.store.length() - p)};
            bool hasOddStart = false;
            for (qsizetype q = p; q < range.end(); ++q)
                hasOddStart = hasOddStart || isOddStart(q);
            if (hasOddStart)
                continue;
            const QList<QRectF> rects = whole.layout().rectsOf(range);
            const QList<QRectF> others = pieces.layout().rectsOf(range);
            ASSERT_EQ(rects.size(), others.size()) << row.name << " at " << p;
            for (qsizetype i = 0; i < rects.size(); ++i) {
                EXPECT_NEAR(rects[i].left(), others[i].left(), nearness) << row.name << " at " << p;
                // A blank at a line's end counts or doesn't where directions are mixed.
                EXPECT_NEAR(rects[i].right(), others[i].right(), 7) << row.name << " at " << p;
            }
        }
        const QSizeF size(width, whole.layout().height());
        const auto painted = [&](ParagraphLayout& layout) {
            QImage image(size.toSize() * 2, QImage::Format_RGB32);
            image.fill(Qt::white);
            QPainter painter(&image);
            TextPaint paint;
            paint.scale = 2;
            paint.clip = image.rect();
            paint.colors.text = Qt::black;
            paint.colors.selection = Qt::yellow;
            paint.selection = {200, 700};
            layout.paint(painter, paint);
            return image;
        };
        EXPECT_LT(differing(painted(whole.layout()), painted(pieces.layout())),
                  isJustified ? 0.01 : 0.002)
            << row.name;
        // Line by line, up and down.
        for (const bool down : {true, false}) {
            std::optional<LaidOutLine> line = whole.layout().lineAt(down ? 0 : int(text.length()));
            std::optional<LaidOutLine> same = pieces.layout().lineAt(down ? 0 : int(text.length()));
            while (line && same) {
                ASSERT_EQ(line->range, same->range) << row.name;
                line = down ? whole.layout().lineBelow(*line, 50)
                            : whole.layout().lineAbove(*line, 50);
                same = down ? pieces.layout().lineBelow(*same, 50)
                            : pieces.layout().lineAbove(*same, 50);
            }
            EXPECT_EQ(line.has_value(), same.has_value()) << row.name;
        }
    }
}

TEST(ParagraphPieces, AChangeInALongParagraphLeavesTheLinesThatItDoesNotTouch)
{
    LongParagraph note(40, longParagraph(3, 4'000));
    ParagraphLayout& layout = note.layout();
    const QTextBlock block = note.store.blockAt(10);
    layout.ensureLaidOut(block);
    const auto known = layout.linesOf(block).size();
    note.gateway.setSelection(TextSelection::caret(2'001));
    note.gateway.type(u"x"_s);
    EXPECT_GT(layout.linesOf(block).size(), known - 12);
    EXPECT_FALSE(layout.isLaidOut(block));
    const auto [top, bottom] = layout.changedPart(block);
    EXPECT_GT(bottom - top, 0);

    layout.ensureLaidOut(block);
    EXPECT_NEAR(layout.linesOf(block).size(), known, 1);
    // What kept its lines knows where it stands now.
    expectSame(Laid(layout, note.store), Laid(note.store, 40), "moved");
}

TEST(ParagraphPieces, KeysInALongParagraphBreakItAsIfItWereLaidOutAnew)
{
    struct Row {
        const char* name;
        AttributedString text;
        QString keys;
    };
    const QString signs = u"office ffi e\u0301e\u0301 \U0001f469 \u4e2d\u6587\u4e2d\u6587 "_s;
    const Row rows[] = {
        {"words", longParagraph(3, 4'000, Looks::same), u"lorem ipsum dolor "_s},
        {"many looks", longParagraph(4, 3'000), u"lorem ipsum "_s},
        {"an endless word", AttributedString(u"abcdefghijk"_s.repeated(400)), u"xxxxxx"_s},
        {"endless, of few glyphs", AttributedString(u"\u4e2d\u6587\u5b57"_s.repeated(900)),
         u"\u4e2d"_s},
        {"signs of several characters", AttributedString(signs.repeated(120)), u"e\u0301"_s},
        {"from right to left",
         AttributedString(u"\u05e9\u05dc\u05d5\u05dd \u05e2\u05d5\u05dc\u05dd "_s.repeated(300)),
         u"\u05e9"_s},
    };
    for (const Row& row : rows) {
        LongParagraph note(400, row.text);
        ParagraphLayout& layout = note.layout();
        std::mt19937 random(7);
        layout.ensureLaidOut(note.store.blockAt(10));
        int caret = int(note.store.length()) / 3;
        for (int step = 0; step < 160; ++step) {
            if (step % 40 == 39)
                caret = 10 + int(random() % unsigned(note.store.length() - 20));
            note.gateway.setSelection(TextSelection::caret(caret));
            if (random() % 3 == 0)
                note.gateway.remove({caret - 1, 1}, EditKind::deletingBackward, u"Delete"_s);
            else
                note.gateway.type(row.keys.sliced(step % row.keys.size(), 1));
            caret = int(note.gateway.selection().position);
            // What a view asks for with each key: what stands on the screen.
            const qreal top = layout.caretRect(caret).top();
            layout.ensureLaidOut(note.store.blockAt(caret), top - 300, top + 300);
            if (step % 20 != 19)
                continue;
            ParagraphLayout fresh(note.store);
            fresh.setWidth(width);
            fresh.setPieceLength(100'000);
            ASSERT_EQ(layout.lineAt(caret).range, fresh.lineAt(caret).range) << row.name << step;
            ASSERT_EQ(layout.caretRect(caret).x(), fresh.caretRect(caret).x()) << row.name << step;
            expectSame(Laid(layout, note.store), Laid(fresh, note.store),
                       row.name + (" step " + std::to_string(step)));
            if (::testing::Test::HasFatalFailure())
                return;
        }
    }
}

TEST(ParagraphPieces, OfALongParagraphOnlyWhatIsAskedForIsLaidOutWhereverThatIs)
{
    const AttributedString text = longParagraph(3, 60'000, Looks::same);
    LongParagraph all(1'500, text);
    all.layout().ensureLaidOut(all.store.blockAt(10));
    for (const int position : {40'000, 20'000, 59'990, 0}) {
        LongParagraph note(1'500, text);
        const QTextBlock block = note.store.blockAt(10);
        const QRectF caret = note.layout().caretRect(position);
        EXPECT_LT(note.layout().linesOf(block).size(), 3 * 1'500 / 20) << position;
        EXPECT_NEAR(caret.y() / note.layout().height(), position / 60'000.0, 0.1) << position;
        EXPECT_EQ(note.layout().lineAt(position).range, all.layout().lineAt(position).range)
            << "where lines end doesn't depend on where laying out began, " << position;
    }
}

TEST(ParagraphPieces, LinesOfALongParagraphAreLetGoPieceByPiece)
{
    LongParagraph note(1'500, longParagraph(5, 100'000));
    ParagraphLayout& layout = note.layout();
    const QTextBlock block = note.store.blockAt(10);
    layout.ensureLaidOut(block);
    const qreal height = layout.height();
    const auto lines = layout.linesOf(block);
    layout.evictFarFrom(height / 2, height / 2 + 400);
    EXPECT_LT(layout.linesOf(block).size(), lines.size() / 4);
    EXPECT_EQ(layout.height(), height);
    EXPECT_FALSE(layout.linesOf(block).isEmpty());
    layout.ensureLaidOut(block);
    EXPECT_EQ(layout.linesOf(block), lines);
}

TEST(ParagraphPieces, AWordWithoutAnEndIsBrokenLikeALongOneAndInTheSameTimePerLetter)
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
