// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "platform/Machine.h"

#include "platform/AtomicFile.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <csignal>
#include <sys/resource.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

TEST(AtomicFile, AFailedWriteLeavesTheOldFileAndNothingElse)
{
    const QTemporaryDir folder;
    const QString path = folder.path() + u"/file"_s;
    ASSERT_TRUE(writeFileAtomically(path, "old"));

    // The file system refuses to let any file grow beyond this.
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    rlimit small = before;
    small.rlim_cur = 1024;
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    const auto written = writeFileAtomically(path, QByteArray(100'000, 'x'));
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &before), 0);

    ASSERT_FALSE(written);
    EXPECT_EQ(*readFile(path), "old");
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{u"file"_s});
}

TEST(AtomicFile, ErrorsSayWhatIsWrong)
{
    const QTemporaryDir folder;
    EXPECT_EQ(readFile(folder.path() + u"/none"_s).error().code, FileError::Code::NotFound);
    EXPECT_FALSE(readFile(folder.path()));
    EXPECT_FALSE(writeFileAtomically(folder.path() + u"/none/file"_s, "x"));
    ASSERT_TRUE(writeFileAtomically(folder.path() + u"/plain"_s, "x"));
    EXPECT_FALSE(makeFolder(folder.path() + u"/plain/below"_s));
    EXPECT_TRUE(makeFolder(folder.path() + u"/a/b/c"_s));
    EXPECT_TRUE(makeFolder(folder.path() + u"/a/b/c"_s));
}

TEST(AtomicFile, ALinkKeepsPointingAtTheNewFile)
{
    const QTemporaryDir folder;
    const QString target = folder.path() + u"/target"_s;
    const QString link = folder.path() + u"/link"_s;
    ASSERT_TRUE(writeFileAtomically(target, "old"));
    ASSERT_TRUE(QFile::link(target, link));
    ASSERT_TRUE(writeFileAtomically(link, "new"));
    EXPECT_EQ(*readFile(target), "new");
    EXPECT_TRUE(QFileInfo(link).isSymLink());
}

TEST(Trash, KeepsTheFolderRecoverableAndTellsWhere)
{
    const QTemporaryDir folder;
    FolderTrash trash(folder.path() + u"/trash"_s);
    for (int i = 0; i < 2; ++i) {
        ASSERT_TRUE(makeFolder(folder.path() + u"/Project"_s));
        const auto place = trash.moveToTrash(folder.path() + u"/Project"_s);
        ASSERT_TRUE(place && *place);
        EXPECT_TRUE(QDir(**place).exists());
    }
    EXPECT_FALSE(trash.moveToTrash(folder.path() + u"/Project"_s));
    EXPECT_FALSE(DesktopTrash().moveToTrash(folder.path() + u"/Project"_s));
}

} // namespace
} // namespace orvane
