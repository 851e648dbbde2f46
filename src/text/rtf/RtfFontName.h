// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QString>

namespace orvane {

/// The family that a font table's name speaks of: trimmed, and without the style that PostScript
/// names carry behind a hyphen ("Charis-BoldItalic"), which the text's own properties repeat.
/// Without the script, too, that names carry for fonts of that `\fcharsetN` ("Charis CE").
[[nodiscard]] QString rtfFontFamily(const QString& name, int charset = 1);

} // namespace orvane
