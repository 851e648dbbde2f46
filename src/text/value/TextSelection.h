// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/value/TextRange.h"

namespace orvane {

/// What is selected: from `anchor`, where the selection was begun, to `position`, where the caret
/// is. Both are the same for a bare caret.
struct TextSelection {
    qsizetype anchor = 0;
    qsizetype position = 0;

    bool operator==(const TextSelection&) const = default;

    [[nodiscard]] static constexpr TextSelection caret(qsizetype position)
    {
        return {position, position};
    }
    [[nodiscard]] static constexpr TextSelection of(TextRange range)
    {
        return {range.location, range.end()};
    }

    [[nodiscard]] constexpr bool isEmpty() const { return anchor == position; }
    [[nodiscard]] constexpr TextRange range() const
    {
        return TextRange::between(std::min(anchor, position), std::max(anchor, position));
    }
    [[nodiscard]] constexpr TextSelection clampedTo(qsizetype length) const
    {
        return {std::clamp<qsizetype>(anchor, 0, length),
                std::clamp<qsizetype>(position, 0, length)};
    }
};

/// One change of the text: `lengthBefore` units from `location` on have become `lengthAfter`. A
/// change of attributes alone has equal lengths.
struct TextChange {
    qsizetype location = 0;
    qsizetype lengthBefore = 0;
    qsizetype lengthAfter = 0;

    bool operator==(const TextChange&) const = default;
};

/// Where `range` stands after `change`; what has come within it belongs to it.
[[nodiscard]] constexpr TextRange followed(TextRange range, const TextChange& change)
{
    const auto moved = [&](qsizetype position) {
        if (position <= change.location)
            return position;
        const qsizetype end = change.location + change.lengthBefore;
        return std::max(position, end) + change.lengthAfter - change.lengthBefore;
    };
    return TextRange::between(moved(range.location), moved(range.end()));
}

} // namespace orvane
