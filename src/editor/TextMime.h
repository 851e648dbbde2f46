// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/AttributedString.h"

#include <QMimeData>

#include <memory>
#include <optional>

namespace orvane {

/// Whether a text view takes and gives attributes, or characters only.
enum class TextFormatting { plain, rich };

/// Text on the clipboard and in a drag.
namespace textMime {

[[nodiscard]] std::unique_ptr<QMimeData> encode(const AttributedString& text,
                                                TextFormatting formatting);

[[nodiscard]] bool canDecode(const QMimeData& data, TextFormatting formatting);
/// The text of `data`; characters that bring no attributes of their own get `style`.
[[nodiscard]] std::optional<AttributedString>
decode(const QMimeData& data, TextFormatting formatting, const SharedCharacterStyle& style);

} // namespace textMime
} // namespace orvane
