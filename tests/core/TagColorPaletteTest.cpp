// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/tags/TagColorPalette.h"

#include <QSet>
#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

TEST(TagColorPaletteTest, AutoColorsStayAsTheyAreAndSpread)
{
    // Frozen: another hash would recolour every notebook.
    EXPECT_EQ(TagColorPalette::autoColor(u"witness"_s), TagColorPalette::colors.at(4));
    EXPECT_EQ(TagColorPalette::autoColor(u"tide"_s), TagColorPalette::colors.at(5));
    EXPECT_EQ(TagColorPalette::autoColor(u"ÉTUDE"_s), TagColorPalette::autoColor(u"étude"_s));
    QSet<QString> used;
    for (int i = 0; i < 200; ++i)
        used.insert(toHex(TagColorPalette::autoColor(u"tag %1"_s.arg(i))));
    EXPECT_EQ(used.size(), qsizetype(TagColorPalette::colors.size()));
}

TEST(TagColorPaletteTest, AChosenColourComesFirst)
{
    TagSettings settings;
    settings.colorHexes = {{u"witness"_s, u"#12AB34"_s}, {u"tide"_s, u"blue-ish"_s}};
    EXPECT_EQ(toHex(tagColor(settings, u"Witness"_s)), u"#12AB34"_s);
    EXPECT_EQ(tagColor(settings, u"tide"_s), TagColorPalette::autoColor(u"tide"_s));
    EXPECT_EQ(tagColor(settings, u"salt"_s), TagColorPalette::autoColor(u"salt"_s));
}

} // namespace
} // namespace orvane
