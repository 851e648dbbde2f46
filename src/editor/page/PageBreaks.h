// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/view/TextMime.h"
#include "text/store/EditGateway.h"

#include <QColor>

namespace orvane {

/// Puts a page break in the place of the selection, as one step to undo: a form feed in a paragraph
/// of its own, so "\n\f\n", with the caret behind it. In a rich text that paragraph is centred and
/// the form feed tiny, in the colour `line`; the text before and after keeps its own look. False
/// where the text may not be changed, and in tables, whose cells have no paragraphs.
bool insertPageBreak(EditGateway& text, TextFormatting formatting, const QColor& line);

} // namespace orvane
