// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/store/StoreWriter.h"

#include "core/store/ColumnText.h"
#include "core/store/RecordColumns.h"

#include <array>
#include <sqlite3.h>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

// SQLite's own limit for one row is 1,000,000,000 bytes. UTF-8 takes at most three bytes for a
// UTF-16 unit.
constexpr qsizetype largestValue = 900'000'000;
constexpr qsizetype bytesPerUnit = 3;

// Asked for with the text, so that it is made for records that have one.
template <typename Record>
std::optional<QString> firstLineBeside(const Record& record, const NoteText&)
{
    return storedFirstLine(record);
}

/// Binds the fields of a record in their order. What is bound stays here until the row is written.
template <typename Record>
class FieldBinder {
public:
    FieldBinder(StoreStatement& statement, qint64 storeKey, qint64 row)
        : m_row(statement, storeKey, 1)
    {
        m_row.addRowNumber(row);
    }

    void bindFields(const Record& record)
    {
        forEachField<Record>([&]<typename Type>(const RecordField<Record, Type>& field) {
            if constexpr (std::is_same_v<Type, NoteText>) {
                m_row.integer((record.*field.member).utf8().size());
                bind(firstLineBeside(record, record.*field.member));
            } else if constexpr (std::is_same_v<Type, std::optional<Blob>>) {
                bindBytes(record.*field.member, field.place == field.inRecord);
            } else {
                bind(record.*field.member);
            }
        });
        m_row.checksum();
    }
    [[nodiscard]] int nextParameter() const { return m_row.nextParameter(); }

private:
    void bind(const QUuid& id) { text(uuidToStore(id)); }
    void bind(const QString& value) { text(value.toUtf8()); }
    void bind(const QStringList& tags) { text(tagsToStore(tags)); }
    void bind(const Timestamp& date) { m_row.integer(date.msecs); }
    void bind(bool flag) { m_row.integer(flag); }
    void bind(const NoteImages& images)
    {
        QList<ImageEntry> entries;
        for (const NoteImage& image : images)
            entries.append({image.hash, image.bytes.size()});
        text(imagesToStore(entries));
    }
    template <typename T>
    void bind(const std::optional<T>& value)
    {
        if (value)
            bind(*value);
        else
            m_row.null();
    }
    template <typename T>
    void bind(const Rare<T>& value)
    {
        bind(std::optional<T>(value));
    }
    void bindBytes(const std::optional<Blob>& bytes, bool isInRecord)
    {
        if (!bytes)
            m_row.null();
        else if (isInRecord)
            m_row.bytes(m_kept[m_next++] = bytes->readOrNothing());
        else
            m_row.integer(bytes->size());
    }
    void text(QByteArray utf8) { m_row.text(m_kept[m_next++] = std::move(utf8)); }

    RowBinder m_row;
    std::array<QByteArray, size_t(columnsOf<Record>())> m_kept;
    size_t m_next = 0;
};

template <typename Record>
void writeRow(StoreStatement& statement, qint64 storeKey, qint64 row, const Record& record)
{
    FieldBinder<Record> values(statement, storeKey, row);
    values.bindFields(record);
    statement.bindInteger(values.nextParameter(), row);
    statement.run();
}

bool sameColumns(const NoteRecord& a, const NoteRecord& b)
{
    bool same = true;
    forEachField<NoteRecord>([&]<typename Type>(const RecordField<NoteRecord, Type>& field) {
        const auto& left = a.*field.member;
        const auto& right = b.*field.member;
        if constexpr (holdsBytes<Type>) {
            if (field.place != field.inRecord) {
                const Blob* mine = fieldBytes(left);
                const Blob* other = fieldBytes(right);
                same = same && !mine == !other && (!mine || mine->size() == other->size());
                return;
            }
        }
        same = same && left == right;
    });
    return same && storedFirstLine(a) == storedFirstLine(b);
}

bool same(const Blob* a, const Blob* b)
{
    return a && b ? *a == *b : a == b;
}

std::expected<void, QString> readTitle(const std::optional<Blob>& title)
{
    const auto bytes = title ? title->read() : QByteArray();
    return bytes ? std::expected<void, QString>() : std::unexpected(bytes.error());
}

// Before stored bytes go: whoever holds them unread gets them now. When that fails they are
// damaged, and nothing is lost by going on.
void readForHolders(const Blob* stored, bool held)
{
    if (stored && !stored->isLoaded() && (held || !stored->isOnlyCopy()))
        static_cast<void>(stored->read());
}

} // namespace

