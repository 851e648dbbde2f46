// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QtGlobal>

namespace orvane {

/// How wide the page is on the screen, in points, whatever it is printed on.
inline constexpr qreal screenPageWidth = 612;
/// How much of that a page is high.
inline constexpr qreal screenPageHeight = 792;
inline constexpr qreal leastPageZoom = 0.75;
inline constexpr qreal mostPageZoom = 2;
/// What is seen of the desk, in pixels.
inline constexpr int deskBesidePage = 24;
inline constexpr int deskAbovePage = 12;

/// A page in a view: its zoom, and in points its width and what of its margins is seen.
struct PageFit {
    qreal zoom = 1;
    qreal leftMargin = 72;
    qreal rightMargin = 72;
    qreal column = 468; ///< between the margins

    [[nodiscard]] qreal width() const { return leftMargin + column + rightMargin; }

    bool operator==(const PageFit&) const = default;
};

/// The page with the margins `left` and `right`, as a person wants it at `zoom`, in a view of
/// `available` pixels. Where that is too narrow, first the desk gives way, then the margins, and
/// last the zoom, so that no letter is cut and no line breaks elsewhere. Margins that leave no
/// column are held to what does.
[[nodiscard]] PageFit fitPage(qreal available, qreal zoom, qreal left, qreal right);

} // namespace orvane
