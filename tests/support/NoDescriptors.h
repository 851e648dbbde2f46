// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace orvane {

/// As long as it lives this process can open no further file, as on a machine at its limits.
class NoDescriptors {
public:
    NoDescriptors()
    {
        getrlimit(RLIMIT_NOFILE, &m_before);
        const int next = ::open("/dev/null", O_RDONLY);
        ::close(next);
        rlimit none = m_before;
        none.rlim_cur = rlim_t(next);
        setrlimit(RLIMIT_NOFILE, &none);
    }
    ~NoDescriptors() { setrlimit(RLIMIT_NOFILE, &m_before); }
    NoDescriptors(const NoDescriptors&) = delete;
    NoDescriptors& operator=(const NoDescriptors&) = delete;

private:
    rlimit m_before{};
};

} // namespace orvane
