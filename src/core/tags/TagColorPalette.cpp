// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/tags/TagColorPalette.h"

namespace orvane {

namespace {

/// FNV-1a, 32 bits, over UTF-16 units (http://www.isthe.com/chongo/tech/comp/fnv/).
quint32 hashOf(const QString& text)
{
    quint32 hash = 2166136261U;
    for (const QChar unit : text) {
        hash ^= unit.unicode();
        hash *= 16777619U;
    }
    return hash;
}

} // namespace

RgbaColor TagColorPalette::autoColor(const QString& tag)
{
    return colors.at(hashOf(tag.toLower()) % colors.size());
}

RgbaColor tagColor(const TagSettings& settings, const QString& tag)
{
    const auto chosen = rgbaFromHex(settings.colorHexes.value(tag.toLower()));
    return chosen ? *chosen : TagColorPalette::autoColor(tag);
}

} // namespace orvane
