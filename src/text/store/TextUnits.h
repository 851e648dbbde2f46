// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/value/TextRange.h"

#include <QTextBoundaryFinder>

namespace orvane {

class TextStore;

// The units of a paragraph, by the boundaries of UAX #29. Only what stands round a position is
// looked at, so these cost the same in a paragraph of any length, as long as its units are short.

/// The unit that holds the character at `position`, which must be below the end of its paragraph.
[[nodiscard]] TextRange unitAround(const TextStore& store, qsizetype position,
                                   QTextBoundaryFinder::BoundaryType type);

/// The next and the previous place for a caret within the paragraph, or its ends.
[[nodiscard]] qsizetype nextGrapheme(const TextStore& store, qsizetype position);
[[nodiscard]] qsizetype previousGrapheme(const TextStore& store, qsizetype position);
/// The start of the next word of the paragraph, and of the word that `position` is in or behind.
[[nodiscard]] qsizetype nextWordStart(const TextStore& store, qsizetype position);
[[nodiscard]] qsizetype previousWordStart(const TextStore& store, qsizetype position);

} // namespace orvane
