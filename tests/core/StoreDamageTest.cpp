// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/StoreFixture.h"
#include "core/records/RecordFields.h"
#include "core/store/ProjectLock.h"
#include "core/store/StoreReader.h"

#include <QCoreApplication>
#include <QRandomGenerator>

#include <SQLiteCpp/Database.h>
#include <functional>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

/// What opening a damaged project ends in.
enum class State {
    Opened,    ///< with everything
    Poorer,    ///< with every record; the Binder's order may have lost something
    Before,    ///< with everything up to the last checkpoint of the write-ahead log
    LastLost,  ///< with everything but the last commit
    Protected, ///< files moved aside, marker written, an empty store in their place
    Refused,   ///< an error; nothing was touched
};

void PrintTo(State state, std::ostream* out)
{
    const char* const names[] = {"Opened", "Poorer", "Before", "LastLost", "Protected", "Refused"};
    *out << names[int(state)];
}

NotebookSnapshot sample(int notes)
{
    NotebookSnapshot snapshot{{makeFolder(1), makeFolder(2)}, {}, BinderLayoutSnapshot{}};
    QList<QUuid> order;
    for (int i = 0; i < notes; ++i) {
        NoteRecord note = makeNote(100 + i, idOf(1 + i % 2));
        note.body = u"Words of note %1. "_s.arg(i).repeated(20);
        note.bodyRTF = Blob(QByteArray(3000, char('a' + i % 26)));
        if (i % 3 == 0)
            note.shapesPayload = Blob(QByteArray(200, 's'));
        order.append(note.id);
        snapshot.notes.append(note);
    }
    snapshot.binderLayout = {{{std::nullopt, {idOf(1), idOf(2)}}}, {{idOf(1), order}}, {idOf(2)}};
    return snapshot;
}

class StoreDamage : public StoreFixture {
protected:
    /// The project at rest, and what is in it.
    QByteArray atRest;
    NotebookContents contents;
    /// The project as a crash left it, one commit and eight commits after it was at rest.
    QByteArray crashedStore;
    QByteArray crashedWal;
    NotebookContents crashedContents;
    NotebookContents beforeLastCommit;

    void SetUp() override
    {
        NotebookSnapshot snapshot = sample(24);
        {
            const auto controller = open();
            // Leaves free pages behind.
            ASSERT_TRUE(controller->save(sample(60)));
            ASSERT_TRUE(controller->save(snapshot));
        }
        atRest = bytesOf(store());
        contents = NotebookContents(snapshot);
        const auto controller = open();
        snapshot = controller->load();
        for (int i = 0; i < 8; ++i) {
            beforeLastCommit = NotebookContents(snapshot);
            const auto note = snapshot.notes.at(i).with([&](NoteRecord& record) {
                record.title = u"Changed %1"_s.arg(i);
                record.bodyRTF = Blob(QByteArray(5000, 'z'));
            });
            snapshot.notes[i] = note;
            ASSERT_TRUE(controller->saveNote(note));
        }
        crashedContents = NotebookContents(snapshot);
        for (const auto& note : snapshot.notes)
            forEachBytes(*note, [](int, const Blob* bytes) {
                if (bytes)
                    static_cast<void>(bytes->read());
            });
        crashedStore = bytesOf(store());
        crashedWal = bytesOf(wal());
        ASSERT_GT(crashedWal.size(), 8 * 4096);
    }

    void clearFolder()
    {
        QDir(folder).removeRecursively();
        QDir().mkpath(folder);
    }
    void putAtRest()
    {
        clearFolder();
        writeBytes(store(), atRest);
    }
    void putCrashed()
    {
        clearFolder();
        writeBytes(store(), crashedStore);
        writeBytes(wal(), crashedWal);
    }
    void execute(const char* sql)
    {
        SQLite::Database(store().toStdString(), SQLite::OPEN_READWRITE).exec(sql);
    }
    void flip(const QString& path, qsizetype byte, int bit = 3)
    {
        QByteArray bytes = bytesOf(path);
        bytes[byte] = char(bytes[byte] ^ (1 << bit));
        writeBytes(path, bytes);
    }

    /// Opens the project and holds what it ends in against `before`, the files as they were.
    State outcome(const NotebookContents& whole)
    {
        const auto before = storeBytes(store());
        const auto opened = PersistenceController::open(folder, clock);
        if (!opened) {
            EXPECT_TRUE(storeBytes(store()) == before) << "a refused store is left alone";
            EXPECT_FALSE(PersistentStoreRecovery::read(folder));
            refusal = opened.error();
            return State::Refused;
        }
        NotebookSnapshot loaded = (*opened)->load();
        if (const auto& recovery = (*opened)->persistentStoreRecovery()) {
            EXPECT_EQ(PersistentStoreRecovery::read(folder), recovery);
            const QString backup = recovery->backupDirectoryURL.toLocalFile();
            const auto kept = storeBytes(backup + u'/' + QFileInfo(store()).fileName());
            for (auto file = before.cbegin(); file != before.cend(); ++file)
                EXPECT_TRUE(kept.value(file.key()) == *file) << "the original bytes are kept";
            EXPECT_TRUE(loaded == NotebookSnapshot());
            EXPECT_FALSE(recovery->errorDescription.isEmpty());
            EXPECT_TRUE((*opened)->save(sample(1)));
            return State::Protected;
        }
        NotebookContents found(loaded);
        if (found == whole)
            return State::Opened;
        if (found == contents)
            return State::Before;
        if (found == beforeLastCommit)
            return State::LastLost;
        EXPECT_TRUE(found.notes == whole.notes);
        EXPECT_TRUE(found.folders == whole.folders);
        return State::Poorer;
    }
    StoreOpenError refusal;
};

