// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QSizeF>
#include <QString>

#include <array>
#include <optional>

namespace orvane {

/// The paper that notes are printed and exported on. The page on the screen is the same for all.
enum class PageSizePreset { usLetter, a4, legal, a5 };

/// In the order in which they are offered.
inline constexpr std::array pageSizePresets{PageSizePreset::usLetter, PageSizePreset::a4,
                                            PageSizePreset::legal, PageSizePreset::a5};

/// The stored word: "US Letter", "A4", "US Legal" or "A5".
[[nodiscard]] QString rawValue(PageSizePreset preset);
/// The preset that a stored word means; none for any other word.
[[nodiscard]] std::optional<PageSizePreset> pageSizePreset(const QString& rawValue);
/// The name with its measures, translated.
[[nodiscard]] QString label(PageSizePreset preset);
/// Upright, in points (72 to the inch). Those of ISO 216 are exact, not whole points.
[[nodiscard]] QSizeF pageSize(PageSizePreset preset);

} // namespace orvane
