// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// The caret in lines of either direction and of both.
#include "ViewFixture.h"
#include "text/layout/ParagraphLayout.h"
#include "text/store/Graphemes.h"

#include <random>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

struct Script {
    const char* name;
    QString text;
    bool rightToLeft;
    bool isMixed = false;
};

const QString hebrew = u"שלום לכולם, היום נכתוב מכתב ארוך אל חברים רחוקים שגרים מעבר לים "_s;
const QString arabic = u"السلام عليكم نكتب اليوم رسالة طويلة إلى أصدقاء بعيدين يعيشون هناك "_s;
const QString latin = u"In the morning we wrote a long letter to our friends across the sea "_s;
const QString chinese = u"今天我们给住在海那边的远方朋友们写了一封很长的信件，并且寄了出去。"_s;
const QString devanagari = u"आज हमने समुद्र पार रहने वाले दोस्तों को एक लंबा पत्र लिखा "_s;

class RightToLeftTest : public ViewFixture, public ::testing::WithParamInterface<Script> {
protected:
    RightToLeftTest()
    {
        view.setPlainText(GetParam().text);
        QApplication::processEvents();
    }

    [[nodiscard]] bool isPlace(qsizetype p) { return isGraphemeBoundary(view.store(), p); }
    [[nodiscard]] QRectF caretAt(qsizetype p, CaretSide side = CaretSide::lowerLine)
    {
        return view.layout().caretRect(int(p), side);
    }
    /// The caret as it is seen, on the page.
    [[nodiscard]] QRectF shownCaret()
    {
        return view.caretRect().translated(-view.toViewport(QPointF()));
    }
    [[nodiscard]] qsizetype lineEnd(const LaidOutLine& line)
    {
        return view.layout().endOfLine(line);
    }
    /// Where a caret in `line` stands nearest to `x`.
    [[nodiscard]] qreal nearestIn(const LaidOutLine& line, qreal x)
    {
        qreal nearest = 1e9;
        // A wrapped line's last blank has no caret behind it.
        for (qsizetype p = line.range.location; p <= view.layout().endOfLine(line); ++p) {
            const bool isEnd = p == line.range.end() && p > line.range.location;
            const qreal there = caretAt(p, isEnd ? CaretSide::upperLine : CaretSide::lowerLine).x();
            if (isPlace(p) && std::abs(there - x) < std::abs(nearest - x))
                nearest = there;
        }
        return nearest;
    }
};

INSTANTIATE_TEST_SUITE_P(
    Scripts, RightToLeftTest,
    ::testing::Values(
        Script{"hebrew", hebrew + hebrew + hebrew, true},
        Script{"arabic", arabic + arabic + arabic, true},
        Script{"latin", latin + latin + latin, false},
        Script{"chinese", chinese + chinese + chinese + chinese, false},
        Script{"devanagari", devanagari + devanagari + devanagari, false},
        Script{"hebrewWithLatin", hebrew + latin + hebrew + u"12 kg "_s + hebrew, true, true},
        Script{"latinWithArabic", latin + arabic + latin + u"(١٢) "_s + arabic, false, true}),
    [](const auto& script) { return std::string(script.param.name); });

TEST_P(RightToLeftTest, EveryPlaceIsFoundAgainFromWhereItsCaretStands)
{
    for (qsizetype p = 0; p <= view.store().length(); ++p) {
        if (!isPlace(p))
            continue;
        const QRectF caret = caretAt(p);
        CaretSide side{};
        const int found = view.layout().positionAt(caret.center(), &side);
        const QRectF again = caretAt(found, side);
        EXPECT_NEAR(again.x(), caret.x(), 0.02) << "of " << p << " to " << found;
        EXPECT_EQ(again.y(), caret.y()) << "of " << p << " to " << found;
    }
}

TEST_P(RightToLeftTest, AClickOnALetterPutsTheCaretAtItsNearerSide)
{
    const QString text = view.plainText();
    const auto isInRun = [&](qsizetype p) { // with letters of its direction on both sides
        return p > 0 && p + 1 < text.size() && text[p].isLetter() &&
               text[p - 1].direction() == text[p].direction() &&
               text[p + 1].direction() == text[p].direction();
    };
    // Before a run's last letter the toolkit may place the caret at the next run.
    const auto isAtOtherRun = [&](qsizetype p) {
        return std::abs(caretAt(p).x() - caretAt(p - 1).x()) > 60;
    };
    int clicked = 0;
    for (qsizetype p = 1; p + 1 < text.size(); ++p) {
        const QList<QRectF> glyph = view.layout().rectsOf({p, 1});
        const auto sharesGlyph = [&](qsizetype other) {
            const QList<QRectF> its = view.layout().rectsOf({other, 1});
            return its.isEmpty() || its[0].adjusted(0.5, 1, -0.5, -1).intersects(glyph[0]);
        };
        if (!isInRun(p) || !isPlace(p) || !isPlace(p + 1) || glyph.size() != 1 ||
            glyph[0].width() < 4 || sharesGlyph(p - 1) || sharesGlyph(p + 1) ||
            isAtOtherRun(p + 1) || lineEnd(view.layout().lineAt(int(p))) == p + 1)
            continue;
        for (const double part : {0.3, 0.7}) {
            const QPointF point(glyph[0].left() + part * glyph[0].width(), glyph[0].center().y());
            const double edge = part < 0.5 ? glyph[0].left() : glyph[0].right();
            const QPoint pixel = view.toViewport(QRectF(point, QSizeF(0, 0))).topLeft().toPoint();
            QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, pixel);
            const qsizetype caret = view.selection().position;
            EXPECT_NEAR(shownCaret().x(), edge, 0.6) << "at " << p;
            EXPECT_TRUE(caret == p || caret == p + 1) << p;
            ++clicked;
        }
    }
    EXPECT_GE(clicked, 12);
}

