// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/layout/ParagraphBox.h"

namespace orvane {

/// The character that a page break stands as, alone in its paragraph.
inline constexpr char16_t pageBreakCharacter = u'\f';

[[nodiscard]] bool isPageBreak(const QTextBlock& block);

/// Breaks the paragraph's text from `start` on into lines: the first that together hold `wanted`
/// characters or more, or all that are left. A line looks at no more text than it needs, so this
/// costs the same in a paragraph of any length. `start` is where a line begins; where lines after
/// the first begin is noted in `hanging` with the paragraph's first line, and read by all others.
/// `before` is the layout of lines that began elsewhere in the same text, or null; it saves work.
[[nodiscard]] BrokenPiece breakPiece(const ParagraphSource& source, int start, int wanted,
                                     std::optional<qreal>& hanging,
                                     std::unique_ptr<PieceLayout> before = nullptr);

/// About how many characters behind its own a line may depend on: more than any line of `column`
/// holds in characters of the average `characterWidth`.
[[nodiscard]] int lineReach(qreal column, qreal characterWidth);

/// Which way a paragraph runs, and the first of its characters that has a say in it.
struct BaseDirection {
    bool rightToLeft = false;
    int decidedAt = 0;
};
[[nodiscard]] BaseDirection baseDirection(const TextStore& store, const QTextBlock& block,
                                          WritingDirection direction);

/// The font of the character that ends `block`, or of the typing position at the text's end: what
/// an empty paragraph is as high as. `font` is that of text that names none.
[[nodiscard]] QFont closingFont(const QTextBlock& block, const QFont& font);

/// How much higher than its own height a line in `font` must be for `lineHeight`; at least 1.
[[nodiscard]] qreal lineStretch(const QFont& font, qreal lineHeight);

} // namespace orvane
