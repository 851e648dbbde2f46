// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/PersistentStoreRecovery.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>

namespace orvane {

using namespace Qt::StringLiterals;

QByteArray PersistentStoreRecovery::encoded() const
{
    const QJsonObject object{
        {"backupDirectoryURL"_L1, backupDirectoryURL.toString(QUrl::FullyEncoded)},
        {"errorDescription"_L1, errorDescription},
    };
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

std::expected<PersistentStoreRecovery, JsonError>
PersistentStoreRecovery::decoded(const QByteArray& bytes)
{
    const auto json = parseJson(bytes);
    if (!json)
        return std::unexpected(json.error());
    JsonObjectReader reader(*json);
    PersistentStoreRecovery recovery;
    recovery.backupDirectoryURL = QUrl(reader.string("backupDirectoryURL"_L1), QUrl::StrictMode);
    recovery.errorDescription = reader.string("errorDescription"_L1);
    if (!recovery.backupDirectoryURL.isLocalFile())
        reader.fail(reader.pathOf("backupDirectoryURL"_L1), u"a file URL is expected"_s);
    return reader.finish(std::move(recovery));
}

QString PersistentStoreRecovery::markerPath(const QString& dataFolder)
{
    return dataFolder + "/PersistentStoreRecovery.latest.json"_L1;
}

std::optional<PersistentStoreRecovery> PersistentStoreRecovery::read(const QString& dataFolder)
{
    const QString path = markerPath(dataFolder);
    const auto bytes = readFile(path);
    if (!bytes) {
        if (bytes.error().code != FileError::Code::NotFound)
            qWarning("%ls", qUtf16Printable(bytes.error().text()));
        return std::nullopt;
    }
    auto recovery = decoded(*bytes);
    if (!recovery) {
        qWarning("%ls is not a recovery marker: %ls", qUtf16Printable(path),
                 qUtf16Printable(recovery.error().text()));
        return std::nullopt;
    }
    return *std::move(recovery);
}

std::expected<void, FileError> PersistentStoreRecovery::write(const QString& dataFolder) const
{
    return writeFileAtomically(markerPath(dataFolder), encoded());
}

QString storePath(const QString& dataFolder)
{
    const auto anyExists = [](const QString& path) {
        for (const QString& file : persistentStoreFiles(path)) {
            const QFileInfo info(file);
            if (info.exists() || info.isSymLink())
                return true;
        }
        return false;
    };
    const QString current = dataFolder + "/OrvaneWorkspace.store"_L1;
    const QString legacy = dataFolder + "/OrvaneNotes.store"_L1;
    return !anyExists(current) && anyExists(legacy) ? legacy : current;
}

QStringList persistentStoreFiles(const QString& storePath)
{
    return {storePath, storePath + "-wal"_L1, storePath + "-shm"_L1};
}

QString backupDirectory(const QString& storePath, Timestamp now)
{
    return u"%1/PersistentStoreRecovery-%2"_s.arg(QFileInfo(storePath).absolutePath())
        .arg(now.msecs / 1000);
}

QString backUpPersistentStoreFiles(const QString& storePath, Timestamp now)
{
    const QString folder = backupDirectory(storePath, now);
    if (const auto made = makeFolder(folder); !made)
        qWarning("%ls", qUtf16Printable(made.error().text()));
    for (const QString& file : persistentStoreFiles(storePath)) {
        if (!QFileInfo::exists(file))
            continue;
        const QString target = folder + u'/' + QFileInfo(file).fileName();
        QFile::remove(target);
        if (!QDir().rename(file, target))
            qWarning("%ls can't be moved to %ls", qUtf16Printable(file), qUtf16Printable(target));
    }
    return folder;
}

} // namespace orvane
