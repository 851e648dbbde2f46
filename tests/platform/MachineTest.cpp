// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "platform/Machine.h"

#include "platform/AtomicFile.h"
#include "support/OddFiles.h"

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

TEST(AtomicFile, WhatIsNoFileIsNeitherReadNorReplaced)
{
    for (const OddFile& odd : oddFiles) {
        SCOPED_TRACE(odd.name);
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"it"_s);
        ASSERT_TRUE(odd.make(QFile::encodeName(path)));
        struct ::stat before {};
        struct ::stat after {};
        ASSERT_EQ(::lstat(QFile::encodeName(path).constData(), &before), 0);
        ::alarm(20); // what hangs ends the test program
        EXPECT_EQ(obstacleAt(path)->code, FileError::Code::NotAFile);
        EXPECT_EQ(readFile(path, 1'000).error().code, FileError::Code::NotAFile);
        EXPECT_EQ(writeFileAtomically(path, "x").error().code, FileError::Code::NotAFile);
        ::alarm(0);
        ASSERT_EQ(::lstat(QFile::encodeName(path).constData(), &after), 0);
        EXPECT_EQ(before.st_ino, after.st_ino);
        EXPECT_EQ(before.st_mode, after.st_mode);
    }
}

TEST(AtomicFile, WhatIsTooBigForItsKindIsNotRead)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"file"_s);
    ASSERT_TRUE(writeFileAtomically(path, QByteArray(1'000, 'x')));
    EXPECT_EQ(readFile(path, 1'000)->size(), 1'000);
    EXPECT_EQ(readFile(path, 999).error().code, FileError::Code::TooBig);
    EXPECT_EQ(obstacleAt(path, 999)->code, FileError::Code::TooBig);
    EXPECT_FALSE(obstacleAt(path, 1'000));
    EXPECT_FALSE(obstacleAt(folder.filePath(u"none"_s)));
    // What tells no size, and goes on beyond the limit.
    EXPECT_EQ(readFile(u"/proc/self/maps"_s, 10).error().code, FileError::Code::TooBig);
    // A file that can't be taken in whole is not needed to know that it is too big.
    QFile huge(folder.filePath(u"huge"_s));
    ASSERT_TRUE(huge.open(QFile::WriteOnly) && huge.resize(qint64(1) << 40));
    EXPECT_EQ(readFile(huge.fileName(), FileLimit::versionHistory).error().code,
              FileError::Code::TooBig);
}

TEST(AtomicFile, ReadingInPiecesTellsHowFarItIsAndStopsWhenTold)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"file"_s);
    ASSERT_TRUE(writeFileAtomically(path, QByteArray(3'000'000, 'x')));
    QList<qint64> told;
    const auto read = readFile(path, 3'000'000, [&](qint64 sofar, qint64 whole) {
        EXPECT_EQ(whole, 3'000'000);
        told.append(sofar);
        return told.size() < 2;
    });
    ASSERT_EQ(told.size(), 2);
    EXPECT_EQ(read->size(), told.last());
    EXPECT_LT(read->size(), 3'000'000);
}

TEST(AtomicFile, ALinkThatLeadsToNothingYetStaysALink)
{
    const QTemporaryDir folder;
    const QString link = folder.filePath(u"link"_s);
    ASSERT_TRUE(QFile::link(folder.filePath(u"target"_s), link));
    ASSERT_TRUE(writeFileAtomically(link, "new"));
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    EXPECT_EQ(*readFile(folder.filePath(u"target"_s)), "new");
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
