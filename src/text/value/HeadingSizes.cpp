// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/value/HeadingSizes.h"

#include <algorithm>
#include <cmath>

namespace orvane {

int headingLevelOfSize(double size, double bodyFontSize, const HeadingSizes& sizes)
{
    const auto distance = [&](double other) {
        return std::abs(other - size);
    };
    const auto nearest = std::ranges::min_element(sizes.headings, {}, distance);
    const int level = int(nearest - sizes.headings.begin()) + 1;
    const bool isBodyNearer = !(distance(*nearest) < distance(sizes.body));
    if (distance(isBodyNearer ? sizes.body : *nearest) <= 1)
        return isBodyNearer ? 0 : level;
    return size < std::max(1.3 * bodyFontSize, bodyFontSize + 4) ? 0 : level;
}

int headingLevel(const AttributedString& text, TextRange paragraph, const HeadingSizes& sizes)
{
    if (paragraph.isEmpty() || text.paragraphStyle(paragraph.location)->cell)
        return 0;
    const auto levelOf = [&](const CharacterStyle& style) {
        const bool isHeading = style.font && style.font->isBold() && !style.hasAttachment();
        return isHeading ? headingLevelOfSize(style.font->size, sizes.body, sizes) : 0;
    };
    // Most paragraphs are told from their first character.
    const int level = levelOf(*text.characterStyle(paragraph.location));
    bool isHeading = level > 0;
    if (isHeading) {
        text.forEachCharacterRun(paragraph, [&](TextRange, const SharedCharacterStyle& style) {
            isHeading = isHeading && levelOf(*style) > 0;
        });
    }
    return isHeading ? level : 0;
}

} // namespace orvane
