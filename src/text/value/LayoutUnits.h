// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QtGlobal>

namespace orvane {

/// Text is laid out once, at this many units for a point, and drawn at any zoom through the
/// painter's scale. At two units a point every half-point font size is a whole number of pixels,
/// which is what font sizes are rounded to, so widths are the same at every zoom.
inline constexpr qreal layoutUnitsPerPoint = 2;

} // namespace orvane
