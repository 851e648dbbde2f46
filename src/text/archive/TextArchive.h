// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/value/AttributedString.h"
#include "text/value/ImageFile.h"

#include <QByteArray>

#include <expected>

/// The archive of a rich note: all of an `AttributedString` as bytes, in the form that
/// docs/formats.md tells. Both functions may run on any thread.
namespace orvane::TextArchive {

enum class Error {
    notAnArchive,   ///< some other bytes
    unknownVersion, ///< written by a later program
    damaged,        ///< an archive that breaks its own form
};

[[nodiscard]] QByteArray encode(const AttributedString& text,
                                ImageBytes images = ImageBytes::elsewhere);

/// Gives back what `encode` was given; the bytes of images that lie elsewhere are not in memory.
/// Memory stays within a small multiple of the bytes.
[[nodiscard]] std::expected<AttributedString, Error> decode(const QByteArray& archive);

} // namespace orvane::TextArchive
