// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/app/SessionEnd.h"

#include <QSocketNotifier>

#include <atomic>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace orvane {

namespace {

constexpr std::array watched{SIGTERM, SIGINT, SIGHUP};
std::atomic<int> wakePipe{-1};

void wake(int)
{
    const char byte = 1;
    if (const int pipe = wakePipe.load(); pipe >= 0) [[maybe_unused]]
        const auto written = ::write(pipe, &byte, 1);
}

} // namespace

SessionEnd::SessionEnd(QObject* parent)
    : QObject(parent)
{
    if (::pipe2(m_pipe.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    wakePipe = m_pipe[1];
    auto* notifier = new QSocketNotifier(m_pipe[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this] {
        std::array<char, 16> bytes{};
        while (::read(m_pipe[0], bytes.data(), bytes.size()) > 0) {
        }
        emit requested();
    });
    struct sigaction action = {};
    action.sa_handler = wake;
    action.sa_flags = SA_RESTART;
    for (const int each : watched)
        sigaction(each, &action, nullptr);
}

SessionEnd::~SessionEnd()
{
    for (const int each : watched)
        std::signal(each, SIG_DFL);
    wakePipe = -1;
    for (const int end : m_pipe) {
        if (end >= 0)
            ::close(end);
    }
}

} // namespace orvane
