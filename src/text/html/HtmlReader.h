// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/value/ImportedText.h"

#include <QByteArrayView>
#include <QUuid>

#include <functional>

namespace orvane {

struct HtmlReadOptions {
    /// The font of text for which the document names none.
    TextFont baseFont;
    /// Makes the identities of tables and images.
    std::function<QUuid()> newId = QUuid::createUuid;
};

/// Reads HTML as browsers and word processors put it on the clipboard and into files: paragraphs,
/// headings, lists (their markers become text), tables, links, the usual character formats, and
/// inline style declarations. Style sheets and scripts are passed over, and nothing is ever
/// fetched: images are taken from PNG and JPEG data URLs only; others give their alternative text.
/// The account counts what stays behind; not what is mere decoration, by the document's word or by
/// being no larger than a letter.
///
/// No input is an error. Memory stays within a small multiple of the input, and the time is linear
/// in it. Paragraphs are parted by "\n"; there is none behind the last.
[[nodiscard]] ImportedText readHtml(QStringView html, const HtmlReadOptions& options = {});

/// The same from the bytes of a file, in the encoding that they say, else UTF-8.
[[nodiscard]] ImportedText readHtmlBytes(QByteArrayView html, const HtmlReadOptions& options = {});

} // namespace orvane
