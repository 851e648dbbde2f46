// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/value/TextSelection.h"

#include <QStringView>

namespace orvane {

class TextStore;

// What a person takes for one character may be several units of UTF-16: a surrogate pair, a letter
// with its accents, a family of emoji (extended grapheme clusters, UAX #29). Positions of carets
// and edits stand between them. Only the surroundings of a position are looked at, so these cost
// the same in a text of any length.

/// The nearest boundary at or before `position`, and at or after it.
[[nodiscard]] qsizetype graphemeStart(QStringView text, qsizetype position);
[[nodiscard]] qsizetype graphemeEnd(QStringView text, qsizetype position);
[[nodiscard]] bool isGraphemeBoundary(QStringView text, qsizetype position);
[[nodiscard]] bool isGraphemeBoundary(const TextStore& store, qsizetype position);

/// `selection`, so that it parts no character: a caret goes behind it, a range takes it in.
[[nodiscard]] TextSelection aroundWholeGraphemes(const TextStore& store, TextSelection selection);

} // namespace orvane
