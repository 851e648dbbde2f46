// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/value/RgbaColor.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

struct HexRow {
    const char* name;
    const char16_t* text;
    const char16_t* canonical; // null where the text must be refused
};

TEST(RgbaColor, ReadsAndWritesHex)
{
    const HexRow rows[] = {
        {"six digits", u"#00D4FF", u"#00D4FF"},
        {"lower case, no mark", u"00d4ff", u"#00D4FF"},
        {"short form", u"#0af", u"#00AAFF"},
        {"with alpha", u"#11223380", u"#11223380"},
        {"opaque alpha", u"#112233FF", u"#112233"},
        {"too short", u"#12", nullptr},
        {"not hex", u"#12345G", nullptr},
        {"signs", u"#+1-2+3", nullptr},
        {"empty", u"", nullptr},
    };
    for (const HexRow& row : rows) {
        SCOPED_TRACE(row.name);
        const auto color = rgbaFromHex(row.text);
        ASSERT_EQ(color.has_value(), row.canonical != nullptr);
        if (color) {
            EXPECT_EQ(toHex(*color), QStringView(row.canonical).toString());
        }
    }
}

} // namespace
} // namespace orvane