TEST_F(StoreDamage, EndsInANamedState)
{
    const qsizetype frame = 24 + 4096;
    struct Row {
        const char* name;
        bool crashed;
        std::function<void()> damage;
        State state;
    };
    const Row rows[] = {
        {"at rest, undamaged", false, [] {}, State::Opened},
        {"after a crash, undamaged", true, [] {}, State::Opened},
        {"rewritten by another program", false,
         [&] { execute("PRAGMA journal_mode = DELETE; VACUUM"); }, State::Opened},
        {"store cut to half", false, [&] { writeBytes(store(), atRest.first(atRest.size() / 2)); },
         State::Protected},
        {"store without its last page", false, [&] { writeBytes(store(), atRest.chopped(4096)); },
         State::Protected},
        {"store cut inside its header", false, [&] { writeBytes(store(), atRest.first(50)); },
         State::Protected},
        {"store of zero bytes", false, [&] { writeBytes(store(), {}); }, State::Protected},
        {"store of zeros", false, [&] { writeBytes(store(), QByteArray(atRest.size(), '\0')); },
         State::Protected},
        {"not a database", false, [&] { writeBytes(store(), "Dear diary,\n"); }, State::Protected},
        {"a folder in the store's place", false,
         [&] {
             QFile::remove(store());
             QDir().mkpath(store());
         },
         State::Protected},
        {"another program's database", false, [&] { execute("PRAGMA application_id = 1"); },
         State::Protected},
        {"a table is missing", false, [&] { execute("DROP TABLE OrvaneNote"); }, State::Protected},
        {"the table of bytes is missing", false, [&] { execute("DROP TABLE OrvaneNoteBytes"); },
         State::Protected},
        {"a note is missing", false, [&] { execute("DELETE FROM OrvaneNote WHERE row = 9"); },
         State::Protected},
        {"all rows are missing", false,
         [&] { execute("DELETE FROM OrvaneNote; DELETE FROM OrvaneFolder"); }, State::Protected},
        {"a note stands twice", false,
         [&] {
             execute("UPDATE OrvaneNote SET checksum = NULL, "
                     "id = (SELECT id FROM OrvaneNote WHERE row = 9) WHERE row = 8");
         },
         State::Protected},
        {"another word in a title", false,
         [&] { execute("UPDATE OrvaneNote SET title = 'Wards' || title WHERE row = 9"); },
         State::Protected},
        {"two notes exchanged their rows", false,
         [&] {
             execute("UPDATE OrvaneNote SET row = -row WHERE row IN (8, 9);"
                     "UPDATE OrvaneNote SET row = 17 + row WHERE row < 0");
         },
         State::Protected},
        {"row main is unreadable", false,
         [&] {
             execute("UPDATE OrvaneNotebookMeta SET binderLayoutJSON = x'7b' WHERE id = 'main'");
         },
         State::Poorer},
        {"one order is unreadable", false,
         [&] { execute("UPDATE OrvaneNotebookMeta SET id = 'notes/x/0' WHERE id LIKE 'notes/%'"); },
         State::Poorer},
        {"newer schema", false, [&] { execute("PRAGMA user_version = 1000"); }, State::Refused},
        {"schema nought", false, [&] { execute("PRAGMA user_version = 0"); }, State::Protected},
        {"write-ahead log missing", true, [&] { QFile::remove(wal()); }, State::Before},
        {"write-ahead log of zero bytes", true, [&] { writeBytes(wal(), {}); }, State::Before},
        {"write-ahead log of zeros", true,
         [&] { writeBytes(wal(), QByteArray(crashedWal.size(), '\0')); }, State::Protected},
        {"write-ahead log's header damaged", true, [&] { flip(wal(), 17); }, State::Protected},
        {"write-ahead log's first commit damaged", true, [&] { flip(wal(), 32 + 100); },
         State::Protected},
        {"write-ahead log's last commit damaged", true,
         [&] { flip(wal(), crashedWal.size() - frame / 2); }, State::LastLost},
        {"write-ahead log cut inside its last commit", true,
         [&] { writeBytes(wal(), crashedWal.chopped(frame / 2)); }, State::LastLost},
        {"write-ahead log alone", true, [&] { QFile::remove(store()); }, State::Protected},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        row.crashed ? putCrashed() : putAtRest();
        row.damage();
        EXPECT_EQ(outcome(row.crashed ? crashedContents : contents), row.state);
        if (row.state == State::Refused) {
            EXPECT_EQ(refusal.code, StoreOpenError::Code::NewerSchema);
        }
    }
}

