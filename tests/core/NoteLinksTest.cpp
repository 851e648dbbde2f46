// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/library/NoteLocator.h"
#include "core/records/InternalNoteLink.h"
#include "core/state/AppState.h"
#include "core/store/PersistentStoreRecovery.h"
#include "support/TestServices.h"

#include <QDir>
#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

TEST(InternalNoteLink, LeadsToANoteOrNowhere)
{
    const QUuid id(u"0a1b2c3d-0000-4000-8000-00000000abcd"_s);
    EXPECT_EQ(InternalNoteLink::link(id),
              u"orvaneworkspace://note/0A1B2C3D-0000-4000-8000-00000000ABCD"_s);
    struct Row {
        const char* text;
        bool leads;
    };
    const Row rows[] = {
        {"orvaneworkspace://note/0A1B2C3D-0000-4000-8000-00000000ABCD", true},
        {"orvanenotes://note/0a1b2c3d-0000-4000-8000-00000000abcd", true},
        {"OrvaneWorkspace://NOTE/0a1b2c3d-0000-4000-8000-00000000abcd", true},
        {"orvaneworkspace://note//0a1b2c3d-0000-4000-8000-00000000abcd/more?x=1", true},
        {"orvaneworkspace://note/more/0a1b2c3d-0000-4000-8000-00000000abcd", false},
        {"orvaneworkspace://pdf/0a1b2c3d-0000-4000-8000-00000000abcd?page=1", false},
        {"orvaneworkspace:note/0a1b2c3d-0000-4000-8000-00000000abcd", false},
        {"https://note/0a1b2c3d-0000-4000-8000-00000000abcd", false},
        {"orvaneworkspace://note/0a1b2c3d", false},
        {"orvaneworkspace://note/", false},
        {"", false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(InternalNoteLink::noteID(QString::fromLatin1(row.text)),
                  row.leads ? std::optional(id) : std::nullopt);
    }
}

TEST(NoteLocator, FindsNotesInStoresAtRestAndLeavesNoTrace)
{
    TestServices test;
    AppState state(test.services());
    QList<QUuid> notes;
    for (const auto& name : {u"One"_s, u"Two"_s, u"Three"_s}) {
        ASSERT_TRUE(state.projectSession().createProject(name, {}).has_value());
        notes.append(*state.createNote(name, {}));
    }
    const QString open = state.projectSession().currentProject()->rootPath;
    const QList<OrvaneProjectRecord> projects = state.projectSession().projects();
    EXPECT_EQ(projectHoldingNote(projects, notes[2]), std::nullopt) << "open now";
    state.projectSession().closeProject();
    EXPECT_EQ(projectHoldingNote(projects, notes[2]), open);
    const auto first = projectHoldingNote(projects, notes[0]);
    ASSERT_TRUE(first && *first != open);
    EXPECT_EQ(projectHoldingNote(projects, QUuid::createUuid()), std::nullopt);
    const QString folder = ProjectLibraryController::projectDataDirectoryPath(*first);
    EXPECT_TRUE(QDir(folder).entryList({u"*-wal"_s, u"*-shm"_s}).isEmpty());

    QFile store(storePath(folder));
    ASSERT_TRUE(store.open(QFile::ReadWrite));
    store.write("no store any more, whatever its name");
    store.close();
    EXPECT_EQ(projectHoldingNote(projects, notes[0]), std::nullopt);
    EXPECT_EQ(projectHoldingNote(projects, notes[2]), open) << "others are still searched";
}

} // namespace
} // namespace orvane
