// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/StoreFixture.h"
#include "core/WritingScript.h"
#include "core/library/ProjectLibraryController.h"
#include "core/store/ProjectLock.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QRandomGenerator>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

class StoreKill : public StoreFixture {
protected:
    QProcess writer;

    void start(const QString& kind, const QString& where, int seed)
    {
        writer.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        writer.start(QStringLiteral(ORVANE_WRITER_PROCESS), {kind, where, QString::number(seed)});
        ASSERT_TRUE(writer.waitForStarted());
    }
    void waitUntilReady()
    {
        while (!writer.canReadLine())
            ASSERT_TRUE(writer.waitForReadyRead(20'000));
        ASSERT_EQ(writer.readLine(), "ready\n");
    }
    /// Some time later: kills it, and gives the steps whose commits were acknowledged.
    QList<QByteArray> killWithin(int milliseconds)
    {
        QElapsedTimer timer;
        timer.start();
        while (timer.elapsed() < milliseconds)
            writer.waitForReadyRead(1);
        writer.kill();
        writer.waitForFinished();
        EXPECT_EQ(writer.exitStatus(), QProcess::CrashExit) << "exit code " << writer.exitCode();
        QList<QByteArray> lines;
        while (writer.canReadLine())
            lines.append(writer.readLine().trimmed());
        lines.removeAll("ready");
        return lines;
    }
};

// Every acknowledged commit is there after a kill at any moment: while opening, writing,
// checkpointing the write-ahead log, closing. What is there beyond is at most the one step that was
// under way, whole.
TEST_F(StoreKill, LosesNoAcknowledgedCommit)
{
    const int runs = qEnvironmentVariableIsSet("ORVANE_LONG") ? 300 : 20;
    QRandomGenerator random(20'260'101);
    NotebookSnapshot base;
    int steps = 0;
    for (int run = 0; run < runs; ++run) {
        SCOPED_TRACE(run);
        start(u"store"_s, folder, run + 1);
        // One run in eight is killed while it starts, when it may be opening or creating.
        const bool whileStarting = run % 8 == 7;
        if (!whileStarting)
            waitUntilReady();
        const auto lines = killWithin(random.bounded(whileStarting ? 30 : 150));
        const int acknowledged = lines.isEmpty() ? 0 : lines.last().toInt();
        steps += acknowledged;

        auto controller = open();
        ASSERT_TRUE(controller);
        ASSERT_FALSE(controller->persistentStoreRecovery())
            << qPrintable(controller->persistentStoreRecovery()->errorDescription);
        WritingScript script(quint32(run + 1), base);
        for (int step = 0; step < acknowledged; ++step)
            script.step();
        const NotebookContents found(controller->load());
        if (found != NotebookContents(script.snapshot())) {
            script.step();
            ASSERT_TRUE(found == NotebookContents(script.snapshot()))
                << acknowledged << " steps were acknowledged";
        }
        base = script.snapshot();
    }
    EXPECT_GT(steps, runs * 3) << "the kills fell into writing";
}

// The same through the program's own state: creating a project, making notes, changing them with
// their versions kept.
TEST_F(StoreKill, TheProgramLosesNoAcknowledgedNote)
{
    const int runs = qEnvironmentVariableIsSet("ORVANE_LONG") ? 300 : 10;
    QRandomGenerator random(20'260'102);
    QMap<QUuid, int> acknowledged;
    const QString root = temporary.path();
    for (int run = 1; run <= runs; ++run) {
        SCOPED_TRACE(run);
        start(u"program"_s, root, run);
        const bool whileStarting = run % 8 == 3;
        if (!whileStarting)
            waitUntilReady();
        int lastStep = run * 10'000;
        for (const QByteArray& line : killWithin(random.bounded(whileStarting ? 40 : 150))) {
            lastStep = line.mid(37).toInt();
            acknowledged[QUuid::fromString(QLatin1String(line.constData(), 36))] = lastStep;
        }
        ProjectLibraryController library(UserFolders::below(root));
        const auto projects = library.sortedProjects();
        ASSERT_EQ(projects.size(), 1);
        folder = ProjectLibraryController::projectDataDirectoryPath(projects.first().rootPath);
        const auto controller = open();
        ASSERT_TRUE(controller);
        ASSERT_FALSE(controller->persistentStoreRecovery());
        const NotebookContents found(controller->load());
        for (auto note = acknowledged.cbegin(); note != acknowledged.cend(); ++note)
            ASSERT_TRUE(found.notes.contains(note.key()));
        for (const NoteRecord& note : found.notes) {
            const int step = note.body.readOrNothing().section(u' ', 0, 0).toInt();
            const QByteArray text = note.body.utf8().readOrNothing();
            const bool isWhole = note.richContentPayload
                                     ? note.richContentPayload->readOrNothing() == text
                                     : note.bodyRTF->readOrNothing() == text;
            ASSERT_TRUE(isWhole);
            ASSERT_TRUE(step == acknowledged.value(note.id, -1) || step == lastStep + 1);
            acknowledged[note.id] = step;
        }
    }
    EXPECT_GT(acknowledged.size(), 20);
}

TEST_F(StoreKill, AProjectOpenInAnotherProcessIsRefusedUntilThatEnds)
{
    start(u"store"_s, folder, 1);
    waitUntilReady();
    const auto refused = PersistenceController::open(folder, clock);
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().code, StoreOpenError::Code::LockedByOther);
    ASSERT_TRUE(refused.error().holder);
    EXPECT_EQ(refused.error().holder->processId, writer.processId());
    EXPECT_EQ(refused.error().holder->program, u"writer_process"_s);
    killWithin(0);
    EXPECT_TRUE(QFile::exists(ProjectLock::pathIn(folder)));
    EXPECT_TRUE(open()) << "a lock left behind is taken over";
    EXPECT_FALSE(QFile::exists(ProjectLock::pathIn(folder)));
}

} // namespace
} // namespace orvane
