// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <expected>

namespace orvane {

/// Why something that was to be changed is not as it was asked for.
enum class Refusal {
    NotAllowed,  ///< nothing was changed: the licence says no, or the project can only be read; who
                 ///< asked has been told
    NotThere,    ///< nothing was changed: there is no such note, folder, tag or place
    NotPossible, ///< nothing was changed: a folder into itself, a name without a letter and the
                 ///< like
    NotStored,   ///< it is changed in memory, and saving fails: see `AppState::saveFailure`
};

using Accepted = std::expected<void, Refusal>;

/// Whether it is as it was asked for in memory, stored or not.
[[nodiscard]] inline bool isTaken(const Accepted& accepted)
{
    return accepted || accepted.error() == Refusal::NotStored;
}

} // namespace orvane
