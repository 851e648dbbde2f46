// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/value/ImageFile.h"

#include <QSize>
#include <QString>

#include <expected>

namespace orvane {

/// Why a file doesn't come into a note as an image.
enum class ImageRefusal {
    cantBeRead, ///< the file itself
    tooLarge,   ///< more than `mostImageBytes`
    tooManyPixels,
    noImage, ///< of a kind that nobody here can read, or damaged
};

inline constexpr qint64 mostImageBytes = qint64(64) << 20;

/// An image as a note keeps it.
struct AcceptedImage {
    QByteArray bytes;
    QSize size;   ///< in pixels, as it is to be shown
    QString name; ///< of its file, without the ending; empty where there is none
};

/// The image that the bytes of a file are: those bytes themselves for PNG, JPEG, WebP, GIF and SVG,
/// and a PNG for every other kind that can be read. Takes as long as decoding it at a small size,
/// and where it becomes PNG at its own. Any thread.
[[nodiscard]] std::expected<AcceptedImage, ImageRefusal> acceptImage(const QByteArray& bytes);
[[nodiscard]] std::expected<AcceptedImage, ImageRefusal> acceptImageFile(const QString& path);

/// Whether a file's name says that it is an image.
[[nodiscard]] bool isNamedAsImage(const QString& path);
/// The endings of the names of images that can be read, as "png".
[[nodiscard]] QStringList imageSuffixes();
/// The ending that goes with what the bytes are.
[[nodiscard]] QString suffixOf(const QByteArray& bytes);

/// What is said about `name`, a file's name or what stands for one, that wasn't taken.
[[nodiscard]] QString messageFor(ImageRefusal refusal, const QString& name);

} // namespace orvane
