// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/attachments/ImagePictures.h"

#include "text/attachments/AttachmentManager.h"

#include <QBuffer>
#include <QTest>
#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

QByteArray photograph(QSize size, const QColor& color)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(color);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, "JPEG", 95);
    return bytes;
}

/// A file that lies elsewhere, and gives its bytes when it is told to.
struct Elsewhere {
    QByteArray bytes;
    std::function<void(std::optional<QByteArray>)> take;
    int asked = 0;

    ImagePictures::Fetch fetch()
    {
        return [this](const ImageFile&, auto told) {
            take = std::move(told);
            ++asked;
        };
    }
    [[nodiscard]] ImageFile file() const
    {
        const ImageFile whole(bytes);
        return {whole.hash(), whole.size()};
    }
};

TEST(ImagePictures, APhotographIsReadAndDecodedBesideTheThreadAndOnce)
{
    Elsewhere there{photograph({2000, 1500}, Qt::red), {}};
    ImagePictures pictures;
    QList<QByteArray> came;
    QObject::connect(&pictures, &ImagePictures::came,
                     [&](const QByteArray& hash) { came.append(hash); });
    EXPECT_EQ(pictures.picture(there.file(), {400, 300}).state, ImagePictures::State::Unreadable)
        << "nobody fetches it";
    pictures.setFetch(there.fetch());
    EXPECT_EQ(pictures.picture(there.file(), {400, 300}).state, ImagePictures::State::Coming);
    EXPECT_EQ(pictures.picture(there.file(), {400, 300}).state, ImagePictures::State::Coming);
    EXPECT_EQ(there.asked, 1);
    there.take(there.bytes);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !came.isEmpty(); }));
    const auto shown = pictures.picture(there.file(), {400, 300});
    EXPECT_EQ(shown.state, ImagePictures::State::Ready);
    EXPECT_EQ(shown.image.size(), QSize(400, 300));
    EXPECT_GT(shown.image.pixelColor(200, 150).red(), 240);

    const auto larger = pictures.picture(there.file(), {800, 600});
    EXPECT_EQ(larger.state, ImagePictures::State::Coming);
    EXPECT_EQ(larger.image.size(), QSize(400, 300)) << "the other stands in for it";
}

TEST(ImagePictures, WhatCantBeReadIsSaidOnceAndTriedAgainFromAnotherSource)
{
    Elsewhere there{photograph({600, 600}, Qt::blue), {}};
    ImagePictures pictures;
    pictures.setFetch(there.fetch());
    (void)pictures.picture(there.file(), {60, 60});
    there.take(std::nullopt);
    EXPECT_EQ(pictures.picture(there.file(), {60, 60}).state, ImagePictures::State::Unreadable);
    EXPECT_EQ(there.asked, 1);
    pictures.setFetch(there.fetch());
    EXPECT_EQ(pictures.picture(there.file(), {60, 60}).state, ImagePictures::State::Coming);
}

TEST(ImagePictures, TakeNoMoreMemoryThanAFew)
{
    ImagePictures pictures;
    int came = 0;
    QObject::connect(&pictures, &ImagePictures::came, [&] { ++came; });
    for (int i = 0; i < 40; ++i) {
        const ImageFile file(photograph({1200, 900}, QColor::fromHsv(9 * i, 200, 200)));
        (void)pictures.picture(file, {1200, 900});
        ASSERT_TRUE(QTest::qWaitFor([&] { return came == i + 1; }));
    }
    EXPECT_LE(pictures.memory(), 64 * 1024);
    EXPECT_GT(pictures.memory(), 32 * 1024);
}

TEST(ImagePictures, HostileBytesGiveNothing)
{
    // What a PNG of 60,000 by 60,000 begins with.
    QByteArray bomb =
        QByteArray::fromHex("89504e470d0a1a0a0000000d494844520000ea600000ea6008020000");
    bomb.append(QByteArray(200, '\0'));
    const QByteArray whole = photograph({300, 200}, Qt::green);
    const std::pair<const char*, QByteArray> rows[] = {
        {"nothing", {}},
        {"words", "no image at all"},
        {"a PNG that claims billions of pixels", bomb},
        {"a beginning", whole.first(20)},
        {"an SVG of billions of pixels",
         R"(<svg xmlns="http://www.w3.org/2000/svg" width="1e9" height="1e9"/>)"},
    };
    for (const auto& [name, bytes] : rows) {
        EXPECT_TRUE(decodedImage(bytes, {100, 100}).isNull()) << name;
        EXPECT_TRUE(imageSize(bytes).isEmpty() || bytes == rows[3].second) << name;
    }
    EXPECT_EQ(imageSize(whole), QSize(300, 200));
    EXPECT_EQ(decodedImage(whole, {}).size(), QSize(300, 200));
    EXPECT_EQ(decodedImage(whole, {900, 600}).size(), QSize(300, 200)) << "never made larger";
}

TEST(ImageFile, IsKnownByItsBytesAndLetsThemGo)
{
    const ImageFile one("the same bytes");
    const ImageFile other("the same bytes");
    EXPECT_EQ(one, other);
    EXPECT_NE(one, ImageFile("others"));
    EXPECT_EQ(one, ImageFile(one.hash(), one.size()));
    const ImageFile copy = one;
    copy.release();
    EXPECT_FALSE(one.bytes()) << "all copies let go";
    EXPECT_EQ(*other.bytes(), "the same bytes");
    EXPECT_EQ(one.size(), 14);
    EXPECT_TRUE(ImageFile(QByteArray()).isNull());
}

} // namespace
} // namespace orvane
