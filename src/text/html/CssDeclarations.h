// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/value/RgbaColor.h"

#include <QList>
#include <QString>

#include <optional>

namespace orvane {

/// The declarations of a `style` attribute: names in lower case, values trimmed, in their order.
struct CssDeclaration {
    QString name;
    QString value;
};
[[nodiscard]] QList<CssDeclaration> parseCssDeclarations(QStringView style);

/// A colour: a name, "#rgb", "#rrggbb", "#rrggbbaa", "rgb(…)" or "rgba(…)". Nothing for what is no
/// colour and for "transparent".
[[nodiscard]] std::optional<RgbaColor> parseCssColor(QStringView value);

/// A length in points: px (0.75 pt), pt, pc, in, cm, mm, em and rem (of `emPoints`), % (of
/// `wholePoints`), a bare number as px. Held within 10,000 points either way.
[[nodiscard]] std::optional<double> parseCssLength(QStringView value, double emPoints,
                                                   double wholePoints);

/// A font size: a length, or one of the words from "xx-small" to "xx-large", "smaller", "larger".
[[nodiscard]] std::optional<double> parseCssFontSize(QStringView value, double parentPoints,
                                                     double basePoints);

} // namespace orvane