TEST_P(RightToLeftTest, BesideALineAClickStaysInIt)
{
    for (LaidOutLine line = view.layout().lineAt(0);;) {
        const double y = line.rect.center().y();
        const bool fromRight = GetParam().rightToLeft;
        const auto click = [&](double x) {
            const QPoint pixel =
                view.toViewport(QRectF(QPointF(x, y), QSizeF(0, 0))).topLeft().toPoint();
            QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, pixel);
            return view.selection().position;
        };
        const qsizetype start = click(fromRight ? line.rect.right() + 5 : line.rect.left() - 5);
        EXPECT_EQ(start, GetParam().isMixed
                             ? std::clamp(start, line.range.location, line.range.end())
                             : line.range.location);
        const qsizetype end = click(fromRight ? line.rect.left() - 5 : line.rect.right() + 5);
        EXPECT_LE(end, line.range.end());
        EXPECT_GE(end, line.range.location);
        const std::optional<LaidOutLine> next = view.layout().lineBelow(line, 0);
        if (!next)
            break;
        line = *next;
    }
}

TEST_P(RightToLeftTest, DownLeadsThroughEveryLineAndUpBack)
{
    QList<qreal> lines;
    press(u"Ctrl+Home"_s);
    for (int i = 0; i < 3; ++i)
        press(GetParam().rightToLeft ? u"Left"_s : u"Right"_s);
    for (qreal last = -1, y = 0; y > last;) {
        last = caretAt(view.selection().position).y();
        lines.append(last);
        press(u"Down"_s);
        y = caretAt(view.selection().position).y();
    }
    EXPECT_EQ(lines.size(), view.layout().linesOf(view.store().blockAt(0)).size());
    // The last line's end was reached; from there up keeps to another x.
    press(u"Ctrl+End"_s);
    for (qsizetype i = lines.size() - 1; i >= 0; --i) {
        EXPECT_EQ(caretAt(view.selection().position).y(), lines[i]);
        press(u"Up"_s);
    }
}

TEST_P(RightToLeftTest, KeysGoWhereAModelOfTheLinesGoes)
{
    std::mt19937 random(4);
    std::optional<qreal> goal;
    const bool rightToLeft = GetParam().rightToLeft;
    const QStringList keys{u"Left"_s, u"Right"_s, u"Up"_s,   u"Down"_s,
                           u"Home"_s, u"End"_s,   u"Left"_s, u"Right"_s};
    view.setSelection(TextSelection::caret(0));
    for (int i = 0; i < 600; ++i) {
        const QString& key = keys[qsizetype(random() % unsigned(keys.size()))];
        const qsizetype from = view.selection().position;
        const QRectF before = shownCaret();
        press(key);
        const qsizetype to = view.selection().position;
        const bool isVertical = key == u"Up" || key == u"Down";
        const qreal x = goal && isVertical ? *goal : before.x();
        goal = isVertical ? std::optional(x) : std::nullopt;
        if (key == u"Left" || key == u"Right") {
            const bool forward = (key == u"Right") != rightToLeft;
            EXPECT_EQ(to, forward ? nextCharacter(view.store(), from)
                                  : previousCharacter(view.store(), from));
            continue;
        }
        const bool toEdge = key == u"Home" || key == u"End";
        if (toEdge) {
            EXPECT_NEAR(shownCaret().y(), before.y(), 0.01) << key.toStdString();
            continue;
        }
        const CaretSide side =
            caretAt(from).y() == before.y() ? CaretSide::lowerLine : CaretSide::upperLine;
        const LaidOutLine line = view.layout().lineAt(int(from), side);
        const auto next =
            key == u"Down" ? view.layout().lineBelow(line, x) : view.layout().lineAbove(line, x);
        if (next) {
            EXPECT_NEAR(shownCaret().x(), nearestIn(*next, x), 0.02) << from << " to " << to;
        }
    }
}

} // namespace
} // namespace orvane
