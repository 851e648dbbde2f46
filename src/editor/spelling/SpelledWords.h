// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/value/TextRange.h"

#include <QList>
#include <QStringView>

namespace orvane {

/// The words of `text` whose spelling can be judged, by the word boundaries of Unicode (UAX #29).
/// Left out are words with digits or signs in them, words in capitals, single letters, addresses of
/// mail and web, and scripts that are written without spaces between words.
[[nodiscard]] QList<TextRange> spelledWords(QStringView text);

} // namespace orvane
