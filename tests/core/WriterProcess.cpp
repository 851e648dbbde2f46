// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace

// Writes until it is killed, and says after each step that its commit succeeded; or prints what it
// finds.
// usage: writer_process store DATA_FOLDER SEED    by the store alone, following WritingScript
//        writer_process program ROOT SEED         by the program's state over folders below ROOT
//        writer_process print ROOT                the notebook of the project below ROOT as JSON

#include "core/WritingScript.h"
#include "core/records/RecordJson.h"
#include "core/state/AppState.h"

#include <QCoreApplication>
#include <QJsonDocument>

#include <unistd.h>

namespace orvane {

namespace {

// Past every buffer of this process: what was said stays said when it is killed.
void say(const QByteArray& line)
{
    for (qsizetype at = 0; at < line.size();) {
        const auto written =
            ::write(STDOUT_FILENO, line.constData() + at, size_t(line.size() - at));
        if (written <= 0)
            return;
        at += written;
    }
}

int writeToStore(const QString& folder, quint32 seed)
{
    const SystemClock clock;
    // Checkpointed often, so that many kills fall into a checkpoint.
    const PersistenceController::Options options{.checkpointAtPages = 60};
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

/// The program's state over folders below `root`.
struct Program {
    UserDefaults defaults;
    NotificationCenter notifications;
    ScriptedQuestions questions;
    CountingBeeper beeper;
    FolderTrash trash;
    SystemClock clock;
    LicencePolicy licence;
    AppState state;

    explicit Program(const QString& root)
        : trash(root + QStringLiteral("/trash"))
        , state({defaults, notifications, questions, beeper, trash, clock, licence,
                 UserFolders::below(root)})
    {
        state.projectSession().bootstrapProjects();
    }
};

int print(const QString& root)
{
    Program program(root);
    if (program.state.projectSession().projects().isEmpty())
        return 2;
    program.state.projectSession().openProject(program.state.projectSession().projects().first().id,
                                               false);
    if (!program.state.projectSession().currentProject())
        return 3;
    say(QJsonDocument(toJson(program.state.projectSession().persistenceController()->load()))
            .toJson());
    return 0;
}

// Each step makes or changes one note, whose body begins with the number of the step.
int writeInProgram(const QString& root, quint32 seed)
{
    Program program(root);
    AppState& state = program.state;
    if (state.projectSession().projects().isEmpty())
        static_cast<void>(
            state.projectSession().createProject(QStringLiteral("Killed"), std::nullopt));
    else
        state.projectSession().openProject(state.projectSession().projects().first().id, false);
    if (!state.projectSession().currentProject())
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
        if (state.projectSession().saveFailure() || id.isNull())
            return 3;
        say(id.toByteArray(QUuid::WithoutBraces) + ' ' + QByteArray::number(step) + '\n');
    }
}

} // namespace

} // namespace orvane

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    if (argc < 3)
        return 1;
    const QString folder = QString::fromLocal8Bit(argv[2]);
    if (qstrcmp(argv[1], "print") == 0)
        return orvane::print(folder);
    if (argc != 4)
        return 1;
    const auto seed = quint32(std::atoi(argv[3]));
    return qstrcmp(argv[1], "store") == 0 ? orvane::writeToStore(folder, seed)
                                          : orvane::writeInProgram(folder, seed);
}
