// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// The program is killed while a person writes by keys; what it had called saved is looked for with
// SQLite's own shell, by the documented form of a store.
#include "ShellFixture.h"
#include "editor/pane/EditorPaneView.h"
#include "editor/session/EditorSession.h"
#include "editor/view/EditorView.h"
#include "shell/binder/BinderTreeView.h"
#include "support/Versions.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLineEdit>
#include <QProcess>
#include <QRandomGenerator>

#include <csignal>
#include <cstdio>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

const char* homeVariable = "ORVANE_KEY_WRITER_HOME";
const char* seedVariable = "ORVANE_KEY_WRITER_SEED";

/// The writing side, in a process of its own.
class KeyWriter : public ShellTest {
protected:
    void begin()
    {
        ASSERT_TRUE(m_home.isValid());
        const QString home = qEnvironmentVariable(homeVariable);
        m_app = std::make_unique<OrvaneWorkspaceApp>(
            UserFolders::below(home), std::make_unique<FolderTrash>(home + u"/trash"_s));
        SessionKeys::welcomeDismissed.write(defaults(), true);
        SessionKeys::launchDestination.write(defaults(), u"lastProject"_s);
        m_app->start();
        m_hand = std::make_unique<TourHand>(window());
        window().activateWindow();
        TourHand::waitFor([this] { return window().isActiveWindow(); });
        // A person answers what comes up, as about formatting that a mode would lose.
        m_answers.callOnTimeout([this] {
            if (window().sheets().topSheet())
                m_hand->press(Qt::Key_Return);
        });
        m_answers.start(50);
        if (!state().projectSession().currentProject()) {
            ASSERT_TRUE(state().projectSession().createProject(u"Tidewater"_s, {}));
        }
    }
    void say(const char* what, const QUuid& note, const QString& word)
    {
        if (state().projectSession().saveFailure() || window().editorPane().session().isDirty())
            return;
        std::printf("%s %s %s\n", what, qUtf8Printable(uuidText(note)), qUtf8Printable(word));
        std::fflush(stdout);
    }
    QTimer m_answers;

    void focusText() { window().editorPane().textView().setFocus(); }
    void save() { m_hand->press(Qt::Key_S, Qt::ControlModifier); }

    void newNote()
    {
        TourHand::waitFor([this] { return !window().sheets().topSheet(); });
        const auto before = state().notes().size();
        if (auto* tree = find<BinderTreeView>())
            tree->setFocus();
        m_hand->press(Qt::Key_N, Qt::ControlModifier);
        TourHand::settle();
        if (state().notes().size() == before || !state().selection().selectedNoteID())
            return; // a question came up first
        focusText();
        m_hand->type(u"Title\n"_s);
    }
    void write(const QString& word)
    {
        focusText();
        m_hand->press(Qt::Key_End, Qt::ControlModifier);
        m_hand->type(word + u' ');
        save();
        // A key may have gone elsewhere, as into a question that came up.
        if (state().selection().selectedNoteID() && state()
                                                        .note(*state().selection().selectedNoteID())
                                                        ->body.readOrNothing()
                                                        .contains(word))
            say("word", *state().selection().selectedNoteID(), word);
    }
    void tag(const QString& word)
    {
        auto* field = find<QLineEdit>(u"Add a tag"_s);
        if (!field)
            return;
        field->setFocus();
        m_hand->type(word + u'\n');
        if (state().selection().selectedNoteID() &&
            state().note(*state().selection().selectedNoteID())->tags.contains(word))
            say("tag", *state().selection().selectedNoteID(), word);
    }
    void throwAway()
    {
        const QUuid note = *state().selection().selectedNoteID();
        auto* tree = find<BinderTreeView>();
        if (!tree)
            return;
        tree->setFocus();
        m_hand->press(Qt::Key_Delete);
        TourHand::settle();
        if (state().note(note)->folderID == FolderRecord::trashFolderID)
            say("trash", note, u"-"_s);
    }
    void restore(const QString& word)
    {
        newNote();
        if (!state().selection().selectedNoteID())
            return;
        const QUuid note = *state().selection().selectedNoteID();
        write(word + u"first"_s);
        write(word + u"second"_s);
        for (const NoteVersionSnapshot& version : versionsOf(state(), note)) {
            if (!version.bodyPlain.contains(word + u"second"_s) &&
                version.bodyPlain.contains(word + u"first"_s)) {
                if (state().restoreVersion(version))
                    say("gone", note, word + u"second"_s);
                return;
            }
        }
    }
};

TEST_F(KeyWriter, Writes)
{
    if (!qEnvironmentVariableIsSet(homeVariable))
        GTEST_SKIP() << "a part of the kill runs";
    begin();
    const quint32 seed = quint32(qEnvironmentVariableIntValue(seedVariable));
    QRandomGenerator random(seed);
    const std::array modes{EditorMode::plainText, EditorMode::markdown, EditorMode::richText};
    newNote();
    std::printf("ready - -\n");
    std::fflush(stdout);
    for (int step = 0;; ++step) {
        const QString word = u"w%1x%2"_s.arg(seed).arg(step);
        if (!state()
                 .selection()
                 .selectedNoteID()) { // the program was killed while it showed the last one
            newNote();
            continue;
        }
        switch (random.bounded(10)) {
        case 0:
            newNote();
            break;
        case 1:
            window().editorPane().session().setMode(modes.at(random.bounded(3U)));
            break;
        case 2:
            tag(u"t"_s + word);
            break;
        case 3:
            throwAway();
            newNote();
            break;
        case 4:
            restore(word);
            break;
        default:
            write(word);
            break;
        }
    }
}

