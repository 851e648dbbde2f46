// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "SessionFixture.h"
#include "support/FullDisk.h"
#include "support/Versions.h"

#include <QTest>

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

TEST_F(EditorSessionTest, UnbrokenTypingIsWrittenAllTheSame)
{
    struct Row {
        const char* name;
        double delay;
        std::chrono::milliseconds between;
    };
    const Row rows[] = {{"the usual delay", 1.5, 500ms}, {"a delay of a minute", 60, 3s}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        autoSaveSecondsSetting.write(test.defaults, row.delay);
        QString typed = shown();
        for (std::chrono::milliseconds passed{0}; passed < 50s; passed += row.between) {
            type(u"x"_s);
            typed += u'x';
            const qsizetype kept = stored(a).size() - 2;
            EXPECT_GE(kept, typed.size() - 10s / row.between - 1) << passed.count();
            test.clock.advance(row.between);
        }
        session->flushDraftToDisk(a);
    }
    autosaveEnabledSetting.write(test.defaults, false);
    const QString before = stored(a);
    type(u"y"_s);
    test.clock.advance(1h);
    EXPECT_EQ(stored(a), before);
}

TEST_F(EditorSessionTest, UnbrokenTypingInALongRichNoteIsWrittenAllTheSame)
{
    session->setMode(EditorMode::richText);
    type(QString(60'000, u'r') + u'\n');
    session->flushDraftToDisk(a);
    const qsizetype before = stored(a).size();
    for (int i = 0; i < 58; ++i) {
        type(u"x"_s);
        test.clock.advance(250ms);
        QTest::qWait(i < 30 ? 0 : 20);
    }
    EXPECT_TRUE(session->isDirty());
    const QString kept = stored(a);
    EXPECT_GT(kept.size(), before);
    EXPECT_TRUE(shown().startsWith(kept.mid(2)));
    EXPECT_EQ(readRichText({{}, {}, app->note(a)->richContentPayload}, {}).text(), kept.mid(2));
    ASSERT_TRUE(QTest::qWaitFor([&] {
        test.clock.advance(100ms);
        return !session->isDirty();
    }));
    EXPECT_EQ(stored(a), u"A|"_s + shown());
}

TEST_F(EditorSessionTest, ARefusedDraftStaysWithItsNoteUntilItIsTaken)
{
    int completed = 0;
    const auto observing = test.notifications.observe(AppCommandEvents::manualSaveCompleted,
                                                      [&](const NoPayload&) { ++completed; });
    const auto versions = [&] {
        const auto kept = versionsOf(*app, a);
        return std::count_if(kept.begin(), kept.end(), [](const NoteVersionSnapshot& version) {
            return version.label == u"Manual Save"_s;
        });
    };
    type(u" more"_s);
    test.licence.setPolicy([] { return false; });
    test.clock.advance(20s);
    EXPECT_TRUE(session->isDirty());
    EXPECT_EQ(session->refusal(), Refusal::NotAllowed);
    session->saveFromExplicitCommand();
    EXPECT_TRUE(session->isDirty());
    EXPECT_EQ(completed, 0);
    EXPECT_EQ(versions(), 0);
    EXPECT_EQ(stored(a), u"A|A\nfirst"_s);

    app->selection().selectNote(b);
    EXPECT_FALSE(session->isDirty());
    EXPECT_EQ(session->refusal(), std::nullopt);
    EXPECT_EQ(app->refusedContents().keys(), QList<QUuid>{a});
    app->selection().selectNote(a);
    EXPECT_EQ(shown(), u"A\nfirst more"_s);
    EXPECT_TRUE(session->isDirty());
    test.licence.setPolicy({});
    app->selection().selectNote(b);
    app->selection().selectNote(a);
    test.clock.advance(2s);
    EXPECT_EQ(stored(a), u"A|A\nfirst more"_s);
    EXPECT_FALSE(session->isDirty());
    EXPECT_TRUE(app->refusedContents().isEmpty());
    session->saveFromExplicitCommand();
    app->versionHistory().waitForAll();
    EXPECT_EQ(completed, 1);
    EXPECT_EQ(versions(), 1);
}

TEST_F(EditorSessionTest, WhatTheDiskDoesNotTakeIsNoManualSave)
{
    int completed = 0;
    const auto observing = test.notifications.observe(AppCommandEvents::manualSaveCompleted,
                                                      [&](const NoPayload&) { ++completed; });
    type(u" more"_s);
    {
        const FullDisk full;
        session->saveFromExplicitCommand();
        EXPECT_EQ(app->updateNote(a, session->draft().content()),
                  std::unexpected(Refusal::NotStored));
        app->versionHistory().waitForAll();
    }
    EXPECT_TRUE(app->projectSession().saveFailure());
    EXPECT_EQ(completed, 0);
    EXPECT_TRUE(versionsOf(*app, a).isEmpty());
    session->saveFromExplicitCommand();
    app->versionHistory().waitForAll();
    EXPECT_EQ(completed, 1);
    EXPECT_EQ(stored(a), u"A|A\nfirst more"_s);
    EXPECT_EQ(app->updateNote(QUuid::createUuid(), {}), std::unexpected(Refusal::NotThere));
}

TEST_F(EditorSessionTest, ShapesOfTheRecordAndOfTheDraftAreTheSame)
{
    session->setMode(EditorMode::richText);
    type(u"1"_s);
    app->saveShapesPayload(Blob("[1]"), a);
    type(u"2"_s);
    test.clock.advance(2s);
    EXPECT_EQ(app->note(a)->shapesPayload, Blob("[1]"));
    EXPECT_EQ(stored(a), u"A|A\nfirst12"_s);
    session->setShapes(Blob("[2]"));
    type(u"3"_s);
    app->saveShapesPayload(Blob("[3]"), a);
    app->saveShapesPayload(std::nullopt, a);
    type(u"4"_s);
    test.clock.advance(2s);
    EXPECT_EQ(app->note(a)->shapesPayload, std::nullopt);

    // What a plain edit would take away is asked about, however late it came.
    session->setMode(EditorMode::plainText);
    app->updateNote(a, {u"A"_s, u"plain"_s, {}, {}, {}, {}});
    type(u"5"_s);
    app->saveShapesPayload(Blob("[6]"), a);
    type(u"7"_s);
    EXPECT_EQ(shown(), u"plain5"_s);
    EXPECT_EQ(test.questions.asked.size(), 1);
    test.clock.advance(2s);
    EXPECT_EQ(app->note(a)->shapesPayload, Blob("[6]"));
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
             app->selection().selectNote(b);
         }},
        {"a folder",
         [&] {
             app->createFolder(u"F"_s);
         }},
        {"nothing",
         [&] {
             app->selection().selectProjectRoot();
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
        {"the project closes", [&] { app->projectSession().closeProject(); }, true},
        {"another project", [&] { (void)app->projectSession().createProject(u"Q"_s, {}); }, true},
    };
    autosaveEnabledSetting.write(test.defaults, false);
    QString expected = u"A\nfirst"_s;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        app->selection().selectNote(a);
        type(u" +"_s);
        expected += u" +"_s;
        ASSERT_TRUE(session->isDirty());
        row.flush();
        EXPECT_FALSE(session->isDirty());
        if (row.reopens)
            app->projectSession().openProject(project, false);
        EXPECT_EQ(stored(a), u"A|"_s + expected);
    }
    app->selection().selectNote(a);
    type(u" end"_s);
    app->projectSession().terminate();
    app->projectSession().refreshProjects();
    AppState after(test.services());
    after.projectSession().refreshProjects();
    after.projectSession().openProject(project, false);
    EXPECT_EQ(after.note(a)->body, expected + u" end"_s);
}

