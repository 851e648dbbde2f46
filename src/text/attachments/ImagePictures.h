// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/value/ImageFile.h"

#include <QCache>
#include <QImage>
#include <QObject>
#include <QPointer>
#include <QSet>
#include <QThreadPool>

namespace orvane {

/// The pictures of image files, decoded at the size in which they are shown. What takes long is
/// read and decoded beside the main thread and told when it is there. Decoded pictures are kept as
/// far as there is room, so that hundreds of photographs take no more memory than a few. Main
/// thread.
class ImagePictures : public QObject {
    Q_OBJECT
public:
    /// Has the bytes of a file read that are not in memory, and `take` told of them on this thread;
    /// nothing where they can't be read.
    using Fetch =
        std::function<void(const ImageFile&, std::function<void(std::optional<QByteArray>)> take)>;

    explicit ImagePictures(QObject* parent = nullptr);
    ~ImagePictures() override;

    /// Without one, files whose bytes are not in memory can't be read. What couldn't be read is
    /// tried again.
    void setFetch(Fetch fetch);
    /// What couldn't be read is asked for again, as is what was asked for and never came.
    void tryAgain();

    enum class State {
        Ready,
        Coming,     ///< `came` will be told; until then perhaps one of another size
        Unreadable, ///< no bytes, or none that are an image
    };
    struct Picture {
        State state = State::Unreadable;
        QImage image;
    };
    /// The file's picture at `pixels`, with the orientation that the file tells.
    [[nodiscard]] Picture picture(const ImageFile& file, QSize pixels);
    /// In kibibytes.
    [[nodiscard]] qsizetype memory() const { return m_ready.totalCost(); }

signals:
    /// A picture of the file is there, or it turned out to be unreadable.
    void came(const QByteArray& hash);

private:
    struct Key {
        QByteArray hash;
        QSize pixels;

        bool operator==(const Key&) const = default;
        friend std::size_t qHash(const Key& key, std::size_t seed = 0) noexcept
        {
            return qHashMulti(seed, key.hash, key.pixels.width(), key.pixels.height());
        }
    };

    void decode(const Key& key, const QByteArray& bytes);
    void take(const Key& key, const QImage& image);
    [[nodiscard]] QImage otherSize(const QByteArray& hash) const;

    Fetch m_fetch;
    QCache<Key, QImage> m_ready;
    QHash<QByteArray, QSize> m_lastSize;
    QSet<Key> m_coming;
    QSet<QByteArray> m_unreadable;
    QThreadPool m_pool;
};

/// The picture of an image file at `pixels`, or at its own size where that is empty, with the
/// orientation that the file tells; null for bytes that are none, and for more than
/// `mostImagePixels`. Any thread.
[[nodiscard]] QImage decodedImage(const QByteArray& bytes, QSize pixels);
/// Its own size in pixels, as it is to be shown, without decoding it; empty where there is none.
[[nodiscard]] QSize imageSize(const QByteArray& bytes);

inline constexpr qint64 mostImagePixels = 100'000'000;

} // namespace orvane
