// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "support/FaultyFiles.h"

#include <QDir>
#include <QFile>

#include <atomic>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <mutex>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace orvane {

namespace {

enum class Kind {
    Open,  ///< may run out of descriptors, and of room where it makes a file
    Write, ///< may run out of room
    Lock,  ///< where EACCES would say that somebody else has it
    Other,
};

struct State {
    std::mutex mutex;
    bool armed = false;
    std::string folder;
    FaultyFiles::Fault fault;
    int calls = 0;
    std::string failed;
};

State& state()
{
    static State all;
    return all;
}

std::atomic<bool> armed = false;

std::string linkTarget(const char* link)
{
    char target[4096];
    const long length = ::syscall(SYS_readlink, link, target, sizeof target);
    return length > 0 ? std::string(target, size_t(length)) : std::string();
}

std::string pathOf(int descriptor)
{
    char link[64];
    std::snprintf(link, sizeof link, "/proc/self/fd/%d", descriptor);
    return linkTarget(link);
}

// Where a name leads that may begin at a held folder or at an open one.
std::string pathOf(int folder, const char* name)
{
    constexpr std::string_view held = "/proc/self/fd/";
    const std::string_view path(name);
    if (path.starts_with(held)) {
        const size_t end = path.find('/', held.size());
        const std::string root = linkTarget(std::string(path.substr(0, end)).c_str());
        return end == path.npos ? root : root + std::string(path.substr(end));
    }
    if (path.starts_with('/') || folder == AT_FDCWD)
        return std::string(path);
    return pathOf(folder) + '/' + std::string(path);
}

// Whether this call fails; errno then says why.
bool fails(Kind kind, const char* call, const std::string& path)
{
    State& all = state();
    const std::lock_guard lock(all.mutex);
    if (!all.armed || !path.starts_with(all.folder))
        return false;
    ++all.calls;
    const int wanted = all.fault.call;
    if (wanted == 0 || all.calls < wanted || (all.calls > wanted && !all.fault.onward))
        return false;
    if (all.failed.empty())
        all.failed = std::string(call) + ' ' + path;
    errno = all.fault.error;
    if ((errno == EMFILE && kind != Kind::Open) ||
        (errno == ENOSPC && kind != Kind::Open && kind != Kind::Write) ||
        (errno == EACCES && kind == Kind::Lock))
        errno = EIO;
    return true;
}

bool fails(Kind kind, const char* call, int descriptor)
{
    return armed && fails(kind, call, pathOf(descriptor));
}

bool fails(Kind kind, const char* call, int folder, const char* name)
{
    return armed && name && fails(kind, call, pathOf(folder, name));
}

template <typename Function>
Function next(Function, const char* name)
{
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name));
}

} // namespace

FaultyFiles::FaultyFiles(const QString& folder, Fault fault)
{
    State& all = state();
    const std::lock_guard lock(all.mutex);
    all.folder = QFile::encodeName(QDir(folder).canonicalPath()).toStdString();
    all.fault = fault;
    all.calls = 0;
    all.failed.clear();
    all.armed = true;
    armed = true;
}

FaultyFiles::~FaultyFiles()
{
    State& all = state();
    const std::lock_guard lock(all.mutex);
    all.armed = false;
    armed = false;
}

int FaultyFiles::calls()
{
    const std::lock_guard lock(state().mutex);
    return state().calls;
}

QByteArray FaultyFiles::failed()
{
    const std::lock_guard lock(state().mutex);
    return QByteArray::fromStdString(state().failed);
}

} // namespace orvane

