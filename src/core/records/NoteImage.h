// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/records/Blob.h"

#include <QList>

namespace orvane {

/// The file of an image that a note or one of its versions shows, known by the SHA-256 of its
/// bytes. Each file is in a store once, whoever shows it.
struct NoteImage {
    QByteArray hash; ///< 32 bytes
    Blob bytes;

    /// Files are equal when their hashes are.
    bool operator==(const NoteImage& other) const { return hash == other.hash; }
};

using NoteImages = QList<NoteImage>;

} // namespace orvane
