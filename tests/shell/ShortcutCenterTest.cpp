// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/shortcuts/ShortcutCenter.h"

#include "commands/AppCommandEvents.h"
#include "commands/EditorFormatNotifications.h"
#include "support/TestServices.h"

#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShortcut>
#include <QTest>
#include <QWindow>
#include <gtest/gtest.h>

#include <thread>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;
using Direction = AppUndoRedoRouter::Direction;

/// A window with a text and a pane that is none, watched by the center.
class ShortcutCenterTest : public testing::Test {
protected:
    ShortcutCenterTest()
    {
        m_window.resize(300, 200);
        m_pane.setFocusPolicy(Qt::StrongFocus);
        m_window.show();
        m_window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&m_window));
        m_center.start();
    }

    template <typename Payload>
    void watch(const Notification<Payload>& notification)
    {
        m_observations.push_back(m_test.notifications.observe(notification, [this, notification](
                                                                                const Payload&) {
            m_posted.append(QString::fromLatin1(notification.name).remove(u"OrvaneWorkspace."_s));
        }));
    }

    /// By way of the window, as the windowing system delivers keys.
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(m_window.windowHandle(), key, modifiers);
    }

    TestServices m_test;
    QWidget m_window;
    QWidget m_inner{&m_window};
    QPlainTextEdit m_text{&m_inner};
    QWidget m_pane{&m_window};
    ShortcutCenter m_center{m_test.services(), AppUndoRedoRouter({[this] {
                                return undoTargetOf(&m_text);
                            }})};
    std::vector<NotificationCenter::Observation> m_observations;
    QStringList m_posted;
};

TEST_F(ShortcutCenterTest, TypingReachesTheTextAndOtherKeysTheirCommands)
{
    watch(AppCommandEvents::newNote);
    watch(EditorFormatNotifications::bold);
    m_text.setFocus();
    press(Qt::Key_H, Qt::ShiftModifier);
    press(Qt::Key_B, Qt::ControlModifier);
    press(Qt::Key_I);
    press(Qt::Key_N, Qt::ControlModifier);
    EXPECT_EQ(m_text.toPlainText().toLower(), u"hi"_s);
    EXPECT_EQ(m_posted, QStringList({u"EditorFormat.Bold"_s, u"NewNote"_s}));

    m_posted.clear();
    m_pane.setFocus();
    press(Qt::Key_N, Qt::ControlModifier);
    QTest::keyClick(&m_pane, Qt::Key_N, Qt::ControlModifier); // straight to the widget
    EXPECT_EQ(m_posted, QStringList({u"NewNote"_s, u"NewNote"_s}));

    m_center.stop();
    press(Qt::Key_N, Qt::ControlModifier);
    EXPECT_EQ(m_posted.size(), 2);
}

TEST_F(ShortcutCenterTest, AKeyThatNobodyTakesIsJudgedOnceOnItsWayUp)
{
    watch(EditorFormatNotifications::bold);
    struct Pane : QWidget {
        using QWidget::QWidget;
        std::function<void()> onPress;
        void keyPressEvent(QKeyEvent* event) override
        {
            onPress();
            event->ignore();
        }
    } pane(&m_pane);
    pane.onPress = [this] {
        m_center.setShortcut(ShortcutAction::bold, {101, 0});
    };
    pane.setFocusPolicy(Qt::StrongFocus);
    m_pane.show();
    pane.show();
    pane.setFocus();
    press(Qt::Key_F9);
    EXPECT_EQ(m_posted, QStringList()) << "not judged again at the widgets around";
    press(Qt::Key_F9);
    EXPECT_EQ(m_posted, QStringList{u"EditorFormat.Bold"_s});
}

TEST_F(ShortcutCenterTest, ComesBeforeTheToolkitsShortcutsOnlyForKeysOfItsOwn)
{
    watch(EditorFormatNotifications::bold);
    int rivals = 0;
    QShortcut rival(QKeySequence(Qt::CTRL | Qt::Key_B), &m_window, [&] { ++rivals; });
    QShortcut settings(QKeySequence(Qt::CTRL | Qt::Key_Comma), &m_window, [&] { ++rivals; });
    m_text.setFocus();
    press(Qt::Key_B, Qt::ControlModifier);
    EXPECT_EQ(rivals, 0);
    EXPECT_EQ(m_posted, QStringList{u"EditorFormat.Bold"_s});
    press(Qt::Key_Comma, Qt::ControlModifier);
    EXPECT_EQ(rivals, 1);
}

