// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "ProgramFixture.h"
#include "core/records/InternalNoteLink.h"
#include "shell/desktop/OpenRequest.h"

#include <QFile>
#include <QTest>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

TEST_F(ProgramTest, SaysWhatItIsWithoutADisplay)
{
    struct Row {
        const char* name;
        QStringList arguments;
        int exitCode;
        const char* says;
    };
    const Row rows[] = {
        {"help", {u"--help"_s}, 0, "usage: orvaneworkspace"},
        {"version", {u"--version"_s}, 0, "OrvaneWorkspace " ORVANE_VERSION},
        {"an unknown option", {u"--colour"_s}, 2, "“--colour” is not an option"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        QByteArray output;
        EXPECT_EQ(exitCode(row.arguments, &output), row.exitCode);
        EXPECT_TRUE(output.contains(row.says)) << output.constData();
    }
}

TEST_F(ProgramTest, SaysThatThereIsNoDisplay)
{
    QProcess process;
    QProcessEnvironment bare = environment();
    for (const char* name : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"})
        bare.remove(QLatin1String(name));
    process.setProcessEnvironment(bare);
    process.start(QStringLiteral(ORVANE_PROGRAM), {});
    ASSERT_TRUE(process.waitForFinished(30'000));
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit) << "no abort";
    EXPECT_EQ(process.exitCode(), 1);
    EXPECT_TRUE(process.readAllStandardError().startsWith("OrvaneWorkspace needs a display"));
}

TEST_F(ProgramTest, ARunningProgramTakesLinksAndFilesOfFurtherStarts)
{
    dismissWelcome();
    start();
    const QUuid project = *state().projectSession().createProject(u"Tidewater"_s, {});
    const QUuid linked = *state().createNote(u"Low water"_s, {});
    state().createNote(u"Salt"_s, {});
    const QString stateFile =
        ProjectWorkspaceStateStore::path(state().projectSession().currentProject()->rootPath);
    const QString rootPath = state().projectSession().currentProject()->rootPath;
    state().projectSession().closeProject();
    quit();
    const auto selectedNote = [&] {
        QFile file(stateFile);
        const auto stored = file.open(QFile::ReadOnly)
                                ? ProjectWorkspaceState::decoded(file.readAll())
                                : std::unexpected(JsonError{});
        return stored ? stored->selectedNoteID : std::nullopt;
    };
    ASSERT_NE(selectedNote(), linked);

    QProcess first;
    launch(first, {});
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return QFile::exists(m_home.filePath(u"orvaneworkspace.socket"_s)); }, 30'000));
    EXPECT_EQ(exitCode({InternalNoteLink::link(linked).replace(u"workspace:"_s, u"Workspace:"_s)}),
              0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return selectedNote() == linked; }, 10'000))
        << "the browser was shown, and the project of the link is opened";
    QFile text(m_home.filePath(u"Harbour ledger.md"_s));
    ASSERT_TRUE(text.open(QFile::WriteOnly));
    text.write("# Kept by four hands\r\n");
    text.close();
    EXPECT_EQ(exitCode({rootPath}), 0) << "a project by its folder";
    EXPECT_EQ(exitCode({u"Harbour ledger.md"_s}), 0) << "a path from where it was started";
    EXPECT_TRUE(QTest::qWaitFor([&] { return selectedNote() != linked; }, 10'000));
    EXPECT_EQ(first.state(), QProcess::Running);
    first.terminate();
    ASSERT_TRUE(first.waitForFinished(30'000));
    EXPECT_EQ(first.exitCode(), 0);

    start();
    state().projectSession().openProject(project, false);
    QStringList texts;
    for (const auto& note : state().notes())
        texts.append(note->title + u'|' + note->body.readOrNothing());
    EXPECT_TRUE(texts.contains(u"Harbour ledger|# Kept by four hands\n"_s))
        << qUtf8Printable(texts.join(u'\n'));
    EXPECT_EQ(texts.size(), 3);
}

TEST_F(ShellTest, WhatCannotBeOpenedIsSaidInOneMessage)
{
    dismissWelcome();
    start();
    const auto say = [&](const OpenRequest& request) {
        QString said;
        EXPECT_TRUE(answering([&] { m_app->open(request); },
                              [&] {
                                  said = window().sheets().topSheet()->accessibleDescription();
                                  press(u"Close"_s);
                              }));
        return said;
    };
    const QString nowhere = u"orvaneworkspace://note/"_s + uuidText(QUuid::createUuid());
    QFile text(m_home.filePath(u"a.txt"_s));
    ASSERT_TRUE(text.open(QFile::WriteOnly));
    text.write(QByteArray("a\0b", 3));
    text.close();
    const QString closed =
        say(OpenRequest{{nowhere, u"orvaneworkspace://what/1"_s}, {text.fileName()}, {}});
    EXPECT_TRUE(closed.contains(u"is in no project of the library"_s));
    EXPECT_TRUE(closed.contains(u"a link to nothing"_s));
    EXPECT_TRUE(closed.contains(u"once a project is open"_s));
    (void)state().projectSession().createProject(u"Tidewater"_s, {});
    const QString open =
        say(OpenRequest{{}, {text.fileName(), m_home.path(), m_home.filePath(u"none"_s)}, {}});
    EXPECT_TRUE(open.contains(u"can't be read as text"_s));
    EXPECT_TRUE(open.contains(u"no project of the library"_s));
    EXPECT_TRUE(open.contains(u"does not exist"_s));
    EXPECT_TRUE(state().notes().isEmpty());
}

} // namespace
} // namespace orvane
