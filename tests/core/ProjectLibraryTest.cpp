// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/Records.h"
#include "core/library/ProjectLibraryController.h"
#include "support/TestServices.h"

#include <QThread>
#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

struct ProjectLibrary : ::testing::Test {
    QTemporaryDir folder;
    ProjectLibraryController library{UserFolders::below(folder.path())};
    QString root = library.projectsDirectoryPath();

    QString add(const QString& name, const QString& manifestName, Timestamp updated = {5},
                const QString& libraryRoot = {})
    {
        const QString path = (libraryRoot.isEmpty() ? root : libraryRoot) + u'/' + name;
        EXPECT_TRUE(orvane::makeFolder(path));
        OrvaneProjectRecord record;
        record.id = QUuid::createUuid();
        record.name = name;
        record.updatedAt = updated;
        EXPECT_TRUE(writeFileAtomically(path + u'/' + manifestName, record.encoded()));
        return path;
    }
    QStringList titles()
    {
        QStringList names;
        for (const auto& project : library.sortedProjects())
            names.append(project.titleForDisplay());
        return names;
    }
};

TEST_F(ProjectLibrary, NewProjectHasOneVisibleManifestAndADataFolder)
{
    const auto project = library.createProject(u"  a/b:c "_s, u"sparkles"_s, {7});
    ASSERT_TRUE(project);
    EXPECT_EQ(project->rootPath, root + u"/a-b-c"_s);
    EXPECT_EQ(project->name, u"a/b:c"_s);
    EXPECT_EQ(
        QDir(project->rootPath).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
        (QStringList{u".orvaneworkspace"_s, u"orvaneworkspace-project.json"_s}));
    const auto read = library.decodedProjects(library.projectRootPathsWithManifests());
    ASSERT_EQ(read.size(), 1);
    EXPECT_EQ(read.first(), *project);
}

