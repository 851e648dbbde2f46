// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// Each kind of damage and of change from outside against the whole program, started twice over one
// home: what it ends in, what is said, and that every word that was saved is there or kept.
#include "ShellFixture.h"
#include "core/library/ProjectLibraryController.h"
#include "core/store/PersistentStoreRecovery.h"
#include "core/versions/NoteVersionHistoryStore.h"
#include "editor/pane/EditorPaneView.h"
#include "editor/session/EditorSession.h"
#include "editor/view/EditorView.h"

#include <QDirIterator>
#include <QProcess>

#include <SQLiteCpp/Database.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

QByteArray bytesOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeBytes(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << qPrintable(path);
    ASSERT_EQ(file.write(bytes), bytes.size());
}

void copyTree(const QString& from, const QString& to)
{
    ASSERT_EQ(QProcess::execute(u"cp"_s, {u"-a"_s, u"--"_s, from, to}), 0);
}

/// A project of two notes, which the rows below change.
class DamagedHome : public ShellTest {
protected:
    void SetUp() override
    {
        dismissWelcome();
        start();
        ASSERT_TRUE(state().projectSession().createProject(u"Tidewater"_s, {}));
        other = *state().createNote(u"High water\nThe lamp is lit."_s, {});
        note = *state().createNote(u"Low water\nMara counts."_s, {});
        (void)state().appendVersionSnapshot(note, u"Manual Save"_s);
        root = state().projectSession().currentProject()->rootPath;
        defaults().set(u"settings.general.launchDestination"_s, u"lastNote"_s);
        copyTree(root, crashed());
        quit();
        copyTree(root, whole());
    }

    QString whole() const { return m_home.filePath(u"whole"_s); }
    QString crashed() const { return m_home.filePath(u"crashed"_s); }
    QString data() const { return ProjectLibraryController::projectDataDirectoryPath(root); }
    QString store() const { return storePath(data()); }
    QString wal() const { return persistentStoreFiles(store()).at(1); }
    void putBack(const QString& from) const
    {
        ASSERT_TRUE(QDir(root).removeRecursively());
        copyTree(from, root);
    }
    void execute(const char* sql) const
    {
        SQLite::Database database(store().toStdString(), SQLite::OPEN_READWRITE);
        database.exec(sql);
        database.exec("PRAGMA wal_checkpoint(TRUNCATE)");
    }
    /// Every file below the project with its bytes; links by where they lead.
    QMap<QString, QByteArray> files() const
    {
        QMap<QString, QByteArray> all;
        QDirIterator each(root, QDir::Files | QDir::Hidden | QDir::System,
                          QDirIterator::Subdirectories);
        while (each.hasNext()) {
            const QFileInfo file(each.next());
            if (file.fileName().endsWith(u".lock") || file.fileName().endsWith(u"-shm"))
                continue;
            all.insert(file.filePath(),
                       file.isSymLink() ? file.symLinkTarget().toUtf8() : bytesOf(file.filePath()));
        }
        return all;
    }
    void run(QString* words)
    {
        *words = said([this] { start(); });
        EXPECT_FALSE(words->contains(u"/proc/"_s)) << qPrintable(*words);
    }
    void expectWords(const QString& ofNote = u"Low water\nMara counts."_s)
    {
        ASSERT_TRUE(state().projectSession().currentProject());
        ASSERT_TRUE(state().note(note));
        ASSERT_TRUE(state().note(other));
        EXPECT_EQ(state().note(note)->body, ofNote);
        EXPECT_EQ(state().note(other)->body, u"High water\nThe lamp is lit."_s);
    }
    /// By keys, into the selected note, and saved.
    void type(const QString& words)
    {
        state().openNote(note);
        window().editorPane().textView().setFocus();
        m_hand->press(Qt::Key_End, Qt::ControlModifier);
        m_hand->type(words);
        m_hand->press(Qt::Key_S, Qt::ControlModifier);
    }
    /// What another program left in the place of the store: the same project without this note.
    void makeOtherStore(const QString& path) const
    {
        ASSERT_TRUE(QFile::copy(
            storePath(ProjectLibraryController::projectDataDirectoryPath(whole())), path));
    }

    QUuid note;
    QUuid other;
    QString root;
    /// Another program that holds the store's lock until the program has ended.
    mutable std::unique_ptr<SQLite::Database> holder;
};

enum class Ends {
    Opens,     ///< with every word
    Poorer,    ///< opens; the row says what is missing
    Protected, ///< closed, its files as they were in the recovery folder
    Refused,   ///< closed, no file touched
    NotListed, ///< not a project, no file touched
};

