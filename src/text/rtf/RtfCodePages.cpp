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
    CharsetRow{0, 1252},   CharsetRow{2, symbolCodePage}, CharsetRow{77, 10000},
    CharsetRow{78, 10001}, CharsetRow{79, 10003},         CharsetRow{80, 10008},
    CharsetRow{81, 10002}, CharsetRow{83, 10005},         CharsetRow{84, 10004},
    CharsetRow{85, 10006}, CharsetRow{86, 10081},         CharsetRow{87, 10021},
    CharsetRow{88, 10029}, CharsetRow{89, 10007},         CharsetRow{128, 932},
    CharsetRow{129, 949},  CharsetRow{134, 936},          CharsetRow{136, 950},
    CharsetRow{161, 1253}, CharsetRow{162, 1254},         CharsetRow{163, 1258},
    CharsetRow{177, 1255}, CharsetRow{178, 1256},         CharsetRow{186, 1257},
    CharsetRow{204, 1251}, CharsetRow{222, 874},          CharsetRow{238, 1250},
    CharsetRow{254, 437},  CharsetRow{255, 850},
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
    // The letters of these stand where the encodings named have them.
    CodePageRow{10001, "windows-932"},
    CodePageRow{10002, "windows-950"},
    CodePageRow{10003, "windows-949"},
    CodePageRow{10004, "ISO-8859-6"},
    CodePageRow{10005, "windows-1255"},
    CodePageRow{10008, "windows-936"},
    CodePageRow{10021, "windows-874"},
    CodePageRow{10006, "x-mac-greek"},
    CodePageRow{10007, "x-mac-cyrillic"},
    CodePageRow{10029, "x-mac-ce"},
    CodePageRow{10081, "x-mac-turkish"},
    CodePageRow{65001, "UTF-8"},
};

// The encoding of the Symbol font, from 0x20 and from 0xA0.
constexpr QStringView lowSymbols = u" !\u2200#\u2203%&\u220D()\u2217+,\u2212./0123456789:;<=>?"
                                   u"\u2245ΑΒΧΔΕΦΓΗΙ\u03D1ΚΛΜΝΟΠΘΡΣΤΥ\u03C2ΩΞΨΖ[\u2234]\u22A5_"
                                   u"\u203Eαβχδεφγηι\u03D5κλμνοπθρστυ\u03D6ωξψζ{|}\u223C";
constexpr QStringView highSymbols =
    u"\u20AC\u03D2\u2032\u2264\u2044\u221E\u0192\u2663\u2666\u2665\u2660\u2194\u2190\u2191\u2192"
    u"\u2193"
    u"\u00B0\u00B1\u2033\u2265\u00D7\u221D\u2202\u2022\u00F7\u2260\u2261\u2248\u2026\u23D0\u23AF"
    u"\u21B5"
    u"\u2135\u2111\u211C\u2118\u2297\u2295\u2205\u2229\u222A\u2283\u2287\u2284\u2282\u2286\u2208"
    u"\u2209"
    u"\u2220\u2207\u00AE\u00A9\u2122\u220F\u221A\u22C5\u00AC\u2227\u2228\u21D4\u21D0\u21D1\u21D2"
    u"\u21D3"
    u"\u25CA\u27E8\u00AE\u00A9\u2122\u2211\u239B\u239C\u239D\u23A1\u23A2\u23A3\u23A7\u23A8\u23A9"
    u"\u23AA"
    u"\uFFFD\u27E9\u222B\u2320\u23AE\u2321\u239E\u239F\u23A0\u23A4\u23A5\u23A6\u23AB\u23AC\u23AD";

struct PictureRow {
    uchar byte;
    char16_t character;
};

// Of the fonts of pictures, those that documents use as bullets and marks.
constexpr std::array pictures{
    PictureRow{0x4A, u'\u263A'}, PictureRow{0x6C, u'\u25CF'}, PictureRow{0x6E, u'\u25A0'},
    PictureRow{0x6F, u'\u2610'}, PictureRow{0x71, u'\u2751'}, PictureRow{0x72, u'\u2752'},
    PictureRow{0x75, u'\u25C6'}, PictureRow{0x76, u'\u2756'}, PictureRow{0x77, u'\u25C6'},
    PictureRow{0x9F, u'\u2022'}, PictureRow{0xA7, u'\u25AA'}, PictureRow{0xA8, u'\u25FB'},
    PictureRow{0xB7, u'\u2022'}, PictureRow{0xD8, u'\u27A2'}, PictureRow{0xDF, u'\u2190'},
    PictureRow{0xE0, u'\u2192'}, PictureRow{0xE8, u'\u2794'}, PictureRow{0xF0, u'\u21E8'},
    PictureRow{0xFB, u'\u2717'}, PictureRow{0xFC, u'\u2713'}, PictureRow{0xFD, u'\u2612'},
    PictureRow{0xFE, u'\u2611'},
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

QChar symbolCharacter(uchar byte, QStringView family)
{
    if (byte <= 0x20)
        return QChar(char16_t(byte));
    if (family.compare(u"Symbol", Qt::CaseInsensitive) == 0) {
        const bool isLow = byte <= 0x7E;
        const QStringView table = isLow ? lowSymbols : highSymbols;
        const qsizetype place = byte - (isLow ? 0x20 : 0xA0);
        if (place >= 0 && place < table.size() && table[place] != u'\uFFFD')
            return table[place];
    }
    const auto picture = std::ranges::find(pictures, byte, &PictureRow::byte);
    return QChar(picture == pictures.end() ? char16_t(0xF000 + byte) : picture->character);
}

QString CodePageDecoder::decode(int codePage, QByteArrayView bytes)
{
    std::shared_ptr<QStringDecoder>& decoder = m_decoders[codePage];
    if (!decoder)
        decoder =
            std::make_shared<QStringDecoder>(nameOf(codePage), QStringConverter::Flag::Stateless);
    return decoder->decode(bytes);
}

} // namespace orvane
