// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QLocale>
#include <QString>

namespace orvane {

/// What a person measures a page in.
enum class LengthUnit { centimetre, inch };

/// Inches where the locale does, else centimetres.
[[nodiscard]] LengthUnit lengthUnit(const QLocale& locale = QLocale());

[[nodiscard]] constexpr double pointsIn(LengthUnit unit)
{
    return unit == LengthUnit::inch ? 72 : 72 / 2.54;
}

/// "cm" or "in", translated.
[[nodiscard]] QString unitName(LengthUnit unit);

/// A length in points as a person reads it: "2.5 cm".
[[nodiscard]] QString lengthText(double points, LengthUnit unit);

} // namespace orvane
