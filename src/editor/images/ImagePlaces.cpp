// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/images/ImagePlaces.h"

#include "editor/images/ImageEditing.h"
#include "editor/images/ImageHandles.h"
#include "editor/view/EditorView.h"
#include "text/layout/ParagraphLayout.h"
#include "text/store/TextStore.h"

#include <algorithm>

namespace orvane {

const TextStore& ImagePlaces::store() const
{
    return m_view.store();
}

void ImagePlaces::begin()
{
    m_positions.clear();
    add(store().fullRange(), 0);
    count();
}

void ImagePlaces::follow(const TextChange& change)
{
    const auto first = std::ranges::lower_bound(m_positions, change.location);
    const auto past = std::ranges::lower_bound(m_positions, change.location + change.lengthBefore);
    const qsizetype at = first - m_positions.begin();
    const qsizetype gone = past - first;
    m_positions.remove(at, gone);
    const qsizetype distance = change.lengthAfter - change.lengthBefore;
    if (distance != 0) {
        for (qsizetype i = at; i < m_positions.size(); ++i)
            m_positions[i] += distance;
    }
    const qsizetype before = m_positions.size();
    add({change.location, change.lengthAfter}, at);
    if (gone > 0 || m_positions.size() > before)
        count();
}

void ImagePlaces::add(TextRange range, qsizetype at)
{
    const QString text = store().text(range);
    for (qsizetype i = -1; (i = text.indexOf(QChar(objectCharacter), i + 1)) >= 0;) {
        if (ImageEditing::imageAt(store(), range.location + i))
            m_positions.insert(at++, range.location + i);
    }
}

void ImagePlaces::count()
{
    m_floating = std::ranges::count_if(m_positions, [&](qsizetype position) {
        const auto* image = ImageEditing::imageAt(store(), position);
        return image && image->isFloating();
    });
}

QRectF ImagePlaces::area() const
{
    const ParagraphLayout& layout = m_view.layout();
    const qreal onScreen = m_view.viewport()->height() / m_view.zoom() - m_view.roomAbove();
    return {0, 0, layout.width(), std::max(layout.height(), onScreen)};
}

FloatingAttachmentLayout ImagePlaces::layoutOf(const OrvaneNoteImageAttachment& image,
                                               qsizetype position) const
{
    ParagraphLayout& layout = m_view.layout();
    const QTextBlock block = store().blockAt(position);
    FloatingAttachmentLayout placed{image, {}, {}, position};
    placed.anchorOrigin = layout.isLaidOut(block)
                              ? layout.caretRect(int(position)).topLeft()
                              : QPointF(0, layout.topOf(layout.rowStart(block)));
    const QSizeF size = image.renderedSize.boundedTo(mostImageSize);
    placed.frame = QRectF(
        clampedFloatingOrigin(area(), size, placed.anchorOrigin + image.floatingOffset), size);
    return placed;
}

QList<FloatingAttachmentLayout> ImagePlaces::floatingAttachmentLayouts(OrvaneNoteImageWrapMode mode,
                                                                       const QRectF& seen) const
{
    QList<FloatingAttachmentLayout> found;
    if (!hasFloating())
        return found;
    for (const qsizetype position : m_positions) {
        const auto* image = ImageEditing::imageAt(store(), position);
        if (!image || image->wrapMode != mode)
            continue;
        FloatingAttachmentLayout placed = layoutOf(*image, position);
        if (placed.frame.intersects(seen))
            found.append(std::move(placed));
    }
    return found;
}

QRectF ImagePlaces::frameOf(qsizetype position) const
{
    const OrvaneNoteImageAttachment* image = ImageEditing::imageAt(store(), position);
    if (!image)
        return {};
    return image->isFloating() ? layoutOf(*image, position).frame
                               : m_view.layout().objectRect(int(position));
}

} // namespace orvane
