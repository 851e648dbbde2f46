// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/value/AttributedString.h"

#include <QTextDocument>

#include <memory>

namespace orvane::bench {

/// Pixels for a point, as the editor shows notes until told otherwise.
inline constexpr double usualZoom = 1.25;

/// A note as people write them, of `words` words: paragraphs of 40 to 120 words, headings, and a
/// change of the attributes about every twelve words. Always the same.
[[nodiscard]] AttributedString sampleText(int words);

/// The same words and attributes as one paragraph.
[[nodiscard]] AttributedString sampleParagraph(int words);
/// Letters without a blank.
[[nodiscard]] QString sampleWord(int letters);

/// A table with a few words in each cell, with a paragraph before and after it.
[[nodiscard]] AttributedString sampleTable(int rows, int columns);

/// The same text for the toolkit's own widget, with fonts of the same size on the screen.
[[nodiscard]] std::unique_ptr<QTextDocument> stockDocument(const AttributedString& text);
[[nodiscard]] std::unique_ptr<QTextDocument> stockTable(int rows, int columns);

} // namespace orvane::bench
