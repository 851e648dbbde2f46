// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// Other programs rename, move, copy, replace and remove what a project lies in.
#include "core/ProjectFixture.h"
#include "core/state/ProjectQuestions.h"
#include "support/Versions.h"

#include <sys/mount.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

struct ProjectPlace : ProjectFixture {
    QStringList libraryEntries()
    {
        return QDir(library()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }
};

TEST_F(ProjectPlace, AFolderRenamedWhileItIsOpenIsFollowed)
{
    const QString before = newProject(u"Tidewater"_s);
    const QUuid note = newNote(u"Low water"_s, u"one"_s);
    const QString after = library() + u"/Tidewater, a novel"_s;
    ASSERT_TRUE(QDir().rename(before, after));
    write(note, u"Low water"_s, u"two"_s);
    EXPECT_TRUE(app->appendVersionSnapshot(note, u"Manual Save"_s));
    test.clock.advance(10s);
    EXPECT_FALSE(app->projectSession().saveFailure());
    EXPECT_EQ(app->projectSession().currentProject()->rootPath, after);
    EXPECT_EQ(app->selection().selectedProjectFolder(), after);
    ASSERT_TRUE(app->projectSession().projectAt(after));
    EXPECT_TRUE(ProjectWorkspaceStateStore::save({}, app->projectSession().projectAccessPath()));
    EXPECT_FALSE(QFileInfo::exists(before));
    app->projectSession().closeProject();
    EXPECT_EQ(libraryEntries(), QStringList{u"Tidewater, a novel"_s});
    const QDir data(ProjectLibraryController::projectDataDirectoryPath(after));
    EXPECT_EQ(data.entryList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::DirsFirst),
              (QStringList{u"history"_s, u"OrvaneWorkspace.store"_s, u"workspace-state.json"_s}));
    restart();
    ASSERT_TRUE(app->note(note));
    EXPECT_EQ(app->note(note)->body, u"two"_s);
    EXPECT_TRUE(app->projectSession().missingProjects().isEmpty());
    EXPECT_TRUE(test.questions.asked.isEmpty());
}

TEST_F(ProjectPlace, AFolderRenamedBehindTheBrowserIsNotMadeAnew)
{
    const QString before = newProject(u"Tidewater"_s);
    const QUuid note = newNote(u"Low water"_s, u"one"_s);
    app->projectSession().closeProject();
    const QString after = library() + u"/Ebb"_s;
    ASSERT_TRUE(QDir().rename(before, after));
    app->projectSession().openProjectAt(before, true);
    EXPECT_FALSE(app->projectSession().currentProject());
    ASSERT_TRUE(app->projectSession().projectOpenProblem());
    EXPECT_TRUE(app->projectSession().projectOpenProblem()->message.contains(before));
    EXPECT_EQ(libraryEntries(), QStringList{u"Ebb"_s});
    ASSERT_TRUE(app->projectSession().projectAt(after));
    EXPECT_TRUE(app->projectSession().missingProjects().isEmpty())
        << "it is the same project under another name";
    app->projectSession().openProjectAt(after, true);
    EXPECT_TRUE(app->note(note));
    EXPECT_TRUE(test.questions.asked.isEmpty());
}

