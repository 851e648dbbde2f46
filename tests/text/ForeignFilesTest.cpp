// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/TextCompare.h"
#include "text/archive/TextArchive.h"
#include "text/html/HtmlReader.h"
#include "text/html/HtmlWriter.h"
#include "text/rtf/OrvaneWorkspaceRTF.h"
#include "text/rtf/RtfReader.h"
#include "text/value/LinkTargets.h"

#include <QFile>
#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

QByteArray contentsOf(const QString& name)
{
    QFile file(QStringLiteral(ORVANE_TEST_DATA "/") + name);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
    return file.readAll();
}

/// A file with what other programs write, and the runs that it is read as.
struct FileRow {
    const char* name;
    QStringList runs;
};

std::string listed(const QStringList& runs)
{
    return runs.join(u'\n').replace(u'\u2028', u'^').toStdString();
}

TEST(ForeignFiles, RtfIsReadAsItIsMeant)
{
    const FileRow rows[] = {
        {"color-table-begins-with-a-color",
         {u"|plain none "_s, u"#FF0000|red "_s, u"#000000|named\n"_s, u"cell|cell\n"_s, u"|end"_s}},
        {"link-with-data", {u"->https://example.org/a|link"_s, u"| end"_s}},
        {"font-with-alternative", {u"|one "_s, u"Gentium|two"_s}},
        {"charset-0-in-a-cyrillic-document", {u"|café й"_s}},
        {"ignorable-character-style", {u"|one "_s, u"b|two"_s, u"| three"_s}},
        {"list-behind-the-first-line-of-a-cell",
         {u"cell|before\u20281. one\u20282. two\n"_s, u"|end"_s}},
        {"lists-in-cells",
         {u"L0 cell #FF0000|1. "_s, u"|one\u2028\t○ deep\u20282. two\n"_s, u"L0 cell|3. three\n"_s,
          u"cell|before\u2028\t○ bullet\u2028behind\n"_s, u"|end"_s}},
        {"mac-charsets", {u"|漢čАα漢ש中"_s}},
        {"deep-groups", {u"|before deep"_s, u"->x:y|link"_s, u"| after"_s}},
        {"behind-the-end", {u"|all"_s}},
        {"deleted", {u"|one three five"_s}},
        {"columns", {u"|one\u2028two\nthree"_s}},
        {"numbering-without-text",
         {u"L0|3. one\n"_s, u"L0|4. two\n"_s, u"L0|5. three\n"_s, u"|between\n"_s,
          u"L0|• bullet\n"_s, u"L1|\t(a) letter\n"_s, u"L0|7. written\n"_s, u"|end"_s}},
        {"lists-by-table",
         {u"L0|3. three\n"_s, u"L1|\t(a) letter\n"_s, u"L1|\t(b) next\n"_s, u"L0|4. four\n"_s,
          u"L1|\t(a) again\n"_s, u"L2|\t\t4.i. deep\n"_s, u"|between\n"_s, u"L0|5. five\n"_s,
          u"L0|9. nine\n"_s, u"|silent\n"_s, u"L0|11. eleven\n"_s, u"L0|• bullet\n"_s,
          u"|bare\nunknown\nend"_s}},
        {"bookmarks",
         {u"->#there|go"_s, u"|, "_s, u"->#face|smile"_s, u"|\none\n"_s, u"@there|t"_s, u"|wo "_s,
          u"@face|😀"_s, u"| three"_s}},
        {"super-and-subscript",
         {u"|E=mc"_s, u"super|2"_s, u"| H"_s, u"sub|2"_s, u"|O 1"_s, u"super|st"_s, u"sub|low"_s,
          u"| "_s, u"super|a"_s, u"|b "_s, u"super|c"_s, u"|d"_s}},
        {"font-names-with-scripts", {u"|a"_s, u"Gentium|b"_s, u"Arimo|c"_s, u"Nice CE|d"_s}},
        {"right-to-left-fonts", {u"14 i|left "_s, u"Arimo 20 b|ש"_s, u"Arimo|א"_s}},
        {"symbol-font", {u"Symbol|αβ •→"_s, u"Wingdings|✓ ●✓"_s, u"Symbol|≅"_s, u"|•"_s}},
    };
    for (const FileRow& row : rows) {
        const auto content = readRtf(contentsOf(u"rtf/%1.rtf"_s.arg(QLatin1String(row.name))));
        ASSERT_TRUE(content.has_value()) << row.name;
        EXPECT_EQ(listed(describeRuns(content->text)), listed(row.runs)) << row.name;
        // What was read is told in the same way by our own RTF.
        const auto again = OrvaneWorkspaceRTF::read(*OrvaneWorkspaceRTF::data(content->text, {}));
        EXPECT_EQ(listed(describeRuns(again.value_or(ImportedText()).text)), listed(row.runs))
            << row.name << " written again";
    }
}

