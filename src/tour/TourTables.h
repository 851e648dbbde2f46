// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "tour/TourFormatting.h"

namespace orvane {

/// Makes a table at the end of the rich note on the screen and works on it, in both looks; then
/// takes it back.
void tourTables(const TourStop& stop);

} // namespace orvane
