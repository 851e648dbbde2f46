// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace

// A day of writing in which one system call fails, each call in its turn.

#include "core/StoreFixture.h"
#include "core/records/NoteContent.h"
#include "core/state/AppState.h"
#include "support/FaultyFiles.h"

#include <QElapsedTimer>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

constexpr int errors[] = {EIO, ENOSPC, EACCES, EMFILE};

/// What may stand in the store for each note: what was acknowledged last, and everything that was
/// tried since. Nothing for a note that may be missing.
class Expectations {
public:
    void tried(const QUuid& id, const std::optional<QString>& words)
    {
        if (!m_allowed.contains(id))
            m_allowed[id] = {std::nullopt};
        m_allowed[id].append(words);
    }
    /// All that was tried so far is stored.
    void acknowledged()
    {
        for (auto& allowed : m_allowed)
            allowed = {allowed.last()};
    }
    void check(const QList<Shared<NoteRecord>>& notes, QString (*wordsOf)(const NoteRecord&)) const
    {
        QHash<QUuid, QString> found;
        for (const auto& note : notes)
            found.insert(note->id, wordsOf(*note));
        for (auto note = m_allowed.cbegin(); note != m_allowed.cend(); ++note) {
            const auto words =
                found.contains(note.key()) ? std::optional(found.value(note.key())) : std::nullopt;
            EXPECT_TRUE(note->contains(words))
                << qPrintable(note.key().toString()) << " is "
                << (words ? words->left(80).toStdString() : "gone") << ", acknowledged was "
                << (note->first() ? note->first()->left(80).toStdString() : "nothing");
        }
        for (const auto& note : notes)
            EXPECT_TRUE(m_allowed.contains(note->id)) << "a note that nobody wrote";
    }

    /// What was opened holds what it should; from now on nothing else may be found.
    void reopened(const QList<Shared<NoteRecord>>& notes)
    {
        QHash<QUuid, Shared<NoteRecord>> found;
        for (const auto& note : notes)
            found.insert(note->id, note);
        for (auto note = m_allowed.begin(); note != m_allowed.end(); ++note) {
            if (!found.contains(note.key())) {
                EXPECT_TRUE(note->contains(std::nullopt)) << "an acknowledged note is gone";
                *note = {std::nullopt};
                continue;
            }
            // The title and the body alone, so that other bytes stay unread.
            const Shared<NoteRecord>& there = *found.constFind(note.key());
            if (!there->body.isReadable())
                continue;
            const QString beginning = there->title + u'|' + there->body.readOrNothing() + u'|';
            note->removeIf([&](const std::optional<QString>& words) {
                return !words || !words->startsWith(beginning);
            });
            EXPECT_FALSE(note->isEmpty()) << "what was acknowledged is not there";
        }
    }

private:
    QHash<QUuid, QList<std::optional<QString>>> m_allowed;
};

QString wordsOf(const NoteRecord& note)
{
    EXPECT_TRUE(note.body.isReadable());
    EXPECT_TRUE(!note.bodyRTF || note.bodyRTF->read()) << "a length without its bytes";
    return note.title + u'|' + note.body.readOrNothing() + u'|' +
           (note.bodyRTF ? QString::fromUtf8(note.bodyRTF->readOrNothing()) : QString());
}

/// A day with the store alone.
class StoreDay {
public:
    StoreDay(const QString& folder, const Clock& clock, bool isHopeless)
        : m_folder(folder)
        , m_clock(clock)
        , m_attempts(isHopeless ? 1 : 2)
    {}

    const Expectations& run()
    {
        if (!open())
            return expected;
        for (int number = 2; number < 8; ++number)
            put(number, u"first"_s, 3000);
        save();
        saveNote(2, u"second"_s);
        static_cast<void>(m_store->saveFolder(makeFolder(9)));
        for (int i = 0; i < 6; ++i)
            saveNote(3 + i % 2, u"long %1 "_s.arg(i).repeated(
                                    1500)); // until the write-ahead log is checkpointed
        static_cast<void>(m_store->saveLayout(BinderLayoutSnapshot{{}, {}, {idOf(1)}}));
        m_store.reset();
        if (!open())
            return expected;
        // With bytes that nobody has read yet.
        retitle(2);
        remove(5);
        duplicate(6, 20);
        save();
        saveNote(3, u"third"_s);
        m_store.reset();
        if (!open())
            return expected;
        retitle(6);
        save();
        m_store.reset();
        return expected;
    }

