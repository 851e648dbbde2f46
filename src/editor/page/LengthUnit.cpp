// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/page/LengthUnit.h"

#include <QCoreApplication>

#include <cmath>

namespace orvane {

LengthUnit lengthUnit(const QLocale& locale)
{
    return locale.measurementSystem() == QLocale::ImperialUSSystem ? LengthUnit::inch
                                                                   : LengthUnit::centimetre;
}

QString unitName(LengthUnit unit)
{
    return unit == LengthUnit::inch ? QCoreApplication::translate("LengthUnit", "in")
                                    : QCoreApplication::translate("LengthUnit", "cm");
}

QString lengthText(double points, LengthUnit unit)
{
    const double hundredths = std::round(points / pointsIn(unit) * 100) + 0.0;
    return QLocale().toString(hundredths / 100, 'g', 6) + u' ' + unitName(unit);
}

} // namespace orvane
