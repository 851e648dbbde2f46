// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

namespace orvane {

/// Tells assistive programs what the parts of the windows are: windows, sheets that are answered
/// before anything else, bars of tools and the strip at the foot. Once per program. Main thread.
void installShellAccessibility();

} // namespace orvane