TEST_F(ProjectLibrary, FolderNamesAreSafeAndFree)
{
    const QString longName = QString(300, u'é');
    struct Row {
        const char* name;
        QString given;
        QString folder;
    };
    const Row rows[] = {
        {"blank", u" \n"_s, u"Untitled Project"_s},
        {"dots alone", u".."_s, u"Untitled Project"_s},
        {"a leading dot stays", u".hidden"_s, u".hidden"_s},
        {"control characters go", u"a\nb\tc"_s, u"abc"_s},
        {"right-to-left", u"מחברת"_s, u"מחברת"_s},
        {"too long for a file name", longName, longName.left(120)},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(ProjectLibraryController::sanitizedFolderName(row.given), row.folder);
    }
    for (const QString& expected : {u"Notes"_s, u"Notes 2"_s, u"Notes 3"_s}) {
        const auto project = library.createProject(u"Notes"_s, {}, {1});
        ASSERT_TRUE(project);
        EXPECT_EQ(QFileInfo(project->rootPath).fileName(), expected);
    }
    ASSERT_TRUE(library.createProject(QString(10'000, u'x'), {}, {1}));
}

TEST_F(ProjectLibrary, FindsCurrentAndLegacyProjectsAndSkipsTheRest)
{
    add(u"New"_s, u"orvaneworkspace-project.json"_s, {9});
    add(u"Hidden"_s, u".orvaneworkspace-project.json"_s, {8});
    const QString corrupt = add(u"Corrupt"_s, u"orvaneworkspace-project.json"_s);
    ASSERT_TRUE(writeFileAtomically(corrupt + u"/orvaneworkspace-project.json"_s, "{\"id\": 5}"));
    ASSERT_TRUE(writeFileAtomically(root + u"/orvaneworkspace-project.json"_s, "{}"));
    ASSERT_TRUE(orvane::makeFolder(root + u"/Empty"_s));
    EXPECT_EQ(titles(), (QStringList{u"New"_s, u"Hidden"_s}));

    add(u"Old"_s, u".orvanenotes-project.json"_s, {10}, library.legacyProjectsDirectoryPath());
    EXPECT_EQ(titles(), (QStringList{u"Old"_s, u"New"_s, u"Hidden"_s}));
    EXPECT_EQ(*readFile(corrupt + u"/orvaneworkspace-project.json"_s), "{\"id\": 5}");

    const auto created = library.createProject(u"Old"_s, {}, {1});
    ASSERT_TRUE(created);
    EXPECT_EQ(created->rootPath, root + u"/Old"_s);
}

TEST_F(ProjectLibrary, LegacyManifestsKeepTheirNames)
{
    const QString path = add(u"Old"_s, u".orvanenotes-project.json"_s);
    auto project = library.decodedProjects({path}).first();
    project.name = u"Renamed"_s;
    ASSERT_TRUE(ProjectLibraryController::writeManifest(project));
    EXPECT_EQ(QDir(path).entryList(QDir::Files | QDir::Hidden),
              (QStringList{u".orvanenotes-project.json"_s, u"orvanenotes-project.json"_s}));
    EXPECT_EQ(titles(), QStringList{u"Renamed"_s});
    ASSERT_TRUE(orvane::makeFolder(path + u"/.orvanenotes"_s));
    EXPECT_EQ(ProjectLibraryController::projectDataDirectoryPath(path), path + u"/.orvanenotes"_s);
    ASSERT_TRUE(orvane::makeFolder(path + u"/.orvaneworkspace"_s));
    EXPECT_EQ(ProjectLibraryController::projectDataDirectoryPath(path),
              path + u"/.orvaneworkspace"_s);
}

TEST_F(ProjectLibrary, ASecondManifestThatCantBeWrittenIsNoFailure)
{
    const QString path = add(u"P"_s, u".orvaneworkspace-project.json"_s);
    ASSERT_TRUE(
        orvane::makeFolder(path + u"/orvaneworkspace-project.json"_s)); // a folder in its place
    const auto project = library.decodedProjects({path}).first();
    EXPECT_TRUE(ProjectLibraryController::writeManifest(project));
}

TEST_F(ProjectLibrary, ChangesOnDiskAreSeenThoughManifestsAreRemembered)
{
    const QString path = add(u"P"_s, u"orvaneworkspace-project.json"_s);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(titles(), QStringList{u"P"_s});
        QThread::msleep(40); // from now on the file is old enough to be remembered
    }
    auto project = library.decodedProjects({path}).first();
    project.name = u"Q"_s; // same length, at once: only the file's identity tells
    ASSERT_TRUE(ProjectLibraryController::writeManifest(project));
    EXPECT_EQ(titles(), QStringList{u"Q"_s});
    project.name = u"Longer"_s;
    QFile inPlace(path + u"/orvaneworkspace-project.json"_s); // as another program might edit it
    ASSERT_TRUE(inPlace.open(QIODevice::WriteOnly | QIODevice::Truncate));
    inPlace.write(project.encoded());
    inPlace.close();
    EXPECT_EQ(titles(), QStringList{u"Longer"_s});
    ASSERT_TRUE(QFile::remove(inPlace.fileName()));
    EXPECT_EQ(titles(), QStringList());
}

TEST_F(ProjectLibrary, AProjectThatIsBeingCopiedInIsListedOnceItIsThere)
{
    add(u"P"_s, u"orvaneworkspace-project.json"_s);
    const QString elsewhere = folder.path() + u"/disk"_s;
    const QString whole = add(u"Whole"_s, u"orvaneworkspace-project.json"_s, {5}, elsewhere);
    const auto bytes = readFile(whole + u"/orvaneworkspace-project.json"_s, FileLimit::manifest);
    ASSERT_TRUE(bytes && orvane::makeFolder(root + u"/Copy"_s));
    const QString manifest = root + u"/Copy/orvaneworkspace-project.json"_s;
    // Looked at after each step, with nothing in between that changes the library's own folder.
    const auto lookedAt = [this] {
        QThread::msleep(80);
        titles();
        return titles();
    };
    EXPECT_EQ(lookedAt(), QStringList{u"P"_s});
    ASSERT_TRUE(writeFileAtomically(manifest, bytes->first(20)));
    EXPECT_EQ(lookedAt(), QStringList{u"P"_s}) << "half a manifest is none";
    ASSERT_TRUE(writeFileAtomically(manifest, *bytes));
    EXPECT_EQ(lookedAt(), (QStringList{u"P"_s, u"Whole"_s}));

    // A link whose disk is away for a while.
    ASSERT_TRUE(QFile::rename(elsewhere, elsewhere + u"-away"_s));
    ASSERT_TRUE(QFile::link(whole, root + u"/Linked"_s));
    EXPECT_EQ(lookedAt().size(), 2);
    ASSERT_TRUE(QFile::rename(elsewhere + u"-away"_s, elsewhere));
    EXPECT_EQ(lookedAt().size(), 3);
}

TEST_F(ProjectLibrary, SortsByDateThenTitleWithoutCase)
{
    add(u"beta"_s, u"orvaneworkspace-project.json"_s, {5});
    add(u"Alpha"_s, u"orvaneworkspace-project.json"_s, {5});
    add(u"newest"_s, u"orvaneworkspace-project.json"_s, {6});
    EXPECT_EQ(titles(), (QStringList{u"newest"_s, u"Alpha"_s, u"beta"_s}));
}

TEST_F(ProjectLibrary, ALibraryThatCantBeMadeIsAnError)
{
    ASSERT_TRUE(orvane::makeFolder(folder.path()));
    ASSERT_TRUE(writeFileAtomically(folder.path() + u"/Documents"_s, "a file"));
    EXPECT_FALSE(library.ensureProjectsDirectoryExists());
    const auto created = library.createProject(u"P"_s, {}, {1});
    ASSERT_FALSE(created);
    EXPECT_FALSE(created.error().detail.isEmpty());
    EXPECT_TRUE(library.projectRootPathsWithManifests().isEmpty());
}

} // namespace
} // namespace orvane
