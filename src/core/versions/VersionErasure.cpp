// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/versions/VersionErasure.h"

#include "core/records/JsonObjectReader.h"
#include "core/versions/VersionFiles.h"

#include <QDirIterator>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

namespace orvane::VersionErasure {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype idLength = 36;

/// Calls `visit` with the note and the path of each file of a timeline of these notes.
template <typename Visit>
void visitFiles(const QString& projectRootPath, const QSet<QUuid>& ids, Visit&& visit)
{
    QDirIterator files(VersionFiles::folderPath(projectRootPath),
                       QDir::Files | QDir::Hidden | QDir::System);
    while (files.hasNext()) {
        const QString path = files.next();
        const QString name = files.fileName();
        if (!QStringView(name).sliced(qMin(idLength, name.size())).startsWith(".json"_L1))
            continue;
        const auto id = uuidFromText(name.first(idLength));
        if (id && ids.contains(*id))
            visit(*id, path);
    }
}

std::expected<QSet<QUuid>, FileError> readList(const QString& path)
{
    const auto bytes = readFile(path, FileLimit::manifest);
    if (!bytes && bytes.error().code == FileError::Code::NotFound)
        return QSet<QUuid>();
    if (!bytes)
        return std::unexpected(bytes.error());
    QSet<QUuid> ids;
    for (const QJsonValue value : QJsonDocument::fromJson(*bytes).array()) {
        if (const auto id = uuidFromText(value.toString()))
            ids.insert(*id);
    }
    return ids;
}

std::expected<void, FileError> writeList(const QString& path, const QSet<QUuid>& ids)
{
    if (ids.isEmpty()) {
        QFile file(path);
        if (file.exists() && !file.remove())
            return std::unexpected(FileError{FileError::Code::Other, path, file.errorString()});
        return {};
    }
    QStringList texts;
    for (const QUuid& id : ids)
        texts.append(uuidText(id));
    texts.sort();
    return writeFileAtomically(path, QJsonDocument(QJsonArray::fromStringList(texts)).toJson());
}

void warn(const FileError& error)
{
    qWarning("The versions of erased notes: %ls", qUtf16Printable(error.text()));
}

} // namespace

QString listPath(const QString& projectRootPath)
{
    return VersionFiles::folderPath(projectRootPath) + "/erased.json"_L1;
}

QSet<QUuid> noted(const QString& projectRootPath)
{
    const auto list = readList(listPath(projectRootPath));
    if (!list)
        warn(list.error());
    return list.value_or(QSet<QUuid>());
}

QSet<QUuid> note(const QString& projectRootPath, const QSet<QUuid>& ids)
{
    QSet<QUuid> found;
    visitFiles(projectRootPath, ids, [&](const QUuid& id, const QString&) { found.insert(id); });
    if (found.isEmpty())
        return found;
    const QString path = listPath(projectRootPath);
    const auto list = readList(path);
    const auto written = list ? writeList(path, *list | found) : std::unexpected(list.error());
    if (!written)
        warn(written.error());
    return found;
}

QSet<QUuid> finish(const QString& projectRootPath, const QSet<QUuid>& ids)
{
    QSet<QUuid> left;
    visitFiles(projectRootPath, ids, [&](const QUuid& id, const QString& path) {
        QFile file(path);
        if (!file.remove()) {
            left.insert(id);
            warn({FileError::Code::Other, path, file.errorString()});
        }
    });
    const QString path = listPath(projectRootPath);
    const auto list = readList(path);
    const auto written =
        list ? writeList(path, (*list - ids) | left) : std::unexpected(list.error());
    if (!written)
        warn(written.error());
    return left;
}

void forget(const QString& projectRootPath, const QSet<QUuid>& ids)
{
    const QString path = listPath(projectRootPath);
    const auto list = readList(path);
    if (!list || !list->intersects(ids))
        return;
    if (const auto written = writeList(path, *list - ids); !written)
        warn(written.error());
}

} // namespace orvane::VersionErasure
