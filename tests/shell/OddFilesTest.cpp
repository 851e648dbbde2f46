// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// What is no ordinary file in each place where the program looks for one: nothing waits for it,
// nothing is put in its place, and it is said where something would be lost by it.
#include "support/OddFiles.h"

#include "ShellFixture.h"
#include "core/library/ProjectLibraryController.h"
#include "core/library/ProjectWorkspaceState.h"
#include "core/store/PersistentStoreRecovery.h"
#include "core/versions/NoteVersionHistoryStore.h"
#include "shell/desktop/OpenRequest.h"

#include <QElapsedTimer>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

constexpr unsigned watchdog = 120; // seconds, after which what hangs ends the test program

class OddFilesTest : public ShellTest {
protected:
    void SetUp() override
    {
        ::alarm(watchdog);
        dismissWelcome();
        start();
        EXPECT_TRUE(state().projectSession().createProject(u"Tidewater"_s, {}));
        m_note = *state().createNote(u"Low water\nMara counts."_s, {});
        m_root = state().projectSession().currentProject()->rootPath;
        (void)state().appendVersionSnapshot(m_note, u"Manual Save"_s);
        defaults().set(u"settings.general.launchDestination"_s, u"lastNote"_s);
        quit();
    }
    void TearDown() override { ::alarm(0); }

    QString dataFolder() const
    {
        return ProjectLibraryController::projectDataDirectoryPath(m_root);
    }
    QString configuration() const { return UserFolders::below(m_home.path()).configuration; }
    static ino_t numberOf(const QString& path)
    {
        struct ::stat status {};
        return ::lstat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_ino : 0;
    }

    QUuid m_note;
    QString m_root;
};

TEST_F(OddFilesTest, NoPlaceHangsIsReplacedOrKeepsTheProgramFromStarting)
{
    struct Place {
        const char* name;
        QString path;
        bool opens;       ///< whether the project opens all the same
        const char* says; ///< part of what is said; nothing where nothing is
    };
    const Place places[] = {
        {"manifest", ProjectLibraryController::manifestPath(m_root), false, ""},
        {"settings", configuration() + u"/settings.json"_s, false, "Settings Can't Be Read"},
        {"lock of the settings", configuration() + u"/settings.json.lock"_s, true, ""},
        {"learned words", configuration() + u"/words.txt"_s, true, ""},
        {"workspace", dataFolder() + u"/workspace-state.json"_s, true, ""},
        {"version history",
         VersionFiles::folderPath(m_root) + u'/' + m_note.toString(QUuid::WithoutBraces).toUpper() +
             u".json"_s,
         true, ""},
        {"marker of a recovery", PersistentStoreRecovery::markerPath(dataFolder()), false,
         "Project Data Protected"},
        {"lock of the project", dataFolder() + u"/OrvaneWorkspace.lock"_s, false, "ordinary file"},
        {"legacy notebook", dataFolder() + u"/notebook.json"_s, true, ""},
    };
    for (const Place& place : places) {
        for (const OddFile& odd : oddFiles) {
            SCOPED_TRACE(std::string(odd.name) + " as " + place.name);
            ::alarm(watchdog);
            const QString aside = place.path + u".kept"_s;
            const bool wasThere = QFile::rename(place.path, aside);
            ASSERT_TRUE(odd.make(QFile::encodeName(place.path)));
            const ino_t number = numberOf(place.path);
            QElapsedTimer timer;
            timer.start();
            m_app = std::make_unique<OrvaneWorkspaceApp>(UserFolders::below(m_home.path()));
            m_app->start();
            EXPECT_LT(timer.elapsed(), 10'000);
            const QString words = said();
            EXPECT_TRUE(words.contains(QString::fromLatin1(place.says))) << qPrintable(words);
            EXPECT_EQ(state().projectSession().currentProject().has_value(), place.opens);
            if (state().projectSession().currentProject()) {
                (void)state().appendVersionSnapshot(m_note, u"Manual Save"_s);
                EXPECT_EQ(state().note(m_note)->body, u"Low water\nMara counts."_s);
            }
            defaults().set(u"test"_s, odd.name[0] == 'p');
            quit();
            EXPECT_EQ(numberOf(place.path), number);
            if (!QFile::remove(place.path)) {
                ASSERT_TRUE(QDir().rmdir(place.path));
            }
            QFile::remove(place.path + u".pipe"_s);
            if (wasThere) {
                ASSERT_TRUE(QFile::rename(aside, place.path));
            }
        }
    }
}

TEST_F(OddFilesTest, AsAnArgumentItIsRefusedInWords)
{
    start();
    for (const OddFile& odd : oddFiles) {
        SCOPED_TRACE(odd.name);
        const QString path = m_home.filePath(u"argument.txt"_s);
        ASSERT_TRUE(odd.make(QFile::encodeName(path)));
        QString words;
        EXPECT_TRUE(answering(
            [&] {
                m_app->open({{}, {path}, {}});
            },
            [&] { words = wordsOf(*window().sheets().topSheet()); }));
        EXPECT_TRUE(words.contains(u"argument.txt"_s)) << qPrintable(words);
        EXPECT_EQ(state().notes().size(), 1);
        if (!QFile::remove(path)) {
            ASSERT_TRUE(QDir().rmdir(path));
        }
        QFile::remove(path + u".pipe"_s);
    }
}

} // namespace
} // namespace orvane