// A write-ahead log belongs to one store and one moment; any other is told from it before a page of
// it reaches the store.
TEST_F(StoreDamage, AWriteAheadLogOfAnotherStoreOrTimeProtectsTheProject)
{
    const QString other = temporary.filePath(u"other"_s);
    struct Row {
        const char* name;
        std::function<void()> arrange;
    };
    const Row rows[] = {
        {"of another store",
         [&] {
             putCrashed();
             const auto controller = *PersistenceController::open(other, clock);
             ASSERT_TRUE(controller->save(sample(9)));
             writeBytes(wal(), bytesOf(persistentStoreFiles(storePath(other)).at(1)));
         }},
        {"from before the store was closed",
         [&] {
             putCrashed();
             open().reset();
             writeBytes(wal(), crashedWal);
         }},
        {"from before later changes",
         [&] {
             putCrashed();
             {
                 const auto controller = open();
                 ASSERT_TRUE(controller->saveFolder(makeFolder(77)));
             }
             writeBytes(wal(), crashedWal);
         }},
        {"of a later time than the store",
         [&] {
             putCrashed();
             open().reset();
             QByteArray later;
             {
                 const auto controller = open();
                 ASSERT_TRUE(controller->saveFolder(makeFolder(77)));
                 later = bytesOf(wal());
             }
             putAtRest();
             writeBytes(wal(), later);
         }},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        QDir(other).removeRecursively();
        row.arrange();
        QFile::remove(ProjectLock::pathIn(folder));
        EXPECT_EQ(outcome(crashedContents), State::Protected);
    }
}

// Any bit of the file: what opens is whole, what is not whole is protected or refused; bytes that
// don't open with the project are found by the full check.
TEST_F(StoreDamage, OneFlippedBitIsNeverSilent)
{
    QRandomGenerator random(4711);
    std::map<State, int> states;
    int unreadable = 0;
    for (int i = 0; i < 200; ++i) {
        putAtRest();
        // A third in the first page, where the header and the schema are.
        const qsizetype end = i % 3 == 0 ? 4096 : atRest.size();
        const auto byte = qsizetype(random.bounded(int(end)));
        flip(store(), byte, int(random.bounded(8)));
        SCOPED_TRACE(byte);
        const auto before = storeBytes(store());
        auto opened = PersistenceController::open(folder, clock);
        if (!opened || (*opened)->persistentStoreRecovery()) {
            if (opened)
                opened->reset();
            putAtRest();
            writeBytes(store(), before.first());
            ++states[outcome(contents)];
            continue;
        }
        ++states[State::Opened];
        const NotebookSnapshot loaded = (*opened)->load();
        const NotebookContents found(loaded);
        ASSERT_TRUE(found.folders == contents.folders);
        ASSERT_EQ(found.notes.keys(), contents.notes.keys());
        bool readable = true;
        for (const NoteRecord& note : found.notes) {
            NoteRecord light = note;
            NoteRecord expected = contents.notes.value(note.id);
            if (light.body.isReadable())
                EXPECT_EQ(light.body, expected.body);
            else
                readable = false;
            light.body = expected.body = NoteText();
            forEachField<NoteRecord>([&]<typename T>(const RecordField<NoteRecord, T>& field) {
                if constexpr (std::is_same_v<T, std::optional<Blob>>) {
                    auto& bytes = light.*field.member;
                    if (bytes && !bytes->read())
                        readable = false;
                    else
                        EXPECT_TRUE(bytes == expected.*field.member);
                    bytes = expected.*field.member = std::nullopt;
                }
            });
            EXPECT_TRUE(light == expected);
        }
        for (auto order = found.orders.cbegin(); order != found.orders.cend(); ++order)
            EXPECT_EQ(order.value(), contents.orders.value(order.key()));
        if (readable)
            continue;
        ++unreadable;
        std::optional<StoreCheckResult> result;
        (*opened)->checkInBackground([&](const StoreCheckResult& found) { result = found; });
        while (!result)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        EXPECT_EQ(result->outcome, StoreCheckResult::Outcome::Damaged);
    }
    RecordProperty("opened", states[State::Opened]);
    RecordProperty("protected", states[State::Protected]);
    RecordProperty("refused", states[State::Refused]);
    RecordProperty("opened with unreadable bytes", unreadable);
    EXPECT_GT(states[State::Protected], 10);
    EXPECT_GT(unreadable, 10);
}

// The same for the write-ahead log that a crash left: no commit but the last is ever lost silently.
TEST_F(StoreDamage, OneFlippedBitInTheWriteAheadLogLosesAtMostTheLastCommit)
{
    QRandomGenerator random(815);
    std::map<State, int> states;
    for (int i = 0; i < 60; ++i) {
        putCrashed();
        flip(wal(), random.bounded(int(crashedWal.size())), int(random.bounded(8)));
        ++states[outcome(crashedContents)];
    }
    EXPECT_EQ(states[State::Before] + states[State::Poorer], 0);
    EXPECT_GT(states[State::Protected], 40);
}

} // namespace
} // namespace orvane
