// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/view/TextMime.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

AttributedString sample()
{
    CharacterStyle bold;
    bold.font = TextFont{u"Inter"_s, 14, 700, false};
    CharacterStyle plain;
    plain.font = TextFont{u"Inter"_s, 14, 400, false};
    AttributedString text(u"plain "_s, plain);
    text.append(u"bold\u2028line\nnext"_s, bold);
    return text;
}

TEST(TextMime, EachFormCarriesTheTextToWhoTakesNoOther)
{
    const auto data = textMime::encode(sample(), TextFormatting::rich, {});
    EXPECT_EQ(data->text(), u"plain bold\nline\nnext"_s);
    for (const QString& type : data->formats()) {
        if (type.startsWith(u"text/plain"_s))
            continue;
        QMimeData only;
        only.setData(type, data->data(type));
        EXPECT_TRUE(textMime::canDecode(only, TextFormatting::rich)) << type.toStdString();
        const auto read = textMime::decode(only, TextFormatting::rich, {});
        ASSERT_TRUE(read) << type.toStdString();
        EXPECT_EQ(read->text.text(), sample().text()) << type.toStdString();
        EXPECT_FALSE(read->text.characterStyle(0)->font->isBold()) << type.toStdString();
        EXPECT_TRUE(read->text.characterStyle(7)->font->isBold()) << type.toStdString();
    }
    EXPECT_EQ(textMime::decode(*data, TextFormatting::rich, {})->text, sample());
}

TEST(TextMime, PlainViewsGiveAndTakeCharactersOnly)
{
    const auto plain = textMime::encode(sample(), TextFormatting::plain, {});
    const QString withCharset = u"text/plain;charset=utf-8"_s;
    EXPECT_EQ(plain->formats(), (QStringList{withCharset, u"text/plain"_s}));
    EXPECT_EQ(textMime::encode(AttributedString(u"ä\u2028“b”"_s), TextFormatting::rich, {})
                  ->data(withCharset),
              QByteArray("ä\n“b”"));
    const auto rich = textMime::encode(sample(), TextFormatting::rich, {});
    CharacterStyle style;
    style.link = u"here"_s;
    EXPECT_EQ(textMime::decode(*rich, TextFormatting::plain, {style, {}})->text,
              AttributedString(u"plain bold\nline\nnext"_s, style));
}

TEST(TextMime, WhatCantBeReadFallsToTheNextForm)
{
    QMimeData data;
    data.setData(textMime::archiveType(), "damaged");
    data.setData(u"text/rtf"_s, "no rtf");
    data.setText(u"a\r\nb"_s);
    EXPECT_EQ(textMime::decode(data, TextFormatting::rich, {})->text.text(), u"a\nb"_s);
    EXPECT_FALSE(textMime::decode(QMimeData(), TextFormatting::rich, {}));
}

} // namespace
} // namespace orvane
