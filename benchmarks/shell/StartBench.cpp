// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "ShellBench.h"
#include "core/state/AppState.h"
#include "core/state/SessionKeys.h"
#include "support/Bench.h"
#include "support/TestServices.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>

namespace orvane::bench {

namespace {

using namespace Qt::StringLiterals;

constexpr int fewNotes = 5'000;
constexpr int manyNotes = 50'000;

/// A home folder in which the program opens a project of so many notes when it starts.
class SampleHome {
public:
    explicit SampleHome(int noteCount)
    {
        const UserFolders folders = UserFolders::below(m_test.folder.path());
        UserDefaults defaults(folders.configuration + u"/settings.json"_s);
        SessionKeys::welcomeDismissed.write(defaults, true);
        SessionKeys::launchDestination.write(defaults, u"lastNote"_s);
        Services services = m_test.services();
        AppState app({defaults, services.notifications, services.questions, services.beeper,
                      services.trash, services.clock, services.licence, services.folders});
        (void)app.projectSession().createProject(u"Bench"_s, {});
        NotebookSnapshot snapshot;
        for (int i = 0; i < 100; ++i) {
            FolderRecord folder;
            folder.id = QUuid::createUuid();
            folder.name = u"Folder %1"_s.arg(i);
            folder.createdAt = {i};
            snapshot.folders.append(folder);
        }
        for (int i = 0; i < noteCount; ++i) {
            NoteRecord note;
            note.id = QUuid::createUuid();
            note.folderID = snapshot.folders.at(i % 100)->id;
            note.title = u"Note %1"_s.arg(i);
            note.body = u"Words of note %1, and more words. "_s.arg(i).repeated(60);
            note.bodyRTF = Blob(QByteArray(4'096, char('a' + i % 26)));
            note.richContentPayload = Blob(QByteArray(8'192, char('A' + i % 26)));
            note.createdAt = note.updatedAt = {i};
            snapshot.notes.append(note);
        }
        (void)app.projectSession().persistenceController()->save(snapshot);
        const QUuid project = app.projectSession().currentProject()->id;
        app.projectSession().closeProject();
        app.projectSession().openProject(project, false);
        app.openNote(snapshot.notes.first()->id);
        // As it stands after anything was moved or opened in the Binder.
        (void)app.projectSession().persistenceController()->saveLayout(
            BinderDisplayOrdering::layoutOf(app.order()));
        app.projectSession().terminate();
    }
    [[nodiscard]] QString path() const { return m_test.folder.path(); }

private:
    TestServices m_test;
};

/// A child that has painted its first frame; ends with this object.
class Probe {
public:
    explicit Probe(const QString& program, const QStringList& arguments = {})
        : m_tellsWhole(program == u"start_probe"_s)
    {
        m_seconds = seconds([&] {
            m_process.start(QCoreApplication::applicationDirPath() + u'/' + program, arguments);
            m_process.waitForStarted();
            while (!m_process.canReadLine() && m_process.waitForReadyRead(30'000)) {
            }
        });
    }
    ~Probe()
    {
        m_process.closeWriteChannel();
        m_process.waitForFinished(10'000);
    }
    [[nodiscard]] double milliseconds() const { return m_seconds * 1e3; }
    /// Proportional set size in megabytes, once everything is there: shared pages count by their
    /// share.
    [[nodiscard]] double megabytes()
    {
        (void)m_process.readLine();
        while (m_tellsWhole && !m_process.canReadLine() && m_process.waitForReadyRead(30'000)) {
        }
        QFile file(u"/proc/%1/smaps_rollup"_s.arg(m_process.processId()));
        if (!file.open(QIODevice::ReadOnly))
            return 0;
        for (const QByteArray& line : file.readAll().split('\n')) {
            if (line.startsWith("Pss:"))
                return line.mid(4).simplified().split(' ').first().toDouble() / 1024;
        }
        return 0;
    }

private:
    QProcess m_process;
    bool m_tellsWhole = false;
    double m_seconds = 0;
};

Probe started(const SampleHome& home)
{
    return Probe(u"start_probe"_s, {home.path()});
}

Measurement startProgram()
{
    const SampleHome home(fewNotes);
    return interleave(
        9, [&] { return started(home).milliseconds(); },
        [] { return Probe(u"empty_window"_s).milliseconds(); });
}

Measurement programMemory()
{
    const SampleHome home(fewNotes);
    return interleave(
        3, [&] { return started(home).megabytes(); },
        [] { return Probe(u"empty_window"_s).megabytes(); });
}

Measurement startWithManyNotes()
{
    const SampleHome many(manyNotes);
    const SampleHome few(fewNotes);
    return interleave(
        9, [&] { return started(many).milliseconds(); },
        [&] { return started(few).milliseconds(); });
}

Measurement memoryWithManyNotes()
{
    const SampleHome many(manyNotes);
    const SampleHome few(fewNotes);
    return interleave(
        3, [&] { return started(many).megabytes(); }, [&] { return started(few).megabytes(); });
}

} // namespace

void addStartRows()
{
    add({"app/start", "ms", 3.0, startProgram});
    add({"window/first-frame", "ms", 3.0, startProgram}); // as the main window knows it
    add({"app/memory", "MB", 2.5, programMemory});
    add({"app/start-50k", "ms", 1.5, startWithManyNotes});
    add({"app/memory-50k", "MB", 2.0, memoryWithManyNotes});
}

} // namespace orvane::bench
