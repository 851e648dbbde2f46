// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/StoreFixture.h"
#include "core/WritingScript.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QRandomGenerator>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

class StoreKill : public StoreFixture {
protected:
    QProcess writer;

    void start(int seed)
    {
        writer.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        writer.start(QStringLiteral(ORVANE_WRITER_PROCESS), {folder, QString::number(seed)});
        ASSERT_TRUE(writer.waitForStarted());
    }
    void waitUntilReady()
    {
        while (!writer.canReadLine())
            ASSERT_TRUE(writer.waitForReadyRead(20'000));
        ASSERT_EQ(writer.readLine(), "ready\n");
    }
    /// The number of the last step whose commit was acknowledged.
    int kill()
    {
        writer.kill();
        writer.waitForFinished();
        EXPECT_EQ(writer.exitStatus(), QProcess::CrashExit) << "exit code " << writer.exitCode();
        QByteArray last;
        while (writer.canReadLine()) {
            const QByteArray line = writer.readLine().trimmed();
            last = line == "ready" ? last : line;
        }
        return last.toInt();
    }
};

// Every acknowledged commit is there after a kill at any moment: while opening, writing, folding
// the journal, closing. What is there beyond is at most the one step that was under way, whole.
TEST_F(StoreKill, LosesNoAcknowledgedCommit)
{
    const int runs = qEnvironmentVariableIsSet("ORVANE_LONG") ? 300 : 20;
    QRandomGenerator random(20'260'101);
    NotebookSnapshot base;
    int steps = 0;
    for (int run = 0; run < runs; ++run) {
        SCOPED_TRACE(run);
        start(run + 1);
        // One run in eight is killed while it starts, when it may be opening or creating.
        if (run % 8 == 7) {
            writer.waitForFinished(random.bounded(30));
        } else {
            waitUntilReady();
            QElapsedTimer timer;
            timer.start();
            const int duration = random.bounded(150);
            while (timer.elapsed() < duration)
                writer.waitForReadyRead(1);
        }
        const int acknowledged = kill();
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

TEST_F(StoreKill, AProjectOpenInAnotherProcessIsRefusedUntilThatEnds)
{
    start(1);
    waitUntilReady();
    const auto refused = PersistenceController::open(folder, clock);
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().code, StoreOpenError::Code::LockedByOther);
    ASSERT_TRUE(refused.error().holder);
    EXPECT_EQ(refused.error().holder->processId, writer.processId());
    EXPECT_EQ(refused.error().holder->program, u"writer_process"_s);
    kill();
    EXPECT_TRUE(QFile::exists(ProjectLock::pathIn(folder)));
    EXPECT_TRUE(open()) << "a lock left behind is taken over";
    EXPECT_FALSE(QFile::exists(ProjectLock::pathIn(folder)));
}

} // namespace
} // namespace orvane
