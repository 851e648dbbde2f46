// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/RandomText.h"
#include "text/TextCompare.h"
#include "text/rtf/OrvaneWorkspaceRTF.h"
#include "text/rtf/RtfReader.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

std::string firstDifference(const AttributedString& a, const AttributedString& b)
{
    if (a.text() != b.text())
        return u"text \"%1\" and \"%2\""_s.arg(a.text(), b.text()).toStdString();
    for (qsizetype i = 0; i <= a.length(); ++i) {
        if (!(a.paragraphStyle(i) == b.paragraphStyle(i)))
            return "paragraph style at " + std::to_string(i);
        if (i < a.length() && !(a.characterStyle(i) == b.characterStyle(i)))
            return "character style at " + std::to_string(i);
    }
    return {};
}

TEST(Rtf, KeepsWhatItCanExpress)
{
    for (unsigned seed = 1; seed <= 400; ++seed) {
        RandomText random(seed, RandomText::Attributes::rtf);
        AttributedString text = random.document();
        // Within a paragraph a page break becomes a paragraph of its own.
        for (qsizetype at = -1; (at = text.text().indexOf(u'\f', at + 1)) >= 0;) {
            if (text.paragraphRange(at).length > 2)
                text.remove({at--, 1});
        }
        const auto rtf = OrvaneWorkspaceRTF::data(text, {});
        ASSERT_EQ(rtf.has_value(), !text.isEmpty());
        if (!rtf)
            continue;
        auto read = OrvaneWorkspaceRTF::read(*rtf);
        ASSERT_TRUE(read.has_value());
        forgetIdentities(read->text);
        forgetIdentities(text);
        ASSERT_EQ(firstDifference(read->text, text), std::string()) << seed << "\n"
                                                                    << rtf->toStdString();
    }
}

struct TextRow {
    const char* name;
    QByteArray rtf;
    const char16_t* text;
};

TEST(Rtf, ReadsText)
{
    const TextRow rows[] = {
        {"Western bytes", R"({\rtf1\ansi\ansicpg1252 Gr\'f6\'dfe \'96 \'80})", u"Größe – €"},
        {"font's charset", R"({\rtf1{\fonttbl{\f0 A;}{\f1\fcharset204 B;}}\f0 \'e0\f1 \'e0})",
         u"àа"},
        {"font's code page", R"({\rtf1{\fonttbl{\f0\cpg1253 A;}}\f0 \'e1})", u"α"},
        {"two-byte code page", R"({\rtf1{\fonttbl{\f0\fcharset128 A;}}\f0 \'8a\'bf\'83A})",
         u"漢ア"},
        {"document's code page", R"({\rtf1\ansi\ansicpg1251 \'cf})", u"П"},
        {"Mac", R"({\rtf1\mac \'8a})", u"ä"},
        {"list bullet of a symbol font", R"({\rtf1{\fonttbl{\f3\fcharset2 Symbol;}}\f3 \'b7})",
         u"•"},
        {"Unicode with a fallback", R"({\rtf1 \u8364 ?x\u-10179?\u-8704?})", u"€x\U0001F600"},
        {"fallbacks counted", R"({\rtf1\uc2 \u8364 ab\uc0 \u8364 c{\uc1 \u8364 d}})", u"€€c€"},
        {"fallback is a byte or a word", R"({\rtf1 \u8211\'96-\u8212\emdash -})", u"–-—-"},
        {"fallback ends with the group", R"({\rtf1 {\u8364 }x})", u"€x"},
        {"Unicode alternative", R"({\rtf1 {\upr{old}{\*\ud{\u8364 ?}}}})", u"€"},
        {"special words", R"({\rtf1 \lquote a\rquote\~\endash\_\-\bullet\tab\line\{\\\}})",
         u"‘a’\u00A0–\u2011\u00AD•\t\u2028{\\}"},
        {"page break", R"({\rtf1 a\par\page\par b})", u"a\n\u000C\nb"},
        {"page break within a paragraph", R"({\rtf1 a\page b\page})", u"a\n\u000C\nb\n\u000C"},
        {"page break before a paragraph", R"({\rtf1\pagebb a\par b\par\pard c\par})",
         u"a\n\u000C\nb\nc\n"},
        {"backslash at the end of a line", "{\\rtf1 a\\\nb\\\r\nc}", u"a\nb\nc"},
        {"line ends mean nothing", "{\\rtf1 a\r\nb\nc}", u"abc"},
        {"hidden text", R"({\rtf1 a{\v b}c\v d\v0 e})", u"ace"},
        {"unknown destination", R"({\rtf1 a{\*\secret b{c}}d{\footnote e}f})", u"ad1f\n1. e"},
        {"unknown words", R"({\rtf1\frobnicate12 a\quux b})", u"ab"},
        {"binary data with braces", "{\\rtf1 a{\\*\\blob\\bin4 }}{{}b}", u"ab"},
        {"field", R"({\rtf1 {\field{\*\fldinst PAGE}{\fldrslt 7}}})", u"7"},
        {"list markers are text", R"({\rtf1\pard\ls1\ilvl1{\listtext\tab 2.\tab}item\par})",
         u"\t2. item\n"},
        {"more closed than opened", R"({\rtf1 a}}}b)", u"a"},
        {"deep groups", "{\\rtf1 a" + QByteArray(5000, '{') + "b" + QByteArray(5000, '}') + "c}",
         u"abc"},
        {"characters that mean something else", R"({\rtf1 a\u8233?b\u-4?c\'00d\'0ae})",
         u"a\u2028bcd\u2028e"},
        {"picture of another kind", R"({\rtf1 a{\pict\wmetafile8 0102}b})",
         u"a[Picture left out: metafile]b"},
    };
    for (const TextRow& row : rows) {
        const auto content = readRtf(row.rtf);
        ASSERT_TRUE(content.has_value()) << row.name;
        EXPECT_EQ(content->text.text(), QStringView(row.text).toString()) << row.name;
    }
}

