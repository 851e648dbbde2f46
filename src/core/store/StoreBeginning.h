// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/records/NotebookSnapshot.h"

#include <QUuid>

#include <functional>
#include <optional>

namespace SQLite {
class Database;
}

namespace orvane {

/// What is known of the first picture before the store is read.
struct BeginningWish {
    /// What lies at the root of the project lies in this container.
    QUuid root;
    /// Is to be selected, where it is there.
    std::optional<QUuid> note;
    /// Shown besides what stands open.
    std::optional<QUuid> folder;
    /// Gets the beginning on the thread that opens the store, once; nothing where there is none,
    /// because the store is small, too much stands open, or its order doesn't fit its notes.
    std::function<void(std::optional<NotebookSnapshot>)> take;
};

/// What a list shows of a text stands mostly within so many UTF-16 units.
constexpr qsizetype listedUnits = 2'000;

/// A store of fewer notes is read before anybody could look at its beginning.
constexpr qint64 fewestNotesForBeginning = 8'000;

/// What the first picture of a large notebook shows: all folders and the whole order, with the way
/// to the selected note open, and of the notes those of the folders that stand open. It can be
/// looked at, and nothing else: the texts of its notes can't be read, but for those of the selected
/// one, which are in memory. What is in it is verified as at any opening. `folders` and `layout`
/// are what the store holds of them. Throws SQLite::Exception.
[[nodiscard]] std::optional<NotebookSnapshot>
readBeginning(SQLite::Database& database, qint64 storeKey, qint64 noteCount,
              const QList<Shared<FolderRecord>>& folders,
              const std::optional<BinderLayoutSnapshot>& layout, const SharedBlobSource& source,
              const BeginningWish& wish);

} // namespace orvane
