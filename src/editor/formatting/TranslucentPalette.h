// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/formatting/ColorPopup.h"
#include "text/value/RgbaColor.h"

namespace orvane {

class UserDefaults;

/// `color` as it is put behind text, by the settings.
[[nodiscard]] RgbaColor fitBehindText(const RgbaColor& color, const UserDefaults& defaults);

/// Colours for what stands behind text, each as it looks on the page.
[[nodiscard]] ColorPopup::Palette translucentPalette(const QString& name,
                                                     const std::optional<RgbaColor>& current,
                                                     const Look& look,
                                                     const UserDefaults& defaults);

} // namespace orvane
