// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/binder/BinderActions.h"

#include "core/Records.h"
#include "core/tags/TagSettings.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;
using Kind = BinderRowID::Kind;

const QUuid project = idOf(1000);
const QUuid trash = FolderRecord::trashFolderID;

struct BinderActionsTest : ::testing::Test {
    // 1 > 3, 1 > 4 > 5, 2; notes 10 11 12 in folder 1, 20 at the root.
    RecordTable<FolderRecord> folders{{makeFolder(1), makeFolder(2), makeFolder(3, idOf(1)),
                                       makeFolder(4, idOf(1)), makeFolder(5, idOf(4)),
                                       makeTrash()}};
    RecordTable<NoteRecord> notes{{makeNote(10, idOf(1)), makeNote(11, idOf(1)),
                                   makeNote(12, idOf(1)), makeNote(20, project)}};
    BinderOrder order;

    BinderActionsTest()
    {
        order.rootFolderOrder = {idOf(1), idOf(2)};
        order.childFolderOrder = {{idOf(1), {idOf(3), idOf(4)}}, {idOf(4), {idOf(5)}}};
        order.noteOrderByFolder = {{idOf(1), {idOf(10), idOf(11), idOf(12)}},
                                   {project, {idOf(20)}}};
    }
};

TEST_F(BinderActionsTest, DropsGoWhereTheRowSaysByTheHeightInIt)
{
    const auto folder = [](int number) {
        return BinderRowID{Kind::Folder, idOf(number)};
    };
    const auto note = [](int number) {
        return BinderRowID{Kind::Note, idOf(number)};
    };
    const BinderRowID trashRow{Kind::Folder, trash};
    using At = std::optional<QUuid>;
    struct Row {
        const char* name;
        BinderRowID dragged;
        BinderRowID target;
        double y;
        bool accepted;
        At container;
        At before;
    };
    const Row rows[] = {
        {"folder before a folder", folder(2), folder(1), 13.9, true, {}, idOf(1)},
        {"folder into a folder", folder(2), folder(1), 14, true, idOf(1), {}},
        {"folder still into", folder(2), folder(1), 33.9, true, idOf(1), {}},
        {"folder after a folder", folder(3), folder(1), 34, true, {}, idOf(2)},
        {"folder after the last", folder(3), folder(2), 40, true, {}, {}},
        {"folder after a child", folder(2), folder(3), 47, true, idOf(1), idOf(4)},
        {"folder after its neighbour before it", folder(2), folder(1), 47, true, {}, {}},
        {"folder on a note", folder(2), note(10), 5, false, {}, {}},
        {"folder on itself", folder(2), folder(2), 20, false, {}, {}},
        {"folder into its own descendant", folder(1), folder(5), 20, false, {}, {}},
        {"folder beside its own descendant", folder(1), folder(5), 2, false, {}, {}},
        {"folder into the Trash", folder(2), trashRow, 20, false, {}, {}},
        {"folder after the Trash", folder(2), trashRow, 40, false, {}, {}},
        {"the Trash into a folder", trashRow, folder(1), 20, false, {}, {}},
        {"note before a note", note(20), note(11), 19.9, true, idOf(1), idOf(11)},
        {"note after a note", note(20), note(11), 20, true, idOf(1), idOf(12)},
        {"note after the last", note(20), note(12), 39, true, idOf(1), {}},
        {"note after the one before it", note(11), note(10), 30, true, idOf(1), idOf(12)},
        {"note to the front of a folder", note(20), folder(1), 13, true, idOf(1), idOf(10)},
        {"note to the end of a folder", note(20), folder(1), 14, true, idOf(1), {}},
        {"note to the front of an empty folder", note(20), folder(2), 3, true, idOf(2), {}},
        {"note to the root", note(10), note(20), 30, true, project, {}},
        {"note into the Trash", note(10), trashRow, 20, true, trash, {}},
        {"a note that is gone", note(99), folder(1), 20, false, {}, {}},
        {"onto a row that is gone", note(10), note(99), 20, false, {}, {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const auto move =
            resolveDrop(row.dragged, row.target, row.y, order, folders, notes, project);
        ASSERT_EQ(move.has_value(), row.accepted);
        if (move) {
            EXPECT_EQ(*move, (BinderMove{row.dragged, row.container, row.before}));
        }
    }
}

TEST_F(BinderActionsTest, DragTextIsParsedStrictly)
{
    for (const Kind kind : {Kind::Folder, Kind::Note}) {
        const BinderRowID row{kind, idOf(3)};
        EXPECT_EQ(BinderDragPayload::parse(BinderDragPayload::text(row)), row);
    }
    EXPECT_EQ(BinderDragPayload::text({Kind::Note, idOf(3)}),
              u"note:00000007-0000-4000-8000-000000000003"_s);
    for (const QString& text :
         {u""_s, u"note:"_s, u"note"_s, u"tag:00000007-0000-4000-8000-000000000003"_s,
          u"folder:{00000007-0000-4000-8000-000000000003}"_s, u"folder:x"_s,
          u"Note:00000007-0000-4000-8000-000000000003"_s})
        EXPECT_FALSE(BinderDragPayload::parse(text)) << text.toStdString();
}

TEST_F(BinderActionsTest, NotesAreSortedInAPersonsOrder)
{
    QList<Shared<NoteRecord>> notes;
    const auto add = [&](int number, const QString& title) {
        NoteRecord note = makeNote(number, project, 5000 - number);
        note.title = title;
        notes.append(note);
    };
    add(31, u"note 10"_s);
    add(32, u"Note 9"_s);
    add(35, u"b"_s);
    add(34, u"A"_s);
    add(36, u"a"_s);
    struct Row {
        BinderSortOrder order;
        const char* shown;
    };
    const Row table[] = {
        {BinderSortOrder::Custom, "31 32 35 34 36 "},
        {BinderSortOrder::RecentModified, "31 32 34 35 36 "},
        {BinderSortOrder::OldestModified, "36 35 34 32 31 "},
        {BinderSortOrder::AlphabeticalAZ, nullptr}, // as the language of the desktop sorts
        {BinderSortOrder::AlphabeticalZA, nullptr},
        {BinderSortOrder::CreatedNewest, "36 35 34 32 31 "},
        {BinderSortOrder::CreatedOldest, "31 32 34 35 36 "},
    };
    for (const Row& row : table) {
        SCOPED_TRACE(rawValue(row.order).toStdString());
        std::string shown;
        const auto sorted = sortedNotes(notes, row.order);
        const NoteOrder order(row.order);
        for (qsizetype i = 0; i < sorted.size(); ++i) {
            shown += std::to_string(sorted.at(i)->createdAt.msecs - 1000) + ' ';
            if (i > 0) {
                EXPECT_LE(order.compare(*sorted.at(i - 1), *sorted.at(i)), 0);
            }
        }
        if (row.shown) {
            EXPECT_EQ(shown, row.shown);
        }
        EXPECT_EQ(orvane::binderSortOrder(rawValue(row.order)), row.order);
    }
    EXPECT_EQ(rawValue(BinderSortOrder::AlphabeticalAZ), u"A → Z"_s);
    EXPECT_EQ(orvane::binderSortOrder(u"by mood"_s), BinderSortOrder::Custom);
}

TEST(Neighbour, IsTheNextThatStaysElseTheLast)
{
    const QList<QUuid> list{idOf(1), idOf(2), idOf(3)};
    EXPECT_EQ(neighbourAfterRemoval(list, {idOf(1)}), idOf(2));
    EXPECT_EQ(neighbourAfterRemoval(list, {idOf(3)}), idOf(2));
    EXPECT_EQ(neighbourAfterRemoval(list, {idOf(2), idOf(3)}), idOf(1));
    EXPECT_EQ(neighbourAfterRemoval({idOf(1)}, {idOf(1)}), std::nullopt);
}

TEST(Tags, AreNormalised)
{
    struct Row {
        const char* name;
        QStringList given;
        QStringList kept;
    };
    const Row rows[] = {
        {"trimmed and sorted without case",
         {u" tide "_s, u"Ash"_s, u"birch\n"_s},
         {u"Ash"_s, u"birch"_s, u"tide"_s}},
        {"first spelling wins", {u" Tide"_s, u"tide"_s, u"TIDE"_s}, {u"Tide"_s}},
        {"fifty stay, fifty-one go", {QString(50, u'a'), QString(51, u'b')}, {QString(50, u'a')}},
        {"empties go", {u""_s, u" \t"_s}, {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(normalizeTags(row.given), row.kept);
    }
    EXPECT_EQ(replacingTag({u"tide"_s, u"salt"_s}, u"SALT"_s, u"Tide"_s), QStringList{u"tide"_s});
    EXPECT_EQ(replacingTag({u"tide"_s}, u"salt"_s, u"x"_s), std::nullopt);
    EXPECT_EQ(removingTag({u"tide"_s, u"Salt"_s}, u"salt"_s), QStringList{u"tide"_s});
}

TEST(TagSettings, AreCleanedAndSurviveSettings)
{
    UserDefaults defaults;
    TagSettings settings;
    settings.colorHexes = {{u"tide"_s, u"#00D4FF"_s}};
    settings.addAlias(u" Ebb "_s, u" Tide "_s);
    settings.addAlias(u"ebb"_s, u"tide"_s);
    settings.addAlias(u"TIDE"_s, u"tide"_s);
    settings.addAlias(u""_s, u"salt"_s);
    EXPECT_EQ(settings.aliases, (TagAliases{{u"tide"_s, {u"Ebb"_s}}}));
    settings.rename(u"Tide"_s, u"Flood"_s);
    settings.autoTagExceptions = {u"the"_s};
    settings.save(defaults);
    EXPECT_EQ(TagSettings::load(defaults), settings);
    EXPECT_EQ(settings.colorHexes.value(u"flood"_s), u"#00D4FF"_s);
    EXPECT_TRUE(settings.isExcludedFromAutoColor(u"The"_s));
    settings.removeAlias(u"EBB"_s, u"flood"_s);
    EXPECT_TRUE(settings.aliases.isEmpty());
}

} // namespace
} // namespace orvane
