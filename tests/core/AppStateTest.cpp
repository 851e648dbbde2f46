// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/state/AppState.h"

#include "core/Records.h"
#include "core/records/RecordJson.h"
#include "core/state/SessionKeys.h"
#include "support/NoDescriptors.h"
#include "support/TestServices.h"
#include "support/Versions.h"
#include "text/rtf/BinderRTF.h"

#include <QCoreApplication>
#include <QThread>
#include <gtest/gtest.h>

#include <csignal>
#include <sys/resource.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

struct AppStateTest : ::testing::Test {
    TestServices test;
    std::unique_ptr<AppState> app = std::make_unique<AppState>(test.services());

    /// Ends the program and starts it again on the same disk and settings.
    void restart()
    {
        app->projectSession().terminate();
        app = std::make_unique<AppState>(test.services());
        app->projectSession().bootstrapProjects();
    }
    QUuid newProject(const QString& name = u"Tidewater"_s)
    {
        SessionKeys::welcomeDismissed.write(test.defaults, true);
        const auto id = app->projectSession().createProject(name, std::nullopt);
        EXPECT_TRUE(id) << qPrintable(id ? QString() : id.error());
        return id.value_or(QUuid());
    }
    QUuid newNote(const QString& title, const QString& body = {})
    {
        const QUuid id = app->createNote().value();
        app->updateNote(id, {title, body, {}, {}, {}, {}});
        return id;
    }
    QString dataFolder()
    {
        return ProjectLibraryController::projectDataDirectoryPath(
            app->projectSession().projects().first().rootPath);
    }
};

TEST_F(AppStateTest, WhatWasWrittenIsThereAfterTheNextStart)
{
    const QUuid project = newProject();
    const QUuid manuscript = app->createFolder(u" Manuscript "_s).value();
    const QUuid chapter = newNote(u"Low water"_s, u"Mara counts the posts again."_s);
    app->selection().selectProjectRoot();
    const QUuid start = newNote(u"Start Here"_s, u"x"_s);
    EXPECT_EQ(app->note(start)->folderID, project);
    EXPECT_EQ(app->note(chapter)->folderID, manuscript);

    SessionKeys::launchDestination.write(test.defaults, u"lastNote"_s);
    restart();
    EXPECT_EQ(app->projectSession().rootPresentationMode(), RootPresentationMode::Editor);
    ASSERT_TRUE(app->note(chapter));
    EXPECT_EQ(app->note(chapter)->body, u"Mara counts the posts again."_s);
    EXPECT_EQ(app->folder(manuscript)->name, u"Manuscript"_s);
    EXPECT_EQ(app->selection().selectedNoteID(), start);
    EXPECT_EQ(app->projectSession().projects().first().updatedAt,
              app->projectSession().currentProject()->updatedAt);
    EXPECT_FALSE(QFile::exists(dataFolder() + u"/OrvaneWorkspace.store-journal"_s));
}

