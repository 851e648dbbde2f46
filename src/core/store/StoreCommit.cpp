// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/store/StoreCommit.h"

#include "core/records/JsonObjectReader.h"

#include <sqlite3.h>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

template <typename Record>
void replaceIn(QList<Shared<Record>>& records, const Shared<Record>& record)
{
    for (Shared<Record>& other : records) {
        if (other->id == record->id) {
            other = record;
            return;
        }
    }
    records.append(record);
}

// Those of the records that the table doesn't hold as they are.
template <typename Records, typename Record>
QList<Shared<Record>> unlike(const Records& records, const StoredRecords<Record>& stored)
{
    QList<Shared<Record>> found;
    for (const Shared<Record>& record : records) {
        const auto* slot = stored.find(record->id);
        if (!slot || !(slot->record == record))
            found.append(record);
    }
    return found;
}

// How the tables of folders and notes differ in being written.
struct FolderTable {
    using Record = FolderRecord;
    static StoredRecords<Record>& image(OpenedStore& store) { return store.folders; }
    static qint64& count(StoreState& state) { return state.folderCount; }

    static void insert(StoreWriter& writer, qint64 row, const Record& folder)
    {
        writer.insertFolder(row, folder);
    }
    static void update(StoreWriter& writer, qint64 row, const Shared<Record>& stored,
                       const Record& folder)
    {
        writer.updateFolder(row, *stored, folder);
    }
    static void remove(StoreWriter& writer, qint64 row, const Shared<Record>&)
    {
        writer.removeFolder(row);
    }
};

struct NoteTable {
    using Record = NoteRecord;
    static StoredRecords<Record>& image(OpenedStore& store) { return store.notes; }
    static qint64& count(StoreState& state) { return state.noteCount; }
    // The image itself holds one.
    static bool isHeld(const Shared<Record>& stored) { return stored.copies() > 1; }

    static void insert(StoreWriter& writer, qint64 row, const Record& note)
    {
        writer.insertNote(row, note);
    }
    static void update(StoreWriter& writer, qint64 row, const Shared<Record>& stored,
                       const Record& note)
    {
        writer.updateNote(row, *stored, note, isHeld(stored));
    }
    static void remove(StoreWriter& writer, qint64 row, const Shared<Record>& stored)
    {
        writer.removeNote(row, *stored, isHeld(stored));
    }
};

// The changes of one table in one transaction: carried out row by row, and in the image at the end.
template <typename Table>
class TableChange {
public:
    using Record = typename Table::Record;

    TableChange(OpenedStore& store, StoreWriter& writer, StoreState& state)
        : m_store(store)
        , m_writer(writer)
        , m_state(state)
        , m_nextRow(Table::image(store).nextRow())
    {}

    void write(const Shared<Record>& record)
    {
        const auto* slot = Table::image(m_store).find(record->id);
        if (auto problem = problemWith(slot, *record)) {
            m_left.append(record);
            m_problem = std::move(problem);
            return;
        }
        if (slot) {
            Table::update(m_writer, slot->row, slot->record, *record);
            m_puts.emplace_back(record, slot->row);
            return;
        }
        Table::insert(m_writer, m_nextRow, *record);
        m_puts.emplace_back(record, m_nextRow++);
        ++Table::count(m_state);
    }

    void writeAll(const QList<Shared<Record>>& wanted)
    {
        auto difference = Table::image(m_store).differenceTo(wanted);
        for (const QUuid& id : std::as_const(difference.removed)) {
            const auto* slot = Table::image(m_store).find(id);
            Table::remove(m_writer, slot->row, slot->record);
            --Table::count(m_state);
        }
        m_removed = std::move(difference.removed);
        for (const Shared<Record>& record : std::as_const(difference.written))
            write(record);
        m_order = &wanted;
    }

    void commit()
    {
        auto& image = Table::image(m_store);
        image.removeAll(m_removed);
        for (const auto& [record, row] : m_puts)
            image.put(record, row);
        if (m_order && m_left.isEmpty())
            image.takeOrder(*m_order);
    }

    /// What was left out, and why the last of them was.
    [[nodiscard]] const QList<Shared<Record>>& left() const { return m_left; }
    [[nodiscard]] const std::optional<StoreError>& problem() const { return m_problem; }

private:
    static std::optional<StoreError> problemWith(const typename StoredRecords<Record>::Slot* slot,
                                                 const Record& record)
    {
        if (!StoreWriter::fits(record))
            return StoreError{StoreError::Code::TooBig,
                              u"the record %1 is too big for a store"_s.arg(uuidText(record.id))};
        const auto read = StoreWriter::readBytes(slot ? &*slot->record : nullptr, record);
        if (read)
            return std::nullopt;
        return StoreError{
            StoreError::Code::Unread,
            u"bytes of the record %1 can't be read: %2"_s.arg(uuidText(record.id), read.error())};
    }
    OpenedStore& m_store;
    StoreWriter& m_writer;
    StoreState& m_state;
    qint64 m_nextRow;
    std::vector<std::pair<Shared<Record>, qint64>> m_puts;
    QList<QUuid> m_removed;
    const QList<Shared<Record>>* m_order = nullptr;
    QList<Shared<Record>> m_left;
    std::optional<StoreError> m_problem;
};

