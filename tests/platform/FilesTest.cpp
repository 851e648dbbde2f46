// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "platform/AtomicFile.h"
#include "platform/FileStamp.h"
#include "platform/FolderHandle.h"
#include "platform/SetAside.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

struct Files : ::testing::Test {
    QTemporaryDir folder;
    QString path = folder.path() + u"/file"_s;
};

TEST_F(Files, APartIsReadWithinWhatThereIs)
{
    ASSERT_TRUE(writeFileAtomically(path, "0123456789"));
    struct Row {
        const char* name;
        qint64 at;
        qint64 size;
        const char* expected;
    };
    const Row rows[] = {
        {"all", 0, 10, "0123456789"},  {"from the middle", 3, 4, "3456"},
        {"the last byte", 9, 1, "9"},  {"beyond the end", 8, 5, "89"},
        {"behind the end", 12, 3, ""}, {"at the end", 10, 1, ""},
        {"nothing", 4, 0, ""},
    };
    for (const Row& row : rows)
        EXPECT_EQ(readFilePart(path, row.at, row.size), QByteArray(row.expected)) << row.name;
    EXPECT_EQ(readFilePart(folder.path(), 0, 1).error().code, FileError::Code::NotAFile);
    EXPECT_EQ(readFilePart(path + u"?"_s, 0, 1).error().code, FileError::Code::NotFound);
}

TEST_F(Files, AreReadWholeUpToTheirLimit)
{
    ASSERT_TRUE(writeFileAtomically(path, "0123456789"));
    EXPECT_EQ(readFile(path, 10), QByteArray("0123456789"));
    EXPECT_EQ(readFile(path, 9).error().code, FileError::Code::TooBig);
    EXPECT_EQ(obstacleAt(path, 9)->code, FileError::Code::TooBig);
    EXPECT_FALSE(obstacleAt(path, 10));
    EXPECT_EQ(obstacleAt(folder.path())->code, FileError::Code::NotAFile);
    EXPECT_FALSE(obstacleAt(path + u"?"_s));
}

TEST_F(Files, AWriteReplacesALinksTargetAndNeverAFolder)
{
    ASSERT_TRUE(writeFileAtomically(path, "old"));
    const QString link = folder.path() + u"/link"_s;
    ASSERT_TRUE(QFile::link(path, link));
    ASSERT_TRUE(writeFileAtomically(link, "new"));
    EXPECT_EQ(readFile(path), QByteArray("new"));
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    ASSERT_TRUE(makeFolder(folder.path() + u"/a/b"_s));
    EXPECT_EQ(writeFileAtomically(folder.path() + u"/a"_s, "x").error().code,
              FileError::Code::NotAFile);
    EXPECT_FALSE(writeFileAtomically(folder.path() + u"/none/file"_s, "x"));
}

TEST_F(Files, AHeldFolderIsFollowedAndNotItsName)
{
    const QString first = folder.path() + u"/first"_s;
    ASSERT_TRUE(makeFolder(first));
    auto handle = FolderHandle::open(first);
    ASSERT_TRUE(handle);
    EXPECT_EQ((*handle)->place(), first);
    EXPECT_EQ(FileIdentity::of(first), (*handle)->identity());
    const QString second = folder.path() + u"/second"_s;
    ASSERT_TRUE(QFile::rename(first, second));
    ASSERT_TRUE(makeFolder(first));
    EXPECT_EQ((*handle)->place(), second);
    EXPECT_NE(FileIdentity::of(first), (*handle)->identity());
    ASSERT_TRUE(writeFileAtomically((*handle)->path() + u"/file"_s, "x"));
    EXPECT_TRUE(QFile::exists(second + u"/file"_s));
    ASSERT_TRUE(QDir(second).removeRecursively());
    EXPECT_FALSE((*handle)->place());
    const QString held = (*handle)->path();
    EXPECT_TRUE(QFileInfo::exists(held));
    handle->reset();
    EXPECT_FALSE(QFileInfo::exists(held)) << "let go of with the handle";
    EXPECT_FALSE(FolderHandle::open(second));
    ASSERT_TRUE(writeFileAtomically(path, "x"));
    EXPECT_FALSE(FolderHandle::open(path)) << "a file is no folder";
}

TEST_F(Files, AStampTellsEachChange)
{
    EXPECT_FALSE(FileStamp::of(path).exists);
    ASSERT_TRUE(writeFileAtomically(path, "one"));
    const FileStamp one = FileStamp::of(path);
    EXPECT_TRUE(one.exists);
    EXPECT_FALSE(one.isFolder);
    EXPECT_FALSE(one.isSettled) << "written just now";
    EXPECT_EQ(one, FileStamp::of(path));
    const FolderStamps below(folder.path());
    EXPECT_EQ(below.of("file"), one);
    EXPECT_TRUE(below.of({}).isFolder);
    EXPECT_FALSE(below.of("none").exists);
    ASSERT_TRUE(writeFileAtomically(path, "two"));
    EXPECT_NE(FileStamp::of(path), one) << "another file of the same size";
}

TEST_F(Files, WhatIsSetAsideReplacesNothing)
{
    const QString first = path + u".damaged"_s;
    EXPECT_EQ(setAsidePath(path), first);
    ASSERT_TRUE(writeFileAtomically(first, "x"));
    EXPECT_EQ(setAsidePath(path), first + u"-2"_s);
    ASSERT_TRUE(QFile::link(folder.path() + u"/nowhere"_s, first + u"-2"_s));
    EXPECT_EQ(setAsidePath(path), first + u"-3"_s);
}

} // namespace
} // namespace orvane