struct Damage {
    const char* name;
    bool crashed;
    std::function<void(const DamagedHome&)> damage;
    Ends ends;
    const char* says = "";
};

class DamageMatrix : public DamagedHome, public testing::WithParamInterface<int> {
public:
    static const std::vector<Damage>& rows();
};

const std::vector<Damage>& DamageMatrix::rows()
{
    using Home = const DamageMatrix&;
    const auto with = [](std::function<void(Home)> damage) {
        return [damage = std::move(damage)](const DamagedHome& home) {
            damage(static_cast<Home>(home));
        };
    };
    const auto sql = [&](const char* statement) {
        return with([statement](Home h) { h.execute(statement); });
    };
    const auto remove = [](const QString& path) {
        ASSERT_TRUE(QFile::remove(path)) << qPrintable(path);
    };
    const char* isProtected = "Project Data Protected";
    static const std::vector<Damage> all = {
        {"NothingHappened", false, with([](Home) {}), Ends::Opens},
        {"ACrash", true, with([](Home) {}), Ends::Opens},
        {"CutToHalf", false, with([](Home h) {
             const QByteArray bytes = bytesOf(h.store());
             writeBytes(h.store(), bytes.first(bytes.size() / 2));
         }),
         Ends::Protected, isProtected},
        {"ZeroBytes", false, with([](Home h) { writeBytes(h.store(), {}); }), Ends::Protected,
         isProtected},
        {"NoDatabase", false, with([](Home h) { writeBytes(h.store(), "Dear diary,\n"); }),
         Ends::Protected, isProtected},
        {"AnotherProgramsDatabase", false, sql("PRAGMA application_id = 1"), Ends::Protected,
         isProtected},
        {"AFolderInItsPlace", false, with([=](Home h) {
             remove(h.store());
             ASSERT_TRUE(QDir().mkpath(h.store()));
         }),
         Ends::Protected, isProtected},
        {"ATableIsMissing", false, sql("DROP TABLE OrvaneNoteBytes"), Ends::Protected, isProtected},
        {"ANoteIsMissing", false,
         sql("DELETE FROM OrvaneNote WHERE row = (SELECT max(row) FROM OrvaneNote)"),
         Ends::Protected, isProtected},
        {"AnotherWordInATitle", false, sql("UPDATE OrvaneNote SET title = 'Wards' || title"),
         Ends::Protected, isProtected},
        {"ATitleIsNull", false, sql("UPDATE OrvaneNote SET title = NULL, checksum = NULL"),
         Ends::Opens},
        {"AForeignTrigger", false,
         sql("CREATE TRIGGER stranger AFTER UPDATE ON OrvaneNote BEGIN DELETE FROM OrvaneNote; "
             "END"),
         Ends::Refused, "stranger"},
        {"AForeignView", false, sql("CREATE VIEW watcher AS SELECT * FROM OrvaneNote"),
         Ends::Refused, "watcher"},
        {"ALaterSchema", false, sql("PRAGMA user_version = 9"), Ends::Refused,
         "Saved by a Newer Version"},
        {"TheOrderIsUnreadable", false,
         sql("UPDATE OrvaneNotebookMeta SET binderLayoutJSON = x'7b' WHERE id = 'main'"),
         Ends::Opens},
        {"TheLogOfACrashIsMissing", true, with([=](Home h) { remove(h.wal()); }), Ends::Poorer},
        {"TheLogIsZeros", true,
         with([](Home h) { writeBytes(h.wal(), QByteArray(QFileInfo(h.wal()).size(), '\0')); }),
         Ends::Protected, isProtected},
        {"TheLogAlone", true, with([=](Home h) { remove(h.store()); }), Ends::Protected,
         isProtected},
        {"StoreDeleted", false, with([=](Home h) { remove(h.store()); }), Ends::Refused,
         "OrvaneWorkspace.store"},
        {"DataFolderGone", false,
         with([](Home h) { ASSERT_TRUE(QDir(h.data()).removeRecursively()); }), Ends::Refused,
         "Tidewater/.orvaneworkspace"},
        {"ALinkToNothing", false, with([=](Home h) {
             remove(h.store());
             ASSERT_TRUE(QFile::link(h.m_home.filePath(u"nowhere"_s), h.store()));
         }),
         Ends::Refused, "OrvaneWorkspace.store"},
        {"ALinkInACircle", false, with([=](Home h) {
             remove(h.store());
             ASSERT_TRUE(QFile::link(h.store(), h.store()));
         }),
         Ends::Refused, "OrvaneWorkspace.store"},
        {"ALinkToTheStoreElsewhere", false, with([](Home h) {
             const QString elsewhere = h.m_home.filePath(u"elsewhere.store"_s);
             ASSERT_TRUE(QFile::rename(h.store(), elsewhere));
             ASSERT_TRUE(QFile::link(elsewhere, h.store()));
         }),
         Ends::Opens},
        {"TheWindowsStateIsNoJson", false,
         with([](Home h) { writeBytes(h.data() + u"/workspace-state.json"_s, "{"); }), Ends::Opens},
        {"AVersionHistoryIsNoJson", false,
         with([](Home h) { writeBytes(VersionFiles::filePath(h.root, h.note), "no versions"); }),
         Ends::Opens},
        {"AnEmptyMarker", false,
         with([](Home h) { writeBytes(PersistentStoreRecovery::markerPath(h.data()), {}); }),
         Ends::Refused, isProtected},
        {"AManifestThatIsNoJson", false,
         with([](Home h) { writeBytes(ProjectLibraryController::manifestPath(h.root), "{"); }),
         Ends::NotListed},
    };
    return all;
}

