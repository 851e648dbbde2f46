// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/store/PersistenceController.h"

#include "core/StoreFixture.h"
#include "core/store/StoreChecksum.h"
#include "core/store/StoreSchema.h"
#include "core/store/StoreStatement.h"

#include <SQLiteCpp/Database.h>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

NoteRecord fullNote(int number, const QUuid& container)
{
    NoteRecord note = makeNote(number, container);
    note.body = u"Line \u2028 \U0001F4DA end\n"_s + QChar(0) + u"after a zero"_s;
    note.tags = {u"one"_s, u"\"two\""_s};
    note.bodyRTF = Blob(QByteArray("{\\rtf1 ") + QByteArray(5000, 'r'));
    note.richContentPayload = Blob(QByteArray(9000, '\0'));
    note.editorTypingAttributesPayload = Blob(QByteArray("t"));
    note.titleRTF = Blob(QByteArray("{\\rtf1 title}"));
    note.iconName = u"sf:doc"_s;
    note.embeddedFileType = u"com.adobe.pdf"_s;
    note.embeddedFileAssetID = QString(u""_s);
    note.embeddedFilePayload = Blob(QByteArray());
    note.isPinned = true;
    note.shapesPayload = Blob(QByteArray("[]"));
    note.pdfSourceURLString = u"orvaneworkspace://pdf/x"_s;
    return note;
}

FolderRecord fullFolder(int number)
{
    FolderRecord folder = makeFolder(number, idOf(7));
    folder.iconName = u"star"_s;
    folder.titleRTF = Blob(QByteArray("{\\rtf1 folder}"));
    folder.tags = {u"tag"_s};
    folder.isPinned = true;
    return folder;
}

TEST_F(StoreFixture, GivesBackWhatWasSavedFromOneFileAtRest)
{
    NotebookSnapshot saved;
    saved.folders = {fullFolder(1), makeFolder(2)};
    saved.notes = {fullNote(13, idOf(1)), makeNote(12, idOf(2)), makeNote(11, idOf(9))};
    saved.binderLayout = BinderLayoutSnapshot{
        {{std::nullopt, {idOf(1), idOf(2)}}, {idOf(2), {}}}, {{idOf(1), {idOf(13)}}}, {idOf(2)}};
    {
        const auto controller = open();
        EXPECT_FALSE(controller->hadExistingPersistentStore());
        EXPECT_EQ(controller->load(), NotebookSnapshot());
        ASSERT_TRUE(controller->save(saved));
    }
    EXPECT_EQ(files(), QStringList{u"OrvaneWorkspace.store"_s});
    const auto controller = open();
    EXPECT_TRUE(controller->hadExistingPersistentStore());
    EXPECT_FALSE(controller->persistentStoreRecovery());
    const NotebookSnapshot loaded = controller->load();
    EXPECT_FALSE(loaded.notes.first()->bodyRTF->isLoaded());
    EXPECT_EQ(loaded, saved);
}

// Bytes that were not read yet keep their value for whoever holds them.
TEST_F(StoreFixture, HeldBytesSurviveWhatHappensToTheirRow)
{
    const auto bytes = [](char c) {
        return Blob(QByteArray(3000, c));
    };
    NotebookSnapshot saved{{makeFolder(1)}, {}, std::nullopt};
    for (int i = 10; i < 15; ++i) {
        NoteRecord note = makeNote(i, idOf(1));
        note.bodyRTF = bytes(char('a' + i));
        saved.notes.append(note);
    }
    ASSERT_TRUE(open()->save(saved));
    auto controller = open();
    NotebookSnapshot memory = controller->load();
    const auto held = memory.notes; // newest first: 14, 13, 12, 11, 10
    const Blob copiedOnly = *memory.notes.at(4)->bodyRTF;

    memory.notes[0] = memory.notes[0].with([&](NoteRecord& note) { note.bodyRTF = bytes('x'); });
    memory.notes[1] = memory.notes[1].with([](NoteRecord& note) { note.bodyRTF.reset(); });
    ASSERT_TRUE(controller->saveNote(memory.notes[0]));
    ASSERT_TRUE(controller->saveNote(memory.notes[1]));
    memory.notes[3] = memory.notes[3].with([](NoteRecord& note) { note.title = u"new"_s; });
    memory.notes.removeAt(2);
    ASSERT_TRUE(controller->save(memory));
    EXPECT_FALSE(memory.notes[2]->bodyRTF->isLoaded()) << "a title's change reads no bytes";
    EXPECT_EQ(held[0]->bodyRTF->readOrNothing(), QByteArray(3000, char('a' + 14)));
    EXPECT_EQ(held[1]->bodyRTF->readOrNothing(), QByteArray(3000, char('a' + 13)));
    EXPECT_EQ(held[2]->bodyRTF->readOrNothing(), QByteArray(3000, char('a' + 12)));

    controller.reset();
    EXPECT_FALSE(copiedOnly.read());
    EXPECT_FALSE(held[3]->bodyRTF->read());
    const NotebookSnapshot loaded = open()->load();
    EXPECT_EQ(loaded.notes.size(), 4);
}

