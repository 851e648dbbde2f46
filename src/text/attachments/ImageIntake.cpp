// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/attachments/ImageIntake.h"

#include "platform/AtomicFile.h"
#include "text/attachments/AttachmentManager.h"
#include "text/attachments/ImagePictures.h"
#include "text/attachments/SafeSvg.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QFileInfo>
#include <QImageReader>

namespace orvane {

namespace {

using namespace Qt::StringLiterals;

struct Words {
    Q_DECLARE_TR_FUNCTIONS(ImageIntake)
};

/// What an image is tried at, to know that it can be read.
constexpr QSize trial(256, 256);

/// The format as it is found in the bytes themselves.
QByteArray formatOf(const QByteArray& bytes)
{
    if (isSvg(bytes))
        return "svg";
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    return QImageReader::imageFormat(&buffer);
}

bool isKeptAsItIs(const QByteArray& format)
{
    return format == "png" || format == "jpeg" || format == "jpg" || format == "webp" ||
           format == "gif" || format == "svg";
}

} // namespace

std::expected<AcceptedImage, ImageRefusal> acceptImage(const QByteArray& bytes)
{
    if (bytes.size() > mostImageBytes)
        return std::unexpected(ImageRefusal::tooLarge);
    const QByteArray format = formatOf(bytes);
    QSize size = imageSize(bytes);
    if (size.isEmpty()) {
        QBuffer buffer;
        buffer.setData(bytes);
        buffer.open(QIODevice::ReadOnly);
        const QSize told = format == "svg" ? QSize() : QImageReader(&buffer).size();
        return std::unexpected(told.isEmpty() ? ImageRefusal::noImage
                                              : ImageRefusal::tooManyPixels);
    }
    if (isKeptAsItIs(format)) {
        if (decodedImage(bytes, size.scaled(trial, Qt::KeepAspectRatio).expandedTo({1, 1}))
                .isNull())
            return std::unexpected(ImageRefusal::noImage);
        return AcceptedImage{bytes, size, {}};
    }
    auto png = AttachmentManager::pngData(decodedImage(bytes, {}));
    if (!png)
        return std::unexpected(ImageRefusal::noImage);
    if (png->size() > mostImageBytes)
        return std::unexpected(ImageRefusal::tooLarge);
    return AcceptedImage{*std::move(png), size, {}};
}

std::expected<AcceptedImage, ImageRefusal> acceptImageFile(const QString& path)
{
    const auto bytes = readFile(path, mostImageBytes);
    if (!bytes)
        return std::unexpected(bytes.error().code == FileError::Code::TooBig
                                   ? ImageRefusal::tooLarge
                                   : ImageRefusal::cantBeRead);
    auto accepted = acceptImage(*bytes);
    if (accepted)
        accepted->name = QFileInfo(path).completeBaseName();
    return accepted;
}

QStringList imageSuffixes()
{
    QStringList suffixes;
    for (const QByteArray& format : QImageReader::supportedImageFormats())
        suffixes.append(QString::fromLatin1(format));
    suffixes.removeAll("svgz"_L1); // a packed drawing is as large as it likes
    suffixes.removeAll("pdf"_L1);
    return suffixes;
}

bool isNamedAsImage(const QString& path)
{
    return imageSuffixes().contains(QFileInfo(path).suffix().toLower());
}

QString suffixOf(const QByteArray& bytes)
{
    const QByteArray format = formatOf(bytes);
    return format == "jpeg" ? u"jpg"_s : format.isEmpty() ? u"png"_s : QString::fromLatin1(format);
}

QString messageFor(ImageRefusal refusal, const QString& name)
{
    switch (refusal) {
    case ImageRefusal::cantBeRead:
        return Words::tr("“%1” couldn’t be read.").arg(name);
    case ImageRefusal::tooLarge:
        return Words::tr("“%1” is larger than 64 MB, which is the most for an image in a note.")
            .arg(name);
    case ImageRefusal::tooManyPixels:
        return Words::tr("“%1” has more than 100 megapixels, which is the most for an image in a "
                         "note.")
            .arg(name);
    case ImageRefusal::noImage:
        break;
    }
    return Words::tr("“%1” is not an image that can be read here.").arg(name);
}

} // namespace orvane
