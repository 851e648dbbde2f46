// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "support/MemoryLimit.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <sanitizer/allocator_interface.h>

namespace orvane::fuzz {
namespace {

std::atomic<bool> isCounting = false;
std::atomic<long long> live = 0;
std::atomic<long long> highest = 0;
long long allowed = 0;
double highestShareSeen = 0;

void allocated(const volatile void* block, std::size_t)
{
    if (!isCounting)
        return;
    live += static_cast<long long>(__sanitizer_get_allocated_size(block));
    if (live > highest)
        highest = live.load();
    if (live > allowed) {
        isCounting = false;
        std::fprintf(stderr, "The input's memory limit of %lld bytes is exceeded: %lld\n", allowed,
                     live.load());
        std::abort();
    }
}

void freed(const volatile void* block)
{
    if (isCounting && block)
        live -= static_cast<long long>(__sanitizer_get_allocated_size(block));
}

} // namespace

MemoryLimit::MemoryLimit(std::size_t inputSize)
{
    static const int hooks = __sanitizer_install_malloc_and_free_hooks(&allocated, &freed);
    (void)hooks;
    allowed = 64 * static_cast<long long>(inputSize) + 16'000'000;
    live = 0;
    highest = 0;
    isCounting = true;
}

MemoryLimit::~MemoryLimit()
{
    isCounting = false;
    const double share = double(highest) / double(allowed);
    if (share > highestShareSeen)
        highestShareSeen = share;
}

double highestShare()
{
    return highestShareSeen;
}

} // namespace orvane::fuzz