TEST_F(StoreFixture, WritesOnlyWhatDiffers)
{
    NotebookSnapshot memory{{makeFolder(1)}, {}, BinderLayoutSnapshot{}};
    QList<QUuid> order;
    for (int i = 0; i < 3000; ++i) {
        NoteRecord note = makeNote(100 + i, idOf(1));
        note.richContentPayload = Blob(QByteArray(2000, 'p'));
        if (i == 7)
            note.embeddedFilePayload = Blob(QByteArray(3'000'000, 'f'));
        memory.notes.append(note);
        order.append(note.id);
    }
    memory.binderLayout->noteOrderEntries = {{idOf(1), order}};
    auto controller = open();
    ASSERT_TRUE(controller->save(memory));
    controller.reset();
    controller = open();
    memory = controller->load();
    auto grown = [&, before = qint64(0)]() mutable {
        const qint64 now = QFileInfo(wal()).size();
        return now - std::exchange(before, now);
    };
    grown();

    EXPECT_TRUE(controller->save(memory));
    EXPECT_EQ(grown(), 0) << "nothing changed";
    const auto pinned = memory.notes.at(2992).with([](NoteRecord& note) { note.isPinned = true; });
    ASSERT_EQ(pinned->embeddedFilePayload->size(), 3'000'000);
    memory.notes[2992] = pinned;
    EXPECT_TRUE(controller->saveNote(pinned));
    EXPECT_LT(grown(), 5 * 4200) << "one row, without its bytes";
    memory.notes.insert(1500, makeNote(9000, idOf(1)));
    order.insert(700, idOf(9000));
    memory.binderLayout->noteOrderEntries = {{idOf(1), order}};
    EXPECT_TRUE(controller->save(memory));
    EXPECT_LT(grown(), 12 * 4200) << "one row, and its part of the order";
}