/// What a store holds of its notes, as SQLite's own shell reads it.
struct StoredNote {
    QString body;
    QString folder;
    QString tags;
};

QHash<QString, StoredNote> readBySqlite(const QString& store)
{
    QProcess sqlite;
    sqlite.start(u"sqlite3"_s,
                 {store, u".mode json"_s,
                  u"SELECT n.id AS id, n.folderID AS folder, n.tagsJSON AS tags, "
                  "CAST(b.bytes AS TEXT) AS body FROM OrvaneNote n LEFT JOIN OrvaneNoteBytes b "
                  "ON b.row = 64 * n.row + 5"_s});
    EXPECT_TRUE(sqlite.waitForFinished());
    EXPECT_EQ(sqlite.exitCode(), 0) << sqlite.readAllStandardError().constData();
    QHash<QString, StoredNote> notes;
    const QJsonArray rows = QJsonDocument::fromJson(sqlite.readAllStandardOutput()).array();
    for (const QJsonValue row : rows) {
        const QJsonObject note = row.toObject();
        notes.insert(note.value("id"_L1).toString(),
                     {note.value("body"_L1).toString(), note.value("folder"_L1).toString(),
                      note.value("tags"_L1).toString()});
    }
    return notes;
}

TEST(KeyKill, WhatWasCalledSavedIsThereForAnyReader)
{
    const int runs = qEnvironmentVariableIsSet("ORVANE_LONG") ? 1000 : 8;
    QTemporaryDir home;
    QRandomGenerator random(20'261'122);
    QList<QByteArrayList> acknowledged;
    int said = 0;
    for (int run = 1; run <= runs; ++run) {
        SCOPED_TRACE(run);
        QProcess writer;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QLatin1StringView(homeVariable), home.path());
        environment.insert(QLatin1StringView(seedVariable), QString::number(run));
        for (const QString& shard : {u"GTEST_TOTAL_SHARDS"_s, u"GTEST_SHARD_INDEX"_s})
            environment.remove(shard);
        environment.insert(u"ASAN_OPTIONS"_s,
                           environment.value(u"ASAN_OPTIONS"_s) + u":handle_abort=1"_s);
        writer.setProcessEnvironment(environment);
        writer.start(QCoreApplication::applicationFilePath(),
                     {u"--gtest_filter=KeyWriter.Writes"_s});
        const bool whileStarting = run % 8 == 7;
        QByteArray output;
        while (!whileStarting && !output.contains("\nready ") && writer.waitForReadyRead(120'000))
            output += writer.readAllStandardOutput();
        if (!whileStarting && !output.contains("\nready ")) {
            if (writer.processId() > 0)
                ::kill(pid_t(writer.processId()), SIGABRT); // the sanitizer shows where it stands
            writer.waitForFinished();
            FAIL() << output.constData() << writer.readAllStandardError().right(6000).constData();
        }
        ASSERT_FALSE(writer.waitForFinished(int(random.bounded(whileStarting ? 400 : 700))))
            << output.constData() << writer.readAll().constData()
            << writer.readAllStandardError().right(5000).constData();
        writer.kill();
        ASSERT_TRUE(writer.waitForFinished());
        output += writer.readAllStandardOutput();
        output.truncate(output.lastIndexOf('\n') + 1);
        for (const QByteArray& line : output.split('\n')) {
            const QByteArrayList parts = line.split(' ');
            if (parts.size() == 3 && parts.at(1).size() == 36) {
                acknowledged.append(parts);
                ++said;
            }
        }

        const ProjectLibraryController library(UserFolders::below(home.path()));
        const QString store = storePath(ProjectLibraryController::projectDataDirectoryPath(
            library.projectsDirectoryPath() + u"/Tidewater"_s));
        const auto notes = readBySqlite(store);
        for (const QByteArrayList& each : std::as_const(acknowledged)) {
            const QString id = QString::fromLatin1(each.at(1));
            const QString word = QString::fromLatin1(each.at(2));
            ASSERT_TRUE(notes.contains(id)) << each.join(' ').constData();
            const StoredNote& note = *notes.constFind(id);
            const QByteArray text = each.join(' ');
            if (each.first() == "word" && !word.endsWith(u"second"_s)) {
                ASSERT_TRUE(note.body.contains(word)) << text.constData();
            } else if (each.first() == "gone") {
                ASSERT_FALSE(note.body.contains(word)) << text.constData();
            } else if (each.first() == "tag") {
                ASSERT_TRUE(note.tags.contains(word)) << text.constData();
            } else if (each.first() == "trash") {
                ASSERT_EQ(note.folder, uuidText(FolderRecord::trashFolderID));
            }
        }
    }
    EXPECT_GT(said, runs) << "the kills fell into writing";
    std::printf("%d runs, %d saves acknowledged and found\n", runs, said);
}

} // namespace
} // namespace orvane
