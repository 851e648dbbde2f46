// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/AppearanceTokens.h"

#include "appearance/AppearanceObserver.h"
#include "appearance/Contrast.h"
#include "appearance/Look.h"
#include "appearance/themes/AppearanceFields.h"
#include "appearance/themes/BundledThemes.h"
#include "platform/UserDefaults.h"

#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

#include <random>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

QString figure(const QColor& ink, const QColor& ground)
{
    return u"%1 on %2"_s.arg(ink.name(), ground.name());
}

void expectReadable(const QColor& ink, const QColor& ground, double minimum, const char* what)
{
    EXPECT_GE(contrastRatio(ink, ground), minimum)
        << what << ": " << qPrintable(figure(ink, ground));
}

void expectReadable(const SurfaceTokens& s)
{
    for (const QColor& ground :
         {s.ground, s.groundTop, s.groundBottom, s.field, s.control, s.hoveredRow}) {
        expectReadable(s.text, ground, textContrast, "text");
        expectReadable(s.textSecondary, ground, textContrast, "secondary text");
        expectReadable(s.link, ground, textContrast, "link");
        expectReadable(s.danger, ground, textContrast, "danger");
        expectReadable(s.icon, ground, iconContrast, "icon");
        expectReadable(s.accent, ground, iconContrast, "focus ring");
        expectReadable(s.warning, ground, iconContrast, "warning");
    }
    expectReadable(s.accent, s.selectedRow, iconContrast, "accent bar of the selected row");
    expectReadable(s.textOnSelectedRow, s.selectedRow, textContrast, "text, selected row");
    expectReadable(s.textSecondaryOnSelectedRow, s.selectedRow, textContrast,
                   "secondary text, selected row");
}

void expectReadable(const Tokens& t)
{
    for (int i = 0; i < surfaceCount; ++i) {
        SCOPED_TRACE("surface " + std::to_string(i));
        expectReadable(t.surfaces[i]);
    }
    for (const QColor& face : {t.accent, t.accentHovered})
        expectReadable(t.textOnAccent, face, textContrast, "text on accent");
    for (const QColor& face : {t.danger, t.dangerHovered})
        expectReadable(t.textOnDanger, face, textContrast, "text on danger");
    expectReadable(t.textOnSelection, t.selection, textContrast, "selected text");
    const QColor& page = t.on(Surface::Page).ground;
    expectReadable(t.caret, page, iconContrast, "caret");
    expectReadable(t.matchEdge, page, iconContrast, "edge of a match");
    expectReadable(t.markdown.punctuation, page, iconContrast, "punctuation");
    for (const QColor& ink : {t.markdown.code, t.markdown.link, t.markdown.blockquote,
                              t.markdown.listMarker, t.markdown.taskCheckbox})
        expectReadable(ink, page, textContrast, "Markdown");
}

AppearanceValues randomLook(std::mt19937& random)
{
    std::uniform_real_distribution<double> share(0, 1);
    AppearanceValues values;
    for (const AppearanceField& field : appearanceFields()) {
        const AppearanceFieldValue type = field.get(values);
        if (std::holds_alternative<bool>(type))
            field.set(values, share(random) < 0.7);
        else if (std::holds_alternative<double>(type))
            field.set(values, share(random) < 0.2 ? std::round(share(random)) : share(random));
    }
    return values;
}

} // namespace

