// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/desktop/SingleInstance.h"

#include <QElapsedTimer>
#include <QLocalServer>
#include <QLocalSocket>
#include <QThread>
#include <QtEndian>

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

} // namespace

SingleInstance::SingleInstance(const QString& folder, QObject* parent)
    : QObject(parent)
    , m_socketPath(folder + QStringLiteral("/orvaneworkspace.socket"))
    , m_lock(folder + QStringLiteral("/orvaneworkspace.lock"))
{
    m_lock.setStaleLockTime(0); // held as long as the program runs; a dead owner's lock is broken
}

SingleInstance::~SingleInstance() = default;

SingleInstance::Role SingleInstance::claim(const OpenRequest& request,
                                           std::chrono::milliseconds patience)
{
    QElapsedTimer timer;
    timer.start();
    do {
        // Both again and again: the first may be about to end, or not listen yet.
        if (m_lock.tryLock(0))
            return listen() ? Role::First : Role::NotAnswering;
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

bool SingleInstance::listen()
{
    m_server = new QLocalServer(this);
    m_server->setSocketOptions(QLocalServer::UserAccessOption);
    connect(m_server, &QLocalServer::newConnection, this, &SingleInstance::takeConnection);
    QLocalServer::removeServer(m_socketPath);
    if (!m_server->listen(m_socketPath))
        qWarning("No further start can be told what to open: %ls",
                 qUtf16Printable(m_server->errorString()));
    return true;
}

bool SingleInstance::handOver(const OpenRequest& request, std::chrono::milliseconds patience)
{
    QLocalSocket socket;
    socket.connectToServer(m_socketPath);
    const int wait = int(patience.count());
    if (!socket.waitForConnected(wait))
        return false;
    socket.write(framed(encoded(request)));
    char answer = 0;
    return socket.waitForReadyRead(wait) && socket.getChar(&answer) && answer == taken;
}

void SingleInstance::takeConnection()
{
    while (QLocalSocket* socket = m_server->nextPendingConnection()) {
        socket->setReadBufferSize(longestOpenRequest + lengthSize);
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QLocalSocket::readyRead, this, [this, socket] { read(*socket); });
        read(*socket);
    }
}

void SingleInstance::read(QLocalSocket& socket)
{
    if (socket.bytesAvailable() < lengthSize)
        return;
    const QByteArray head = socket.peek(lengthSize);
    const auto length = qsizetype(qFromBigEndian<quint32>(head.constData()));
    if (length > longestOpenRequest) {
        socket.abort();
        return;
    }
    if (socket.bytesAvailable() < lengthSize + length)
        return;
    const auto request = decodedOpenRequest(socket.read(lengthSize + length).sliced(lengthSize));
    if (!request) {
        socket.abort();
        return;
    }
    socket.putChar(taken);
    socket.flush();
    socket.disconnectFromServer();
    emit requested(*request);
}

} // namespace orvane
