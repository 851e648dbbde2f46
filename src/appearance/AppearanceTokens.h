// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/Tokens.h"
#include "appearance/themes/AppearanceValues.h"

#include <QList>

namespace orvane {

/// The tokens that a look makes. A surface whose colour the look doesn't name takes that of the
/// surface below it; an ink that it doesn't name takes the system's. An ink that doesn't read on
/// its surface is moved toward black or white until it does, except `Tokens::pageText`. Pure.
[[nodiscard]] Tokens tokensFor(const AppearanceValues& values);

/// The same look for writing on its paper: the page's ground is the paper, and every ink on it
/// reads there, the person's own too, which was chosen for another ground.
[[nodiscard]] Tokens tokensOnPaper(const Tokens& tokens);

/// The look of the first start.
[[nodiscard]] Tokens signatureDarkTokens();

/// One ink of a look that the person chose, measured on the surface that it stands on.
struct InkContrast {
    /// The ink's colour among the values.
    AppearanceColor AppearanceValues::*ink = nullptr;
    Surface surface = Surface::Page;
    double ratio = 1;
    /// What it should reach: 4.5 for text, 3 for icons and the cursor.
    double minimum = 4.5;
    /// Whether the tokens hold a readable ink in its place.
    bool madeReadable = false;
};

/// The lowest contrast of every ink that the look names.
[[nodiscard]] QList<InkContrast> inkContrasts(const AppearanceValues& values);

} // namespace orvane
