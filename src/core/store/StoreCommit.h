// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/records/NotebookSnapshot.h"
#include "core/store/StoreError.h"
#include "core/store/StoreOpening.h"

#include <QHash>
#include <QUuid>

#include <expected>
#include <optional>

namespace orvane {

/// What is to be stored and isn't yet: a whole snapshot, or single records and a layout. What a
/// failed save leaves here goes out with the next one.
class PendingChanges {
public:
    void put(const NotebookSnapshot& snapshot);
    void put(const Shared<NoteRecord>& note);
    void put(const Shared<FolderRecord>& folder);
    void put(const BinderLayoutSnapshot& layout);
    void clear() { *this = {}; }
    [[nodiscard]] bool isEmpty() const
    {
        return !m_snapshot && !m_layout && m_notes.isEmpty() && m_folders.isEmpty();
    }

    /// Everything but these is stored.
    void keepOnly(const QList<Shared<FolderRecord>>& folders,
                  const QList<Shared<NoteRecord>>& notes);

    [[nodiscard]] QList<Shared<NoteRecord>> notesWithImages() const;
    /// What of this the store doesn't hold as it is, compared by value where it isn't the same
    /// object.
    [[nodiscard]] QList<Shared<NoteRecord>> notesBeside(const OpenedStore& store) const;
    [[nodiscard]] QList<Shared<FolderRecord>> foldersBeside(const OpenedStore& store) const;
    /// The same for everything: records, what is to be removed, and the layout.
    [[nodiscard]] bool differFrom(const OpenedStore& store) const;

    [[nodiscard]] const std::optional<NotebookSnapshot>& snapshot() const { return m_snapshot; }
    [[nodiscard]] const QHash<QUuid, Shared<NoteRecord>>& notes() const { return m_notes; }
    [[nodiscard]] const QHash<QUuid, Shared<FolderRecord>>& folders() const { return m_folders; }
    [[nodiscard]] const std::optional<BinderLayoutSnapshot>& layout() const { return m_layout; }

private:
    std::optional<NotebookSnapshot> m_snapshot;
    QHash<QUuid, Shared<NoteRecord>> m_notes;
    QHash<QUuid, Shared<FolderRecord>> m_folders;
    std::optional<BinderLayoutSnapshot> m_layout;
};

/// Whether the transaction is the first one since the write-ahead log was checkpointed.
enum class WalState { Checkpointed, InUse };

/// Stores the changes in one transaction, touching only rows that differ, and brings the image in
/// `store` up to date when that has succeeded. A record that is too big, or whose bytes can't be
/// read from where they are, is left out: it alone stays in `changes`, and the result says why.
[[nodiscard]] std::expected<std::optional<StoreError>, StoreFailure>
commitChanges(OpenedStore& store, StoreWriter& writer, PendingChanges& changes, WalState wal);

} // namespace orvane
