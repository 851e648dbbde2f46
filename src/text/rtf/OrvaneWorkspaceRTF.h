// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/value/AttributedString.h"
#include "text/value/HeadingSizes.h"

#include <QByteArray>

#include <optional>

/// Rich Text Format, the second stored form of a rich note and what other programs exchange. May
/// run on any thread.
namespace orvane::OrvaneWorkspaceRTF {

/// The document as RTF that word processors read: fonts, sizes, colours, highlight, bold, italic,
/// underline, strike, super- and subscript, alignment, indents, tabs, spacing, hyperlinks, tables
/// and pictures (a chart as its picture), and the colour of the page where one is given. Nothing
/// for an empty document.
///
/// Lost are: transparency, weights other than bold, list labels and floating positions (a list's
/// markers are text and stay), the link of a newline, tail indents that are counted from the
/// leading margin, and added space between lines.
[[nodiscard]] std::optional<QByteArray>
data(const AttributedString& document,
     const std::optional<RgbaColor>& documentBackgroundColor = std::nullopt,
     const HeadingSizes& headings = {});

/// The text of an RTF document; nothing when the bytes are no RTF. The page's colour is left out.
[[nodiscard]] std::optional<AttributedString> read(const QByteArray& rtf);

} // namespace orvane::OrvaneWorkspaceRTF
