// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "platform/Machine.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

namespace orvane {

using namespace Qt::StringLiterals;

std::expected<std::optional<QString>, FileError> DesktopTrash::moveToTrash(const QString& path)
{
    if (!QFileInfo::exists(path))
        return std::unexpected(
            FileError{FileError::Code::NotFound, path, u"No such file or directory"_s});
    QString place;
    if (!QFile::moveToTrash(path, &place))
        return std::unexpected(
            FileError{FileError::Code::Other, path, u"The desktop's trash did not take it"_s});
    return place.isEmpty() ? std::nullopt : std::optional(place);
}

FolderTrash::FolderTrash(QString folder)
    : m_folder(std::move(folder))
{}

std::expected<std::optional<QString>, FileError> FolderTrash::moveToTrash(const QString& path)
{
    if (auto made = makeFolder(m_folder); !made)
        return std::unexpected(made.error());
    const QString name = QFileInfo(path).fileName();
    QString place = m_folder + u'/' + name;
    for (int i = 2; QFileInfo::exists(place); ++i)
        place = u"%1/%2 %3"_s.arg(m_folder, name).arg(i);
    if (!QDir().rename(path, place))
        return std::unexpected(FileError{FileError::Code::Other, path, u"It can't be moved"_s});
    return place;
}

UserFolders UserFolders::ofThisUser()
{
    const auto standard = [](QStandardPaths::StandardLocation location) {
        return QStandardPaths::writableLocation(location);
    };
    UserFolders folders;
    folders.home = QDir::homePath();
    folders.documents = standard(QStandardPaths::DocumentsLocation);
    if (folders.documents.isEmpty() || folders.documents == folders.home)
        folders.documents = folders.home + "/Documents"_L1;
    folders.temporary = QDir::tempPath();
    folders.applicationSupport = standard(QStandardPaths::GenericDataLocation);
    folders.configuration = standard(QStandardPaths::GenericConfigLocation) + "/OrvaneWorkspace"_L1;
    // https://specifications.freedesktop.org/basedir-spec: an absolute path, or the default counts.
    const QString state = qEnvironmentVariable("XDG_STATE_HOME");
    folders.state = (QDir::isAbsolutePath(state) ? state : folders.home + "/.local/state"_L1) +
                    "/OrvaneWorkspace"_L1;
    return folders;
}

UserFolders UserFolders::below(const QString& root)
{
    return {root + "/Documents"_L1,
            root,
            root + "/tmp"_L1,
            root + "/share"_L1,
            root + "/config/OrvaneWorkspace"_L1,
            root + "/state/OrvaneWorkspace"_L1};
}

} // namespace orvane