TEST_F(StoreFixture, ASaveThatFailsGoesOutWithTheNext)
{
    auto controller = open();
    const Shared<NoteRecord> first = makeNote(1, idOf(9));
    NoteRecord big = makeNote(2, idOf(9));
    big.bodyRTF = Blob(QByteArray(100'000, 'b'));
    ASSERT_TRUE(controller->save({{makeFolder(9)}, {first}, BinderLayoutSnapshot{}}));
    {
        const FullDisk full(QFileInfo(wal()).size() + 4096);
        EXPECT_FALSE(controller->saveNote(big));
        EXPECT_FALSE(controller->saveLayout({{}, {}, {idOf(9)}}));
    }
    ASSERT_TRUE(controller->saveNote(first));
    {
        const FullDisk full(QFileInfo(wal()).size());
        EXPECT_FALSE(controller->saveNote(makeNote(3, idOf(9))));
    }
    controller.reset(); // with the last attempt
    const NotebookSnapshot loaded = open()->load();
    EXPECT_EQ(loaded.notes.size(), 3);
    EXPECT_EQ(loaded.binderLayout->expandedFolderIDs, QList{idOf(9)});
}

TEST_F(StoreFixture, OptionalValuesThatCantBeReadTakeTheirDefault)
{
    ASSERT_TRUE(open()->save({{makeFolder(1)}, {makeNote(14, idOf(1))}, std::nullopt}));
    SQLite::Database(store().toStdString(), SQLite::OPEN_READWRITE)
        .exec("UPDATE OrvaneNote SET checksum = NULL, tagsJSON = '[\"a\",1]', isPinned = 2.5;"
              "UPDATE OrvaneFolder SET checksum = NULL, parentFolderID = 'x', tagsJSON = '{'");
    const NotebookContents loaded(open()->load());
    EXPECT_EQ(loaded.folders.first().parentFolderID, std::nullopt);
    EXPECT_TRUE(loaded.notes.first().tags.isEmpty());
    EXPECT_TRUE(loaded.notes.first().isPinned);
}

TEST_F(StoreFixture, NotesWithoutAnyFolderGetAnInbox)
{
    ASSERT_TRUE(open()->save({{}, {makeNote(1, idOf(5)), makeNote(2, idOf(6))}, std::nullopt}));
    const NotebookSnapshot loaded = open()->load();
    ASSERT_EQ(loaded.folders.size(), 1);
    EXPECT_EQ(loaded.folders.first()->name, u"Inbox"_s);
    EXPECT_EQ(loaded.folders.first()->createdAt, clock.now());
    for (const auto& note : loaded.notes)
        EXPECT_EQ(note->folderID, loaded.folders.first()->id);
}

TEST(StorePath, PrefersTheCurrentName)
{
    struct Row {
        const char* name;
        QStringList files;
        QString chosen;
    };
    const Row rows[] = {
        {"nothing", {}, u"OrvaneWorkspace.store"_s},
        {"legacy write-ahead log alone", {u"OrvaneNotes.store-wal"_s}, u"OrvaneNotes.store"_s},
        {"both",
         {u"OrvaneNotes.store"_s, u"OrvaneWorkspace.store-shm"_s},
         u"OrvaneWorkspace.store"_s},
    };
    for (const Row& row : rows) {
        const QTemporaryDir folder;
        for (const QString& file : row.files)
            writeBytes(folder.filePath(file), "x");
        EXPECT_EQ(storePath(folder.path()), folder.filePath(row.chosen)) << row.name;
    }
}

TEST_F(StoreFixture, TakesOverALegacyNotebookOnce)
{
    const auto note = [](int number) {
        return uR"({"id":"00000007-0000-4000-8000-00000000000%1","folderID":"00000007-0000-4000-8000-000000000009",
        "title":"T","body":"B","createdAt":"2020-01-01T00:00:00Z","updatedAt":"2020-01-01T00:00:00Z"})"_s
            .arg(number)
            .toUtf8();
    };
    struct Row {
        const char* name;
        QByteArray json;
        bool storeHasFolder;
        qsizetype notes;
        bool fileStays;
    };
    const Row rows[] = {
        {"notes without folders", R"({"folders":[],"notes":[)" + note(1) + "," + note(2) + "]}",
         false, 2, false},
        {"store has a folder", R"({"folders":[],"notes":[)" + note(1) + "]}", true, 0, true},
        {"nothing in it", R"({"folders":[],"notes":[]})", false, 0, true},
        {"not JSON", "words", false, 0, true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const QTemporaryDir support;
        EXPECT_FALSE(PersistenceController::hasLegacyNotebook(support.path()));
        const QString legacy = support.filePath(u"OrvaneNotes"_s);
        ASSERT_TRUE(QDir().mkpath(legacy));
        if (row.storeHasFolder) {
            ASSERT_TRUE((*PersistenceController::open(legacy, clock))
                            ->save({{makeFolder(1)}, {}, std::nullopt}));
        }
        writeBytes(legacy + u"/notebook.json"_s, row.json);
        EXPECT_TRUE(PersistenceController::hasLegacyNotebook(support.path()));
        for (int time = 0; time < 2; ++time) {
            const auto shared = PersistenceController::legacyShared(support.path(), clock);
            ASSERT_TRUE(shared);
            const NotebookSnapshot loaded = (*shared)->load();
            EXPECT_EQ(loaded.notes.size(), row.notes);
            EXPECT_EQ(loaded.folders.size(), row.notes || row.storeHasFolder ? 1 : 0);
        }
        EXPECT_EQ(QFile::exists(legacy + u"/notebook.json"_s), row.fileStays);
        EXPECT_EQ(QFile::exists(legacy + u"/notebook.pre_coredata.json"_s), !row.fileStays);
    }
}

// A schema of the future, made of the present one and two steps, opens a file of the present one.
TEST_F(StoreFixture, BringsAnEarlierSchemaForward)
{
    ASSERT_TRUE(open()->save({{makeFolder(1)}, {makeNote(2, idOf(1))}, std::nullopt}));
    const int now = StoreSchema::current().version;
    const std::string tables = StoreSchema::current().tables;
    std::string later = tables;
    later.insert(later.rfind(')'), ", mood TEXT");
    const StoreMigration addColumn{now, tables, [](SQLite::Database& database) {
                                       database.exec("ALTER TABLE OrvaneNote ADD COLUMN mood TEXT");
                                   }};
    const StoreMigration rename{now + 1, later, [](SQLite::Database& database) {
                                    database.exec("UPDATE OrvaneNote SET title = 'moved', "
                                                  "checksum = NULL");
                                }};
    const StoreMigration failing{now + 1, later, [](SQLite::Database& database) {
                                     database.exec("UPDATE OrvaneNote SET title = 'lost'");
                                     database.exec("UPDATE nothing SET at = all");
                                 }};
    const StoreSchema broken{now + 2, later, {addColumn, failing}};
    const StoreSchema whole{now + 2, later, {addColumn, rename}};

    const QByteArray before = bytesOf(store());
    const auto refused = PersistenceController::open(folder, clock, {.schema = &broken});
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().code, StoreOpenError::Code::MigrationFailed);
    EXPECT_EQ(open()->load().notes.first()->title, u"Note 2"_s);

    for (int time = 0; time < 2; ++time)
        EXPECT_EQ(open({.schema = &whole})->load().notes.first()->title, u"moved"_s);
    EXPECT_EQ(SQLite::Database(store().toStdString()).execAndGet("PRAGMA user_version").getInt(),
              now + 2);
    const auto newer = PersistenceController::open(folder, clock);
    ASSERT_FALSE(newer);
    EXPECT_EQ(newer.error().code, StoreOpenError::Code::NewerSchema);
}

