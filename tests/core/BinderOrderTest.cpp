// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/binder/BinderOrder.h"

#include "core/NaiveRows.h"
#include "core/Records.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace BinderDisplayOrdering;

const QUuid project = idOf(1000);

struct BinderOrderTest : ::testing::Test {
    RecordTable<FolderRecord> folders{{makeFolder(1), makeFolder(2), makeFolder(3, idOf(1)),
                                       makeFolder(4, idOf(1)), makeTrash()}};
    RecordTable<NoteRecord> notes{{makeNote(10, idOf(1)), makeNote(11, idOf(1)),
                                   makeNote(12, project), makeNote(13, FolderRecord::trashFolderID),
                                   makeNote(14, project)}};

    std::string shown(const BinderOrder& order)
    {
        std::string text;
        for (const auto& row : naiveRows(order, folders, notes, project)) {
            text += std::string(size_t(row.depth), '.');
            text += row.isFolder() && row.folder().isTrash() ? "T"
                    : row.isFolder() ? row.folder().name.mid(7).toStdString()
                                     : row.note().title.mid(5).toStdString();
            text += ' ';
        }
        return text;
    }
    BinderOrder repaired(const BinderOrder& order)
    {
        return reconciled(order, folders, notes, project);
    }
};

TEST_F(BinderOrderTest, DefaultOrderIsOldestFolderAndNewestNoteFirst)
{
    BinderOrder order = orderOf(defaultLayout(folders, notes, project));
    EXPECT_EQ(shown(order), "1 2 14 12 T ");
    order.expandedFolderIDs = {idOf(1), FolderRecord::trashFolderID};
    EXPECT_EQ(shown(order), "1 .3 .4 .11 .10 2 14 12 T .13 ");
    EXPECT_EQ(orderOf(layoutOf(order)), order);
}

TEST_F(BinderOrderTest, RepairDropsTheDeadAndTheDoubledAndAppendsTheMissing)
{
    BinderOrder order;
    order.rootFolderOrder = {idOf(2), idOf(99), idOf(2), idOf(3)};
    order.childFolderOrder = {{idOf(1), {idOf(4), idOf(98)}}, {idOf(97), {idOf(3)}}};
    order.noteOrderByFolder = {{idOf(1), {idOf(10), idOf(12), idOf(10)}}, {idOf(96), {idOf(11)}}};
    order.expandedFolderIDs = {idOf(1), idOf(95)};
    const BinderOrder fixed = repaired(order);
    EXPECT_EQ(fixed.rootFolderOrder, (QList<QUuid>{idOf(2), idOf(1)}));
    EXPECT_EQ(fixed.childFolderOrder, (QHash<QUuid, QList<QUuid>>{{idOf(1), {idOf(4), idOf(3)}}}));
    EXPECT_EQ(fixed.noteOrderByFolder.value(idOf(1)), (QList<QUuid>{idOf(10), idOf(11)}));
    EXPECT_FALSE(fixed.noteOrderByFolder.contains(idOf(96)));
    EXPECT_EQ(shown(fixed), "2 1 .4 .3 .10 .11 14 12 T ");
    EXPECT_EQ(repaired(fixed), fixed);
}

TEST_F(BinderOrderTest, StraysAreShownAndNeverHidden)
{
    folders.append(makeFolder(5, idOf(77))); // parent is gone
    folders.append(makeFolder(6, idOf(7)));  // a loop
    folders.append(makeFolder(7, idOf(6)));
    folders.append(makeFolder(8, FolderRecord::trashFolderID));
    notes.append(makeNote(20, idOf(66))); // folder is gone
    EXPECT_EQ(shown(repaired({})), "1 2 5 6 7 8 20 14 12 T ");
}

TEST(RecordTable, FindsByIdAfterEveryChange)
{
    RecordTable<NoteRecord> table;
    for (int i = 0; i < 100; ++i)
        EXPECT_TRUE(table.append(makeNote(i, project)));
    EXPECT_FALSE(table.append(makeNote(5, project)));
    table.removeAll({idOf(0), idOf(50), idOf(500)});
    EXPECT_EQ(table.size(), 98);
    EXPECT_EQ(table.find(idOf(50)), nullptr);
    for (int i : {1, 49, 51, 99})
        EXPECT_EQ((*table.find(idOf(i)))->id, idOf(i));
}

} // namespace
} // namespace orvane
