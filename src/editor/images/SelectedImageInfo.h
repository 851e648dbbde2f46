// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/value/OrvaneNoteImageAttachment.h"

namespace orvane {

/// The image that is selected, for the controls that show it. Lengths are in points.
struct SelectedImageInfo {
    QUuid attachmentID;
    double width = 0;
    double height = 0;
    double originalWidth = 0;
    double originalHeight = 0;
    bool aspectRatioLocked = true;
    OrvaneNoteImageWrapMode wrapMode = OrvaneNoteImageWrapMode::inLine;
    double offsetX = 0;
    double offsetY = 0;
    qint64 fileSize = 0; ///< in bytes
    QString caption;
    QString description;
    /// Whether a popover in the page shows its controls already.
    bool hasPopover = false;

    bool operator==(const SelectedImageInfo&) const = default;
};

} // namespace orvane
