// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/Typography.h"

#include <QFontMetricsF>
#include <QGlyphRun>
#include <QRawFont>
#include <QTextLayout>
#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

/// The fonts and glyphs that show `text` in one line.
QList<QGlyphRun> glyphsOf(const QString& text, const QFont& font)
{
    QTextLayout layout(text, font);
    layout.beginLayout();
    layout.createLine().setLineWidth(10'000);
    layout.endLayout();
    return layout.glyphRuns();
}

TEST(Typography, OtherScriptsKeepTheirFontsOnADarkGround)
{
    struct Row {
        const char* name;
        QString text;
    };
    const Row rows[] = {{"hebrew", u"\u05e9\u05dc\u05d5\u05dd"_s},
                        {"arabic", u"\u0645\u0631\u062d\u0628\u0627"_s},
                        {"chinese", u"\u4f60\u597d"_s}};
    for (const TextStyle style : {TextStyle::Body, TextStyle::BodyMedium, TextStyle::BodyStrong}) {
        const QFont light = interfaceFont(style, InkPolarity::LightOnDark);
        const QFont dark = interfaceFont(style, InkPolarity::DarkOnLight);
        for (const Row& row : rows) {
            const QList<QGlyphRun> onDark = glyphsOf(row.text, light);
            const QList<QGlyphRun> onLight = glyphsOf(row.text, dark);
            ASSERT_EQ(onDark.size(), onLight.size()) << row.name;
            for (qsizetype i = 0; i < onDark.size(); ++i) {
                const QRawFont font = onDark[i].rawFont();
                if (onDark[i].glyphIndexes().contains(0))
                    continue; // no font here has such letters
                EXPECT_EQ(font.familyName(), onLight[i].rawFont().familyName()) << row.name;
                EXPECT_EQ(font.styleName(), onLight[i].rawFont().styleName()) << row.name;
                EXPECT_EQ(onDark[i].glyphIndexes(), onLight[i].glyphIndexes()) << row.name;
            }
        }
    }
}

TEST(Typography, ATextIsCutWhereItDoesNotFit)
{
    const QFont font = interfaceFont(TextStyle::Body);
    const QString long_ = u"Everything in the house tasted of it by evening"_s;
    struct Row {
        const char* name;
        QString text;
        int width;
        bool isCut;
    };
    const Row rows[] = {
        {"fits", u"Salt"_s, 100, false},
        {"too long", long_, 120, true},
        {"hardly any room", long_, 16, true},
        {"no room", long_, 0, true},
        {"blanks and newlines", u"  a \n  b  "_s, 100, false},
        {"accents of their own", u"e\u0301"_s.repeated(60), 120, true},
        {"a character beyond the font", u"\U00013080 "_s + long_, 120, true},
        {"empty", QString(), 100, false},
    };
    for (const Row& row : rows) {
        const QString shown = fitted(row.text, font, row.width);
        const QString whole = row.text.simplified();
        if (!row.isCut) {
            EXPECT_EQ(shown, whole) << row.name;
            continue;
        }
        ASSERT_TRUE(shown.endsWith(u'\u2026') || shown.isEmpty()) << row.name;
        const QString kept = shown.chopped(shown.isEmpty() ? 0 : 1);
        EXPECT_TRUE(whole.startsWith(kept)) << row.name;
        EXPECT_FALSE(whole.at(kept.size()).isMark()) << row.name << ": an accent lost its letter";
        // Kerning hardly makes a text wider than its glyphs are.
        const double widest =
            std::max<double>(row.width, QFontMetricsF(font).horizontalAdvance(u"\u2026"_s)) + 1;
        EXPECT_LE(QFontMetricsF(font).horizontalAdvance(shown), widest) << row.name;
    }
    EXPECT_GT(fitted(long_, font, 120).size(), 10) << "what fits is shown";
    // Widgets that are as wide as their text show all of it, whatever kerning does.
    for (const QString& title : {u"Tidewater, a novel"_s, u"AVATAR To WAY"_s, long_})
        EXPECT_EQ(fitted(title, font, qCeil(QFontMetricsF(font).horizontalAdvance(title))), title);
}

} // namespace
} // namespace orvane
