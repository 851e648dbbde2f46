// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/store/ProjectLock.h"

#include "platform/AtomicFile.h"

#include <QCoreApplication>
#include <QFile>
#include <QSysInfo>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

// A holder that gives the lock back removes the file; whoever opened it just before then holds a
// file without a name, and tries again.
constexpr int attempts = 10;

class Descriptor {
public:
    explicit Descriptor(int number)
        : m_number(number)
    {}
    Descriptor(Descriptor&& other) noexcept
        : m_number(std::exchange(other.m_number, -1))
    {}
    Descriptor& operator=(Descriptor&&) = delete;
    ~Descriptor()
    {
        if (m_number >= 0)
            ::close(m_number);
    }
    [[nodiscard]] int number() const { return m_number; }

private:
    int m_number;
};

QByteArray machineId()
{
    const QByteArray id = QSysInfo::machineUniqueId();
    return id.isEmpty() ? QSysInfo::machineHostName().toUtf8() : id;
}

QByteArray contents(Timestamp now)
{
    const QStringList lines{QString::number(QCoreApplication::applicationPid()),
                            QCoreApplication::applicationName(),
                            QSysInfo::machineHostName(),
                            QString::fromUtf8(machineId()),
                            toIso8601(now),
                            QString::fromUtf8(QSysInfo::bootUniqueId())};
    return lines.join(u'\n').toUtf8() + '\n';
}

struct Contents {
    LockHolder holder;
    QByteArray machine;
    QByteArray boot;
};

// A system under the same kernel (a container) counts as this machine: the locks are the same.
bool isFromElsewhere(const Contents& contents)
{
    const QByteArray boot = QSysInfo::bootUniqueId();
    return contents.machine != machineId() && (boot.isEmpty() || contents.boot != boot);
}

std::optional<Contents> readContents(int descriptor)
{
    QByteArray bytes(4096, '\0');
    const ssize_t size = ::pread(descriptor, bytes.data(), size_t(bytes.size()), 0);
    if (size <= 0)
        return std::nullopt;
    bytes.truncate(size);
    const QList<QByteArray> lines = bytes.split('\n');
    bool isNumber = false;
    const qint64 process = lines.first().toLongLong(&isNumber);
    if (!isNumber || lines.size() < 5)
        return std::nullopt;
    return Contents{{process, QString::fromUtf8(lines.at(1)), QString::fromUtf8(lines.at(2)),
                     fromIso8601(QString::fromUtf8(lines.at(4))).value_or(Timestamp())},
                    lines.at(3),
                    lines.value(5)};
}

ProjectLock::Problem problemOf(int error)
{
    switch (error) {
    case EACCES:
    case EPERM:
    case EROFS:
        return ProjectLock::Problem::NoAccess;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return ProjectLock::Problem::NoSpace;
    default:
        return ProjectLock::Problem::Other;
    }
}

std::unexpected<ProjectLock::Failure> failed(const QString& path, int error)
{
    return std::unexpected(
        ProjectLock::Failure{problemOf(error), path, qt_error_string(error), std::nullopt});
}

bool isStillAt(int descriptor, const QByteArray& path)
{
    struct stat held = {};
    struct stat named = {};
    return ::fstat(descriptor, &held) == 0 && ::stat(path.constData(), &named) == 0 &&
           held.st_ino == named.st_ino && held.st_dev == named.st_dev;
}

// Whether any process has the file of this number locked, by the system's list of locks, whose
// lines end in "DEVICE:DEVICE:NUMBER START END". Nothing where there is no such list.
std::optional<bool> isLocked(quint64 inode)
{
    QFile list(u"/proc/locks"_s);
    if (!list.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QByteArray wanted = ':' + QByteArray::number(inode) + ' ';
    const QList<QByteArray> lines = list.readAll().split('\n');
    if (lines.size() < 2)
        return std::nullopt; // a sandbox that hides them
    return std::ranges::any_of(lines, [&](const QByteArray& line) {
        return line.contains(" FLOCK ") && line.contains(wanted);
    });
}

// A file system without locks (some network shares) leaves only what the file says.
bool locksAreMissing(int error)
{
    return error == ENOLCK || error == EOPNOTSUPP || error == EINVAL;
}

} // namespace

struct ProjectLock::Held {
    Descriptor file;
    QByteArray path;
    bool wasStale = false;

    ~Held()
    {
        if (isStillAt(file.number(), path))
            ::unlink(path.constData());
    }
};

ProjectLock::ProjectLock(std::unique_ptr<Held> held)
    : m_held(std::move(held))
{}

ProjectLock::ProjectLock(ProjectLock&&) noexcept = default;
ProjectLock& ProjectLock::operator=(ProjectLock&&) noexcept = default;
ProjectLock::~ProjectLock() = default;

bool ProjectLock::wasStale() const
{
    return m_held->wasStale;
}

QString ProjectLock::pathIn(const QString& folder)
{
    return folder + "/OrvaneWorkspace.lock"_L1;
}

std::optional<LockHolder> ProjectLock::holder(const QString& folder)
{
    const QByteArray path = QFile::encodeName(pathIn(folder));
    const Descriptor file(::open(path.constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    struct stat status = {};
    if (file.number() < 0 || ::fstat(file.number(), &status) != 0 || !S_ISREG(status.st_mode))
        return std::nullopt;
    const auto written = readContents(file.number());
    if (!written)
        return std::nullopt;
    if (isFromElsewhere(*written))
        return written->holder;
    if (written->holder.processId == QCoreApplication::applicationPid() ||
        !isLocked(quint64(status.st_ino))
             .value_or(::kill(pid_t(written->holder.processId), 0) == 0))
        return std::nullopt;
    return written->holder;
}

std::expected<ProjectLock, ProjectLock::Failure> ProjectLock::take(const QString& folder,
                                                                   Timestamp now)
{
    const QString name = pathIn(folder);
    const QByteArray path = QFile::encodeName(name);
    for (int attempt = 0; attempt < attempts; ++attempt) {
        if (const auto obstacle = obstacleAt(name))
            return std::unexpected(Failure{Problem::Other, name, obstacle->detail, std::nullopt});
        Descriptor file(
            ::open(path.constData(), O_RDWR | O_CREAT | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, 0644));
        if (file.number() < 0)
            return failed(name, errno);
        const bool locked = ::flock(file.number(), LOCK_EX | LOCK_NB) == 0;
        const int lockError = errno;
        const auto before = readContents(file.number());
        const bool elsewhere = before && isFromElsewhere(*before);
        if ((!locked && lockError == EWOULDBLOCK) || elsewhere)
            return std::unexpected(Failure{Problem::Held, name, u"the project is open elsewhere"_s,
                                           before ? std::optional(before->holder) : std::nullopt});
        if (!locked && !locksAreMissing(lockError))
            return failed(name, lockError);
        if (!locked && before && ::kill(pid_t(before->holder.processId), 0) == 0)
            return std::unexpected(Failure{Problem::Held, name, {}, before->holder});
        if (!isStillAt(file.number(), path))
            continue;

        auto held = std::make_unique<Held>(std::move(file), path, before.has_value());
        const QByteArray bytes = contents(now);
        if (::ftruncate(held->file.number(), 0) != 0 ||
            ::pwrite(held->file.number(), bytes.constData(), size_t(bytes.size()), 0) !=
                bytes.size())
            return failed(name, errno);
        return ProjectLock(std::move(held));
    }
    return std::unexpected(
        Failure{Problem::Held, name, u"the project is open elsewhere"_s, std::nullopt});
}

} // namespace orvane
