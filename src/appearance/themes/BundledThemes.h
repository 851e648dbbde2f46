// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/themes/AppearanceTheme.h"

namespace orvane {

/// The themes that come with the program. Their identifiers never change, so that an update never
/// makes a second copy of one.
[[nodiscard]] const AppearanceThemeBundle& googleWorkspaceBundle();
/// The look of the first start is its dark variant.
[[nodiscard]] const AppearanceThemeBundle& signatureBundle();

} // namespace orvane
