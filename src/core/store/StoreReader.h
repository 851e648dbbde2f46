// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/records/Blob.h"
#include "core/records/FolderRecord.h"
#include "core/records/NoteRecord.h"
#include "core/records/Shared.h"

#include <QHash>
#include <QList>
#include <QSet>
#include <QString>
#include <QUuid>

#include <vector>

namespace SQLite {
class Database;
}

namespace orvane {

/// The one row of "OrvaneStore": who the store is and what must be in it.
struct StoreState {
    /// A random number of this store's own; seeds its checksums.
    qint64 storeKey = 0;
    /// Even while everything is in the file, odd while the write-ahead log holds changes.
    qint64 generation = 0;
    qint64 folderCount = 0;
    qint64 noteCount = 0;
};

/// Every row of one table that is read at opening.
template <typename Record>
struct StoredRows {
    struct Item {
        qint64 order = 0;
        qint64 row = 0;
        Shared<Record> record;
    };
    /// Sorted: folders by age, notes newest change first.
    std::vector<Item> items;
    qint64 lastRow = 0;
    /// All rows of the table.
    qint64 rowCount = 0;
};

// A row that lacks a required value, or whose id is none, is given as a recovered record: with what
// can be read, without a folder where it names none, and with an id that is made from the store's
// key and the row's number. Its row isn't changed by that.
//
// Each of these throws SQLite::Exception: with SQLITE_CORRUPT when a row's checksum is wrong.
StoreState readStoreState(SQLite::Database& database);
StoredRows<FolderRecord> readFolders(SQLite::Database& database, qint64 storeKey);
/// Bodies and rich bytes become unread blobs of `source`.
StoredRows<NoteRecord> readNotes(SQLite::Database& database, qint64 storeKey,
                                 const SharedBlobSource& source);

/// The rows in which these notes stand, of those that are there.
QHash<QUuid, qint64> findNotes(SQLite::Database& database, const QSet<QUuid>& ids);
/// The notes in these rows, in their order, where they are there.
QList<Shared<NoteRecord>> readNotes(SQLite::Database& database, qint64 storeKey,
                                    const SharedBlobSource& source, const QList<qint64>& rows);

/// The first bytes, at most `size`, of the texts of these notes, by the number of their rows.
QHash<qint64, QByteArray> readBeginnings(SQLite::Database& database, const QList<qint64>& rows,
                                         qsizetype size);

} // namespace orvane
