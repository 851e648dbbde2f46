// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "platform/StoredWords.h"
#include "text/value/TextSelection.h"

#include <QString>

#include <optional>

namespace orvane {

class TextStore;

/// How much stays in sight while the rest is dimmed.
enum class FocusGranularity { paragraph, sentence };

template <>
inline constexpr auto storedWords<FocusGranularity> = std::to_array<QStringView>({u"paragraph",
                                                                                  u"sentence"});
/// What a stored word means; the paragraph for anything else.
[[nodiscard]] inline FocusGranularity focusGranularityNamed(const QString& name)
{
    return fromRawValue<FocusGranularity>(name).value_or(FocusGranularity::paragraph);
}

/// The sentence of `text` that holds `position`, with the blanks behind it; at the very end the
/// last one. Sentences end as Unicode says (UAX #29), but not with a title or an initial.
[[nodiscard]] TextRange sentenceAt(const QString& text, qsizetype position);

/// The paragraph or sentence that is written in; with a selection, from that of its start to that
/// of its end. Nothing for a caret beyond the text. Looks at the paragraphs of the two ends only,
/// and of a very long one only at what is near.
[[nodiscard]] std::optional<TextRange>
focusedTextRange(const TextStore& store, TextSelection selection, FocusGranularity granularity);

} // namespace orvane
