// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/store/StoreOpening.h"

#include "core/store/PersistentStoreRecovery.h"
#include "core/store/StoreFiles.h"
#include "core/store/StoreVfs.h"
#include "core/store/WriteAheadLog.h"
#include "platform/AtomicFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QtEndian>

#include <algorithm>
#include <cerrno>
#include <sqlite3.h>
#include <sys/stat.h>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

template <typename T>
using Result = std::expected<T, StoreOpenFailure>;

StoreDamage damage(const QString& description)
{
    return {description};
}

std::unexpected<StoreOpenFailure> failed(StoreOpenError::Code code, const QString& path,
                                         const QString& detail)
{
    return std::unexpected<StoreOpenFailure>(StoreOpenError{code, path, detail, std::nullopt});
}

std::unexpected<StoreOpenFailure> failed(const QString& path, const StoreFailure& failure)
{
    if (failure.isDamage())
        return std::unexpected<StoreOpenFailure>(damage(failure.detail));
    auto code = StoreOpenError::Code::Unreadable;
    switch (failure.code & 0xff) {
    case SQLITE_FULL:
        code = StoreOpenError::Code::NoSpace;
        break;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        code = StoreOpenError::Code::LockedByOther;
        break;
    case SQLITE_PERM:
    case SQLITE_READONLY:
        code = StoreOpenError::Code::NoAccess;
        break;
    default:
        break;
    }
    return failed(code, path, failure.detail);
}

// Places in the file's header: https://www.sqlite.org/fileformat2.html, 1.3.
constexpr qsizetype headerSize = 100;
constexpr qsizetype journalModeOffset = 18;
constexpr qsizetype userVersionOffset = 60;
constexpr qsizetype applicationIdOffset = 68;

// Looks at the file before SQLite does, which would take an empty one for a new database.
Result<int> schemaInHeader(const QString& path, const StoreSchema& schema)
{
    // What the system doesn't tell is no damage; QFileInfo takes it for a file that isn't there.
    struct ::stat status {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0) {
        if (errno == ENOENT)
            return std::unexpected(
                damage(u"the store's file is missing and its write-ahead log is there"_s));
        return failed(StoreOpenError::Code::Unreadable, path, qt_error_string(errno));
    }
    if (!S_ISREG(status.st_mode))
        return std::unexpected(damage(u"the store is not a file"_s));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return failed(StoreOpenError::Code::Unreadable, path, file.errorString());
    const QByteArray header = file.read(headerSize);
    if (file.error() != QFileDevice::NoError)
        return failed(StoreOpenError::Code::Unreadable, path, file.errorString());
    if (header.isEmpty())
        return std::unexpected(damage(u"the store's file is empty"_s));
    if (header.size() < headerSize || !header.startsWith("SQLite format 3"))
        return std::unexpected(damage(u"the file is not a database"_s));
    if (qFromBigEndian<quint32>(header.constData() + applicationIdOffset) != storeApplicationId)
        return std::unexpected(damage(u"the database is not a store of this program"_s));
    const auto version = int(qFromBigEndian<quint32>(header.constData() + userVersionOffset));
    if (version > schema.version)
        return failed(
            StoreOpenError::Code::NewerSchema, path,
            u"its schema is %1, this program knows %2"_s.arg(version).arg(schema.version));
    // 1 is what other programs leave that rewrite a database, to mend it or to copy it.
    const auto isMode = [](char mode) {
        return mode == 1 || mode == 2;
    };
    if (version <= 0 || !isMode(header.at(journalModeOffset)) ||
        !isMode(header.at(journalModeOffset + 1)))
        return std::unexpected(damage(u"the store's header is damaged"_s));
    return version;
}

Result<int> schemaInDatabase(OpenedStore& store, const QString& path, const StoreSchema& schema)
{
    const auto version = store.connection->run(
        [&] { return store.connection->database().execAndGet("PRAGMA user_version").getInt(); });
    if (!version)
        return failed(path, version.error());
    if (*version > schema.version)
        return failed(
            StoreOpenError::Code::NewerSchema, path,
            u"its schema is %1, this program knows %2"_s.arg(*version).arg(schema.version));
    return *version;
}

