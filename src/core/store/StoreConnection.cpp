// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/store/StoreConnection.h"

#include "core/store/StoreVfs.h"

#include <QUrl>

#include <cerrno>
#include <sqlite3.h>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

// Nobody who types waits longer for another program; saving is tried again by itself.
constexpr int busyTimeoutMs = 400;
constexpr qsizetype walPiece = 1 << 24;

StoreError::Code codeOf(int systemError)
{
    switch (systemError) {
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return StoreError::Code::NoSpace;
    case EIO:
    case ENODEV:
    case ENXIO:
    case ENOTCONN:
    case ESTALE:
        return StoreError::Code::Missing;
    default:
        return StoreError::Code::Other;
    }
}

std::string fileUri(const QString& path, const char* options)
{
    return "file:" + QUrl::toPercentEncoding(path, "/").toStdString() + options;
}

} // namespace

bool StoreFailure::isDamage() const
{
    switch (code & 0xff) {
    case SQLITE_ERROR: // SQL of ours that doesn't fit the file's tables
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
    case SQLITE_FORMAT:
    case SQLITE_MISMATCH:
    case SQLITE_TOOBIG:
    case SQLITE_CONSTRAINT:
        return true;
    default:
        return code == SQLITE_IOERR_SHORT_READ;
    }
}

StoreError StoreFailure::toStoreError() const
{
    StoreError error{StoreError::Code::Other, detail};
    switch (code & 0xff) {
    case SQLITE_FULL:
        error.code = StoreError::Code::NoSpace;
        break;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        error.code = StoreError::Code::Busy;
        break;
    case SQLITE_READONLY:
        error.code = StoreError::Code::ReadOnly;
        break;
    case SQLITE_TOOBIG:
        error.code = StoreError::Code::TooBig;
        break;
    case SQLITE_IOERR:
    case SQLITE_CANTOPEN:
        error.code = codeOf(systemError);
        break;
    default:
        break;
    }
    return error;
}

StoreFailure StoreFailure::damage(const QString& detail)
{
    return {SQLITE_CORRUPT, 0, detail};
}

StoreFailure StoreFailure::from(const SQLite::Exception& exception)
{
    const int extended = exception.getExtendedErrorCode();
    return {extended > 0 ? extended : exception.getErrorCode(), 0,
            QString::fromUtf8(exception.what())};
}

void throwDamage(const QString& detail)
{
    throw SQLite::Exception(detail.toStdString(), SQLITE_CORRUPT);
}

std::expected<std::unique_ptr<StoreConnection>, StoreFailure>
StoreConnection::open(const QString& path, Access access)
{
    try {
        const bool writes = access == Access::ReadWrite;
        const char* options = access == Access::Immutable ? "?immutable=1" : "";
        auto database = std::make_unique<SQLite::Database>(
            fileUri(path, options),
            (writes ? SQLite::OPEN_READWRITE : SQLite::OPEN_READONLY) | SQLite::OPEN_URI |
                SQLite::OPEN_NOMUTEX,
            busyTimeoutMs, storeVfs());
        std::unique_ptr<StoreConnection> connection(new StoreConnection(std::move(database)));
        connection->configure(access);
        return connection;
    } catch (const SQLite::Exception& exception) {
        return std::unexpected(StoreFailure::from(exception));
    }
}

StoreConnection::StoreConnection(std::unique_ptr<SQLite::Database> database)
    : m_database(std::move(database))
{}

StoreConnection::~StoreConnection() = default;

void StoreConnection::configure(Access access)
{
    sqlite3* handle = m_database->getHandle();
    sqlite3_extended_result_codes(handle, 1);
    // A store that turns out to be damaged keeps its write-ahead log.
    sqlite3_db_config(handle, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    // Reading a file whose checkpoint was cut short needs a pragma that this would forbid.
    if (access != Access::Immutable)
        sqlite3_db_config(handle, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    m_database->exec("PRAGMA cell_size_check = ON");
    m_database->exec("PRAGMA temp_store = MEMORY");
    m_database->exec("PRAGMA cache_size = -8000");
    if (access != Access::ReadWrite)
        return;
    m_database->exec("PRAGMA synchronous = FULL");
    m_database->exec("PRAGMA secure_delete = FAST");
    const auto countPages = [](void* self, sqlite3*, const char*, int pages) {
        static_cast<StoreConnection*>(self)->m_walPages = pages;
        return SQLITE_OK;
    };
    // The write-ahead log is checkpointed by us, not by SQLite's own hook, which this one replaces.
    sqlite3_wal_hook(handle, countPages, this);
}

StoreFailure StoreConnection::failure(const SQLite::Exception& exception)
{
    StoreFailure failure = StoreFailure::from(exception);
    const int kind = failure.code & 0xff;
    if (kind == SQLITE_IOERR || kind == SQLITE_CANTOPEN)
        failure.systemError = sqlite3_system_errno(m_database->getHandle());
    return failure;
}

void StoreConnection::rollBack()
{
    sqlite3* handle = m_database->getHandle();
    if (!sqlite3_get_autocommit(handle))
        sqlite3_exec(handle, "ROLLBACK", nullptr, nullptr, nullptr);
}

std::expected<bool, StoreFailure> StoreConnection::checkpoint()
{
    return run([&] {
        sqlite3* handle = m_database->getHandle();
        int inWal = 0;
        int copied = 0;
        const int code =
            sqlite3_wal_checkpoint_v2(handle, nullptr, SQLITE_CHECKPOINT_PASSIVE, &inWal, &copied);
        if (code != SQLITE_OK)
            throw SQLite::Exception(handle, code);
        m_walPages = inWal - copied;
        return inWal == copied;
    });
}

void StoreConnection::closeCheckpointed()
{
    sqlite3_db_config(m_database->getHandle(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 0, nullptr);
}

std::expected<QByteArray, StoreFailure> StoreConnection::walBytes()
{
    return run([&] {
        sqlite3* handle = m_database->getHandle();
        sqlite3_file* file = nullptr;
        const auto check = [&](int code) {
            if (code != SQLITE_OK)
                throw SQLite::Exception(handle, code);
        };
        check(sqlite3_file_control(handle, "main", SQLITE_FCNTL_JOURNAL_POINTER,
                                   static_cast<void*>(&file)));
        QByteArray bytes;
        if (!file || !file->pMethods)
            return bytes;
        sqlite3_int64 size = 0;
        check(file->pMethods->xFileSize(file, &size));
        bytes.resize(qsizetype(size));
        for (qsizetype at = 0; at < bytes.size(); at += walPiece) {
            const auto length = int(std::min(walPiece, bytes.size() - at));
            check(file->pMethods->xRead(file, bytes.data() + at, length, at));
        }
        return bytes;
    });
}

bool StoreConnection::isReadOnly() const
{
    return sqlite3_db_readonly(m_database->getHandle(), "main") == 1;
}

} // namespace orvane
