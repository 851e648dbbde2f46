// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/value/CharacterStyle.h"
#include "text/value/ParagraphStyle.h"

#include <QByteArray>

#include <optional>

namespace orvane {

/// What the next typed character of a note looks like.
struct TypingAttributes {
    CharacterStyle characters;
    ParagraphStyle paragraph;

    bool operator==(const TypingAttributes&) const = default;
};

} // namespace orvane

/// Typing attributes as they are stored beside a note. Equal attributes give equal bytes.
namespace orvane::NoteEditorTypingAttributesCodec {

/// Leaves out an attachment and chart data; nothing when no attribute is left.
[[nodiscard]] std::optional<QByteArray> archive(const TypingAttributes& attributes);

/// Nothing for bytes of any other form or version.
[[nodiscard]] std::optional<TypingAttributes> unarchive(const QByteArray& bytes);

} // namespace orvane::NoteEditorTypingAttributesCodec
