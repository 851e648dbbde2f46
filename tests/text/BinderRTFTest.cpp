// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/rtf/BinderRTF.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

struct TitleRow {
    const char* name;
    QByteArray rtf;
    const char16_t* title; // null where there is none
};

TEST(BinderRTF, PlainString)
{
    const TitleRow rows[] = {
        {"plain", R"({\rtf1\ansi\deff0{\fonttbl{\f0 Charis;}}\f0\fs24 Chapter One})",
         u"Chapter One"},
        {"trimmed", R"({\rtf1\ansi  \b  The \i End\par\par})", u"The End"},
        {"two lines", R"({\rtf1 One\par Two})", u"One\nTwo"},
        {"only blanks", R"({\rtf1\ansi \par\tab  })", nullptr},
        {"not RTF", "Chapter One", nullptr},
        {"empty", "", nullptr},
        {"cut short", R"({\rtf1\ansi{\fonttbl{\f0 Charis;}}Half a ti)", u"Half a ti"},
        {"information skipped", R"({\rtf1{\info{\title No}}{\*\unknown No}Yes})", u"Yes"},
    };
    for (const TitleRow& row : rows) {
        SCOPED_TRACE(row.name);
        const auto title = BinderRTF::plainString(row.rtf);
        ASSERT_EQ(title.has_value(), row.title != nullptr);
        if (title) {
            EXPECT_EQ(*title, QStringView(row.title).toString());
        }
    }
}

} // namespace
} // namespace orvane
