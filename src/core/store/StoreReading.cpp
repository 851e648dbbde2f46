// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/store/StoreReading.h"

#include "core/records/RecordFields.h"
#include "core/store/ColumnText.h"
#include "core/store/StoreConnection.h"
#include "core/store/StoreReader.h"
#include "core/store/StoreStatement.h"

#include <sqlite3.h>

namespace orvane {

namespace {

/// SQLite asks after this many of its steps whether it should stop: some tenths of a millisecond.
constexpr int stepsBetweenQuestions = 1000;

int stopWhenAsked(void* token)
{
    return static_cast<std::stop_token*>(token)->stop_requested() ? 1 : 0;
}

/// One view of the store, until this goes.
class View {
public:
    explicit View(SQLite::Database& database)
        : m_handle(database.getHandle())
    {
        database.exec("BEGIN");
    }
    ~View() { sqlite3_exec(m_handle, "ROLLBACK", nullptr, nullptr, nullptr); }
    View(const View&) = delete;
    View& operator=(const View&) = delete;

private:
    sqlite3* m_handle;
};

} // namespace

StoreReading::StoreReading(std::unique_ptr<StoreConnection> connection, std::stop_token stop)
    : m_stop(std::make_unique<std::stop_token>(std::move(stop)))
    , m_connection(std::move(connection))
{
    sqlite3_progress_handler(m_connection->database().getHandle(), stepsBetweenQuestions,
                             stopWhenAsked, m_stop.get());
}

StoreReading::~StoreReading() = default;
StoreReading::StoreReading(StoreReading&&) noexcept = default;
StoreReading& StoreReading::operator=(StoreReading&&) noexcept = default;

StoreReading::Result<StoreReading> StoreReading::open(const QString& storePath,
                                                      std::stop_token stop)
{
    auto connection = StoreConnection::open(storePath, StoreConnection::Access::ReadOnly);
    if (!connection)
        return std::unexpected(connection.error().toStoreError());
    return StoreReading(*std::move(connection), std::move(stop));
}

template <typename Look>
auto StoreReading::look(Look&& look) -> Result<std::invoke_result_t<Look>>
{
    auto seen = m_connection->run([&] {
        const View view(m_connection->database());
        return look();
    });
    if (!seen)
        return std::unexpected(seen.error().toStoreError());
    return *std::move(seen);
}

StoreReading::Result<QList<StoredNote>> StoreReading::notes()
{
    return look([&] {
        QList<StoredNote> notes;
        StoreStatement rows(m_connection->database(),
                            "SELECT id, folderID, title, tagsJSON, createdAt, updatedAt, body FROM "
                            "OrvaneNote");
        while (rows.step()) {
            const auto id = uuidFromStore(rows.value(0).bytes());
            const auto folder = uuidFromStore(rows.value(1).bytes());
            if (id && folder)
                notes.append({*id,
                              *folder,
                              QString::fromUtf8(rows.value(2).bytes()),
                              tagsFromStore(rows.value(3).bytes()),
                              {rows.value(4).integer()},
                              {rows.value(5).integer()},
                              rows.value(6).integer()});
        }
        return notes;
    });
}

StoreReading::Result<int>
StoreReading::forEachBody(const std::function<Next(const QUuid&, QByteArrayView)>& visit)
{
    return look([&] {
        int damaged = 0;
        SQLite::Database& database = m_connection->database();
        const qint64 key = readStoreState(database).storeKey;
        StoreStatement notes(database, "SELECT row, id FROM OrvaneNote WHERE body > 0");
        StoreStatement text(database, "SELECT checksum, bytes FROM OrvaneNoteBytes WHERE row = ?");
        while (notes.step()) {
            const auto id = uuidFromStore(notes.value(1).bytes());
            const qint64 row = notes.value(0).integer() * bytesPerNote + placeOf(&NoteRecord::body);
            text.bindInteger(1, row);
            if (!id || !text.step()) {
                ++damaged;
                text.reset();
                continue;
            }
            const QByteArrayView utf8 = text.value(1).bytes();
            StoreChecksum sum(key);
            sum.addInteger(row);
            sum.addBytes(utf8);
            const bool isSound = text.value(0).isNull() || text.value(0).integer() == sum.value();
            const Next next = isSound ? visit(*id, utf8) : Next::GoOn;
            damaged += isSound ? 0 : 1;
            text.reset();
            if (next == Next::Stop)
                break;
        }
        return damaged;
    });
}

StoreReading::Result<QByteArray> StoreReading::image(const QByteArray& hash)
{
    return look([&] {
        SQLite::Database& database = m_connection->database();
        const qint64 row = imageRow(hash);
        StoreStatement found(database, "SELECT checksum, bytes FROM OrvaneNoteBytes WHERE row = ?");
        found.bindInteger(1, row);
        if (!found.step())
            throwDamage(QStringLiteral("an image is missing from the store"));
        QByteArray bytes = found.value(1).bytes().toByteArray();
        StoreChecksum sum(readStoreState(database).storeKey);
        sum.addInteger(row);
        sum.addBytes(bytes);
        if (!found.value(0).isNull() && found.value(0).integer() != sum.value())
            throwDamage(QStringLiteral("an image doesn't match its checksum"));
        return bytes;
    });
}

StoreReading::Result<QHash<qint64, QByteArray>> StoreReading::beginnings(const QList<qint64>& rows,
                                                                         qsizetype size)
{
    return look([&] { return readBeginnings(m_connection->database(), rows, size); });
}

} // namespace orvane
