// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/records/Blob.h"
#include "text/value/AttributedString.h"
#include "text/value/HeadingSizes.h"
#include "text/value/ImageFile.h"

#include <QString>

#include <optional>

namespace orvane {

/// Whether a text is written with attributes or without.
enum class TextForm { rich, plain };

/// The forms in which a note's text is stored. For a rich note the first that can be read and is
/// not empty counts: `rich`, `rtf`, `plain`; in other modes always `plain`.
struct StoredText {
    QString plain;
    std::optional<Blob> rtf;
    std::optional<Blob> rich; ///< a `RichNoteContentPayload`

    /// Whether the store gives the first form's bytes, whatever they are.
    [[nodiscard]] bool isReadable() const;

    /// Whether a text of `form` that is read from either is the same.
    [[nodiscard]] bool isSame(const StoredText& other, TextForm form) const;
};

/// The text of a rich note, as it is edited: `base` is the font of characters that have none.
[[nodiscard]] AttributedString readRichText(const StoredText& stored, const TextFont& base);

/// Whether a text has anything that plain text can't say: an attachment, or attributes beside one
/// font for all of it.
[[nodiscard]] bool hasFormatting(const AttributedString& text);

/// What is stored as the plain form of an edited text: attachments are spaces, line separators are
/// newlines.
[[nodiscard]] QString plainForm(QString text);

/// The stored forms of a rich text, in which the bytes of its images are not. `rtf` and `rich` are
/// absent for an empty text.
struct RichForms {
    std::optional<QByteArray> rtf;
    std::optional<QByteArray> rich;
    QString plain;
    QList<ImageFile> images; ///< which the two first refer to
};
/// Headings are told by `headings`. May run on any thread.
[[nodiscard]] RichForms richForms(const AttributedString& text, const HeadingSizes& headings);

} // namespace orvane