    Expectations expected;

private:
    bool open()
    {
        for (int attempt = 0; attempt < m_attempts; ++attempt) {
            auto opened = PersistenceController::open(m_folder, m_clock, {.checkpointAtPages = 12});
            if (!opened)
                continue;
            m_store = *std::move(opened);
            if (m_store->persistentStoreRecovery()) {
                ADD_FAILURE() << "what stands in the way is no damage: "
                              << qPrintable(m_store->persistentStoreRecovery()->errorDescription);
                m_store.reset();
                return false;
            }
            if (m_store->isReadOnly()) { // which a person sees, and nobody writes in it
                m_store.reset();
                continue;
            }
            m_memory = m_store->load();
            expected.reopened(m_memory.notes);
            if (m_memory.folders.isEmpty())
                m_memory.folders = {makeFolder(1)};
            return true;
        }
        return false;
    }
    Shared<NoteRecord>* find(int number)
    {
        for (auto& note : m_memory.notes) {
            if (note->id == idOf(number))
                return &note;
        }
        return nullptr;
    }
    void put(int number, const QString& body, int rtf)
    {
        NoteRecord note = makeNote(number, idOf(1));
        note.body = body;
        note.bodyRTF = Blob(QByteArray(rtf, char('a' + number)));
        m_words[note.id] = wordsOf(note);
        if (auto* there = find(number))
            *there = note;
        else
            m_memory.notes.append(note);
        expected.tried(note.id, m_words[note.id]);
    }
    void saveNote(int number, const QString& body)
    {
        put(number, body, 3000);
        if (m_store->saveNote(*find(number)))
            expected.acknowledged();
    }
    void retitle(int number)
    {
        auto* note = find(number);
        if (!note)
            return;
        *note = note->with([](NoteRecord& record) { record.title = u"Retitled"_s; });
        QString& words = m_words[idOf(number)];
        words.replace(0, words.indexOf(u'|'), u"Retitled"_s);
        expected.tried(idOf(number), words);
    }
    void remove(int number)
    {
        m_memory.notes.removeIf([&](const auto& note) { return note->id == idOf(number); });
        expected.tried(idOf(number), std::nullopt);
    }
    void duplicate(int number, int copy)
    {
        const auto* note = find(number);
        if (!note)
            return;
        m_memory.notes.append(note->with([&](NoteRecord& record) { record.id = idOf(copy); }));
        m_words[idOf(copy)] = m_words[idOf(number)];
        expected.tried(idOf(copy), m_words[idOf(copy)]);
    }
    void save()
    {
        if (m_store->save(m_memory))
            expected.acknowledged();
    }

    QString m_folder;
    const Clock& m_clock;
    int m_attempts;
    std::unique_ptr<PersistenceController> m_store;
    NotebookSnapshot m_memory;
    QHash<QUuid, QString> m_words;
};

QString bodyOf(const NoteRecord& note)
{
    return note.body.isReadable() ? note.body.readOrNothing() : u"unreadable"_s;
}

/// A day with the program's state, settings and versions.
class ProgramDay {
public:
    explicit ProgramDay(const QString& root)
        : m_root(root)
    {}

    void run()
    {
        {
            Program program(m_root);
            for (int attempt = 0; attempt < 2 && !projectMade; ++attempt)
                projectMade = program.state.projectSession()
                                  .createProject(u"Day"_s, std::nullopt)
                                  .has_value();
            if (program.state.projectSession().currentProject())
                write(program);
        }
        Program program(m_root);
        if (program.state.projectSession().projects().isEmpty())
            return;
        program.state.projectSession().openProject(
            program.state.projectSession().projects().first().id, true);
        if (program.state.projectSession().currentProject())
            rewrite(program);
        program.defaults.set(u"setting"_s, QString(u"kept"_s));
        settingKept = program.defaults.flush().has_value();
        program.state.projectSession().terminate();
    }
    void check()
    {
        Program program(m_root);
        if (settingKept) {
            EXPECT_EQ(program.defaults.get<QString>(u"setting"_s), u"kept"_s);
        }
        if (program.state.projectSession().projects().isEmpty()) {
            EXPECT_FALSE(projectMade);
            return;
        }
        for (const OrvaneProjectRecord& project : program.state.projectSession().projects()) {
            program.state.projectSession().openProject(project.id, false);
            if (!program.state.projectSession().currentProject() ||
                program.state.notes().size() == 0)
                continue;
            break;
        }
        ASSERT_FALSE(program.state.projectSession().projectLoadProtectionAlert());
        if (projectMade) {
            ASSERT_TRUE(program.state.projectSession().currentProject());
        }
        expected.check(program.state.notes().records(), bodyOf);
    }

