// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/images/ImageHandles.h"

#include <algorithm>
#include <cmath>

namespace orvane {

namespace {

constexpr qreal dotSize = 8;
constexpr qreal grabSize = 24;

/// Which side of the frame a handle is at: −1, 0 in the middle, or 1.
struct Side {
    int x = 0;
    int y = 0;
};

Side sideOf(ResizeHandle handle)
{
    switch (handle) {
    case ResizeHandle::topLeft:
        return {-1, -1};
    case ResizeHandle::topRight:
        return {1, -1};
    case ResizeHandle::bottomLeft:
        return {-1, 1};
    case ResizeHandle::bottomRight:
        return {1, 1};
    case ResizeHandle::top:
        return {0, -1};
    case ResizeHandle::bottom:
        return {0, 1};
    case ResizeHandle::left:
        return {-1, 0};
    case ResizeHandle::right:
        break;
    }
    return {1, 0};
}

QRectF squareAt(ResizeHandle handle, const QRectF& frame, qreal size)
{
    const Side side = sideOf(handle);
    const QPointF centre = frame.center();
    return {centre.x() + side.x * frame.width() / 2 - size / 2,
            centre.y() + side.y * frame.height() / 2 - size / 2, size, size};
}

} // namespace

Qt::CursorShape cursorOf(ResizeHandle handle)
{
    const Side side = sideOf(handle);
    if (side.x == 0)
        return Qt::SizeVerCursor;
    if (side.y == 0)
        return Qt::SizeHorCursor;
    return side.x == side.y ? Qt::SizeFDiagCursor : Qt::SizeBDiagCursor;
}

QRectF handleDotRect(ResizeHandle handle, const QRectF& frame)
{
    return squareAt(handle, frame, dotSize);
}

QRectF handleGrabRect(ResizeHandle handle, const QRectF& frame)
{
    const Side side = sideOf(handle);
    QRectF rect = squareAt(handle, frame, grabSize);
    // Between the corners; an image that is too short for that has its sides at the squares alone.
    if (side.x == 0 && frame.width() > 3 * grabSize)
        rect.setRect(frame.left() + grabSize / 2, rect.top(), frame.width() - grabSize, grabSize);
    else if (side.y == 0 && frame.height() > 3 * grabSize)
        rect.setRect(rect.left(), frame.top() + grabSize / 2, grabSize, frame.height() - grabSize);
    // What is inside belongs to the image itself, but for a narrow strip.
    constexpr qreal inside = dotSize;
    if (side.x == 0)
        return side.y < 0 ? rect.adjusted(0, 0, 0, inside - grabSize / 2)
                          : rect.adjusted(0, grabSize / 2 - inside, 0, 0);
    if (side.y == 0)
        return side.x < 0 ? rect.adjusted(0, 0, inside - grabSize / 2, 0)
                          : rect.adjusted(grabSize / 2 - inside, 0, 0, 0);
    return rect;
}

std::optional<ResizeHandle> handleAt(QPointF point, const QRectF& frame)
{
    for (const ResizeHandle handle : allResizeHandles) {
        if (handleGrabRect(handle, frame).contains(point))
            return handle;
    }
    return std::nullopt;
}

QSizeF clampedImageSize(QSizeF size)
{
    return size.expandedTo(leastImageSize).boundedTo(mostImageSize);
}

QSizeF resized(QSizeF start, ResizeHandle handle, QPointF distance, bool isLocked)
{
    const Side side = sideOf(handle);
    const QSizeF free(start.width() + side.x * distance.x(),
                      start.height() + side.y * distance.y());
    if (!isLocked || start.isEmpty())
        return clampedImageSize(free);
    const qreal byWidth = free.width() / start.width();
    const qreal byHeight = free.height() / start.height();
    qreal factor = side.x == 0 ? byHeight : byWidth;
    if (side.x != 0 && side.y != 0)
        factor = std::abs(byWidth - 1) >= std::abs(byHeight - 1) ? byWidth : byHeight;
    const qreal least =
        std::max(leastImageSize.width() / start.width(), leastImageSize.height() / start.height());
    const qreal most =
        std::min(mostImageSize.width() / start.width(), mostImageSize.height() / start.height());
    return start * std::max(least, std::min(factor, most));
}

QPointF clampedFloatingOrigin(const QRectF& area, QSizeF size, QPointF proposed)
{
    return {std::max(area.left(), std::min(proposed.x(), area.right() - size.width())),
            std::max(area.top(), std::min(proposed.y(), area.bottom() - size.height()))};
}

} // namespace orvane
