// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/SurfaceChoice.h"

#include "appearance/Contrast.h"

#include <algorithm>

namespace orvane {

namespace {

constexpr double fieldShift = 0.05;
constexpr double hoverShift = 0.06;
constexpr double controlShift = 0.08;
constexpr double selectedRowShare = 0.16;
constexpr double weakestLine = 1.06;
constexpr double plainLineShare = 0.12;

bool canBeRead(const QList<QColor>& grounds)
{
    const QColor ink = extremeInk(grounds);
    return std::all_of(grounds.begin(), grounds.end(), [&](const QColor& ground) {
        return contrastRatio(ink, ground) >= textContrast;
    });
}

/// The ground shifted toward the ink, or away from it where no ink would read on both.
QColor shifted(const QColor& ink, double share, const QColor& ground, QList<QColor>& grounds)
{
    const QColor toward = blended(ink, share, ground);
    const QColor extreme = extremeInk(grounds);
    const QColor away = extreme == QColor(Qt::white) ? QColor(Qt::black) : QColor(Qt::white);
    grounds.append(contrastRatio(extreme, toward) >= textContrast ? toward
                                                                  : blended(away, share, ground));
    return grounds.last();
}

} // namespace

SurfaceTokens surfaceTokens(const SurfaceChoice& choice)
{
    SurfaceTokens s;
    s.ground = choice.ground;
    const bool gradient = canBeRead({choice.ground, choice.groundTop, choice.groundBottom});
    s.groundTop = gradient ? choice.groundTop : choice.ground;
    s.groundBottom = gradient ? choice.groundBottom : choice.ground;

    QList<QColor> grounds{s.ground, s.groundTop, s.groundBottom};
    const QColor ink = readableInk(choice.text, grounds, textContrast);
    s.field = shifted(ink, fieldShift, s.ground, grounds);
    s.hoveredRow = shifted(ink, hoverShift, s.ground, grounds);
    s.control = shifted(ink, controlShift, s.ground, grounds);
    s.selectedRow = blended(choice.accent, selectedRowShare, s.ground);

    s.text = readableInk(choice.text, grounds, textContrast);
    s.textSecondary = readableInk(choice.textSecondary, grounds, textContrast);
    s.link = readableInk(choice.accent, grounds, textContrast);
    s.danger = readableInk(choice.danger, grounds, textContrast);
    s.textOnSelectedRow = readableInk(choice.text, s.selectedRow);
    s.textSecondaryOnSelectedRow = readableInk(choice.textSecondary, s.selectedRow);
    grounds.append(s.selectedRow);
    s.icon = readableInk(choice.icon, grounds, iconContrast);
    s.accent = readableInk(choice.accent, grounds, iconContrast);
    s.warning = readableInk(choice.warning, grounds, iconContrast);
    s.border = contrastRatio(choice.border, s.ground) >= weakestLine
                   ? choice.border
                   : blended(s.text, plainLineShare, s.ground);
    return s;
}

} // namespace orvane
