// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/store/StoreConnection.h"
#include "core/store/StoreReader.h"
#include "platform/AtomicFile.h"

#include <QString>

#include <expected>
#include <optional>

namespace orvane {

/// Whether a write-ahead log is beside the store with anything in it.
[[nodiscard]] bool hasWal(const QString& storePath);

/// What is wrong with the write-ahead log's file, in words, if something is: its header can't be
/// read, or behind the first frame that is damaged two commits or more are still to be seen. One
/// commit may be there after a loss of power, as the last one, which was never acknowledged.
///
/// SQLite itself passes over everything behind the first damaged frame, and the words in it are
/// gone. The write-ahead log's form is https://www.sqlite.org/fileformat2.html, section 4.
[[nodiscard]] std::optional<QString> walDamage(const QString& storePath);

/// The store's state as the file alone gives it, the write-ahead log left aside. Nothing when the
/// file alone can't be read, as after a crash in the middle of checkpointing the write-ahead log.
[[nodiscard]] std::optional<StoreState> stateWithoutWal(const QString& storePath);

/// Whether a store that gives `alone` without its write-ahead log and `together` with it has a
/// write-ahead log of its own and of its present state: every write-ahead log begins by raising the
/// generation by one, and is checkpointed after raising it by one again, so that a write-ahead log
/// of another store, or of an earlier or later state of this one, doesn't fit.
[[nodiscard]] bool walFits(const StoreState& alone, const StoreState& together);

/// Puts the write-ahead log that the connection has open back under its name, where nothing is any
/// more: the same bytes in a new file, on the disk when this succeeds. From then on a crash loses
/// nothing; the connection itself still writes the file without a name, so open another one.
[[nodiscard]] std::expected<void, FileError> restoreWal(StoreConnection& connection,
                                                        const QString& storePath);

} // namespace orvane