TEST_F(ShortcutCenterTest, HoldingAKeyRepeatsMovesButNotCommands)
{
    watch(AppCommandEvents::newNote);
    watch(AppCommandEvents::binderNextItem);
    m_pane.setFocus();
    for (const Qt::Key key : {Qt::Key_N, Qt::Key_Down}) {
        for (int i = 0; i < 3; ++i) {
            QKeyEvent event(QEvent::KeyPress, key, Qt::ControlModifier, {}, i > 0);
            QCoreApplication::sendEvent(&m_pane, &event);
        }
    }
    EXPECT_EQ(m_posted.count(u"NewNote"_s), 1);
    EXPECT_EQ(m_posted.count(u"BinderNextItem"_s), 3);
}

TEST_F(ShortcutCenterTest, UndoIsSwallowedOnlyWhenSomethingWasUndone)
{
    m_pane.setFocus();
    m_text.insertPlainText(u"words"_s);
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(m_text.toPlainText(), QString());
    press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(m_text.toPlainText(), u"words"_s);

    m_text.document()->clearUndoRedoStacks();
    int passed = 0;
    QShortcut fallback(QKeySequence(Qt::CTRL | Qt::Key_Z), &m_window, [&] { ++passed; });
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(passed, 1);
}

TEST_F(ShortcutCenterTest, AnOpenMenuKeepsItsKeys)
{
    watch(AppCommandEvents::binderActivateSelection);
    m_pane.setFocus();
    int triggered = 0;
    QMenu menu(&m_window);
    menu.addAction(u"Item"_s, [&] { ++triggered; });
    menu.popup(m_window.mapToGlobal(QPoint(5, 5)));
    menu.setActiveAction(menu.actions().constFirst());
    QTest::keyClick(&menu, Qt::Key_Return);
    EXPECT_EQ(triggered, 1);
    EXPECT_EQ(m_posted, QStringList());
}

TEST_F(ShortcutCenterTest, ChangedKeysWorkAtOnceWhoeverChangesThem)
{
    watch(EditorFormatNotifications::bold);
    m_text.setFocus();
    int told = 0;
    QObject::connect(&m_center, &ShortcutCenter::bindingsChanged, [&] { ++told; });
    const auto pressesThatFire = [&](Qt::Key key) {
        m_posted.clear();
        press(key, Qt::ControlModifier);
        return m_posted.size();
    };
    EXPECT_EQ(pressesThatFire(Qt::Key_B), 1);
    m_center.setShortcut(ShortcutAction::bold, {46, KeyModifier::command});
    EXPECT_EQ(pressesThatFire(Qt::Key_B), 0);
    EXPECT_EQ(pressesThatFire(Qt::Key_M), 1);
    ShortcutStorage::saveOverrides(m_test.defaults,
                                   {{ShortcutAction::bold, {38, KeyModifier::command}}});
    EXPECT_EQ(pressesThatFire(Qt::Key_J), 1);
    m_center.restoreDefaults();
    EXPECT_EQ(pressesThatFire(Qt::Key_J), 0);
    EXPECT_EQ(pressesThatFire(Qt::Key_B), 1);
    EXPECT_EQ(told, 3);
}

TEST_F(ShortcutCenterTest, FiringFromAnotherThreadArrivesOnTheMainThread)
{
    watch(AppCommandEvents::newNote);
    std::thread([&] { m_center.fire(postable<AppCommandEvents::newNote>()); }).join();
    EXPECT_EQ(m_posted, QStringList());
    QCoreApplication::processEvents();
    EXPECT_EQ(m_posted, QStringList{u"NewNote"_s});
}

class ShortcutRecordingTest : public ShortcutCenterTest {
protected:
    ShortcutRecordingTest()
    {
        m_observations.push_back(m_test.notifications.observe(
            ShortcutRecordingState::capturePreview,
            [this](const ShortcutCapturePreview& preview) { m_previews.append(preview.display); }));
        m_observations.push_back(m_test.notifications.observe(
            ShortcutRecordingState::captureCompleted,
            [this](const ShortcutCapture& capture) { m_captures.append(capture); }));
        watch(ShortcutRecordingState::captureCancelled);
        watch(EditorFormatNotifications::italic);
        m_text.setFocus();
    }

