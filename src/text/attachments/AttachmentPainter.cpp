// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/attachments/AttachmentPainter.h"

#include "text/value/LayoutUnits.h"
#include "text/value/OWChartBlock.h"
#include "text/value/OrvaneNoteImageAttachment.h"

#include <QCoreApplication>
#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace orvane {

namespace {

constexpr int mostKilobytes = 16 * 1024;
constexpr int mostPixels = 8192; // a side

void drawPlace(QPainter& painter, const QRectF& rect, ImagePictures::State state)
{
    const QColor ink = painter.pen().color();
    QColor ground = ink;
    ground.setAlphaF(0.05F);
    painter.fillRect(rect, ground);
    if (state == ImagePictures::State::Coming)
        return;
    QColor line = ink;
    line.setAlphaF(0.4F);
    QPen pen(line);
    pen.setCosmetic(true);
    painter.setPen(pen);
    painter.drawRect(rect);
    const QString words =
        QCoreApplication::translate("AttachmentPainter", "This image can’t be read");
    QFont font = painter.font();
    font.setPixelSize(std::max(1, qRound(std::min(rect.height() / 4, 12 * layoutUnitsPerPoint))));
    if (QFontMetricsF(font).horizontalAdvance(words) > rect.width() - font.pixelSize())
        return;
    painter.setFont(font);
    painter.setPen(ink);
    painter.setOpacity(0.7);
    painter.drawText(rect, Qt::AlignCenter, words);
}

QSize pixelsOf(const QPainter& painter, const QRectF& rect)
{
    const QSizeF onScreen = painter.deviceTransform().mapRect(rect).size();
    return {std::clamp(int(std::lround(onScreen.width())), 1, mostPixels),
            std::clamp(int(std::lround(onScreen.height())), 1, mostPixels)};
}

} // namespace

AttachmentPainter::AttachmentPainter()
    : m_charts(mostKilobytes)
{}

QSizeF AttachmentPainter::sizeOf(const CharacterStyle& style) const
{
    return attachmentSize(style);
}

ImagePictures::Picture AttachmentPainter::chartPicture(const QByteArray& bytes, QSize pixels)
{
    using State = ImagePictures::State;
    const Key key{bytes.constData(), bytes.size(), pixels};
    const auto shown = [](const QImage& image) {
        return ImagePictures::Picture{image.isNull() ? State::Unreadable : State::Ready, image};
    };
    if (const Entry* known = m_charts.object(key))
        return shown(known->picture);
    const QImage image = decodedImage(bytes, pixels);
    m_charts.insert(key, new Entry{bytes, image}, int(image.sizeInBytes() / 1024) + 1);
    return shown(image);
}

void AttachmentPainter::paintObject(QPainter& painter, const QRectF& rect,
                                    const CharacterStyle& style)
{
    const auto* chart = style.chartAttachment();
    if (const auto* image = style.imageAttachment()) {
        if (!image->isFloating())
            paintImage(painter, rect, image->file);
    } else {
        paint(painter, rect,
              chart ? chartPicture(chart->renderedImageData, pixelsOf(painter, rect))
                    : ImagePictures::Picture());
    }
}

void AttachmentPainter::paintImage(QPainter& painter, const QRectF& rect, const ImageFile& file)
{
    paint(painter, rect, m_images.picture(file, pixelsOf(painter, rect)));
}

void AttachmentPainter::paint(QPainter& painter, const QRectF& rect,
                              const ImagePictures::Picture& shown)
{
    painter.save();
    if (!shown.image.isNull()) {
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(rect, shown.image);
    } else {
        drawPlace(painter, rect, shown.state);
    }
    painter.restore();
}

} // namespace orvane
