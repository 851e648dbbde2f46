// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/value/OrvaneNoteImageAttachment.h"
#include "text/value/TextSelection.h"

#include <QList>
#include <QRectF>

namespace orvane {

class EditorView;
class TextStore;

/// An image that floats, as it stands on the page; never stored. Lengths are in points.
struct FloatingAttachmentLayout {
    OrvaneNoteImageAttachment attachment;
    QRectF frame;
    QPointF anchorOrigin; ///< where its character stands
    qsizetype characterIndex = 0;
};

/// Where the images of a text are: their characters, and what is drawn of them. Follows the text
/// that a view shows. Main thread.
class ImagePlaces {
public:
    explicit ImagePlaces(EditorView& view)
        : m_view(view)
    {}

    /// Another text is shown.
    void begin();
    void follow(const TextChange& change);

    /// The positions of all images, in the order of the text.
    [[nodiscard]] const QList<qsizetype>& positions() const { return m_positions; }
    [[nodiscard]] bool hasFloating() const { return m_floating > 0; }
    /// The images of this mode that can be seen on a part of the page, from the lowest up. An
    /// anchor that nobody has laid out yet is taken to stand where its paragraph begins.
    [[nodiscard]] QList<FloatingAttachmentLayout>
    floatingAttachmentLayouts(OrvaneNoteImageWrapMode mode, const QRectF& seen) const;
    /// Where a floating image may stand: the column, and down to the end of the text or of what is
    /// seen of the page below it.
    [[nodiscard]] QRectF area() const;
    /// What is drawn of the image at a position, in points on the page.
    [[nodiscard]] QRectF frameOf(qsizetype position) const;

private:
    [[nodiscard]] const TextStore& store() const;
    void add(TextRange range, qsizetype at);
    void count();
    [[nodiscard]] FloatingAttachmentLayout layoutOf(const OrvaneNoteImageAttachment& image,
                                                    qsizetype position) const;

    EditorView& m_view;
    QList<qsizetype> m_positions;
    qsizetype m_floating = 0;
};

} // namespace orvane
