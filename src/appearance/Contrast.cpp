// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/Contrast.h"

#include "appearance/Tokens.h"

#include <cmath>

namespace orvane {

namespace {

double linear(double channel)
{
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

} // namespace

double relativeLuminance(const QColor& color)
{
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

double contrastRatio(const QColor& one, const QColor& other)
{
    const double a = relativeLuminance(one);
    const double b = relativeLuminance(other);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

QColor blended(const QColor& top, double opacity, const QColor& ground)
{
    const auto mix = [&](int above, int below) {
        return int(std::lround(above * opacity + below * (1 - opacity)));
    };
    return QColor(mix(top.red(), ground.red()), mix(top.green(), ground.green()),
                  mix(top.blue(), ground.blue()));
}

QColor readableInk(const QColor& ink, const QColor& surface, double minimum)
{
    if (contrastRatio(ink, surface) >= minimum)
        return ink;
    const QColor goal = contrastRatio(Qt::white, surface) >= contrastRatio(Qt::black, surface)
                            ? QColor(Qt::white)
                            : QColor(Qt::black);
    for (int percent = 2; percent < 100; percent += 2) {
        const QColor candidate = blended(goal, percent / 100.0, ink);
        if (contrastRatio(candidate, surface) >= minimum)
            return candidate;
    }
    return goal;
}

InkPolarity polarityOf(const QColor& ink, const QColor& surface)
{
    return relativeLuminance(ink) > relativeLuminance(surface) ? InkPolarity::LightOnDark
                                                               : InkPolarity::DarkOnLight;
}

QColor inkFor(const QColor& surface)
{
    static const QColor nearBlack(0x0B, 0x0D, 0x10);
    return contrastRatio(nearBlack, surface) >= contrastRatio(Qt::white, surface)
               ? nearBlack
               : QColor(Qt::white);
}

Tokens withDerivedInks(Tokens tokens)
{
    Tokens t = tokens;
    for (const QColor& surface : {t.window, t.pane, t.page, t.card, t.field, t.control}) {
        t.text = readableInk(t.text, surface);
        t.textSecondary = readableInk(t.textSecondary, surface);
        t.icon = readableInk(t.text, surface, iconContrast);
    }
    t.accentIcon = t.accent;
    t.dangerText = t.danger;
    for (const QColor& surface : {t.window, t.pane, t.page, t.card}) {
        t.accentIcon = readableInk(t.accentIcon, surface, iconContrast);
        t.dangerText = readableInk(t.dangerText, surface);
    }
    t.textOnBand = readableInk(t.text, t.band);
    t.textSecondaryOnBand = readableInk(t.textSecondary, t.band);
    t.dangerOnBand = readableInk(t.danger, t.band);
    t.textOnRail = inkFor(t.rail);
    t.textSecondaryOnRail = readableInk(blended(t.textOnRail, 0.6, t.rail), t.rail);
    t.textOnAccent = inkFor(t.accent);
    t.textOnDanger = inkFor(t.danger);
    t.selectedRow = blended(t.accent, 0.16, t.pane);
    t.hoveredRow = blended(t.text, 0.06, t.pane);
    t.textOnSelectedRow = readableInk(t.text, t.selectedRow);
    t.textSecondaryOnSelectedRow = readableInk(t.textSecondary, t.selectedRow);
    t.accentWash = blended(t.accent, 0.14, t.card);
    return t;
}

} // namespace orvane
