// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// Edits of the notebook as values: what is told of them, what is saved, and taking them back.
#include "core/ProjectFixture.h"
#include "core/notebook/NotebookEdits.h"

#include <gtest/gtest.h>

#include <random>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;
using Aspect = RecordAspect;

/// All of a notebook that a person could miss, in no order but the Binder's.
struct Contents {
    QHash<QUuid, FolderRecord> folders;
    QHash<QUuid, NoteRecord> notes;
    QList<QUuid> rootFolders;
    QHash<QUuid, QList<QUuid>> childFolders;
    QHash<QUuid, QList<QUuid>> noteLists;

    bool operator==(const Contents&) const = default;

    /// In which part two differ.
    [[nodiscard]] std::string differenceTo(const Contents& other) const
    {
        std::string which;
        for (const auto& [id, folder] : other.folders.asKeyValueRange()) {
            if (!folders.contains(id))
                which += "a folder is missing ";
            else if (folders.value(id) != folder)
                which += "a folder's " +
                         std::to_string(int(differenceOf(folders.value(id), folder))) + " differs ";
        }
        return which + std::string(folders == other.folders ? "" : "folders ") +
               (notes == other.notes ? "" : "notes ") +
               (rootFolders == other.rootFolders ? "" : "root folders ") +
               (childFolders == other.childFolders ? "" : "child folders ") +
               (noteLists == other.noteLists ? "" : "lists of notes");
    }

    static Contents of(const AppState& app)
    {
        Contents all;
        for (const auto& folder : app.folders())
            all.folders.insert(folder->id, *folder);
        for (const auto& note : app.notes())
            all.notes.insert(note->id, *note);
        all.rootFolders = app.order().rootFolderOrder;
        all.childFolders = app.order().childFolderOrder;
        all.noteLists = app.order().noteOrderByFolder;
        all.childFolders.removeIf([](const auto& each) { return each->isEmpty(); });
        all.noteLists.removeIf([](const auto& each) { return each->isEmpty(); });
        return all;
    }
};

struct NotebookEditTest : ProjectFixture {
    QList<NotebookChange> told;
    int saves = 0;
    QMetaObject::Connection following;

    void SetUp() override
    {
        newProject(u"Tidewater"_s);
        follow();
    }
    void follow()
    {
        following = QObject::connect(app.get(), &AppState::notebookChanged,
                                     [this](const NotebookChange& change) { told.append(change); });
    }
    QUuid root() const { return *app->projectRootContainerID(); }
    QList<QUuid> listed(const QUuid& container) const
    {
        return app->order().noteOrderByFolder.value(container);
    }
    QUuid folder(const QString& name, const std::optional<QUuid>& parent = {})
    {
        parent ? app->selection().selectFolder(*parent) : app->selection().selectProjectRoot();
        return app->createFolder(name).value();
    }
    QUuid note(const QString& title, const std::optional<QUuid>& container = {})
    {
        container ? app->selection().selectFolder(*container)
                  : app->selection().selectProjectRoot();
        return app->createNoteWithTitle(title, {}).value();
    }
    /// The program starts again, and everything is as it is now.
    void expectStored()
    {
        const Contents now = Contents::of(*app);
        restart();
        EXPECT_TRUE(Contents::of(*app) == now);
    }
};

