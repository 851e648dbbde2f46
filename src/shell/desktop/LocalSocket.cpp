// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/desktop/LocalSocket.h"

#include <QFile>

#include <cerrno>
#include <cstring>
#include <optional>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <sys/un.h>
#include <unistd.h>

namespace orvane {

namespace {

constexpr qsizetype readAtOnce = 65'536;
constexpr int waitingPrograms = 30;

std::optional<sockaddr_un> addressOf(const QString& path)
{
    const QByteArray name = QFile::encodeName(path);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (size_t(name.size()) >= sizeof(address.sun_path)) {
        errno = ENAMETOOLONG;
        return std::nullopt;
    }
    std::memcpy(address.sun_path, name.constData(), size_t(name.size()));
    return address;
}

template <typename Call>
ssize_t uninterrupted(Call&& call)
{
    ssize_t result = 0;
    do {
        result = call();
    } while (result < 0 && errno == EINTR);
    return result;
}

} // namespace

LocalSocket::~LocalSocket()
{
    if (isOpen())
        ::close(m_descriptor);
}

LocalSocket LocalSocket::listeningAt(const QString& path)
{
    const auto address = addressOf(path);
    if (!address)
        return {};
    LocalSocket socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    if (!socket.isOpen())
        return {};
    // The mode before the name: what is made in the file system has it from the start.
    ::fchmod(socket.m_descriptor, S_IRUSR | S_IWUSR);
    ::unlink(address->sun_path);
    const auto* name = reinterpret_cast<const sockaddr*>(&*address);
    if (::bind(socket.m_descriptor, name, sizeof(*address)) != 0 ||
        ::listen(socket.m_descriptor, waitingPrograms) != 0)
        return {};
    return socket;
}

LocalSocket LocalSocket::connectedTo(const QString& path, std::chrono::milliseconds patience)
{
    const auto address = addressOf(path);
    if (!address)
        return {};
    LocalSocket socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(patience);
    const timeval wait{seconds.count(), std::chrono::microseconds(patience - seconds).count()};
    for (const int direction : {SO_SNDTIMEO, SO_RCVTIMEO})
        ::setsockopt(socket.m_descriptor, SOL_SOCKET, direction, &wait, sizeof(wait));
    const auto* name = reinterpret_cast<const sockaddr*>(&*address);
    if (!socket.isOpen() || ::connect(socket.m_descriptor, name, sizeof(*address)) != 0)
        return {};
    return socket;
}

LocalSocket LocalSocket::accept() const
{
    return LocalSocket(int(uninterrupted(
        [&] { return ::accept4(m_descriptor, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK); })));
}

bool LocalSocket::write(QByteArrayView bytes) const
{
    while (!bytes.isEmpty()) {
        const ssize_t sent = uninterrupted(
            [&] { return ::send(m_descriptor, bytes.data(), size_t(bytes.size()), MSG_NOSIGNAL); });
        if (sent <= 0)
            return false;
        bytes = bytes.sliced(sent);
    }
    return true;
}

LocalSocket::Read LocalSocket::read(QByteArray& bytes) const
{
    const qsizetype before = bytes.size();
    bytes.resize(before + readAtOnce);
    const ssize_t count = uninterrupted(
        [&] { return ::recv(m_descriptor, bytes.data() + before, size_t(readAtOnce), 0); });
    const bool nothing = count < 0 && (errno == EAGAIN || errno == EWOULDBLOCK);
    bytes.truncate(before + std::max<ssize_t>(count, 0));
    return count > 0 ? Read::Some : nothing ? Read::Nothing : Read::Ended;
}

} // namespace orvane
