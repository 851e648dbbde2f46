// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QFontDatabase>
#include <QImage>
#include <QString>
#include <QTest>
#include <QWidget>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace orvane {

/// What letters look like depends on: pictures of another machine's fonts prove nothing.
inline QByteArray fontsOfThisMachine()
{
    QStringList families = QFontDatabase::families();
    families.sort();
    const QByteArray names = families.join(QLatin1Char('\n')).toUtf8();
    return QByteArray(qVersion()) + ' ' +
           QCryptographicHash::hash(names, QCryptographicHash::Sha256).toHex() + '\n';
}

/// Whether the pictures were made with the fonts that are here.
inline bool areKeptFontsHere()
{
    static const bool areHere = [] {
        QFile fonts(QStringLiteral(ORVANE_PICTURES "/fonts.txt"));
        return fonts.open(QIODevice::ReadOnly) && fonts.readAll() == fontsOfThisMachine();
    }();
    return areHere;
}

inline constexpr int keptShrink = 3;
inline constexpr int mostDifferentPixels = 12; // of those that are kept

inline QString keptPath(const QString& name)
{
    return QStringLiteral(ORVANE_PICTURES "/%1.png").arg(name);
}

inline QImage shrunk(const QImage& picture)
{
    return picture.convertToFormat(QImage::Format_RGB32)
        .scaled(picture.size() / keptShrink, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

struct PictureDifference {
    int pixels = 0;
    QRect where;
};

inline PictureDifference differenceOf(const QImage& shown, const QString& path)
{
    constexpr int leastDifference = 20; // of 255, in one colour
    const QImage kept = QImage(path).convertToFormat(QImage::Format_RGB32);
    if (kept.size() != shown.size())
        return {shown.width() * shown.height(), shown.rect()};
    PictureDifference found;
    for (int y = 0; y < kept.height(); ++y) {
        for (int x = 0; x < kept.width(); ++x) {
            const QRgb a = kept.pixel(x, y);
            const QRgb b = shown.pixel(x, y);
            const int difference =
                std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                          std::abs(qBlue(a) - qBlue(b))});
            if (difference < leastDifference)
                continue;
            ++found.pixels;
            found.where |= QRect(x, y, 1, 1);
        }
    }
    return found;
}

/// Holds a picture against the one that is kept under this name in the test's folder "pictures", a
/// third as large, and fails where it looks otherwise. With ORVANE_KEEP_PICTURES set it is kept in
/// the other's place, to be looked at before it is committed. On a machine with other fonts than
/// those that the pictures were made with nothing is compared.
inline void expectKeptPicture(const QImage& picture, const QString& name)
{
    const QString path = keptPath(name);
    const QImage shown = shrunk(picture);
    if (qEnvironmentVariableIsSet("ORVANE_KEEP_PICTURES")) {
        QDir().mkpath(QFileInfo(path).path());
        ASSERT_TRUE(shown.save(path)) << qPrintable(path);
        QFile fonts(QStringLiteral(ORVANE_PICTURES "/fonts.txt"));
        ASSERT_TRUE(fonts.open(QIODevice::WriteOnly));
        fonts.write(fontsOfThisMachine());
        return;
    }
    if (!areKeptFontsHere()) {
        static const bool isSaid = [] {
            std::puts("The pictures were made with other fonts and are not compared.");
            return true;
        }();
        Q_UNUSED(isSaid)
        return;
    }
    const PictureDifference difference = differenceOf(shown, path);
    if (difference.pixels <= mostDifferentPixels)
        return;
    const QString actual = QDir::temp().filePath(name + QStringLiteral("-actual.png"));
    static_cast<void>(picture.save(actual));
    const QPoint where = difference.where.center() * keptShrink;
    ADD_FAILURE() << qPrintable(name) << " looks otherwise in " << difference.pixels
                  << " small pixels, round " << where.x() << ',' << where.y() << "; see "
                  << qPrintable(actual);
}

/// The same of a widget, which is given two seconds to come to rest.
inline void expectKeptPicture(QWidget& widget, const QString& name)
{
    constexpr int looks = 20;
    constexpr int pause = 100; // milliseconds
    QImage picture = widget.grab().toImage();
    if (!qEnvironmentVariableIsSet("ORVANE_KEEP_PICTURES") && areKeptFontsHere()) {
        for (int i = 0; i < looks &&
                        differenceOf(shrunk(picture), keptPath(name)).pixels > mostDifferentPixels;
             ++i) {
            QTest::qWait(pause);
            picture = widget.grab().toImage();
        }
    }
    expectKeptPicture(picture, name);
}

} // namespace orvane
