// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QtGlobal>

#include <algorithm>

namespace orvane {

/// A stretch of text, counted in UTF-16 units: `length` units from `location` on.
struct TextRange {
    qsizetype location = 0;
    qsizetype length = 0;

    bool operator==(const TextRange&) const = default;

    [[nodiscard]] constexpr qsizetype end() const { return location + length; }
    [[nodiscard]] constexpr bool isEmpty() const { return length == 0; }
    [[nodiscard]] constexpr bool contains(qsizetype position) const
    {
        return position >= location && position < end();
    }

    [[nodiscard]] static constexpr TextRange between(qsizetype from, qsizetype to)
    {
        return {from, to - from};
    }

    /// The part of this range that lies within a text of `textLength` units. A range wholly outside
    /// becomes empty, at the nearer edge.
    [[nodiscard]] constexpr TextRange clampedTo(qsizetype textLength) const
    {
        const qsizetype from = std::clamp<qsizetype>(location, 0, textLength);
        const qsizetype room = textLength - from;
        const qsizetype wanted = location < 0 ? length + location : length;
        return {from, std::clamp<qsizetype>(wanted, 0, room)};
    }
};

} // namespace orvane
