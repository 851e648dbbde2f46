// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/value/TextRange.h"

#include <QList>
#include <QStringView>

namespace orvane {

// The two patterns that reach over any number of lines, as scanners that take linear time where a
// backtracking expression would search the rest of the text again for each opening without an end.

/// All matches of `^(`{3,})(.*?)\n([\s\S]*?)^\1\s*$` with anchors at lines.
[[nodiscard]] QList<TextRange> fencedBlocks(QStringView text);

/// A match of `\[([^\]]+)\]\(([^)]+)\)`, by its four brackets.
struct MarkdownLink {
    qsizetype textOpen = 0;
    qsizetype textClose = 0;
    qsizetype targetClose = 0;

    bool operator==(const MarkdownLink&) const = default;

    [[nodiscard]] TextRange range() const { return TextRange::between(textOpen, targetClose + 1); }
    [[nodiscard]] TextRange text() const { return TextRange::between(textOpen + 1, textClose); }
    [[nodiscard]] TextRange target() const
    {
        return TextRange::between(textClose + 2, targetClose);
    }
};
[[nodiscard]] QList<MarkdownLink> markdownLinks(QStringView text);

} // namespace orvane
