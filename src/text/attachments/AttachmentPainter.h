// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/attachments/ImagePictures.h"
#include "text/layout/TextPaint.h"

#include <QCache>
#include <QImage>

namespace orvane {

/// Draws attachments in the line: images from their files, charts as the picture that travels with
/// them, and a framed place of the right size for what is not there yet or can't be read, which
/// says so. Main thread.
class AttachmentPainter : public ObjectPainter {
public:
    AttachmentPainter();

    [[nodiscard]] QSizeF sizeOf(const CharacterStyle& style) const override;
    /// Where images come from; whoever shows them draws again when one `came`.
    [[nodiscard]] ImagePictures& pictures() { return m_images; }

    void paintObject(QPainter& painter, const QRectF& rect, const CharacterStyle& style) override;
    /// An image that stands beside the text, or the place that it will have.
    void paintImage(QPainter& painter, const QRectF& rect, const ImageFile& file);

private:
    static void paint(QPainter& painter, const QRectF& rect, const ImagePictures::Picture& shown);
    [[nodiscard]] ImagePictures::Picture chartPicture(const QByteArray& bytes, QSize pixels);

    struct Key {
        const char* bytes; ///< where they are: attachments share theirs
        qsizetype length;
        QSize pixels;

        bool operator==(const Key&) const = default;
        friend std::size_t qHash(const Key& key, std::size_t seed = 0) noexcept
        {
            return qHashMulti(seed, quintptr(key.bytes), key.length, key.pixels.width(),
                              key.pixels.height());
        }
    };
    struct Entry {
        QByteArray bytes; ///< held, so that the place is not used again meanwhile
        QImage picture;
    };
    QCache<Key, Entry> m_charts;
    ImagePictures m_images;
};

} // namespace orvane
