// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/value/AttributedString.h"
#include "text/value/HeadingSizes.h"

#include <QByteArray>

namespace orvane {

/// The text as an HTML document in UTF-8, for the clipboard and for files: fonts, sizes, colours,
/// highlight, bold, italic, underline, strike, super- and subscript, links, alignment, direction,
/// indents, tab stops, spacing, lists, headings, tables, and pictures as data URLs (a chart as its
/// picture). `readHtml` gives all of these back, but not the look of a list's markers, nor what an
/// item's style has beside the usual indents, nor the frames of paragraphs.
///
/// List items (`ListItems.h`) are items of lists, boxes are check boxes, and headings, which are
/// told by the sizes that they have at this person's (`headings`), are headings, for outlines and
/// numbering.
///
/// Text within one paragraph, without "\n", is written without a paragraph round it, so that it can
/// be pasted into a line.
[[nodiscard]] QByteArray writeHtml(const AttributedString& text, const HeadingSizes& headings);

} // namespace orvane
