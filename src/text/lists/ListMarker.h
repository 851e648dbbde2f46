// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/lists/CustomBullet.h"
#include "text/lists/EditorListStyle.h"
#include "text/value/ParagraphStyle.h"

namespace orvane::ListContinuationHelper {

/// What a line begins with, after its tabs.
struct PrefixMatch {
    EditorListStyle style = EditorListStyle::disc;
    qsizetype prefixLength = 0; ///< of the marker and the space behind it
    std::optional<CustomBullet> customBullet;

    bool operator==(const PrefixMatch&) const = default;
};

/// The marker at the beginning of `line`, which is a line's text after its tabs; nothing for a line
/// that is no list item. Tried in this order:
///
/// 1. The bullets of the styles, also "- " for a dash, a ticked box, and boxes written as "- [ ] "
///    and "- [x] ".
/// 2. The bullets of the library; the match has the style `disc`.
/// 3. Digits, lower Roman, upper Roman, one lower letter, upper letters, each with a full stop and
///    a space. Some markers could be two things and are always read as the earlier one: "c. " is
///    Roman. The lower Roman digits are "ivxlcd" and "M".
[[nodiscard]] std::optional<PrefixMatch> matchedPrefix(QStringView line,
                                                       const QList<CustomBullet>& bullets = {});

/// The same for lower letters of which there are several, as the "aa. " behind a "z. ": only what
/// stands before such a line tells it from a short word.
[[nodiscard]] std::optional<PrefixMatch> matchedLetters(QStringView line);

/// `level` tabs, the marker and a space: what an item of the style begins with.
[[nodiscard]] QString markerPrefix(EditorListStyle style, int level, int number = 1);
/// The same for a bullet of the library.
[[nodiscard]] QString markerPrefix(const QString& bullet, int level);
/// The item's number or bullet alone, without the full stop.
[[nodiscard]] QString markerText(EditorListStyle style, int number);
/// The number that `letters` stand for in a numbered style; 0 where they are none.
[[nodiscard]] int markerNumber(EditorListStyle style, QStringView letters);

/// Capital Roman digits; numbers below 1 count as 1.
[[nodiscard]] QString romanString(int number);
/// A to Z, AA, AB and so on; numbers below 1 count as 1.
[[nodiscard]] QString alphaString(int number);
/// The number that letters from A to Z stand for, of either case, as `alphaString` counts. Large
/// numbers are cut off.
[[nodiscard]] int alphaNumber(QStringView letters);
/// The number that Roman digits of either case add up to. Large numbers are cut off.
[[nodiscard]] int romanNumber(QStringView digits);

/// In points: what each level adds, and the room of the marker.
inline constexpr double indentPerLevel = 24;
inline constexpr double markerWidth = 18;
/// No paragraph style counts as a deeper level than this.
inline constexpr int deepestStoredLevel = 200;

/// The level of a line: from its paragraph style if that is indented by more than a marker, else
/// the number of tabs.
[[nodiscard]] int listLevel(const ParagraphStyle& style, qsizetype leadingTabs);

/// The boxes of the style `checkbox`.
inline constexpr char16_t emptyBox = u'\u2610';
inline constexpr char16_t tickedBox = u'\u2611';

} // namespace orvane::ListContinuationHelper