TEST_P(DamageMatrix, EndsAsItIsPromised)
{
    const Damage& row = rows().at(size_t(GetParam()));
    putBack(row.crashed ? crashed() : whole());
    row.damage(*this);
    const auto before = files();

    for (const char* which : {"first run", "second run"}) {
        SCOPED_TRACE(which);
        QString words;
        run(&words);
        EXPECT_TRUE(words.contains(QString::fromLatin1(row.says))) << qPrintable(words);
        switch (row.ends) {
        case Ends::Opens:
            expectWords();
            break;
        case Ends::Poorer:
            EXPECT_TRUE(state().projectSession().currentProject());
            break;
        case Ends::Protected:
        case Ends::Refused:
            EXPECT_FALSE(state().projectSession().currentProject());
            EXPECT_TRUE(state().projectSession().projectAt(root) ||
                        std::ranges::count(state().projectSession().missingProjects(), root,
                                           &KnownProject::folder))
                << "it stays in the browser";
            break;
        case Ends::NotListed:
            EXPECT_FALSE(state().projectSession().projectAt(root));
            break;
        }
        quit();
    }

    if (row.ends == Ends::Refused || row.ends == Ends::NotListed) {
        EXPECT_EQ(files(), before);
    }
    if (row.ends == Ends::Protected) {
        const auto recovery = PersistentStoreRecovery::read(data());
        ASSERT_TRUE(recovery);
        const QString backup = recovery->backupDirectoryURL.toLocalFile();
        for (const QString& file : {store(), wal()}) {
            EXPECT_EQ(bytesOf(backup + u'/' + QFileInfo(file).fileName()), before.value(file))
                << qPrintable(file);
        }
    }
    if (row.ends == Ends::Opens) {
        QString words;
        run(&words);
        type(u" Ebb."_s);
        quit();
        run(&words);
        expectWords(u"Low water\nMara counts. Ebb."_s);
    }
    // Whatever it was: put back, the project is what it was.
    quit();
    putBack(whole());
    QString words;
    run(&words);
    EXPECT_TRUE(state().projectSession().projectAt(root));
    state().projectSession().openProjectAt(root, true);
    expectWords();
}

INSTANTIATE_TEST_SUITE_P(Kinds, DamageMatrix, testing::Range(0, int(DamageMatrix::rows().size())),
                         [](const testing::TestParamInfo<int>& row) {
                             return DamageMatrix::rows().at(size_t(row.param)).name;
                         });

// --- While the project is open -------------------------------------------------------------------

struct Change {
    const char* name;
    std::function<void(const DamagedHome&)> change;
    enum class Words {
        InPlace, ///< saved in the project
        Rescued, ///< in a rescue file that the next start offers
    } words;
    /// Below the library; where the project is afterwards, nothing where it is not there.
    const char* place = "Tidewater";
};

class ChangeMatrix : public DamagedHome, public testing::WithParamInterface<int> {
public:
    static const std::vector<Change>& rows();
};

