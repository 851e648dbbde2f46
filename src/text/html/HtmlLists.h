// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/html/HtmlElements.h"

#include <optional>

namespace orvane {

/// A list that is open while a document is read: how its items are marked.
struct HtmlList {
    ListMarker marker = ListMarker::disc;
    QString bullet; ///< one of the document's own; empty for that of `marker`
    bool hasMarker = true;
    int next = 1;
};

/// The list that an `ul` or `ol` element begins within `depth` others.
[[nodiscard]] HtmlList htmlList(HtmlTag tag, const HtmlToken& token, std::size_t depth);

/// Changes how items are marked by the attribute `type` and the declarations of `list-style` of a
/// list or an item.
void applyListStyle(HtmlList& list, const HtmlToken& token);

/// The marker of the next item; empty where it has none.
[[nodiscard]] QString htmlMarker(const HtmlList& list);

/// What word processors write in the place of lists: paragraphs that say in their style that they
/// are items (`mso-list`), and text within them that is the marker.
struct OfficeListStyle {
    int level = 0;         ///< from 0
    bool isMarker = false; ///< the element's text is the marker of the item round it
};
[[nodiscard]] std::optional<OfficeListStyle> officeListStyle(const HtmlToken& token);

/// A marker as such a document writes it, in letters of `family`, without the blanks round it.
[[nodiscard]] QString officeMarker(QStringView text, QStringView family);

} // namespace orvane
