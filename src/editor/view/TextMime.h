// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/value/HeadingSizes.h"
#include "text/value/ImportedText.h"

#include <QMimeData>

#include <functional>
#include <memory>
#include <optional>

namespace orvane {

/// Whether a text view takes and gives attributes, or characters only.
enum class TextFormatting { plain, rich };

/// Text on the clipboard and in a drag: rich text in our own form, which keeps everything, as RTF,
/// as HTML, and always as plain text.
namespace textMime {

/// The type of our own form, the archive of a rich note.
[[nodiscard]] QString archiveType();

/// Each form is made when someone asks for it, so copying a long text costs little. Headings are
/// told by `headings`.
[[nodiscard]] std::unique_ptr<QMimeData>
encode(const AttributedString& text, TextFormatting formatting, const HeadingSizes& headings);
/// The same for the text that `text()` gives, which is called when a form is asked for.
[[nodiscard]] std::unique_ptr<QMimeData> encodeLater(std::function<AttributedString()> text,
                                                     TextFormatting formatting,
                                                     const HeadingSizes& headings);
/// The same for a text that is one image, which other programs take as that.
[[nodiscard]] std::unique_ptr<QMimeData> encodeImageLater(std::function<AttributedString()> text,
                                                          const HeadingSizes& headings);

[[nodiscard]] bool canDecode(const QMimeData& data, TextFormatting formatting);
/// How text looks where it goes.
struct Surroundings {
    SharedCharacterStyle style;
    SharedParagraphStyle paragraph;
};
/// The text of the richest form that can be read. What brings no attributes of its own takes those
/// of `place`; addresses in a rich text are links. With what another program's document had beside
/// its text.
[[nodiscard]] std::optional<ImportedText> decode(const QMimeData& data, TextFormatting formatting,
                                                 const Surroundings& place);
/// Whether `decoded` has all the text and objects of the data it was decoded from: no file is only
/// named, no picture left out.
[[nodiscard]] bool bringsAll(const QMimeData& data, const AttributedString& decoded);

} // namespace textMime
} // namespace orvane
