// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace

// Writes to a project until it is killed, and says after each step that its commit succeeded.
// usage: writer_process DATA_FOLDER SEED

#include "core/WritingScript.h"

#include <QCoreApplication>

#include <unistd.h>

namespace {

// Past every buffer of this process: what was said stays said when it is killed.
void say(const QByteArray& line)
{
    static_cast<void>(::write(STDOUT_FILENO, line.constData(), size_t(line.size())));
}

} // namespace

int main(int argc, char** argv)
{
    using namespace orvane;
    const QCoreApplication application(argc, argv);
    const QString folder = QString::fromLocal8Bit(argv[1]);
    const auto seed = quint32(std::atoi(argv[2]));
    const SystemClock clock;
    // Folded often, so that many kills fall into a fold.
    const PersistenceController::Options options{.foldAtPages = 60};
    const auto open = [&] {
        return PersistenceController::open(folder, clock, options);
    };

    auto store = open();
    if (!store || (*store)->persistentStoreRecovery())
        return 2;
    WritingScript script(seed, (*store)->load());
    say("ready\n");
    for (int step = 1;; ++step) {
        if (!script.step(store->get()))
            return 3;
        say(QByteArray::number(step) + '\n');
        if (step % 25 == 0) {
            store->reset();
            store = open();
            if (!store || (*store)->persistentStoreRecovery())
                return 4;
            script.setBase((*store)->load());
        }
    }
}
