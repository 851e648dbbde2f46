// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QTextFormat>

namespace orvane {

/// Set in the format that text out of focus is drawn with: objects are dimmed as it is.
inline constexpr int dimmedObjectProperty = QTextFormat::UserProperty + 0x200;
inline constexpr qreal dimmedObjectOpacity = 0.35;

} // namespace orvane
