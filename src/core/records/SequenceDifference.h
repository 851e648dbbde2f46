// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QtGlobal>

#include <span>
#include <vector>

namespace orvane {

/// Which elements of two sequences have no partner in the other.
struct SequenceDifference {
    std::vector<char> removed; ///< one an element of the first sequence, 1 where it is gone
    std::vector<char> added;   ///< one an element of the second, 1 where it is new
};

/// The smallest difference of two sequences by Myers' linear-space algorithm. Each step of the
/// search takes one from `budget`; when none is left, what is not yet matched counts as different.
[[nodiscard]] SequenceDifference sequenceDifference(std::span<const int> before,
                                                    std::span<const int> after, qint64& budget);

} // namespace orvane
