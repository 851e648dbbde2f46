// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/WritingPalette.h"

#include <QCoreApplication>

#include <array>

namespace orvane {

namespace {

struct Words {
    Q_DECLARE_TR_FUNCTIONS(WritingPalette)
};

struct Hue {
    const char* name;
    QRgb deep;
    QRgb clear;
    QRgb light;
    QRgb highlight;
};

constexpr std::array<Hue, writingPaletteColumns> hues{{
    {QT_TRANSLATE_NOOP("WritingPalette", "Red"), 0xA32A2E, 0xE5484D, 0xFF9A9C, 0xFF6B6B},
    {QT_TRANSLATE_NOOP("WritingPalette", "Orange"), 0xAD4E12, 0xF2762E, 0xFFB07A, 0xFFA04D},
    {QT_TRANSLATE_NOOP("WritingPalette", "Yellow"), 0x8A6100, 0xE0A100, 0xF5D06F, 0xFFDD33},
    {QT_TRANSLATE_NOOP("WritingPalette", "Green"), 0x23702F, 0x3FA34D, 0x8FD69A, 0x5FD068},
    {QT_TRANSLATE_NOOP("WritingPalette", "Teal"), 0x0B6E63, 0x12A594, 0x7FDCCF, 0x38D6C2},
    {QT_TRANSLATE_NOOP("WritingPalette", "Blue"), 0x1F55B5, 0x3B82F6, 0x93BDFF, 0x5AA2FF},
    {QT_TRANSLATE_NOOP("WritingPalette", "Purple"), 0x5E3A9E, 0x8E63CE, 0xC4A7F0, 0xA67BF2},
    {QT_TRANSLATE_NOOP("WritingPalette", "Pink"), 0x97246B, 0xD6409F, 0xF5A3D2, 0xF57BC0},
}};

} // namespace

QList<WritingColor> textPalette()
{
    QList<WritingColor> colors;
    for (int column = 0; column < writingPaletteColumns; ++column) {
        const int percent = column * 100 / (writingPaletteColumns - 1);
        const int value = column * 255 / (writingPaletteColumns - 1);
        const QString name = column == 0 ? Words::tr("Black")
                             : column == writingPaletteColumns - 1
                                 ? Words::tr("White")
                                 : Words::tr("Grey, %1 %").arg(percent);
        colors.append({name, QColor(value, value, value)});
    }
    for (const Hue& hue : hues)
        colors.append({Words::tr("Deep %1").arg(Words::tr(hue.name).toLower()), QColor(hue.deep)});
    for (const Hue& hue : hues)
        colors.append({Words::tr(hue.name), QColor(hue.clear)});
    for (const Hue& hue : hues)
        colors.append(
            {Words::tr("Light %1").arg(Words::tr(hue.name).toLower()), QColor(hue.light)});
    return colors;
}

QList<WritingColor> highlightPalette()
{
    QList<WritingColor> colors;
    for (const Hue& hue : hues)
        colors.append({Words::tr(hue.name), QColor(hue.highlight)});
    return colors;
}

} // namespace orvane
