// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// A start with a project so large that its window shows what stands open before the rest is read.
#include "ShellFixture.h"
#include "core/library/ProjectLibraryController.h"
#include "core/notebook/NotebookEdits.h"
#include "core/store/PersistenceController.h"
#include "core/store/StoreBeginning.h"
#include "editor/pane/EditorPaneView.h"
#include "editor/session/EditorSession.h"
#include "editor/view/EditorView.h"

#include <SQLiteCpp/Database.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

constexpr int folderCount = 40;
constexpr int noteCount = int(fewestNotesForBeginning) + 80;

class LargeProject : public ShellTest {
protected:
    void SetUp() override
    {
        dismissWelcome();
        start();
        ASSERT_TRUE(state().projectSession().createProject(u"Tidewater"_s, {}));
        root = state().projectSession().currentProject()->rootPath;
        NotebookSnapshot snapshot;
        for (int i = 0; i < folderCount; ++i) {
            FolderRecord folder;
            folder.id = folders[size_t(i)];
            folder.name = u"Folder %1"_s.arg(i, 2, 10, QLatin1Char('0'));
            folder.createdAt = {i};
            if (i == folderCount - 1)
                folder.parentFolderID = folders[0];
            snapshot.folders.append(folder);
        }
        for (int i = 0; i < noteCount; ++i) {
            NoteRecord note;
            note.id = QUuid::createUuid();
            note.folderID = folders[size_t(i % folderCount)];
            note.title = u"Note %1"_s.arg((i * 7'919) % noteCount);
            note.body = u"Words of note %1.\nAnd what lies below."_s.arg(i);
            note.tags = {i % 3 == 0 ? u"tide"_s : u"ebb"_s};
            note.createdAt = note.updatedAt = {1'000 + i};
            snapshot.notes.append(note);
        }
        ASSERT_TRUE(state().projectSession().persistenceController()->save(snapshot));
        shut = snapshot.notes.at(7)->id;
        note = snapshot.notes.at(folderCount * 3)->id;
        deep = snapshot.notes.at(folderCount - 1)->id;
        defaults().set(u"settings.general.launchDestination"_s, u"lastProject"_s);
        state().projectSession().closeProject();
        state().projectSession().openProjectAt(root, false);
        state().setBinderSortOrder(BinderSortOrder::AlphabeticalAZ);
        state().setBinderSortOrder(BinderSortOrder::Custom);
        state().toggleExpanded(folders[0]);
        state().openNote(note);
        quit();
    }

    /// As far as the window, before anything that the thread that reads has to tell is heard.
    void startAhead()
    {
        m_app = std::make_unique<OrvaneWorkspaceApp>(
            UserFolders::below(m_home.path()),
            std::make_unique<FolderTrash>(m_home.path() + QStringLiteral("/trash")));
        m_app->start();
        m_hand = std::make_unique<TourHand>(window());
    }
    ProjectSession& session() { return state().projectSession(); }
    void execute(const QString& sql) const
    {
        SQLite::Database database(
            storePath(ProjectLibraryController::projectDataDirectoryPath(root)).toStdString(),
            SQLite::OPEN_READWRITE);
        database.exec(sql.toStdString());
    }

    std::array<QUuid, folderCount> folders = [] {
        std::array<QUuid, folderCount> ids;
        std::ranges::generate(ids, &QUuid::createUuid);
        return ids;
    }();
    QUuid note;
    QUuid deep; ///< in a folder below the first
    QUuid shut; ///< in a folder that stays closed
    QString root;
};

TEST_F(LargeProject, ShowsAtOnceWhatItShowsWhenItIsWhole)
{
    struct Row {
        const char* name;
        std::function<void()> arrange;
    };
    const Row rows[] = {
        {"the selected note in an open folder",
         [] {
         }},
        {"its folder closed",
         [&] {
             state().toggleExpanded(folders[0]);
         }},
        {"a note below a closed folder",
         [&] {
             state().openNote(deep);
         }},
        {"A to Z",
         [&] {
             state().setBinderSortOrder(BinderSortOrder::AlphabeticalAZ);
         }},
        {"a folder selected",
         [&] {
             state().selection().selectFolder(folders[5]);
         }},
        {"the root selected",
         [&] {
             state().selection().selectProjectRoot();
         }},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        start();
        ASSERT_TRUE(TourHand::waitFor([&] { return !session().isOpening(); }));
        row.arrange();
        quit();

        startAhead();
        ASSERT_TRUE(session().isOpening());
        const auto selected = state().selection().selectedBinderRowID();
        EXPECT_LT(state().notes().size(), noteCount / 4) << "the rest can't be needed";
        const QImage ahead = window().grab().toImage();
        session().finishOpening();
        EXPECT_FALSE(session().isOpening());
        EXPECT_EQ(state().notes().size(), noteCount);
        EXPECT_EQ(state().selection().selectedBinderRowID(), selected);
        const QImage whole = window().grab().toImage();
        EXPECT_EQ(ahead, whole);
        if (ahead != whole && qEnvironmentVariableIsSet("ORVANE_PICTURES")) {
            const QString folder = qEnvironmentVariable("ORVANE_PICTURES");
            ahead.save(folder + u"/ahead.png"_s);
            whole.save(folder + u"/whole.png"_s);
        }
        quit();
    }
}

TEST_F(LargeProject, WhatIsDoneWhileItOpensIsDoneToTheWhole)
{
    struct Row {
        const char* name;
        std::function<void()> act;
        std::function<bool()> isThere;
    };
    QUuid made;
    const Row rows[] = {
        {"a letter is typed",
         [&] {
             window().editorPane().textView().setFocus();
             m_hand->press(Qt::Key_Home, Qt::ControlModifier);
             m_hand->type(u"Ebb. "_s);
         },
         [&] {
             return state().note(note)->body.readOrNothing().startsWith(u"Ebb. Words");
         }},
        {"a note is made", [&] { made = state().createNote(u"High water"_s, {}).value(); },
         [&] {
             return state().note(made) && state().note(made)->body == u"High water"_s;
         }},
        {"a folder is opened", [&] { state().toggleExpanded(folders[3]); },
         [&] {
             return state().order().expandedFolderIDs.contains(folders[3]);
         }},
        {"a note that isn't shown is opened", [&] { state().openNote(shut); },
         [&] {
             return state().selection().selectedNoteID() == shut;
         }},
        {"a title is typed", [&] { state().applyLiveTitle(shut, u"Slack water"_s); },
         [] {
             return true;
         }},
        {"a tag is renamed everywhere", [&] { (void)state().renameTag(u"ebb"_s, u"neap"_s); },
         [&] {
             return state().tagCount(u"neap"_s) > noteCount / 2;
         }},
        {"the program ends", [&] {},
         [] {
             return true;
         }},
        {"the browser is asked for", [&] { session().presentProjectsBrowser(); },
         [] {
             return true;
         }},
    };
    qsizetype expected = noteCount;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        startAhead();
        ASSERT_TRUE(session().isOpening());
        row.act();
        EXPECT_EQ(session().isOpening(), QLatin1String(row.name) == "the program ends"_L1);
        quit();
        start();
        session().finishOpening();
        ASSERT_TRUE(session().currentProject());
        expected += QLatin1String(row.name) == "a note is made"_L1 ? 1 : 0;
        EXPECT_EQ(state().notes().size(), expected);
        EXPECT_TRUE(row.isThere());
        quit();
    }
}

TEST_F(LargeProject, AnEditMadeFromAPartOfItIsRefused)
{
    startAhead();
    const NotebookEdit edit = NotebookEdits::moveNote(
        state().notebook(), session().currentProject()->id, note, folders[1], std::nullopt);
    EXPECT_EQ(state().apply(edit), std::unexpected(Refusal::NotThere));
    EXPECT_EQ(state().notes().size(), noteCount);
    EXPECT_EQ(state().note(note)->folderID, folders[0]);
}

TEST_F(LargeProject, DamageBehindWhatIsShownProtectsIt)
{
    execute(u"UPDATE OrvaneNote SET title = 'Flotsam' WHERE id = '%1'"_s.arg(uuidText(shut)));
    QString words;
    words = said([this] {
        startAhead();
        EXPECT_TRUE(session().isOpening());
        EXPECT_TRUE(TourHand::waitFor([this] { return !session().isOpening(); }));
    });
    EXPECT_TRUE(words.contains(u"Protected"_s)) << qPrintable(words);
    EXPECT_FALSE(session().currentProject());
    EXPECT_TRUE(state().notes().isEmpty());
    EXPECT_EQ(session().rootPresentationMode(), RootPresentationMode::Projects);
    EXPECT_FALSE(state().selection().selectedNoteID());
}

TEST_F(LargeProject, WaitsForTheWholeWhereAPartWouldShowSomethingElse)
{
    struct Row {
        const char* name;
        QString sql;
    };
    const QString shown = uuidText(note);
    const Row rows[] = {
        {"an order that is gone",
         u"DELETE FROM OrvaneNotebookMeta WHERE id LIKE 'notes/%1/%'"_s.arg(uuidText(folders[9]))},
        {"a note that lies elsewhere", u"UPDATE OrvaneNote SET checksum = NULL, folderID = '%1' "
                                       "WHERE id = '%2'"_s.arg(uuidText(folders[4]), shown)},
        {"more notes in the order than there should be",
         u"UPDATE OrvaneStore SET noteCount = noteCount - 1"_s},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        execute(row.sql);
        startAhead();
        EXPECT_FALSE(session().isOpening());
        EXPECT_TRUE(session().currentProject());
        EXPECT_EQ(state().notes().size(), noteCount);
        quit();
    }
}

} // namespace
} // namespace orvane
