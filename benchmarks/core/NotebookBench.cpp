// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/CoreBench.h"
#include "core/StoreSamples.h"
#include "core/state/AppState.h"
#include "support/Bench.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstring>
#include <fcntl.h>
#include <sqlite3.h>
#include <unistd.h>

namespace orvane::bench {

namespace {

using namespace Qt::StringLiterals;

constexpr double milli = 1e3;
constexpr double micro = 1e6;

NotebookSnapshot sampleNotebook(int notes, int folders, int tagsPerNote = 0)
{
    NotebookSnapshot snapshot;
    for (int i = 0; i < folders; ++i) {
        FolderRecord each;
        each.id = QUuid::createUuid();
        each.name = u"Folder %1"_s.arg(i);
        each.createdAt = {i};
        snapshot.folders.append(each);
    }
    for (int i = 0; i < notes; ++i) {
        NoteRecord each;
        each.id = QUuid::createUuid();
        each.folderID = snapshot.folders.at(i % folders)->id;
        each.title = u"Note %1"_s.arg(i);
        each.body = u"Some words of note %1. "_s.arg(i).repeated(8);
        each.createdAt = each.updatedAt = {i};
        for (int tag = 0; tag < tagsPerNote; ++tag)
            each.tags.append(u"tag %1"_s.arg((i * 7 + tag * 131) % 400));
        snapshot.notes.append(each);
    }
    return snapshot;
}

/// A program over a folder that goes with it, with a project open or only a notebook in memory.
struct OpenNotebook {
    QTemporaryDir folder;
    UserDefaults defaults;
    NotificationCenter notifications;
    ScriptedQuestions questions;
    CountingBeeper beeper;
    FolderTrash trash{folder.path() + u"/trash"_s};
    SystemClock clock;
    LicencePolicy licence;
    AppState app{{defaults, notifications, questions, beeper, trash, clock, licence,
                  UserFolders::below(folder.path())}};
    QUuid project;

    enum class Where { OnDisk, InMemory };

    OpenNotebook(Where where, const NotebookSnapshot& snapshot)
    {
        autoSnapshotEnabledSetting.write(defaults, false);
        if (where == Where::InMemory) {
            app.loadNotebookSnapshot(snapshot, false, std::nullopt);
            return;
        }
        project = *app.projectSession().createProject(u"Bench"_s, {});
        app.projectSession().closeProject();
        {
            const auto store = PersistenceController::open(dataFolder(), clock);
            (void)(*store)->save(snapshot);
        }
        app.projectSession().openProject(project, false);
    }

    [[nodiscard]] QString dataFolder()
    {
        return ProjectLibraryController::projectDataDirectoryPath(
            app.projectSession().project(project)->rootPath);
    }
    [[nodiscard]] QUuid noteAt(qsizetype place) const
    {
        return app.notes().records().at(place)->id;
    }
};

NoteContent edited(const AppState& app, const QUuid& id, int round)
{
    NoteContent content = NoteContent::of(*app.note(id));
    content.body = u"Another text of the same length, %1. "_s.arg(round).repeated(6);
    return content;
}

/// A table like the notes', in a file of its own with the store's settings.
class PlainTable {
public:
    PlainTable()
        : m_sqlite(m_folder.path() + u"/plain.sqlite"_s)
    {
        m_sqlite.run("PRAGMA journal_mode = WAL");
        m_sqlite.run("CREATE TABLE note (id TEXT PRIMARY KEY, folder TEXT, title TEXT, body TEXT, "
                     "created INTEGER, updated INTEGER)");
        m_insert = m_sqlite.prepare("INSERT INTO note VALUES (?, ?, ?, ?, ?, ?)");
        m_update = m_sqlite.prepare("UPDATE note SET folder = ?2, body = ?4 WHERE id = ?1");
        m_sqlite.run("BEGIN");
        for (int i = 0; i < 50'000; ++i) {
            m_ids.append(QUuid::createUuid().toString(QUuid::WithoutBraces).toUtf8());
            step(m_insert, m_ids.last());
        }
        m_sqlite.run("COMMIT");
    }
    ~PlainTable()
    {
        sqlite3_finalize(m_insert);
        sqlite3_finalize(m_update);
    }