TEST_F(ProjectPlace, WhatLosesItsFolderIsKeptAndNothingIsMadeInItsPlace)
{
    const QString folder = newProject(u"Tidewater"_s);
    const QUuid stored = newNote(u"Low water"_s, u"stored before"_s);
    const QUuid edited = newNote(u"The harbour"_s, u"first"_s);
    app->versionHistory().waitForAll();
    ASSERT_TRUE(QDir(folder).removeRecursively());
    write(edited, u"The harbour"_s, u"written after"_s);
    ASSERT_TRUE(app->projectSession().saveFailure());
    ASSERT_TRUE(app->projectSession().projectTrouble());
    EXPECT_EQ(app->projectSession().projectTrouble()->kind, ProjectTrouble::Kind::FolderGone);
    const QString rescue = app->projectSession().projectTrouble()->rescueFolder;
    EXPECT_TRUE(rescue.startsWith(library() + u"/Rescued/Tidewater, "_s)) << qPrintable(rescue);
    EXPECT_EQ(*readFile(rescue + u"/The harbour.txt"_s), "written after");
    EXPECT_EQ(*readFile(rescue + u"/Low water.txt"_s), "stored before");
    write(edited, u"The harbour"_s, u"and after that"_s);
    EXPECT_EQ(*readFile(rescue + u"/The harbour.txt"_s), "and after that");
    EXPECT_TRUE(app->projectSession().rescues().isEmpty()) << "what is being kept is not offered";
    EXPECT_FALSE(QFileInfo::exists(folder));

    restart();
    EXPECT_FALSE(QFileInfo::exists(folder));
    EXPECT_FALSE(app->projectSession().currentProject());
    ASSERT_EQ(app->projectSession().missingProjects().size(), 1);
    EXPECT_EQ(app->projectSession().missingProjects().first().title, u"Tidewater"_s);
    ASSERT_EQ(app->projectSession().rescues().size(), 1);
    ASSERT_TRUE(app->projectSession().makeProjectOf(app->projectSession().rescues().first()));
    EXPECT_EQ(titles(), (QStringList{u"Low water"_s, u"The harbour"_s}));
    EXPECT_EQ(app->note(edited)->body, u"and after that"_s);
    EXPECT_EQ(app->note(stored)->folderID, app->projectSession().currentProject()->id);
    EXPECT_TRUE(app->projectSession().rescues().isEmpty());
    app->projectSession().forgetProject(folder);
    restart();
    EXPECT_TRUE(app->projectSession().missingProjects().isEmpty());
    EXPECT_EQ(app->notes().size(), 2);
}

TEST_F(ProjectPlace, SavingGoesOnWhenTheFolderIsBack)
{
    const QString folder = newProject(u"Tidewater"_s);
    const QUuid note = newNote(u"Low water"_s, u"one"_s);
    // Out of reach for as long as its data folder has another name.
    const QString data = ProjectLibraryController::projectDataDirectoryPath(folder);
    const QString store = storeOf(folder);
    ASSERT_TRUE(QFile::rename(store, store + u".away"_s));
    write(note, u"Low water"_s, u"two words"_s);
    ASSERT_TRUE(app->projectSession().projectTrouble());
    ASSERT_EQ(app->projectSession().unsavedWork().notes.size(), 1);
    EXPECT_EQ(app->projectSession().unsavedWork().words(), 1);
    const QString rescue = app->projectSession().projectTrouble()->rescueFolder;
    EXPECT_TRUE(QFileInfo::exists(rescue));
    test.clock.advance(std::chrono::seconds(ProjectSession::retrySeconds));
    EXPECT_TRUE(app->projectSession().projectTrouble());
    ASSERT_TRUE(QFile::rename(store + u".away"_s, store));
    test.clock.advance(std::chrono::seconds(ProjectSession::retrySeconds));
    EXPECT_FALSE(app->projectSession().projectTrouble());
    EXPECT_FALSE(app->projectSession().saveFailure());
    EXPECT_FALSE(QFileInfo::exists(rescue));
    restart();
    EXPECT_EQ(app->note(note)->body, u"two words"_s);
}

