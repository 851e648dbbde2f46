// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "ShellBench.h"
#include "appearance/AppearanceTokens.h"
#include "appearance/Look.h"
#include "core/notebook/NotebookEdits.h"
#include "shell/binder/BinderModel.h"
#include "shell/binder/BinderTreeView.h"
#include "support/Bench.h"
#include "support/TestServices.h"

#include <QFile>
#include <QPixmap>

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>
#include <SQLiteCpp/Transaction.h>
#include <fcntl.h>
#include <unistd.h>

namespace orvane::bench {

namespace {

using namespace Qt::StringLiterals;

constexpr QSize paneSize(288, 800);

NotebookSnapshot notebookOf(int notes, int folders, const QUuid& container = {})
{
    NotebookSnapshot snapshot;
    for (int i = 0; i < folders; ++i) {
        FolderRecord folder;
        folder.id = QUuid::createUuid();
        folder.name = u"Folder %1"_s.arg(i);
        folder.createdAt = {i};
        snapshot.folders.append(folder);
    }
    for (int i = 0; i < notes; ++i) {
        NoteRecord note;
        note.id = QUuid::createUuid();
        note.folderID = container.isNull() ? snapshot.folders.at(i % folders)->id : container;
        note.title = u"Note %1"_s.arg((i * 7919) % notes);
        note.body = u"The first words of note %1 and some more of them."_s.arg(i);
        note.createdAt = note.updatedAt = {i};
        snapshot.notes.append(note);
    }
    return snapshot;
}

/// A project on the disk, and the pane that shows it with every folder of the first few open.
struct ShownProject {
    TestServices test;
    AppState app{test.services()};
    Look look{signatureDarkTokens()};
    BinderModel model{app};
    BinderTreeView tree{look};

