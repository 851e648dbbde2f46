// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/ParagraphBox.h"
#include "text/ParagraphStyle.h"

#include <QTextBlock>
#include <QTextLayout>

namespace orvane {

/// How lines are made in a whole text, beside what each paragraph says itself.
struct LineSettings {
    /// The least distance from line to line, as a multiple of the font size. Fonts whose own lines
    /// are higher keep theirs.
    qreal lineHeight = 1.0;
    /// Where a paragraph names no tab interval, in points.
    qreal tabInterval = 28;

    bool operator==(const LineSettings&) const = default;
};

/// The character that a page break stands as, alone in its paragraph.
inline constexpr char16_t pageBreakCharacter = u'\f';

[[nodiscard]] bool isPageBreak(const QTextBlock& block);

/// Breaks `block` into lines of `box.column` and sets `box.lines` and the height of `box.content`.
void breakLines(const QTextBlock& block, const ParagraphStyle& style, const LineSettings& settings,
                ParagraphBox& box);

/// The font of the character that ends `block`, or of the typing position at the text's end: what
/// an empty paragraph is as high as.
[[nodiscard]] QFont closingFont(const QTextBlock& block);

/// How much higher than its own height a line in `font` must be for `lineHeight`; at least 1.
[[nodiscard]] qreal lineStretch(const QFont& font, qreal lineHeight);

} // namespace orvane
