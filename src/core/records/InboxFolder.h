// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/records/NotebookSnapshot.h"

namespace orvane {

/// Gives notes that have no folder at all to lie in a new folder "Inbox", made at `now`. A
/// snapshot with folders, or without notes, stays as it is.
void moveNotesToInboxIfNoFolder(NotebookSnapshot& snapshot, Timestamp now);

} // namespace orvane
