// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/store/StoreCommit.h"

namespace orvane {

/// Writes what the connection's store holds, with the pending changes, to a new store at `path`,
/// where nothing is: whole and on the disk when it has that name, and one file. The connection's
/// own file may have lost its name. Pending records whose bytes can't be read keep the state that
/// is stored.
[[nodiscard]] std::expected<void, StoreError> writeStoreCopy(StoreConnection& connection,
                                                             const PendingChanges& pending,
                                                             const QString& path,
                                                             const StoreSchema& schema);

/// What the store at `path` holds, its write-ahead log included, with all bytes that can be read in
/// memory. It is read from a copy: nothing beside it is made, changed or locked. Not for a store
/// that this process has open, whose locks would be lost.
[[nodiscard]] std::expected<NotebookSnapshot, StoreOpenError>
readStoreCopy(const QString& path, const StoreSchema& schema);

} // namespace orvane
