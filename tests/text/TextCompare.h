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

/// The text run by run, each as "looks|characters": what differs from Charis of 12 points ("b",
/// "i", "u", "s", "super", "sub", "Arimo", "20", "#RRGGBB", "on #RRGGBB", "->link", "@target"), and
/// at the start of a paragraph "L1" and so on for a list's level, "fill #RRGGBB", tab stops, "cell"
/// and the width of the line above it.
[[nodiscard]] QStringList describeRuns(const AttributedString& text);

} // namespace orvane
