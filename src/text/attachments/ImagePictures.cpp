// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/attachments/ImagePictures.h"

#include "text/attachments/SafeSvg.h"

#include <QBuffer>
#include <QImageReader>

namespace orvane {

namespace {

constexpr int mostKibibytes = 64 * 1024;
/// What is decoded in well under a millisecond isn't worth a flicker.
constexpr qint64 fewPixels = 128 * 128;
constexpr qsizetype fewBytes = 64 * 1024;
/// For one image of the most pixels, in mebibytes.
constexpr int decodingLimit = 512;

/// A reader of bytes that may be hostile.
class Reader {
public:
    explicit Reader(const QByteArray& bytes)
    {
        static const bool isLimited = [] {
            QImageReader::setAllocationLimit(decodingLimit);
            return true;
        }();
        Q_UNUSED(isLimited)
        m_isDrawing = isSvg(bytes);
        m_buffer.setData(m_isDrawing ? safeSvg(bytes).value_or(QByteArray()) : bytes);
        m_buffer.open(QIODevice::ReadOnly);
        m_reader.setDevice(&m_buffer);
        m_reader.setDecideFormatFromContent(true);
        m_reader.setAutoTransform(true);
    }
    QImageReader& operator*() { return m_reader; }
    QImageReader* operator->() { return &m_reader; }

    /// Whether it is sharp at every size.
    [[nodiscard]] bool isDrawing() const { return m_isDrawing; }
    [[nodiscard]] bool isTurned() const
    {
        return m_reader.transformation() & QImageIOHandler::TransformationRotate90;
    }
    [[nodiscard]] QSize size() const
    {
        const QSize size = m_reader.size();
        if (size.isEmpty() || qint64(size.width()) * size.height() > mostImagePixels)
            return {};
        return isTurned() ? size.transposed() : size;
    }

private:
    QBuffer m_buffer;
    QImageReader m_reader;
    bool m_isDrawing = false;
};

} // namespace

QImage decodedImage(const QByteArray& bytes, QSize pixels)
{
    Reader reader(bytes);
    const QSize size = reader.size();
    if (size.isEmpty())
        return {};
    // A photograph is decoded at a fraction of its size in a fraction of the time.
    const bool isSmaller = pixels.width() < size.width() && pixels.height() < size.height();
    if (!pixels.isEmpty() && (isSmaller || reader.isDrawing()))
        reader->setScaledSize(reader.isTurned() ? pixels.transposed() : pixels);
    QImage image = reader->read();
    if (image.isNull())
        return {};
    if (!pixels.isEmpty() && image.size() != pixels && image.width() > pixels.width())
        image = image.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    return image.convertToFormat(image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied
                                                         : QImage::Format_RGB32);
}

QSize imageSize(const QByteArray& bytes)
{
    return Reader(bytes).size();
}

ImagePictures::ImagePictures(QObject* parent)
    : QObject(parent)
    , m_ready(mostKibibytes)
{
    m_pool.setMaxThreadCount(2);
}

ImagePictures::~ImagePictures()
{
    m_pool.clear();
    m_pool.waitForDone();
}

void ImagePictures::setFetch(Fetch fetch)
{
    m_fetch = std::move(fetch);
    tryAgain();
}

void ImagePictures::tryAgain()
{
    m_unreadable.clear();
    m_coming.clear();
}

ImagePictures::Picture ImagePictures::picture(const ImageFile& file, QSize pixels)
{
    const Key key{file.hash(), pixels};
    if (const QImage* known = m_ready.object(key))
        return {State::Ready, *known};
    if (file.isNull() || m_unreadable.contains(key.hash))
        return {};
    if (m_coming.contains(key))
        return {State::Coming, otherSize(key.hash)};
    const auto bytes = file.bytes();
    if (bytes && bytes->size() <= fewBytes) {
        const QSize size = imageSize(*bytes);
        if (qint64(size.width()) * size.height() <= fewPixels) {
            take(key, decodedImage(*bytes, pixels));
            const QImage* known = m_ready.object(key);
            return known ? Picture{State::Ready, *known} : Picture{};
        }
    }
    if (!bytes && !m_fetch)
        return {};
    m_coming.insert(key);
    if (bytes) {
        decode(key, *bytes);
    } else {
        m_fetch(file, [self = QPointer(this), key](const std::optional<QByteArray>& read) {
            if (self && read)
                self->decode(key, *read);
            else if (self)
                self->take(key, {});
        });
    }
    return {State::Coming, otherSize(key.hash)};
}

void ImagePictures::decode(const Key& key, const QByteArray& bytes)
{
    m_pool.start([this, key, bytes] {
        const QImage image = decodedImage(bytes, key.pixels);
        QMetaObject::invokeMethod(
            this, [this, key, image] { take(key, image); }, Qt::QueuedConnection);
    });
}

void ImagePictures::take(const Key& key, const QImage& image)
{
    m_coming.remove(key);
    if (image.isNull()) {
        m_unreadable.insert(key.hash);
    } else {
        m_lastSize.insert(key.hash, key.pixels);
        m_ready.insert(key, new QImage(image), int(image.sizeInBytes() / 1024) + 1);
    }
    emit came(key.hash);
}

QImage ImagePictures::otherSize(const QByteArray& hash) const
{
    const auto size = m_lastSize.constFind(hash);
    const QImage* other = size == m_lastSize.cend() ? nullptr : m_ready.object({hash, *size});
    return other ? *other : QImage();
}

} // namespace orvane
