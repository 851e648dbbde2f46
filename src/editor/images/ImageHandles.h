// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QRectF>
#include <Qt>

#include <array>
#include <optional>

namespace orvane {

/// Where a selected image is taken hold of to make it larger or smaller.
enum class ResizeHandle {
    topLeft,
    topRight,
    bottomLeft,
    bottomRight,
    top,
    bottom,
    left,
    right,
};

inline constexpr auto allResizeHandles =
    std::to_array({ResizeHandle::topLeft, ResizeHandle::topRight, ResizeHandle::bottomLeft,
                   ResizeHandle::bottomRight, ResizeHandle::top, ResizeHandle::bottom,
                   ResizeHandle::left, ResizeHandle::right});

/// The least that an image is made by hand, and the most that a page can hold, in points.
inline constexpr QSizeF leastImageSize{60, 48};
inline constexpr QSizeF mostImageSize{4000, 4000};

[[nodiscard]] Qt::CursorShape cursorOf(ResizeHandle handle);
/// The square that is drawn for a handle of an image that stands in `frame`, both in pixels.
[[nodiscard]] QRectF handleDotRect(ResizeHandle handle, const QRectF& frame);
/// Where a handle can be taken hold of: round its square, and along the side for one in the middle
/// of it.
[[nodiscard]] QRectF handleGrabRect(ResizeHandle handle, const QRectF& frame);
/// The handle at a point, corners before sides.
[[nodiscard]] std::optional<ResizeHandle> handleAt(QPointF point, const QRectF& frame);

/// Within what can be: at least `leastImageSize`, at most `mostImageSize`.
[[nodiscard]] QSizeF clampedImageSize(QSizeF size);
/// The size that comes of dragging a handle by `distance`. With locked proportions a corner changes
/// both sides by the same factor, and a side takes the other along.
[[nodiscard]] QSizeF resized(QSizeF start, ResizeHandle handle, QPointF distance, bool isLocked);

/// The place of an image of `size` that is wanted at `proposed`, whole within `area`; where it is
/// larger than that, its left and top are what is seen.
[[nodiscard]] QPointF clampedFloatingOrigin(const QRectF& area, QSizeF size, QPointF proposed);

} // namespace orvane
