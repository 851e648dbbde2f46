// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace

// Stores with contents that the program didn't write: rows that lack values, foreign parts of the
// schema, and what is mended by hand as the documents say.

#include "core/StoreFixture.h"
#include "core/records/RecordFields.h"
#include "core/store/StoreReader.h"

#include <QProcess>

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>
#include <functional>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

class StoreContents : public StoreFixture {
protected:
    NotebookSnapshot saved{{makeTrash(), makeFolder(1)}, {}, std::nullopt};

    void SetUp() override
    {
        for (int number = 2; number < 8; ++number) {
            NoteRecord note = makeNote(number, idOf(1));
            note.bodyRTF = Blob(QByteArray(3000, 'r'));
            saved.notes.append(note);
        }
        putSaved();
    }
    void putSaved()
    {
        QDir(folder).removeRecursively();
        ASSERT_TRUE(open()->save(saved));
    }
    void execute(const QByteArray& sql)
    {
        SQLite::Database(store().toStdString(), SQLite::OPEN_READWRITE).exec(sql.constData());
    }
    /// Every value of every row of two tables whose number is at least so.
    QStringList rowsFrom(int note, int bytes)
    {
        const SQLite::Database database(store().toStdString());
        QStringList rows;
        for (const auto& [table, first] :
             {std::pair("OrvaneNote", note), std::pair("OrvaneNoteBytes", bytes)}) {
            SQLite::Statement statement(database, std::string("SELECT * FROM ") + table +
                                                      " WHERE row >= " + std::to_string(first));
            while (statement.executeStep()) {
                QString row = QLatin1String(table);
                for (int i = 0; i < statement.getColumnCount(); ++i)
                    row += u'|' + QString::number(statement.getColumn(i).getType()) + u':' +
                           QString::fromStdString(statement.getColumn(i).getString());
                rows.append(row);
            }
        }
        return rows;
    }
};