TEST_F(AppStateTest, AProjectBehindAMarkerStaysClosed)
{
    const QUuid project = newProject();
    newNote(u"One"_s);
    app->projectSession().terminate();
    app.reset();
    app = std::make_unique<AppState>(test.services());
    app->projectSession().refreshProjects();
    const QString store = storePath(dataFolder());
    const QByteArray damaged = QByteArray(5000, 'x');
    ASSERT_TRUE(writeFileAtomically(store, damaged));

    for (int start = 0; start < 2; ++start) {
        SCOPED_TRACE(start);
        SessionKeys::launchDestination.write(test.defaults, u"lastProject"_s);
        app = std::make_unique<AppState>(test.services());
        app->projectSession().bootstrapProjects();
        EXPECT_EQ(app->projectSession().rootPresentationMode(), RootPresentationMode::Projects);
        EXPECT_FALSE(app->projectSession().currentProject());
        ASSERT_TRUE(app->projectSession().projectLoadProtectionAlert());
        const auto alert = *app->projectSession().projectLoadProtectionAlert();
        EXPECT_EQ(*readFile(alert.backupPath + u"/OrvaneWorkspace.store"_s), damaged);
        EXPECT_TRUE(alert.message().startsWith(
            u"OrvaneWorkspace could not safely load \"Tidewater\", so it stopped before opening an empty project.\n\nThe existing Core Data store files were moved to:\n/"_s));
        EXPECT_TRUE(alert.message().contains(
            u"\n\nThis project will stay closed until the recovery marker is inspected.\n\nError:\n"_s));
        EXPECT_TRUE(app->projectSession().project(project));
    }
    // Put back by a person: the backup, and no marker.
    const QString backup = app->projectSession().projectLoadProtectionAlert()->backupPath;
    ASSERT_TRUE(QFile::exists(backup));
    ASSERT_TRUE(QFile::remove(PersistentStoreRecovery::markerPath(dataFolder())));
    app->projectSession().openProject(project, false);
    EXPECT_TRUE(
        app->projectSession().currentProject()); // the fresh store that took the old one's place
}

TEST_F(AppStateTest, DamageFoundWhileItIsOpenClosesTheProjectBehindTheAlert)
{
    const QUuid project = newProject();
    newNote(u"One"_s);
    app->projectSession().closeDamagedProject(u"page 7 is damaged"_s);
    EXPECT_FALSE(app->projectSession().currentProject());
    EXPECT_TRUE(app->notes().isEmpty());
    EXPECT_EQ(app->projectSession().rootPresentationMode(), RootPresentationMode::Projects);
    ASSERT_TRUE(app->projectSession().projectLoadProtectionAlert());
    EXPECT_EQ(app->projectSession().projectLoadProtectionAlert()->errorDescription,
              u"page 7 is damaged"_s);
    const QString backup = app->projectSession().projectLoadProtectionAlert()->backupPath;
    EXPECT_TRUE(QFile::exists(backup + u"/OrvaneWorkspace.store"_s));
    app->projectSession().openProject(project, false);
    EXPECT_FALSE(app->projectSession().currentProject());

    // A sound store goes through the check without a word.
    newProject(u"Sound"_s);
    app->projectSession().checkStoreInBackground();
    for (int i = 0; i < 50; ++i) {
        QThread::msleep(10);
        QCoreApplication::processEvents();
    }
    EXPECT_TRUE(app->projectSession().currentProject());
}

TEST_F(AppStateTest, ASecondOpenerIsToldWhoHasTheProject)
{
    const QUuid project = newProject();
    AppState other(test.services());
    other.projectSession().refreshProjects();
    other.projectSession().openProject(project, false);
    EXPECT_FALSE(other.projectSession().currentProject());
    ASSERT_TRUE(other.projectSession().projectOpenProblem());
    EXPECT_EQ(other.projectSession().projectOpenProblem()->title, u"Project Is Open Elsewhere"_s);
    EXPECT_TRUE(other.projectSession().projectOpenProblem()->message.contains(
        QString::number(QCoreApplication::applicationPid())));
    app->projectSession().closeProject();
    other.projectSession().clearProjectOpenProblem();
    other.projectSession().openProject(project, false);
    EXPECT_TRUE(other.projectSession().currentProject());
}