    void insertAndCommit() { step(m_insert, QUuid::createUuid().toByteArray()); }
    void updateAndCommit() { step(m_update, m_ids.at(m_next++ % m_ids.size())); }

private:
    void step(sqlite3_stmt* statement, const QByteArray& id)
    {
        const QByteArray text = "Some words of a note. " + QByteArray::number(m_next);
        sqlite3_bind_text(statement, 1, id.constData(), int(id.size()), SQLITE_TRANSIENT);
        sqlite3_bind_text(statement, 2, id.constData(), int(id.size()), SQLITE_TRANSIENT);
        sqlite3_bind_text(statement, 4, text.constData(), int(text.size()), SQLITE_TRANSIENT);
        if (statement == m_insert) {
            sqlite3_bind_int64(statement, 5, m_next);
            sqlite3_bind_int64(statement, 6, m_next);
        }
        sqlite3_step(statement);
        sqlite3_reset(statement);
    }

    QTemporaryDir m_folder;
    PlainSQLite m_sqlite;
    QList<QByteArray> m_ids;
    qsizetype m_next = 0;
    sqlite3_stmt* m_insert = nullptr;
    sqlite3_stmt* m_update = nullptr;
};

Measurement createNote()
{
    OpenNotebook notebook(OpenNotebook::Where::OnDisk, sampleNotebook(50'000, 2'000));
    PlainTable plain;
    return interleave(
        60,
        [&] {
            notebook.app.selection().selectFolder(notebook.app.folders().records().at(17)->id);
            return micro * seconds([&] { notebook.app.createNote(); });
        },
        [&] { return micro * seconds([&] { plain.insertAndCommit(); }); });
}

Measurement moveNote()
{
    OpenNotebook notebook(OpenNotebook::Where::OnDisk, sampleNotebook(50'000, 2'000));
    PlainTable plain;
    int round = 0;
    return interleave(
        60,
        [&] {
            ++round;
            const QUuid note = notebook.noteAt(round * 311);
            const QUuid target = notebook.app.folders().records().at(round * 13 % 1'900)->id;
            return micro * seconds([&] { notebook.app.moveNote(note, target, std::nullopt); });
        },
        [&] { return micro * seconds([&] { plain.updateAndCommit(); }); });
}

Measurement updateNote()
{
    OpenNotebook large(OpenNotebook::Where::InMemory, sampleNotebook(50'000, 2'000));
    OpenNotebook small(OpenNotebook::Where::InMemory, sampleNotebook(500, 20));
    int round = 0;
    const auto measure = [&](OpenNotebook& notebook) {
        constexpr int batch = 200;
        ++round;
        QList<std::pair<QUuid, NoteContent>> edits;
        for (int i = 0; i < batch; ++i) {
            const QUuid id = notebook.noteAt((round * 7919 + i * 37) % notebook.app.notes().size());
            edits.append({id, edited(notebook.app, id, round)});
        }
        return micro / batch * seconds([&] {
                   for (const auto& [id, content] : edits)
                       notebook.app.updateNote(id, content);
               });
    };
    return interleave(
        40, [&] { return measure(large); }, [&] { return measure(small); });
}

Measurement tagLibrary()
{
    OpenNotebook notebook(OpenNotebook::Where::InMemory, sampleNotebook(50'000, 2'000, 3));
    int round = 0;
    return interleave(
        20,
        [&] {
            const QUuid id = notebook.noteAt(++round * 97);
            return micro * seconds([&] {
                       notebook.app.updateNoteTags(id, {u"tag 5"_s, u"new tag %1"_s.arg(round)});
                       (void)notebook.app.tagLibrary().size();
                       (void)notebook.app.tagCount(u"tag 5"_s);
                   });
        },
        [&] {
            return micro * seconds([&] {
                       TagIndex fresh;
                       fresh.rebuild(notebook.app.folders(), notebook.app.notes());
                       (void)fresh.library().size();
                       (void)fresh.noteCount(u"tag 5"_s);
                   });
        });
}

/// A library of a hundred thousand tags, a hundred to a note, each on one note only.
Measurement largeTagLibrary()
{
    NotebookSnapshot snapshot = sampleNotebook(1'000, 20);
    for (qsizetype at = 0; at < snapshot.notes.size(); ++at) {
        snapshot.notes[at] = snapshot.notes.at(at).with([&](NoteRecord& note) {
            for (int tag = 0; tag < 100; ++tag)
                note.tags.append(u"Topic %1 of note %2"_s.arg(tag).arg(at));
        });
    }
    OpenNotebook notebook(OpenNotebook::Where::InMemory, snapshot);
    int round = 0;
    return interleave(
        20,
        [&] {
            const QUuid id = notebook.noteAt(++round * 37);
            QStringList tags = notebook.app.note(id)->tags;
            tags.removeFirst();
            tags.append(u"New topic %1"_s.arg(round));
            return milli * seconds([&] {
                       notebook.app.updateNoteTags(id, tags);
                       (void)notebook.app.tagLibrary().size();
                       (void)notebook.app.tagCount(tags.last());
                   });
        },
        [&] {
            return milli * seconds([&] {
                       TagIndex fresh;
                       fresh.rebuild(notebook.app.folders(), notebook.app.notes());
                       (void)fresh.library().size();
                       (void)fresh.noteCount(u"New topic 1"_s);
                   });
        });
}

Measurement refreshLibrary()
{
    const QTemporaryDir folder;
    ProjectLibraryController library(UserFolders::below(folder.path()));
    for (int i = 0; i < 1'000; ++i)
        (void)library.createProject(u"Project %1"_s.arg(i), u"sparkles"_s, {i});
    ::usleep(200'000); // a file changed in the last moments is not trusted to stay as it is
    const auto refresh = [&] {
        return library.sortedProjects().size();
    };
    refresh();
    const QStringList roots = library.projectRootPathsWithManifests();
    return interleave(
        30, [&] { return milli * seconds(refresh); },
        [&] {
            return milli * seconds([&] {
                       for (const QString& root : roots) {
                           QFile file(root + u"/orvaneworkspace-project.json"_s);
                           (void)file.open(QIODevice::ReadOnly);
                           (void)file.readAll();
                       }
                   });
        });
}

Measurement appendVersion()
{
    const QTemporaryDir folder;
    UserDefaults defaults;
    NotificationCenter notifications;
    (void)makeFolder(ProjectLibraryController::projectDataDirectoryPath(folder.path()));
    NoteVersionHistoryStore store(defaults, notifications);
    NoteRecord note;
    note.id = QUuid::createUuid();
    QString words;
    for (int i = 0; words.size() < 20'000; ++i)
        words += u"Words of version %1. "_s.arg(i);
    note.body = words;
    qint64 now = 0;
    for (int i = 0; i < 120; ++i)
        store.appendSnapshot(note, {folder.path()}, std::nullopt, {++now});
    const QByteArray bytes = *readFile(VersionFiles::filePath(folder.path(), note.id));
    const QByteArray plainPath = QFile::encodeName(folder.path() + u"/plain"_s);
    return interleave(
        40,
        [&] {
            return milli * seconds([&] {
                       store.appendSnapshot(note, {folder.path()}, std::nullopt, {++now});
                   });
        },
        [&] {
            return milli * seconds([&] {
                       const int file =
                           ::open(plainPath.constData(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
                       (void)!::write(file, bytes.constData(), size_t(bytes.size()));
                       ::fsync(file);
                       ::close(file);
                   });
        });
}

// What a key may have to wait for when a version is kept: the file is made beside it.
Measurement appendRichVersion()
{
    const QTemporaryDir folder;
    UserDefaults defaults;
    NotificationCenter notifications;
    (void)makeFolder(ProjectLibraryController::projectDataDirectoryPath(folder.path()));
    NoteVersionHistoryStore store(defaults, notifications);
    NoteRecord note;
    note.id = QUuid::createUuid();
    note.body = QString(u"Words of a long note. "_s).repeated(2'500);
    note.bodyRTF = Blob(QByteArray("{\\b Words} of a long note. ").repeated(5'600));
    qint64 now = 0;
    const auto append = [&] {
        store.appendSnapshotLater(note, {folder.path()}, std::nullopt, {++now}, [](const auto&) {});
    };
    for (int i = 0; i < 120; ++i)
        append();
    store.waitForAll();
    const QByteArray bytes = note.body.utf8().readOrNothing() + note.bodyRTF->readOrNothing();
    QByteArray copy(bytes.size(), Qt::Uninitialized);
    return interleave(
        20,
        [&] {
            const double figure = milli * seconds(append);
            store.waitForAll();
            return figure;
        },
        [&] {
            return milli * seconds([&] {
                       std::memcpy(copy.data(), bytes.constData(), size_t(bytes.size()));
                   });
        },
        1.0);
}

} // namespace

void addNotebookRows()
{
    add({"store/create-note", "us", 6, createNote});
    add({"library/refresh", "ms", 0.5, refreshLibrary});
    add({"notebook/update-note-50k", "us", 1.3, updateNote});
    add({"notebook/move-note-50k", "us", 8, moveNote});
    add({"notebook/tag-library-50k", "us", 0.05, tagLibrary});
    add({"tags/library-100k", "ms", 0.05, largeTagLibrary});
    add({"history/append", "ms", 2, appendVersion});
    add({"history/append-rich", "ms", 2, appendRichVersion, TargetOf::Figure});
}

} // namespace orvane::bench
