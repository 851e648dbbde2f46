// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/attachments/ImageIntake.h"
#include "text/value/OrvaneNoteImageAttachment.h"
#include "text/value/TextFont.h"
#include "text/value/TextRange.h"

#include <QList>
#include <QPointF>

#include <optional>

namespace orvane {

class EditGateway;
class TextStore;

/// The widest that an image is when it comes into a note or is reset, in points.
inline constexpr qreal widestNewImage = 440;

/// What is done to images in a rich note, each as one step to undo. `position` is that of the
/// image's character; where none stands there nothing happens. All answer whether something has
/// changed. Main thread.
namespace ImageEditing {

[[nodiscard]] const OrvaneNoteImageAttachment* imageAt(const TextStore& store, qsizetype position);
/// Where the image of this id stands; without an id, that which is selected alone.
[[nodiscard]] std::optional<qsizetype> find(const EditGateway& gateway,
                                            const std::optional<QUuid>& attachmentID);
/// The position of the one image that a selection holds and nothing else.
[[nodiscard]] std::optional<qsizetype> selectedImage(const EditGateway& gateway);

/// The natural size, no wider than a new image is.
[[nodiscard]] QSizeF sizeOfNew(QSizeF original);

/// Puts images in the place of the selection, each in a paragraph of its own where there are
/// several, with the caret behind them.
bool insert(EditGateway& gateway, const QList<AcceptedImage>& images);
/// In the proportions of the image where they are locked and one side is given.
bool setSize(EditGateway& gateway, qsizetype position, std::optional<double> width,
             std::optional<double> height, std::optional<bool> isLocked);
/// The size that it has while it is dragged. All but the first call of a drag belong to the step of
/// the first.
bool drag(EditGateway& gateway, qsizetype position, QSizeF size, bool isFirst);
bool dragOffset(EditGateway& gateway, qsizetype position, QPointF offset, bool isFirst);
bool resetSize(EditGateway& gateway, qsizetype position);
/// An image at the top and bottom of text stands alone in its paragraph.
bool applyWrapMode(EditGateway& gateway, qsizetype position, OrvaneNoteImageWrapMode mode);
bool setOffset(EditGateway& gateway, qsizetype position, QPointF offset);
/// Another image in the place of this, as wide as this was, with its id, placement and words.
bool replace(EditGateway& gateway, qsizetype position, const AcceptedImage& image);
bool remove(EditGateway& gateway, qsizetype position);

/// The words of the paragraph below the image, if that is a caption: centred, and all in italics.
[[nodiscard]] QString caption(const TextStore& store, qsizetype position);
/// Writes them there; an empty caption takes the paragraph away. `base` is the font of text that
/// names none.
bool setCaption(EditGateway& gateway, qsizetype position, const QString& text,
                const TextFont& base);
bool setDescription(EditGateway& gateway, qsizetype position, const QString& text);

} // namespace ImageEditing
} // namespace orvane