TEST_F(AppStateTest, AStoreReadAheadOpensAsItWouldHave)
{
    newProject();
    const QUuid note = newNote(u"Low water"_s, u"Mara counts."_s);
    SessionKeys::launchDestination.write(test.defaults, u"lastNote"_s);
    const QString folder = dataFolder();
    std::unique_ptr<PersistenceController> other;
    const auto nothing = [] {
    };
    const auto isOpen = [&] {
        return app->projectSession().rootPresentationMode() == RootPresentationMode::Editor &&
               app->note(note)->body == u"Mara counts."_s && app->createNote() &&
               !app->projectSession().saveFailure();
    };
    const auto isElsewhere = [&] {
        other.reset();
        return app->projectSession().rootPresentationMode() == RootPresentationMode::Projects &&
               app->projectSession().projectOpenProblem()->title == u"Project Is Open Elsewhere"_s;
    };
    const auto isProtected = [&] {
        return app->projectSession().rootPresentationMode() == RootPresentationMode::Projects &&
               app->projectSession().projectLoadProtectionAlert() &&
               !app->projectSession().currentProject();
    };
    struct Row {
        const char* name;
        std::function<void()> before;
        std::function<bool()> after;
        bool isWanted = true;
    };
    const Row rows[] = {
        {"sound", nothing, isOpen},
        {"open elsewhere", [&] { other = PersistenceController::open(folder, test.clock).value(); },
         isElsewhere},
        {"not wanted in the end", nothing, [] { return true; }, false},
        {"sound still", nothing, isOpen},
        {"damaged", [&] { (void)writeFileAtomically(storePath(folder), QByteArray(5000, 'x')); },
         isProtected},
        {"behind the marker of that", nothing, isProtected},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        app->projectSession().terminate();
        app = std::make_unique<AppState>(test.services());
        row.before();
        app->projectSession().prepareBootstrap();
        EXPECT_EQ(app->projectSession().rootPresentationMode(), RootPresentationMode::Editor);
        EXPECT_FALSE(app->projectSession().currentProject());
        if (row.isWanted)
            app->projectSession().bootstrapProjects();
        EXPECT_TRUE(row.after());
    }
}

TEST_F(AppStateTest, SwitchingProjectsKeepsBothAndTheOpenHistory)
{
    const QUuid one = newProject(u"One"_s);
    newNote(u"In one"_s);
    const QUuid two = newProject(u"Two"_s);
    EXPECT_EQ(app->notes().size(), 0);
    EXPECT_EQ(app->projectSession().projectOpenHistoryIDs(), (QList<QUuid>{two, one}));
    app->projectSession().openProject(one, false);
    EXPECT_EQ(app->notes().size(), 1);
    EXPECT_EQ(app->projectSession().projectOpenHistoryIDs(), (QList<QUuid>{one, two}));
    EXPECT_EQ(app->projectSession().projectsByRecentOpen().first().id, one);
    app->projectSession().presentProjectsBrowser();
    EXPECT_TRUE(app->projectSession().currentProject());
    app->projectSession().openProject(idOf(99), true);
    app->projectSession().presentEditor();
    EXPECT_EQ(app->projectSession().currentProject()->id, one);
    ASSERT_TRUE(
        app->projectSession().moveProjectToTrash(app->projectSession().project(one)->rootPath));
    EXPECT_FALSE(app->projectSession().currentProject());
    EXPECT_EQ(app->projectSession().projects().size(), 1);
    EXPECT_TRUE(app->notes().isEmpty());

    QStringList many{u"not an id"_s};
    for (int i = 0; i < 25; ++i)
        many.append(uuidText(idOf(i)));
    test.defaults.set(SessionKeys::openProjectHistoryIDs, many);
    EXPECT_EQ(app->projectSession().projectOpenHistoryIDs().size(), 25);
    app->projectSession().openProject(two, false);
    EXPECT_EQ(app->projectSession().projectOpenHistoryIDs().size(), 20);
}