// The last note's row is 6.
TEST_F(StoreContents, ARowThatLacksAValueIsARecoveredNoteAndStays)
{
    struct Row {
        const char* name;
        const char* change;
        std::function<bool(const NoteRecord&)> isAsExpected;
    };
    const auto whole = [](const NoteRecord& note) {
        return note.title == u"Note 7"_s && note.body == u"Body of note 7"_s;
    };
    const Row rows[] = {
        {"no title", "title = NULL",
         [](const NoteRecord& note) {
             return note.title == u"Recovered note"_s && note.body == u"Body of note 7"_s &&
                    note.id == idOf(7);
         }},
        {"a title of bytes", "title = CAST('Note 7' AS BLOB)", whole},
        {"no folder", "folderID = NULL",
         [&](const NoteRecord& note) {
             return whole(note) && note.folderID.isNull();
         }},
        {"a folder that is no id", "folderID = 'desk'",
         [&](const NoteRecord& note) {
             return whole(note) && note.folderID.isNull();
         }},
        {"no date of creation", "createdAt = NULL",
         [&](const NoteRecord& note) {
             return whole(note) && note.createdAt.msecs == 1007;
         }},
        {"no date of change", "updatedAt = 'yesterday'",
         [&](const NoteRecord& note) {
             return whole(note) && note.updatedAt.msecs == 1007;
         }},
        {"no dates", "createdAt = NULL, updatedAt = NULL",
         [&](const NoteRecord& note) {
             return whole(note) && note.updatedAt.msecs == 0;
         }},
        {"no length of the body", "body = NULL",
         [&](const NoteRecord& note) {
             return whole(note) && note.bodyRTF->size() == 3000;
         }},
        {"no id", "id = NULL", whole},
        {"an id that is none", "id = 'seven'", whole},
        {"nothing",
         "id = NULL, folderID = NULL, title = NULL, createdAt = NULL, updatedAt = NULL, "
         "body = NULL, bodyRTF = NULL",
         [](const NoteRecord& note) {
             return note.title == u"Recovered note"_s && note.body == u"Body of note 7"_s &&
                    note.bodyRTF && note.bodyRTF->readOrNothing() == QByteArray(3000, 'r');
         }},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        putSaved();
        execute(QByteArray("UPDATE OrvaneNote SET checksum = NULL, ") + row.change +
                " WHERE row = 6");
        const QStringList before = rowsFrom(6, 6 * bytesPerNote);
        QUuid id;
        for (int time = 0; time < 2; ++time) {
            const auto controller = open();
            NotebookSnapshot loaded = controller->load();
            ASSERT_EQ(loaded.notes.size(), 6);
            const auto found = std::ranges::find_if(
                loaded.notes, [](const auto& note) { return note->body == u"Body of note 7"_s; });
            ASSERT_NE(found, loaded.notes.end());
            EXPECT_TRUE(row.isAsExpected(**found));
            EXPECT_FALSE((*found)->id.isNull());
            EXPECT_TRUE(time == 0 || (*found)->id == id) << "the id stays";
            id = (*found)->id;
            loaded.notes[0] = loaded.notes[0]->id == id ? loaded.notes[0] : makeNote(6, idOf(1));
            loaded.folders.append(makeFolder(20 + time));
            ASSERT_TRUE(controller->save(loaded));
        }
        EXPECT_EQ(rowsFrom(6, 6 * bytesPerNote), before) << "a whole save leaves it alone";
        {
            const auto controller = open();
            NotebookSnapshot loaded = controller->load();
            for (auto& note : loaded.notes) {
                if (note->id == id)
                    note = note.with([](NoteRecord& record) { record.title = u"mine"_s; });
            }
            ASSERT_TRUE(controller->save(loaded));
        }
        auto controller = open();
        NotebookSnapshot loaded = controller->load();
        loaded.notes.removeIf([&](const auto& note) {
            return note->id == id && note->title == u"mine"_s && note->body == u"Body of note 7"_s;
        });
        ASSERT_EQ(loaded.notes.size(), 5) << "edited, it is a note like any other";
        ASSERT_TRUE(controller->save(loaded));
        controller.reset();
        EXPECT_TRUE(rowsFrom(6, 6 * bytesPerNote).isEmpty()) << "removed, it is gone";
    }
}

TEST_F(StoreContents, AFolderThatLacksAValueIsRecovered)
{
    execute("UPDATE OrvaneFolder SET checksum = NULL, name = NULL, createdAt = NULL WHERE row = 2");
    const auto controller = open();
    const NotebookSnapshot loaded = controller->load();
    ASSERT_EQ(loaded.folders.size(), 2);
    EXPECT_EQ(loaded.folders.first()->name, u"Recovered folder"_s);
    EXPECT_EQ(loaded.folders.first()->id, idOf(1)) << "so that its notes stay in it";
}

