// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QByteArray>
#include <QString>

#include <chrono>
#include <utility>

namespace orvane {

/// One end of a stream between programs of one person, by way of a socket in the file system. The
/// system's own calls: the toolkit's networking loads nine libraries, which each start would wait
/// for. Closes when it goes.
class LocalSocket {
public:
    LocalSocket() = default;
    LocalSocket(LocalSocket&& other) noexcept
        : m_descriptor(std::exchange(other.m_descriptor, -1))
    {}
    LocalSocket& operator=(LocalSocket&& other) noexcept
    {
        std::swap(m_descriptor, other.m_descriptor);
        return *this;
    }
    ~LocalSocket();

    /// Listens at `path`, which nobody but this person can connect to, in the place of whatever
    /// file is there. Not open, with errno set, when that fails.
    [[nodiscard]] static LocalSocket listeningAt(const QString& path);
    /// Connected to who listens at `path`; it, `write` and `read` wait for `patience` at most each.
    [[nodiscard]] static LocalSocket connectedTo(const QString& path,
                                                 std::chrono::milliseconds patience);
    /// The next program that wants to connect to this one that listens; reading from it and writing
    /// to it don't wait. Not open where none waits (errno is EAGAIN then) or that one has gone
    /// (ECONNABORTED), and with any other errno where the system has no room for a connection now.
    [[nodiscard]] LocalSocket accept() const;

    [[nodiscard]] bool isOpen() const { return m_descriptor >= 0; }
    [[nodiscard]] int descriptor() const { return m_descriptor; }
    /// Whether all of it went out.
    bool write(QByteArrayView bytes) const;
    enum class Read { Some, Nothing, Ended };
    /// Appends what has come, up to 64 KiB of it. Ended means that no more will come.
    Read read(QByteArray& bytes) const;

private:
    explicit LocalSocket(int descriptor)
        : m_descriptor(descriptor)
    {}

    int m_descriptor = -1;
};

} // namespace orvane