// A disk that this process mounts and takes away; only where it may.
TEST_F(ProjectPlace, ADiskThatGoesAndComesBack)
{
    const QString device = test.folder.path() + u"/device"_s;
    const QString disk = test.folder.path() + u"/disk"_s;
    ASSERT_TRUE(QDir().mkpath(device) && QDir().mkpath(disk));
    const auto attach = [&] {
        return ::mount(QFile::encodeName(device), QFile::encodeName(disk), nullptr, MS_BIND,
                       nullptr) == 0;
    };
    if (::mount("none", QFile::encodeName(device), "tmpfs", 0, "size=64m") != 0)
        GTEST_SKIP() << "no mounting here";
    ASSERT_TRUE(attach());
    const QString made = newProject(u"Field notes"_s);
    app->projectSession().closeProject();
    copyFolder(made, disk + u"/Field notes"_s);
    ASSERT_TRUE(QDir(made).removeRecursively());
    ASSERT_TRUE(QFile::link(disk + u"/Field notes"_s, made));
    app->projectSession().refreshProjects();
    app->projectSession().openProjectAt(made, true);
    const QUuid note = newNote(u"Curlew"_s, u"one"_s);
    ASSERT_EQ(::umount2(QFile::encodeName(disk), MNT_DETACH), 0);
    test.clock.advance(5s);
    ASSERT_TRUE(app->projectSession().projectTrouble());
    EXPECT_EQ(app->projectSession().projectTrouble()->kind, ProjectTrouble::Kind::DiskGone);
    app->projectSession().refreshProjects();
    ASSERT_EQ(app->projectSession().missingProjects().size(), 1);
    write(note, u"Curlew"_s, u"one two"_s);
    EXPECT_TRUE(QDir(disk).isEmpty()) << "nothing is made where the disk was";
    ASSERT_TRUE(attach());
    test.clock.advance(std::chrono::seconds(ProjectSession::retrySeconds));
    EXPECT_FALSE(app->projectSession().projectTrouble());
    app->projectSession().refreshProjects();
    EXPECT_TRUE(app->projectSession().missingProjects().isEmpty());
    restart();
    EXPECT_EQ(app->note(note)->body, u"one two"_s);
    app.reset();
    ::umount2(QFile::encodeName(disk), MNT_DETACH);
    ::umount2(QFile::encodeName(device), MNT_DETACH);
}

TEST_F(ProjectPlace, RescuedWordsFindBackToTheirProject)
{
    const QString folder = newProject(u"Tidewater"_s);
    const QUuid same = newNote(u"Same"_s, u"one"_s);
    const QUuid changed = newNote(u"Changed"_s, u"one"_s);
    const QString store = storeOf(folder);
    ASSERT_TRUE(QFile::rename(store, store + u".away"_s));
    write(same, u"Same"_s, u"rescued"_s);
    write(changed, u"Changed"_s, u"rescued too"_s);
    app->projectSession().terminate(); // without a question
    app.reset();
    ASSERT_TRUE(QFile::rename(store + u".away"_s, store));
    app = start();
    ASSERT_TRUE(app->projectSession().currentProject());
    EXPECT_EQ(app->note(same)->body, u"one"_s);
    test.clock.advance(1s);
    write(changed, u"Changed"_s, u"written since"_s);
    ASSERT_EQ(app->projectSession().rescues().size(), 1);
    ASSERT_TRUE(app->projectSession().putInPlace(app->projectSession().rescues().first()));
    EXPECT_EQ(app->note(same)->body, u"rescued"_s);
    EXPECT_EQ(app->note(changed)->body, u"written since"_s);
    EXPECT_EQ(titles(), (QStringList{u"Changed"_s, u"Changed (rescued)"_s, u"Same"_s}));
    EXPECT_TRUE(app->projectSession().rescues().isEmpty());
    EXPECT_FALSE(versionsOf(*app, same).isEmpty());
}

TEST_F(ProjectPlace, AMissingStoreIsALossAndNoLinkIsReplaced)
{
    struct Row {
        const char* name;
        std::function<void(const QString& folder, const QString& store)> lose;
    };
    const Row rows[] = {
        {"store deleted",
         [](const QString&, const QString& store) {
             QFile::remove(store);
         }},
        {"data folder gone",
         [](const QString& folder, const QString&) {
             QDir(ProjectLibraryController::projectDataDirectoryPath(folder)).removeRecursively();
         }},
        {"dangling link",
         [](const QString& folder, const QString& store) {
             QFile::rename(store, store + u".kept"_s);
             QFile::link(folder + u"/nowhere"_s, store);
         }},
        {"link loop",
         [](const QString&, const QString& store) {
             QFile::rename(store, store + u".kept"_s);
             QFile::link(store, store);
         }},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const QString folder = newProject(u"P"_s);
        newNote(u"One"_s, u"word"_s);
        app->projectSession().closeProject();
        const QString store = storeOf(folder);
        row.lose(folder, store);
        const bool wasLink = QFileInfo(store).isSymLink();
        app->projectSession().refreshProjects();
        app->projectSession().openProjectAt(folder, true);
        EXPECT_FALSE(app->projectSession().currentProject());
        ASSERT_TRUE(app->projectSession().projectOpenProblem());
        EXPECT_FALSE(QFileInfo::exists(store));
        EXPECT_EQ(QFileInfo(store).isSymLink(), wasLink);
        app->projectSession().clearProjectOpenProblem();
    }
}

