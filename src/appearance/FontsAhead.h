// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <future>

namespace orvane {

// Finding the machine's fonts takes about as long as opening a project and needs nothing of the
// program, so it goes on beside the start on a second thread. The first step may begin before
// there is an application object; what the second one gives must go before that object does. Each
// waits for its thread when it goes.

/// Reads the system's font settings.
[[nodiscard]] std::future<void> readFontSettings();

/// Finds the fonts, after the settings.
[[nodiscard]] std::future<void> findFonts(std::future<void> settings);

} // namespace orvane
