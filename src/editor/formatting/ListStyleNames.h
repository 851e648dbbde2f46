// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/lists/EditorListStyle.h"

namespace orvane {

/// What a person reads for a list style: "Upper Roman".
[[nodiscard]] QString displayName(EditorListStyle style);

/// What items of the style begin with: "•" or "I. II. III."
[[nodiscard]] QString markerSample(EditorListStyle style);

} // namespace orvane
