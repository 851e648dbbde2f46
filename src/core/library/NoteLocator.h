// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/records/ProjectRecord.h"

#include <QList>
#include <QUuid>

#include <optional>

namespace orvane {

/// The folder of the first of `projects` whose store at rest holds the note. Reads without a lock
/// and without a trace; a store that is open anywhere, was left by a crash, or can't be read is
/// passed over.
[[nodiscard]] std::optional<QString> projectHoldingNote(const QList<OrvaneProjectRecord>& projects,
                                                        const QUuid& noteID);

} // namespace orvane
