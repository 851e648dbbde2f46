// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <cstddef>

namespace orvane::fuzz {

/// While it lives, aborts the program when the memory allocated since its making exceeds 64 times
/// the input's size plus 16 MB.
class MemoryLimit {
public:
    explicit MemoryLimit(std::size_t inputSize);
    ~MemoryLimit();
    MemoryLimit(const MemoryLimit&) = delete;
    MemoryLimit& operator=(const MemoryLimit&) = delete;
};

/// The most live memory seen by any limit so far, as a share of what it allowed.
[[nodiscard]] double highestShare();

} // namespace orvane::fuzz
