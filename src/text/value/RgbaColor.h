// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QColor>
#include <QString>

#include <optional>

namespace orvane {

/// A colour as stored: red, green, blue and alpha from 0 to 1, in sRGB.
struct RgbaColor {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;

    bool operator==(const RgbaColor&) const = default;

    [[nodiscard]] QColor toQColor() const;
    [[nodiscard]] static RgbaColor fromQColor(const QColor& color);
};

/// "#RRGGBB", or "#RRGGBBAA" when the colour is not opaque.
[[nodiscard]] QString toHex(const RgbaColor& color);

/// Reads "#RGB", "#RRGGBB" or "#RRGGBBAA", with or without "#", in either case.
[[nodiscard]] std::optional<RgbaColor> rgbaFromHex(QStringView text);

} // namespace orvane