struct LookRow {
    const char* name;
    QByteArray rtf; // of the first character
    std::function<void(CharacterStyle&, ParagraphStyle&)> look;
};

TEST(Rtf, ReadsLooks)
{
    const RgbaColor red{1, 0, 0, 1};
    const LookRow rows[] = {
        {"plain ends all", R"(\b\i\ul\cf1\plain x)",
         [](auto&, auto&) {
         }},
        {"bold off", R"(\b a\b0)",
         [](auto& c, auto&) {
             c.font->weight = 700;
         }},
        {"half points", R"(\fs25 x)",
         [](auto& c, auto&) {
             c.font->size = 12.5;
         }},
        {"colours", R"(\cf1\highlight1 x)",
         [&](auto& c, auto&) {
             c.foreground = c.background = red;
         }},
        {"group ends its look", R"({\b}x)",
         [](auto&, auto&) {
         }},
        {"wavy and double", R"(\ulwave\striked1 x)",
         [](auto& c, auto&) {
             c.underline = TextLine::wavy;
             c.strikethrough = TextLine::doubled;
         }},
        {"link", R"({\field{\*\fldinst {HYPERLINK "https://a.b/" }}{\fldrslt x}})",
         [](auto& c, auto&) {
             c.link = u"https://a.b/"_s;
         }},
        {"link into a document", R"({\field{\*\fldinst HYPERLINK \\l "top"}{\fldrslt x}})",
         [](auto& c, auto&) {
             c.link = u"#top"_s;
         }},
        {"link that opens a window",
         R"({\field{\*\fldinst HYPERLINK \\n "https://a.b/"}{\fldrslt x}})",
         [](auto& c, auto&) {
             c.link = u"https://a.b/"_s;
         }},
        {"indents", R"(\li720\fi-360\ri240 x)",
         [](auto&, auto& p) {
             p.headIndent = 36;
             p.firstLineHeadIndent = 18;
             p.tailIndent = -12;
         }},
        {"paragraph reset", R"(\li720\qc\pard\qr x)",
         [](auto&, auto& p) {
             p.alignment = TextAlignment::right;
         }},
        {"tabs in order", R"(\tx720\tqr\tx360 x)",
         [](auto&, auto& p) {
             p.tabStops = {{18, TabAlignment::right}, {36, TabAlignment::left}};
         }},
        {"spacing", R"(\sb120\sa240\sl360\slmult1 x)",
         [](auto&, auto& p) {
             p.spacingBefore = 6;
             p.spacingAfter = 12;
             p.lineHeightMultiple = 1.5;
         }},
        {"exact line height", R"(\sl-300\slmult0 x)",
         [](auto&, auto& p) {
             p.minimumLineHeight = p.maximumLineHeight = 15;
         }},
        {"paragraph's background", R"(\cbpat1 x)",
         [&](auto&, auto& p) {
             p.background = red;
         }},
    };
    for (const LookRow& row : rows) {
        const auto content =
            readRtf(R"({\rtf1{\fonttbl{\f0 Charis;}}{\colortbl;\red255\green0\blue0;}\f0 )" +
                    row.rtf + "}");
        ASSERT_TRUE(content.has_value() && !content->text.isEmpty()) << row.name;
        CharacterStyle characters;
        characters.font = TextFont{u"Charis"_s};
        ParagraphStyle paragraph;
        row.look(characters, paragraph);
        EXPECT_TRUE(content->text.characterStyle(0) == characters) << row.name;
        EXPECT_TRUE(content->text.paragraphStyle(0) == paragraph) << row.name;
    }
}

