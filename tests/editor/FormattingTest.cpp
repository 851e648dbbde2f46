// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/formatting/EditorHighlightStrength.h"
#include "editor/formatting/EditorParagraphStyleRole.h"
#include "editor/formatting/LetterCase.h"
#include "editor/view/EditorSettings.h"

#include <QColor>
#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;
using Role = EditorParagraphStyleRole;

TEST(ParagraphRole, IsToldFromTheSize)
{
    struct Row {
        const char* name;
        double size;
        Role role;
    };
    const Row rows[] = {
        {"the body's own size", 16, Role::body},
        {"a point less", 15, Role::body},
        {"small print", 9, Role::body},
        {"the size of a heading", 25, Role::heading3},
        {"a point beside a heading", 31, Role::heading1},
        {"between body and the smallest heading", 17.5, Role::heading6},
        {"no heading's, though it stands out", 23.4, Role::heading4},
        {"larger than any heading", 60, Role::heading1},
    };
    const UserDefaults defaults;
    for (const Row& row : rows)
        EXPECT_EQ(role(row.size, 16, defaults), row.role) << row.name;
    UserDefaults large;
    editorFontSizeSetting.write(large, 30);
    for (const Role heading : headingCases)
        sizeSetting(heading).write(large, 60);
    EXPECT_EQ(role(38.9, 30, large), Role::body) << "it stands out by less than 1.3 times";
    EXPECT_EQ(role(39.1, 30, large), Role::heading1);
}

TEST(ParagraphRole, TakesItsSizeFromTheSettings)
{
    UserDefaults defaults;
    headingTitleSizeSetting.write(defaults, 40);
    heading1SizeSetting.write(defaults, 0);
    heading2SizeSetting.write(defaults, -3);
    EXPECT_EQ(configuredSize(Role::heading1, defaults), 40);
    EXPECT_EQ(configuredSize(Role::heading2, defaults), 28) << "0 counts as not stored";
    EXPECT_EQ(configuredSize(Role::heading3, defaults), 25);
    for (Role each : {Role::body, Role::heading1, Role::heading6})
        EXPECT_EQ(fromRawValue<EditorParagraphStyleRole>(rawValue(each)), each);
    EXPECT_EQ(rawValue(Role::heading4), u"Heading 4"_s);
    EXPECT_FALSE(fromRawValue<EditorParagraphStyleRole>(u"Heading 7"));
}

TEST(Highlight, IsMadeFitToStandBehindText)
{
    struct Row {
        const char* name;
        RgbaColor color;
        EditorHighlightStrength strength;
        RgbaColor expected;
    };
    using enum EditorHighlightStrength;
    const Row rows[] = {
        {"glaring and opaque", {1, 1, 0, 1}, standard, {1, 1, 0.12, 0.34}},
        {"too faint", {1, 0.5, 0.5, 0.01}, subtle, {1, 0.5, 0.5, 0.16}},
        {"within all bands", {0.5, 1, 0.75, 0.3}, strong, {0.5, 1, 0.75, 0.3}},
        {"dark", {0, 0, 0.4, 1}, strong, {0.0912, 0.0912, 0.76, 0.44}},
        {"nearly grey", {0.5, 0.5, 0.49, 0.2}, standard, {0.76, 0.76, 0.7448, 0.2}},
        {"grey", {0.8, 0.8, 0.8, 0.2}, standard, {0.8, 0.8, 0.8, 0.2}},
        {"black", {0, 0, 0, 1}, subtle, {0, 0, 0, 0.24}},
    };
    for (const Row& row : rows) {
        const RgbaColor fit = normalizeHighlight(row.color, row.strength);
        EXPECT_NEAR(fit.red, row.expected.red, 1e-9) << row.name;
        EXPECT_NEAR(fit.green, row.expected.green, 1e-9) << row.name;
        EXPECT_NEAR(fit.blue, row.expected.blue, 1e-9) << row.name;
        EXPECT_NEAR(fit.alpha, row.expected.alpha, 1e-9) << row.name;
    }
    EXPECT_EQ(editorHighlightStrength(u"Strong"), strong);
    EXPECT_EQ(editorHighlightStrength(u"subtle"), subtle);
    EXPECT_EQ(editorHighlightStrength(u"loud"), standard);
}

TEST(Highlight, KeepsTheHueOfEveryColor)
{
    for (int hue = 0; hue < 360; hue += 7) {
        const QColor color = QColor::fromHsv(hue, 120, 210);
        const RgbaColor fit =
            normalizeHighlight(RgbaColor::fromQColor(color), EditorHighlightStrength::standard);
        EXPECT_NEAR(fit.toQColor().hsvHue(), hue, 1);
        EXPECT_NEAR(fit.toQColor().value(), 210, 1);
    }
}

TEST(LetterCases, FollowUnicodeAndTheLanguage)
{
    struct Row {
        const char* name;
        QStringView text;
        LetterCase letterCase;
        QStringView expected;
        const char* language = "en_US";
    };
    using enum LetterCase;
    const Row rows[] = {
        {"one letter becomes two", u"Straße", upper, u"STRASSE"},
        {"a ligature falls apart", u"ﬁsh and ﬂesh", upper, u"FISH AND FLESH"},
        {"the sigma at a word's end", u"ΟΔΥΣΣΕΥΣ", lower, u"οδυσσευς"},
        {"the dotted i of Turkish", u"istanbul", upper, u"İSTANBUL", "tr_TR"},
        {"the dotless i of Turkish", u"ISPARTA", lower, u"ısparta", "tr_TR"},
        {"letters beyond the first plane", u"𐐨𐐩", upper, u"𐐀𐐁"},
        {"words", u"the harbour  ledger", capitalized, u"The Harbour  Ledger"},
        {"what was large", u"LOW wATER", capitalized, u"Low Water"},
        {"an apostrophe", u"don’t say o'clock", capitalized, u"Don’t Say O'clock"},
        {"a hyphen", u"well-known", capitalized, u"Well-Known"},
        {"a digraph", u"ǆep", capitalized, u"ǅep"},
        {"a ligature before letters", u"ﬁsh", capitalized, u"Fish"},
        {"marks on a letter", u"e\u0301tude", capitalized, u"E\u0301tude"},
        {"a letter beyond the first plane", u"𐐨𐐨", capitalized, u"𐐀𐐨"},
        {"the sigma at the end of a capitalized word", u"ΛΟΓΟΣ", capitalized, u"Λογος"},
        {"no letters", u"12 — 3!", capitalized, u"12 — 3!"},
        {"nothing", u"", capitalized, u""},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(inCase(row.text.toString(), row.letterCase, QLocale(QLatin1String(row.language))),
                  row.expected.toString())
            << row.name;
    }
}

} // namespace
} // namespace orvane
