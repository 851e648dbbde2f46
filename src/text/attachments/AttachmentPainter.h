// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/layout/TextPaint.h"

#include <QCache>
#include <QImage>

namespace orvane {

/// Draws attachments in the line from the bytes that they carry: images as they are, charts as the
/// picture that travels with them, and an outlined place of the right size for what can't be read.
/// Decoded pictures are kept as long as there is room. Main thread.
class AttachmentPainter : public ObjectPainter {
public:
    AttachmentPainter();

    [[nodiscard]] QSizeF sizeOf(const CharacterStyle& style) const override;
    void paintObject(QPainter& painter, const QRectF& rect, const CharacterStyle& style) override;

private:
    /// The picture at about `pixels`; null for bytes that are none.
    [[nodiscard]] QImage picture(const QByteArray& bytes, QSize pixels);

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
    QCache<Key, Entry> m_pictures;
};

} // namespace orvane