// --- Copies --------------------------------------------------------------------------------------

struct ProjectCopies : ProjectPlace {
    QString original;
    QString copy;
    QUuid note;
    QUuid id;

    void SetUp() override
    {
        original = newProject(u"Tidewater"_s);
        note = newNote(u"Low water"_s, u"one"_s);
        id = app->projectSession().currentProject()->id;
        app->projectSession().closeProject();
        copy = library() + u"/Tidewater 2"_s;
        copyFolder(original, copy);
        app->projectSession().refreshProjects();
        ASSERT_EQ(app->projectSession().projects().size(), 2);
    }
};

TEST_F(ProjectCopies, ACopyGetsAnIdOfItsOwn)
{
    test.questions.answers = {{ProjectQuestions::ItIsACopy}};
    app->projectSession().openProjectAt(copy, true);
    ASSERT_EQ(test.questions.asked.size(), 1);
    const Question& asked = test.questions.asked.first();
    ASSERT_EQ(asked.sides.size(), 2);
    EXPECT_TRUE(asked.sides.first().lines.first().endsWith(u"Tidewater 2"_s));
    EXPECT_TRUE(asked.sides.first().lines.contains(u"1 note, 1 word"_s));
    EXPECT_TRUE(asked.sides.last().lines.contains(u"1 note, 1 word"_s));
    ASSERT_TRUE(app->projectSession().currentProject());
    EXPECT_EQ(app->projectSession().currentProject()->rootPath, copy);
    EXPECT_NE(app->projectSession().currentProject()->id, id);
    EXPECT_EQ(app->note(note)->folderID, app->projectSession().currentProject()->id);
    write(note, u"Low water"_s, u"in the copy"_s);
    app->projectSession().openProjectAt(original, true);
    EXPECT_EQ(app->projectSession().currentProject()->id, id);
    EXPECT_EQ(app->note(note)->body, u"one"_s);
    restart();
    EXPECT_EQ(app->projectSession().currentProject()->rootPath, original);
    app->projectSession().openProjectAt(copy, true);
    EXPECT_EQ(app->note(note)->body, u"in the copy"_s);
    EXPECT_EQ(test.questions.asked.size(), 1) << "it is asked once";
}

TEST_F(ProjectCopies, AMovedProjectIsTheProjectAndTheOtherIsSetAside)
{
    test.questions.answers = {{ProjectQuestions::ItWasMoved}};
    app->projectSession().openProjectAt(copy, true);
    EXPECT_EQ(app->projectSession().currentProject()->id, id);
    EXPECT_EQ(app->projectSession().currentProject()->rootPath, copy);
    EXPECT_TRUE(app->projectSession().knownProjects().at(original)->isSetAside);
    restart();
    EXPECT_EQ(app->projectSession().currentProject()->rootPath, copy);
    EXPECT_EQ(test.questions.asked.size(), 1);
    app->projectSession().openProjectAt(original, true); // the question again: Cancel
    EXPECT_EQ(test.questions.asked.size(), 2);
    EXPECT_EQ(app->projectSession().currentProject()->rootPath, copy);
}

TEST_F(ProjectCopies, CancelOpensNothingAndChangesNothing)
{
    const auto bytes = *readFile(storeOf(copy));
    app->projectSession().openProjectAt(copy, true);
    EXPECT_EQ(test.questions.asked.size(), 1);
    EXPECT_FALSE(app->projectSession().currentProject());
    EXPECT_EQ(*readFile(storeOf(copy)), bytes);
    EXPECT_EQ(ProjectLibraryController::readManifest(copy)->id, id);
    EXPECT_EQ(app->projectSession().knownProjects().opened(id)->folder, original);
}

TEST_F(ProjectCopies, TheTrashTakesTheFolderOfTheTileAlone)
{
    app->projectSession().openProjectAt(original, true);
    ASSERT_TRUE(app->projectSession().moveProjectToTrash(copy));
    EXPECT_FALSE(QFileInfo::exists(copy));
    ASSERT_TRUE(app->projectSession().currentProject());
    write(note, u"Low water"_s, u"still here"_s);
    EXPECT_FALSE(app->projectSession().saveFailure());
    EXPECT_TRUE(QFileInfo::exists(original));
    EXPECT_TRUE(app->projectSession().missingProjects().isEmpty());
}

