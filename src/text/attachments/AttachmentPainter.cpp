// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/attachments/AttachmentPainter.h"

#include "text/value/OWChartBlock.h"
#include "text/value/OrvaneNoteImageAttachment.h"

#include <QBuffer>
#include <QImageReader>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace orvane {

namespace {

constexpr int mostKilobytes = 64 * 1024;
constexpr int mostPixels = 8192; // a side

} // namespace

AttachmentPainter::AttachmentPainter()
    : m_pictures(mostKilobytes)
{}

QSizeF AttachmentPainter::sizeOf(const CharacterStyle& style) const
{
    return attachmentSize(style);
}

QImage AttachmentPainter::picture(const QByteArray& bytes, QSize pixels)
{
    const Key key{bytes.constData(), bytes.size(), pixels};
    if (const Entry* known = m_pictures.object(key))
        return known->picture;
    QByteArray data = bytes;
    QBuffer buffer(&data);
    QImageReader reader(&buffer);
    reader.setAutoTransform(true);
    QImage image = reader.read();
    if (!image.isNull() && image.width() > pixels.width())
        image = image.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    if (!image.isNull())
        image = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    const auto cost = int(image.sizeInBytes() / 1024) + 1;
    m_pictures.insert(key, new Entry{bytes, image}, cost);
    return image;
}

void AttachmentPainter::paintObject(QPainter& painter, const QRectF& rect,
                                    const CharacterStyle& style)
{
    const auto* image = style.imageAttachment();
    const auto* chart = style.chartAttachment();
    if (image && image->wrapMode != OrvaneNoteImageWrapMode::inLine)
        return; // drawn beside the text
    const QSizeF onScreen = painter.deviceTransform().mapRect(rect).size();
    const QSize pixels(std::clamp(int(std::lround(onScreen.width())), 1, mostPixels),
                       std::clamp(int(std::lround(onScreen.height())), 1, mostPixels));
    const QByteArray bytes = image   ? image->imageData
                             : chart ? chart->renderedImageData
                                     : QByteArray();
    painter.save();
    if (const QImage shown = picture(bytes, pixels); !shown.isNull()) {
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(rect, shown);
    } else {
        QPen pen(painter.pen().color());
        pen.setCosmetic(true);
        painter.setPen(pen);
        painter.setOpacity(0.4);
        painter.drawRect(rect);
    }
    painter.restore();
}

} // namespace orvane
