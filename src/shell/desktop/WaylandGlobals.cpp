// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/desktop/WaylandGlobals.h"

#include "shell/desktop/LocalSocket.h"

#include <cstring>

namespace orvane {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto patience = 200ms;
constexpr quint32 display = 1;
constexpr quint32 registry = 2;
constexpr quint32 callback = 3;
constexpr quint32 getRegistry = 1;
constexpr quint32 sync = 0;
constexpr qsizetype headSize = 8;
constexpr qsizetype longestAnswer = 1 << 20;

quint32 wordAt(const QByteArray& bytes, qsizetype at)
{
    quint32 word = 0;
    std::memcpy(&word, bytes.constData() + at, sizeof word);
    return word;
}

/// A request to the display whose one argument is a new object.
QByteArray request(quint32 opcode, quint32 newObject)
{
    const quint32 words[] = {display, (12U << 16) | opcode, newObject};
    return {reinterpret_cast<const char*>(words), sizeof words};
}

} // namespace

std::optional<QList<QByteArray>> globalsIn(const QByteArray& answer)
{
    QList<QByteArray> names;
    for (qsizetype at = 0; at + headSize <= answer.size();) {
        const quint32 object = wordAt(answer, at);
        const quint32 sizeAndOpcode = wordAt(answer, at + 4);
        const qsizetype size = sizeAndOpcode >> 16;
        if (size < headSize || at + size > answer.size())
            break;
        if (object == callback)
            return names;
        // A number, a text with its length and a zero behind it, a version.
        constexpr qsizetype textAt = headSize + 8;
        const bool isGlobal = object == registry && (sizeAndOpcode & 0xffff) == 0 && size > textAt;
        const qsizetype length = isGlobal ? wordAt(answer, at + textAt - 4) : 0;
        if (length > 0 && textAt + length <= size)
            names.append(answer.sliced(at + textAt, length - 1));
        at += size;
    }
    return std::nullopt;
}

std::optional<QList<QByteArray>> waylandGlobals(const QString& socketPath)
{
    const LocalSocket socket = LocalSocket::connectedTo(socketPath, patience);
    if (!socket.isOpen() || !socket.write(request(getRegistry, registry) + request(sync, callback)))
        return std::nullopt;
    QByteArray answer;
    while (answer.size() < longestAnswer && socket.read(answer) == LocalSocket::Read::Some) {
        if (auto names = globalsIn(answer))
            return names;
    }
    return std::nullopt;
}

QString waylandSocketPath()
{
    const QString name = qEnvironmentVariable("WAYLAND_DISPLAY");
    const QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (qEnvironmentVariableIsSet("WAYLAND_SOCKET") || (name.isEmpty() && folder.isEmpty()))
        return {};
    if (name.startsWith(u'/'))
        return name;
    return folder + u'/' + (name.isEmpty() ? u"wayland-0"_s : name);
}

} // namespace orvane