TEST(ForeignFiles, HtmlIsReadAsItIsMeant)
{
    const FileRow rows[] = {
        {"word-lists",
         {u"L0|• bullet\n"_s, u"L1|\t■ nested\n"_s, u"L0|3. number "_s, u"b|bold\n"_s,
          u"18 b|1.2 Heading\n"_s, u"|plain"_s}},
        {"item-styles",
         {u"L0|■ square\n"_s, u"L0|b. letter\n"_s, u"|none\n"_s, u"L0|• disc\n"_s,
          u"L0|I. roman\n"_s, u"L0|2. number\n"_s, u"L0|▸ own\n"_s, u"L0|☑ done\n"_s,
          u"L0|☐ open"_s}},
        {"lists-in-cells",
         {u"L0 cell 0.75 #FF0000|1. "_s, u"|one\u2028\t○ deep\u20282. two\n"_s,
          u"L0 cell 0.75|3. three\n"_s, u"cell 0.75|before\u2028• bullet\u2028behind\n"_s,
          u"cell 0.75|1984. It was\n"_s}},
        {"clipboard-header", {u"|words"_s}},
        {"unseen", {u"|seen\nend"_s}},
        {"missing-pictures", {u"|see a map here, logo, 😀smiled"_s}},
        {"tables-without-border",
         {u"cell 0.75|one\n"_s, u"cell 0.75|two\n"_s, u"cell|three\n"_s, u"cell|four\n"_s,
          u"cell 0.75|five\n"_s}},
        {"footnotes",
         {u"|Text"_s, u"->#_ftn1 @_ftnref1|[1]"_s, u"| on, "_s, u"->#gone|nowhere"_s, u"|.\n"_s,
          u"->#_ftnref1 @_ftn1|[1]"_s, u"| The note."_s}},
        {"tab-stops", {u"tabs 36l 72r 108d /24|tabs\n"_s, u"|none"_s}},
    };
    for (const FileRow& row : rows) {
        const QByteArray html = contentsOf(u"html/%1.html"_s.arg(QLatin1String(row.name)));
        const HtmlReadOptions options{TextFont{u"Charis"_s, 12}, QUuid::createUuid};
        const AttributedString text = readHtmlBytes(html, options).text;
        EXPECT_EQ(listed(describeRuns(text)), listed(row.runs)) << row.name;
        const AttributedString again = readHtmlBytes(writeHtml(text, {}), options).text;
        EXPECT_EQ(listed(describeRuns(again)), listed(row.runs)) << row.name << " written again";
    }
}

TEST(ForeignFiles, NotesBesideTheTextComeInBehindItAndFootnotesLeaveAsSuch)
{
    const auto read = [](const QByteArray& rtf) {
        return readRtf(rtf,
                       [id = 0U]() mutable { return QUuid(++id, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0); });
    };
    const QString first = u"footnote-000000010000"_s;
    const QString second = u"footnote-000000020000"_s;
    const auto reference = [](const QString& name) {
        return u"super ->#%1 @%1-reference|"_s.arg(name);
    };
    const auto number = [](const QString& name) {
        return u"->#%1-reference @%1|"_s.arg(name);
    };
    const QStringList runs{u"|Text"_s,
                           reference(first) + u'1',
                           u"| goes on.\n"_s,
                           u"fill #FAC73D2E i|Comment by Ann: "_s,
                           u"|A remark.\nNext.\n"_s,
                           u"fill #FAC73D2E i|Text box: "_s,
                           u"|In a box.\n"_s,
                           u"i|[Floating picture left out][Picture left out: metafile]"_s,
                           u"|Last"_s,
                           reference(second) + u'2',
                           u"|\n"_s,
                           u"9.5 "_s + number(first) + u"1."_s,
                           u"9.5| First "_s,
                           u"9.5 b|bold"_s,
                           u"9.5| note.\u2028Second line.\n"_s,
                           u"10 "_s + number(second) + u"2."_s,
                           u"10| other"_s};
    const auto content = read(contentsOf(u"rtf/notes-beside-the-text.rtf"_s));
    ASSERT_TRUE(content.has_value());
    EXPECT_EQ(listed(describeRuns(content->text)), listed(runs));
    EXPECT_TRUE(content->account == (ImportAccount{2, 1, 1, 2, 1}));
    EXPECT_EQ(footnotes(content->text).size(), 2);
    const auto target = findLinkTarget(content->text, first);
    ASSERT_TRUE(target.has_value());
    EXPECT_EQ(target->location, content->text.text().indexOf(u"1. First"));

    const auto framesOf = [](const AttributedString& text) {
        QList<std::pair<QChar, ParagraphFrame>> frames; // by the first letter
        text.forEachParagraphRun(text.fullRange(), [&](TextRange run, const auto& style) {
            if (style->frame != ParagraphFrame::none)
                frames.append({text.text().at(run.location), style->frame});
        });
        return frames;
    };
    using Frame = ParagraphFrame;
    const QList<std::pair<QChar, Frame>> frames{
        {u'C', Frame::bar}, {u'T', Frame::bar}, {u'1', Frame::ruleAbove}};
    EXPECT_EQ(framesOf(content->text), frames);
    EXPECT_EQ(framesOf(*TextArchive::decode(TextArchive::encode(content->text))), frames);
    const auto placeholder =
        read("{\\rtf1 a\\par{\\pict\\wmetafile8 01}\\par{\\pict\\wmetafile8 01} b}");
    EXPECT_EQ(framesOf(placeholder->text), (QList<std::pair<QChar, Frame>>{{u'[', Frame::dashed}}))
        << "where nothing else stands in its paragraph";
    EXPECT_EQ(framesOf(read(*OrvaneWorkspaceRTF::data(placeholder->text, {}))->text),
              framesOf(placeholder->text));

    const auto again = read(*OrvaneWorkspaceRTF::data(content->text, {}));
    ASSERT_TRUE(again.has_value());
    EXPECT_EQ(framesOf(again->text), frames);
    // On paper a thin tint is a light colour.
    EXPECT_EQ(listed(describeRuns(again->text)),
              listed(QStringList(runs).replaceInStrings(u"#FAC73D2E"_s, u"#FEF5DC"_s)));
    EXPECT_EQ(again->account.footnotes, 2);
}

} // namespace
} // namespace orvane