TEST_F(NotebookEditTest, OneSignalSaysWhichRecordsChangedAndInWhat)
{
    const QUuid drafts = folder(u"Drafts"_s);
    const QUuid one = note(u"One"_s, drafts);
    const QUuid two = note(u"Two"_s, drafts);
    struct Row {
        const char* name;
        std::function<void()> change;
        QHash<QUuid, RecordAspects> notes;
        bool isStructural;
        bool concernsTags;
    };
    const Row rows[] = {
        {"a title",
         [&] { (void)app->updateNoteBinderTitle(one, u"Uno"_s, {}); },
         {{one, Aspect::Title | Aspect::Dates}},
         false,
         false},
        {"a pin", [&] { (void)app->togglePinNote(one); }, {{one, Aspect::Pin}}, false, false},
        {"words",
         [&] { write(one, u"Uno"_s, u"words"_s); },
         {{one, Aspect::Text | Aspect::Dates}},
         false,
         false},
        {"a title as it is typed",
         [&] { app->applyLiveTitle(one, u"Unos"_s); },
         {{one, Aspect::Title}},
         false,
         false},
        {"a tag",
         [&] { (void)app->updateNoteTags(one, {u"sea"_s}); },
         {{one, Aspect::Tags | Aspect::Dates}},
         false,
         true},
        {"a tag everywhere",
         [&] { (void)app->renameTag(u"sea"_s, u"ebb"_s); },
         {{one, Aspect::Tags | Aspect::Dates}},
         false,
         true},
        {"a move",
         [&] { (void)app->moveNote(two, root(), {}); },
         {{two, Aspect::Place}},
         true,
         false},
        {"into the Trash",
         [&] { (void)app->moveNoteToTrash(one); },
         {{one, Aspect::Place | Aspect::Dates}},
         true,
         true},
        {"away", [&] { (void)app->eraseNotePermanently(one); }, {{one, Aspect::Went}}, true, true},
        {"nothing new", [&] { (void)app->updateFolderTags(drafts, {}); }, {}, false, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        test.clock.advance(std::chrono::seconds(1));
        told.clear();
        row.change();
        ASSERT_EQ(told.size(), row.notes.isEmpty() ? 0 : 1);
        if (told.isEmpty())
            continue;
        EXPECT_EQ(told.first().notes, row.notes);
        EXPECT_EQ(told.first().isStructural, row.isStructural);
        EXPECT_EQ(told.first().concernsTags, row.concernsTags);
    }
    expectStored();
}

TEST_F(NotebookEditTest, ManyNotesAreOneSignalOneSaveAndOneStep)
{
    QList<QUuid> ids;
    for (int i = 0; i < 40; ++i)
        ids.append(note(u"Note %1"_s.arg(i)));
    const Contents before = Contents::of(*app);
    told.clear();
    ASSERT_TRUE(app->apply(NotebookEdits::changeNotes(
        app->notebook(), root(), ids, [](NoteRecord& each) { each.title.prepend(u"New "_s); })));
    EXPECT_EQ(told.size(), 1);
    EXPECT_EQ(told.first().notes.size(), 40);
    const Contents after = Contents::of(*app);
    EXPECT_EQ(after.notes.value(ids.at(7)).title, u"New Note 7"_s);
    ASSERT_TRUE(app->undoNotebookStep());
    EXPECT_TRUE(Contents::of(*app) == before);
    ASSERT_TRUE(app->redoNotebookStep());
    EXPECT_TRUE(Contents::of(*app) == after);
    expectStored();
}

TEST_F(NotebookEditTest, WhatIsRefusedChangesNothingAndSaysSo)
{
    const QUuid drafts = folder(u"Drafts"_s);
    const QUuid one = note(u"One"_s, drafts);
    (void)app->updateNoteTags(one, {u"sea"_s});
    const Contents before = Contents::of(*app);
    test.licence.setPolicy([] { return false; });
    told.clear();
    const auto accepted = [](const std::expected<QUuid, Refusal>& made) {
        return made ? Accepted() : std::unexpected(made.error());
    };
    const std::pair<const char*, std::function<Accepted()>> rows[] = {
        {"apply",
         [&] {
             return app->apply(NotebookEdits::trashNotes(app->notebook(), root(), {one}, {}));
         }},
        {"update",
         [&] {
             return app->updateNote(one, {u"x"_s, u"y"_s, {}, {}, {}, {}});
         }},
        {"title",
         [&] {
             return app->updateNoteBinderTitle(one, u"x"_s, {});
         }},
        {"folder's title",
         [&] {
             return app->updateFolderBinderTitle(drafts, u"x"_s, {});
         }},
        {"icon",
         [&] {
             return app->updateNoteIcon(one, u"leaf"_s);
         }},
        {"pin",
         [&] {
             return app->togglePinNote(one);
         }},
        {"move",
         [&] {
             return app->moveNote(one, root(), {});
         }},
        {"trash",
         [&] {
             return app->moveNoteToTrash(one);
         }},
        {"erase",
         [&] {
             return app->eraseNotePermanently(one);
         }},
        {"delete folder",
         [&] {
             return app->deleteFolder(drafts);
         }},
        {"tags",
         [&] {
             return app->updateNoteTags(one, {});
         }},
        {"rename tag",
         [&] {
             return app->renameTag(u"sea"_s, u"ebb"_s);
         }},
        {"remove tag",
         [&] {
             return app->removeTagFromLibrary(u"sea"_s);
         }},
        {"undo",
         [&] {
             return app->undoNotebookStep();
         }},
        {"create",
         [&] {
             return accepted(app->createNote());
         }},
        {"create folder",
         [&] {
             return accepted(app->createFolder(u"x"_s));
         }},
        {"duplicate",
         [&] {
             return accepted(app->duplicateNote(one));
         }},
    };
    for (const auto& [name, attempt] : rows)
        EXPECT_EQ(attempt(), std::unexpected(Refusal::NotAllowed)) << name;
    EXPECT_TRUE(told.isEmpty());
    EXPECT_TRUE(Contents::of(*app) == before);
    test.licence.setPolicy({});
    const QUuid nobody = QUuid::createUuid();
    EXPECT_EQ(app->moveNote(nobody, root(), {}), std::unexpected(Refusal::NotThere));
    EXPECT_EQ(app->moveFolder(drafts, drafts, {}), std::unexpected(Refusal::NotPossible));
    EXPECT_EQ(app->renameTag(u"sea"_s, u"SEA"_s), std::unexpected(Refusal::NotPossible));
}

TEST_F(NotebookEditTest, TakingBackLeavesWhatWasDoneOtherwiseSince)
{
    const QUuid drafts = folder(u"Drafts"_s);
    const QUuid one = note(u"One"_s, drafts);
    write(one, u"One"_s, u"first words"_s);

    // Words that were written after a note was renamed stay.
    (void)app->updateNoteBinderTitle(one, u"Uno"_s, {});
    write(one, u"Uno"_s, u"more words"_s);
    ASSERT_TRUE(app->undoNotebookStep());
    EXPECT_EQ(app->note(one)->title, u"One"_s);
    EXPECT_EQ(app->note(one)->body, u"more words"_s);

    // A note that was made, and written in since, goes to the Trash with its words.
    const QUuid two = note(u"Two"_s, drafts);
    write(two, u"Two"_s, u"words"_s);
    ASSERT_TRUE(app->undoNotebookStep());
    ASSERT_TRUE(app->note(two));
    EXPECT_EQ(app->note(two)->folderID, FolderRecord::trashFolderID);
    EXPECT_EQ(listed(FolderRecord::trashFolderID), QList<QUuid>{two});
    ASSERT_TRUE(app->redoNotebookStep());
    EXPECT_EQ(app->note(two)->folderID, drafts);
    EXPECT_EQ(app->note(two)->body, u"words"_s);

    // One without a word of its own goes.
    const QUuid three = note(u"Three"_s, drafts);
    ASSERT_TRUE(app->undoNotebookStep());
    EXPECT_FALSE(app->note(three));
    EXPECT_FALSE(app->selection().selectedNoteID() == three);
    expectStored();
}

TEST_F(NotebookEditTest, WhatIsErasedForGoodDoesntComeBack)
{
    const QUuid one = note(u"One"_s);
    (void)app->moveNoteToTrash(one);
    EXPECT_TRUE(app->canUndoNotebookStep());
    (void)app->eraseNotePermanently(one);
    EXPECT_FALSE(app->canUndoNotebookStep());
    EXPECT_FALSE(app->undoNotebookStep());
}

TEST_F(NotebookEditTest, OneProjectsStepsAreNotAnothers)
{
    note(u"One"_s);
    EXPECT_TRUE(app->canUndoNotebookStep());
    newProject(u"Other"_s);
    EXPECT_FALSE(app->canUndoNotebookStep());
}

TEST_F(NotebookEditTest, ATagsColourAndTheSortOrderAreTakenBackToo)
{
    const QUuid one = note(u"One"_s);
    (void)app->updateNoteTags(one, {u"sea"_s});
    app->setTagColor(u"sea"_s, u"#123456"_s);
    (void)app->renameTag(u"sea"_s, u"ebb"_s);
    app->setBinderSortOrder(BinderSortOrder::AlphabeticalAZ);
    ASSERT_TRUE(app->undoNotebookStep());
    EXPECT_EQ(app->binderSortOrder(), BinderSortOrder::Custom);
    EXPECT_EQ(app->tagsForNote(one), QStringList{u"ebb"_s});
    ASSERT_TRUE(app->undoNotebookStep());
    EXPECT_EQ(app->tagsForNote(one), QStringList{u"sea"_s});
    EXPECT_EQ(app->tagSettings().colorHexes.value(u"sea"_s), u"#123456"_s);
    ASSERT_TRUE(app->redoNotebookStep());
    EXPECT_EQ(app->tagSettings().colorHexes.value(u"ebb"_s), u"#123456"_s);
    ASSERT_TRUE(app->redoNotebookStep());
    EXPECT_EQ(app->binderSortOrder(), BinderSortOrder::AlphabeticalAZ);
}

// Random steps, taken back and done again: each time all is as it was, in memory and on the disk.
TEST_F(NotebookEditTest, AnyRowOfStepsIsTakenBackAndDoneAgain)
{
    std::mt19937 random(20'261'122);
    const auto any = [&](const auto& list) {
        return list.at(qsizetype(random() % size_t(list.size())));
    };
    const auto folders = [&] {
        QList<QUuid> ids;
        for (const auto& each : app->folders()) {
            if (!each->isTrash())
                ids.append(each->id);
        }
        return ids;
    };
    const auto notes = [&] {
        QList<QUuid> ids;
        for (const auto& each : app->notes())
            ids.append(each->id);
        return ids;
    };
    const auto step = [&] {
        test.clock.advance(std::chrono::milliseconds(1 + random() % 5000));
        const QList<QUuid> f = folders();
        const QList<QUuid> n = notes();
        const auto place = [&] {
            return f.isEmpty() || random() % 3 == 0 ? root() : any(f);
        };
        switch (f.isEmpty() || n.size() < 3 ? random() % 2 : random() % 16) {
        case 0:
            note(u"n"_s, random() % 2 && !f.isEmpty() ? std::optional(any(f)) : std::nullopt);
            break;
        case 1:
            folder(u"f"_s, random() % 2 && !f.isEmpty() ? std::optional(any(f)) : std::nullopt);
            break;
        case 2:
            (void)app->updateNoteBinderTitle(any(n), u"title %1"_s.arg(random()), {});
            break;
        case 3:
        case 4: {
            const QUuid to = place();
            const QList<QUuid> there = listed(to);
            (void)app->moveNote(any(n), to,
                                there.isEmpty() ? std::nullopt : std::optional(any(there)));
            break;
        }
        case 5:
            (void)app->moveFolder(any(f), random() % 2 ? std::optional(any(f)) : std::nullopt,
                                  any(f));
            break;
        case 6:
            (void)app->moveNoteToTrash(any(n));
            break;
        case 7:
            if (const auto trash = listed(FolderRecord::trashFolderID); !trash.isEmpty())
                (void)app->restoreNoteFromTrash(any(trash));
            break;
        case 8:
            (void)app->updateNoteTags(any(n), {u"t%1"_s.arg(random() % 5)});
            break;
        case 9:
            (void)(random() % 2 ? app->renameTag(u"t%1"_s.arg(random() % 5), u"t9"_s)
                                : app->updateFolderIcon(any(f), u"leaf"_s));
            break;
        case 10:
            (void)(random() % 2 ? app->duplicateNote(any(n)) : app->duplicateFolder(any(f)));
            break;
        case 11:
            (void)app->restoreNotesFromTrash(listed(FolderRecord::trashFolderID));
            break;
        case 12:
        case 13: {
            QList<BinderRowID> rows;
            for (unsigned i = 0; i < 2 + random() % 4; ++i)
                rows.append(random() % 3 == 0 ? BinderRowID{BinderRowID::Kind::Folder, any(f)}
                                              : BinderRowID{BinderRowID::Kind::Note, any(n)});
            const auto to = random() % 2 ? std::optional(any(f)) : std::nullopt;
            switch (random() % 5) {
            case 0:
                (void)app->moveRowsToTrash(rows);
                break;
            case 1:
                (void)app->setRowsPinned(rows, random() % 2 == 0);
                break;
            case 2:
                (void)app->addTagToRows(rows, u"t%1"_s.arg(random() % 5));
                break;
            default:
                (void)app->moveRows(rows, to, rows.last());
            }
            break;
        }
        default:
            if (random() % 4 == 0)
                (void)app->deleteFolder(any(f));
            else
                (void)app->reorderNotes(place(), {qsizetype(random() % 4)},
                                        qsizetype(random() % 5));
            break;
        }
    };
    for (int round = 0; round < 25; ++round) {
        SCOPED_TRACE(round);
        QList<Contents> states{Contents::of(*app)};
        const auto tags = [&] {
            TagIndex fresh;
            fresh.rebuild(app->folders(), app->notes());
            return fresh.library() == app->tagLibrary();
        };
        for (int i = 0; i < 12; ++i) {
            step();
            if (Contents now = Contents::of(*app); !(now == states.last()))
                states.append(std::move(now));
        }
        const qsizetype last = states.size() - 1;
        for (qsizetype i = last; i > 0; --i) {
            ASSERT_TRUE(app->undoNotebookStep());
            ASSERT_EQ(Contents::of(*app).differenceTo(states.at(i - 1)), "") << i;
            ASSERT_TRUE(tags());
        }
        for (qsizetype i = 1; i <= last; ++i) {
            ASSERT_TRUE(app->redoNotebookStep());
            ASSERT_EQ(Contents::of(*app).differenceTo(states.at(i)), "") << i;
            ASSERT_TRUE(tags());
        }
        ASSERT_FALSE(app->canRedoNotebookStep());
        if (round % 5 == 4)
            expectStored();
    }
}

} // namespace
} // namespace orvane
