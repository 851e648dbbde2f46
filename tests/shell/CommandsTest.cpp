// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/Drawing.h"
#include "commands/EditorFormatNotifications.h"
#include "commands/TableCommands.h"
#include "editor/writing/FocusMode.h"
#include "shell/commands/AppMenus.h"
#include "shell/commands/CommandIcons.h"
#include "support/TestServices.h"

#include <QLineEdit>
#include <QMenu>
#include <QTest>
#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

const Command& commandWithId(const QString& id)
{
    const auto& all = allCommands();
    const auto found = std::ranges::find(all, id, &Command::id);
    Q_ASSERT(found != all.end());
    return **found;
}

class CommandsTest : public testing::Test {
protected:
    template <typename Payload>
    void observe(const Notification<Payload>& notification)
    {
        m_observations.push_back(
            m_test.notifications.observe(notification, [this, notification](const Payload&) {
                m_posted.append(QString::fromLatin1(notification.name));
            }));
    }

    /// "Title\tKey" of each item, "-" for a line, in brackets where it is disabled.
    QStringList open(QMenu& menu)
    {
        emit menu.aboutToShow();
        QStringList texts;
        for (const QAction* action : menu.actions()) {
            if (action->isVisible())
                texts.append(action->isSeparator() ? u"-"_s
                             : action->isEnabled() ? action->text()
                                                   : u"[%1]"_s.arg(action->text()));
        }
        return texts;
    }

    TestServices m_test;
    CommandContext m_context{true, true, true, false, false, true, true};
    ShortcutCenter m_shortcuts{m_test.services(), AppUndoRedoRouter({[] {
                                   return undoTargetOf(QApplication::focusWidget());
                               }})};
    CommandCenter m_commands{m_test.services(), m_shortcuts, [this] {
                                 return m_context;
                             }};
    std::vector<NotificationCenter::Observation> m_observations;
    QStringList m_posted;
};

TEST_F(CommandsTest, TheTableIsSound)
{
    QSet<QString> ids;
    QSet<QString> keys;
    QMap<ShortcutAction, int> actions;
    for (const Command* command : allCommands()) {
        SCOPED_TRACE(qPrintable(command->id));
        EXPECT_FALSE(ids.contains(command->id));
        ids.insert(command->id);
        EXPECT_FALSE(commandTitle(*command).isEmpty());
        EXPECT_NE(bool(command->notification), command->direct != DirectCommand::None);
        EXPECT_FALSE(command->action && command->fixedKey);
        if (command->action)
            ++actions[*command->action];
        // In a table keys mean something else.
        const bool isOfTable =
            command->fixedKey && keyRow(*command->fixedKey).place == KeyPlace::Table;
        const QString key = isOfTable ? QString() : m_commands.keyText(*command);
        EXPECT_FALSE(!key.isEmpty() && keys.contains(key)) << qPrintable(key);
        keys.insert(key);
    }
    EXPECT_EQ(actions.size(), shortcutActionCount) << "each action is a command";
    for (const int count : actions)
        EXPECT_EQ(count, 1);
}

TEST_F(CommandsTest, EveryCommandHasADrawing)
{
    int general = 0;
    for (const Command* command : allCommands()) {
        const QString drawing = commandDrawing(*command);
        const QImage image = themeDrawingPixmap(u"actions"_s, drawing, 16, Qt::black).toImage();
        int inked = 0;
        for (int i = 0; i < image.width() * image.height(); ++i)
            inked += qAlpha(image.pixel(i % image.width(), i / image.width())) > 127;
        EXPECT_GT(inked, 8) << qUtf8Printable(command->id + u": "_s + drawing);
        general += drawing == u"system-run"_s;
    }
    EXPECT_LE(general, 3) << "commands that look like any other";
}

TEST_F(CommandsTest, MenusShowWhatIsBuiltInAndEnableWhatWouldAct)
{
    const std::unique_ptr<QMenu> menu(makeCommandMenu(CommandMenu::Note, m_commands, nullptr));
    EXPECT_EQ(open(*menu), QStringList());
    observe(AppCommandEvents::mainEditorBack);
    observe(AppCommandEvents::openBrainMap);
    m_context.canGoBack = true;
    EXPECT_EQ(open(*menu),
              QStringList({u"Back\tAlt+Left"_s, u"-"_s, u"Brain Map\tCtrl+Shift+B"_s}));
    m_context.canGoBack = false;
    EXPECT_EQ(open(*menu).front(), u"[Back\tAlt+Left]"_s);
    m_context.showsProject = false;
    m_shortcuts.setShortcut(ShortcutAction::openBrainMap, {96, KeyModifier::shift});
    EXPECT_EQ(open(*menu).back(), u"[Brain Map\tShift+F5]"_s);

    const std::unique_ptr<QMenu> edit(makeCommandMenu(CommandMenu::Edit, m_commands, nullptr));
    observe(AppCommandEvents::toggleDocumentFind);
    EXPECT_TRUE(open(*edit).contains(u"[Find && Replace in Note\tCtrl+F]"_s));

    const std::unique_ptr<QMenu> all(makeApplicationMenu(m_commands, nullptr));
    EXPECT_EQ(open(*all), QStringList({u"&Edit"_s, u"&Note"_s}));
}

