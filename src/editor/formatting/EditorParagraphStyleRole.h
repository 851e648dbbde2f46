// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "platform/StoredWords.h"
#include "platform/UserDefaults.h"
#include "text/value/HeadingSizes.h"

#include <array>
#include <optional>

namespace orvane {

/// What a paragraph is. It isn't stored: it is told from the size of the paragraph's font.
enum class EditorParagraphStyleRole {
    body,
    heading1,
    heading2,
    heading3,
    heading4,
    heading5,
    heading6,
};

inline constexpr std::array headingCases{
    EditorParagraphStyleRole::heading1, EditorParagraphStyleRole::heading2,
    EditorParagraphStyleRole::heading3, EditorParagraphStyleRole::heading4,
    EditorParagraphStyleRole::heading5, EditorParagraphStyleRole::heading6,
};

/// The words of the roles in commands.
template <>
inline constexpr auto storedWords<EditorParagraphStyleRole> = std::to_array<QStringView>(
    {u"Body", u"Heading 1", u"Heading 2", u"Heading 3", u"Heading 4", u"Heading 5", u"Heading 6"});

/// The setting that holds the role's size in points.
[[nodiscard]] const Setting<double>& sizeSetting(EditorParagraphStyleRole role);

/// The size in points that paragraphs of the role take. A stored size of 0 or less counts as not
/// stored.
[[nodiscard]] double configuredSize(EditorParagraphStyleRole role, const UserDefaults& defaults);

/// The sizes of all roles, for those who tell headings without the settings.
[[nodiscard]] HeadingSizes headingSizes(const UserDefaults& defaults);

/// The role of a paragraph whose font has `size` points: the one with the nearest size, if that is
/// within 1 point; else body for sizes that don't stand out from `bodyFontSize`, and for larger
/// ones the nearest heading.
[[nodiscard]] EditorParagraphStyleRole role(double size, double bodyFontSize,
                                            const UserDefaults& defaults);

} // namespace orvane
