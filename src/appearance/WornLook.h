// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

namespace orvane {

class Look;

/// Makes the application wear the look, now and whenever it changes: style, palette and fonts. The
/// look must outlive it.
void wear(const Look& look);

} // namespace orvane
