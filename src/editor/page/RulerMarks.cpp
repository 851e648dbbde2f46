// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/page/RulerMarks.h"

#include <algorithm>
#include <cmath>

namespace orvane {

namespace {

/// What a line needs at least, in points.
constexpr double narrowestLine = 36;

double endOfLines(const ParagraphStyle& style, double width)
{
    return style.tailIndent > 0 ? std::min(style.tailIndent, width) : width + style.tailIndent;
}

bool isAt(const TextTab& tab, double position)
{
    return std::abs(tab.location - position) < 0.01;
}

} // namespace

QList<RulerMark> rulerMarks(const ParagraphStyle& style, double width)
{
    const auto held = [width](double position) {
        return std::clamp(position, 0.0, std::max(width, 0.0));
    };
    QList<RulerMark> marks{{RulerMarkKind::firstLine, held(style.firstLineHeadIndent)},
                           {RulerMarkKind::head, held(style.headIndent)},
                           {RulerMarkKind::tail, held(endOfLines(style, width))}};
    for (const TextTab& tab : style.tabStops) {
        if (tab.location <= width)
            marks.append({RulerMarkKind::tab, tab.location, tab.alignment});
    }
    return marks;
}

double heldPosition(const RulerMark& mark, double position, const ParagraphStyle& style,
                    double width)
{
    const double end = endOfLines(style, width);
    switch (mark.kind) {
    case RulerMarkKind::firstLine:
    case RulerMarkKind::head:
        return std::clamp(position, 0.0, std::max(0.0, end - narrowestLine));
    case RulerMarkKind::tail: {
        const double begin = std::max(style.firstLineHeadIndent, style.headIndent);
        return std::clamp(position, std::min(begin + narrowestLine, width), width);
    }
    case RulerMarkKind::tab:
        break;
    }
    return std::clamp(position, 0.0, width);
}

void apply(const RulerChange& change, double width, ParagraphStyle& style)
{
    const RulerMarkKind kind = change.to ? change.to->kind : change.from->kind;
    switch (kind) {
    case RulerMarkKind::firstLine:
        style.firstLineHeadIndent = change.to->position;
        return;
    case RulerMarkKind::head:
        style.headIndent = change.to->position;
        return;
    case RulerMarkKind::tail:
        style.tailIndent = std::min(0.0, change.to->position - width);
        return;
    case RulerMarkKind::tab:
        break;
    }
    QList<TextTab>& tabs = style.tabStops;
    for (const auto& mark : {change.from, change.to}) {
        if (mark)
            tabs.removeIf([&](const TextTab& tab) { return isAt(tab, mark->position); });
    }
    if (!change.to)
        return;
    const TextTab tab{change.to->position, change.to->alignment};
    const auto place = std::ranges::upper_bound(tabs, tab.location, {}, &TextTab::location);
    tabs.insert(place - tabs.begin(), tab);
}

double onRulerStep(double position, LengthUnit unit)
{
    const double step = rulerStep(unit);
    return std::round(position / step) * step;
}

} // namespace orvane