    Expectations expected;
    bool projectMade = false;
    bool settingKept = false;

private:
    struct Program {
        UserDefaults defaults;
        NotificationCenter notifications;
        ScriptedQuestions questions;
        CountingBeeper beeper;
        FolderTrash trash;
        ManualClock clock;
        LicencePolicy licence;
        AppState state;

        explicit Program(const QString& root)
            : defaults(root + u"/settings.json"_s)
            , trash(root + u"/trash"_s)
            , state({defaults, notifications, questions, beeper, trash, clock, licence,
                     UserFolders::below(root)})
        {
            state.projectSession().bootstrapProjects();
        }
    };

    // The state has the words in memory; whether they are stored it says by having no failure.
    void settle(Program& program, const QUuid& id)
    {
        const NoteRecord* note = program.state.note(id);
        expected.tried(id, note ? std::optional(bodyOf(*note)) : std::nullopt);
        if (!program.state.projectSession().saveFailure())
            expected.acknowledged();
    }
    void write(Program& program)
    {
        AppState& state = program.state;
        for (int i = 0; i < 4; ++i) {
            const QString body = u"Note %1 of the day. "_s.arg(i).repeated(50);
            const auto id = state.createNote(body, Blob(body.toUtf8()));
            if (!id)
                continue;
            settle(program, *id);
            m_notes.append(*id);
        }
        for (const QUuid& id : std::as_const(m_notes)) {
            NoteContent content = NoteContent::of(*state.note(id));
            content.body += u"And more of it. "_s;
            state.updateNote(id, content);
            settle(program, id);
            state.appendVersionSnapshot(id, u"Manual Save"_s);
            state.updateNoteTags(id, {u"tag"_s});
            settle(program, id);
        }
        if (const auto folder = state.createFolder(u"Folder"_s); folder && !m_notes.isEmpty()) {
            state.moveNote(m_notes.first(), *folder, std::nullopt);
            settle(program, m_notes.first());
        }
        if (!m_notes.isEmpty()) {
            state.moveNoteToTrash(m_notes.last());
            settle(program, m_notes.last());
            state.restoreNoteFromTrash(m_notes.last());
            settle(program, m_notes.last());
        }
        state.projectSession().closeProject();
    }
    void rewrite(Program& program)
    {
        for (const auto& note : QList(program.state.notes().records())) {
            NoteContent content = NoteContent::of(*note);
            if (!note->body.isReadable())
                continue; // shown locked, and never written
            content.body = u"Rewritten. "_s + content.body;
            program.state.updateNote(note->id, content);
            settle(program, note->id);
        }
    }

    QString m_root;
    QList<QUuid> m_notes;
};

class StoreFault : public StoreFixture {
protected:
    const bool isLong = qEnvironmentVariableIsSet("ORVANE_LONG");

    /// Every call in a long run, some fifty otherwise, by a stride that meets each kind of call.
    [[nodiscard]] int stride(int calls, int runs = 50) const
    {
        return isLong ? 1 : std::max(1, calls / runs) | 1;
    }
    void clear()
    {
        QDir(temporary.path()).removeRecursively();
        QDir().mkpath(temporary.path());
    }
};

