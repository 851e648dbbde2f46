// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/desktop/SingleInstance.h"

#include <QElapsedTimer>
#include <QFile>
#include <QSocketNotifier>
#include <QThread>
#include <QtEndian>

#include <cerrno>
#include <functional>

namespace orvane {

using namespace std::chrono_literals;

namespace {

// A message is its length in four bytes, most significant first, then the request. The answer is
// one byte.
constexpr qsizetype lengthSize = 4;
constexpr char taken = 1;
constexpr auto retryAfter = 50ms;

QByteArray framed(const QByteArray& message)
{
    QByteArray length(lengthSize, Qt::Uninitialized);
    qToBigEndian(quint32(message.size()), length.data());
    return length + message;
}

/// What a further start sends, as it comes in. Goes when it is through, or is no message of ours.
class IncomingRequest final : public QObject {
public:
    using Taken = std::function<void(const OpenRequest&)>;

    IncomingRequest(LocalSocket socket, Taken tell, QObject* parent)
        : QObject(parent)
        , m_socket(std::move(socket))
        , m_tell(std::move(tell))
        , m_notifier(m_socket.descriptor(), QSocketNotifier::Read)
    {
        connect(&m_notifier, &QSocketNotifier::activated, this, &IncomingRequest::read);
    }

private:
    void read()
    {
        const LocalSocket::Read got = m_socket.read(m_bytes);
        if (got == LocalSocket::Read::Nothing)
            return;
        const bool knowsLength = m_bytes.size() >= lengthSize;
        const qsizetype length =
            knowsLength ? qsizetype(qFromBigEndian<quint32>(m_bytes.constData())) : 0;
        const bool isWhole = knowsLength && m_bytes.size() >= lengthSize + length;
        if (got == LocalSocket::Read::Some && !isWhole && length <= longestOpenRequest)
            return;
        m_notifier.setEnabled(false);
        deleteLater();
        const auto request =
            isWhole ? decodedOpenRequest(m_bytes.sliced(lengthSize, length)) : std::nullopt;
        if (!request)
            return;
        m_socket.write(QByteArrayView(&taken, 1));
        m_tell(*request);
    }

    LocalSocket m_socket;
    Taken m_tell;
    QSocketNotifier m_notifier;
    QByteArray m_bytes;
};

} // namespace

SingleInstance::SingleInstance(const QString& folder, QObject* parent)
    : QObject(parent)
    , m_socketPath(folder + QStringLiteral("/orvaneworkspace.socket"))
    , m_lock(folder + QStringLiteral("/orvaneworkspace.lock"))
{
    m_lock.setStaleLockTime(0); // held as long as the program runs; a dead owner's lock is broken
}

SingleInstance::~SingleInstance()
{
    if (m_listening.isOpen())
        QFile::remove(m_socketPath);
}

SingleInstance::Role SingleInstance::claim(const OpenRequest& request,
                                           std::chrono::milliseconds patience)
{
    QElapsedTimer timer;
    timer.start();
    do {
        // Both again and again: the first may be about to end, or not listen yet.
        if (m_lock.tryLock(0)) {
            listen();
            return Role::First;
        }
        // A folder that takes no lock must not keep anybody from writing.
        if (m_lock.error() != QLockFile::LockFailedError) {
            qWarning("Further starts can't be noticed: no lock can be held on %ls",
                     qUtf16Printable(m_lock.fileName()));
            return Role::First;
        }
        const auto left = patience - std::chrono::milliseconds(timer.elapsed());
        if (handOver(request, std::max(left, retryAfter)))
            return Role::HandedOver;
        QThread::msleep(retryAfter.count());
    } while (std::chrono::milliseconds(timer.elapsed()) < patience);
    return Role::NotAnswering;
}

void SingleInstance::listen()
{
    m_listening = LocalSocket::listeningAt(m_socketPath);
    if (!m_listening.isOpen()) {
        qWarning("No further start can be told what to open: %ls",
                 qUtf16Printable(qt_error_string(errno)));
        return;
    }
    auto* incoming = new QSocketNotifier(m_listening.descriptor(), QSocketNotifier::Read, this);
    connect(incoming, &QSocketNotifier::activated, this, &SingleInstance::takeConnections);
}

bool SingleInstance::handOver(const OpenRequest& request, std::chrono::milliseconds patience)
{
    const LocalSocket socket = LocalSocket::connectedTo(m_socketPath, patience);
    QByteArray answer;
    return socket.isOpen() && socket.write(framed(encoded(request))) &&
           socket.read(answer) == LocalSocket::Read::Some && answer.front() == taken;
}

void SingleInstance::takeConnections()
{
    for (LocalSocket socket = m_listening.accept(); socket.isOpen(); socket = m_listening.accept())
        new IncomingRequest(
            std::move(socket), [this](const OpenRequest& request) { emit requested(request); },
            this);
}

} // namespace orvane
