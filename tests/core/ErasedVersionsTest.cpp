// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/Records.h"
#include "core/state/AppState.h"
#include "core/state/SessionKeys.h"
#include "core/versions/VersionErasure.h"
#include "support/TestServices.h"

#include <QDir>
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <sys/resource.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

/// Versions of notes that a person erased, and of notes that are gone for another reason.
struct ErasedVersions : ::testing::Test {
    TestServices test;
    std::unique_ptr<AppState> app = std::make_unique<AppState>(test.services());
    QUuid project;
    QString root;

    ErasedVersions()
    {
        SessionKeys::welcomeDismissed.write(test.defaults, true);
        project = app->projectSession().createProject(u"Tidewater"_s, std::nullopt).value();
        root = app->projectSession().currentProject()->rootPath;
    }
    QUuid noteWithVersions()
    {
        const QUuid id = app->createNote().value();
        app->updateNote(id, {u"T"_s, u"secret words"_s, {}, {}, {}, {}});
        EXPECT_TRUE(app->appendVersionSnapshot(id, u"Manual Save"_s));
        const QString path = VersionFiles::filePath(root, id);
        for (const auto& suffix : {u".damaged"_s, u".damaged-2"_s, u".aBcDeF"_s})
            EXPECT_TRUE(writeFileAtomically(path + suffix, "[secret words"));
        return id;
    }
    QStringList filesOf(const QUuid& id)
    {
        return QDir(VersionFiles::folderPath(root))
            .entryList({uuidText(id) + u'*'}, QDir::Files | QDir::Hidden);
    }
    bool isListed() { return QFile::exists(VersionErasure::listPath(root)); }
    void reopen()
    {
        app->projectSession().closeProject();
        app->projectSession().openProject(project, false);
        ASSERT_TRUE(app->projectSession().currentProject());
    }
};

TEST_F(ErasedVersions, GoWithTheNoteAndLeaveTheOthers)
{
    const QUuid kept = noteWithVersions();
    const QUuid one = noteWithVersions();
    const QUuid two = noteWithVersions();
    app->eraseNotePermanently(one);
    EXPECT_EQ(filesOf(one), QStringList());
    app->moveNoteToTrash(two);
    EXPECT_EQ(filesOf(two).size(), 4) << "the Trash gives notes back whole";
    ASSERT_TRUE(app->emptyTrashToMacOSUserTrash());
    EXPECT_EQ(filesOf(two), QStringList());
    EXPECT_EQ(filesOf(kept).size(), 4);
    EXPECT_FALSE(isListed());
}

TEST_F(ErasedVersions, StayUntilTheRemovalIsStored)
{
    const QUuid id = noteWithVersions();
    const QUuid other = app->createNote().value();
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit small = before;
    small.rlim_cur = 4096;
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    app->eraseNotePermanently(id);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &before), 0);
    ASSERT_TRUE(app->projectSession().saveFailure());
    EXPECT_EQ(filesOf(id).size(), 4);
    EXPECT_TRUE(isListed());
    app->updateNote(other, {u"the save that succeeds"_s, {}, {}, {}, {}, {}});
    ASSERT_FALSE(app->projectSession().saveFailure());
    EXPECT_EQ(filesOf(id), QStringList());
    EXPECT_FALSE(isListed());
}

TEST_F(ErasedVersions, OfARunThatWasKilledGoWhenTheProjectOpens)
{
    const QUuid id = noteWithVersions();
    app->eraseNotePermanently(id);
    // As if the program had been killed between the store and the files.
    ASSERT_TRUE(writeFileAtomically(VersionFiles::filePath(root, id), "[]"));
    ASSERT_TRUE(
        writeFileAtomically(VersionErasure::listPath(root), "[\"" + uuidText(id).toUtf8() + "\"]"));
    reopen();
    EXPECT_EQ(filesOf(id), QStringList());
    EXPECT_FALSE(isListed());
}

TEST_F(ErasedVersions, OfAVersionThatIsStillBeingWrittenNothingStays)
{
    const QUuid id = noteWithVersions();
    const QUuid fresh = app->createNote().value();
    for (const QUuid& each : {id, fresh}) {
        for (int i = 0; i < 20; ++i)
            app->appendVersionSnapshotLater(each, std::nullopt, [](const auto&) {});
        app->eraseNotePermanently(each);
    }
    app->versionHistory().waitForAll();
    EXPECT_EQ(filesOf(id), QStringList());
    EXPECT_EQ(filesOf(fresh), QStringList());
    EXPECT_FALSE(isListed());
}

struct Survivor {
    const char* name;
    bool isListed;
    bool isInNotebook;
    const char* list;
};

class VersionsThatStay : public ErasedVersions, public testing::WithParamInterface<Survivor> {};

TEST_P(VersionsThatStay, WhenTheProjectOpens)
{
    const Survivor& row = GetParam();
    const QUuid id = noteWithVersions();
    if (!row.isInNotebook) {
        // A store that lost the note, or was made before it.
        const QString files = VersionFiles::folderPath(root);
        const QString copy = test.folder.path() + u"/copy"_s;
        std::filesystem::copy(files.toStdU16String(), copy.toStdU16String());
        app->eraseNotePermanently(id);
        std::filesystem::remove_all(files.toStdU16String());
        std::filesystem::copy(copy.toStdU16String(), files.toStdU16String());
    }
    const QByteArray list = row.list ? QByteArray(row.list) : "[\"" + uuidText(id).toUtf8() + "\"]";
    if (row.isListed) {
        ASSERT_TRUE(writeFileAtomically(VersionErasure::listPath(root), list));
    }
    reopen();
    EXPECT_EQ(app->note(id) != nullptr, row.isInNotebook);
    EXPECT_EQ(filesOf(id).size(), 4);
    EXPECT_EQ(isListed(), row.list != nullptr) << "no later opening may take it for erased";
}

INSTANTIATE_TEST_SUITE_P(
    Cases, VersionsThatStay,
    testing::Values(Survivor{"OfANoteThatTheStoreLost", false, false, nullptr},
                    Survivor{"OfANoteWhoseRemovalWasNotStored", true, true, nullptr},
                    Survivor{"UnderAListThatIsNone", true, false, "{\"not\": \"a list\"}"},
                    Survivor{"UnderAListOfOthers", true, false, "[\"7\", 5, null]"}),
    [](const auto& info) { return std::string(info.param.name); });

} // namespace
} // namespace orvane
