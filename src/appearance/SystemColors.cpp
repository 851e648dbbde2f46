// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/SystemColors.h"

#include "appearance/Contrast.h"

namespace orvane {

const SystemColors& systemColors(ColorScheme scheme)
{
    static const SystemColors light{
        QColor(0xFF, 0xFF, 0xFF), QColor(0x1D, 0x1D, 0x1F), QColor(0x63, 0x63, 0x6B),
        QColor(0x0A, 0x66, 0xD8), QColor(0xC4, 0x26, 0x2E), QColor(0x1E, 0x7F, 0x4B),
        QColor(0xB3, 0x54, 0x00), QColor(0x84, 0x3C, 0xB8), QColor(0xFF, 0xC9, 0x26),
    };
    static const SystemColors dark{
        QColor(0x1C, 0x1D, 0x20), QColor(0xE8, 0xE8, 0xEA), QColor(0x9C, 0x9D, 0xA5),
        QColor(0x4A, 0x9E, 0xFF), QColor(0xFF, 0x6B, 0x6B), QColor(0x4C, 0xC3, 0x8A),
        QColor(0xFF, 0xA6, 0x57), QColor(0xCF, 0x9C, 0xF5), QColor(0xE0, 0xB0, 0x3A),
    };
    return scheme == ColorScheme::Light ? light : dark;
}

ColorScheme schemeOfGround(const QColor& ground)
{
    return contrastRatio(Qt::black, ground) >= contrastRatio(Qt::white, ground) ? ColorScheme::Light
                                                                                : ColorScheme::Dark;
}

} // namespace orvane
