// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/archive/StyleArchive.h"
#include "text/value/OWChartBlock.h"
#include "text/value/OrvaneNoteImageAttachment.h"

#include <cmath>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

enum AttachmentKind : quint64 { imageKind = 1, chartKind = 2 };

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

void writeImage(QCborStreamWriter& writer, const OrvaneNoteImageAttachment& image)
{
    writer.startMap(7);
    writer.append("attachmentID"_L1);
    writer.append(image.attachmentID.toRfc4122());
    writer.append("originalSize"_L1);
    writePair(writer, image.originalSize.width(), image.originalSize.height());
    writer.append("renderedSize"_L1);
    writePair(writer, image.renderedSize.width(), image.renderedSize.height());
    writer.append("aspectRatioLocked"_L1);
    writer.append(image.aspectRatioLocked);
    writer.append("imageData"_L1);
    writer.append(image.imageData);
    writer.append("wrapMode"_L1);
    writer.append(rawValue(image.wrapMode));
    writer.append("floatingOffset"_L1);
    writePair(writer, image.floatingOffset.x(), image.floatingOffset.y());
    writer.endMap();
}

OrvaneNoteImageAttachment readImage(CborCursor& cursor)
{
    OrvaneNoteImageAttachment image;
    cursor.require(cursor.enterMap() == 7);
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
    expectKey(cursor, u"imageData");
    image.imageData = cursor.readBytes();
    expectKey(cursor, u"wrapMode");
    const auto mode = fromRawValue<OrvaneNoteImageWrapMode>(cursor.readText());
    cursor.require(mode.has_value());
    image.wrapMode = mode.value_or(OrvaneNoteImageWrapMode::inLine);
    expectKey(cursor, u"floatingOffset");
    const auto [x, y] = readPair(cursor);
    image.floatingOffset = {x, y};
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

void write(QCborStreamWriter& writer, const TextAttachment& attachment)
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
        writer.append(quint64(imageKind));
        writeImage(writer, *image);
    }
    writer.endArray();
}

TextAttachment readAttachment(CborCursor& cursor)
{
    cursor.enterArray(2);
    TextAttachment attachment;
    if (cursor.readUnsigned(chartKind) == chartKind)
        attachment = readChart(cursor);
    else
        attachment = readImage(cursor);
    cursor.leave();
    return attachment;
}

} // namespace orvane
