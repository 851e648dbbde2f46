// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/lists/EditorListStyle.h"
#include "text/value/AttributedString.h"

namespace orvane {

/// A paragraph, or a line of a table's cell, that is an item of a list.
struct ListItem {
    TextRange paragraph; ///< or line, without what ends it
    TextRange marker;    ///< within the tabs before it and the blank behind it
    EditorListStyle style = EditorListStyle::disc; ///< `disc` for a bullet of a person's own, too
    int level = 0;                                 ///< from 0
    int number = 0;                                ///< of a numbered item

    [[nodiscard]] qsizetype contentStart() const { return marker.end() + 1; }
};

/// The items of a text's lists, in their order. An item is a paragraph that begins with a marker
/// and whose style says that it belongs to a list, and the one before the first of these where it
/// begins the same list; other lines that look alike are prose. The lines of a cell share one
/// style: where it doesn't say so, those with a bullet are items, and of those with numbers and
/// dashes runs of at least two. Markers that could be two things are read by the item before.
[[nodiscard]] QList<ListItem> listItems(const AttributedString& text);

} // namespace orvane
