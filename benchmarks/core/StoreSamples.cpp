// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/StoreSamples.h"

#include <QRandomGenerator>

#include <sqlite3.h>

namespace orvane::bench {

using namespace Qt::StringLiterals;

namespace {

constexpr int notesPerFolder = 50;

[[noreturn]] void stop(const QString& what)
{
    qFatal("%ls", qUtf16Printable(what));
}

QUuid randomId(QRandomGenerator& random)
{
    quint32 words[4];
    random.fillRange(words);
    return QUuid::fromRfc4122(QByteArrayView(reinterpret_cast<const char*>(words), sizeof words));
}

QByteArray text(int size, int number)
{
    QByteArray text;
    text.reserve(size + 64);
    while (text.size() < size)
        text += "Paragraph " + QByteArray::number(number) + " tells of weather, and of the sea.\n";
    text.truncate(size);
    return text;
}

} // namespace

void makeSampleStore(const QString& dataFolder, const SampleSizes& sizes)
{
    QRandomGenerator random(7);
    NotebookSnapshot snapshot;
    BinderLayoutSnapshot layout;
    BinderFolderOrderEntry top;
    for (int i = 0; i < sizes.notes; ++i) {
        if (i % notesPerFolder == 0) {
            FolderRecord folder;
            folder.id = randomId(random);
            folder.name = u"Folder %1"_s.arg(i / notesPerFolder);
            folder.createdAt = {1'700'000'000'000 + i};
            top.childFolderIDs.append(folder.id);
            layout.noteOrderEntries.append({folder.id, {}});
            snapshot.folders.append(folder);
        }
        NoteRecord note;
        note.id = randomId(random);
        note.folderID = snapshot.folders.last()->id;
        note.title = u"Note number %1"_s.arg(i);
        note.body = QString::fromLatin1(text(sizes.body, i));
        note.createdAt = {1'700'000'000'000 + i};
        note.updatedAt = {1'750'000'000'000 + qint64(random.bounded(1'000'000'000))};
        note.tags = {u"draft"_s, u"chapter"_s};
        if (sizes.rtf > 0)
            note.bodyRTF = Blob(text(sizes.rtf, i));
        if (sizes.payload > 0)
            note.richContentPayload = Blob(text(sizes.payload, i));
        layout.noteOrderEntries.last().noteIDs.append(note.id);
        snapshot.notes.append(std::move(note));
    }
    layout.folderOrderEntries.append(top);
    snapshot.binderLayout = layout;
    SystemClock clock;
    const auto controller = openSample(dataFolder, clock);
    if (const auto saved = controller->save(snapshot); !saved)
        stop(saved.error().text());
}

std::unique_ptr<PersistenceController> openSample(const QString& dataFolder, const Clock& clock)
{
    auto opened = PersistenceController::open(dataFolder, clock);
    if (!opened)
        stop(opened.error().text());
    return *std::move(opened);
}

PlainSQLite::PlainSQLite(const QString& path)
{
    if (sqlite3_open(path.toUtf8().constData(), &m_database) != SQLITE_OK)
        stop(path);
    run("PRAGMA synchronous = FULL");
    run("PRAGMA secure_delete = FAST");
    run("PRAGMA cache_size = -8000");
}

PlainSQLite::~PlainSQLite()
{
    sqlite3_close(m_database);
}

void PlainSQLite::run(const char* sql)
{
    if (sqlite3_exec(m_database, sql, nullptr, nullptr, nullptr) != SQLITE_OK)
        stop(QString::fromUtf8(sqlite3_errmsg(m_database)));
}

sqlite3_stmt* PlainSQLite::prepare(const char* sql)
{
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(m_database, sql, -1, &statement, nullptr) != SQLITE_OK)
        stop(QString::fromUtf8(sqlite3_errmsg(m_database)));
    return statement;
}

PlainStatement::PlainStatement(PlainSQLite& database, const char* sql)
    : m_statement(database.prepare(sql))
{}

PlainStatement::~PlainStatement()
{
    sqlite3_finalize(m_statement);
}

void PlainStatement::bind(int parameter, qint64 value)
{
    sqlite3_bind_int64(m_statement, parameter, value);
}

void PlainStatement::step()
{
    const int code = sqlite3_step(m_statement);
    if (sqlite3_reset(m_statement) != SQLITE_OK || code != SQLITE_DONE)
        stop(u"a plain statement failed"_s);
}

} // namespace orvane::bench
