// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/value/AttributedString.h"

namespace orvane {

class TextStore;

/// What keeps tables whole while a person edits: a cell is one paragraph, so no edit may join two
/// cells, cut one in two, or join one with the text around the table.
namespace cellRules {

/// What of `range` may go, in order. Cells that are touched are emptied and stay; a table that
/// `range` covers from its first character to the end of its last cell goes as a whole.
[[nodiscard]] QList<TextRange> removableParts(const TextStore& store, TextRange range);

[[nodiscard]] bool isInCell(const TextStore& store, qsizetype position);

/// `insertion` in the form in which it may be put at `position`: within a cell one paragraph with
/// line breaks; elsewhere with whole tables as tables of their own on lines of their own, and
/// pieces of tables as plain paragraphs.
[[nodiscard]] AttributedString fitted(const TextStore& store, qsizetype position,
                                      const AttributedString& insertion);

} // namespace cellRules
} // namespace orvane
