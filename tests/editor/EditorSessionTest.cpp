// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "SessionFixture.h"

namespace orvane {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

using EditorSessionTest = SessionFixture;

TEST_F(EditorSessionTest, AutosaveIsATrailingDebounce)
{
    type(u"1"_s);
    test.clock.advance(1499ms);
    type(u"2"_s);
    test.clock.advance(1499ms);
    EXPECT_EQ(stored(a), u"A|A\nfirst"_s);
    EXPECT_TRUE(session->isDirty());
    test.clock.advance(1ms);
    EXPECT_EQ(stored(a), u"A|A\nfirst12"_s);
    EXPECT_FALSE(session->isDirty());

    for (const double seconds : {0.0, -5.0, 0.1, std::nan("")}) {
        autoSaveSecondsSetting.write(test.defaults, seconds);
        type(u"x"_s);
        test.clock.advance(299ms);
        EXPECT_TRUE(session->isDirty());
        test.clock.advance(1ms);
        EXPECT_FALSE(session->isDirty());
    }
    autosaveEnabledSetting.write(test.defaults, false);
    type(u"y"_s);
    test.clock.advance(1h);
    EXPECT_TRUE(session->isDirty());
}

TEST_F(EditorSessionTest, EveryFlushPointWritesWhatWasTyped)
{
    struct Row {
        const char* name;
        std::function<void()> flush;
        bool reopens = false;
    };
    const Row rows[] = {
        {"another note",
         [&] {
             app->selectNote(b);
         }},
        {"a folder",
         [&] {
             app->createFolder(u"F"_s);
         }},
        {"nothing",
         [&] {
             app->selectProjectRoot();
         }},
        {"a new note",
         [&] {
             app->createNote();
         }},
        {"the Save command",
         [&] {
             test.notifications.post(AppCommandEvents::saveDocument);
         }},
        {"the note goes to the Trash",
         [&] {
             app->moveNoteToTrash(a);
             app->restoreNoteFromTrash(a);
         }},
        {"the note is duplicated",
         [&] {
             app->duplicateNote(a);
         }},
        {"the title in the Binder",
         [&] {
             app->updateNoteBinderTitle(a, u"A"_s, {});
         }},
        {"the project closes", [&] { app->closeProject(); }, true},
        {"another project", [&] { (void)app->createProject(u"Q"_s, {}); }, true},
    };
    autosaveEnabledSetting.write(test.defaults, false);
    QString expected = u"A\nfirst"_s;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        app->selectNote(a);
        type(u" +"_s);
        expected += u" +"_s;
        ASSERT_TRUE(session->isDirty());
        row.flush();
        EXPECT_FALSE(session->isDirty());
        if (row.reopens)
            app->openProject(project, false);
        EXPECT_EQ(stored(a), u"A|"_s + expected);
    }
    app->selectNote(a);
    type(u" end"_s);
    app->terminate();
    app->refreshProjects();
    AppState after(test.services());
    after.refreshProjects();
    after.openProject(project, false);
    EXPECT_EQ(after.note(a)->body, expected + u" end"_s);
}

TEST_F(EditorSessionTest, NothingIsLoadedOnceTheProgramIsEnding)
{
    type(u" last"_s);
    QObject::connect(app.get(), &AppState::willTerminate, [this] { app->selectNote(b); });
    app->terminate();
    EXPECT_EQ(session->noteID(), a);
    session.reset();
    app = std::make_unique<AppState>(test.services());
    app->refreshProjects();
    app->openProject(project, false);
    EXPECT_EQ(stored(a), u"A|A\nfirst last"_s);
}

TEST_F(EditorSessionTest, ACancelledDelayWritesNothingTwice)
{
    type(u"!"_s);
    app->selectNote(b);
    const Timestamp written = app->note(a)->updatedAt;
    EXPECT_EQ(test.clock.pendingCount(), 1); // the project's date alone
    test.clock.advance(10s);
    EXPECT_EQ(app->note(a)->updatedAt, written);
    EXPECT_EQ(app->note(b)->body, u"B\nsecond"_s);
}

