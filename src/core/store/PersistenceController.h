// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/records/NotebookSnapshot.h"
#include "core/store/PersistentStoreRecovery.h"
#include "core/store/StoreBeginning.h"
#include "core/store/StoreCheck.h"
#include "core/store/StoreError.h"
#include "core/store/StoreWorker.h"
#include "platform/Clock.h"
#include "platform/FolderHandle.h"

#include <QList>
#include <QString>

#include <expected>
#include <memory>
#include <optional>

namespace orvane {

struct StoreSchema;

/// The store of one open project: its folders, notes and Binder layout in one SQLite file.
///
/// Opening is the check. The file's header, its schema, its tables and every row except the rich
/// bytes are read and verified before anything is shown. A store that fails there is moved aside
/// whole, a marker is left beside it, and a fresh empty store takes its place; such a controller
/// has a `persistentStoreRecovery` and is to be dropped, not shown. What merely stands in the way
/// (a full disk, a missing permission, another process) is an error and changes nothing.
///
/// The store is reached through its data folder, which is held: when another program renames or
/// moves that folder, reading and writing go on there, and nothing is made at the old place.
///
/// Records that come out of a store hold their rich bytes as blobs which are read on first use.
/// They stay readable as long as the controller lives; what is overwritten is read first if
/// somebody still holds it.
///
/// Only one controller can have a project open; drop the old one before the same project is opened
/// again. Destroying it tries once more what could not be saved, and checkpoints the write-ahead
/// log into the store, so that a project at rest is one file. Main thread, but for opening and the
/// first `load`.
class PersistenceController {
public:
    enum class IfMissing {
        Create, ///< an empty store is made, with the folder for it
        Refuse, ///< `StoreOpenError::Code::Missing`, and nothing is made
    };
    struct Options {
        /// A notebook of the library-wide era to take over once, when the store has no rows.
        QString legacyJSONPath = {};
        bool shouldImportLegacyJSON = false;
        /// The schema to open with; the program's own when null.
        const StoreSchema* schema = nullptr;
        /// After how many pages of 4 KiB the write-ahead log is checkpointed into the file.
        int checkpointAtPages = 1000;
        /// The data folder, held; with it no folder is ever made. Without it the controller holds
        /// the folder itself.
        std::shared_ptr<const FolderHandle> folder = nullptr;
        /// What happens where no store is. A link that leads to none is always refused.
        IfMissing ifMissing = IfMissing::Create;
        /// Who gets the beginning of a store that was there and can be written; may not be told.
        /// What it has shown is void where opening fails afterwards.
        const BeginningWish* beginning = nullptr;
    };

    using Opened = std::expected<std::unique_ptr<PersistenceController>, StoreOpenError>;

    /// On any thread: what is opened belongs to whoever gets it, whole.
    [[nodiscard]] static Opened open(const QString& dataFolder, const Clock& clock,
                                     const Options& options);
    [[nodiscard]] static Opened open(const QString& dataFolder, const Clock& clock);

    /// The notebook of the library-wide era, under the application-support folder given. Creates
    /// an empty one when there is none: ask `hasLegacyNotebook` first.
    [[nodiscard]] static Opened legacyShared(const QString& applicationSupportFolder,
                                             const Clock& clock);
    [[nodiscard]] static bool hasLegacyNotebook(const QString& applicationSupportFolder);

    ~PersistenceController();
    PersistenceController(const PersistenceController&) = delete;
    PersistenceController& operator=(const PersistenceController&) = delete;

    /// Where the data folder and the store are now, for a person's eyes: the folder may have been
    /// renamed or moved since it was opened, and is followed.
    [[nodiscard]] QString storageDirectory() const;
    [[nodiscard]] QString storePath() const;
    /// Whether a store, or a part of one, was there before this controller opened it.
    [[nodiscard]] bool hadExistingPersistentStore() const;
    /// Set when a store was there and was damaged.
    [[nodiscard]] const std::optional<PersistentStoreRecovery>& persistentStoreRecovery() const;
    /// True when the folder or the file can't be written: loading works, each save is an error.
    [[nodiscard]] bool isReadOnly() const;

