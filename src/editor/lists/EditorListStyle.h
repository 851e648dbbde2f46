// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QString>

#include <optional>

namespace orvane {

/// How the items of a list are marked. The bullets come first, then the numbered styles.
enum class EditorListStyle {
    disc,
    largeBullet,
    arrow,
    dash,
    circle,
    square,
    diamond,
    star,
    checkmark,
    checkbox,
    decimal,
    upperRoman,
    upperAlpha,
    lowerAlpha,
    lowerRoman
};
inline constexpr int editorListStyleCount = 15;

/// What the line under the caret is, for controls that show it.
enum class EditorListKind { none, bullet, numbered };

[[nodiscard]] constexpr bool isNumbered(EditorListStyle style)
{
    return style >= EditorListStyle::decimal;
}

/// The style's name in settings and commands: "disc", "largeBullet", …
[[nodiscard]] QString rawValue(EditorListStyle style);
[[nodiscard]] std::optional<EditorListStyle> editorListStyle(QStringView rawValue);
/// "none", "bullet" or "numbered".
[[nodiscard]] QString rawValue(EditorListKind kind);

} // namespace orvane
