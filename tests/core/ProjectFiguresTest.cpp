// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/state/ProjectFigures.h"

#include "core/ProjectFixture.h"
#include "core/store/ProjectLock.h"

#include <QCoreApplication>
#include <QDeadlineTimer>

#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

struct ProjectFiguresTest : ProjectFixture {
    using Figures = std::pair<std::optional<int>, std::optional<int>>;

    /// What the manifest says of notes and words.
    static Figures stored(const QString& folder)
    {
        const auto manifest = ProjectLibraryController::readManifest(folder);
        EXPECT_TRUE(manifest);
        return {manifest->noteCount, manifest->wordCount};
    }
    /// The time after which the manifest is written.
    void pass() { test.clock.advance(3s); }
    bool comes(const QString& folder, const Figures& wanted)
    {
        const QDeadlineTimer limit(10s);
        while (stored(folder) != wanted && !limit.hasExpired()) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
            pass();
        }
        return stored(folder) == wanted;
    }
};

TEST_F(ProjectFiguresTest, TheManifestFollowsWhatIsWrittenMovedAndThrownAway)
{
    const QString folder = newProject(u"Tidewater"_s);
    EXPECT_EQ(stored(folder), Figures());
    const QUuid first = newNote(u"Low water"_s, u"Mara counts the posts."_s);
    const QUuid second = newNote(u"Salt"_s, u"Never waited for."_s);
    pass();
    EXPECT_EQ(stored(folder), Figures(2, 7));
    test.clock.advance(1s);
    write(first, u"Low water"_s, u"Mara counts."_s);
    pass();
    EXPECT_EQ(stored(folder), Figures(2, 5)) << "only what has changed is counted, and that is";
    ASSERT_TRUE(app->moveNoteToTrash(second));
    pass();
    EXPECT_EQ(stored(folder), Figures(1, 2)) << "the Trash doesn't count";
    write(first, u"Low water"_s, u"Mara counts them all."_s);
    EXPECT_EQ(stored(folder), Figures(1, 2));
    restart();
    EXPECT_EQ(stored(folder), Figures(1, 4)) << "an end doesn't wait for the time";
    const auto& listed = app->projectSession().projects();
    EXPECT_EQ(Figures(listed.first().noteCount, listed.first().wordCount), Figures(1, 4));
}

TEST_F(ProjectFiguresTest, MuchTextIsCountedAside)
{
    const QString folder = newProject(u"Tidewater"_s);
    const QString chapter = u"word "_s.repeated(60'000);
    const QUuid note = newNote(u"One"_s, chapter);
    newNote(u"Two"_s, chapter);
    pass();
    EXPECT_EQ(stored(folder), Figures(2, std::nullopt)) << "nobody waits for it";
    EXPECT_TRUE(comes(folder, {2, 120'000}));
    restart(); // nothing has been read of it yet
    test.clock.advance(1s);
    write(note, u"One"_s, u"Short now."_s);
    pass();
    EXPECT_EQ(stored(folder).second, 120'000) << "what was counted last, until it is counted anew";
    EXPECT_TRUE(comes(folder, {2, 60'002}));
}

TEST_F(ProjectFiguresTest, AnotherProcessThatHasAProjectOpenIsKnownWithoutItsLock)
{
    const QString folder = newProject(u"Tidewater"_s);
    const QString data = ProjectLibraryController::projectDataDirectoryPath(folder);
    EXPECT_EQ(ProjectLock::holder(data), std::nullopt) << "our own is none";
    app->projectSession().closeProject();
    EXPECT_EQ(ProjectLock::holder(data), std::nullopt);
    const QByteArray path = QFile::encodeName(ProjectLock::pathIn(data));
    const QByteArray lines = "\nOrvaneWorkspace\ntern\n" + QSysInfo::machineUniqueId() +
                             "\n2026-11-22T13:05:00Z\n" + QSysInfo::bootUniqueId() + "\n";
    int told[2];
    ASSERT_EQ(::pipe(told), 0);
    const pid_t other = ::fork();
    if (other == 0) {
        // A fork has our name for the process; the file gets its own.
        const int file = ::open(path.constData(), O_RDWR | O_CREAT, 0644);
        ::flock(file, LOCK_EX);
        char number[16];
        const int length = std::snprintf(number, sizeof number, "%d", int(::getpid()));
        if (::write(file, number, size_t(length)) > 0 &&
            ::write(file, lines.constData(), size_t(lines.size())) > 0)
            (void)!::write(told[1], "x", 1);
        ::pause();
        ::_exit(0);
    }
    char ready = 0;
    ASSERT_EQ(::read(told[0], &ready, 1), 1);
    const auto holder = ProjectLock::holder(data);
    ::kill(other, SIGKILL);
    ::waitpid(other, nullptr, 0);
    ASSERT_TRUE(holder);
    EXPECT_EQ(holder->host, u"tern"_s);
    EXPECT_EQ(holder->since, fromIso8601(u"2026-11-22T13:05:00Z"_s));
    EXPECT_EQ(ProjectLock::holder(data), std::nullopt) << "it was left behind";
    ::close(told[0]);
    ::close(told[1]);
}

} // namespace
} // namespace orvane
