// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/rtf/RtfCodePages.h"

#include <algorithm>
#include <array>

namespace orvane {
namespace {

struct CharsetRow {
    int charset;
    int codePage;
};

constexpr std::array charsets{
    CharsetRow{2, symbolCodePage}, CharsetRow{77, 10000}, CharsetRow{128, 932},
    CharsetRow{129, 949},          CharsetRow{134, 936},  CharsetRow{136, 950},
    CharsetRow{161, 1253},         CharsetRow{162, 1254}, CharsetRow{163, 1258},
    CharsetRow{177, 1255},         CharsetRow{178, 1256}, CharsetRow{186, 1257},
    CharsetRow{204, 1251},         CharsetRow{222, 874},  CharsetRow{238, 1250},
    CharsetRow{254, 437},          CharsetRow{255, 850},
};

struct CodePageRow {
    int codePage;
    const char* name;
};

constexpr std::array codePages{
    CodePageRow{437, "cp437"},
    CodePageRow{737, "cp737"},
    CodePageRow{775, "cp775"},
    CodePageRow{850, "cp850"},
    CodePageRow{852, "cp852"},
    CodePageRow{855, "cp855"},
    CodePageRow{857, "cp857"},
    CodePageRow{860, "cp860"},
    CodePageRow{861, "cp861"},
    CodePageRow{862, "cp862"},
    CodePageRow{863, "cp863"},
    CodePageRow{864, "cp864"},
    CodePageRow{865, "cp865"},
    CodePageRow{866, "cp866"},
    CodePageRow{874, "windows-874"},
    CodePageRow{932, "windows-932"},
    CodePageRow{936, "windows-936"},
    CodePageRow{949, "windows-949"},
    CodePageRow{950, "windows-950"},
    CodePageRow{1250, "windows-1250"},
    CodePageRow{1251, "windows-1251"},
    CodePageRow{1252, "windows-1252"},
    CodePageRow{1253, "windows-1253"},
    CodePageRow{1254, "windows-1254"},
    CodePageRow{1255, "windows-1255"},
    CodePageRow{1256, "windows-1256"},
    CodePageRow{1257, "windows-1257"},
    CodePageRow{1258, "windows-1258"},
    CodePageRow{10000, "macintosh"},
    CodePageRow{10006, "x-mac-greek"},
    CodePageRow{10007, "x-mac-cyrillic"},
    CodePageRow{10029, "x-mac-ce"},
    CodePageRow{10081, "x-mac-turkish"},
    CodePageRow{65001, "UTF-8"},
};

const char* nameOf(int codePage)
{
    const auto row = std::ranges::find(codePages, codePage, &CodePageRow::codePage);
    return row == codePages.end() ? "windows-1252" : row->name;
}

} // namespace

int codePageOfCharset(int charset)
{
    const auto row = std::ranges::find(charsets, charset, &CharsetRow::charset);
    return row == charsets.end() ? 0 : row->codePage;
}

QChar symbolCharacter(uchar byte)
{
    switch (byte) {
    case 0xB7:
        return u'\u2022';
    case 0xA7:
        return u'\u25AA';
    case 0xD8:
        return u'\u27A2';
    case 0xFC:
        return u'\u2713';
    case 0xA8:
        return u'\u25FB';
    default:
        return QChar(char16_t(byte < 0x20 ? byte : 0xF000 + byte));
    }
}

QString CodePageDecoder::decode(int codePage, QByteArrayView bytes)
{
    if (codePage == symbolCodePage) {
        QString text;
        for (const char c : bytes)
            text += symbolCharacter(uchar(c));
        return text;
    }
    std::shared_ptr<QStringDecoder>& decoder = m_decoders[codePage];
    if (!decoder)
        decoder =
            std::make_shared<QStringDecoder>(nameOf(codePage), QStringConverter::Flag::Stateless);
    return decoder->decode(bytes);
}

} // namespace orvane