    explicit ShownProject(const NotebookSnapshot& snapshot, int expanded = 20)
    {
        autoSnapshotEnabledSetting.write(test.defaults, false);
        const QUuid project = *app.projectSession().createProject(u"Bench"_s, {});
        const QString data = ProjectLibraryController::projectDataDirectoryPath(
            app.projectSession().currentProject()->rootPath);
        app.projectSession().closeProject();
        {
            const auto store = PersistenceController::open(data, test.services().clock);
            (void)(*store)->save(snapshot);
        }
        app.projectSession().openProject(project, false);
        tree.resize(paneSize);
        tree.setModel(&model);
        for (int i = 0; i < expanded && i < app.order().rootFolderOrder.size(); ++i)
            tree.setExpanded(
                model.indexOf({BinderRowID::Kind::Folder, app.order().rootFolderOrder.at(i)}),
                true);
        (void)tree.grab();
    }
    void paint()
    {
        QPixmap picture(tree.viewport()->size());
        tree.viewport()->render(&picture);
    }
    QUuid root() const { return *app.projectRootContainerID(); }
};

/// As many rows as the store's, in a table of SQLite's own with the store's settings.
class PlainNotes {
public:
    explicit PlainNotes(int notes)
    {
        m_database.exec("PRAGMA journal_mode = WAL; PRAGMA synchronous = FULL");
        m_database.exec("CREATE TABLE note (id INTEGER PRIMARY KEY, title TEXT, body TEXT)");
        SQLite::Transaction all(m_database);
        SQLite::Statement insert(m_database, "INSERT INTO note VALUES (?, ?, ?)");
        for (int i = 0; i < notes; ++i) {
            insert.bind(1, i);
            insert.bind(2, "Note " + std::to_string(i));
            insert.bind(3, "The first words of a note and some more of them.");
            insert.exec();
            insert.reset();
        }
        all.commit();
    }
    void retitle(int count)
    {
        SQLite::Transaction all(m_database);
        SQLite::Statement update(m_database, "UPDATE note SET title = ? WHERE id = ?");
        for (int i = 0; i < count; ++i) {
            update.bind(1, "Title " + std::to_string(++m_round));
            update.bind(2, i * 37);
            update.exec();
            update.reset();
        }
        all.commit();
    }
    void removeFirst(int count)
    {
        m_database.exec("DELETE FROM note WHERE id IN (SELECT id FROM note ORDER BY id LIMIT " +
                        std::to_string(count) + ")");
    }

private:
    QTemporaryDir m_folder;
    SQLite::Database m_database{m_folder.filePath(u"plain.sqlite"_s).toStdString(),
                                SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE};
    int m_round = 0;
};

Measurement editThousand()
{
    ShownProject shown(notebookOf(50'000, 2'000));
    PlainNotes plain(50'000);
    int round = 0;
    return interleave(
        20,
        [&] {
            QList<QUuid> ids;
            for (qsizetype i = 0; i < 1'000; ++i)
                ids.append(shown.app.notes().records().at(i * 50)->id);
            ++round;
            return 1e3 * seconds([&] {
                       (void)shown.app.apply(NotebookEdits::changeNotes(
                           shown.app.notebook(), shown.root(), ids,
                           [&](NoteRecord& note) { note.title = u"Title %1"_s.arg(round); }));
                       shown.paint();
                   });
        },
        [&] { return 1e3 * seconds([&] { plain.retitle(1'000); }); });
}

Measurement emptyTrash()
{
    PlainNotes plain(20'000);
    const QTemporaryDir folder;
    const QByteArray words(700, 'x'); // about what such a note is as rich text
    int round = 0;
    const auto writePlain = [&] {
        for (int i = 0; i < 1'000; ++i) {
            const QByteArray path =
                QFile::encodeName(folder.filePath(u"%1-%2.rtf"_s.arg(round).arg(i)));
            const int file = ::open(path.constData(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
            (void)!::write(file, words.constData(), size_t(words.size()));
            ::close(file);
        }
        const int directory =
            ::open(QFile::encodeName(folder.path()).constData(), O_RDONLY | O_DIRECTORY);
        ::fsync(directory);
        ::close(directory);
        plain.removeFirst(1'000);
    };
    ShownProject shown(notebookOf(20'000, 200));
    return interleave(
        4,
        [&] {
            QList<QUuid> ids;
            for (const auto& note : shown.app.notes()) {
                if (ids.size() < 1'000)
                    ids.append(note->id);
            }
            (void)shown.app.apply(
                NotebookEdits::trashNotes(shown.app.notebook(), shown.root(), ids, {1}));
            return 1e3 * seconds([&] { (void)shown.app.emptyTrashToMacOSUserTrash(); });
        },
        [&] {
            ++round;
            return 1e3 * seconds(writePlain);
        });
}

Measurement renameTagSorted()
{
    NotebookSnapshot snapshot = notebookOf(4'000, 1);
    for (auto& note : snapshot.notes)
        note = note.with([](NoteRecord& each) { each.tags = {u"tag 0"_s}; });
    ShownProject sorted(snapshot);
    ShownProject byHand(snapshot);
    sorted.app.setBinderSortOrder(BinderSortOrder::AlphabeticalAZ);
    int round = 0;
    const auto rename = [&](ShownProject& shown, int from) {
        return 1e3 * seconds([&] {
                   (void)shown.app.renameTag(u"tag %1"_s.arg(from), u"tag %1"_s.arg(from + 1));
                   shown.paint();
               });
    };
    return interleave(
        10, [&] { return rename(sorted, round); }, [&] { return rename(byHand, round++); });
}

double typeLetter(ShownProject& shown, const QUuid& note, int round)
{
    // As a person types: the title grows by a letter, and begins again now and then.
    const QString title = u"Morning at the harbour"_s.left(1 + round % 22);
    return 1e3 * seconds([&] {
               shown.app.applyLiveTitle(note, title);
               shown.paint();
           });
}

Measurement typeTitleSorted()
{
    const NotebookSnapshot snapshot = notebookOf(50'000, 1);
    ShownProject sorted(snapshot);
    ShownProject byHand(snapshot);
    sorted.app.setBinderSortOrder(BinderSortOrder::AlphabeticalAZ);
    const QUuid note = snapshot.notes.at(25'000)->id;
    int round = 0;
    return interleave(
        66, [&] { return typeLetter(sorted, note, round); },
        [&] { return typeLetter(byHand, note, round++); });
}

Measurement typeTitleFiltered()
{
    NotebookSnapshot snapshot = notebookOf(20'000, 1);
    for (auto& note : snapshot.notes)
        note = note.with([](NoteRecord& each) { each.tags = {u"sea"_s}; });
    ShownProject filtered(snapshot);
    ShownProject whole(snapshot);
    filtered.app.toggleTagFilter(u"sea"_s);
    const QUuid note = snapshot.notes.at(10'000)->id;
    int round = 0;
    return interleave(
        66, [&] { return typeLetter(filtered, note, round); },
        [&] { return typeLetter(whole, note, round++); });
}

// Rows of one folder go one step down, as by Alt and the arrow, until they come round.
double stepDown(ShownProject& shown, const QList<BinderRowID>& rows)
{
    return 1e3 * seconds([&] {
               const auto step =
                   resolveStep(rows, RowsStep::Down, BinderSortOrder::Custom, shown.app.order(),
                               shown.app.folders(), shown.app.notes(), shown.root());
               if (step)
                   (void)shown.app.moveRows(rows, step->folder, step->before);
               shown.paint();
           });
}

Measurement moveRowsDown()
{
    const NotebookSnapshot snapshot = notebookOf(50'000, 100);
    ShownProject many(snapshot);
    ShownProject one(snapshot);
    const auto rowsOf = [&](int count) {
        QList<BinderRowID> rows;
        for (int i = 0; i < count; ++i)
            rows.append({BinderRowID::Kind::Note, snapshot.notes.at(i * 100)->id});
        return rows;
    };
    return interleave(
        40, [&, rows = rowsOf(100)] { return stepDown(many, rows); },
        [&, rows = rowsOf(1)] { return stepDown(one, rows); });
}

} // namespace

void addEditRows()
{
    add({"notebook/edit-1k", "ms", 3, editThousand});
    add({"notebook/trash-empty-1k", "ms", 2, emptyTrash});
    add({"notebook/sorted-4k", "ms", 1.5, renameTagSorted});
    add({"binder/title-key-50k", "ms", 2, typeTitleSorted});
    add({"binder/filter-key-20k", "ms", 2, typeTitleFiltered});
    add({"binder/move-100", "ms", 4, moveRowsDown});
}

} // namespace orvane::bench
