// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "platform/StoredWords.h"

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

/// What the line under the caret is, for controls that show it.
enum class EditorListKind { none, bullet, numbered };

[[nodiscard]] constexpr bool isNumbered(EditorListStyle style)
{
    return style >= EditorListStyle::decimal;
}

/// The names of the styles in settings and commands.
template <>
inline constexpr auto storedWords<EditorListStyle> =
    std::to_array<QStringView>({u"disc", u"largeBullet", u"arrow", u"dash", u"circle", u"square",
                                u"diamond", u"star", u"checkmark", u"checkbox", u"decimal",
                                u"upperRoman", u"upperAlpha", u"lowerAlpha", u"lowerRoman"});
inline constexpr int editorListStyleCount = int(storedWords<EditorListStyle>.size());
template <>
inline constexpr auto storedWords<EditorListKind> = std::to_array<QStringView>({u"none", u"bullet",
                                                                                u"numbered"});

} // namespace orvane
