// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/store/StoreCheck.h"

#include "core/store/RecordColumns.h"
#include "core/store/StoreConnection.h"
#include "core/store/StoreReader.h"
#include "core/store/StoreStatement.h"

#include <QCoreApplication>

#include <sqlite3.h>
#include <stop_token>
#include <thread>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

/// SQLite asks after this many of its steps whether it should stop: some tenths of a millisecond.
constexpr int stepsBetweenQuestions = 1000;

int stopWhenAsked(void* token)
{
    return static_cast<std::stop_token*>(token)->stop_requested() ? 1 : 0;
}

// SQLite's own check of every page, its tree and its free list.
void checkPages(SQLite::Database& database)
{
    StoreStatement statement(database, "PRAGMA quick_check(1)");
    if (statement.step() && statement.value(0).bytes() != QByteArrayView("ok"))
        throwDamage(QString::fromUtf8(statement.value(0).bytes()));
}

// Bodies and rich bytes, which opening doesn't read: each that a note counts on is there, is as
// long as the note says, and matches its checksum.
void checkBytes(SQLite::Database& database, qint64 storeKey)
{
    StoreStatement statement(database, "SELECT row, checksum, bytes FROM OrvaneNoteBytes "
                                       "WHERE row >= 0"); // a damaged image is one that isn't shown
    while (statement.step()) {
        const qint64 row = statement.value(0).integer();
        const StoreValue checksum = statement.value(1);
        StoreChecksum sum(storeKey);
        sum.addInteger(row);
        sum.addBytes(statement.value(2).bytes());
        if (!checksum.isNull() && sum.value() != checksum.integer())
            throwDamage(u"the bytes in row %1 don't match their checksum"_s.arg(row));
    }
    const std::string query =
        "WITH expected(row, length) AS (" + expectedBytesStatement() +
        ") SELECT expected.row FROM expected LEFT JOIN OrvaneNoteBytes AS found "
        "ON found.row = expected.row WHERE expected.length > 0 AND "
        "length(found.bytes) IS NOT expected.length LIMIT 1";
    StoreStatement missing(database, query.c_str());
    if (missing.step())
        throwDamage(
            u"the bytes in row %1 are missing or cut short"_s.arg(missing.value(0).integer()));
}

StoreCheckResult check(const QString& path, std::stop_token stop)
{
    auto connection = StoreConnection::open(path, StoreConnection::Access::ReadOnly);
    if (!connection)
        return {};
    SQLite::Database& database = (*connection)->database();
    sqlite3_progress_handler(database.getHandle(), stepsBetweenQuestions, stopWhenAsked, &stop);
    const auto done = (*connection)->run([&] {
        // One view of the store for all of the check, so that it agrees with itself.
        database.exec("BEGIN");
        const StoreState state = readStoreState(database);
        checkPages(database);
        checkBytes(database, state.storeKey);
    });
    sqlite3_progress_handler(database.getHandle(), 0, nullptr, nullptr);
    if (done)
        return {StoreCheckResult::Outcome::Sound, {}};
    if (done.error().isDamage())
        return {StoreCheckResult::Outcome::Damaged, done.error().detail};
    return {};
}

} // namespace

struct StoreCheck::Private {
    /// Cleared on the thread that wants the result, which alone looks at it.
    std::shared_ptr<bool> isWanted = std::make_shared<bool>(true);
    std::jthread thread;
};

StoreCheck::StoreCheck(const QString& storePath, Done done)
    : m_private(std::make_unique<Private>())
{
    m_private->thread = std::jthread(
        [isWanted = m_private->isWanted, storePath, done = std::move(done)](std::stop_token stop) {
            const StoreCheckResult result = check(storePath, std::move(stop));
            // Through the application, so that the one who is told may destroy this object.
            QMetaObject::invokeMethod(
                QCoreApplication::instance(),
                [isWanted, done, result] {
                    if (*isWanted)
                        done(result);
                },
                Qt::QueuedConnection);
        });
}

StoreCheck::~StoreCheck()
{
    *m_private->isWanted = false;
}

} // namespace orvane