// The values of every row of a table with their checksum over those before it, as a program of that
// time has written them.
void sumRows(SQLite::Database& database, const char* table, int columns)
{
    const qint64 key = database.execAndGet("SELECT storeKey FROM OrvaneStore").getInt64();
    const std::string select = std::string("SELECT * FROM ") + table;
    const std::string update = std::string("UPDATE ") + table + " SET checksum = ? WHERE row = ?";
    std::vector<std::pair<qint64, qint64>> sums;
    StoreStatement rows(database, select.c_str());
    while (rows.step()) {
        StoreChecksum sum(key);
        for (int column = 0; column < columns; ++column) {
            if (std::string_view(table) != "OrvaneNoteBytes" || column != 1)
                rows.value(column).addTo(sum);
        }
        sums.emplace_back(rows.value(0).integer(), sum.value());
    }
    StoreStatement write(database, update.c_str());
    for (const auto& [row, sum] : sums) {
        write.bindInteger(1, sum);
        write.bindInteger(2, row);
        write.run();
    }
}

// What earlier versions of the program wrote. In schema 1 a body is a text in the row of its note;
// in schema 2 there is room for eight values beside a note, and no first line.
TEST_F(StoreFixture, OpensWhatEarlierVersionsWrote)
{
    NoteRecord plain = makeNote(2, idOf(1));
    plain.body = u"Two lines,\n\U0001F4DA and \u00e9"_s;
    NoteRecord empty = makeNote(3, idOf(1));
    empty.body = {};
    NoteRecord rich = makeNote(4, idOf(1));
    rich.richContentPayload = Blob(QByteArray(5000, 'r'));
    NoteRecord untitled = makeNote(5, idOf(1));
    untitled.title = u" "_s;
    untitled.body = u"\n\n Ebb at six \nand then"_s;
    const NotebookSnapshot written{{makeFolder(1)}, {untitled, rich, empty, plain}, std::nullopt};
    const std::string beforeBody =
        "id TEXT, folderID TEXT, title TEXT, createdAt INTEGER, updatedAt INTEGER, tagsJSON TEXT, "
        "iconName TEXT, embeddedFileType TEXT, embeddedFileAssetID TEXT, isPinned INTEGER, "
        "pdfSourceURLString TEXT, titleRTF BLOB, bodyRTF INTEGER, richContentPayload INTEGER, "
        "editorTypingAttributesPayload INTEGER, embeddedFilePayload INTEGER, shapesPayload INTEGER";
    for (const int schema : {1, 2, 3, 4}) {
        SCOPED_TRACE(schema);
        QFile::remove(store());
        ASSERT_TRUE(open()->save(written));
        {
            SQLite::Database database(store().toStdString(), SQLite::OPEN_READWRITE);
            if (schema > 2)
                database.exec("ALTER TABLE OrvaneNote DROP COLUMN images");
            if (schema == 4)
                sumRows(database, "OrvaneNote", 23);
            if (schema == 3) {
                database.exec("ALTER TABLE OrvaneNote DROP COLUMN editorProfile;"
                              "ALTER TABLE OrvaneNote DROP COLUMN trashedAt;"
                              "ALTER TABLE OrvaneNote DROP COLUMN trashedFrom");
                sumRows(database, "OrvaneNote", 20);
            }
            if (schema < 3) {
                std::string names;
                for (const char* column :
                     {"id", "folderID", "title", "createdAt", "updatedAt", "tagsJSON", "iconName",
                      "embeddedFileType", "embeddedFileAssetID", "isPinned", "pdfSourceURLString",
                      "titleRTF", "bodyRTF", "richContentPayload", "editorTypingAttributesPayload",
                      "embeddedFilePayload", "shapesPayload", "body"})
                    names += std::string(", ") + column;
                database.exec("ALTER TABLE OrvaneNote RENAME TO Other;"
                              "CREATE TABLE OrvaneNote (row INTEGER PRIMARY KEY, " +
                              beforeBody + ", body " + (schema == 1 ? "TEXT" : "INTEGER") +
                              ", checksum INTEGER); INSERT INTO OrvaneNote SELECT row" + names +
                              ", NULL FROM Other; DROP TABLE Other;"
                              "UPDATE OrvaneNoteBytes SET row = row / 64 * 8 + row % 64;");
                if (schema == 1)
                    database.exec(
                        "UPDATE OrvaneNote SET body = coalesce((SELECT CAST(bytes AS TEXT) "
                        "FROM OrvaneNoteBytes AS text WHERE text.row = 8 * OrvaneNote.row + "
                        "5), ''); DELETE FROM OrvaneNoteBytes WHERE row % 8 = 5;");
                sumRows(database, "OrvaneNote", 19);
                sumRows(database, "OrvaneNoteBytes", 3);
            }
            database.exec("PRAGMA user_version = " + std::to_string(schema));
        }
        for (int time = 0; time < 2; ++time) {
            const auto opened = open();
            const NotebookSnapshot loaded = opened->load();
            EXPECT_EQ(loaded.notes.at(0)->titleForList(), u"Ebb at six"_s);
            EXPECT_FALSE(loaded.notes.at(0)->body.utf8().isLoaded()) << "a list reads no text";
            EXPECT_TRUE(NotebookContents(loaded).notes == NotebookContents(written).notes);
        }
        SQLite::Database database(store().toStdString());
        EXPECT_EQ(database.execAndGet("PRAGMA user_version").getInt(),
                  StoreSchema::current().version);
        EXPECT_EQ(database.execAndGet("SELECT count(*) FROM OrvaneNoteBytes WHERE checksum IS NULL")
                      .getInt(),
                  0);
    }
}