struct StoreWriter::Statements {
    explicit Statements(SQLite::Database& database)
        : state(database, "UPDATE OrvaneStore SET generation = ?, folderCount = ?, noteCount = ?")
        , insertFolder(database, insertStatement<FolderRecord>().c_str())
        , updateFolder(database, updateStatement<FolderRecord>().c_str())
        , removeFolder(database, "DELETE FROM OrvaneFolder WHERE row = ?")
        , insertNote(database, insertStatement<NoteRecord>().c_str())
        , updateNote(database, updateStatement<NoteRecord>().c_str())
        , removeNote(database, "DELETE FROM OrvaneNote WHERE row = ?")
        , writeBytes(database,
                     "REPLACE INTO OrvaneNoteBytes (row, checksum, bytes) VALUES (?, ?, ?)")
        , removeBytes(database, "DELETE FROM OrvaneNoteBytes WHERE row = ?")
        , readBytes(database, "SELECT bytes FROM OrvaneNoteBytes WHERE row = ?")
        , removeAllBytes(database, "DELETE FROM OrvaneNoteBytes WHERE row >= ? AND row < ?")
    {}

    StoreStatement state;
    StoreStatement insertFolder;
    StoreStatement updateFolder;
    StoreStatement removeFolder;
    StoreStatement insertNote;
    StoreStatement updateNote;
    StoreStatement removeNote;
    StoreStatement writeBytes;
    StoreStatement removeBytes;
    StoreStatement readBytes;
    StoreStatement removeAllBytes;
};

StoreWriter::StoreWriter(StoreConnection& connection, qint64 storeKey)
    : m_connection(connection)
    , m_storeKey(storeKey)
    , m_statements(std::make_unique<Statements>(connection.database()))
{}

StoreWriter::~StoreWriter() = default;

void StoreWriter::writeState(const StoreState& state)
{
    m_statements->state.bindInteger(1, state.generation);
    m_statements->state.bindInteger(2, state.folderCount);
    m_statements->state.bindInteger(3, state.noteCount);
    m_statements->state.run();
}

void StoreWriter::insertFolder(qint64 row, const FolderRecord& folder)
{
    writeRow(m_statements->insertFolder, m_storeKey, row, folder);
}

void StoreWriter::updateFolder(qint64 row, const FolderRecord& stored, const FolderRecord& folder)
{
    if (stored != folder)
        writeRow(m_statements->updateFolder, m_storeKey, row, folder);
}

void StoreWriter::removeFolder(qint64 row)
{
    m_statements->removeFolder.bindInteger(1, row);
    m_statements->removeFolder.run();
}

void StoreWriter::insertNote(qint64 row, const NoteRecord& note)
{
    writeRow(m_statements->insertNote, m_storeKey, row, note);
    forEachBytes(note, [&](int place, const Blob* bytes) {
        if (bytes && !bytes->isEmpty())
            writeBytes(row * bytesPerNote + place, *bytes);
    });
    writeImages(note, nullptr);
}

void StoreWriter::updateNote(qint64 row, const NoteRecord& stored, const NoteRecord& note,
                             bool held)
{
    forEachField<NoteRecord>([&]<typename Type>(const RecordField<NoteRecord, Type>& field) {
        if constexpr (holdsBytes<Type>) {
            if (field.place != field.inRecord)
                updateBytes(row * bytesPerNote + field.place, fieldBytes(stored.*field.member),
                            fieldBytes(note.*field.member), held);
        }
    });
    writeImages(note, &stored);
    if (!sameColumns(stored, note))
        writeRow(m_statements->updateNote, m_storeKey, row, note);
}

void StoreWriter::updateBytes(qint64 key, const Blob* before, const Blob* after, bool held)
{
    if (same(before, after))
        return;
    readForHolders(before, held);
    if (after && !after->isEmpty())
        writeBytes(key, *after);
    else if (before && !before->isEmpty())
        removeBytes(key);
}

void StoreWriter::removeNote(qint64 row, const NoteRecord& stored, bool held)
{
    forEachBytes(stored, [&](int, const Blob* bytes) { readForHolders(bytes, held); });
    m_statements->removeNote.bindInteger(1, row);
    m_statements->removeNote.run();
    m_statements->removeAllBytes.bindInteger(1, row * bytesPerNote);
    m_statements->removeAllBytes.bindInteger(2, (row + 1) * bytesPerNote);
    m_statements->removeAllBytes.run();
}

void StoreWriter::writeBytes(qint64 key, const Blob& blob)
{
    const auto bytes = blob.read();
    if (!bytes)
        throw SQLite::Exception(bytes.error().toStdString(), SQLITE_IOERR);
    writeBytes(key, *bytes);
}

void StoreWriter::writeBytes(qint64 key, const QByteArray& bytes)
{
    StoreChecksum sum(m_storeKey);
    sum.addInteger(key);
    sum.addBytes(bytes);
    m_statements->writeBytes.bindInteger(1, key);
    m_statements->writeBytes.bindInteger(2, sum.value());
    m_statements->writeBytes.bindBytes(3, bytes);
    m_statements->writeBytes.run();
}

