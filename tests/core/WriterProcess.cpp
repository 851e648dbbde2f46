// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace

// Writes until it is killed, and says after each step that its commit succeeded.
// usage: writer_process store DATA_FOLDER SEED    by the store alone, following WritingScript
//        writer_process program ROOT SEED         by the program's state over folders below ROOT

#include "core/AppState.h"
#include "core/WritingScript.h"

#include <QCoreApplication>

#include <unistd.h>

namespace orvane {

namespace {

// Past every buffer of this process: what was said stays said when it is killed.
void say(const QByteArray& line)
{
    static_cast<void>(::write(STDOUT_FILENO, line.constData(), size_t(line.size())));
}

int writeToStore(const QString& folder, quint32 seed)
{
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

// Each step makes or changes one note, whose body begins with the number of the step.
int writeInProgram(const QString& root, quint32 seed)
{
    UserDefaults defaults;
    NotificationCenter notifications;
    ScriptedQuestions questions;
    CountingBeeper beeper;
    FolderTrash trash(root + QStringLiteral("/trash"));
    SystemClock clock;
    LicencePolicy licence;
    AppState state({defaults, notifications, questions, beeper, trash, clock, licence,
                    UserFolders::below(root)});
    state.bootstrapProjects();
    if (state.projects().isEmpty())
        static_cast<void>(state.createProject(QStringLiteral("Killed"), std::nullopt));
    else
        state.openProject(state.projects().first().id, false);
    if (!state.currentProject())
        return 2;
    QRandomGenerator random(seed);
    say("ready\n");
    for (int step = int(seed) * 10'000 + 1;; ++step) {
        const QString body =
            QStringLiteral("%1 is the step. ").arg(step).repeated(1 + int(random.bounded(60)));
        QUuid id;
        if (state.notes().size() < 10 || random.bounded(3) == 0) {
            id = state.createNote(body, Blob(body.toUtf8())).value_or(QUuid());
        } else {
            const auto& notes = state.notes().records();
            id = notes.at(qsizetype(random.bounded(int(notes.size()))))->id;
            NoteContent content = NoteContent::of(*state.note(id));
            content.body = body;
            content.richContentPayload = Blob(body.toUtf8());
            state.updateNote(id, content);
        }
        if (state.saveFailure() || id.isNull())
            return 3;
        say(id.toByteArray(QUuid::WithoutBraces) + ' ' + QByteArray::number(step) + '\n');
    }
}

} // namespace

} // namespace orvane

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    if (argc != 4)
        return 1;
    const QString folder = QString::fromLocal8Bit(argv[2]);
    const auto seed = quint32(std::atoi(argv[3]));
    return qstrcmp(argv[1], "store") == 0 ? orvane::writeToStore(folder, seed)
                                          : orvane::writeInProgram(folder, seed);
}