    /// What is stored: folders by age, notes newest change first. Notes without any folder are
    /// given a new folder "Inbox" here, which is stored with the next save. A row that lacks a
    /// required value is a recovered record with what can be read, at the project's root where it
    /// names no folder; its row stays as it is until that record is changed or removed.
    [[nodiscard]] NotebookSnapshot load();

    /// Makes the store equal to the snapshot, touching only what differs from what is stored. A
    /// failure leaves the store as it was; what could not be written goes out with the next
    /// successful save of any kind. A single record that can't be stored (`TooBig`, `Unread`) is
    /// left out and stays pending, and each save is an error until it is stored, though everything
    /// else is.
    ///
    /// Before each save the files are held against those that are open. `Replaced` and `Missing`
    /// say that the store's file isn't in its place: nothing is written, everything stays pending,
    /// and whatever stands there is left alone, also when the controller is destroyed. The open
    /// store can still be read and copied (`load`, `writeCopy`). When the file is back, saving
    /// works again.
    std::expected<void, StoreError> save(const NotebookSnapshot& snapshot);
    /// Inserts or updates one note; its cost doesn't depend on the size of the notebook.
    std::expected<void, StoreError> saveNote(const Shared<NoteRecord>& note);
    std::expected<void, StoreError> saveFolder(const Shared<FolderRecord>& folder);
    std::expected<void, StoreError> saveLayout(const BinderLayoutSnapshot& layout);

    /// Whether anything that was to be saved is not stored: compared with what is stored, so that
    /// what was changed back doesn't count.
    [[nodiscard]] bool hasUnsaved() const;
    /// The records among it.
    [[nodiscard]] QList<Shared<NoteRecord>> unsavedNotes() const;
    [[nodiscard]] QList<Shared<FolderRecord>> unsavedFolders() const;
    /// The note as it is stored, or null. Valid until the next save.
    [[nodiscard]] const Shared<NoteRecord>* storedNote(const QUuid& id) const;
    /// Tries what is pending; with nothing pending, as `confirmFiles`.
    std::expected<void, StoreError> saveAgain();
    /// Forgets what is pending, so that destroying the controller doesn't try it.
    void discardUnsaved();
    /// Whether a save would find the store's file in its place: ask before the project is left,
    /// because what was saved to a file that has since been replaced is gone with this controller.
    std::expected<void, StoreError> confirmFiles();

    /// Writes everything that is stored, with what is pending, to a store of its own at `path`,
    /// where nothing may be and whose folder exists; works as well when the store's own file has
    /// been replaced or removed. When it succeeds the copy is whole and on the disk. Pending
    /// records whose bytes can't be read have there what is stored of them.
    std::expected<void, StoreError> writeCopy(const QString& path);
    /// What the store at `path` holds, its write-ahead log included, with all bytes in memory that
    /// can be read. It is read from a copy in a temporary folder; nothing at its place is touched,
    /// locked or moved, and damage is an error (`Unreadable`). Not for a store that is open in this
    /// process. Any thread.
    [[nodiscard]] static std::expected<NotebookSnapshot, StoreOpenError>
    readOnlyCopy(const QString& path);

    /// A thread that reads the store beside this one; null where the store is read from a copy.
    [[nodiscard]] StoreWorker* worker();
    /// Has the beginnings of these notes' texts read by it, so many UTF-16 units each, where they
    /// are not known yet; `done` is told once they are. Notes that are not stored are passed over.
    void learnBeginnings(const QList<Shared<NoteRecord>>& notes, qsizetype units,
                         std::function<void()> done);

    /// The same at once, on this thread.
    void readBeginnings(const QList<Shared<NoteRecord>>& notes, qsizetype units);

    /// Starts a full check of the file on a thread of its own, once per controller; `done` gets
    /// the result on this thread. Ends by itself when the controller is destroyed.
    void checkInBackground(StoreCheck::Done done);

    /// Closes the store as it is and moves its files aside behind a marker, as opening does with a
    /// damaged store; for damage that was found later.
    [[nodiscard]] static std::expected<PersistentStoreRecovery, StoreOpenError>
    protectAfterDamage(std::unique_ptr<PersistenceController> controller,
                       const QString& errorDescription, const Clock& clock);

private:
    struct Private;
    explicit PersistenceController(std::unique_ptr<Private> p);

    std::unique_ptr<Private> m_private;
};

} // namespace orvane