TEST_F(CommandsTest, CommandsOfATableAreOfferedInOne)
{
    observe(TableCommands::addRowAbove);
    observe(TableCommands::moveRowUp);
    const std::unique_ptr<QMenu> menu(makeCommandMenu(CommandMenu::Format, m_commands, nullptr));
    const auto items = [&] {
        QStringList all;
        for (QAction* each : (open(*menu), menu->actions()))
            all += each->menu() ? open(*each->menu()) : QStringList();
        return all;
    };
    m_context.writesRichText = true;
    EXPECT_EQ(items(), QStringList({u"[Add Row Above]"_s, u"[Move Table Row Up\tAlt+Up]"_s}));
    m_context.isInTable = true;
    EXPECT_EQ(items(), QStringList({u"Add Row Above"_s, u"Move Table Row Up\tAlt+Up"_s}));
    m_context.mayWrite = false;
    EXPECT_FALSE(m_commands.wouldAct(commandWithId(u"tableAddRowAbove"_s)));
}

TEST_F(CommandsTest, ChoosingAnItemPostsItOnce)
{
    observe(AppCommandEvents::applyHeading1);
    observe(AppCommandEvents::applyHeading2);
    m_context.mayHaveFormatting = false;
    EXPECT_FALSE(m_commands.wouldAct(commandWithId(u"heading1"_s))) << "in Markdown";
    m_context.mayHaveFormatting = true;
    const std::unique_ptr<QMenu> menu(makeCommandMenu(CommandMenu::Format, m_commands, nullptr));
    EXPECT_EQ(open(*menu), QStringList{u"Heading"_s});
    open(*menu);
    QMenu* headings = menu->actions().front()->menu();
    ASSERT_TRUE(headings);
    ASSERT_EQ(headings->actions().size(), 2);
    headings->actions().back()->trigger();
    EXPECT_EQ(m_posted, QStringList()) << "not before the menu has gone";
    QCoreApplication::processEvents();
    EXPECT_EQ(m_posted, QStringList{u"OrvaneWorkspace.ApplyHeading2"_s});
    EXPECT_EQ(menu->findChildren<QMenu*>().size(), 1) << "menus of earlier openings are gone";

    m_context.mayWrite = false;
    m_commands.run(commandWithId(u"heading1"_s));
    EXPECT_EQ(m_posted.size(), 1) << "what would not act is not posted";
}

TEST_F(CommandsTest, WhatIsOnCarriesAMark)
{
    const Services services = m_test.services();
    m_commands.setDirect(DirectCommand::ToggleFocusMode, [&] { toggleFocusMode(services); });
    m_commands.setDirect(DirectCommand::FocusParagraph, [&] { setFocusParagraph(services); });
    m_commands.setDirect(DirectCommand::FocusSentence, [&] { setFocusSentence(services); });
    const std::unique_ptr<QMenu> menu(makeCommandMenu(CommandMenu::View, m_commands, nullptr));
    const auto marks = [&] {
        open(*menu);
        QStringList marked;
        for (const QAction* action : menu->actions().front()->menu()->actions()) {
            EXPECT_TRUE(action->isCheckable());
            if (action->isChecked())
                marked.append(action->objectName());
        }
        return marked;
    };
    EXPECT_EQ(marks(), QStringList{u"setFocusParagraph"_s});
    m_commands.run(commandWithId(u"toggleFocusMode"_s));
    m_commands.run(commandWithId(u"setFocusSentence"_s));
    EXPECT_EQ(marks(), QStringList({u"toggleFocusMode"_s, u"setFocusSentence"_s}));
    m_context.showsProject = false;
    EXPECT_FALSE(m_commands.wouldAct(commandWithId(u"toggleFocusMode"_s)));
}

TEST_F(CommandsTest, ChartsCarryTheirKind)
{
    std::vector<OWChartKind> kinds;
    const auto observation =
        m_test.notifications.observe(AppCommandEvents::insertChart, [&](const InsertChart& chart) {
            kinds.push_back(chart.kind);
        });
    m_commands.run(commandWithId(u"insertDonutChart"_s));
    m_commands.run(commandWithId(u"insertLineChart"_s));
    EXPECT_EQ(kinds, (std::vector{OWChartKind::donut, OWChartKind::line}));
}

TEST_F(CommandsTest, DirectCommandsActOnTheTextWithTheKeyboard)
{
    QLineEdit field;
    field.show();
    field.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&field));
    field.setFocus();
    field.insert(u"words"_s);
    m_commands.run(commandWithId(u"selectAll"_s));
    m_commands.run(commandWithId(u"cut"_s));
    EXPECT_EQ(field.text(), QString());
    m_commands.run(commandWithId(u"paste"_s));
    m_commands.run(commandWithId(u"paste"_s));
    EXPECT_EQ(field.text(), u"wordswords"_s);
    m_commands.run(commandWithId(u"undo"_s));
    EXPECT_EQ(field.text(), u"words"_s);
    EXPECT_TRUE(m_commands.wouldAct(commandWithId(u"redo"_s)));
    field.clearFocus();
    EXPECT_FALSE(m_commands.wouldAct(commandWithId(u"copy"_s)));

    const Command& quit = commandWithId(u"quit"_s);
    EXPECT_FALSE(m_commands.isPresent(quit));
    bool quits = false;
    bool mayQuit = false;
    m_commands.setDirect(
        DirectCommand::Quit, [&] { quits = true; }, [&] { return mayQuit; });
    m_commands.run(quit);
    EXPECT_FALSE(quits);
    mayQuit = true;
    m_commands.run(quit);
    EXPECT_TRUE(quits);
}

} // namespace
} // namespace orvane