TEST_F(AppStateTest, TheLicenceStandsBeforeEveryChange)
{
    const QUuid project = newProject();
    const QUuid note = newNote(u"Note"_s, u"body"_s);
    const QUuid folder = app->createFolder(u"Folder"_s).value();
    const auto notes = app->notes().records();
    const auto folders = app->folders().records();
    const BinderOrder order = app->order();
    test.licence.setPolicy([] { return false; });
    int unlocks = 0;
    QObject::connect(&app->projectSession(), &ProjectSession::licenceUnlockAsked, app.get(),
                     [&] { ++unlocks; });

    struct Row {
        const char* name;
        std::function<void()> act;
    };
    const Row rows[] = {
        {"create note",
         [&] {
             app->createNote();
         }},
        {"create note with body",
         [&] {
             app->createNote(u"x"_s, {});
         }},
        {"create folder",
         [&] {
             app->createFolder(u"x"_s);
         }},
        {"create project",
         [&] {
             (void)app->projectSession().createProject(u"x"_s, {});
         }},
        {"update note",
         [&] {
             app->updateNote(note, {u"x"_s, {}, {}, {}, {}, {}});
         }},
        {"note title",
         [&] {
             app->updateNoteBinderTitle(note, u"x"_s, {});
         }},
        {"folder title",
         [&] {
             app->updateFolderBinderTitle(folder, u"x"_s, {});
         }},
        {"note icon",
         [&] {
             app->updateNoteIcon(note, u"x"_s);
         }},
        {"folder icon",
         [&] {
             app->updateFolderIcon(folder, u"x"_s);
         }},
        {"note tags",
         [&] {
             app->updateNoteTags(note, {u"x"_s});
         }},
        {"add tag",
         [&] {
             app->addTagToNote(note, u"x"_s);
         }},
        {"pin",
         [&] {
             app->togglePinNote(note);
         }},
        {"move note",
         [&] {
             app->moveNote(note, folder, {});
         }},
        {"duplicate",
         [&] {
             app->duplicateNote(note);
         }},
        {"duplicate folder",
         [&] {
             app->duplicateFolder(folder);
         }},
        {"to the Trash",
         [&] {
             app->moveNoteToTrash(note);
         }},
        {"erase",
         [&] {
             app->eraseNotePermanently(note);
         }},
        {"delete folder",
         [&] {
             app->deleteFolder(folder);
         }},
        {"project's name",
         [&] {
             app->projectSession().updateProjectMetadata(
                 app->projectSession().project(project)->rootPath, u"x"_s, {}, {});
         }},
        {"project to the trash",
         [&] {
             (void)app->projectSession().moveProjectToTrash(
                 app->projectSession().project(project)->rootPath);
         }},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        unlocks = test.beeper.count = 0;
        row.act();
        EXPECT_EQ(unlocks, 1);
        EXPECT_EQ(test.beeper.count, 1);
        EXPECT_EQ(app->notes().records(), notes);
        EXPECT_EQ(app->folders().records(), folders);
        EXPECT_EQ(app->order(), order);
    }
    EXPECT_EQ(app->projectSession().projects().size(), 1);
}

TEST_F(AppStateTest, SelectionAndHistory)
{
    newProject();
    const QUuid folder = app->createFolder(u"F"_s).value();
    QList<QUuid> ids;
    for (const char16_t* title : {u"a", u"b", u"c"})
        ids.append(newNote(QString::fromUtf16(title)));
    app->navigateMainEditorHistory(-1);
    EXPECT_EQ(app->selection().selectedNoteID(), ids[1]);
    app->eraseNotePermanently(ids[0]);
    app->navigateMainEditorHistory(-1);
    EXPECT_EQ(app->selection().selectedNoteID(), ids[1]);
    EXPECT_FALSE(app->selection().canNavigateMainEditorBack());
    app->navigateMainEditorHistory(1);
    EXPECT_EQ(app->selection().selectedNoteID(), ids[2]);

    QList<std::pair<std::optional<QUuid>, std::optional<QUuid>>> announced;
    QObject::connect(&app->selection(), &Selection::selectedNoteAboutToChange,
                     [&](const auto& from, const auto& to) {
                         EXPECT_EQ(app->selection().selectedNoteID(), from);
                         announced.append({from, to});
                     });
    app->selection().selectFolder(folder);
    app->selection().selectBinderRow(BinderRowID{BinderRowID::Kind::Note, ids[1]});
    app->selection().selectBinderRow(std::nullopt);
    EXPECT_EQ(announced.size(), 3);
    EXPECT_FALSE(app->selection().selectedBinderRowID());
}