TEST_F(EditorSessionTest, TheTitleIsShownWhileItIsTypedAndStoredWithTheDraft)
{
    session->setTitle(u"Renamed"_s);
    EXPECT_EQ(app->note(a)->title, u"Renamed"_s);
    EXPECT_EQ(stored(a), u"A|A\nfirst"_s);
    test.clock.advance(1500ms);
    EXPECT_EQ(stored(a), u"Renamed|A\nfirst"_s);
    EXPECT_EQ(session->currentTitle(), u"Renamed"_s);
}

TEST_F(EditorSessionTest, ACleanDraftFollowsTheRecordAndADirtyOneWins)
{
    NoteContent content = NoteContent::of(*app->note(a));
    content.body = u"from elsewhere"_s;
    test.clock.advance(1s);
    app->updateNote(a, content);
    EXPECT_EQ(shown(), u"from elsewhere"_s);
    type(u" and mine"_s);
    content.body = u"again"_s;
    test.clock.advance(1s);
    app->updateNote(a, content);
    EXPECT_EQ(shown(), u"from elsewhere and mine"_s);
    test.clock.advance(1500ms);
    EXPECT_EQ(stored(a), u"A|from elsewhere and mine"_s);
}

TEST_F(EditorSessionTest, PlainEditsEraseTheRichFormsOnlyWhenTheTextChanged)
{
    NoteContent rich = NoteContent::of(*app->note(a));
    rich.bodyRTF = Blob("{\\rtf1}");
    rich.richContentPayload = Blob("payload");
    rich.editorTypingAttributesPayload = Blob("typing");
    rich.shapesPayload = Blob("[]");
    test.clock.advance(1s);
    app->updateNote(a, rich);

    // The same text again.
    session->gateway().setSelection({0, 1});
    session->gateway().type(u"A"_s);
    EXPECT_TRUE(session->isDirty());
    test.clock.advance(1500ms);
    EXPECT_EQ(NoteContent::of(*app->note(a)), rich);

    type(u"x"_s);
    test.clock.advance(1500ms);
    const NoteContent plain = NoteContent::of(*app->note(a));
    EXPECT_FALSE(plain.bodyRTF || plain.richContentPayload || plain.editorTypingAttributesPayload ||
                 plain.shapesPayload);
}

TEST_F(EditorSessionTest, AManualSaveKeepsAVersionEvenOfAnUnchangedNote)
{
    int completed = 0;
    const auto observing = test.notifications.observe(AppCommandEvents::manualSaveCompleted,
                                                      [&](const NoPayload&) { ++completed; });
    const Timestamp before = app->note(a)->updatedAt;
    test.clock.advance(1s);
    session->saveFromExplicitCommand();
    EXPECT_GT(app->note(a)->updatedAt, before);
    const auto versions = NoteVersionHistoryStore::snapshots(app->currentProject()->rootPath, a);
    ASSERT_EQ(versions.size(), 1);
    EXPECT_EQ(versions.first().label, u"Manual Save"_s);
    EXPECT_EQ(completed, 1);
    app->selectProjectRoot();
    session->saveFromExplicitCommand();
    EXPECT_EQ(completed, 1);
}

TEST_F(EditorSessionTest, NothingCanBeTypedWithoutANoteOrALicence)
{
    EXPECT_TRUE(session->isEditable());
    test.licence.setPolicy([] { return false; });
    EXPECT_FALSE(session->isEditable());
    test.licence.setPolicy({});
    app->selectProjectRoot();
    EXPECT_FALSE(session->isEditable());
    session->setTitle(u"nobody's"_s);
    session->gateway().type(u"nobody's"_s);
    EXPECT_FALSE(session->isDirty());
    EXPECT_EQ(session->currentTitle(), QString());
}

} // namespace
} // namespace orvane
