// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/value/CharacterStyle.h"

#include <QHash>

namespace orvane {
namespace {

std::size_t hashOf(const std::optional<RgbaColor>& color)
{
    return color ? qHashMulti(1, color->red, color->green, color->blue, color->alpha) : 0;
}

} // namespace

std::size_t qHash(const CharacterStyle& style, std::size_t seed) noexcept
{
    return qHashMulti(seed, style.font ? qHash(*style.font, 1) : 0, hashOf(style.foreground),
                      hashOf(style.background), int(style.underline), int(style.strikethrough),
                      int(style.baselineShift), style.link, style.targetName, style.attachment.id(),
                      style.chartBlockData, style.autoTagBaseFontSize.value_or(-1));
}

} // namespace orvane
