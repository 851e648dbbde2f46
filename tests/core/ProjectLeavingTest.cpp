// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// A project whose words can't be saved is left by one door.
#include "core/ProjectFixture.h"
#include "core/state/ProjectQuestions.h"

#include <SQLiteCpp/Database.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;
using namespace ProjectQuestions;

struct ProjectLeaving : ProjectFixture {
    QString other;
    QString folder;
    QUuid note;
    std::unique_ptr<SQLite::Database> blocker;

    void SetUp() override
    {
        other = newProject(u"Other"_s);
        folder = newProject(u"Tidewater"_s);
        note = newNote(u"Low water"_s, u"one"_s);
        block();
        write(note, u"Low water"_s, u"one two three"_s);
        ASSERT_TRUE(app->projectSession().saveFailure());
        ASSERT_FALSE(app->projectSession().projectTrouble());
    }
    /// Another program holds the store's file, so that nothing can be saved.
    void block()
    {
        blocker = std::make_unique<SQLite::Database>(storeOf(folder).toStdString(),
                                                     SQLite::OPEN_READWRITE);
        blocker->exec("BEGIN IMMEDIATE");
    }
    QString storedBody()
    {
        blocker.reset();
        app.reset();
        app = start();
        app->projectSession().openProjectAt(folder, true);
        return app->note(note) ? app->note(note)->body.readOrNothing() : u"no note"_s;
    }
};

TEST_F(ProjectLeaving, EachWayOutAsks)
{
    struct Row {
        const char* name;
        std::function<void()> leave;
    };
    const QString damaged = library() + u"/Damaged"_s;
    copyFolder(other, damaged);
    ASSERT_TRUE(writeFileAtomically(storeOf(damaged), "no store at all"));
    auto manifest = *ProjectLibraryController::readManifest(damaged);
    manifest.id = QUuid::createUuid();
    ASSERT_TRUE(ProjectLibraryController::writeManifest(manifest, damaged));
    app->projectSession().refreshProjects();
    const Row rows[] = {
        {"another project",
         [&] {
             app->projectSession().openProjectAt(other, true);
         }},
        {"a new project",
         [&] {
             (void)app->projectSession().createProject(u"New"_s, {});
         }},
        {"closing it",
         [&] {
             app->projectSession().closeProject();
         }},
        {"throwing it away",
         [&] {
             (void)app->projectSession().moveProjectToTrash(folder);
         }},
        {"a project that is blocked",
         [&] {
             app->projectSession().openProjectAt(damaged, true);
         }},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        test.questions.asked.clear();
        test.questions.answers = {{Stay}};
        row.leave();
        ASSERT_EQ(test.questions.asked.size(), 1);
        const Question& question = test.questions.asked.first();
        EXPECT_EQ(question.title, u"One note is not saved yet"_s);
        ASSERT_EQ(question.rows.size(), 1);
        EXPECT_EQ(question.rows.first().title, u"Low water"_s);
        EXPECT_TRUE(question.rows.first().detail.startsWith(u"2 words since "_s));
        ASSERT_TRUE(app->projectSession().currentProject());
        EXPECT_EQ(app->projectSession().currentProject()->rootPath, folder);
        EXPECT_EQ(app->note(note)->body, u"one two three"_s);
    }
    EXPECT_FALSE(QFileInfo::exists(library() + u"/New"_s));
    EXPECT_EQ(app->projectSession().rootPresentationMode(), RootPresentationMode::Editor);
}

TEST_F(ProjectLeaving, WhatIsBeingTypedIsWrittenBeforeItIsAsked)
{
    const QString place = test.folder.path() + u"/elsewhere"_s;
    ASSERT_TRUE(QDir().mkpath(place));
    QObject::connect(&app->projectSession(), &ProjectSession::projectMayBeLeft,
                     [this] { write(note, u"Low water"_s, u"one two three four"_s); });
    test.questions.answers = {{WriteToFile}};
    test.questions.files = {place + u"/Kept"_s};
    EXPECT_TRUE(app->projectSession().mayLeaveProject());
    ASSERT_EQ(test.questions.asked.size(), 1);
    EXPECT_TRUE(test.questions.asked.first().rows.first().detail.startsWith(u"3 words since "_s));
    EXPECT_EQ(*readFile(place + u"/Kept/Low water.txt"_s), "one two three four");
}

TEST_F(ProjectLeaving, SavingIsTriedAgainByItself)
{
    blocker.reset();
    test.clock.advance(std::chrono::seconds(ProjectSession::retrySeconds));
    EXPECT_FALSE(app->projectSession().saveFailure());
    EXPECT_EQ(storedBody(), u"one two three"_s);
    EXPECT_TRUE(test.questions.asked.isEmpty());
}

