// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "platform/StoredWords.h"

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

template <>
inline constexpr auto storedWords<PageSizePreset> =
    std::to_array<QStringView>({u"US Letter", u"A4", u"US Legal", u"A5"});

/// The name with its measures, translated.
[[nodiscard]] QString label(PageSizePreset preset);
/// Upright, in points (72 to the inch). Those of ISO 216 are exact, not whole points.
[[nodiscard]] QSizeF pageSize(PageSizePreset preset);

} // namespace orvane