bool differ(const StoreState& a, const StoreState& b)
{
    return a.generation != b.generation || a.folderCount != b.folderCount ||
           a.noteCount != b.noteCount;
}

} // namespace

void PendingChanges::put(const NotebookSnapshot& snapshot)
{
    clear();
    m_snapshot = snapshot;
}

void PendingChanges::put(const Shared<NoteRecord>& note)
{
    if (m_snapshot)
        replaceIn(m_snapshot->notes, note);
    else
        m_notes.insert(note->id, note);
}

void PendingChanges::put(const Shared<FolderRecord>& folder)
{
    if (m_snapshot)
        replaceIn(m_snapshot->folders, folder);
    else
        m_folders.insert(folder->id, folder);
}

void PendingChanges::put(const BinderLayoutSnapshot& layout)
{
    if (m_snapshot)
        m_snapshot->binderLayout = layout;
    else
        m_layout = layout;
}

void PendingChanges::keepOnly(const QList<Shared<FolderRecord>>& folders,
                              const QList<Shared<NoteRecord>>& notes)
{
    PendingChanges kept; // the lists may stand in what is given up
    for (const Shared<FolderRecord>& folder : folders)
        kept.put(folder);
    for (const Shared<NoteRecord>& note : notes)
        kept.put(note);
    *this = std::move(kept);
}

QList<Shared<NoteRecord>> PendingChanges::notesWithImages() const
{
    QList<Shared<NoteRecord>> found;
    const auto take = [&](const auto& notes) {
        for (const Shared<NoteRecord>& note : notes) {
            if (note->images)
                found.append(note);
        }
    };
    if (m_snapshot)
        take(m_snapshot->notes);
    take(m_notes);
    return found;
}

QList<Shared<NoteRecord>> PendingChanges::notesBeside(const OpenedStore& store) const
{
    return m_snapshot ? unlike(m_snapshot->notes, store.notes) : unlike(m_notes, store.notes);
}

QList<Shared<FolderRecord>> PendingChanges::foldersBeside(const OpenedStore& store) const
{
    return m_snapshot ? unlike(m_snapshot->folders, store.folders)
                      : unlike(m_folders, store.folders);
}

bool PendingChanges::differFrom(const OpenedStore& store) const
{
    const auto& layout = m_snapshot ? m_snapshot->binderLayout : m_layout;
    if ((m_snapshot || m_layout) && layout != store.layout.layout())
        return true;
    if (!notesBeside(store).isEmpty() || !foldersBeside(store).isEmpty())
        return true;
    return m_snapshot && (!store.notes.differenceTo(m_snapshot->notes).removed.isEmpty() ||
                          !store.folders.differenceTo(m_snapshot->folders).removed.isEmpty());
}

std::expected<std::optional<StoreError>, StoreFailure>
commitChanges(OpenedStore& store, StoreWriter& writer, PendingChanges& changes, WalState wal)
{
    SQLite::Database& database = store.connection->database();
    StoreState next = store.state;
    TableChange<FolderTable> folders(store, writer, next);
    TableChange<NoteTable> notes(store, writer, next);
    const auto done = store.connection->transact([&] {
        const auto before = sqlite3_total_changes64(database.getHandle());
        if (const auto& snapshot = changes.snapshot()) {
            folders.writeAll(snapshot->folders);
            notes.writeAll(snapshot->notes);
            store.layout.write(database, next.storeKey, snapshot->binderLayout);
        }
        for (const Shared<FolderRecord>& folder : changes.folders())
            folders.write(folder);
        for (const Shared<NoteRecord>& note : changes.notes())
            notes.write(note);
        if (changes.layout())
            store.layout.write(database, next.storeKey, changes.layout());
        const bool wrote = sqlite3_total_changes64(database.getHandle()) != before;
        if (wrote && wal == WalState::Checkpointed)
            ++next.generation;
        if (differ(next, store.state))
            writer.writeState(next);
    });
    if (!done) {
        store.layout.rollBack();
        return std::unexpected(done.error());
    }
    store.state = next;
    folders.commit();
    notes.commit();
    store.layout.commit();
    changes.keepOnly(folders.left(), notes.left());
    return notes.problem() ? notes.problem() : folders.problem();
}

} // namespace orvane
