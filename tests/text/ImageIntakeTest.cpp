// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/attachments/ImageIntake.h"

#include "platform/AtomicFile.h"
#include "text/attachments/ImagePictures.h"
#include "text/attachments/SafeSvg.h"

#include <QBuffer>
#include <QImage>
#include <QTemporaryDir>
#include <QtEndian>
#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

QByteArray encoded(QSize size, const char* format, const QColor& color = Qt::red)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(color);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, format);
    return bytes;
}

QByteArray bigEndian(quint32 number)
{
    QByteArray bytes(4, 0);
    qToBigEndian(number, bytes.data());
    return bytes;
}

/// A PNG whose header says that it is so large.
QByteArray claimed(quint32 width, quint32 height)
{
    QByteArray png = encoded({2, 2}, "PNG");
    png.replace(16, 8, bigEndian(width) + bigEndian(height));
    const QByteArray header = png.sliced(12, 17);
    quint32 sum = 0xffffffff;
    for (const char c : header) {
        sum ^= quint8(c);
        for (int i = 0; i < 8; ++i)
            sum = sum & 1 ? 0xedb88320 ^ (sum >> 1) : sum >> 1;
    }
    return png.replace(29, 4, bigEndian(~sum));
}

QByteArray drawing(const QByteArray& content, const QByteArray& attributes = {})
{
    return "<svg xmlns='http://www.w3.org/2000/svg' xmlns:xlink='http://www.w3.org/1999/xlink' "
           "width='40' height='20' " +
           attributes + ">" + content + "</svg>";
}

const QByteArray redBox = "<rect width='40' height='20' fill='#ff0000'/>";

TEST(ImageIntake, KeepsWhatNotesKnowAndMakesPngOfTheRest)
{
    struct Row {
        const char* name;
        QByteArray bytes;
        QSize size;
        bool isKept;
        const char* suffix;
    };
    QByteArray turned = encoded({60, 40}, "JPEG");
    // Orientation 6: to be turned by a quarter.
    turned.insert(2,
                  QByteArray::fromHex("ffe1002245786966000049492a00080000000100120103000100000006"
                                      "00000000000000"));
    const Row rows[] = {
        {"png", encoded({60, 40}, "PNG"), {60, 40}, true, "png"},
        {"jpeg", encoded({60, 40}, "JPEG"), {60, 40}, true, "jpg"},
        {"turned jpeg", turned, {40, 60}, true, "jpg"},
        {"webp", encoded({60, 40}, "WEBP"), {60, 40}, true, "webp"},
        {"gif",
         QByteArray::fromBase64("R0lGODlhAQABAIAAAAAAAP///yH5BAEAAAAALAAAAAABAAEAAAIBRAA7"),
         {1, 1},
         true,
         "gif"},
        {"drawing", drawing(redBox), {40, 20}, true, "svg"},
        {"bitmap", encoded({60, 40}, "BMP"), {60, 40}, false, "png"},
        {"portable pixmap", encoded({60, 40}, "PPM"), {60, 40}, false, "png"},
    };
    for (const Row& row : rows) {
        const auto accepted = acceptImage(row.bytes);
        ASSERT_TRUE(accepted) << row.name;
        EXPECT_EQ(accepted->size, row.size) << row.name;
        EXPECT_EQ(accepted->bytes == row.bytes, row.isKept) << row.name;
        EXPECT_EQ(suffixOf(accepted->bytes).toStdString(), row.suffix) << row.name;
        EXPECT_EQ(decodedImage(accepted->bytes, {}).size(), row.size) << row.name;
    }
}

TEST(ImageIntake, SaysWhyItDoesNotTakeAFile)
{
    struct Row {
        const char* name;
        QByteArray bytes;
        ImageRefusal refusal;
    };
    const QByteArray png = encoded({200, 200}, "PNG");
    QByteArray bomb = "GIF89a";
    bomb += QByteArray::fromHex("ffffffff800000000000ffffff2c00000000ffffffff000201443b");
    QByteArray again = "<defs><g id='a0'>" + redBox + "</g>";
    for (int i = 0; i < 30; ++i) {
        const QByteArray use = "<use xlink:href='#a" + QByteArray::number(i) + "'/>";
        again += "<g id='a" + QByteArray::number(i + 1) + "'>" + use + use + use + "</g>";
    }
    again += "</defs><use xlink:href='#a30'/>";
    const Row rows[] = {
        {"nothing", {}, ImageRefusal::noImage},
        {"words", "It was late.", ImageRefusal::noImage},
        {"a header alone", png.first(40), ImageRefusal::noImage},
        {"60,000 by 60,000", claimed(60'000, 60'000), ImageRefusal::tooManyPixels},
        {"just too many", claimed(10'001, 10'000), ImageRefusal::tooManyPixels},
        {"as many as may be, and none there", claimed(10'000, 10'000), ImageRefusal::noImage},
        {"gif of 4 gigapixels", bomb, ImageRefusal::tooManyPixels},
        {"too large a file", QByteArray(mostImageBytes + 1, 'x'), ImageRefusal::tooLarge},
        {"drawing that ends too soon", drawing(redBox).first(150), ImageRefusal::noImage},
        {"drawing of drawings of drawings", drawing(again), ImageRefusal::noImage},
        {"drawing that shows itself", drawing("<g id='a'><use xlink:href='#a'/></g>"),
         ImageRefusal::noImage},
        {"drawing as deep as a well",
         drawing(QByteArray("<g>").repeated(1'000) + QByteArray("</g>").repeated(1'000)),
         ImageRefusal::noImage},
    };
    for (const Row& row : rows) {
        const auto accepted = acceptImage(row.bytes);
        ASSERT_FALSE(accepted) << row.name;
        EXPECT_EQ(accepted.error(), row.refusal) << row.name;
        EXPECT_TRUE(messageFor(accepted.error(), u"x.png"_s).contains(u"x.png"_s)) << row.name;
    }
    QTemporaryDir folder;
    const auto missing = acceptImageFile(folder.filePath(u"none.png"_s));
    EXPECT_EQ(missing.error(), ImageRefusal::cantBeRead);
    const QString path = folder.filePath(u"The posts at dusk.png"_s);
    ASSERT_TRUE(writeFileAtomically(path, png));
    EXPECT_EQ(acceptImageFile(path)->name, u"The posts at dusk"_s);
    QFile large(folder.filePath(u"large.png"_s));
    ASSERT_TRUE(large.open(QIODevice::WriteOnly) && large.resize(mostImageBytes + 1));
    EXPECT_EQ(acceptImageFile(large.fileName()).error(), ImageRefusal::tooLarge);
}

