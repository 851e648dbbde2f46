// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/Tokens.h"

namespace orvane {

/// What a surface is made of, before anything is made readable on it.
struct SurfaceChoice {
    QColor ground;
    QColor groundTop;    ///< with the backdrop's gradient shining through, else as `ground`
    QColor groundBottom; ///< likewise
    QColor text;
    QColor textSecondary;
    QColor icon;
    QColor accent;
    QColor danger;
    QColor warning;
    QColor border;
};

/// The surface with every ink moved toward black or white as far as it needs to read everywhere
/// that the surface puts it.
[[nodiscard]] SurfaceTokens surfaceTokens(const SurfaceChoice& choice);

} // namespace orvane