TEST_F(ProjectCopies, AFolderThatLeadsToTheSamePlaceIsNoCopy)
{
    ASSERT_TRUE(QDir(copy).removeRecursively());
    ASSERT_TRUE(QFile::link(original, copy));
    app->projectSession().refreshProjects();
    app->projectSession().openProjectAt(copy, true);
    EXPECT_TRUE(test.questions.asked.isEmpty());
    EXPECT_TRUE(app->note(note));
}

// --- A store that another program puts in the place of the open one
// -------------------------------

struct ReplacedStore : ProjectPlace {
    QString folder;
    QUuid mine;
    QUuid shared;

    void SetUp() override
    {
        folder = newProject(u"Tidewater"_s);
        shared = newNote(u"Shared"_s, u"one"_s);
        app->projectSession().closeProject();
        const QByteArray earlier = *readFile(storeOf(folder));
        app->projectSession().openProjectAt(folder, true);
        mine = newNote(u"Mine"_s, u"only here"_s);
        write(shared, u"Shared"_s, u"changed here"_s);
        ASSERT_FALSE(app->projectSession().saveFailure());
        // As a synchroniser does it: the file from elsewhere takes the name.
        ASSERT_TRUE(writeFileAtomically(storeOf(folder), earlier));
        test.clock.advance(10s);
        ASSERT_TRUE(app->projectSession().projectTrouble()) << "it is noticed without a key";
        EXPECT_EQ(app->projectSession().projectTrouble()->kind,
                  ProjectTrouble::Kind::StoreReplaced);
        EXPECT_TRUE(app->projectSession().saveFailure());
    }
    /// As an editor does that has a draft: at the last moment.
    void writeWhenAsked()
    {
        QObject::connect(&app->projectSession(), &ProjectSession::projectMayBeLeft,
                         [this] { write(mine, u"Mine"_s, u"after the exchange"_s); });
    }
};

TEST_F(ReplacedStore, BothSidesAreTold)
{
    const auto sides = app->projectSession().storeSides();
    ASSERT_TRUE(sides);
    const auto differences = sides->differences();
    ASSERT_EQ(differences.size(), 2);
    QHash<QUuid, StoreSides::Difference::Kind> kinds;
    for (const auto& each : differences)
        kinds.insert(each.id, each.kind);
    EXPECT_EQ(kinds.value(shared), StoreSides::Difference::Kind::MineIsNewer);
    EXPECT_EQ(kinds.value(mine), StoreSides::Difference::Kind::OnlyMine);
    const QString rescue = app->projectSession().projectTrouble()->rescueFolder;
    EXPECT_EQ(*readFile(rescue + u"/Mine.txt"_s), "only here") << "kept without being asked for";
}

TEST_F(ReplacedStore, KeepMineSetsTheirsAsideAsAProjectOfItsOwn)
{
    writeWhenAsked();
    EXPECT_TRUE(app->projectSession().saveFailure());
    const auto kept = app->projectSession().keepMyStore();
    ASSERT_TRUE(kept) << qPrintable(kept.error());
    EXPECT_FALSE(app->projectSession().projectTrouble());
    EXPECT_FALSE(app->projectSession().saveFailure());
    EXPECT_EQ(app->note(mine)->body, u"after the exchange"_s);
    EXPECT_EQ(app->note(shared)->body, u"changed here"_s);
    ASSERT_EQ(app->projectSession().projects().size(), 2);
    restart();
    EXPECT_EQ(titles(), (QStringList{u"Mine"_s, u"Shared"_s}));
    EXPECT_EQ(app->note(shared)->body, u"changed here"_s);
    for (const OrvaneProjectRecord& project : QList(app->projectSession().projects())) {
        if (project.rootPath != folder)
            app->projectSession().openProjectAt(project.rootPath, true);
    }
    EXPECT_EQ(titles(), QStringList{u"Shared"_s});
    EXPECT_EQ(app->note(shared)->body, u"one"_s);
    EXPECT_EQ(app->note(shared)->folderID, app->projectSession().currentProject()->id);
}