// A store of schema 2 with damaged bytes keeps them unreadable, and a damaged row is damage.
TEST_F(StoreFixture, BringsNoDamageForwardAsSound)
{
    NoteRecord rich = makeNote(4, idOf(1));
    rich.richContentPayload = Blob(QByteArray(5000, 'r'));
    ASSERT_TRUE(open()->save({{makeFolder(1)}, {rich}, std::nullopt}));
    const auto toSchema2 = [&](const char* damage) {
        SQLite::Database database(store().toStdString(), SQLite::OPEN_READWRITE);
        database.exec("ALTER TABLE OrvaneNote DROP COLUMN images;"
                      "ALTER TABLE OrvaneNote DROP COLUMN editorProfile;"
                      "ALTER TABLE OrvaneNote DROP COLUMN trashedAt;"
                      "ALTER TABLE OrvaneNote DROP COLUMN trashedFrom;"
                      "ALTER TABLE OrvaneNote DROP COLUMN firstLine;"
                      "UPDATE OrvaneNoteBytes SET row = row / 64 * 8 + row % 64;");
        sumRows(database, "OrvaneNote", 19);
        sumRows(database, "OrvaneNoteBytes", 3);
        database.exec(damage);
        database.exec("PRAGMA user_version = 2");
    };
    toSchema2("UPDATE OrvaneNoteBytes SET bytes = zeroblob(5000) WHERE row % 8 = 1");
    {
        const auto opened = open();
        const NotebookSnapshot loaded = opened->load();
        EXPECT_FALSE(loaded.notes.first()->richContentPayload->read());
        EXPECT_EQ(loaded.notes.first()->body, rich.body);
    }
    QFile::remove(store());
    ASSERT_TRUE(open()->save({{makeFolder(1)}, {rich}, std::nullopt}));
    toSchema2("UPDATE OrvaneNote SET title = 'other'");
    const auto damaged = open();
    ASSERT_TRUE(damaged);
    EXPECT_TRUE(damaged->persistentStoreRecovery());
}

} // namespace
} // namespace orvane
