// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "platform/Timestamp.h"

#include <QString>

namespace orvane {

/// A moment as a person would say it at `now`, in local time: "today, 14:32", "yesterday",
/// "12 November", and with its year when that is another one, "12 November 2025".
[[nodiscard]] QString momentInWords(Timestamp moment, Timestamp now);

/// "2 November 2026".
[[nodiscard]] QString dayInWords(Timestamp moment);

/// "2 November", for what is of this year.
[[nodiscard]] QString dayOfMonthInWords(Timestamp moment);

/// "14:32".
[[nodiscard]] QString timeInWords(Timestamp moment);

/// 2011 as "2,011".
[[nodiscard]] QString grouped(qsizetype number);

/// A path below the home folder without it: "Documents/OrvaneWorkspace".
[[nodiscard]] QString shortPath(const QString& path, const QString& home);

} // namespace orvane