// The layer sees what everybody calls, and its failures reach them.
TEST_F(StoreFault, TheLayerReachesEveryLibrary)
{
    ASSERT_TRUE(QDir().mkpath(folder));
    const QString file = folder + u"/file"_s;
    const auto firstFailure = [&](auto&& work) {
        const FaultyFiles fault(folder, {.call = 1, .onward = true});
        work();
        return FaultyFiles::failed();
    };
    EXPECT_TRUE(
        firstFailure([&] { EXPECT_FALSE(PersistenceController::open(folder, clock)); }).size() > 0);
    EXPECT_TRUE(firstFailure([&] {
                    EXPECT_FALSE(writeFileAtomically(file, "words"));
                }).contains(folder.toUtf8()));
    const auto store = open();
    for (const char* call : {"pwrite64", "fdatasync"}) {
        bool found = false;
        for (int n = 1; n < 60 && !found; ++n) {
            const FaultyFiles fault(folder, {.call = n});
            static_cast<void>(store->saveNote(makeNote(n, idOf(1))));
            found = FaultyFiles::failed().startsWith(call);
            EXPECT_FALSE(found && !store->hasUnsaved()) << call << " of SQLite fails";
        }
        EXPECT_TRUE(found) << call;
    }
}

// A file is replaced by the whole new one, or it stays and the failure is told.
TEST_F(StoreFault, AFileWrittenWholeIsWholeOrToldOtherwise)
{
    ASSERT_TRUE(QDir().mkpath(folder));
    const QString path = folder + u"/file"_s;
    for (int call = 1; call < 20; ++call) {
        writeBytes(path, "old");
        bool written = false;
        QByteArray failed;
        {
            const FaultyFiles fault(folder, {call, errors[call % std::size(errors)], false});
            written = writeFileAtomically(path, "new").has_value();
            failed = FaultyFiles::failed();
        }
        const bool isSync = failed.startsWith("fsync") && failed.contains('#');
        EXPECT_EQ(bytesOf(path), written ? "new" : "old") << failed.constData();
        EXPECT_FALSE(written && isSync) << "the new file may not be on the disk";
    }
}

TEST_F(StoreFault, TheStoreLosesNothingAcknowledged)
{
    int calls = 0;
    {
        ASSERT_TRUE(QDir().mkpath(folder));
        const FaultyFiles counting(folder, {});
        StoreDay day(folder, clock, false);
        day.run();
        calls = FaultyFiles::calls();
    }
    RecordProperty("calls", calls);
    ASSERT_GT(calls, 300);
    // Where everything fails SQLite asks again and again for its locks, for up to ten seconds.
    for (const bool onward : {false, true}) {
        int turn = 0;
        for (int call = 1; call <= calls; call += stride(calls, onward ? 8 : 50)) {
            clear();
            ASSERT_TRUE(QDir().mkpath(folder));
            const int error = errors[turn++ % std::size(errors)];
            StoreDay day(folder, clock, onward);
            QByteArray failed;
            {
                const FaultyFiles fault(folder, {call, error, onward});
                day.run();
                failed = FaultyFiles::failed();
            }
            SCOPED_TRACE((QByteArray::number(call) + (onward ? " and all after, " : ", ") + failed +
                          ": " + std::strerror(error))
                             .toStdString());
            const auto controller = open();
            ASSERT_TRUE(controller);
            ASSERT_FALSE(controller->persistentStoreRecovery())
                << qPrintable(controller->persistentStoreRecovery()->errorDescription);
            day.expected.check(controller->load().notes, wordsOf);
            if (HasFailure())
                return;
        }
    }
}

TEST_F(StoreFault, TheProgramLosesNothingAcknowledged)
{
    const QString root = temporary.filePath(u"root"_s);
    int calls = 0;
    {
        ASSERT_TRUE(QDir().mkpath(root));
        const FaultyFiles counting(root, {});
        ProgramDay day(root);
        day.run();
        calls = FaultyFiles::calls();
    }
    RecordProperty("calls", calls);
    ASSERT_GT(calls, 500);
    int turn = 0;
    for (int call = 1; call <= calls; call += stride(calls)) {
        clear();
        ASSERT_TRUE(QDir().mkpath(root));
        const int error = errors[turn++ % std::size(errors)];
        ProgramDay day(root);
        QByteArray failed;
        {
            const FaultyFiles fault(root, {call, error, false});
            day.run();
            failed = FaultyFiles::failed();
        }
        SCOPED_TRACE(
            (QByteArray::number(call) + ", " + failed + ": " + std::strerror(error)).toStdString());
        day.check();
        if (HasFailure())
            return;
    }
}

} // namespace
} // namespace orvane