TEST_F(StoreContents, AForeignSchemaIsRefusedUntouched)
{
    struct Row {
        const char* name;
        const char* sql;
        const char* told; // nothing when it opens
    };
    const Row rows[] = {
        {"trigger",
         "CREATE TRIGGER cleanup AFTER UPDATE ON OrvaneStore BEGIN DELETE FROM OrvaneNote; END",
         "trigger cleanup"},
        {"view", "CREATE VIEW Recent AS SELECT * FROM OrvaneNote", "view Recent"},
        {"view in a table's place",
         "ALTER TABLE OrvaneNotebookMeta RENAME TO Other; CREATE VIEW OrvaneNotebookMeta AS SELECT "
         "* FROM Other",
         nullptr},
        {"index", "CREATE UNIQUE INDEX byTitle ON OrvaneNote (title)", "index byTitle"},
        {"table", "CREATE TABLE Tags (name TEXT)", "table Tags"},
        {"column", "ALTER TABLE OrvaneNote ADD COLUMN mood TEXT DEFAULT 'good'",
         "table OrvaneNote"},
        {"statistics", "ANALYZE", ""},
        {"rewritten", "VACUUM", ""},
        {"renamed and back",
         "ALTER TABLE OrvaneNote RENAME TO Other; ALTER TABLE Other RENAME TO OrvaneNote", ""},
        {"schema of another number", "PRAGMA user_version = 1", "table OrvaneNote"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        putSaved();
        execute(row.sql);
        const QByteArray before = bytesOf(store());
        const auto opened = PersistenceController::open(folder, clock);
        if (!row.told) { // a table is missing: damage
            ASSERT_TRUE(opened);
            EXPECT_TRUE((*opened)->persistentStoreRecovery());
            continue;
        }
        if (*row.told == '\0') {
            ASSERT_TRUE(opened);
            EXPECT_EQ(NotebookContents((*opened)->load()), NotebookContents(saved));
            continue;
        }
        ASSERT_FALSE(opened);
        EXPECT_EQ(opened.error().code, StoreOpenError::Code::ForeignSchema);
        EXPECT_EQ(opened.error().detail, QLatin1String(row.told));
        EXPECT_TRUE(bytesOf(store()) == before);
        EXPECT_EQ(files(), QStringList{u"OrvaneWorkspace.store"_s});
    }
}

// The commands of the document, each as it stands there.
TEST_F(StoreContents, IsMendedAsTheDocumentSays)
{
    const QString document =
        QString::fromUtf8(bytesOf(QStringLiteral(ORVANE_DOCS "/reliability.md")));
    QStringList steps = document.section(u"## Mending by hand"_s, 1).split(u"```sh"_s).mid(1);
    for (QString& step : steps)
        step = step.section(u"```"_s, 0, 0);
    ASSERT_EQ(steps.size(), 5);
    struct Row {
        const char* name;
        std::function<void()> damage;
        qsizetype notes;
    };
    const Row rows[] = {
        {"a word changed", [&] { execute("UPDATE OrvaneNote SET title = 'other' WHERE row = 3"); },
         6},
        {"a row is missing", [&] { execute("DELETE FROM OrvaneNote WHERE row = 3"); }, 5},
        {"no store of ours", [&] { execute("PRAGMA application_id = 7"); }, 6},
        {"a page is damaged",
         [&] {
             NotebookSnapshot large = saved;
             for (int i = 100; i < 500; ++i)
                 large.notes.append(makeNote(i, idOf(1)));
             ASSERT_TRUE(open()->save(large));
             QByteArray bytes = bytesOf(store());
             const qsizetype title = bytes.indexOf("Note 250");
             ASSERT_GT(title, 0);
             bytes.replace(title / 4096 * 4096, 12, QByteArray(12, 'x'));
             writeBytes(store(), bytes);
         },
         -1},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        putSaved();
        row.damage();
        auto protectedProject = open();
        ASSERT_TRUE(protectedProject->persistentStoreRecovery());
        const QString backup =
            protectedProject->persistentStoreRecovery()->backupDirectoryURL.toLocalFile();
        QProcess shell;
        shell.setWorkingDirectory(backup);
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"DATA"_s, folder);
        environment.remove(u"LD_PRELOAD"_s);
        shell.setProcessEnvironment(environment);
        protectedProject.reset();
        for (const QString& step : std::as_const(steps)) {
            shell.start(u"sh"_s, {u"-ec"_s, step});
            ASSERT_TRUE(shell.waitForFinished());
            ASSERT_EQ(shell.exitCode(), 0) << shell.readAllStandardError().constData();
        }
        ASSERT_FALSE(PersistentStoreRecovery::read(folder));
        auto controller = open();
        ASSERT_FALSE(controller->persistentStoreRecovery())
            << qPrintable(controller->persistentStoreRecovery()->errorDescription);
        const NotebookSnapshot found = controller->load();
        if (row.notes >= 0) {
            EXPECT_EQ(found.notes.size(), row.notes);
        } else {
            EXPECT_GT(found.notes.size(), 50);
        }
        for (const auto& note : found.notes) {
            EXPECT_TRUE(note->body.isReadable());
        }
        ASSERT_TRUE(controller->save(found));
    }
}

} // namespace
} // namespace orvane
