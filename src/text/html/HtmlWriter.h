// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/value/AttributedString.h"

#include <QByteArray>

namespace orvane {

/// The text as an HTML document in UTF-8, for the clipboard and for files: fonts, sizes, colours,
/// highlight, bold, italic, underline, strike, links, alignment, direction, indents, spacing,
/// tables, and pictures as data URLs (a chart as its picture). `readHtml` gives all of these back.
///
/// Text within one paragraph, without "\n", is written without a paragraph round it, so that it can
/// be pasted into a line.
[[nodiscard]] QByteArray writeHtml(const AttributedString& text);

} // namespace orvane