// The functions themselves, under names of their own in C++ so that the system's declarations,
// which differ in what they promise not to throw, stand beside them.
#define ORVANE_IN_FRONT(RESULT, NAME, PARAMETERS, ARGUMENTS, KIND, ...)                            \
    extern "C" RESULT orvane_##NAME PARAMETERS asm(#NAME);                                         \
    extern "C" RESULT orvane_##NAME PARAMETERS                                                     \
    {                                                                                              \
        static const auto real = orvane::next(orvane_##NAME, #NAME);                               \
        if (orvane::fails(orvane::Kind::KIND, #NAME, __VA_ARGS__))                                 \
            return -1;                                                                             \
        return real ARGUMENTS;                                                                     \
    }

using Path = const char*;

ORVANE_IN_FRONT(int, open, (Path path, int flags, mode_t mode), (path, flags, mode), Open, AT_FDCWD,
                path)
ORVANE_IN_FRONT(int, open64, (Path path, int flags, mode_t mode), (path, flags, mode), Open,
                AT_FDCWD, path)
ORVANE_IN_FRONT(int, openat, (int folder, Path path, int flags, mode_t mode),
                (folder, path, flags, mode), Open, folder, path)
ORVANE_IN_FRONT(int, openat64, (int folder, Path path, int flags, mode_t mode),
                (folder, path, flags, mode), Open, folder, path)
ORVANE_IN_FRONT(ssize_t, read, (int file, void* bytes, size_t size), (file, bytes, size), Other,
                file)
ORVANE_IN_FRONT(ssize_t, pread, (int file, void* bytes, size_t size, off_t at),
                (file, bytes, size, at), Other, file)
ORVANE_IN_FRONT(ssize_t, pread64, (int file, void* bytes, size_t size, off_t at),
                (file, bytes, size, at), Other, file)
ORVANE_IN_FRONT(ssize_t, write, (int file, const void* bytes, size_t size), (file, bytes, size),
                Write, file)
ORVANE_IN_FRONT(ssize_t, pwrite, (int file, const void* bytes, size_t size, off_t at),
                (file, bytes, size, at), Write, file)
ORVANE_IN_FRONT(ssize_t, pwrite64, (int file, const void* bytes, size_t size, off_t at),
                (file, bytes, size, at), Write, file)
ORVANE_IN_FRONT(int, fsync, (int file), (file), Write, file)
ORVANE_IN_FRONT(int, fdatasync, (int file), (file), Write, file)
ORVANE_IN_FRONT(int, ftruncate, (int file, off_t size), (file, size), Write, file)
ORVANE_IN_FRONT(int, ftruncate64, (int file, off_t size), (file, size), Write, file)
ORVANE_IN_FRONT(int, rename, (Path from, Path to), (from, to), Write, AT_FDCWD, to)
ORVANE_IN_FRONT(int, renameat, (int fromFolder, Path from, int toFolder, Path to),
                (fromFolder, from, toFolder, to), Write, toFolder, to)
ORVANE_IN_FRONT(int, renameat2, (int fromFolder, Path from, int toFolder, Path to, unsigned flags),
                (fromFolder, from, toFolder, to, flags), Write, toFolder, to)
ORVANE_IN_FRONT(int, link, (Path from, Path to), (from, to), Write, AT_FDCWD, to)
ORVANE_IN_FRONT(int, linkat, (int fromFolder, Path from, int toFolder, Path to, int flags),
                (fromFolder, from, toFolder, to, flags), Write, toFolder, to)
ORVANE_IN_FRONT(int, unlink, (Path path), (path), Other, AT_FDCWD, path)
ORVANE_IN_FRONT(int, unlinkat, (int folder, Path path, int flags), (folder, path, flags), Other,
                folder, path)
ORVANE_IN_FRONT(int, mkdir, (Path path, mode_t mode), (path, mode), Write, AT_FDCWD, path)
ORVANE_IN_FRONT(int, mkdirat, (int folder, Path path, mode_t mode), (folder, path, mode), Write,
                folder, path)
ORVANE_IN_FRONT(int, flock, (int file, int operation), (file, operation), Lock, file)
ORVANE_IN_FRONT(int, stat, (Path path, void* status), (path, status), Other, AT_FDCWD, path)
ORVANE_IN_FRONT(int, stat64, (Path path, void* status), (path, status), Other, AT_FDCWD, path)
ORVANE_IN_FRONT(int, fstatat, (int folder, Path path, void* status, int flags),
                (folder, path, status, flags), Other, folder, path)
ORVANE_IN_FRONT(int, fstatat64, (int folder, Path path, void* status, int flags),
                (folder, path, status, flags), Other, folder, path)
ORVANE_IN_FRONT(int, fstat64, (int file, void* status), (file, status), Other, file)
ORVANE_IN_FRONT(int, statx, (int folder, Path path, int flags, unsigned mask, void* status),
                (folder, path, flags, mask, status), Other, folder, path)

// Taking locks alone counts; the third argument is passed on as it came, whatever it is.
#define ORVANE_FCNTL_IN_FRONT(NAME)                                                                \
    extern "C" int orvane_##NAME(int file, int command, void* argument) asm(#NAME);                \
    extern "C" int orvane_##NAME(int file, int command, void* argument)                            \
    {                                                                                              \
        static const auto real = orvane::next(orvane_##NAME, #NAME);                               \
        const bool locks = (command == F_SETLK || command == F_SETLKW) &&                          \
                           static_cast<const struct ::flock*>(argument)->l_type != F_UNLCK;        \
        if (locks && orvane::fails(orvane::Kind::Lock, #NAME, file))                               \
            return -1;                                                                             \
        return real(file, command, argument);                                                      \
    }

ORVANE_FCNTL_IN_FRONT(fcntl)
ORVANE_FCNTL_IN_FRONT(fcntl64)
