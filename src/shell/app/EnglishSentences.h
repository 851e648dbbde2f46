// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

namespace orvane {

/// Gives the application the sentences that are another one for one thing than for several ("1 note
/// leaves the project"): the sources have the plural. Once per application. Main thread.
void installEnglishSentences();

} // namespace orvane
