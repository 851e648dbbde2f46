// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "ShellFixture.h"
#include "editor/pane/EditorPaneView.h"
#include "editor/view/EditorView.h"
#include "shell/binder/BinderTreeView.h"
#include "shell/binder/IconsAndTitlesWindow.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>

#include <csignal>
#include <sys/resource.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

class MainJobTest : public ShellTest {
protected:
    void makeProject(const QString& name)
    {
        press(u"New Project"_s);
        m_hand->type(name);
        m_hand->press(Qt::Key_Return);
        leaveIconsAndTitles();
    }
    QString statusText()
    {
        const QLabel* label = nullptr;
        for (const auto* each : window().findChildren<QLabel*>()) {
            if (each->isVisible() && each->accessibleDescription() == u"Saving"_s)
                label = each;
        }
        return label ? label->text() : QString();
    }
    QStringList storedTexts()
    {
        QStringList texts;
        for (const auto& note : state().notes())
            texts.append(note->title + u'|' + note->body.readOrNothing());
        texts.sort();
        return texts;
    }
};

TEST_F(MainJobTest, WriteQuitComeBack)
{
    dismissWelcome();
    start();
    makeProject(u"Tidewater"_s);
    ASSERT_EQ(state().projectSession().rootPresentationMode(), RootPresentationMode::Editor);
    EXPECT_FALSE(state().selection().selectedBinderRowID())
        << "an empty project does not begin in the Trash";
    EXPECT_EQ(QApplication::focusWidget()->property("text"), u"New Note"_s);
    press(u"New Folder"_s);
    m_hand->type(u"Manuscript"_s);
    m_hand->press(Qt::Key_Return);
    ASSERT_EQ(state().folders().size(), 2);

    m_hand->press(Qt::Key_N, Qt::ControlModifier);
    m_hand->type(u"Low water\nMara counts the posts.\nSeven."_s);
    EXPECT_EQ(find<QLineEdit>(u"Title of the note"_s)->text(), u"Low water"_s);
    EXPECT_EQ(statusText(), u"Edited"_s);
    press(u"New Note"_s);
    m_hand->type(u"Salt\nNever waited for."_s);
    ASSERT_EQ(state().notes().size(), 2);
    EXPECT_EQ(state().note(state().notes().records().first()->id)->body,
              u"Mara counts the posts.\nSeven."_s)
        << "another note writes the one before";
    quit();

    start();
    ASSERT_EQ(state().projectSession().projects().size(), 1);
    EXPECT_TRUE(answering([&] { m_hand->press(Qt::Key_Return); }, [&] { press(u"Open"_s); }));
    EXPECT_EQ(storedTexts(), (QStringList{u"Low water|Mara counts the posts.\nSeven."_s,
                                          u"Salt|Never waited for."_s}));
    const auto folder = state().order().rootFolderOrder.value(0);
    EXPECT_EQ(state().orderedNotes(folder).size(), 2);
    EXPECT_TRUE(state().order().expandedFolderIDs.contains(folder));
}

TEST_F(MainJobTest, SavesByItselfAfterAPause)
{
    dismissWelcome();
    start();
    autoSaveSecondsSetting.write(defaults(), 0.3);
    makeProject(u"Tidewater"_s);
    press(u"New Note"_s);
    m_hand->type(u"Low water\nA line."_s);
    EXPECT_EQ(statusText(), u"Edited"_s);
    EXPECT_TRUE(TourHand::waitFor([&] { return statusText() == u"Saved"_s; }));
    EXPECT_EQ(storedTexts(), QStringList{u"Low water|A line."_s});
    auto* text = find<EditorView>();
    EXPECT_EQ(text->selection().range().end(), 7) << "saving leaves the caret where it is";
}

TEST_F(MainJobTest, ListsAreMadeInRichNotesAndFoundTextInAll)
{
    dismissWelcome();
    start();
    makeProject(u"Tidewater"_s);
    press(u"New Note"_s);
    m_hand->type(u"Low water\none\ntwo"_s);
    const auto& commands = allCommands();
    const Command& bullets = **std::ranges::find(commands, u"bulletList"_s, &Command::id);
    auto* text = find<EditorView>();
    for (const EditorMode mode :
         {EditorMode::plainText, EditorMode::markdown, EditorMode::richText}) {
        SCOPED_TRACE(int(mode));
        window().editorPane().session().setMode(mode);
        TourHand::settle();
        // In a plain note the command offers to make it a rich one.
        EXPECT_EQ(window().commands().wouldAct(bullets), mode != EditorMode::markdown);
        m_hand->press(Qt::Key_F, Qt::ControlModifier);
        m_hand->type(u"two"_s);
        EXPECT_EQ(text->selection().range(), (TextRange{4, 3}));
        m_hand->press(Qt::Key_Escape);
        EXPECT_TRUE(text->hasFocus());
        text->setSelection(TextSelection::caret(7));
    }
    window().commands().run(bullets);
    m_hand->press(Qt::Key_Return);
    EXPECT_EQ(text->plainText(), u"one\n• two\n• "_s);
}

