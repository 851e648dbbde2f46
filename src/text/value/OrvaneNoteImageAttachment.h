// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "platform/StoredWords.h"
#include "text/value/ImageFile.h"

#include <QPointF>
#include <QSizeF>
#include <QString>
#include <QUuid>

#include <optional>

namespace orvane {

/// How text and an image share the page.
enum class OrvaneNoteImageWrapMode {
    inLine,
    topAndBottom,
    behindText,
    inFrontOfText,
};

template <>
inline constexpr auto storedWords<OrvaneNoteImageWrapMode> = std::to_array<QStringView>(
    {u"In Line with Text", u"Top and Bottom", u"Behind Text", u"In Front of Text"});

/// An image in a rich note, on one object character (U+FFFC) of the text. Lengths are in points.
struct OrvaneNoteImageAttachment {
    static constexpr QSizeF fallbackSize{320, 200};

    QUuid attachmentID;
    QSizeF originalSize = fallbackSize; ///< natural size
    QSizeF renderedSize = fallbackSize; ///< size on the page
    bool aspectRatioLocked = true;
    ImageFile file;
    OrvaneNoteImageWrapMode wrapMode = OrvaneNoteImageWrapMode::inLine;
    /// From the anchor, for the modes that are not in line; of "Top and Bottom" sideways only.
    QPointF floatingOffset;
    /// What is to be seen, in words, for those who can't see it. May be empty.
    QString description;

    bool operator==(const OrvaneNoteImageAttachment&) const = default;

    /// Whether it is drawn behind or in front of the text, apart from its character.
    [[nodiscard]] bool isFloating() const
    {
        return wrapMode == OrvaneNoteImageWrapMode::behindText ||
               wrapMode == OrvaneNoteImageWrapMode::inFrontOfText;
    }
    /// The room that the object character takes in its line: the rendered size, and 1 × 1 for an
    /// image that floats. One at the top and bottom of text keeps the rest of its line free.
    [[nodiscard]] QSizeF bounds() const;

    /// Mends what must hold before the image is shown or stored: sizes that are finite and above
    /// zero (320 × 200 where they are not), a finite offset, and an identity.
    void prepareForDisplay();

    /// A new attachment for the bytes of an image file. The natural size is the image's own, in
    /// points of 1/72 inch for one pixel each, or 320 × 200 when the bytes are no image; the
    /// rendered size is `suggestedSize` where that is given and not empty, else the natural one.
    [[nodiscard]] static OrvaneNoteImageAttachment
    fromImageData(QByteArray imageData, std::optional<QSizeF> suggestedSize, QUuid attachmentID);
};

} // namespace orvane
