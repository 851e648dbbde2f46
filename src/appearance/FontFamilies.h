// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QStringList>

namespace orvane {

/// The families that a note can be written in: "Georgia" and "Menlo", which every machine shows in
/// its own way, then what is installed here and can show Latin letters, by name.
[[nodiscard]] QStringList writingFontFamilies();

} // namespace orvane
