// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QDir>
#include <QFile>

#include <cstring>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace orvane {

/// What can stand in the place of a file and is none.
struct OddFile {
    const char* name;
    bool (*make)(const QByteArray& path);
};

inline const OddFile oddFiles[] = {
    {"pipe",
     [](const QByteArray& path) {
         return ::mkfifo(path.constData(), 0600) == 0;
     }},
    {"link to a pipe",
     [](const QByteArray& path) {
         const QByteArray pipe = path + ".pipe";
         return ::mkfifo(pipe.constData(), 0600) == 0 &&
                ::symlink(pipe.constData(), path.constData()) == 0;
     }},
    {"link to an endless device",
     [](const QByteArray& path) {
         return ::symlink("/dev/zero", path.constData()) == 0;
     }},
    {"link to a device that waits",
     [](const QByteArray& path) {
         return ::symlink("/dev/ptmx", path.constData()) == 0;
     }},
    {"circle of links",
     [](const QByteArray& path) {
         return ::symlink(path.constData(), path.constData()) == 0;
     }},
    {"folder",
     [](const QByteArray& path) {
         return ::mkdir(path.constData(), 0700) == 0;
     }},
    {"socket",
     [](const QByteArray& path) {
         // By a short name, since a socket's is limited.
         const QByteArray folder = path.first(path.lastIndexOf('/'));
         const QByteArray before = QFile::encodeName(QDir::currentPath());
         sockaddr_un address{};
         address.sun_family = AF_UNIX;
         const QByteArray name = path.sliced(folder.size() + 1);
         std::memcpy(address.sun_path, name.constData(), size_t(name.size()));
         const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
         const bool made =
             ::chdir(folder.constData()) == 0 &&
             ::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0;
         ::close(socket);
         return ::chdir(before.constData()) == 0 && made;
     }},
};

} // namespace orvane
