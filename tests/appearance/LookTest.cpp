// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/Look.h"

#include "appearance/Contrast.h"
#include "appearance/OrvaneStyle.h"

#include <QApplication>
#include <QPainter>
#include <QPushButton>
#include <QStyleFactory>
#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

Tokens ofColors(const QColor& ground, const QColor& ink, const QColor& accent)
{
    Tokens t = signatureDarkTokens();
    t.window = t.pane = t.page = t.card = t.band = t.field = t.control = ground;
    t.text = t.textSecondary = ink;
    t.rail = t.accent = t.danger = accent;
    return withDerivedInks(t);
}

TEST(TokensTest, InksAreReadableOnTheirSurfaces)
{
    const struct {
        const char* name;
        Tokens tokens;
    } looks[] = {
        {"Signature dark", signatureDarkTokens()},
        {"yellow on white, pale accent", ofColors(Qt::white, Qt::yellow, QColor(250, 240, 200))},
        {"mid grey on mid grey", ofColors(QColor(128, 128, 128), QColor(120, 120, 120), Qt::gray)},
        {"red on green", ofColors(Qt::green, Qt::red, Qt::blue)},
    };
    using Ink = QColor Tokens::*;
    const struct {
        const char* name;
        Ink ink;
        Ink surface;
        double least;
    } pairs[] = {
        {"text on window", &Tokens::text, &Tokens::window, textContrast},
        {"text on pane", &Tokens::text, &Tokens::pane, textContrast},
        {"text on page", &Tokens::text, &Tokens::page, textContrast},
        {"text on card", &Tokens::text, &Tokens::card, textContrast},
        {"text on a button", &Tokens::text, &Tokens::control, textContrast},
        {"text in a field", &Tokens::text, &Tokens::field, textContrast},
        {"second line on pane", &Tokens::textSecondary, &Tokens::pane, textContrast},
        {"second line on card", &Tokens::textSecondary, &Tokens::card, textContrast},
        {"placeholder in a field", &Tokens::textSecondary, &Tokens::field, textContrast},
        {"selected row", &Tokens::textOnSelectedRow, &Tokens::selectedRow, textContrast},
        {"second line, selected", &Tokens::textSecondaryOnSelectedRow, &Tokens::selectedRow,
         textContrast},
        {"status strip", &Tokens::textSecondaryOnBand, &Tokens::band, textContrast},
        {"trouble in the strip", &Tokens::dangerOnBand, &Tokens::band, textContrast},
        {"trouble on a card", &Tokens::dangerText, &Tokens::card, textContrast},
        {"rail", &Tokens::textOnRail, &Tokens::rail, textContrast},
        {"rail's placeholder", &Tokens::textSecondaryOnRail, &Tokens::rail, textContrast},
        {"accent button", &Tokens::textOnAccent, &Tokens::accent, textContrast},
        {"danger button", &Tokens::textOnDanger, &Tokens::danger, textContrast},
        {"icon on pane", &Tokens::icon, &Tokens::pane, iconContrast},
        {"accent icon and ring on window", &Tokens::accentIcon, &Tokens::window, iconContrast},
        {"accent icon and ring on card", &Tokens::accentIcon, &Tokens::card, iconContrast},
    };
    for (const auto& look : looks) {
        for (const auto& pair : pairs)
            EXPECT_GE(contrastRatio(look.tokens.*pair.ink, look.tokens.*pair.surface), pair.least)
                << look.name << ": " << pair.name;
    }
}

TEST(ContrastTest, FiguresOfTheStandard)
{
    EXPECT_DOUBLE_EQ(contrastRatio(Qt::black, Qt::white), 21);
    EXPECT_NEAR(contrastRatio(QColor(0x77, 0x77, 0x77), Qt::white), 4.48, 0.01);
    EXPECT_EQ(readableInk(Qt::black, Qt::white), QColor(Qt::black)) << "a good ink stays";
}

/// An application that wears the look, and its plain style again afterwards.
class WornLookTest : public testing::Test {
protected:
    WornLookTest() { m_look.wear(); }
    ~WornLookTest() override { QApplication::setStyle(QStyleFactory::create(u"Fusion"_s)); }

    static QImage drawn(QWidget& widget)
    {
        return widget.grab().toImage().convertToFormat(QImage::Format_RGB32);
    }

    Look m_look{signatureDarkTokens()};
};

TEST_F(WornLookTest, OtherTokensRestyleWhatIsOpen)
{
    QPushButton button(u"Create"_s);
    button.setDefault(true);
    button.resize(button.sizeHint());
    const QPoint face(button.width() / 2, 3);
    EXPECT_EQ(drawn(button).pixelColor(face), m_look.tokens().accent);
    Tokens other = m_look.tokens();
    other.accent = QColor(200, 40, 40);
    m_look.setTokens(withDerivedInks(other));
    EXPECT_EQ(drawn(button).pixelColor(face), QColor(200, 40, 40));
}

TEST_F(WornLookTest, EverySymbolHasADrawingInTheTokensColour)
{
    const QColor ink(10, 200, 30);
    for (int i = 0; i <= int(Symbol::Warning); ++i) {
        const QImage image = symbolPixmap(Symbol(i), 32, ink).toImage();
        bool hasInk = false;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QColor pixel = image.pixelColor(x, y);
                hasInk |= pixel.alpha() > 200;
                if (pixel.alpha() == 255) {
                    ASSERT_EQ(pixel, ink) << "symbol " << i;
                }
            }
        }
        EXPECT_TRUE(hasInk) << "symbol " << i;
    }
}

TEST_F(WornLookTest, FamiliesFallToTheirStandIns)
{
    EXPECT_EQ(QFontInfo(editorFont(u"Georgia"_s, 20)).family(), u"Charis SIL"_s);
    EXPECT_EQ(QFontInfo(editorFont(u"Menlo"_s, 13)).family(), u"JetBrains Mono"_s);
    EXPECT_EQ(QFontInfo(interfaceFont(TextStyle::Body)).family(), u"Inter"_s);
}

} // namespace
} // namespace orvane