TEST(Rtf, ReadsTables)
{
    struct Row {
        const char* name;
        QByteArray rtf;
        QStringList cells;
    };
    const Row rows[] = {
        {"two rows",
         R"(\trowd\cellx3000\cellx4000\intbl a\cell b\cell\row\intbl c\cell d\cell\row)",
         {u"0,0 1×1 75 a"_s, u"0,1 1×1 25 b"_s, u"1,0 1×1 75 c"_s, u"1,1 1×1 25 d"_s}},
        {"a wide cell",
         R"(\trowd\cellx1000\cellx2000\intbl a\cell b\cell\row\trowd\cellx2000\intbl c\cell\row)",
         {u"0,0 1×1 50 a"_s, u"0,1 1×1 50 b"_s, u"1,0 1×2 100 c"_s}},
        {"merged across",
         R"(\trowd\clmgf\cellx1000\clmrg\cellx2000\cellx3000\intbl a\cell\cell c\cell\row)",
         {u"0,0 1×2 67 a"_s, u"0,2 1×1 33 c"_s}},
        {"merged down",
         R"(\trowd\clvmgf\cellx1000\cellx2000\intbl a\cell b\cell\row)"
         R"(\trowd\clvmrg\cellx1000\cellx2000\intbl\cell d\cell\row)",
         {u"0,0 2×1 50 a"_s, u"0,1 1×1 50 b"_s, u"1,1 1×1 50 d"_s}},
        {"edges that are rounded",
         R"(\trowd\cellx1000\cellx2000\intbl a\cell b\cell\row\trowd\cellx1005\cellx1995 c\cell d\cell\row)",
         {u"0,0 1×1 50 a"_s, u"0,1 1×1 50 b"_s, u"1,0 1×1 50 c"_s, u"1,1 1×1 50 d"_s}},
        {"paragraphs in a cell",
         R"(\trowd\cellx1000\pard\intbl a\par b\cell\row)",
         {u"0,0 1×1 100 a\u2028b"_s}},
        {"more cells than defined",
         R"(\trowd\cellx1000\intbl a\cell b\cell\row)",
         {u"0,0 1×1 100 a"_s, u"0,1 1×1 0 b"_s}},
        {"edges beyond every page",
         R"(\trowd\trleft-2147483648\cellx2147483647\intbl a\cell\row)",
         {u"0,0 1×1 100 a"_s}},
        {"row left open", R"(\trowd\cellx1000\intbl a\cell)", {u"0,0 1×1 0 a"_s}},
        {"text between makes two tables",
         R"(\trowd\cellx1000\intbl a\cell\row\pard text\par\trowd\cellx1000\intbl b\cell\row)",
         {u"0,0 1×1 100 a"_s, u"0,0 1×1 100 b"_s}},
    };
    for (const Row& row : rows) {
        const auto content = readRtf(R"({\rtf1 before\par )" + row.rtf + R"(\pard after})");
        ASSERT_TRUE(content.has_value()) << row.name;
        EXPECT_EQ(describeCells(content->text), row.cells) << row.name;
        EXPECT_TRUE(content->text.text().endsWith(u"\nafter")) << row.name;
    }
}

TEST(Rtf, KeepsMergedCells)
{
    AttributedString text;
    const TextTable table{QUuid::createUuidV5(QUuid(), u"t"_s), 3};
    const auto cell = [&](int row, int column, int rows, int columns, QStringView words) {
        ParagraphStyle style;
        style.cell = TableCellBlock{.table = table, .row = row, .column = column};
        style.cell->rowSpan = rows;
        style.cell->columnSpan = columns;
        style.cell->look = CellLook{.widthPercent = columns == 1 ? 33.0 : 67.0};
        text.append(words, {}, style);
    };
    cell(0, 0, 2, 2, u"big\n");
    cell(0, 2, 1, 1, u"right\n");
    cell(1, 2, 2, 1, u"tall\n");
    cell(2, 0, 1, 1, u"x\n");
    cell(2, 1, 1, 1, u"y\n");
    text.append(u"end", {});
    const auto read = OrvaneWorkspaceRTF::read(*OrvaneWorkspaceRTF::data(text, {}));
    ASSERT_TRUE(read.has_value());
    EXPECT_EQ(describeCells(read->text), describeCells(text));
}

TEST(Rtf, KeepsThePageBackground)
{
    const auto rtf =
        OrvaneWorkspaceRTF::data(AttributedString(u"x"_s), {}, rgbaFromHex(u"#12AB34"));
    ASSERT_TRUE(rtf.has_value());
    const auto content = readRtf(*rtf);
    ASSERT_TRUE(content && content->backgroundColor);
    EXPECT_EQ(toHex(*content->backgroundColor), u"#12AB34");
    EXPECT_EQ(content->text.text(), u"x");
}

} // namespace
} // namespace orvane
