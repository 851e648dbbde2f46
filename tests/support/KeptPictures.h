// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QFontDatabase>
#include <QImage>
#include <QString>
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

/// Holds a picture against the one that is kept under this name in the test's folder "pictures", a
/// third as large, and fails where it looks otherwise. With ORVANE_KEEP_PICTURES set it is kept in
/// the other's place, to be looked at before it is committed. On a machine with other fonts than
/// those that the pictures were made with nothing is compared.
inline void expectKeptPicture(const QImage& picture, const QString& name)
{
    constexpr int shrink = 3;
    constexpr int leastDifference = 20; // of 255, in one colour
    constexpr int mostDifferent = 12;   // of small pixels
    const QString path = QStringLiteral(ORVANE_PICTURES "/%1.png").arg(name);
    const QImage shown =
        picture.convertToFormat(QImage::Format_RGB32)
            .scaled(picture.size() / shrink, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    if (qEnvironmentVariableIsSet("ORVANE_KEEP_PICTURES")) {
        QDir().mkpath(QFileInfo(path).path());
        ASSERT_TRUE(shown.save(path)) << qPrintable(path);
        QFile fonts(QStringLiteral(ORVANE_PICTURES "/fonts.txt"));
        ASSERT_TRUE(fonts.open(QIODevice::WriteOnly));
        fonts.write(fontsOfThisMachine());
        return;
    }
    QFile fonts(QStringLiteral(ORVANE_PICTURES "/fonts.txt"));
    if (!fonts.open(QIODevice::ReadOnly) || fonts.readAll() != fontsOfThisMachine()) {
        static const bool isSaid = [] {
            std::puts("The pictures were made with other fonts and are not compared.");
            return true;
        }();
        Q_UNUSED(isSaid)
        return;
    }
    const QImage kept = QImage(path).convertToFormat(QImage::Format_RGB32);
    int different = kept.size() == shown.size() ? 0 : shown.width() * shown.height();
    QRect where = shown.rect();
    for (int y = 0; kept.size() == shown.size() && y < kept.height(); ++y) {
        for (int x = 0; x < kept.width(); ++x) {
            const QRgb a = kept.pixel(x, y);
            const QRgb b = shown.pixel(x, y);
            const int difference =
                std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                          std::abs(qBlue(a) - qBlue(b))});
            if (difference < leastDifference)
                continue;
            const QRect pixel(x, y, 1, 1);
            where = different++ == 0 ? pixel : where | pixel;
        }
    }
    if (different <= mostDifferent)
        return;
    const QString actual = QDir::temp().filePath(name + QStringLiteral("-actual.png"));
    static_cast<void>(picture.save(actual));
    ADD_FAILURE() << qPrintable(name) << " looks otherwise in " << different
                  << " small pixels, round " << where.center().x() * shrink << ','
                  << where.center().y() * shrink << "; see " << qPrintable(actual);
}

inline void expectKeptPicture(QWidget& widget, const QString& name)
{
    expectKeptPicture(widget.grab().toImage(), name);
}

} // namespace orvane
