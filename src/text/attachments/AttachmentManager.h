// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/value/AttributedString.h"
#include "text/value/ImageFile.h"
#include "text/value/OWChartBlock.h"

#include <QByteArray>
#include <QImage>
#include <QSizeF>
#include <QString>

#include <functional>
#include <optional>

/// The stored forms of a rich note's content, and the attachments in it. All functions may run on
/// any thread.
///
/// A chart travels twice: as the attachment and as JSON on its character. While a note is edited
/// the attachment is what counts, and saving renews the JSON; on loading the JSON counts, so that
/// it also brings back a chart whose attachment was lost on the way.
namespace orvane::AttachmentManager {

/// Draws a chart as PNG. Without one, charts keep the picture that they have.
using ChartPainter = std::function<QByteArray(const OWChartBlock&)>;

enum class ChartSource { liveAttachment, storedJson };

/// The rich content payload (JSON) of a document, its attachments normalised from what is live.
[[nodiscard]] QByteArray archivePayload(const AttributedString& document,
                                        const ChartPainter& painter = {});

/// The document of an archive; nothing when it can't be read.
[[nodiscard]] std::optional<AttributedString> decodeArchive(const QByteArray& archive);

/// The document of a rich content payload, its attachments normalised from what is stored. Nothing
/// for what can't be read, for another version, and for an empty document: the caller then takes
/// the note's next stored form.
[[nodiscard]] std::optional<AttributedString> decodePayload(const QByteArray& payload,
                                                            const ChartPainter& painter = {});

/// Prepares every attachment of the document for display and for storing.
void normalizeAttachments(AttributedString& document, ChartSource source,
                          const ChartPainter& painter = {});

/// The chart that belongs on `position` of the document, whose attachment is `attachment`: from the
/// one or the other as `source` says, and nothing where there is no chart.
[[nodiscard]] std::optional<OWChartAttachment>
normalizedChartAttachment(const TextAttachment& attachment, const AttributedString& document,
                          qsizetype position, ChartSource source);

/// A picture as other programs take it.
enum class PictureFormat { png, jpeg };
struct ExchangedPicture {
    QByteArray data;
    PictureFormat format = PictureFormat::png;
    QSizeF size; ///< on the page, in points
};

/// The document with the bytes of its images in memory, as far as `read` gives them: for those who
/// write them out whole.
[[nodiscard]] AttributedString withImageBytes(const AttributedString& document,
                                              const ImageReader& read);
/// The document with images that lie elsewhere alone, as what is stored beside their bytes has it.
[[nodiscard]] AttributedString withoutImageBytes(const AttributedString& document);
/// The files of the document's images, each once, in the order of the text.
[[nodiscard]] QList<ImageFile> imageFiles(const AttributedString& document);

/// The image or the picture of the chart that an attachment is, made to PNG where it is neither PNG
/// nor JPEG; nothing where there is none, its bytes are not in memory, or it can't be read.
[[nodiscard]] std::optional<ExchangedPicture> exchangedPicture(const TextAttachment& attachment);

/// An image as PNG; nothing for a null one.
[[nodiscard]] std::optional<QByteArray> pngData(const QImage& image);

} // namespace orvane::AttachmentManager
