// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QString>

#include <functional>

namespace orvane {

/// The text of the key of the command that a notification's name stands for, as this desktop writes
/// it; empty where it has none.
using KeyTextOf = std::function<QString(const char* notificationName)>;

} // namespace orvane
