// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/value/TextFont.h"

#include <QFontInfo>

namespace orvane {

QFont TextFont::toQFont() const
{
    QFont font;
    if (!family.isEmpty())
        font.setFamily(family);
    font.setPointSizeF(size > 0 ? size : 12);
    font.setWeight(QFont::Weight(std::clamp(weight, 1, 1000)));
    font.setItalic(italic);
    return font;
}

TextFont TextFont::fromQFont(const QFont& font)
{
    const double size = font.pointSizeF();
    return {font.family(), size > 0 ? size : QFontInfo(font).pointSizeF(), int(font.weight()),
            font.italic()};
}

std::size_t qHash(const TextFont& font, std::size_t seed) noexcept
{
    return qHashMulti(seed, font.family, font.size, font.weight, font.italic);
}

} // namespace orvane
