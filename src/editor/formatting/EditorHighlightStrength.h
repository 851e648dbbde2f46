// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "platform/StoredWords.h"
#include "platform/UserDefaults.h"
#include "text/value/RgbaColor.h"

namespace orvane {

/// How strongly highlights cover the page.
enum class EditorHighlightStrength { subtle, standard, strong };

template <>
inline constexpr auto storedWords<EditorHighlightStrength> =
    std::to_array<QStringView>({u"Subtle", u"Standard", u"Strong"});
/// The strength that a stored word means, in either case of letters; standard for any other.
[[nodiscard]] inline EditorHighlightStrength editorHighlightStrength(QStringView word)
{
    return fromRawValue<EditorHighlightStrength>(word, Qt::CaseInsensitive)
        .value_or(EditorHighlightStrength::standard);
}

/// A part of the look, so themes carry it.
inline const Setting<QString> editorHighlightStrengthSetting{
    u"settings.appearance.editor.highlightStrength", QStringLiteral("Standard")};

/// `color` as it is put behind text so that the text stays readable on it: light, neither grey nor
/// glaring, and as translucent as the strength says. Of black only the alpha changes.
[[nodiscard]] RgbaColor normalizeHighlight(const RgbaColor& color,
                                           EditorHighlightStrength strength);

} // namespace orvane
