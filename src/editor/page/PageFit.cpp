// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/page/PageFit.h"

#include <algorithm>
#include <cmath>

namespace orvane {

namespace {

constexpr qreal narrowestColumn = 144;
constexpr qreal leastDesk = 8;         // pixels
constexpr qreal leastMargin = 24;      // points; also room for what hangs out of a line
constexpr qreal leastFittedZoom = 0.5; // the view's own limit

qreal held(qreal margin)
{
    return std::isfinite(margin) ? std::max(margin, 0.0) : 0.0;
}

} // namespace

PageFit fitPage(qreal available, qreal zoom, qreal left, qreal right)
{
    PageFit fit;
    fit.leftMargin = held(left);
    fit.rightMargin = held(right);
    const qreal margins = fit.leftMargin + fit.rightMargin;
    if (const qreal most = screenPageWidth - narrowestColumn; margins > most) {
        fit.leftMargin *= most / margins;
        fit.rightMargin = most - fit.leftMargin;
    }
    fit.column = screenPageWidth - fit.leftMargin - fit.rightMargin;
    fit.zoom = std::clamp(zoom, leastPageZoom, mostPageZoom);

    const qreal room = std::max(available - 2 * leastDesk, 1.0);
    const qreal missing = fit.width() - room / fit.zoom;
    if (missing <= 0)
        return fit;
    const qreal spareLeft = std::max(0.0, fit.leftMargin - leastMargin);
    const qreal spareRight = std::max(0.0, fit.rightMargin - leastMargin);
    if (const qreal spare = spareLeft + spareRight; spare > 0) {
        const qreal share = std::min(1.0, missing / spare);
        fit.leftMargin -= spareLeft * share;
        fit.rightMargin -= spareRight * share;
    }
    fit.zoom = std::clamp(room / fit.width(), leastFittedZoom, fit.zoom);
    return fit;
}

} // namespace orvane
