// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/value/OrvaneNoteImageAttachment.h"

#include <QBuffer>
#include <QImageReader>

#include <array>
#include <cmath>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

bool isUsable(QSizeF size)
{
    return std::isfinite(size.width()) && std::isfinite(size.height()) && size.width() > 0 &&
           size.height() > 0;
}

} // namespace

QSizeF OrvaneNoteImageAttachment::bounds() const
{
    return isFloating() ? QSizeF(1, 1) : renderedSize;
}

void OrvaneNoteImageAttachment::prepareForDisplay()
{
    if (!isUsable(originalSize))
        originalSize = fallbackSize;
    if (!isUsable(renderedSize))
        renderedSize = originalSize;
    if (!std::isfinite(floatingOffset.x()) || !std::isfinite(floatingOffset.y()))
        floatingOffset = {};
    if (attachmentID.isNull())
        attachmentID = QUuid::createUuid();
}

OrvaneNoteImageAttachment
OrvaneNoteImageAttachment::fromImageData(QByteArray imageData, std::optional<QSizeF> suggestedSize,
                                         QUuid attachmentID)
{
    OrvaneNoteImageAttachment attachment;
    attachment.attachmentID = attachmentID;
    QBuffer buffer(&imageData);
    const QByteArray format = imageData.startsWith("\x89PNG")        ? "png"
                              : imageData.startsWith("\xff\xd8\xff") ? "jpeg"
                                                                     : "";
    QImageReader reader(&buffer, format);
    const QSize pixels = reader.size();
    const bool isTurned = reader.transformation() & QImageIOHandler::TransformationRotate90;
    if (!pixels.isEmpty())
        attachment.originalSize = isTurned ? pixels.transposed() : pixels;
    attachment.renderedSize =
        suggestedSize && isUsable(*suggestedSize) ? *suggestedSize : attachment.originalSize;
    attachment.file = ImageFile(std::move(imageData));
    return attachment;
}

} // namespace orvane
