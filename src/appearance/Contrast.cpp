// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/Contrast.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace orvane {

namespace {

double linear(int channel)
{
    static const std::array<double, 256> table = [] {
        std::array<double, 256> values{};
        for (int i = 0; i < 256; ++i) {
            const double share = i / 255.0;
            values[i] = share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
        }
        return values;
    }();
    return table[channel];
}

double lowestContrast(const QColor& ink, const QList<QColor>& grounds)
{
    double lowest = 21;
    for (const QColor& ground : grounds)
        lowest = std::min(lowest, contrastRatio(ink, ground));
    return lowest;
}

} // namespace

double relativeLuminance(const QColor& color)
{
    const QRgb rgb = color.rgb();
    return 0.2126 * linear(qRed(rgb)) + 0.7152 * linear(qGreen(rgb)) + 0.0722 * linear(qBlue(rgb));
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

QColor extremeInk(const QList<QColor>& grounds)
{
    return lowestContrast(Qt::white, grounds) >= lowestContrast(Qt::black, grounds)
               ? QColor(Qt::white)
               : QColor(Qt::black);
}

QColor readableInk(const QColor& ink, const QList<QColor>& grounds, double minimum)
{
    if (lowestContrast(ink, grounds) >= minimum)
        return ink;
    const QColor goal = extremeInk(grounds);
    // An ink from the other side of the grounds' brightness first gets worse on the way.
    for (int percent = 2; percent < 100; percent += 2) {
        const QColor candidate = blended(goal, percent / 100.0, ink);
        if (lowestContrast(candidate, grounds) >= minimum)
            return candidate;
    }
    return goal;
}

InkPolarity polarityOf(const QColor& ink, const QColor& surface)
{
    return relativeLuminance(ink) > relativeLuminance(surface) ? InkPolarity::LightOnDark
                                                               : InkPolarity::DarkOnLight;
}

QColor readableInk(const QColor& ink, const QColor& ground, double minimum)
{
    return readableInk(ink, QList<QColor>{ground}, minimum);
}

QColor inkFor(const QColor& ground)
{
    static const QColor nearBlack(0x0B, 0x0D, 0x10);
    const bool dark = contrastRatio(nearBlack, ground) >= contrastRatio(Qt::white, ground);
    return readableInk(dark ? nearBlack : QColor(Qt::white), ground, textContrast);
}

} // namespace orvane
