// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/store/StoreCommit.h"
#include "core/store/StoreFiles.h"
#include "core/store/StoreOpening.h"
#include "core/store/StoreWriter.h"

#include <QList>
#include <QString>

#include <expected>
#include <memory>

namespace orvane {

/// A store that is open: what it holds, what is to be stored and isn't yet, and its write-ahead
/// log.
///
/// Before each save the files under the store's names are held against those that are open. Where
/// another file stands in the store's place, or none, nothing is written and everything stays
/// pending. Where only the write-ahead log was taken away or exchanged, it is written anew from the
/// one that is open, a foreign one being set aside, and the save goes on. What isn't ours is never
/// written, checkpointed into, or removed. Main thread, but for being made.
class StoreSession {
public:
    /// `files` outlives this.
    StoreSession(OpenedStore&& opened, StoreFiles& files, int checkpointAtPages, bool isReadOnly);
    /// Tries once more what is pending, checkpoints the write-ahead log into the file and removes
    /// it.
    ~StoreSession();
    StoreSession(const StoreSession&) = delete;
    StoreSession& operator=(const StoreSession&) = delete;

    [[nodiscard]] const OpenedStore& store() const { return m_store; }
    [[nodiscard]] bool isReadOnly() const { return m_readOnly; }
    [[nodiscard]] PendingChanges& pending() { return m_pending; }
    [[nodiscard]] const PendingChanges& pending() const { return m_pending; }

    /// Stores what is pending. After an error it is still pending, or of it the records that the
    /// error is about.
    std::expected<void, StoreError> flush();
    /// Whether the files are still those that are open, the write-ahead log being mended where it
    /// must be.
    std::expected<void, StoreError> confirmFiles();
    /// How often the write-ahead log was mended.
    [[nodiscard]] int mendings() const { return m_mendings; }

    /// Writes what is stored, with what is pending, to a store of its own at `path`.
    std::expected<void, StoreError> writeCopy(const QString& path, const StoreSchema& schema);

    /// Closes without storing or checkpointing anything: the files stay as they are.
    void abandon();

private:
    bool checkpoint();
    void restImages(const QList<Shared<NoteRecord>>& notes) const;
    void removeUnusedImages();
    std::expected<void, StoreError> mendWal();
    void close();

    OpenedStore m_store;
    StoreFiles& m_files;
    int m_checkpointAtPages;
    bool m_readOnly;
    std::unique_ptr<StoreWriter> m_writer;
    PendingChanges m_pending;
    WalState m_wal = WalState::Checkpointed;
    int m_mendings = 0;
};

} // namespace orvane
