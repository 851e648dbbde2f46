// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/Look.h"

#include "appearance/AppearanceTokens.h"
#include "appearance/Contrast.h"
#include "appearance/CoverColors.h"
#include "appearance/Drawing.h"
#include "appearance/WornLook.h"
#include "appearance/themes/BundledThemes.h"

#include <QApplication>
#include <QHelpEvent>
#include <QPainter>
#include <QPushButton>
#include <QStyleFactory>
#include <QToolButton>
#include <QToolTip>
#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

TEST(ContrastTest, FiguresOfTheStandard)
{
    EXPECT_DOUBLE_EQ(contrastRatio(Qt::black, Qt::white), 21);
    EXPECT_NEAR(contrastRatio(QColor(0x77, 0x77, 0x77), Qt::white), 4.48, 0.01);
    EXPECT_EQ(readableInk(Qt::black, Qt::white), QColor(Qt::black)) << "a good ink stays";
}

TEST(ContrastTest, ACoverOfAnyColourShowsItsPicture)
{
    const Tokens looks[] = {signatureDarkTokens(), tokensFor(signatureBundle().light.values)};
    QStringList colors{{}, u"#000000"_s, u"#FFFFFF"_s, u"#808080"_s, u"no colour"_s};
    for (const CoverChoice& choice : coverChoices())
        colors.append(choice.stored);
    for (const Tokens& look : looks) {
        for (const QString& color : std::as_const(colors)) {
            for (const auto& icon : {u"pencil"_s, u"book"_s, u"of a later version"_s}) {
                for (const auto state : {CoverState::Plain, CoverState::Hovered}) {
                    const CoverColors cover = coverColors(color, icon, look, state);
                    EXPECT_GE(contrastRatio(cover.ink, cover.washStart), iconContrast);
                    EXPECT_GE(contrastRatio(cover.ink, cover.washEnd), iconContrast);
                }
            }
        }
        EXPECT_EQ(coverColors({}, u"pencil"_s, look).ink, coverColors(u"blau"_s, {}, look).ink)
            << "writing, and what is unknown, has the accent";
        EXPECT_NE(coverColors({}, u"book"_s, look).ink, coverColors({}, u"compass"_s, look).ink);
    }
}

TEST(DrawingTest, APopupCoversEveryPixelThatItsPanelTouches)
{
    const QSize size(40, 30);
    QImage drawn(size, QImage::Format_ARGB32_Premultiplied);
    drawn.fill(Qt::transparent);
    QPainter painter(&drawn);
    drawPanel(painter, QRectF(QPointF(), size), popupRadius, Qt::white);
    painter.end();
    const QRegion region = panelRegion(size, popupRadius);
    int outside = 0;
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            const bool isCovered = region.contains(QPoint(x, y));
            outside += !isCovered;
            if (qAlpha(drawn.pixel(x, y)) > 8) {
                EXPECT_TRUE(isCovered) << x << ',' << y;
            }
        }
    }
    EXPECT_GT(outside, 40) << "the corners are cut";
}

/// An application that wears the look, and its plain style again afterwards.
class WornLookTest : public testing::Test {
protected:
    WornLookTest() { wear(m_look); }
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
    m_look.setTokens(other);
    EXPECT_EQ(drawn(button).pixelColor(face), QColor(200, 40, 40));
}

TEST_F(WornLookTest, SymbolsInAPictureOfTwiceThePixelsHaveThemAll)
{
    class Sign : public QWidget {
    protected:
        void paintEvent(QPaintEvent*) override
        {
            QPainter painter(this);
            drawSymbol(painter, rect(), Symbol::Keyboard, 16, Qt::black);
        }
    };
    Sign sign;
    sign.resize(16, 16);
    const auto canvas = [] {
        QImage image(32, 32, QImage::Format_RGB32);
        image.fill(Qt::white);
        return image;
    };
    QImage picture = canvas();
    picture.setDevicePixelRatio(2);
    sign.render(&picture, {}, {}, {});
    picture.setDevicePixelRatio(1);
    QImage direct = canvas();
    QPainter(&direct).drawPixmap(0, 0, symbolPixmap(Symbol::Keyboard, 32, Qt::black));
    EXPECT_EQ(picture, direct);
}

TEST_F(WornLookTest, EverySymbolHasADrawingInTheTokensColour)
{
    const QColor ink(10, 200, 30);
    for (int i = 0; i <= int(Symbol::Writing); ++i) {
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

TEST_F(WornLookTest, AToolTipIsMappedAnewWhereItMoves)
{
    QWidget window;
    window.resize(300, 100);
    QToolButton one(&window);
    QToolButton other(&window);
    one.setToolTip(u"One"_s);
    other.setToolTip(u"Other"_s);
    other.move(200, 60);
    window.show();
    const auto rest = [](QWidget& on) {
        QHelpEvent event(QEvent::ToolTip, QPoint(2, 2), on.mapToGlobal(QPoint(2, 2)));
        QApplication::sendEvent(&on, &event);
    };
    rest(one);
    QWidget* tip = nullptr;
    for (QWidget* each : QApplication::topLevelWidgets())
        tip = each->inherits("QTipLabel") ? each : tip;
    ASSERT_NE(tip, nullptr);
    struct : QObject {
        int shown = 0;
        bool eventFilter(QObject*, QEvent* event) override
        {
            shown += event->type() == QEvent::Show ? 1 : 0;
            return false;
        }
    } shows;
    tip->installEventFilter(&shows);
    const QPoint before = tip->pos();
    rest(other);
    EXPECT_NE(tip->pos(), before);
    EXPECT_TRUE(tip->isVisible());
    EXPECT_EQ(shows.shown, 1);
    QToolTip::hideText();
}

TEST_F(WornLookTest, FamiliesFallToTheirStandIns)
{
    EXPECT_EQ(QFontInfo(editorFont(u"Georgia"_s, 20)).family(), u"Charis SIL"_s);
    EXPECT_EQ(QFontInfo(editorFont(u"Menlo"_s, 13)).family(), u"JetBrains Mono"_s);
    EXPECT_EQ(QFontInfo(editorFont(u"Palatino"_s, 13)).family(), u"Charis SIL"_s);
    EXPECT_TRUE(QFontInfo(editorFont(u"Courier New"_s, 13)).fixedPitch());
    EXPECT_EQ(QFontInfo(editorFont(u"Inter"_s, 13)).family(), u"Inter"_s);
    EXPECT_EQ(QFontInfo(interfaceFont(TextStyle::Body)).family(), u"Inter"_s);
}

} // namespace
} // namespace orvane
