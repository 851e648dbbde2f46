// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/formatting/EditorHighlightStrength.h"

#include <array>
#include <cmath>

namespace orvane {

namespace {

struct Band {
    double lowest;
    double highest;
};

constexpr Band saturations{0.18, 0.88};
constexpr double leastBrightness = 0.76;
constexpr double mostOfGrey = 0.05;
/// By strength.
constexpr std::array<Band, 3> alphas{{{0.16, 0.24}, {0.18, 0.34}, {0.24, 0.44}}};

double within(const Band& band, double value)
{
    return std::clamp(value, band.lowest, band.highest);
}

struct Hsb {
    double hue = 0; // 0 to 6
    double saturation = 0;
    double brightness = 0;
};

Hsb hsbOf(const RgbaColor& color)
{
    const double most = std::max({color.red, color.green, color.blue});
    const double spread = most - std::min({color.red, color.green, color.blue});
    if (spread <= 0)
        return {0, 0, most};
    double hue = 0;
    if (most == color.red)
        hue = std::fmod((color.green - color.blue) / spread + 6, 6);
    else if (most == color.green)
        hue = (color.blue - color.red) / spread + 2;
    else
        hue = (color.red - color.green) / spread + 4;
    return {hue, spread / most, most};
}

RgbaColor colorOf(const Hsb& hsb, double alpha)
{
    const auto channel = [&hsb](double shift) {
        const double k = std::fmod(shift + hsb.hue, 6);
        return hsb.brightness * (1 - hsb.saturation * std::clamp(std::min(k, 4 - k), 0.0, 1.0));
    };
    return {channel(5), channel(3), channel(1), alpha};
}

} // namespace

RgbaColor normalizeHighlight(const RgbaColor& color, EditorHighlightStrength strength)
{
    const double alpha = within(alphas[std::size_t(strength)], color.alpha);
    Hsb hsb = hsbOf(color);
    if (hsb.saturation <= 0 && hsb.brightness <= 0)
        return {color.red, color.green, color.blue, alpha};
    // What has no hue of its own stays grey.
    if (hsb.saturation > mostOfGrey)
        hsb.saturation = within(saturations, hsb.saturation);
    hsb.brightness = std::max(hsb.brightness, leastBrightness);
    return colorOf(hsb, alpha);
}

} // namespace orvane