void StoreWriter::writeImages(const NoteRecord& note, const NoteRecord* stored)
{
    if (!note.images || (stored && stored->images == note.images))
        return;
    for (const NoteImage& image : *note.images) {
        if (stored && stored->images && stored->images->contains(image))
            continue;
        // What can't be read now is not worth the words round it.
        const qint64 row = imageRow(image.hash);
        if (image.bytes.isLoaded() || !hasBytes(row)) {
            const auto bytes = image.bytes.readOnce().value_or(QByteArray());
            if (!bytes.isEmpty() && !hasBytes(row, bytes))
                writeBytes(row, bytes);
        }
    }
}

bool StoreWriter::hasBytes(qint64 key, const std::optional<QByteArray>& bytes)
{
    m_statements->readBytes.bindInteger(1, key);
    const bool isThere = m_statements->readBytes.step() &&
                         (!bytes || m_statements->readBytes.value(0).bytes() == *bytes);
    m_statements->readBytes.reset();
    return isThere;
}

QList<qint64> StoreWriter::imagesBeside(const QSet<QByteArray>& hashes) const
{
    QSet<qint64> used;
    for (const QByteArray& hash : hashes)
        used.insert(imageRow(hash));
    QList<qint64> beside;
    StoreStatement rows(m_connection.database(), "SELECT row FROM OrvaneNoteBytes WHERE row < 0");
    while (rows.step()) {
        if (!used.contains(rows.value(0).integer()))
            beside.append(rows.value(0).integer());
    }
    return beside;
}

void StoreWriter::removeImages(const QList<qint64>& rows)
{
    for (const qint64 row : rows)
        removeBytes(row);
}

void StoreWriter::removeBytes(qint64 key)
{
    m_statements->removeBytes.bindInteger(1, key);
    m_statements->removeBytes.run();
}

bool StoreWriter::fits(const NoteRecord& note)
{
    bool fits = note.title.size() * bytesPerUnit + (note.titleRTF ? note.titleRTF->size() : 0) <
                largestValue;
    forEachBytes(note, [&](int, const Blob* bytes) {
        fits = fits && (!bytes || bytes->size() < largestValue);
    });
    return fits;
}

bool StoreWriter::fits(const FolderRecord& folder)
{
    return folder.name.size() * bytesPerUnit + (folder.titleRTF ? folder.titleRTF->size() : 0) <
           largestValue;
}

std::expected<void, QString> StoreWriter::readBytes(const NoteRecord* stored,
                                                    const NoteRecord& note)
{
    std::expected<void, QString> read;
    forEachField<NoteRecord>([&]<typename Type>(const RecordField<NoteRecord, Type>& field) {
        if constexpr (holdsBytes<Type>) {
            const Blob* before = stored ? fieldBytes(stored->*field.member) : nullptr;
            const Blob* after = fieldBytes(note.*field.member);
            if (!read || !after || (before && before->isSameCell(*after)))
                return;
            if (const auto bytes = after->read(); !bytes)
                read = std::unexpected(bytes.error());
        }
    });
    // A note that has lost its title is stored with its first line.
    if (read && !note.body.utf8().isLoaded() && storedFirstLine(note) == QString())
        static_cast<void>(note.body.read());
    return read;
}

std::expected<void, QString> StoreWriter::readBytes(const FolderRecord*, const FolderRecord& folder)
{
    return readTitle(folder.titleRTF);
}

StoreBytesSource::StoreBytesSource(StoreConnection& connection, qint64 storeKey)
    : m_connection(&connection)
    , m_storeKey(storeKey)
{}

std::expected<QByteArray, QString> StoreBytesSource::read(qint64 key, qsizetype size)
{
    if (!m_connection)
        return std::unexpected(u"their project is closed"_s);
    auto bytes = m_connection->run([&] {
        if (!m_statement)
            m_statement.emplace(m_connection->database(),
                                "SELECT checksum, bytes FROM OrvaneNoteBytes WHERE row = ?");
        m_statement->bindInteger(1, key);
        if (!m_statement->step())
            throwDamage(u"they are missing from the store"_s);
        QByteArray found = m_statement->value(1).bytes().toByteArray();
        StoreChecksum sum(m_storeKey);
        sum.addInteger(key);
        sum.addBytes(found);
        const bool sound = found.size() == size && (m_statement->value(0).isNull() ||
                                                    sum.value() == m_statement->value(0).integer());
        m_statement->reset();
        if (!sound)
            throwDamage(u"they don't match their checksum"_s);
        return found;
    });
    if (!bytes)
        return std::unexpected(bytes.error().detail);
    return *std::move(bytes);
}

void StoreBytesSource::attach(StoreConnection& connection)
{
    m_statement.reset();
    m_connection = &connection;
}

void StoreBytesSource::detach()
{
    m_statement.reset();
    m_connection = nullptr;
}

} // namespace orvane