TEST(AppearanceTokens, theBuiltInLooksReadEverywhere)
{
    const struct {
        const char* name;
        AppearanceValues values;
    } rows[] = {
        {"Signature dark", signatureBundle().dark.values},
        {"Signature light", signatureBundle().light.values},
        {"Google dark", googleWorkspaceBundle().dark.values},
        {"Google light", googleWorkspaceBundle().light.values},
        {"no key set", AppearanceValues{}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const Tokens t = tokensFor(row.values);
        expectReadable(t);
        expectReadable(t.pageText, t.on(Surface::Page).ground, textContrast, "writing");
    }
}

TEST(AppearanceTokens, anyLookReadsEverywhere)
{
    for (unsigned seed = 0; seed < 400; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        expectReadable(tokensFor(randomLook(random)));
        if (::testing::Test::HasFailure())
            return;
    }
}

TEST(AppearanceTokens, theSignatureLookIsAsDesigned)
{
    const Tokens dark = tokensFor(signatureBundle().dark.values);
    const Tokens light = tokensFor(signatureBundle().light.values);
    const struct {
        const char* name;
        QColor actual;
        const char* expected;
    } rows[] = {
        {"window", dark.on(Surface::Window).ground, "#07070c"},
        {"binder", dark.on(Surface::Binder).ground, "#0a0e16"},
        {"page", dark.on(Surface::Page).ground, "#0d1117"},
        {"text", dark.on(Surface::Binder).text, "#e6edf3"},
        {"writing", dark.pageText, "#e6edf3"},
        {"second line", dark.on(Surface::Binder).textSecondary, "#8a8a9a"},
        {"accent", dark.accent, "#00d4ff"},
        {"border", dark.on(Surface::Inspector).border, "#1e1e2e"},
        {"rail", dark.on(Surface::InspectorTopRail).ground, "#e6edf3"},
        {"rail's ink is near-black", dark.on(Surface::InspectorTopRail).text, "#0b0d10"},
        {"the toolbar is the Binder's", dark.on(Surface::Toolbar).ground, "#0a0e16"},
        {"light rail", light.on(Surface::BinderRail).ground, "#1a1a2e"},
        {"light rail's ink is white", light.on(Surface::BinderRail).icon, "#ffffff"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(row.actual.name(), QLatin1String(row.expected)) << row.name;
}

TEST(AppearanceTokens, glassShowsTheBackdrop)
{
    AppearanceValues values = signatureBundle().light.values;
    values.windowBackdropRed = values.windowBackdropGreen = values.windowBackdropBlue = 1;
    values.binderBackground = {true, 0, 0, 0, 0.5};
    const auto binder = [&] {
        return tokensFor(values).on(Surface::Binder);
    };
    EXPECT_EQ(binder().ground.name(), u"#7f7f7f"_s);
    EXPECT_EQ(binder().groundTop, binder().groundBottom);
    values.orvaneGlassBinder = true;
    values.orvaneGlassOpacityBinder = 0.5;
    EXPECT_EQ(binder().ground.name(), u"#bfbfbf"_s);
    values.windowBackdropGradient = true;
    EXPECT_LT(binder().groundBottom.lightness(), binder().ground.lightness());
    values.orvaneGlassEnabled = false;
    EXPECT_EQ(binder().ground.name(), u"#7f7f7f"_s);
}

TEST(AppearanceTokens, theWritingInkIsThePersonsOwnAndOnlyFlagged)
{
    AppearanceValues values = signatureBundle().light.values;
    values.editorText = {true, 0.9, 0.9, 0.9, 1};
    const Tokens t = tokensFor(values);
    EXPECT_EQ(t.pageText.name(), u"#e6e6e6"_s);
    EXPECT_GE(contrastRatio(t.on(Surface::Page).text, t.on(Surface::Page).ground), textContrast);

    const QList<InkContrast> contrasts = inkContrasts(values);
    const auto of = [&](AppearanceColor AppearanceValues::*ink) {
        for (const InkContrast& contrast : contrasts) {
            if (contrast.ink == ink)
                return contrast;
        }
        return InkContrast{};
    };
    EXPECT_NEAR(of(&AppearanceValues::editorText).ratio, 1.25, 0.01);
    EXPECT_FALSE(of(&AppearanceValues::editorText).madeReadable);
    EXPECT_NEAR(of(&AppearanceValues::binderText).ratio, 4.7, 0.05);
    EXPECT_FALSE(of(&AppearanceValues::binderText).madeReadable);
    EXPECT_NEAR(of(&AppearanceValues::editorChromeText).ratio, 3.74, 0.01);
    EXPECT_TRUE(of(&AppearanceValues::editorChromeText).madeReadable);
    EXPECT_EQ(of(&AppearanceValues::editorChromeText).surface, Surface::StatusStrip);
}

TEST(AppearanceObserver, makesTokensOnceForAllKeysOfATurn)
{
    UserDefaults defaults;
    signatureBundle().dark.applyToUserDefaults(defaults);
    Look look({});
    AppearanceObserver observer(defaults, look);
    EXPECT_EQ(look.tokens(), tokensFor(readAppearance(defaults)));
    EXPECT_EQ(look.tokens().on(Surface::Window).ground.name(), u"#07070c"_s);

    QSignalSpy changes(&look, &Look::changed);
    googleWorkspaceBundle().light.applyToUserDefaults(defaults);
    EXPECT_EQ(changes.size(), 0);
    QCoreApplication::processEvents();
    EXPECT_EQ(changes.size(), 1);
    EXPECT_EQ(look.tokens(), tokensFor(readAppearance(defaults)));
    EXPECT_EQ(look.tokens().on(Surface::Window).ground.name(), u"#f8f9fa"_s);

    defaults.set(u"settings.general.autoSaveSeconds"_s, 2.0);
    defaults.set(u"settings.appearance.export.pageMode"_s, u"whitePage"_s);
    QCoreApplication::processEvents();
    EXPECT_EQ(changes.size(), 1);
    defaults.remove(u"settings.appearance.windowBackdrop.red"_s);
    observer.update();
    EXPECT_EQ(changes.size(), 2);
}

} // namespace orvane
