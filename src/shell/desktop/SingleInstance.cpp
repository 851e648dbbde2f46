// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/desktop/SingleInstance.h"

#include "platform/AtomicFile.h"

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
constexpr qint64 largestLock = 4096;

QByteArray framed(const QByteArray& message)
{
    QByteArray length(lengthSize, Qt::Uninitialized);
    qToBigEndian(quint32(message.size()), length.data());
    return length + message;
}

/// What a further start sends, as it comes in. Over when it is whole, is no message of ours, or has
/// not come within the time.
class IncomingRequest final : public QObject {
public:
    using Over = std::function<void(IncomingRequest*, const std::optional<OpenRequest>&)>;

    IncomingRequest(LocalSocket socket, std::chrono::milliseconds patience, Over over,
                    QObject* parent)
        : QObject(parent)
        , m_socket(std::move(socket))
        , m_over(std::move(over))
        , m_notifier(m_socket.descriptor(), QSocketNotifier::Read)
    {
        connect(&m_notifier, &QSocketNotifier::activated, this, &IncomingRequest::read);
        m_patience.setSingleShot(true);
        // What has come while this program was busy still counts.
        m_patience.callOnTimeout(this, [this] {
            while (!m_isOver && read() == LocalSocket::Read::Some) {
            }
            finish(std::nullopt);
        });
        m_patience.start(patience);
    }

private:
    LocalSocket::Read read()
    {
        const LocalSocket::Read got = m_socket.read(m_bytes);
        if (got == LocalSocket::Read::Nothing)
            return got;
        const bool knowsLength = m_bytes.size() >= lengthSize;
        const qsizetype length =
            knowsLength ? qsizetype(qFromBigEndian<quint32>(m_bytes.constData())) : 0;
        const bool isWhole = knowsLength && m_bytes.size() >= lengthSize + length;
        if (got == LocalSocket::Read::Ended || isWhole || length > longestOpenRequest)
            finish(isWhole ? decodedOpenRequest(m_bytes.sliced(lengthSize, length)) : std::nullopt);
        return got;
    }

    void finish(const std::optional<OpenRequest>& request)
    {
        if (std::exchange(m_isOver, true))
            return;
        m_patience.stop();
        m_notifier.setEnabled(false);
        if (request)
            m_socket.write(QByteArrayView(&taken, 1));
        m_socket = LocalSocket();
        deleteLater();
        m_over(this, request);
    }

    LocalSocket m_socket;
    Over m_over;
    QSocketNotifier m_notifier;
    QTimer m_patience;
    QByteArray m_bytes;
    bool m_isOver = false;
};

} // namespace

SingleInstance::SingleInstance(const QString& folder, const ConnectionLimits& limits,
                               QObject* parent)
    : QObject(parent)
    , m_socketPath(folder + QStringLiteral("/orvaneworkspace.socket"))
    , m_lock(folder + QStringLiteral("/orvaneworkspace.lock"))
    , m_limits(limits)
{
    m_pause.setSingleShot(true);
    m_pause.callOnTimeout(this, [this] { m_incoming->setEnabled(true); });
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
    if (const auto obstacle = obstacleAt(m_lock.fileName(), largestLock)) {
        // The lock would be opened, and a pipe waited for.
        qWarning("Further starts can't be noticed: %ls", qUtf16Printable(obstacle->text()));
        return Role::First;
    }
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
    m_incoming = new QSocketNotifier(m_listening.descriptor(), QSocketNotifier::Read, this);
    connect(m_incoming, &QSocketNotifier::activated, this, &SingleInstance::takeConnections);
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
    // Not all of a flood at once: the program goes on in between.
    for (int i = 0; i < m_limits.held; ++i) {
        LocalSocket socket = m_listening.accept();
        const int error = errno;
        if (socket.isOpen()) {
            hold(std::move(socket));
            continue;
        }
        if (error == ECONNABORTED)
            continue;
        if (error != EAGAIN && error != EWOULDBLOCK) {
            // The one that waits would call again at once, and again.
            m_incoming->setEnabled(false);
            m_pause.start(m_limits.pause);
        }
        return;
    }
}

void SingleInstance::hold(LocalSocket socket)
{
    if (m_held.size() >= m_limits.held)
        delete m_held.takeFirst();
    m_held.append(new IncomingRequest(
        std::move(socket), m_limits.patience,
        [this](IncomingRequest* over, const std::optional<OpenRequest>& request) {
            m_held.removeOne(over);
            if (request)
                emit requested(*request);
        },
        this));
}

} // namespace orvane
