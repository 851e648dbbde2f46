// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "platform/StoredWords.h"

namespace orvane {

enum class OWChartKind { bar, line, pie, donut };

template <>
inline constexpr auto storedWords<OWChartKind> = std::to_array<QStringView>({u"bar", u"line",
                                                                             u"pie", u"donut"});

} // namespace orvane
