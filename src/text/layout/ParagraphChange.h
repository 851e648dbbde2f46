// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/layout/ParagraphBox.h"

namespace orvane {

/// A change of the text within one paragraph, and the lines that stood there before it.
struct ParagraphChange {
    QTextBlock block;
    int from = 0; ///< in the paragraph
    int removed = 0;
    int added = 0;
    std::vector<BrokenLine> linesBefore; ///< from the top of the content
    bool wasDecorated = false;
};

/// [first, past) of the lines that a paragraph has now.
struct LineStretch {
    std::size_t first = 0;
    std::size_t past = 0;
};

/// Which of the `lines` that a paragraph has since `change` look different: what the change touched
/// or broke anew.
[[nodiscard]] LineStretch changedLines(const ParagraphChange& change,
                                       const std::vector<BrokenLine>& lines);

} // namespace orvane