TEST_F(ProjectLeaving, WhatWasRefusedIsAskedAboutToo)
{
    blocker.reset();
    test.clock.advance(std::chrono::seconds(ProjectSession::retrySeconds));
    ASSERT_FALSE(app->projectSession().saveFailure());
    test.licence.setPolicy([] { return false; });
    write(note, u"Low water"_s, u"one two three four"_s);
    ASSERT_EQ(app->refusedContents().size(), 1);

    test.questions.answers = {{Stay}, {WriteToFile}};
    test.questions.files = {test.folder.path() + u"/Kept"_s};
    app->projectSession().closeProject();
    ASSERT_EQ(test.questions.asked.size(), 1);
    const Question& question = test.questions.asked.first();
    EXPECT_TRUE(question.text.startsWith(u"“Tidewater” can't be changed now."_s));
    ASSERT_EQ(question.rows.size(), 1);
    EXPECT_TRUE(question.rows.first().detail.startsWith(u"1 word since "_s));
    EXPECT_EQ(app->refusedContents().size(), 1);
    app->projectSession().closeProject();
    EXPECT_FALSE(app->projectSession().currentProject());
    EXPECT_EQ(*readFile(test.folder.path() + u"/Kept/Low water.txt"_s), "one two three four");
}

TEST_F(ProjectLeaving, WhatWasRefusedIsRescuedAtAnEndThatDoesntWait)
{
    blocker.reset();
    test.clock.advance(std::chrono::seconds(ProjectSession::retrySeconds));
    test.licence.setPolicy([] { return false; });
    write(note, u"Low water"_s, u"one two three four"_s);
    restart();
    ASSERT_EQ(app->projectSession().rescues().size(), 1);
    EXPECT_EQ(app->note(note)->body, u"one two three"_s);
    test.licence.setPolicy({});
    ASSERT_TRUE(app->projectSession().putInPlace(app->projectSession().rescues().first()));
    EXPECT_EQ(app->note(note)->body, u"one two three four"_s);
}

TEST_F(ProjectLeaving, WhatWasRefusedIsStoredWhereItMayBeByNow)
{
    blocker.reset();
    test.clock.advance(std::chrono::seconds(ProjectSession::retrySeconds));
    test.licence.setPolicy([] { return false; });
    write(note, u"Low water"_s, u"one two three four"_s);
    test.licence.setPolicy({});
    app->projectSession().closeProject();
    EXPECT_TRUE(test.questions.asked.isEmpty());
    EXPECT_EQ(storedBody(), u"one two three four"_s);
}

TEST_F(ProjectLeaving, WithoutThemLeavesThem)
{
    test.questions.answers = {{LeaveWithout}};
    app->projectSession().openProjectAt(other, true);
    EXPECT_EQ(app->projectSession().currentProject()->rootPath, other);
    EXPECT_FALSE(app->projectSession().saveFailure());
    EXPECT_EQ(test.questions.asked.size(), 1);
    EXPECT_EQ(storedBody(), u"one"_s);
}

TEST_F(ProjectLeaving, AFileElsewhereKeepsThemAndTheProjectOffersIt)
{
    const QString place = test.folder.path() + u"/elsewhere"_s;
    ASSERT_TRUE(QDir().mkpath(place));
    test.questions.answers = {{WriteToFile}, {WriteToFile}};
    test.questions.files = {QString(), place + u"/Kept"_s}; // decides otherwise once
    app->projectSession().openProjectAt(other, true);
    EXPECT_EQ(app->projectSession().currentProject()->rootPath, other);
    EXPECT_EQ(*readFile(place + u"/Kept/Low water.txt"_s), "one two three");
    EXPECT_EQ(storedBody(), u"one"_s);
    ASSERT_EQ(app->projectSession().rescues().size(), 1);
    EXPECT_EQ(app->projectSession().rescues().first().origin.projectID,
              app->projectSession().currentProject()->id);
    ASSERT_TRUE(app->projectSession().putInPlace(app->projectSession().rescues().first()));
    restart();
    EXPECT_EQ(app->note(note)->body, u"one two three"_s);
}

TEST_F(ProjectLeaving, AnEndThatDoesntWaitRescuesWithoutAsking)
{
    app->projectSession().terminate();
    EXPECT_TRUE(test.questions.asked.isEmpty());
    EXPECT_EQ(storedBody(), u"one"_s);
    ASSERT_EQ(app->projectSession().rescues().size(), 1);
    ASSERT_TRUE(app->projectSession().putInPlace(app->projectSession().rescues().first()));
    EXPECT_EQ(app->note(note)->body, u"one two three"_s);
}

TEST_F(ProjectLeaving, WhereTheLibraryTakesNothingTheStateFolderDoes)
{
    ASSERT_TRUE(writeFileAtomically(library() + u"/Rescued"_s, "in the way"));
    app->projectSession().terminate();
    const QDir state(test.services().folders.state + u"/Rescued"_s);
    ASSERT_EQ(state.entryList(QDir::Dirs | QDir::NoDotAndDotDot).size(), 1);
    EXPECT_EQ(storedBody(), u"one"_s);
    EXPECT_EQ(app->projectSession().rescues().size(), 1);
}

} // namespace
} // namespace orvane
