// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/store/StoreWriter.h"

#include "core/store/ColumnText.h"

#include <ranges>
#include <sqlite3.h>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

// SQLite's own limit for one row is 1,000,000,000 bytes. UTF-8 takes at most three bytes for a
// UTF-16 unit.
constexpr qsizetype largestValue = 900'000'000;
constexpr qsizetype bytesPerUnit = 3;

template <typename Text>
void optionalText(RowBinder& row, const std::optional<QString>& value, Text& keep)
{
    if (!value)
        return row.null();
    keep = value->toUtf8();
    row.text(keep);
}

void optionalBytes(RowBinder& row, const std::optional<Blob>& value, QByteArray& keep)
{
    if (!value)
        return row.null();
    keep = value->bytes();
    row.bytes(keep);
}

bool sameColumns(const NoteRecord& a, const NoteRecord& b)
{
    for (int place = 0; place < placesInNote; ++place) {
        const Blob* left = bytesAt(a, place);
        const Blob* right = bytesAt(b, place);
        if (!left != !right || (left && left->size() != right->size()))
            return false;
    }
    return a.folderID == b.folderID && a.title == b.title && a.createdAt == b.createdAt &&
           a.updatedAt == b.updatedAt && a.tags == b.tags && a.iconName == b.iconName &&
           a.embeddedFileType == b.embeddedFileType &&
           a.embeddedFileAssetID == b.embeddedFileAssetID && a.isPinned == b.isPinned &&
           a.pdfSourceURLString == b.pdfSourceURLString && a.titleRTF == b.titleRTF;
}

bool same(const Blob* a, const Blob* b)
{
    return a && b ? *a == *b : a == b;
}

std::expected<void, QString> readTitle(const std::optional<Blob>& title)
{
    const auto bytes = title ? title->tryBytes() : QByteArray();
    return bytes ? std::expected<void, QString>() : std::unexpected(bytes.error());
}

// Before stored bytes go: whoever holds them unread gets them now. When that fails they are
// damaged, and nothing is lost by going on.
void readForHolders(const Blob* stored, bool held)
{
    if (stored && !stored->isLoaded() && (held || !stored->isOnlyCopy()))
        static_cast<void>(stored->tryBytes());
}

} // namespace

struct StoreWriter::Statements {
    explicit Statements(SQLite::Database& database)
        : state(database, "UPDATE OrvaneStore SET generation = ?, folderCount = ?, noteCount = ?")
        , insertFolder(database, "INSERT INTO OrvaneFolder (id, name, createdAt, parentFolderID, "
                                 "iconName, titleRTF, tagsJSON, isPinned, checksum, row) "
                                 "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)")
        , updateFolder(database, "UPDATE OrvaneFolder SET id = ?, name = ?, createdAt = ?, "
                                 "parentFolderID = ?, iconName = ?, titleRTF = ?, tagsJSON = ?, "
                                 "isPinned = ?, checksum = ? WHERE row = ?")
        , removeFolder(database, "DELETE FROM OrvaneFolder WHERE row = ?")
        , insertNote(database,
                     "INSERT INTO OrvaneNote (id, folderID, title, createdAt, updatedAt, tagsJSON, "
                     "iconName, embeddedFileType, embeddedFileAssetID, isPinned, "
                     "pdfSourceURLString, titleRTF, bodyRTF, richContentPayload, "
                     "editorTypingAttributesPayload, embeddedFilePayload, shapesPayload, body, "
                     "checksum, row) "
                     "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)")
        , updateNote(database,
                     "UPDATE OrvaneNote SET id = ?, folderID = ?, title = ?, createdAt = ?, "
                     "updatedAt = ?, tagsJSON = ?, iconName = ?, embeddedFileType = ?, "
                     "embeddedFileAssetID = ?, isPinned = ?, pdfSourceURLString = ?, titleRTF = ?, "
                     "bodyRTF = ?, richContentPayload = ?, editorTypingAttributesPayload = ?, "
                     "embeddedFilePayload = ?, shapesPayload = ?, body = ?, checksum = ? "
                     "WHERE row = ?")
        , removeNote(database, "DELETE FROM OrvaneNote WHERE row = ?")
        , writeBytes(database,
                     "REPLACE INTO OrvaneNoteBytes (row, checksum, bytes) VALUES (?, ?, ?)")
        , removeBytes(database, "DELETE FROM OrvaneNoteBytes WHERE row = ?")
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
    writeFolderRow(m_statements->insertFolder, row, folder);
}

void StoreWriter::updateFolder(qint64 row, const FolderRecord& stored, const FolderRecord& folder)
{
    if (stored != folder)
        writeFolderRow(m_statements->updateFolder, row, folder);
}

void StoreWriter::writeFolderRow(StoreStatement& statement, qint64 row, const FolderRecord& folder)
{
    const QByteArray id = uuidToStore(folder.id);
    const QByteArray name = folder.name.toUtf8();
    const QByteArray tags = tagsToStore(folder.tags);
    QByteArray parent;
    QByteArray icon;
    QByteArray titleRTF;
    RowBinder values(statement, m_storeKey, 1);
    values.addRowNumber(row);
    values.text(id);
    values.text(name);
    values.integer(folder.createdAt.msecs);
    if (folder.parentFolderID)
        values.text(parent = uuidToStore(*folder.parentFolderID));
    else
        values.null();
    optionalText(values, folder.iconName, icon);
    optionalBytes(values, folder.titleRTF, titleRTF);
    values.text(tags);
    values.integer(folder.isPinned);
    values.checksum();
    statement.bindInteger(values.nextParameter(), row);
    statement.run();
}

