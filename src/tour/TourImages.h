// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "tour/TourFormatting.h"

namespace orvane {

/// The stops of the tour at an image in a note: selected with its popover and its caption, and in
/// front of text. The note is as before afterwards.
void tourImages(const TourStop& stop);

} // namespace orvane
