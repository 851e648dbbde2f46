// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/tags/TagSettings.h"
#include "text/value/RgbaColor.h"

#include <array>

namespace orvane {

/// The colours of tags for which nobody has chosen one.
namespace TagColorPalette {

inline constexpr std::array<RgbaColor, 10> colors{{
    {1.0, 0.42, 0.42},
    {1.0, 0.63, 0.27},
    {0.99, 0.8, 0.34},
    {0.29, 0.85, 0.98},
    {0.11, 0.82, 0.63},
    {0.33, 0.63, 1.0},
    {0.55, 0.37, 1.0},
    {1.0, 0.42, 0.83},
    {0.67, 0.75, 0.84},
    {0.56, 0.56, 0.58},
}};

/// The same for every spelling of a tag, and the same in every run of the program and on every
/// machine: the FNV-1a hash of the lower-cased tag chooses.
[[nodiscard]] RgbaColor autoColor(const QString& tag);

} // namespace TagColorPalette

/// The colour that a tag is shown in: the one that was chosen for it, else the palette's. A stored
/// text that is no colour counts as none.
[[nodiscard]] RgbaColor tagColor(const TagSettings& settings, const QString& tag);

} // namespace orvane