const std::vector<Change>& ChangeMatrix::rows()
{
    using Home = const ChangeMatrix&;
    using Kept = Change::Words;
    const auto with = [](std::function<void(Home)> change) {
        return [change = std::move(change)](const DamagedHome& home) {
            change(static_cast<Home>(home));
        };
    };
    static const std::vector<Change> all = {
        {"FolderRenamed", with([](Home h) {
             ASSERT_TRUE(QDir().rename(h.root, QFileInfo(h.root).path() + u"/Ebb"_s));
         }),
         Kept::InPlace, "Ebb"},
        {"DataFolderRenamedAndBack", with([](Home h) {
             ASSERT_TRUE(QDir().rename(h.data(), h.data() + u".away"_s));
             ASSERT_TRUE(QDir().rename(h.data() + u".away"_s, h.data()));
         }),
         Kept::InPlace},
        {"FolderRemoved", with([](Home h) { ASSERT_TRUE(QDir(h.root).removeRecursively()); }),
         Kept::Rescued, nullptr},
        {"StoreExchanged", with([](Home h) {
             h.makeOtherStore(h.store() + u".new"_s);
             ASSERT_EQ(::rename(QFile::encodeName(h.store() + u".new"_s).constData(),
                                QFile::encodeName(h.store()).constData()),
                       0);
         }),
         Kept::Rescued},
        {"StoreRemoved", with([](Home h) { ASSERT_TRUE(QFile::remove(h.store())); }),
         Kept::Rescued},
        {"StoreAwayAndBack", with([](Home h) {
             ASSERT_TRUE(QFile::rename(h.store(), h.store() + u".away"_s));
             ASSERT_TRUE(QFile::rename(h.store() + u".away"_s, h.store()));
         }),
         Kept::InPlace},
        {"StoreLockedByAnotherProgram", with([](Home h) {
             h.holder = std::make_unique<SQLite::Database>(h.store().toStdString(),
                                                           SQLite::OPEN_READWRITE);
             h.holder->exec("BEGIN IMMEDIATE");
         }),
         Kept::Rescued},
        {"LogRemoved", with([](Home h) { ASSERT_TRUE(QFile::remove(h.wal())); }), Kept::InPlace},
        {"LogEmptied", with([](Home h) {
             ASSERT_TRUE(QFile::rename(h.wal(), h.wal() + u".old"_s));
             writeBytes(h.wal(), {});
         }),
         Kept::InPlace},
        {"ManifestRemoved", with([](Home h) {
             ASSERT_TRUE(QFile::remove(ProjectLibraryController::manifestPath(h.root)));
         }),
         Kept::InPlace},
        {"HistoryRemoved", with([](Home h) {
             ASSERT_TRUE(QDir(VersionFiles::folderPath(h.root)).removeRecursively());
         }),
         Kept::InPlace},
    };
    return all;
}

TEST_P(ChangeMatrix, KeepsEveryWord)
{
    const Change& row = rows().at(size_t(GetParam()));
    QString words;
    run(&words);
    expectWords();
    row.change(*this);
    type(u" Ebb."_s);
    EXPECT_EQ(state().projectSession().saveFailure().has_value(),
              row.words == Change::Words::Rescued);
    (void)said(); // what comes up about it is only looked at
    // As a session that ends: nothing is asked.
    QElapsedTimer ending;
    ending.start();
    quit();
    RecordProperty("ended after (ms)", int(ending.elapsed()));
    holder.reset();
    if (!row.place) {
        EXPECT_FALSE(QFileInfo::exists(root)) << "nothing is made in its place";
    }
    for (const char* which : {"first start after it", "second start after it"}) {
        SCOPED_TRACE(which);
        run(&words);
        if (row.words == Change::Words::InPlace) {
            const QString place = QFileInfo(root).path() + u'/' + QString::fromLatin1(row.place);
            if (!state().projectSession().currentProject())
                state().projectSession().openProjectAt(place, true);
            expectWords(u"Low water\nMara counts. Ebb."_s);
            EXPECT_EQ(state().projectSession().currentProject()->rootPath, place);
            EXPECT_TRUE(state().projectSession().rescues().isEmpty());
        } else {
            ASSERT_EQ(state().projectSession().rescues().size(), 1);
            const auto kept = RescueFile::read(state().projectSession().rescues().first().folder,
                                               state().services().clock);
            ASSERT_TRUE(kept);
            const auto found = std::ranges::find(
                kept->notes, note, [](const Shared<NoteRecord>& each) { return each->id; });
            ASSERT_NE(found, kept->notes.end());
            EXPECT_EQ((*found)->body, u"Low water\nMara counts. Ebb."_s);
        }
        quit();
    }
}

INSTANTIATE_TEST_SUITE_P(Kinds, ChangeMatrix, testing::Range(0, int(ChangeMatrix::rows().size())),
                         [](const testing::TestParamInfo<int>& row) {
                             return ChangeMatrix::rows().at(size_t(row.param)).name;
                         });

} // namespace
} // namespace orvane