TEST_F(AppStateTest, ALiveTitleIsStoredOnlyWithTheNote)
{
    newProject();
    const QUuid id = app->createNote().value();
    app->updateNoteBinderTitle(id, u"Old"_s, Blob("{\\rtf1 Old}"));
    app->applyLiveTitle(id, u"New"_s);
    EXPECT_EQ(app->note(id)->titleForList(), u"New"_s);
    const auto stored = [&] {
        return app->projectSession().persistenceController()->load().notes.first();
    };
    EXPECT_EQ(stored()->title, u"Old"_s);
    app->updateNote(id, {u"New"_s, {}, {}, {}, {}, {}});
    EXPECT_EQ(stored()->title, u"New"_s);
    EXPECT_FALSE(stored()->titleRTF);
}

TEST_F(AppStateTest, VersionsAreKeptAtMostOncePerIntervalAndBeforeARestore)
{
    newProject();
    const QUuid id = app->createNote().value();
    const auto versions = [&] {
        return versionsOf(*app, id);
    };
    const auto write = [&](const QString& body) {
        app->updateNote(id, {u"T"_s, body, {}, Blob("payload of " + body.toUtf8()), {}, {}});
    };
    write(u"one"_s);
    test.clock.advance(299s);
    write(u"two"_s);
    EXPECT_EQ(versions().size(), 1);
    test.clock.advance(1s);
    write(u"three"_s);
    EXPECT_EQ(versions().size(), 2);
    test.clock.advance(1h);
    app->updateNoteTags(id, {u"tag"_s});
    write(u"three"_s);
    EXPECT_EQ(versions().size(), 2);

    autoSnapshotEnabledSetting.write(test.defaults, false);
    write(u"four"_s);
    const NoteVersionSnapshot first = versions().first();
    app->restoreVersion(first);
    EXPECT_EQ(app->note(id)->body, u"one"_s);
    EXPECT_FALSE(app->note(id)->richContentPayload);
    ASSERT_EQ(versions().size(), 3);
    EXPECT_EQ(versions().last().label, u"Before Restore"_s);
    EXPECT_EQ(versions().last().bodyPlain, u"four"_s);
    app->restoreVersion(versions().last());
    EXPECT_EQ(app->note(id)->body, u"four"_s);
    EXPECT_EQ(app->note(id)->richContentPayload, Blob("payload of four"));
    app->deleteVersion(id, first.id);
    EXPECT_EQ(versions().size(), 3);
}

TEST_F(AppStateTest, AVersionIsOnlyRestoredWhenWhatIsThereCouldBeKept)
{
    newProject();
    const QUuid id = newNote(u"T"_s, u"one"_s);
    const auto versions = [&] {
        return versionsOf(*app, id);
    };
    const NoteVersionSnapshot first = versions().first();
    app->updateNote(id, {u"T"_s, u"two"_s, {}, {}, {}, {}});
    for (int again = 0; again < 2; ++again) {
        const NoDescriptors none;
        const auto restored = app->restoreVersion(first);
        ASSERT_FALSE(restored);
        EXPECT_EQ(restored.error().code, VersionHistoryError::Code::Unreadable);
        EXPECT_EQ(app->note(id)->body, u"two"_s);
        EXPECT_FALSE(app->deleteVersion(id, first.id));
    }
    EXPECT_EQ(versions().size(), 1);
    ASSERT_TRUE(app->restoreVersion(first));
    EXPECT_EQ(app->note(id)->body, u"one"_s);
    ASSERT_EQ(versions().size(), 2);
    EXPECT_EQ(versions().last().bodyPlain, u"two"_s);

    // The note goes away while it is being written before the restore.
    QObject::connect(app.get(), &AppState::noteAboutToBeReplaced,
                     [&](const QUuid& note) { app->eraseNotePermanently(note); });
    EXPECT_FALSE(app->restoreVersion(first));
}