TEST_F(ReplacedStore, TakeTheirsKeepsMineInVersionsAndARescueFile)
{
    writeWhenAsked();
    const auto taken = app->projectSession().takeTheirStore();
    ASSERT_TRUE(taken) << qPrintable(taken.error());
    EXPECT_FALSE(app->projectSession().projectTrouble());
    EXPECT_EQ(titles(), QStringList{u"Shared"_s});
    EXPECT_EQ(app->note(shared)->body, u"one"_s);
    const auto versions = versionsOf(*app, shared);
    ASSERT_FALSE(versions.isEmpty());
    EXPECT_EQ(versions.last().bodyPlain, u"changed here"_s);
    const QDir rescued(library() + u"/Rescued"_s);
    const QStringList files = rescued.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    ASSERT_EQ(files.size(), 1);
    EXPECT_EQ(*readFile(rescued.filePath(files.first()) + u"/Mine.txt"_s), "after the exchange");
    EXPECT_TRUE(app->projectSession().rescues().isEmpty()) << "kept, not offered";
    restart();
    EXPECT_EQ(titles(), QStringList{u"Shared"_s});
}

TEST_F(ReplacedStore, ASuddenEndLosesNeitherSide)
{
    write(mine, u"Mine"_s, u"after the exchange"_s);
    restart();
    EXPECT_EQ(titles(), QStringList{u"Shared"_s});
    ASSERT_EQ(app->projectSession().rescues().size(), 1);
    ASSERT_TRUE(app->projectSession().putInPlace(app->projectSession().rescues().first()));
    EXPECT_EQ(app->note(mine)->body, u"after the exchange"_s);
}

// --- Making a project ----------------------------------------------------------------------------

TEST_F(ProjectPlace, WhatCantBeMadeWholeLeavesNoProject)
{
    ProjectLibraryController controller(UserFolders::below(test.folder.path()));
    const auto made = controller.createProject(
        u"P"_s, {}, test.clock.now(), [](const QString& folder) -> std::expected<void, FileError> {
            EXPECT_TRUE(QFileInfo(folder).isDir());
            return std::unexpected(FileError{FileError::Code::NoSpace, folder, u"full"_s});
        });
    ASSERT_FALSE(made);
    EXPECT_EQ(made.error().code, FileError::Code::NoSpace);
    EXPECT_EQ(libraryEntries(), QStringList());

    // What a crash leaves is passed over, and goes when it is old.
    const QString left = library() + u"/.orvane-unfinished-0123"_s;
    OrvaneProjectManifest manifest;
    manifest.id = QUuid::createUuid();
    ASSERT_TRUE(QDir().mkpath(left));
    ASSERT_TRUE(ProjectLibraryController::writeManifest(manifest, left));
    restart();
    EXPECT_TRUE(app->projectSession().projects().isEmpty());
}

TEST_F(ProjectPlace, ANotebookOfTheLibraryWideEraIsTriedAgain)
{
    const QString legacy = test.services().folders.applicationSupport + u"/OrvaneNotes"_s;
    ASSERT_TRUE(orvane::makeFolder(legacy));
    ASSERT_TRUE(writeFileAtomically(
        legacy + u"/notebook.json"_s,
        R"({"folders":[],"notes":[{"id":"00000000-0000-4000-8000-000000000007","folderID":)"
        R"("00000000-0000-4000-8000-000000000008","title":"Kept","body":"word","createdAt":)"
        R"("2026-01-01T00:00:00Z","updatedAt":"2026-01-01T00:00:00Z"}]})"));
    // The library can't be made: a file has its name.
    ASSERT_TRUE(QDir(library()).removeRecursively());
    ASSERT_TRUE(writeFileAtomically(library(), "in the way"));
    restart();
    EXPECT_TRUE(app->projectSession().projects().isEmpty());
    ASSERT_TRUE(QFile::remove(library()));
    restart();
    ASSERT_EQ(app->projectSession().projects().size(), 1);
    app->projectSession().openProjectAt(app->projectSession().projects().first().rootPath, true);
    EXPECT_EQ(titles(), QStringList{u"Kept"_s});
}

} // namespace
} // namespace orvane
