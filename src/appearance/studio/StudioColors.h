// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/Tokens.h"
#include "appearance/themes/AppearanceValues.h"

#include <QString>

#include <vector>

namespace orvane {

/// One colour of the look as a person edits it.
struct StudioColor {
    QString name;
    AppearanceColor (*get)(const AppearanceValues&) = nullptr;
    void (*set)(AppearanceValues&, const AppearanceColor&) = nullptr;
    /// The glass of the same part; null for parts that are no glass.
    AppearanceGlass AppearanceValues::*glass = nullptr;
    /// The member behind `get`, by which its contrast is found; null for the backdrop.
    AppearanceColor AppearanceValues::*member = nullptr;
    /// What the tokens make of it, shown while the colour is left to the program.
    QColor (*shown)(const Tokens&) = nullptr;
    /// The window's backdrop always has a colour of its own, without alpha.
    bool canBeAutomatic = true;
};

/// Every colour of the look, in the order in which the studio shows them.
[[nodiscard]] const std::vector<StudioColor>& studioColors();

} // namespace orvane
