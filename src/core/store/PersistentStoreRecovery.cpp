// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/store/PersistentStoreRecovery.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

constexpr auto backupPrefix = "PersistentStoreRecovery-"_L1;

// The folder of the last recovery, or the data folder itself where none is.
QString newestBackup(const QString& dataFolder)
{
    QString newest = dataFolder;
    qint64 latest = -1;
    for (const QString& name : QDir(dataFolder).entryList({backupPrefix + u'*'}, QDir::Dirs)) {
        bool isTime = false;
        const qint64 time = QStringView(name).mid(backupPrefix.size()).toLongLong(&isTime);
        if (!isTime || time <= latest)
            continue;
        latest = time;
        newest = dataFolder + u'/' + name;
    }
    return newest;
}

} // namespace

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
    const QString place = reader.string("backupDirectoryURL"_L1);
    recovery.backupDirectoryURL =
        QDir::isAbsolutePath(place) ? QUrl::fromLocalFile(place) : QUrl(place, QUrl::StrictMode);
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
    const QFileInfo info(path);
    if (!info.exists() && !info.isSymLink())
        return std::nullopt;
    QString problem = u"it is not a file"_s;
    if (info.isFile()) {
        const auto bytes = readFile(path, FileLimit::recoveryMarker);
        auto recovery = bytes ? decoded(*bytes) : std::unexpected(JsonError());
        if (recovery)
            return *std::move(recovery);
        problem = bytes ? recovery.error().text() : bytes.error().text();
    }
    qWarning("%ls is no readable recovery marker: %ls", qUtf16Printable(path),
             qUtf16Printable(problem));
    return PersistentStoreRecovery{
        QUrl::fromLocalFile(newestBackup(dataFolder)),
        QCoreApplication::translate("PersistentStoreRecovery",
                                    "The recovery marker can't be read: %1")
            .arg(path)};
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
    return u"%1/%2%3"_s.arg(QFileInfo(storePath).absolutePath(), backupPrefix)
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
