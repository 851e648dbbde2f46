// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QLocale>

namespace orvane {

enum class LetterCase { upper, lower, capitalized };

/// `text` in that case, by the full mappings of Unicode and the rules of the language, so it may
/// become longer or shorter. Capitalized, each word begins with a capital and goes on in small
/// letters (UAX #29 says where words begin).
[[nodiscard]] QString inCase(const QString& text, LetterCase letterCase, const QLocale& language);

} // namespace orvane
