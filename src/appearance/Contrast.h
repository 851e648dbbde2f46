// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/Typography.h"

#include <QColor>
#include <QList>

namespace orvane {

inline constexpr double textContrast = 4.5;
inline constexpr double iconContrast = 3.0;

/// Relative luminance from 0 to 1 of an opaque sRGB colour, as WCAG 2.1 defines it.
[[nodiscard]] double relativeLuminance(const QColor& color);

/// The contrast of two opaque colours, from 1 to 21 (WCAG 2.1, 1.4.3).
[[nodiscard]] double contrastRatio(const QColor& one, const QColor& other);

/// `top` at `opacity` (0 to 1) over an opaque `ground`.
[[nodiscard]] QColor blended(const QColor& top, double opacity, const QColor& ground);

/// Black or white, whichever reads better on all of the grounds.
[[nodiscard]] QColor extremeInk(const QList<QColor>& grounds);

/// `ink`, or where its contrast on one of the grounds is below `minimum` the nearest colour on the
/// way to black or white, whichever reads better on them, that reaches it on all. On grounds that
/// have no such colour, that end of the way itself.
[[nodiscard]] QColor readableInk(const QColor& ink, const QList<QColor>& grounds, double minimum);
[[nodiscard]] QColor readableInk(const QColor& ink, const QColor& ground,
                                 double minimum = textContrast);

/// Whether `ink` on `surface` is dark on light.
[[nodiscard]] InkPolarity polarityOf(const QColor& ink, const QColor& surface);

/// Near-black or white, whichever reads better on `ground`; always at least 4.5 to 1.
[[nodiscard]] QColor inkFor(const QColor& ground);

} // namespace orvane
