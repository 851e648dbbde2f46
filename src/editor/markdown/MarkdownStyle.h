// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QList>

namespace orvane {

/// What a part of Markdown is coloured as. The colours themselves are the theme's.
enum class MarkdownColor : quint8 {
    text,
    heading,
    code,
    link,
    linkTarget,
    blockquote,
    listMarker,
    taskCheckbox,
    punctuation
};

/// How one character of Markdown is shown. It says nothing of fonts and colours in use, so it stays
/// true when these change.
struct MarkdownStyle {
    quint8 headingLevel : 3 = 0; ///< 1 to 6 for a heading, which is bold; 0 for other text
    quint8 isBold : 1 = 0;
    quint8 isItalic : 1 = 0;
    quint8 isCode : 1 = 0; ///< in the code font, at the base size
    quint8 isUnderlined : 1 = 0;
    quint8 isStruckOut : 1 = 0;
    MarkdownColor color = MarkdownColor::text;

    bool operator==(const MarkdownStyle&) const = default;
};
static_assert(sizeof(MarkdownStyle) == 2);

/// A stretch of a line in one style, counted from the line's start.
struct MarkdownSpan {
    int start = 0;
    int length = 0;
    MarkdownStyle style;

    bool operator==(const MarkdownSpan&) const = default;
};

/// The spans of a line by rising start; what lies between them is base text.
using MarkdownSpans = QList<MarkdownSpan>;

} // namespace orvane