void StoreWriter::removeFolder(qint64 row)
{
    m_statements->removeFolder.bindInteger(1, row);
    m_statements->removeFolder.run();
}

void StoreWriter::insertNote(qint64 row, const NoteRecord& note)
{
    writeNoteRow(m_statements->insertNote, row, note);
    for (int place = 0; place < placesInNote; ++place) {
        if (const Blob* bytes = bytesAt(note, place); bytes && !bytes->isEmpty())
            writeBytes(row * bytesPerNote + place, *bytes);
    }
}

void StoreWriter::updateNote(qint64 row, const NoteRecord& stored, const NoteRecord& note,
                             bool held)
{
    for (int place = 0; place < placesInNote; ++place) {
        const Blob* before = bytesAt(stored, place);
        const Blob* after = bytesAt(note, place);
        if (same(before, after))
            continue;
        readForHolders(before, held);
        const qint64 key = row * bytesPerNote + place;
        if (after && !after->isEmpty())
            writeBytes(key, *after);
        else if (before && !before->isEmpty())
            removeBytes(key);
    }
    if (!sameColumns(stored, note))
        writeNoteRow(m_statements->updateNote, row, note);
}

void StoreWriter::writeNoteRow(StoreStatement& statement, qint64 row, const NoteRecord& note)
{
    const QByteArray id = uuidToStore(note.id);
    const QByteArray folder = uuidToStore(note.folderID);
    const QByteArray title = note.title.toUtf8();
    const QByteArray tags = tagsToStore(note.tags);
    QByteArray icon;
    QByteArray fileType;
    QByteArray asset;
    QByteArray source;
    QByteArray titleRTF;
    RowBinder values(statement, m_storeKey, 1);
    values.addRowNumber(row);
    values.text(id);
    values.text(folder);
    values.text(title);
    values.integer(note.createdAt.msecs);
    values.integer(note.updatedAt.msecs);
    values.text(tags);
    optionalText(values, note.iconName, icon);
    optionalText(values, note.embeddedFileType, fileType);
    optionalText(values, note.embeddedFileAssetID, asset);
    values.integer(note.isPinned);
    optionalText(values, note.pdfSourceURLString, source);
    optionalBytes(values, note.titleRTF, titleRTF);
    for (int place = 0; place < placesInNote; ++place) {
        if (const Blob* bytes = bytesAt(note, place))
            values.integer(bytes->size());
        else
            values.null();
    }
    values.checksum();
    statement.bindInteger(values.nextParameter(), row);
    statement.run();
}

void StoreWriter::removeNote(qint64 row, const NoteRecord& stored, bool held)
{
    for (int place = 0; place < placesInNote; ++place)
        readForHolders(bytesAt(stored, place), held);
    m_statements->removeNote.bindInteger(1, row);
    m_statements->removeNote.run();
    m_statements->removeAllBytes.bindInteger(1, row * bytesPerNote);
    m_statements->removeAllBytes.bindInteger(2, (row + 1) * bytesPerNote);
    m_statements->removeAllBytes.run();
}

void StoreWriter::writeBytes(qint64 key, const Blob& blob)
{
    const auto bytes = blob.tryBytes();
    if (!bytes)
        throw SQLite::Exception(bytes.error().toStdString(), SQLITE_IOERR);
    StoreChecksum sum(m_storeKey);
    sum.addInteger(key);
    sum.addBytes(*bytes);
    m_statements->writeBytes.bindInteger(1, key);
    m_statements->writeBytes.bindInteger(2, sum.value());
    m_statements->writeBytes.bindBytes(3, *bytes);
    m_statements->writeBytes.run();
}

void StoreWriter::removeBytes(qint64 key)
{
    m_statements->removeBytes.bindInteger(1, key);
    m_statements->removeBytes.run();
}

bool StoreWriter::fits(const NoteRecord& note)
{
    const qsizetype columns =
        note.title.size() * bytesPerUnit + (note.titleRTF ? note.titleRTF->size() : 0);
    return columns < largestValue &&
           std::ranges::all_of(std::views::iota(0, placesInNote), [&](int place) {
               const Blob* bytes = bytesAt(note, place);
               return !bytes || bytes->size() < largestValue;
           });
}

bool StoreWriter::fits(const FolderRecord& folder)
{
    return folder.name.size() * bytesPerUnit + (folder.titleRTF ? folder.titleRTF->size() : 0) <
           largestValue;
}

std::expected<void, QString> StoreWriter::readBytes(const NoteRecord* stored,
                                                    const NoteRecord& note)
{
    for (int place = 0; place < placesInNote; ++place) {
        const Blob* before = stored ? bytesAt(*stored, place) : nullptr;
        const Blob* after = bytesAt(note, place);
        if (!after || (before && before->isSameCell(*after)))
            continue;
        if (const auto bytes = after->tryBytes(); !bytes)
            return std::unexpected(bytes.error());
    }
    return readTitle(note.titleRTF);
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
