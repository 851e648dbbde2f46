// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/value/AttributedString.h"

#include <QStringList>

namespace orvane {

/// Takes out what every reader makes anew or rounds: identities of tables and images, parts of a
/// percent in cell widths.
void forgetIdentities(AttributedString& text);

/// "row,column rows×columns width text", a line a cell.
[[nodiscard]] QStringList describeCells(const AttributedString& text);

} // namespace orvane
