// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/value/AttributedString.h"

#include <array>

namespace orvane {

/// The sizes by which headings are told, in points. A heading is no attribute of a paragraph.
struct HeadingSizes {
    double body = 16;
    std::array<double, 6> headings{32, 28, 25, 22, 20, 18}; ///< levels 1 to 6

    bool operator==(const HeadingSizes&) const = default;
};

/// The level that text of `size` points stands on, from 1, and 0 for body text: the one with the
/// nearest size, if that is within 1 point; else 0 for sizes that don't stand out from
/// `bodyFontSize`, and for larger ones the nearest heading.
[[nodiscard]] int headingLevelOfSize(double size, double bodyFontSize, const HeadingSizes& sizes);

/// The level of the heading that `paragraph`, without its "\n", is; 0 for any other. A heading is
/// bold and large from its first character to its last, and stands in no table; its first character
/// decides on the level.
[[nodiscard]] int headingLevel(const AttributedString& text, TextRange paragraph,
                               const HeadingSizes& sizes);

} // namespace orvane
