// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/store/StoreFiles.h"

#include "core/store/PersistentStoreRecovery.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

constexpr int asideNames = 1000;

bool stands(const QString& path)
{
    const QFileInfo info(path);
    return info.exists() || info.isSymLink();
}

std::unexpected<FileError> failed(const QString& path, int error)
{
    auto code = FileError::Code::Other;
    if (error == ENOENT || error == ENOTDIR || error == ELOOP)
        code = FileError::Code::NotFound;
    else if (error == EACCES || error == EROFS)
        code = FileError::Code::NoAccess;
    else if (error == ENOSPC || error == EDQUOT || error == EFBIG)
        code = FileError::Code::NoSpace;
    return std::unexpected(FileError{code, path, qt_error_string(error)});
}

bool sync(const QString& path, int flags)
{
    const int descriptor = ::open(QFile::encodeName(path).constData(), flags | O_CLOEXEC);
    if (descriptor < 0)
        return false;
    const bool done = ::fsync(descriptor) == 0;
    const int error = errno;
    ::close(descriptor);
    errno = error;
    return done;
}

QString walOf(const QString& path)
{
    return persistentStoreFiles(path).at(1);
}

} // namespace

StoreFiles::StoreFiles(std::shared_ptr<const FolderHandle> folder)
    : m_folder(std::move(folder))
    , m_path(storePath(m_folder->path()))
    , m_lastPlace(m_folder->place().value_or(m_folder->path()))
{
    const QFileInfo info(m_path);
    m_isLink = info.isSymLink();
    if (!m_isLink)
        return;
    const QFileInfo target(info.canonicalFilePath()); // of nothing, where it leads nowhere
    if (!target.exists())
        return;
    if (auto held = FolderHandle::open(target.absolutePath())) {
        m_target = *std::move(held);
        m_path = m_target->path() + u'/' + target.fileName();
    }
}

QString StoreFiles::folderPlace() const
{
    if (const auto place = m_folder->place())
        m_lastPlace = *place;
    return m_lastPlace;
}

QString StoreFiles::named(QString text) const
{
    if (text == folder())
        return folderPlace();
    text.replace(folder() + u'/', folderPlace() + u'/');
    if (m_target)
        text.replace(m_target->path() + u'/', m_target->place().value_or(QString()) + u'/');
    return text;
}

bool StoreFiles::anyStands() const
{
    return m_isLink || std::ranges::any_of(persistentStoreFiles(m_path), stands);
}

void StoreFiles::remember()
{
    const auto identity = [this](const QString& path) {
        auto found = identityOf(path);
        if (!found && found.error().code != FileError::Code::NotFound)
            found = identityOf(path); // without an answer no save would ever succeed
        return found ? std::optional(*found) : std::nullopt;
    };
    m_store = identity(m_path);
    m_wal = identity(walOf(m_path));
}

std::expected<FileIdentity, FileError> StoreFiles::identityOf(const QString& path) const
{
    const FolderHandle& folder = m_target ? *m_target : *m_folder;
    return folder.identityOf(QFile::encodeName(path.sliced(folder.path().size() + 1)));
}

StoreError StoreFiles::unreachable(const FileError& error) const
{
    // Whatever the system can't show any more is gone: a name, a folder, a disk.
    const auto code = error.code == FileError::Code::NoAccess ? StoreError::Code::Other
                                                              : StoreError::Code::Missing;
    return {code, named(error.text())};
}

std::expected<void, StoreError> StoreFiles::storeInPlace() const
{
    const auto now = identityOf(m_path);
    if (!now)
        return std::unexpected(unreachable(now.error()));
    if (now != m_store)
        return std::unexpected(StoreError{StoreError::Code::Replaced,
                                          named(m_path) + u": another file stands there"_s});
    return {};
}

std::expected<bool, StoreError> StoreFiles::walInPlace() const
{
    if (!m_wal)
        return true;
    const auto now = identityOf(walOf(m_path));
    if (!now && now.error().code != FileError::Code::NotFound)
        return std::unexpected(unreachable(now.error()));
    return now && *now == *m_wal;
}

std::expected<void, StoreError> StoreFiles::setWalAside() const
{
    const QString wal = walOf(m_path);
    for (int number = 1; number < asideNames; ++number) {
        const QString aside = u"%1.aside-%2"_s.arg(wal).arg(number);
        if (stands(aside))
            continue;
        const auto renamed = renameToFreeName(wal, aside);
        if (!renamed && stands(aside))
            continue;
        if (!renamed && renamed.error().code == FileError::Code::NotFound)
            return {};
        if (!renamed)
            return std::unexpected(StoreError{StoreError::Code::Other, renamed.error().text()});
        qWarning("%ls was set aside as %ls", qUtf16Printable(named(wal)),
                 qUtf16Printable(named(aside)));
        return {};
    }
    return std::unexpected(
        StoreError{StoreError::Code::Other, named(wal) + u": no name is free for it"_s});
}

std::expected<void, FileError> renameToFreeName(const QString& from, const QString& to)
{
    const QByteArray source = QFile::encodeName(from);
    const QByteArray target = QFile::encodeName(to);
    // A second name first: it is refused where anything stands, whatever happens at that moment.
    if (::link(source.constData(), target.constData()) == 0) {
        ::unlink(source.constData());
        return {};
    }
    int error = errno;
    // File systems without second names.
    if (error == EPERM || error == EOPNOTSUPP || error == EMLINK || error == ENOSYS) {
        if (!stands(to) && ::rename(source.constData(), target.constData()) == 0)
            return {};
        error = stands(to) ? EEXIST : errno;
    }
    return failed(to, error);
}

std::expected<void, FileError> writeNewFile(const QString& path, const QByteArray& bytes)
{
    const QString unfinished = path + ".new"_L1;
    const auto refused = [&](int error) {
        QFile::remove(unfinished);
        return failed(path, error);
    };
    QFile::remove(unfinished);
    QFile file(unfinished);
    errno = 0;
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered) ||
        file.write(bytes) != bytes.size())
        return refused(errno);
    file.close();
    if (!sync(unfinished, O_RDWR))
        return refused(errno);
    if (const auto renamed = renameToFreeName(unfinished, path); !renamed) {
        QFile::remove(unfinished);
        return renamed;
    }
    return syncFile(path);
}

std::expected<void, FileError> syncFile(const QString& path)
{
    if (!sync(path, O_RDWR) || !sync(QFileInfo(path).absolutePath(), O_RDONLY | O_DIRECTORY))
        return failed(path, errno);
    return {};
}

} // namespace orvane
