// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/value/HeadingSizes.h"
#include "text/value/ImportedText.h"

#include <QByteArray>

#include <optional>

/// Rich Text Format, the second stored form of a rich note and what other programs exchange. May
/// run on any thread.
namespace orvane::OrvaneWorkspaceRTF {

/// The document as RTF that word processors read: fonts, sizes, colours, highlight, bold, italic,
/// underline, strike, super- and subscript, alignment, indents, tabs, spacing, hyperlinks, link
/// targets, tables and pictures (a chart as its picture), and the colour of the page where one is
/// given. Nothing for an empty document.
///
/// List items (`ListItems.h`) are items of lists, and headings, which are told by the sizes that
/// they have at this person's (`headings`), are headings, for outlines and numbering.
///
/// Lost are: transparency, weights other than bold, list labels and floating positions (a list's
/// markers are text and stay), the link of a newline, tail indents that are counted from the
/// leading margin, and added space between lines.
[[nodiscard]] std::optional<QByteArray>
data(const AttributedString& document, const HeadingSizes& headings,
     const std::optional<RgbaColor>& documentBackgroundColor = std::nullopt);

/// The text of an RTF document, with an account of what stands beside it; nothing when the bytes
/// are no RTF. The page's colour is left out.
[[nodiscard]] std::optional<ImportedText> read(const QByteArray& rtf);

} // namespace orvane::OrvaneWorkspaceRTF
