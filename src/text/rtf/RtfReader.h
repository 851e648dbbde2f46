// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/value/ImportedText.h"

#include <QByteArrayView>
#include <QUuid>

#include <functional>
#include <optional>

namespace orvane {

/// What an RTF document says.
struct RtfContent {
    AttributedString text;
    std::optional<RgbaColor> backgroundColor; ///< of the page
    ImportAccount account;
};

/// Reads Rich Text Format: fonts, sizes, colours, highlight, bold, italic, underline, strike,
/// super- and subscript, alignment, indents, tabs, spacing, lists (also those that only the list
/// table describes), hyperlinks, bookmarks that one of them leads to, tables, PNG and JPEG
/// pictures, the page's background, Unicode and the code pages of the font table. What it does not
/// know it skips.
///
/// Footnotes (`LinkTargets.h`) come in as numbered paragraphs at the end, linked both ways by names
/// that no other document has; comments and text boxes as marked paragraphs behind theirs; floating
/// and metafile pictures as words that say what was there.
///
/// A document that is cut short gives what stands before the cut. Nothing when the bytes don't
/// begin as RTF. Memory stays within a small multiple of the input, and the time is linear in it.
///
/// `newId` makes the identities of tables and pictures and the names of footnotes.
[[nodiscard]] std::optional<RtfContent>
readRtf(QByteArrayView rtf, const std::function<QUuid()>& newId = QUuid::createUuid);

} // namespace orvane