TEST_F(EditorSessionTest, NothingIsLoadedOnceTheProgramIsEnding)
{
    type(u" last"_s);
    QObject::connect(&app->projectSession(), &ProjectSession::willTerminate,
                     [this] { app->selection().selectNote(b); });
    app->projectSession().terminate();
    EXPECT_EQ(session->noteID(), a);
    session.reset();
    app = std::make_unique<AppState>(test.services());
    app->projectSession().refreshProjects();
    app->projectSession().openProject(project, false);
    EXPECT_EQ(stored(a), u"A|A\nfirst last"_s);
}

TEST_F(EditorSessionTest, ACancelledDelayWritesNothingTwice)
{
    type(u"!"_s);
    app->selection().selectNote(b);
    const Timestamp written = app->note(a)->updatedAt;
    EXPECT_EQ(test.clock.pendingCount(), 2); // the project's date and the watch over its folder
    test.clock.advance(10s);
    EXPECT_EQ(app->note(a)->updatedAt, written);
    EXPECT_EQ(app->note(b)->body, u"B\nsecond"_s);
}

TEST_F(EditorSessionTest, TwoSessionsShowANoteEachAndDisturbNeither)
{
    session->setMode(EditorMode::markdown);
    EditorSession beside(*app);
    EXPECT_EQ(beside.noteID(), std::nullopt);
    beside.show(b);
    EXPECT_EQ(app->selection().selectedNoteID(), a);
    EXPECT_EQ(beside.mode(), EditorMode::plainText);
    EXPECT_EQ(editorModeSetting.read(test.defaults), rawValue(EditorMode::markdown))
        << "the working keys are those of the selected note";
    beside.setMode(EditorMode::richText);
    EXPECT_EQ(session->mode(), EditorMode::markdown);

    type(u" one"_s);
    beside.gateway().type(u"two "_s);
    test.clock.advance(1500ms);
    EXPECT_EQ(stored(a), u"A|A\nfirst one"_s);
    EXPECT_EQ(stored(b), u"B|two B\nsecond"_s);

    editorModeSetting.write(test.defaults, rawValue(EditorMode::plainText));
    EXPECT_EQ(session->mode(), EditorMode::plainText);
    EXPECT_EQ(beside.mode(), EditorMode::richText);
    app->selection().selectNote(b);
    EXPECT_EQ(session->mode(), EditorMode::richText) << "the profile is the note's";
    EXPECT_EQ(beside.noteID(), b);

    beside.gateway().type(u"x"_s);
    beside.prepareToLeave();
    beside.show(std::nullopt);
    EXPECT_EQ(stored(b), u"B|two xB\nsecond"_s);
    EXPECT_FALSE(beside.isEditable());
    beside.setTitle(u"of nothing"_s);
    EXPECT_EQ(beside.currentTitle(), QString());
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
    const auto versions = versionsOf(*app, a);
    ASSERT_EQ(versions.size(), 1);
    EXPECT_EQ(versions.first().label, u"Manual Save"_s);
    EXPECT_EQ(completed, 1);
    app->selection().selectProjectRoot();
    session->saveFromExplicitCommand();
    EXPECT_EQ(completed, 1);
}

TEST_F(EditorSessionTest, NothingCanBeTypedWithoutANoteOrALicence)
{
    EXPECT_TRUE(session->isEditable());
    test.licence.setPolicy([] { return false; });
    EXPECT_FALSE(session->isEditable());
    test.licence.setPolicy({});
    app->selection().selectProjectRoot();
    EXPECT_FALSE(session->isEditable());
    session->setTitle(u"nobody's"_s);
    session->gateway().type(u"nobody's"_s);
    EXPECT_FALSE(session->isDirty());
    EXPECT_EQ(session->currentTitle(), QString());
}

} // namespace
} // namespace orvane