TEST(ImageIntake, ADrawingReachesForNothingAndRunsNothing)
{
    QTemporaryDir folder;
    const QString outside = folder.filePath(u"outside.png"_s);
    ASSERT_TRUE(writeFileAtomically(outside, encoded({40, 20}, "PNG", Qt::blue)));
    const QByteArray path = outside.toUtf8();
    const QByteArray own = encoded({40, 20}, "PNG", Qt::green).toBase64();
    struct Row {
        const char* name;
        QByteArray content;
        QColor shown; ///< in the middle
    };
    const Row rows[] = {
        {"a box", redBox, Qt::red},
        {"file", redBox + "<image width='40' height='20' xlink:href='file://" + path + "'/>",
         Qt::red},
        {"path", redBox + "<image width='40' height='20' xlink:href='" + path + "'/>", Qt::red},
        {"plain address", redBox + "<image width='40' height='20' href='" + path + "'/>", Qt::red},
        {"its own picture",
         redBox + "<image width='40' height='20' xlink:href='data:image/png;base64," + own + "'/>",
         Qt::green},
        {"a part of itself", "<defs><g id='g'>" + redBox + "</g></defs><use xlink:href='#g'/>",
         Qt::red},
        {"script", "<script>alert(1)</script>" + redBox, Qt::red},
        {"handler", "<g onload='alert(1)'>" + redBox + "</g>", Qt::red},
        {"style from elsewhere", "<style>@import url('http://localhost/x.css');</style>" + redBox,
         Qt::red},
        {"fill from elsewhere",
         redBox + "<rect width='40' height='20' style='fill:url(http://localhost/x#y)' "
                  "fill='none'/>",
         Qt::red},
        {"a frame", redBox + "<foreignObject><iframe src='http://localhost'/></foreignObject>",
         Qt::red},
    };
    for (const Row& row : rows) {
        const auto safe = safeSvg(drawing(row.content));
        ASSERT_TRUE(safe) << row.name;
        for (const char* word : {"localhost", "alert", "file:", "outside.png", "onload"})
            EXPECT_FALSE(safe->contains(word)) << row.name << ": " << word;
        const QImage shown = decodedImage(drawing(row.content), {});
        ASSERT_EQ(shown.size(), QSize(40, 20)) << row.name;
        EXPECT_EQ(shown.pixelColor(20, 10), row.shown) << row.name;
    }
    // Sharp at whatever size: an edge between two colours has no third.
    const QImage large =
        decodedImage(drawing("<rect width='20' height='20' fill='#000000'/>"
                             "<rect x='20' width='20' height='20' fill='#ffffff'/>"),
                     {400, 200});
    ASSERT_EQ(large.size(), QSize(400, 200));
    for (int x = 0; x < large.width(); ++x)
        EXPECT_EQ(large.pixelColor(x, 100), x < 200 ? Qt::black : Qt::white) << x;
}

TEST(ImagePictures, WhatIsAskedForAgainIsReadAgain)
{
    ImagePictures pictures;
    const QByteArray bytes = encoded({600, 600}, "JPEG");
    int asked = 0;
    pictures.setFetch([&](const ImageFile&, auto take) {
        // The first reading fails, and of the second nothing is heard, as when the project closes.
        if (++asked == 1)
            take(std::nullopt);
    });
    const ImageFile file(ImageFile(bytes).hash(), bytes.size());
    (void)pictures.picture(file, {60, 60});
    EXPECT_EQ(pictures.picture(file, {60, 60}).state, ImagePictures::State::Unreadable);
    EXPECT_EQ(asked, 1);
    for (int i = 0; i < 2; ++i) {
        pictures.tryAgain();
        EXPECT_EQ(pictures.picture(file, {60, 60}).state, ImagePictures::State::Coming);
        EXPECT_EQ(pictures.picture(file, {60, 60}).state, ImagePictures::State::Coming);
        EXPECT_EQ(asked, i + 2);
    }
}

} // namespace
} // namespace orvane
