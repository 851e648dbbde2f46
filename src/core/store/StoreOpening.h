// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/records/NotebookSnapshot.h"
#include "core/store/LayoutStore.h"
#include "core/store/StoreBeginning.h"
#include "core/store/StoreConnection.h"
#include "core/store/StoreReader.h"
#include "core/store/StoreSchema.h"
#include "core/store/StoreWriter.h"
#include "core/store/StoredRecords.h"

#include <QString>
#include <QTemporaryDir>

#include <expected>
#include <memory>
#include <variant>

namespace orvane {

/// A store that was opened, verified and read.
struct OpenedStore {
    /// Set when the store is read from a copy.
    std::unique_ptr<QTemporaryDir> copy;
    std::unique_ptr<StoreConnection> connection;
    QExplicitlySharedDataPointer<StoreBytesSource> bytes;
    StoreState state;
    StoredRecords<FolderRecord> folders;
    StoredRecords<NoteRecord> notes;
    LayoutStore layout;

    /// What is stored: folders by age, notes newest change first.
    [[nodiscard]] NotebookSnapshot snapshot() const;
};

/// The file's contents are wrong; the words say what.
struct StoreDamage {
    QString description;
};

using StoreOpenFailure = std::variant<StoreOpenError, StoreDamage>;

enum class StoreAccess { ReadWrite, ReadOnly };

/// Opens the store at `path`, which exists at least in part, and reads all of it but the rich
/// bytes. An older schema is brought forward and a write-ahead log left over is checkpointed. For
/// reading only, nothing in the folder is changed. `wish` gets the beginning of a store that can be
/// written before the rest is read.
[[nodiscard]] std::expected<OpenedStore, StoreOpenFailure>
openStore(const QString& path, const StoreSchema& schema, StoreAccess access,
          const BeginningWish* wish = nullptr);

/// Makes an empty store at `path`, where no file is: complete under another name first, so that a
/// store is never there in part, and nothing that has its name meanwhile is replaced.
[[nodiscard]] std::expected<void, StoreOpenError> createStore(const QString& path,
                                                              const StoreSchema& schema);

} // namespace orvane