TEST_F(AppStateTest, AVersionThatCouldNotBeKeptIsTriedAgainWithTheNextChange)
{
    newProject();
    const QUuid id = app->createNote().value();
    const auto write = [&](const QString& body) {
        app->updateNote(id, {u"T"_s, body, {}, {}, {}, {}});
        app->versionHistory().waitForAll();
    };
    const QString folder =
        VersionFiles::folderPath(app->projectSession().currentProject()->rootPath);
    ASSERT_TRUE(writeFileAtomically(folder, "in the way"));
    write(u"one"_s);
    ASSERT_TRUE(QFile::remove(folder));
    write(u"two"_s);
    write(u"three"_s);
    const auto versions = versionsOf(*app, id);
    ASSERT_EQ(versions.size(), 1);
    EXPECT_EQ(versions.first().bodyPlain, u"two"_s);
}

TEST_F(AppStateTest, AProjectThatClosesHasItsVersionsOnTheDisk)
{
    newProject();
    const QUuid id = app->createNote().value();
    const QString file =
        VersionFiles::filePath(app->projectSession().currentProject()->rootPath, id);
    app->updateNote(id, {u"T"_s, QString(100'000, u'x'), {}, {}, {}, {}});
    bool told = false;
    app->appendVersionSnapshotLater(id, u"Manual Save"_s, [&](const auto& kept) {
        told = kept.has_value();
        EXPECT_TRUE(app->projectSession().currentProject());
    });
    app->projectSession().closeProject();
    EXPECT_TRUE(told);
    EXPECT_GT(QFileInfo(file).size(), 200'000);
}

TEST_F(AppStateTest, TagSettingsComeBackAndTheNextChangeKeepsThem)
{
    app->setTagColor(u"Tide"_s, u"#112233"_s);
    app->addAlias(u"flood"_s, u"Tide"_s);
    app->addAutoTagException(u"the"_s);
    const TagSettings before = app->tagSettings();
    restart();
    EXPECT_EQ(app->tagSettings(), before);
    app->setTagColor(u"ebb"_s, u"#445566"_s);
    restart();
    EXPECT_EQ(app->tagSettings().colorHexes.value(u"tide"_s), u"#112233"_s);
    EXPECT_EQ(app->tagSettings().aliases, before.aliases);
    EXPECT_EQ(app->tagSettings().autoTagExceptions, before.autoTagExceptions);
}

TEST_F(AppStateTest, AFailedSaveLeavesMemoryRightAndTheNextOneWritesEverything)
{
    const QUuid project = newProject();
    const QUuid id = newNote(u"Kept"_s);
    QList<bool> failing;
    QObject::connect(&app->projectSession(), &ProjectSession::saveFailureChanged,
                     [&] { failing.append(app->projectSession().saveFailure().has_value()); });
    {
        rlimit before{};
        ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
        std::signal(SIGXFSZ, SIG_IGN);
        rlimit small = before;
        small.rlim_cur = 4096;
        ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
        app->updateNote(id, {u"Kept"_s, QString(300'000, u'x'), {}, {}, {}, {}});
        test.clock.advance(1min);
        app->createNote();
        ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &before), 0);
    }
    ASSERT_TRUE(app->projectSession().saveFailure());
    EXPECT_EQ(test.clock.now().secondsSince(app->projectSession().saveFailure()->since), 60);
    EXPECT_EQ(app->note(id)->body.readOrNothing().size(), 300'000);
    app->createFolder(u"Later"_s);
    EXPECT_FALSE(app->projectSession().saveFailure());
    EXPECT_EQ(failing, (QList<bool>{true, false}));
    const auto notes = app->notes().size();
    restart();
    app->projectSession().openProject(project, false);
    EXPECT_EQ(app->notes().size(), notes);
    EXPECT_EQ(app->note(id)->body.readOrNothing().size(), 300'000);
}

TEST_F(AppStateTest, EmptyingTheTrashLeavesReadableFilesInTheDesktopsTrash)
{
    newProject();
    const QUuid kept = newNote(u"Kept"_s);
    for (const QString& title : {u"a/b"_s, QString(), QString(500, u'é')}) {
        const QUuid id = newNote(title, title.isEmpty() ? QString() : u"Some text"_s);
        app->moveNoteToTrash(id);
    }
    ASSERT_TRUE(app->emptyTrashToMacOSUserTrash());
    EXPECT_EQ(app->notes().size(), 1);
    EXPECT_TRUE(app->note(kept));
    const QDir trash(test.folder.path() + u"/trash"_s);
    EXPECT_EQ(trash.entryList(QDir::Files).size(), 3);
    EXPECT_EQ(trash.entryList({u"Untitled-*.rtf"_s}).size(), 1);
    const QString named = trash.entryList({u"a-b-????????.rtf"_s}).value(0);
    EXPECT_EQ(BinderRTF::plainString(*readFile(trash.filePath(named))), u"Some text"_s);

    app->moveNoteToTrash(kept);
    QDir(test.folder.path() + u"/tmp"_s).removeRecursively();
    ASSERT_TRUE(writeFileAtomically(test.folder.path() + u"/tmp"_s, "no folder"));
    EXPECT_FALSE(app->emptyTrashToMacOSUserTrash());
    EXPECT_TRUE(app->note(kept));
}

// What the disk doesn't give now may come back; a file without its words must not take its place.
TEST_F(AppStateTest, ANoteThatCantBeReadStaysInTheTrash)
{
    struct NoBytes : BlobSource {
        std::expected<QByteArray, QString> read(qint64, qsizetype) override
        {
            return std::unexpected(u"the disk is away"_s);
        }
    };
    newProject();
    NoteRecord note = makeNote(1, FolderRecord::trashFolderID);
    note.body = NoteText(Blob(100, SharedBlobSource(new NoBytes), 1));
    app->loadNotebookSnapshot({{}, {note}, std::nullopt}, false, std::nullopt);
    ASSERT_TRUE(app->note(note.id));
    EXPECT_FALSE(app->emptyTrashToMacOSUserTrash());
    EXPECT_TRUE(app->note(note.id));
    EXPECT_TRUE(QDir(test.folder.path() + u"/trash"_s).entryList(QDir::Files).isEmpty());
}

TEST_F(AppStateTest, TakesOverALibraryWideNotebookOnce)
{
    const QString legacy = test.services().folders.applicationSupport + u"/OrvaneNotes"_s;
    ASSERT_TRUE(orvane::makeFolder(legacy));
    NotebookSnapshot snapshot;
    snapshot.notes = {makeNote(1, idOf(5)), makeNote(2, idOf(6))};
    ASSERT_TRUE(writeFileAtomically(legacy + u"/notebook.json"_s, encodeJson(toJson(snapshot))));
    for (int start = 0; start < 2; ++start) {
        app = std::make_unique<AppState>(test.services());
        app->projectSession().bootstrapProjects();
        ASSERT_EQ(app->projectSession().projects().size(), 1);
        EXPECT_EQ(app->projectSession().projects().first().name, u"OrvaneWorkspace Library"_s);
        EXPECT_EQ(app->projectSession().projects().first().iconName, u"sf:archivebox.fill"_s);
        app->projectSession().openProject(app->projectSession().projects().first().id, false);
        EXPECT_EQ(app->notes().size(), 2);
    }
    EXPECT_TRUE(QFile::exists(legacy + u"/notebook.pre_coredata.json"_s));
}

} // namespace
} // namespace orvane
