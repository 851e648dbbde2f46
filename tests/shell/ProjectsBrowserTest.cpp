// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "ShellFixture.h"
#include "appearance/AppearanceTokens.h"
#include "commands/AppCommandEvents.h"
#include "core/records/Wording.h"
#include "core/store/ProjectLock.h"
#include "shell/app/EnglishSentences.h"
#include "shell/projects/ProjectTilesModel.h"
#include "shell/sheets/MessageText.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QTest>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

class ProjectsBrowserTest : public ShellTest {
protected:
    /// Starts with projects that were made before, the last one first in the browser.
    void startWith(const QStringList& names)
    {
        dismissWelcome();
        start();
        for (const QString& name : names)
            ASSERT_TRUE(state().projectSession().createProject(name, {}).has_value());
        state().projectSession().closeProject();
        TourHand::settle();
        tiles()->setFocus();
    }
    QListView* tiles() { return find<QListView>(u"Projects"_s); }
    QStringList titles()
    {
        QStringList titles;
        for (int row = 0; row + 1 < tiles()->model()->rowCount(); ++row)
            titles.append(tiles()->model()->index(row, 0).data().toString());
        return titles;
    }
    bool isOpen()
    {
        return state().projectSession().rootPresentationMode() == RootPresentationMode::Editor;
    }
    QString text(const QString& part)
    {
        for (auto* label : window().findChildren<QLabel*>()) {
            if (label->isVisible() && label->text().contains(part))
                return label->text();
        }
        return {};
    }
};

TEST_F(ProjectsBrowserTest, WelcomeMakesAStarterProject)
{
    start();
    ASSERT_EQ(sheetTitle(), u"Welcome to OrvaneWorkspace"_s);
    EXPECT_FALSE(text(u"local-first workspace."_s).isEmpty());
    m_hand->press(Qt::Key_Return);
    EXPECT_TRUE(TourHand::waitFor([&] { return isOpen(); }));
    EXPECT_TRUE(SessionKeys::welcomeDismissed.read(defaults()));
    EXPECT_EQ(state().projectSession().currentProject()->name, u"My OrvaneWorkspace Project"_s);
    EXPECT_EQ(state().projectSession().currentProject()->iconName, u"sparkles"_s);
    ASSERT_EQ(state().notes().size(), 1);
    const NoteRecord& note = *state().notes().records().first();
    EXPECT_EQ(note.title, u"Start Here"_s);
    EXPECT_TRUE(note.body.readOrNothing().startsWith(u"Start Here\n\nWrite or paste"_s));
    EXPECT_TRUE(note.body.readOrNothing().endsWith(u"~/Documents/OrvaneWorkspace/."_s));
}

TEST_F(ProjectsBrowserTest, WelcomeLeadsToABlankProject)
{
    start();
    press(u"Read Guide"_s);
    EXPECT_EQ(sheetTitle(), u"Guide"_s);
    m_hand->press(Qt::Key_Escape);
    press(u"Blank Project"_s);
    EXPECT_EQ(sheetTitle(), u"New Project"_s);
    m_hand->type(u"a/b:c"_s);
    press(u"Create Project"_s);
    EXPECT_TRUE(isOpen());
    EXPECT_EQ(state().projectSession().currentProject()->name, u"a/b:c"_s);
    EXPECT_TRUE(state().projectSession().currentProject()->rootPath.endsWith(u"/a-b-c"_s));
    quit();
    start();
    EXPECT_EQ(window().sheets().topSheet(), nullptr) << "an answered welcome stays away";
}

