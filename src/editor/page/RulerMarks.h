// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/page/LengthUnit.h"
#include "text/value/ParagraphStyle.h"

namespace orvane {

/// What stands on the ruler for one paragraph. Positions are in points from the leading margin of
/// its column: the left one, in a right-to-left paragraph the right one.
enum class RulerMarkKind {
    firstLine, ///< where its first line begins
    head,      ///< where its other lines begin
    tail,      ///< where its lines end
    tab,
};

struct RulerMark {
    RulerMarkKind kind = RulerMarkKind::firstLine;
    double position = 0;
    TabAlignment alignment = TabAlignment::left; ///< of a tab stop

    bool operator==(const RulerMark&) const = default;
};

/// The marks of a paragraph in a column of `width`: indents first, then the tab stops by rising
/// position.
[[nodiscard]] QList<RulerMark> rulerMarks(const ParagraphStyle& style, double width);

/// What a person does to a mark: from what it was to what it is to be. Without the one a tab stop
/// is added, without the other it is taken away.
struct RulerChange {
    std::optional<RulerMark> from;
    std::optional<RulerMark> to;

    bool operator==(const RulerChange&) const = default;
};

/// Makes the change to a paragraph in whose column of `width` it was chosen. Other paragraphs get
/// the same indents; the end of their lines keeps as far from their trailing margin.
void apply(const RulerChange& change, double width, ParagraphStyle& style);

/// The nearest position that `mark` may have in that paragraph: no line is left without room.
[[nodiscard]] double heldPosition(const RulerMark& mark, double position,
                                  const ParagraphStyle& style, double width);

/// The distance of the places to which marks are drawn and by which keys move them: a quarter of a
/// centimetre or an eighth of an inch, in points.
[[nodiscard]] constexpr double rulerStep(LengthUnit unit)
{
    return pointsIn(unit) / (unit == LengthUnit::inch ? 8 : 4);
}
[[nodiscard]] double onRulerStep(double position, LengthUnit unit);

} // namespace orvane
