// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/records/PageSizePreset.h"

#include <QCoreApplication>

namespace orvane {

namespace {

constexpr double pointsPerMillimetre = 72 / 25.4;

QSizeF millimetres(double width, double height)
{
    return QSizeF(width, height) * pointsPerMillimetre;
}

} // namespace

QString label(PageSizePreset preset)
{
    const char* text = QT_TRANSLATE_NOOP("PageSizePreset", "US Letter (8.5 × 11″)");
    if (preset == PageSizePreset::a4)
        text = QT_TRANSLATE_NOOP("PageSizePreset", "A4 (210 × 297 mm)");
    else if (preset == PageSizePreset::legal)
        text = QT_TRANSLATE_NOOP("PageSizePreset", "US Legal (8.5 × 14″)");
    else if (preset == PageSizePreset::a5)
        text = QT_TRANSLATE_NOOP("PageSizePreset", "A5 (148 × 210 mm)");
    return QCoreApplication::translate("PageSizePreset", text);
}

QSizeF pageSize(PageSizePreset preset)
{
    switch (preset) {
    case PageSizePreset::a4:
        return millimetres(210, 297);
    case PageSizePreset::legal:
        return {612, 1008};
    case PageSizePreset::a5:
        return millimetres(148, 210);
    case PageSizePreset::usLetter:
        break;
    }
    return {612, 792};
}

} // namespace orvane
