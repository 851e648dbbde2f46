// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/state/AppState.h"
#include "core/state/SessionKeys.h"
#include "support/TestServices.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

/// A project with a folder in a folder and three notes, two of them with a tag.
struct Told : ::testing::Test {
    TestServices test;
    AppState app{test.services()};
    QUuid outer, inner, first, second, tagged;

    int structure = 0;
    int tags = 0;
    QList<QUuid> asked; ///< whose draft was asked for
    QList<QUuid> changed;

    Told()
    {
        SessionKeys::welcomeDismissed.write(test.defaults, true);
        (void)app.projectSession().createProject(u"Tidewater"_s, std::nullopt);
        outer = app.createFolder(u"Outer"_s).value();
        inner = app.createFolder(u"Inner"_s).value();
        (void)app.moveFolder(inner, outer, std::nullopt);
        app.selection().selectFolder(outer);
        first = app.createNote(u"first"_s, std::nullopt).value();
        second = app.createNote(u"second"_s, std::nullopt).value();
        tagged = app.createNote(u"tagged"_s, std::nullopt).value();
        (void)app.updateNoteTags(tagged, {u"tide"_s});
        (void)app.updateNoteTags(second, {u"tide"_s});
        QObject::connect(&app, &AppState::notebookChanged, [this](const NotebookChange& change) {
            structure += change.isStructural;
            tags += change.concernsTags;
            changed += change.notes.keys();
        });
        QObject::connect(&app, &AppState::noteAboutToBeReplaced,
                         [this](const QUuid& id) { asked.append(id); });
    }
    [[nodiscard]] QUuid root() const { return *app.projectRootContainerID(); }
};

struct Edit {
    const char* name;
    void (*carryOut)(Told& it);
    bool tellsTags = false;
    bool asksForDraft = false;
    bool tellsNote = false;
};

class StructuralEdit : public Told, public testing::WithParamInterface<Edit> {};

// What lists notes and folders redraws itself by these signals alone.
TEST_P(StructuralEdit, IsToldWhenItIsDoneAndNotWhenItIsRefused)
{
    const Edit& row = GetParam();
    test.licence.setPolicy([] { return false; });
    const BinderOrder before = app.order();
    row.carryOut(*this);
    EXPECT_TRUE(app.order() == before);
    EXPECT_EQ(structure + tags, 0);
    EXPECT_TRUE(changed.isEmpty());

    test.licence.setPolicy({});
    asked.clear();
    row.carryOut(*this);
    EXPECT_GT(structure, 0);
    EXPECT_TRUE(tags > 0 || !row.tellsTags);
    EXPECT_TRUE(asked.contains(tagged) || !row.asksForDraft);
    EXPECT_TRUE(changed.contains(tagged) || !row.tellsNote);
}

INSTANTIATE_TEST_SUITE_P(
    Edits, StructuralEdit,
    testing::Values(
        Edit{"MoveNote", [](Told& it) { (void)it.app.moveNote(it.tagged, it.inner, std::nullopt); },
             false, false, true},
        Edit{"MoveNoteToTheRoot",
             [](Told& it) { (void)it.app.moveNote(it.tagged, it.root(), std::nullopt); }, false,
             false, true},
        Edit{"MoveFolder",
             [](Told& it) {
                 it.app.moveFolder(it.inner, std::nullopt, std::nullopt);
             }},
        Edit{"ReorderNotes",
             [](Told& it) {
                 it.app.reorderNotes(it.outer, {0}, 3);
             }},
        Edit{"CreateFolder",
             [](Told& it) {
                 (void)it.app.createFolder(u"More"_s);
             }},
        Edit{"DuplicateFolder",
             [](Told& it) {
                 (void)it.app.duplicateFolder(it.inner);
             }},
        Edit{"DuplicateNote", [](Told& it) { (void)it.app.duplicateNote(it.tagged); }, true, true},
        Edit{"MoveNoteToTrash", [](Told& it) { (void)it.app.moveNoteToTrash(it.tagged); }, true,
             true, true},
        Edit{"EraseNote", [](Told& it) { (void)it.app.eraseNotePermanently(it.tagged); }, true},
        Edit{"DeleteFolder", [](Told& it) { (void)it.app.deleteFolder(it.outer); }, true, true,
             true}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(Told, ANoteThatComesBackFromTheTrashIsToldWithItsTags)
{
    (void)app.moveNoteToTrash(tagged);
    EXPECT_EQ(app.tagCount(u"tide"_s), 1);
    structure = tags = 0;
    changed.clear();
    (void)app.restoreNoteFromTrash(tagged);
    EXPECT_EQ(app.tagCount(u"tide"_s), 2);
    EXPECT_GT(structure, 0);
    EXPECT_GT(tags, 0);
    EXPECT_TRUE(changed.contains(tagged));
    EXPECT_EQ(app.note(tagged)->folderID, outer);
}

TEST_F(Told, AVersionThatIsRestoredIsTold)
{
    ASSERT_TRUE(app.appendVersionSnapshot(tagged, u"Manual Save"_s));
    const auto versions = app.versionHistory().list(tagged, app.historyPlace());
    ASSERT_TRUE(versions && !versions->isEmpty());
    const auto kept =
        VersionFiles::read(app.projectSession().projectAccessPath(), versions->last());
    ASSERT_TRUE(kept);
    (void)app.updateNote(tagged, {u"T"_s, u"other words"_s, {}, {}, {}, {}});
    changed.clear();
    asked.clear();
    int versionsTold = 0;
    const auto listening =
        test.notifications.observe(snapshotsDidChange, [&](const QUuid&) { ++versionsTold; });
    ASSERT_TRUE(app.restoreVersion(*kept));
    EXPECT_EQ(asked, QList<QUuid>{tagged}) << "what is being typed becomes part of what was before";
    EXPECT_TRUE(changed.contains(tagged));
    EXPECT_GT(versionsTold, 0);
}

} // namespace
} // namespace orvane
