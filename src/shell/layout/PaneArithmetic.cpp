// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/layout/PaneArithmetic.h"

#include <algorithm>
#include <cmath>

namespace orvane {

using namespace Qt::StringLiterals;
using namespace PaneMetrics;

namespace {

double clampedToSide(double width)
{
    return std::clamp(width, sideMinimum, sideMaximum);
}

double sum(const SideWidths& widths)
{
    return widths.binder + widths.inspector;
}

SideWidths scaledToFit(double available, const SideWidths& targets)
{
    const double factor = available / sum(targets);
    SideWidths widths{std::max(targets.binder * factor, sideMinimum),
                      std::max(targets.inspector * factor, sideMinimum)};
    const double excess = sum(widths) - available;
    if (excess > 0) {
        double& wider = widths.inspector > widths.binder ? widths.inspector : widths.binder;
        wider = std::max(wider - excess, sideMinimum);
    }
    return widths;
}

/// Gives back what a person has drawn out beyond the maximum, both panes by the same share.
SideWidths withoutSurplus(double available, const SideWidths& wanted)
{
    const SideWidths surplus{std::max(wanted.binder - sideMaximum, 0.0),
                             std::max(wanted.inspector - sideMaximum, 0.0)};
    const double excess = sum(wanted) - available;
    if (excess <= 0 || sum(surplus) <= 0)
        return wanted;
    const double share = std::min(excess / sum(surplus), 1.0);
    return {wanted.binder - surplus.binder * share, wanted.inspector - surplus.inspector * share};
}

/// What is left for a side pane beside a locked one.
double besideLocked(double available, double locked, double wanted)
{
    const double least = available < bothSidesFloor ? 0 : sideMinimum;
    return std::min(wanted, std::max(available - locked, least));
}

SideWidths onWholePixels(const SideWidths& widths, double available)
{
    SideWidths whole{std::round(widths.binder), std::round(widths.inspector)};
    if (sum(whole) > available && sum(widths) <= available)
        whole.inspector = std::floor(widths.inspector);
    return whole;
}

double legible(double width, bool locked)
{
    return width < sideLegible && !locked ? 0 : width;
}

SideWidths fitted(const SplitLayout& layout, const SideWidths& wanted)
{
    const double available = layout.available();
    if (sum(wanted) <= available)
        return wanted;
    const bool keepsBinder = layout.visible.binder && layout.locks.binder;
    const bool keepsInspector = layout.visible.inspector && layout.locks.inspector;
    if (keepsBinder && keepsInspector)
        return wanted;
    if (keepsBinder)
        return {wanted.binder, besideLocked(available, wanted.binder, wanted.inspector)};
    if (keepsInspector && layout.visible.binder)
        return {std::min(wanted.binder, std::max(available - wanted.inspector, sideMinimum)),
                wanted.inspector};
    if (keepsInspector)
        return wanted;
    const SideWidths plain = withoutSurplus(available, wanted);
    return sum(plain) <= available ? plain : balancedSideWidths(available, plain, layout.visible);
}

} // namespace

double sidePaneTarget(double remembered)
{
    return remembered <= unknownLimit ? sideDefault : clampedToSide(remembered);
}

SideWidths sidePaneTargets(const SideWidths& remembered)
{
    return {sidePaneTarget(remembered.binder), sidePaneTarget(remembered.inspector)};
}

double editorMinimumThickness(double pageWidth)
{
    return std::clamp(pageWidth, editorMinimumLow, editorMinimumHigh);
}

SideWidths balancedSideWidths(double available, const SideWidths& targets,
                              const SideVisibility& visible)
{
    const double room = std::max(available, 0.0);
    if (!visible.binder || !visible.inspector)
        return {visible.binder ? std::min(room, targets.binder) : 0,
                visible.inspector ? std::min(room, targets.inspector) : 0};
    if (room < bothSidesFloor) {
        const double binder = std::min(room, std::max(targets.binder, sideMinimum));
        return {binder, room - binder};
    }
    return room >= sum(targets) ? targets : scaledToFit(room, targets);
}

SideLimits sideLimits(const SidePaneState& state, double width, double remembered)
{
    if (!state.isVisible)
        return {};
    if (state.isLocked) {
        const double fixed = clampedToSide(width);
        return {fixed, fixed, false};
    }
    const double known = remembered > unknownLimit ? remembered
                         : width > unknownLimit    ? width
                                                   : sideDefault;
    return {clampedToSide(known), maximumThickness, false};
}

double SplitLayout::dividers() const
{
    return dividerThickness * (int(visible.binder) + int(visible.inspector));
}

double SplitLayout::available() const
{
    return std::max(total - editorMinimum - dividers(), 0.0);
}

PaneWidths SplitLayout::widths() const
{
    const SideWidths wanted{visible.binder ? preferred.binder : 0,
                            visible.inspector ? preferred.inspector : 0};
    const SideWidths sides = onWholePixels(fitted(*this, wanted), available());
    const double room = std::max(total - dividers(), 0.0);
    PaneWidths widths;
    widths.binder = legible(std::min(sides.binder, room), locks.binder);
    widths.inspector = legible(std::min(sides.inspector, room - widths.binder), locks.inspector);
    const int lines = int(widths.binder > 0) + int(widths.inspector > 0);
    widths.editor =
        std::max(total - lines * dividerThickness - widths.binder - widths.inspector, 0.0);
    return widths;
}

SideWidths SplitLayout::resized(SidePane pane, double width) const
{
    const bool isBinder = pane == SidePane::Binder;
    const bool shown = isBinder ? visible.binder : visible.inspector;
    const bool locked = isBinder ? locks.binder : locks.inspector;
    if (!shown || locked)
        return preferred;
    const PaneWidths now = widths();
    const double own = isBinder ? now.binder : now.inspector;
    const double other = isBinder ? now.inspector : now.binder;
    if (own < sideMinimum) // squeezed by the window, which no divider can change
        return preferred;
    // What a narrow window has made of the other pane stands, once a person arranges them in it.
    double newOther = other >= sideMinimum ? other
                      : isBinder           ? preferred.inspector
                                           : preferred.binder;
    double newOwn = own;
    if (locks.editor) {
        const bool otherMoves =
            isBinder ? visible.inspector && !locks.inspector : visible.binder && !locks.binder;
        if (!otherMoves || other < sideMinimum)
            return preferred;
        newOwn = std::clamp(width, sideMinimum, own + other - sideMinimum);
        newOther = own + other - newOwn;
    } else {
        const bool otherIsSqueezed = other < sideMinimum && visible.binder && visible.inspector;
        const double limit = otherIsSqueezed ? sideMaximum : maximumThickness;
        const double widest = std::max(std::min(available() - other, limit), sideMinimum);
        newOwn = std::clamp(width, sideMinimum, widest);
    }
    return isBinder ? SideWidths{newOwn, newOther} : SideWidths{newOther, newOwn};
}

WriteBack widthWriteBack(double liveWidth, bool visible)
{
    if (liveWidth < sideMinimum)
        return WriteBack::Block;
    return visible ? WriteBack::Store : WriteBack::StoreHidden;
}

QString writeBackLogLine(SidePane pane, double liveWidth, bool visible)
{
    const QString name = pane == SidePane::Binder ? u"binder"_s : u"inspector"_s;
    QString start;
    switch (widthWriteBack(liveWidth, visible)) {
    case WriteBack::Store:
        start = u"💾 writing %1 width "_s.arg(name);
        break;
    case WriteBack::StoreHidden:
        start = u"💾 preserving hidden %1 width "_s.arg(name);
        break;
    case WriteBack::Block:
        start = u"⚠️ blocked %1 zero-width writeback "_s.arg(name);
        break;
    }
    return start + QString::number(int(liveWidth)) +
           (visible ? u" (visible=true)"_s : u" (visible=false)"_s);
}

bool needsStartupRepair(const SideWidths& live, const SideVisibility& visible)
{
    return (visible.binder && live.binder < sideMinimum) ||
           (visible.inspector && live.inspector < sideMinimum);
}

} // namespace orvane
