// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/library/ImageAssets.h"

#include <QCryptographicHash>
#include <QFileInfo>

namespace orvane {

std::expected<QString, FileError> keepImageAsset(const QString& dataFolder, const QByteArray& bytes,
                                                 const QString& suffix)
{
    constexpr qsizetype digits = 32;
    const QString folder = QStringLiteral("assets/images");
    const QByteArray hash = QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex();
    const QString address = folder + u'/' + QString::fromLatin1(hash.first(digits)) + u'.' + suffix;
    const QString path = dataFolder + u'/' + address;
    if (const auto there = readFile(path, bytes.size()); there && *there == bytes)
        return address;
    if (auto made = makeFolder(dataFolder + u'/' + folder); !made)
        return std::unexpected(made.error());
    if (auto written = writeFileAtomically(path, bytes); !written)
        return std::unexpected(written.error());
    return address;
}

} // namespace orvane