// What the program didn't make isn't run: a trigger or a view could change and remove notes.
Result<void> schemaIsOurs(OpenedStore& store, const QString& path, const std::string& tables)
{
    const auto difference =
        store.connection->run([&] { return compareSchema(store.connection->database(), tables); });
    if (!difference)
        return failed(path, difference.error());
    if (!difference->missing.isEmpty())
        return std::unexpected(
            damage(u"these tables are missing: "_s + difference->missing.join(u", "_s)));
    if (!difference->strangers.isEmpty())
        return failed(StoreOpenError::Code::ForeignSchema, path,
                      difference->strangers.join(u", "_s));
    return {};
}

Result<void> migrate(OpenedStore& store, const QString& path, int from, const StoreSchema& schema,
                     StoreAccess access)
{
    if (from == schema.version)
        return {};
    if (access == StoreAccess::ReadOnly && !store.copy)
        return failed(StoreOpenError::Code::MigrationFailed, path,
                      u"it is of an earlier version and can't be written"_s);
    const auto done = store.connection->transact(
        [&] { migrateStore(store.connection->database(), from, schema); });
    if (done)
        return {};
    const int code = done.error().code & 0xff;
    if (code == SQLITE_CORRUPT || code == SQLITE_NOTADB)
        return std::unexpected(damage(done.error().detail));
    return failed(StoreOpenError::Code::MigrationFailed, path, done.error().detail);
}

QList<Shared<FolderRecord>> recordsOf(const StoredRows<FolderRecord>& folders)
{
    QList<Shared<FolderRecord>> records;
    for (const auto& item : folders.items)
        records.append(item.record);
    return records;
}

// Every row of every table except the rich bytes.
std::expected<void, StoreFailure> readAll(OpenedStore& store, const BeginningWish* wish)
{
    return store.connection->run([&] {
        SQLite::Database& database = store.connection->database();
        store.state = readStoreState(database);
        const qint64 key = store.state.storeKey;
        store.bytes = new StoreBytesSource(*store.connection, key);
        auto folders = readFolders(database, key);
        store.layout.read(database, key);
        if (wish)
            wish->take(readBeginning(database, key, store.state.noteCount, recordsOf(folders),
                                     store.layout.layout(), SharedBlobSource(store.bytes.data()),
                                     *wish));
        auto notes = readNotes(database, key, SharedBlobSource(store.bytes.data()));
        if (folders.rowCount < store.state.folderCount || notes.rowCount < store.state.noteCount)
            throwDamage(u"%1 folders and %2 notes are there of %3 and %4"_s.arg(folders.rowCount)
                            .arg(notes.rowCount)
                            .arg(store.state.folderCount)
                            .arg(store.state.noteCount));
        store.state.folderCount = folders.rowCount;
        store.state.noteCount = notes.rowCount;
        if (const auto twice = store.folders.reset(std::move(folders)))
            throwDamage(u"the folder %1 is there twice"_s.arg(twice->toString()));
        if (const auto twice = store.notes.reset(std::move(notes)))
            throwDamage(u"the note %1 is there twice"_s.arg(twice->toString()));
        StoreStatement bytesTable(database, "SELECT row, checksum, bytes FROM OrvaneNoteBytes");
    });
}

// A store in a folder that can't be written: alone it is read where it is; with a write-ahead log
// beside it, from a copy, because reading through a write-ahead log needs files beside the store.
Result<QString> placeForReading(OpenedStore& store, const QString& path)
{
    if (!hasWal(path))
        return path;
    store.copy = std::make_unique<QTemporaryDir>();
    QString target = store.copy->filePath(QFileInfo(path).fileName());
    const QString wal = persistentStoreFiles(path).at(1);
    if (!store.copy->isValid() || !QFile::copy(path, target) ||
        !QFile::copy(wal, persistentStoreFiles(target).at(1)))
        return failed(StoreOpenError::Code::NoSpace, path, u"it can't be copied for reading"_s);
    for (const QString& file : persistentStoreFiles(target))
        QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner);
    return target;
}

} // namespace

NotebookSnapshot OpenedStore::snapshot() const
{
    NotebookSnapshot snapshot{folders.records(), notes.records(), layout.layout()};
    const auto older = [](const auto& a, const auto& b) {
        return a->createdAt < b->createdAt;
    };
    const auto newer = [](const auto& a, const auto& b) {
        return a->updatedAt > b->updatedAt;
    };
    if (!std::ranges::is_sorted(snapshot.folders, older))
        std::ranges::stable_sort(snapshot.folders, older);
    if (!std::ranges::is_sorted(snapshot.notes, newer))
        std::ranges::stable_sort(snapshot.notes, newer);
    return snapshot;
}

