// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/attachments/AttachmentManager.h"

#include "text/archive/TextArchive.h"
#include "text/attachments/ImagePictures.h"
#include "text/attachments/RichNoteContentPayload.h"
#include "text/value/OWChartBlock.h"
#include "text/value/OrvaneNoteImageAttachment.h"

#include <QBuffer>

namespace orvane::AttachmentManager {
namespace {

void prepareForDisplay(OWChartAttachment& chart, const ChartPainter& painter)
{
    chart.chartBlock.normalizeForPersistence();
    if (!painter)
        return;
    if (QByteArray picture = painter(chart.chartBlock); !picture.isEmpty())
        chart.renderedImageData = std::move(picture);
}

} // namespace

QByteArray archivePayload(const AttributedString& document, const ChartPainter& painter)
{
    AttributedString copy = document;
    normalizeAttachments(copy, ChartSource::liveAttachment, painter);
    return RichNoteContentPayload{RichNoteContentPayload::currentVersion, TextArchive::encode(copy)}
        .toJson();
}

std::optional<AttributedString> decodeArchive(const QByteArray& archive)
{
    auto document = TextArchive::decode(archive);
    if (!document)
        return std::nullopt;
    return std::move(*document);
}

std::optional<AttributedString> decodePayload(const QByteArray& payload,
                                              const ChartPainter& painter)
{
    const auto wrapped = RichNoteContentPayload::fromJson(payload);
    if (!wrapped || wrapped->version != RichNoteContentPayload::currentVersion)
        return std::nullopt;
    auto document = decodeArchive(wrapped->archiveData);
    if (!document || document->isEmpty())
        return std::nullopt;
    normalizeAttachments(*document, ChartSource::storedJson, painter);
    return document;
}

void normalizeAttachments(AttributedString& document, ChartSource source,
                          const ChartPainter& painter)
{
    QList<TextRange> objects;
    document.forEachCharacterRun(document.fullRange(),
                                 [&](TextRange run, const SharedCharacterStyle& style) {
                                     if (style->hasAttachment() || !style->chartBlockData.isEmpty())
                                         objects.append(run);
                                 });
    for (const TextRange& range : objects) {
        CharacterStyle style = *document.characterStyle(range.location);
        if (const auto* image = style.imageAttachment()) {
            OrvaneNoteImageAttachment prepared = *image;
            prepared.prepareForDisplay();
            if (prepared == *image)
                continue;
            style.attachment = TextAttachment(std::move(prepared));
        } else {
            auto chart =
                normalizedChartAttachment(style.attachment, document, range.location, source);
            if (!chart)
                continue;
            prepareForDisplay(*chart, painter);
            style.chartBlockData = chart->chartBlock.toJson();
            style.attachment = TextAttachment(std::move(*chart));
        }
        document.setCharacterStyle(range, std::move(style));
    }
}

std::optional<OWChartAttachment> normalizedChartAttachment(const TextAttachment& attachment,
                                                           const AttributedString& document,
                                                           qsizetype position, ChartSource source)
{
    const auto* live = attachment.chart();
    if (live && source == ChartSource::liveAttachment)
        return *live;
    const auto block = OWChartBlock::fromJson(document.characterStyle(position)->chartBlockData);
    if (!block)
        return live ? std::optional(*live) : std::nullopt;
    OWChartAttachment chart = live ? *live : OWChartAttachment{};
    chart.chartBlock = *block;
    return chart;
}

namespace {

/// With every image's file as `change` makes it of the one that is there.
template <typename Change>
AttributedString withFiles(AttributedString document, Change&& change)
{
    QList<TextRange> objects;
    document.forEachCharacterRun(document.fullRange(),
                                 [&](TextRange run, const SharedCharacterStyle& style) {
                                     const auto* image = style->imageAttachment();
                                     if (image && !image->file.isNull())
                                         objects.append(run);
                                 });
    for (const TextRange& range : std::as_const(objects)) {
        CharacterStyle style = *document.characterStyle(range.location);
        OrvaneNoteImageAttachment image = *style.imageAttachment();
        image.file = change(image.file);
        style.attachment = TextAttachment(std::move(image));
        document.setCharacterStyle(range, std::move(style));
    }
    return document;
}

} // namespace

AttributedString withImageBytes(const AttributedString& document, const ImageReader& read)
{
    return withFiles(document, [&](const ImageFile& file) {
        const auto bytes = file.bytes() || !read ? std::nullopt : read(file);
        return bytes ? ImageFile(*bytes) : file;
    });
}

AttributedString withoutImageBytes(const AttributedString& document)
{
    return withFiles(document,
                     [](const ImageFile& file) { return ImageFile(file.hash(), file.size()); });
}

QList<ImageFile> imageFiles(const AttributedString& document)
{
    QList<ImageFile> files;
    document.forEachCharacterRun(
        document.fullRange(), [&](TextRange, const SharedCharacterStyle& style) {
            const auto* image = style->imageAttachment();
            if (image && !image->file.isNull() && !files.contains(image->file))
                files.append(image->file);
        });
    return files;
}

std::optional<ExchangedPicture> exchangedPicture(const TextAttachment& attachment)
{
    ExchangedPicture picture;
    if (const auto* image = attachment.image()) {
        picture.data = image->file.bytes().value_or(QByteArray());
        picture.size = image->renderedSize;
    } else if (const auto* chart = attachment.chart()) {
        picture.data = chart->renderedImageData;
        picture.size = {chart->chartBlock.width, chart->chartBlock.height};
    }
    if (picture.data.startsWith("\xff\xd8\xff"))
        picture.format = PictureFormat::jpeg;
    else if (!picture.data.startsWith("\x89PNG"))
        picture.data = pngData(decodedImage(picture.data, {})).value_or(QByteArray());
    return picture.data.isEmpty() ? std::nullopt : std::optional(std::move(picture));
}

std::optional<QByteArray> pngData(const QImage& image)
{
    QByteArray png;
    QBuffer buffer(&png);
    if (image.isNull() || !buffer.open(QIODevice::WriteOnly) || !image.save(&buffer, "PNG"))
        return std::nullopt;
    return png;
}

} // namespace orvane::AttachmentManager
