// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/DesktopColorScheme.h"

#include <QColor>

namespace orvane {

/// The colours that stand where the look names none, for a light and for a dark ground.
struct SystemColors {
    QColor textBackground; ///< what one writes on
    QColor text;
    QColor secondaryText;
    QColor controlAccent;
    QColor danger;
    QColor success;
    QColor orange;
    QColor purple;
    QColor marker; ///< of a felt pen, behind text
};

[[nodiscard]] const SystemColors& systemColors(ColorScheme scheme);

/// The scheme whose text reads better on an opaque ground.
[[nodiscard]] ColorScheme schemeOfGround(const QColor& ground);

} // namespace orvane