Result<OpenedStore> openStore(const QString& path, const StoreSchema& schema, StoreAccess access,
                              const BeginningWish* wish)
{
    if (const auto inHeader = schemaInHeader(path, schema); !inHeader)
        return std::unexpected(inHeader.error());
    OpenedStore store;
    QString place = path;
    if (access == StoreAccess::ReadOnly) {
        auto readable = placeForReading(store, path);
        if (!readable)
            return std::unexpected(readable.error());
        place = *readable;
    }
    const bool walLeft = hasWal(place);
    if (const auto problem = walLeft ? walDamage(place) : std::nullopt)
        return std::unexpected(damage(*problem));
    const auto alone = walLeft ? stateWithoutWal(place) : std::nullopt;

    const bool immutable = access == StoreAccess::ReadOnly && !store.copy;
    auto connection = StoreConnection::open(place, immutable ? StoreConnection::Access::Immutable
                                                             : StoreConnection::Access::ReadWrite);
    if (!connection)
        return failed(path, connection.error());
    store.connection = *std::move(connection);
    const auto version = schemaInDatabase(store, path, schema);
    if (!version)
        return std::unexpected(version.error());
    if (!immutable && store.connection->isReadOnly()) {
        store.connection.reset();
        return openStore(path, schema, StoreAccess::ReadOnly);
    }
    if (const std::string* tables = schema.tablesOf(*version)) {
        if (const auto ours = schemaIsOurs(store, path, *tables); !ours) {
            if (!walLeft && !immutable)
                store.connection->closeCheckpointed(); // which leaves no file beside it
            return std::unexpected(ours.error());
        }
    }
    if (alone) {
        const auto together =
            store.connection->run([&] { return readStoreState(store.connection->database()); });
        if (!together)
            return failed(path, together.error());
        if (!walFits(*alone, *together))
            return std::unexpected(
                damage(u"the write-ahead log beside the store is not its own"_s));
    }
    if (auto migrated = migrate(store, path, *version, schema, access); !migrated)
        return std::unexpected(migrated.error());
    if (auto read = readAll(store, access == StoreAccess::ReadWrite ? wish : nullptr); !read)
        return failed(path, read.error());
    if (!immutable) {
        // Nothing to do for a store that no other program has rewritten.
        const auto set = store.connection->run(
            [&] { store.connection->database().execAndGet("PRAGMA journal_mode = WAL"); });
        if (!set)
            return failed(path, set.error());
    }
    return store;
}

std::expected<void, StoreOpenError> createStore(const QString& path, const StoreSchema& schema)
{
    const QString unfinished = path + ".new"_L1;
    for (const QString& file : {unfinished, unfinished + "-journal"_L1, unfinished + "-wal"_L1})
        QFile::remove(file);
    try {
        SQLite::Database database(unfinished.toStdString(),
                                  SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE, 0, storeVfs());
        const qint64 key = qint64(QRandomGenerator::system()->generate64() >> 2);
        database.exec("BEGIN");
        database.exec("PRAGMA application_id = " + std::to_string(storeApplicationId));
        database.exec("PRAGMA user_version = " + std::to_string(schema.version));
        createTables(database, schema, key);
        database.exec("COMMIT");
        database.execAndGet("PRAGMA journal_mode = WAL");
    } catch (const SQLite::Exception& exception) {
        QFile::remove(unfinished);
        const auto failure = failed(path, StoreFailure::from(exception)).error();
        const auto* error = std::get_if<StoreOpenError>(&failure);
        return std::unexpected(error ? *error
                                     : StoreOpenError{StoreOpenError::Code::Unreadable, path,
                                                      QString::fromUtf8(exception.what()),
                                                      std::nullopt});
    }
    if (const auto renamed = renameToFreeName(unfinished, path); !renamed) {
        QFile::remove(unfinished);
        return std::unexpected(StoreOpenError{StoreOpenError::Code::NoAccess, path,
                                              renamed.error().detail, std::nullopt});
    }
    return {};
}

} // namespace orvane
