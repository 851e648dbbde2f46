// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/TextMime.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

AttributedString sample()
{
    CharacterStyle bold;
    bold.font = TextFont{u"Charis SIL"_s, 14, 700};
    AttributedString text(u"bold"_s, bold);
    CharacterStyle plain;
    plain.font = TextFont{u"Charis SIL"_s, 14};
    text.append(u" plain\u2028two", plain);
    return text;
}

struct FormRow {
    const char* name;
    QStringList formats; // all that is on the clipboard
};

TEST(TextMime, EachFormBringsTheLooks)
{
    const FormRow rows[] = {
        {"own form", {u"application/x-orvane-text"_s}},
        {"RTF", {u"text/rtf"_s}},
        {"RTF by its other name", {u"application/rtf"_s, u"text/plain"_s}},
        {"HTML", {u"text/html"_s, u"text/plain"_s}},
    };
    const auto offered = textMime::encode(sample(), TextFormatting::rich);
    for (const FormRow& row : rows) {
        SCOPED_TRACE(row.name);
        QMimeData data;
        for (const QString& format : row.formats)
            data.setData(format, offered->data(format));
        ASSERT_TRUE(textMime::canDecode(data, TextFormatting::rich));
        const auto text = textMime::decode(data, TextFormatting::rich, {});
        ASSERT_TRUE(text.has_value());
        EXPECT_TRUE(*text == sample());
    }
}

TEST(TextMime, PlainModeTakesAndGivesCharactersOnly)
{
    const auto rich = textMime::encode(sample(), TextFormatting::rich);
    const auto text = textMime::decode(*rich, TextFormatting::plain, {});
    ASSERT_TRUE(text.has_value());
    EXPECT_TRUE(*text == AttributedString(u"bold plain\ntwo"_s));
    const auto plain = textMime::encode(sample(), TextFormatting::plain);
    EXPECT_EQ(plain->formats(), QStringList{u"text/plain"_s});
    QMimeData onlyHtml;
    onlyHtml.setData(u"text/html"_s, "<b>x</b>");
    EXPECT_FALSE(textMime::canDecode(onlyHtml, TextFormatting::plain));
}

TEST(TextMime, DamagedFormsFallToTheNext)
{
    QMimeData data;
    data.setData(u"application/x-orvane-text"_s, "no archive");
    data.setData(u"text/rtf"_s, "no RTF");
    data.setText(u"a\r\nb"_s);
    const auto text = textMime::decode(data, TextFormatting::rich, {});
    ASSERT_TRUE(text.has_value());
    EXPECT_EQ(text->text(), u"a\nb");
}

TEST(TextMime, ACopyHasIdentitiesOfItsOwn)
{
    OrvaneNoteImageAttachment image;
    image.attachmentID = QUuid::createUuid();
    AttributedString text = AttributedString::object(image);
    const QUuid tableId = QUuid::createUuid();
    for (int column = 0; column < 2; ++column) {
        ParagraphStyle cell;
        cell.cell = TableCellBlock{.table = {tableId, 2}, .column = column};
        text.append(column == 0 ? u"\na\n" : u"b\n", {}, cell);
    }
    const auto offered = textMime::encode(text, TextFormatting::rich);
    const auto copy = textMime::decode(*offered, TextFormatting::rich, {});
    ASSERT_TRUE(copy.has_value());
    EXPECT_NE(copy->characterStyle(0)->imageAttachment()->attachmentID, image.attachmentID);
    const QUuid first = copy->paragraphStyle(2)->cell->table.id;
    EXPECT_NE(first, tableId);
    EXPECT_EQ(copy->paragraphStyle(4)->cell->table.id, first);
}

} // namespace
} // namespace orvane
