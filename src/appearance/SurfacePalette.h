// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/Tokens.h"

#include <QPalette>

namespace orvane {

/// The palette of what stands on a surface: `Window` is its ground, `WindowText` and `Text` are its
/// ink, `PlaceholderText` its secondary ink, `BrightText` the ink that warns, `Button` and
/// `ButtonText` a plain button, `AlternateBase` the ground of a field with a frame, `Mid` its
/// lines, `Link` text in the accent colour, `LinkVisited` marks and rings in it, `Highlight`
/// selected text. Pure.
[[nodiscard]] QPalette surfacePalette(const Tokens& tokens, Surface surface);

} // namespace orvane