TEST_F(MainJobTest, TheTitleGoesToTheBinderWhileItIsTyped)
{
    dismissWelcome();
    start();
    makeProject(u"Tidewater"_s);
    press(u"New Note"_s);
    m_hand->type(u"Harb"_s);
    auto* tree = find<BinderTreeView>();
    EXPECT_EQ(tree->currentIndex().data().toString(), u"Harb"_s);
}

TEST_F(MainJobTest, ATerminationSignalWritesWhatWasTyped)
{
    dismissWelcome();
    start();
    QObject::connect(m_app.get(), &OrvaneWorkspaceApp::quitRequested, m_app.get(),
                     &OrvaneWorkspaceApp::finish, Qt::QueuedConnection);
    makeProject(u"Tidewater"_s);
    press(u"New Note"_s);
    m_hand->type(u"Last words\nbefore the end"_s);
    ASSERT_EQ(::kill(::getpid(), SIGTERM), 0);
    EXPECT_TRUE(TourHand::waitFor([&] { return state().projectSession().isAppTerminating(); }));
    quit();
    start();
    answering([&] { m_hand->press(Qt::Key_Return); }, [&] { press(u"Open"_s); });
    EXPECT_EQ(storedTexts(), QStringList{u"Last words|before the end"_s});
}

/// Stands in for the desktop's file manager.
class FileManager : public QObject {
    Q_OBJECT
public:
    FileManager() { QDesktopServices::setUrlHandler(u"file"_s, this, "show"); }
    ~FileManager() override { QDesktopServices::unsetUrlHandler(u"file"_s); }
    Q_INVOKABLE void show(const QUrl& url) { shown.append(url.toLocalFile()); }
    QStringList shown;
};

TEST_F(MainJobTest, FoldersAreShownAndItemsNamedByTheirKeys)
{
    dismissWelcome();
    start();
    makeProject(u"Tidewater"_s);
    const FileManager fileManager;
    m_hand->press(Qt::Key_O, Qt::ControlModifier | Qt::AltModifier);
    m_hand->press(Qt::Key_I, Qt::ControlModifier | Qt::AltModifier | Qt::ShiftModifier);
    const QString root = state().projectSession().currentProject()->rootPath;
    EXPECT_EQ(fileManager.shown,
              (QStringList{state().projectSession().library().projectsDirectoryPath(),
                           VersionFiles::folderPath(root)}));
    state().services().notifications.post(AppCommandEvents::openIconsAndTitles);
    auto* names = window().findChild<IconsAndTitlesWindow*>();
    ASSERT_NE(names, nullptr);
    EXPECT_EQ(names->item(), (TitledItem{TitledItem::Kind::Project,
                                         state().projectSession().currentProject()->id}));
}

/// While it lives, files don't grow beyond `bytes`, as on a full disk.
class FullDisk {
public:
    explicit FullDisk(rlim_t bytes)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk() { setrlimit(RLIMIT_FSIZE, &m_before); }

private:
    rlimit m_before{};
};