    QStringList m_previews;
    QList<ShortcutCapture> m_captures;
};

TEST_F(ShortcutRecordingTest, TakesTheFirstKeyWithAModifier)
{
    m_center.recording().begin(ShortcutAction::bold);
    press(Qt::Key_J); // refused, the recording goes on
    EXPECT_TRUE(m_center.recording().isActive());
    press(Qt::Key_J, Qt::ControlModifier | Qt::AltModifier);
    EXPECT_EQ(m_text.toPlainText(), QString());
    EXPECT_EQ(m_captures, QList{(ShortcutCapture{ShortcutAction::bold,
                                                 {38, KeyModifier::command | KeyModifier::option},
                                                 std::nullopt})});
    EXPECT_EQ(m_previews.front(), u"J"_s);
    EXPECT_EQ(m_previews.back(), u"⌥ ⌘ J"_s);
    EXPECT_FALSE(m_center.recording().isActive());
    press(Qt::Key_J);
    EXPECT_EQ(m_text.toPlainText(), u"j"_s);
}

TEST_F(ShortcutRecordingTest, ReportsTheFirstConflictByKeysInForce)
{
    struct Row {
        const char* name;
        Qt::Key key;
        std::optional<ShortcutAction> conflict;
    };
    m_center.setShortcut(ShortcutAction::underline, {38, KeyModifier::command});
    const Row rows[] = {
        {"a default of another action", Qt::Key_I, ShortcutAction::italic},
        {"an override of another action", Qt::Key_J, ShortcutAction::underline},
        {"a default that was given up", Qt::Key_U, std::nullopt},
        {"its own key", Qt::Key_B, std::nullopt},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        m_captures.clear();
        m_center.recording().begin(ShortcutAction::bold);
        press(row.key, Qt::ControlModifier);
        ASSERT_EQ(m_captures.size(), 1);
        EXPECT_EQ(m_captures.front().conflict, row.conflict);
    }
    EXPECT_EQ(m_posted, QStringList()) << "a recorded key does nothing else";
}

TEST_F(ShortcutRecordingTest, EscapeCancelsAndModifiersAloneOnlyShow)
{
    m_center.recording().begin(ShortcutAction::bold);
    QTest::keyPress(m_window.windowHandle(), Qt::Key_Control);
    EXPECT_EQ(m_previews, QStringList{u"⌘"_s});
    QTest::keyRelease(m_window.windowHandle(), Qt::Key_Control);
    EXPECT_EQ(m_previews.back(), QString());
    press(Qt::Key_Escape, Qt::ControlModifier);
    EXPECT_EQ(m_posted, QStringList{u"ShortcutRecording.CaptureCancelled"_s});
    EXPECT_TRUE(m_captures.isEmpty());
    EXPECT_FALSE(m_center.recording().isActive());
    EXPECT_EQ(m_center.bindings().shortcut(ShortcutAction::bold),
              defaultShortcut(ShortcutAction::bold));
}

TEST(AppUndoRedoRouter, TakesTheFirstPlaceThatHasSomethingToDo)
{
    QPlainTextEdit document;
    QLineEdit field;
    QWidget neither;
    const AppUndoRedoRouter router({[] { return std::optional<UndoTarget>(); },
                                    [&] { return undoTargetOf(&document); },
                                    [&] { return undoTargetOf(&neither); },
                                    [&] {
                                        return undoTargetOf(&field);
                                    }});
    EXPECT_FALSE(router.perform(Direction::Undo));
    field.insert(u"field"_s);
    EXPECT_TRUE(router.canPerform(Direction::Undo));
    EXPECT_FALSE(router.canPerform(Direction::Redo));
    document.insertPlainText(u"document"_s);
    EXPECT_TRUE(router.perform(Direction::Undo));
    EXPECT_EQ(document.toPlainText(), QString());
    EXPECT_EQ(field.text(), u"field"_s);
    EXPECT_TRUE(router.perform(Direction::Undo));
    EXPECT_EQ(field.text(), QString());
    EXPECT_TRUE(router.perform(Direction::Redo));
    EXPECT_EQ(document.toPlainText(), u"document"_s);
    document.setReadOnly(true);
    EXPECT_FALSE(router.perform(Direction::Undo));
}

} // namespace
} // namespace orvane
