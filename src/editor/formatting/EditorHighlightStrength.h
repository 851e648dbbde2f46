// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "platform/UserDefaults.h"
#include "text/value/RgbaColor.h"

namespace orvane {

/// How strongly highlights cover the page.
enum class EditorHighlightStrength { subtle, standard, strong };

/// The stored word of a strength: "Subtle", "Standard" or "Strong".
[[nodiscard]] QString rawValue(EditorHighlightStrength strength);
/// The strength that a stored word means, in either case of letters; standard for any other.
[[nodiscard]] EditorHighlightStrength editorHighlightStrength(QStringView rawValue);

/// A part of the look, so themes carry it.
inline const Setting<QString> editorHighlightStrengthSetting{
    u"settings.appearance.editor.highlightStrength", QStringLiteral("Standard")};

/// `color` as it is put behind text so that the text stays readable on it: light, neither grey nor
/// glaring, and as translucent as the strength says. Of black only the alpha changes.
[[nodiscard]] RgbaColor normalizeHighlight(const RgbaColor& color,
                                           EditorHighlightStrength strength);

} // namespace orvane