TEST_F(MainJobTest, AFailingSaveIsSaidPlainlyUntilItWorksAgain)
{
    dismissWelcome();
    start();
    makeProject(u"Tidewater"_s);
    press(u"New Note"_s);
    m_hand->type(u"Full\n"_s);
    {
        const FullDisk full(4096);
        QGuiApplication::clipboard()->setText(QString(20'000, u'x'));
        m_hand->press(Qt::Key_V, Qt::ControlModifier);
        window().flushDrafts();
        ASSERT_TRUE(state().projectSession().saveFailure().has_value());
        EXPECT_TRUE(statusText().startsWith(u"Not saved since "_s)) << qUtf8Printable(statusText());
        bool closed = false;
        QObject::connect(&window(), &MainWindow::closed, &window(), [&] { closed = true; });
        EXPECT_TRUE(answering([&] { window().close(); },
                              [&] {
                                  EXPECT_EQ(sheetTitle(), u"One note is not saved yet"_s);
                                  m_hand->press(Qt::Key_Escape);
                              }));
        EXPECT_FALSE(closed) << "who closes the question stays";
    }
    m_hand->type(u"!"_s);
    window().flushDrafts();
    EXPECT_FALSE(state().projectSession().saveFailure().has_value());
    EXPECT_EQ(statusText(), u"Saved"_s);
}

TEST_F(MainJobTest, BackAndForwardGoThroughTheNotes)
{
    dismissWelcome();
    start();
    makeProject(u"Tidewater"_s);
    for (const auto& title : {u"One"_s, u"Two"_s}) {
        press(u"New Note"_s);
        m_hand->type(title);
    }
    EXPECT_FALSE(button(u"Forward"_s)->isEnabled());
    m_hand->press(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(find<QLineEdit>(u"Title of the note"_s)->text(), u"One"_s);
    EXPECT_FALSE(button(u"Back"_s)->isEnabled());
    press(u"Forward"_s);
    EXPECT_EQ(find<QLineEdit>(u"Title of the note"_s)->text(), u"Two"_s);
}

TEST_F(MainJobTest, NoCommandActsBehindASheet)
{
    dismissWelcome();
    start();
    makeProject(u"Tidewater"_s);
    for (const auto& title : {u"One"_s, u"Two"_s}) {
        press(u"New Note"_s);
        m_hand->type(title);
    }
    press(u"New Folder"_s);
    const Sheet* sheet = window().sheets().topSheet();
    ASSERT_NE(sheet, nullptr);
    const auto selected = state().selection().selectedNoteID();
    const QWidget* focus = QApplication::focusWidget();
    using namespace AppCommandEvents;
    const auto& commands = {showProjects,
                            newNote,
                            newFolder,
                            mainEditorBack,
                            projectSearch,
                            focusBinder,
                            openIconsAndTitles,
                            binderNextItem,
                            mainEditorForward,
                            binderPreviousItem,
                            binderActivateSelection};
    for (const auto& command : commands) {
        SCOPED_TRACE(command.name);
        state().services().notifications.post(command);
        TourHand::settle();
        EXPECT_EQ(window().sheets().topSheet(), sheet);
        EXPECT_EQ(state().notes().size(), 2);
        EXPECT_EQ(state().selection().selectedNoteID(), selected);
        EXPECT_EQ(state().projectSession().rootPresentationMode(), RootPresentationMode::Editor);
        EXPECT_EQ(QApplication::focusWidget(), focus);
    }
    const std::pair<int, Qt::KeyboardModifiers> keys[] = {{Qt::Key_F6, Qt::NoModifier},
                                                          {Qt::Key_F10, Qt::NoModifier},
                                                          {Qt::Key_F11, Qt::NoModifier},
                                                          {Qt::Key_Q, Qt::ControlModifier}};
    for (const auto& [key, modifiers] : keys) {
        SCOPED_TRACE(key);
        m_hand->press(Qt::Key(key), modifiers);
        EXPECT_EQ(window().sheets().topSheet(), sheet);
        EXPECT_EQ(QApplication::focusWidget(), focus);
        EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
        EXPECT_FALSE(window().isFullScreen());
        EXPECT_TRUE(window().isVisible());
    }
    m_hand->press(Qt::Key_Escape);
    state().services().notifications.post(newNote);
    EXPECT_EQ(state().notes().size(), 3);
}

TEST_F(MainJobTest, UndoActsWhereTheKeyboardIsAndElseInTheText)
{
    dismissWelcome();
    start();
    makeProject(u"Tidewater"_s);
    press(u"New Note"_s);
    m_hand->type(u"Low\nMara"_s);
    auto* title = find<QLineEdit>(u"Title of the note"_s);
    auto* text = find<EditorView>();
    m_hand->click(*title);
    m_hand->press(Qt::Key_End);
    m_hand->type(u" water"_s);
    m_hand->press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_NE(title->text(), u"Low water"_s);
    EXPECT_EQ(text->plainText(), u"Mara"_s);
    auto* filter = find<QLineEdit>(u"Filter titles"_s);
    m_hand->click(*filter);
    m_hand->type(u"low"_s);
    m_hand->press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(filter->text(), QString());
    find<BinderTreeView>()->setFocus();
    m_hand->press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(text->plainText(), QString());
    m_hand->press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(text->plainText(), u"Mara"_s);

    // What was done in the Binder after the words goes first, and then the words again.
    const QUuid note = *state().selection().selectedNoteID();
    m_hand->press(Qt::Key_S, Qt::ControlModifier);
    find<BinderTreeView>()->setFocus();
    m_hand->press(Qt::Key_Delete);
    EXPECT_EQ(state().note(note)->folderID, FolderRecord::trashFolderID);
    find<BinderTreeView>()->setFocus();
    m_hand->press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_NE(state().note(note)->folderID, FolderRecord::trashFolderID);
    EXPECT_EQ(state().selection().selectedNoteID(), note);
    m_hand->press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(state().note(note)->folderID, FolderRecord::trashFolderID);
    m_hand->press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(text->plainText(), u"Mara"_s);
    m_app->showSettings();
    EXPECT_TRUE(TourHand::waitFor([this] { return !window().isActiveWindow(); }));
    TourHand(*QApplication::activeWindow()).press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(text->plainText(), u"Mara"_s) << "not behind another window";
}

TEST_F(MainJobTest, TheBinderByKeyboardAndFilter)
{
    dismissWelcome();
    start();
    makeProject(u"Tidewater"_s);
    press(u"New Folder"_s);
    m_hand->type(u"Manuscript"_s);
    m_hand->press(Qt::Key_Return);
    press(u"New Note"_s);
    m_hand->type(u"Harbour\n"_s);
    auto* tree = find<BinderTreeView>();
    const auto selected = state().selection().selectedNoteID();

    auto* filter = find<QLineEdit>(u"Filter titles"_s);
    m_hand->click(*filter);
    m_hand->type(u"manu"_s);
    EXPECT_EQ(tree->model()->rowCount(), 1);
    EXPECT_EQ(state().selection().selectedNoteID(), selected)
        << "a row in the place of a hidden one";
    m_hand->type(u"zebra"_s);
    EXPECT_EQ(tree->model()->rowCount(), 0);
    EXPECT_EQ(state().selection().selectedNoteID(), selected)
        << "what the filter hides stays selected";
    m_hand->press(Qt::Key_Escape);
    EXPECT_EQ(tree->model()->rowCount(), 2);
    EXPECT_EQ(tree->currentIndex().data().toString(), u"Harbour"_s);

    m_hand->press(Qt::Key_Down);
    ASSERT_TRUE(tree->hasFocus());
    m_hand->press(Qt::Key_Left);
    EXPECT_FALSE(state().selection().selectedNoteID().has_value()) << "to the folder above";
    m_hand->press(Qt::Key_Left);
    EXPECT_TRUE(state().order().expandedFolderIDs.isEmpty());
    m_hand->press(Qt::Key_Right);
    m_hand->press(Qt::Key_Right);
    EXPECT_EQ(state().selection().selectedNoteID(), selected);
    m_hand->press(Qt::Key_Return);
    EXPECT_TRUE(find<EditorView>()->hasFocus());
}

TEST_F(MainJobTest, EachProjectKeepsItsSelectionAndItsPanes)
{
    dismissWelcome();
    start();
    makeProject(u"One"_s);
    const QUuid folder = *state().createFolder(u"Folder"_s);
    const QUuid note = *state().createNote(u"Note"_s, {});
    state().createNote(u"Other"_s, {});
    state().selection().selectNote(note);
    const QUuid one = state().projectSession().currentProject()->id;
    const QUuid two = *state().projectSession().createProject(u"Two"_s, {});
    EXPECT_FALSE(state().selection().selectedNoteID());
    state().projectSession().openProject(one, true);
    EXPECT_EQ(state().selection().selectedNoteID(), note);
    EXPECT_TRUE(state().order().expandedFolderIDs.contains(folder));
    state().selection().selectFolder(folder);
    m_hand->press(Qt::Key_Left, Qt::AltModifier | Qt::ShiftModifier);
    EXPECT_TRUE(TourHand::waitFor([&] { return !find<BinderTreeView>(); }));
    defaults().set(u"settings.layout.lock.inspector"_s, true);
    state().projectSession().openProject(two, true);
    EXPECT_TRUE(find<BinderTreeView>()) << "the other project shows its Binder";
    EXPECT_EQ(defaults().get<bool>(u"settings.layout.lock.inspector"_s), false);
    state().projectSession().openProject(one, true);
    EXPECT_FALSE(find<BinderTreeView>());
    EXPECT_EQ(defaults().get<bool>(u"settings.layout.lock.inspector"_s), true);
    quit();
    start();
    state().projectSession().openProject(one, true);
    EXPECT_FALSE(find<BinderTreeView>());
    EXPECT_EQ(defaults().get<bool>(u"settings.layout.lock.inspector"_s), false)
        << "locks do not outlive the program";
    EXPECT_FALSE(state().selection().selectedNoteID());
    EXPECT_EQ(state().selection().selectedFolderID(), folder);
    state().projectSession().openProject(two, true);
    EXPECT_FALSE(state().selection().selectedBinderRowID());
}

} // namespace
} // namespace orvane

#include "MainJobTest.moc"