TEST_F(ProjectsBrowserTest, ATileSaysWhatItsProjectHoldsAndWhoHasIt)
{
    struct Row {
        const char* name;
        std::optional<int> notes;
        std::optional<int> words;
        std::optional<LockHolder> holder;
        QString details;
    };
    const ManualClock clock({1'795'354'320'000}); // 22 November 2026, 13:32 UTC
    const Timestamp now = clock.now();
    const Timestamp earlier{now.msecs - 27 * 60'000};
    const QString today = u"Changed "_s + momentInWords(now, now);
    const Row rows[] = {
        {"of an earlier version", {}, {}, {}, today},
        {"counted", 41, 86'420, {}, today + u" · 41 notes · 86,420 words"_s},
        {"one of each", 1, 1, {}, today + u" · 1 note · 1 word"_s},
        {"words not counted yet", 18, {}, {}, today + u" · 18 notes"_s},
        {"open on another machine", 18, 9'310, LockHolder{7, {}, u"tern"_s, earlier},
         u"Open on “tern” since "_s + timeInWords(earlier) + u" · 18 notes · 9,310 words"_s},
    };
    installEnglishSentences();
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        OrvaneProjectRecord project;
        project.id = QUuid::createUuid();
        project.name = u"Tidewater"_s;
        project.updatedAt = now;
        project.rootPath = u"/library/Tidewater"_s;
        project.noteCount = row.notes;
        project.wordCount = row.words;
        ProjectTilesModel::Holders holders;
        if (row.holder)
            holders.insert(project.rootPath, *row.holder);
        ProjectTilesModel model(clock);
        model.setProjects({project}, {}, {}, holders);
        EXPECT_EQ(model.index(0).data(ProjectTilesModel::DetailsRole).toString(), row.details);
        EXPECT_EQ(model.index(0).data(ProjectTilesModel::IsHeldRole).toBool(),
                  row.holder.has_value());
    }
}

TEST_F(ProjectsBrowserTest, WelcomeStaysWhereTheLicenceSaysNo)
{
    start();
    state().services().licence.setPolicy([] { return false; });
    bool asked = false;
    const auto watching = state().services().notifications.observe(
        AppCommandEvents::showLicenseUnlock, [&](const NoPayload&) { asked = true; });
    press(u"Start with Starter Project"_s);
    EXPECT_TRUE(asked);
    EXPECT_EQ(sheetTitle(), u"Welcome to OrvaneWorkspace"_s);
    EXPECT_FALSE(SessionKeys::welcomeDismissed.read(defaults()));
}

TEST_F(ProjectsBrowserTest, AFailureToCreateIsSaidInTheSheet)
{
    dismissWelcome();
    QFile blocker(m_home.path() + u"/Documents"_s);
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    blocker.close();
    start();
    press(u"New Project"_s);
    m_hand->type(u"Nowhere"_s);
    m_hand->press(Qt::Key_Return);
    EXPECT_EQ(sheetTitle(), u"New Project"_s);
    const auto labels = window().sheets().topSheet()->findChildren<QLabel*>();
    EXPECT_TRUE(std::any_of(labels.begin(), labels.end(), [](const QLabel* label) {
        return label->isVisible() && label->text().contains(u"Documents"_s) &&
               label->palette().color(QPalette::WindowText) ==
                   signatureDarkTokens().on(Surface::Card).danger;
    }));
    m_hand->press(Qt::Key_Escape);
    EXPECT_EQ(window().sheets().topSheet(), nullptr);
}

TEST_F(ProjectsBrowserTest, OpeningAsksAndCanStopAsking)
{
    startWith({u"Letters"_s, u"Tidewater"_s});
    EXPECT_EQ(titles(), (QStringList{u"Tidewater"_s, u"Letters"_s}));
    m_hand->press(Qt::Key_Home);
    EXPECT_TRUE(answering([&] { m_hand->press(Qt::Key_Return); },
                          [&] {
                              EXPECT_EQ(sheetTitle(), u"Open OrvaneWorkspace project?"_s);
                              m_hand->press(Qt::Key_Escape);
                          }));
    EXPECT_FALSE(isOpen());
    m_hand->press(Qt::Key_Right);
    EXPECT_TRUE(answering([&] { m_hand->press(Qt::Key_Return); },
                          [&] {
                              m_hand->click(*find<QCheckBox>(), {8, 8});
                              QTest::qWait(450); // a key right away would not be meant for it
                              m_hand->press(Qt::Key_Return);
                          }));
    ASSERT_TRUE(isOpen());
    EXPECT_EQ(state().projectSession().currentProject()->name, u"Letters"_s);
    EXPECT_FALSE(SessionKeys::confirmBeforeOpen.read(defaults()));

    press(u"Projects"_s);
    EXPECT_EQ(titles().first(), u"Letters"_s) << "recently opened first";
    m_hand->doubleClick(*tiles()->viewport(),
                        tiles()->visualRect(tiles()->model()->index(1, 0)).center());
    EXPECT_TRUE(isOpen());
    EXPECT_EQ(state().projectSession().currentProject()->name, u"Tidewater"_s);
}

TEST_F(ProjectsBrowserTest, FilterOrderAndTheWayBack)
{
    startWith({u"Zebra"_s, u"Letters"_s, u"Tidewater"_s});
    m_hand->click(*find<QLineEdit>(u"Filter projects"_s));
    m_hand->type(u"LETT"_s);
    EXPECT_EQ(titles(), QStringList{u"Letters"_s});
    m_hand->type(u"xx"_s);
    EXPECT_EQ(tiles(), nullptr);
    EXPECT_FALSE(text(u"LETTxx"_s).isEmpty());
    press(u"Clear Filter"_s);
    auto* order = find<QComboBox>();
    order->setFocus();
    m_hand->press(Qt::Key_End);
    EXPECT_EQ(titles(), (QStringList{u"Letters"_s, u"Tidewater"_s, u"Zebra"_s}));

    SessionKeys::confirmBeforeOpen.write(defaults(), false);
    tiles()->setFocus();
    m_hand->press(Qt::Key_Home);
    m_hand->press(Qt::Key_Return);
    ASSERT_TRUE(isOpen());
    const auto note = state().createNote();
    press(u"Projects"_s);
    EXPECT_FALSE(isOpen());
    m_hand->press(Qt::Key_Escape);
    EXPECT_TRUE(isOpen());
    EXPECT_EQ(state().selection().selectedNoteID(), note);
}

TEST_F(ProjectsBrowserTest, TheProgramsMenuIsHereToo)
{
    dismissWelcome();
    start();
    for (const bool byKey : {true, false}) {
        if (byKey)
            m_hand->press(Qt::Key_F10);
        else
            press(u"Menu"_s);
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        QStringList shown;
        for (const QAction* action : menu->actions()) {
            if (action->isVisible())
                shown.append(action->text().remove(u'&'));
        }
        EXPECT_TRUE(shown.contains(u"Help"_s)) << qPrintable(shown.join(u' '));
        EXPECT_LE(menu->geometry().right(), window().geometry().right());
        menu->close();
    }
}

TEST_F(ProjectsBrowserTest, MenuRenamesAndMovesToTrash)
{
    startWith({u"Letters"_s});
    const auto choose = [&](const QString& text) {
        m_hand->click(*tiles()->viewport(),
                      tiles()->visualRect(tiles()->model()->index(0, 0)).center(), Qt::RightButton);
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        const QList<QAction*> actions = menu->actions();
        const auto found = std::find_if(actions.begin(), actions.end(),
                                        [&](QAction* each) { return each->text() == text; });
        ASSERT_NE(found, actions.end());
        m_hand->click(*menu, menu->actionGeometry(*found).center());
        TourHand::settle();
    };
    choose(u"Rename…"_s);
    ASSERT_EQ(sheetTitle(), u"Rename Project"_s);
    m_hand->type(u"Post"_s);
    m_hand->press(Qt::Key_Return);
    EXPECT_EQ(titles(), QStringList{u"Post"_s});
    choose(u"Move to Trash"_s);
    EXPECT_TRUE(state().projectSession().projects().isEmpty());
    EXPECT_TRUE(QFile::exists(m_home.path() + u"/trash/Letters"_s));
    EXPECT_FALSE(text(u"Projects are folders on your own disk."_s).isEmpty());
}

TEST_F(ProjectsBrowserTest, ADamagedProjectStaysClosedBehindItsAlert)
{
    startWith({u"Letters"_s});
    SessionKeys::confirmBeforeOpen.write(defaults(), false);
    const QString root = state().projectSession().projects().first().rootPath;
    const QDir data(ProjectLibraryController::projectDataDirectoryPath(root));
    for (const QString& name : data.entryList({u"*.store"_s}, QDir::Files)) {
        QFile store(data.filePath(name));
        ASSERT_TRUE(store.open(QIODevice::WriteOnly));
        store.write("not a store");
    }
    for (int attempt = 0; attempt < 2; ++attempt) {
        QString message;
        EXPECT_TRUE(answering([&] { m_hand->press(Qt::Key_Return); },
                              [&] {
                                  EXPECT_EQ(sheetTitle(), u"Project Data Protected"_s);
                                  message = find<MessageText>()->toPlainText();
                                  press(u"OK"_s);
                              }));
        EXPECT_TRUE(message.contains(u"could not safely load \"Letters\""_s));
        EXPECT_TRUE(message.contains(u"PersistentStoreRecovery-"_s));
        EXPECT_FALSE(isOpen());
        EXPECT_FALSE(state().projectSession().projectLoadProtectionAlert().has_value());
        EXPECT_EQ(titles(), QStringList{u"Letters"_s}) << "it stays listed";
    }
}

} // namespace
} // namespace orvane
