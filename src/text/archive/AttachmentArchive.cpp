// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/archive/StyleArchive.h"
#include "text/value/OWChartBlock.h"
#include "text/value/OrvaneNoteImageAttachment.h"

#include <cmath>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

enum AttachmentKind : quint64 { imageWithBytes = 1, chartKind = 2, imageElsewhere = 3 };

constexpr quint64 largestImageFile = 0xffff'ffff;

void writePair(QCborStreamWriter& writer, double first, double second)
{
    writer.startArray(2);
    writer.append(std::isfinite(first) ? first : 0.0);
    writer.append(std::isfinite(second) ? second : 0.0);
    writer.endArray();
}

std::pair<double, double> readPair(CborCursor& cursor)
{
    cursor.enterArray(2);
    const double first = cursor.readFloat();
    const double second = cursor.readFloat();
    cursor.leave();
    return {first, second};
}

QSizeF readSize(CborCursor& cursor)
{
    const auto [width, height] = readPair(cursor);
    return {width, height};
}

void expectKey(CborCursor& cursor, QStringView key)
{
    cursor.require(cursor.readText() == key);
}

void writeImage(QCborStreamWriter& writer, const OrvaneNoteImageAttachment& image,
                const std::optional<QByteArray>& bytes)
{
    const int keys = (bytes ? 7 : 8) + (image.description.isEmpty() ? 0 : 1);
    writer.startMap(quint64(keys));
    writer.append("attachmentID"_L1);
    writer.append(image.attachmentID.toRfc4122());
    writer.append("originalSize"_L1);
    writePair(writer, image.originalSize.width(), image.originalSize.height());
    writer.append("renderedSize"_L1);
    writePair(writer, image.renderedSize.width(), image.renderedSize.height());
    writer.append("aspectRatioLocked"_L1);
    writer.append(image.aspectRatioLocked);
    if (bytes) {
        writer.append("imageData"_L1);
        writer.append(*bytes);
    } else {
        writer.append("imageHash"_L1);
        writer.append(image.file.hash());
        writer.append("imageLength"_L1);
        writer.append(quint64(image.file.size()));
    }
    writer.append("wrapMode"_L1);
    writer.append(rawValue(image.wrapMode));
    writer.append("floatingOffset"_L1);
    writePair(writer, image.floatingOffset.x(), image.floatingOffset.y());
    if (!image.description.isEmpty()) {
        writer.append("description"_L1);
        writer.append(image.description);
    }
    writer.endMap();
}

OrvaneNoteImageAttachment readImage(CborCursor& cursor, AttachmentKind kind)
{
    OrvaneNoteImageAttachment image;
    const qsizetype keys = cursor.enterMap() - (kind == imageWithBytes ? 7 : 8);
    cursor.require(keys == 0 || keys == 1);
    expectKey(cursor, u"attachmentID");
    const QByteArray id = cursor.readBytes();
    cursor.require(id.size() == 16);
    image.attachmentID = QUuid::fromRfc4122(id);
    expectKey(cursor, u"originalSize");
    image.originalSize = readSize(cursor);
    expectKey(cursor, u"renderedSize");
    image.renderedSize = readSize(cursor);
    expectKey(cursor, u"aspectRatioLocked");
    image.aspectRatioLocked = cursor.readBool();
    if (kind == imageWithBytes) {
        expectKey(cursor, u"imageData");
        image.file = ImageFile(cursor.readBytes());
    } else {
        expectKey(cursor, u"imageHash");
        const QByteArray hash = cursor.readBytes();
        cursor.require(hash.size() == ImageFile::hashSize);
        expectKey(cursor, u"imageLength");
        const auto length = qsizetype(cursor.readUnsigned(largestImageFile));
        if (!cursor.hasFailed())
            image.file = ImageFile(hash, length);
    }
    expectKey(cursor, u"wrapMode");
    const auto mode = fromRawValue<OrvaneNoteImageWrapMode>(cursor.readText());
    cursor.require(mode.has_value());
    image.wrapMode = mode.value_or(OrvaneNoteImageWrapMode::inLine);
    expectKey(cursor, u"floatingOffset");
    const auto [x, y] = readPair(cursor);
    image.floatingOffset = {x, y};
    if (keys == 1) {
        expectKey(cursor, u"description");
        image.description = cursor.readText();
        cursor.require(!image.description.isEmpty());
    }
    cursor.leave();
    return image;
}

// A chart whose data can't be read shows as the default chart.
OWChartAttachment readChart(CborCursor& cursor)
{
    OWChartAttachment chart;
    cursor.require(cursor.enterMap() == 2);
    expectKey(cursor, u"chartBlockData");
    const QByteArray json = cursor.readBytes();
    expectKey(cursor, u"renderedImageData");
    chart.renderedImageData = cursor.readBytes();
    cursor.leave();
    if (cursor.hasFailed())
        return chart;
    if (auto block = OWChartBlock::fromJson(json))
        chart.chartBlock = std::move(*block);
    else
        chart.chartBlock.id = QUuid::createUuidV5(QUuid(), json);
    return chart;
}

} // namespace

void write(QCborStreamWriter& writer, const TextAttachment& attachment, ImageBytes images)
{
    writer.startArray(2);
    if (const auto* chart = attachment.chart()) {
        writer.append(quint64(chartKind));
        writer.startMap(2);
        writer.append("chartBlockData"_L1);
        writer.append(chart->chartBlock.toJson());
        writer.append("renderedImageData"_L1);
        writer.append(chart->renderedImageData);
        writer.endMap();
    } else if (const auto* image = attachment.image()) {
        // What can't be had is referred to all the same; no file at all is one without bytes.
        auto bytes = images == ImageBytes::inside ? image->file.bytes() : std::nullopt;
        if (image->file.isNull())
            bytes = QByteArray();
        writer.append(quint64(bytes ? imageWithBytes : imageElsewhere));
        writeImage(writer, *image, bytes);
    }
    writer.endArray();
}

TextAttachment readAttachment(CborCursor& cursor)
{
    cursor.enterArray(2);
    TextAttachment attachment;
    const auto kind = AttachmentKind(cursor.readUnsigned(imageElsewhere));
    if (kind == chartKind)
        attachment = readChart(cursor);
    else
        attachment = readImage(cursor, kind);
    cursor.leave();
    return attachment;
}

} // namespace orvane
