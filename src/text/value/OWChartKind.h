// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QString>

#include <optional>

namespace orvane {

enum class OWChartKind { bar, line, pie, donut };

/// The stored words: "bar", "line", "pie", "donut".
[[nodiscard]] QString rawValue(OWChartKind kind);
[[nodiscard]] std::optional<OWChartKind> chartKindFromRawValue(QStringView text);

} // namespace orvane
