// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "shell/commands/Command.h"

namespace orvane {

/// The name of the icon theme's action drawing that stands for a command where it is listed; a
/// general one for commands that have none of their own.
[[nodiscard]] QString commandDrawing(const Command& command);

} // namespace orvane
