// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// Goes through each window by the keyboard alone, as a person without a mouse would: is every
// control reached, does it show that it has the keyboard, and does it say what it is.
#include "ShellFixture.h"
#include "editor/pane/EditorPaneView.h"
#include "editor/view/EditorView.h"
#include "shell/binder/BinderTreeView.h"
#include "shell/binder/IconsAndTitlesWindow.h"
#include "shell/inspector/AliasesSheet.h"
#include "shell/inspector/VersionListView.h"

#include <QAccessible>
#include <QButtonGroup>
#include <QRadioButton>
#include <QScrollBar>
#include <QSet>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

Question everyPart()
{
    return {.title = u"Which one?"_s,
            .text = u"One of them stays."_s,
            .buttons = {u"Take It"_s, u"Cancel"_s},
            .defaultButton = 0,
            .suppression = u"Don't ask again"_s,
            .choices = {u"One"_s, u"Two"_s},
            .tone = Question::Tone::Destructive};
}

bool isControl(const QWidget& widget)
{
    return widget.isVisible() && widget.isEnabled() && !widget.focusProxy() &&
           (widget.focusPolicy() & Qt::TabFocus) != 0;
}

class KeyboardWalkTest : public ShellTest {
protected:
    void walk(const char* screen)
    {
        QWidget* sheet = window().sheets().topSheet();
        walk(window(), sheet ? *sheet : static_cast<QWidget&>(window()), *m_hand, screen);
    }

    /// All of `part`, which stands in `window`.
    static void walk(QWidget& window, QWidget& part, const TourHand& hand, const char* screen)
    {
        TourHand::settle();
        QList<QWidget*> controls;
        for (QWidget* each : part.findChildren<QWidget*>()) {
            if (isControl(*each) && each->window() == &window)
                controls.append(each);
        }
        ASSERT_FALSE(controls.isEmpty()) << screen;
        hand.press(Qt::Key_Tab); // from now on the focus is shown
        QSet<QWidget*> reached;
        QWidget* before = nullptr;
        QImage pictureBefore;
        for (qsizetype step = 0; step < controls.size() + 4; ++step) {
            QWidget* focus = QApplication::focusWidget();
            if (focus) {
                reached.insert(focus);
                EXPECT_TRUE(&part == focus || part.isAncestorOf(focus))
                    << screen << ": the keyboard left for " << describe(*focus);
            }
            const QImage picture = window.grab().toImage();
            if (before && before != focus && before->isVisible()) {
                EXPECT_TRUE(differs(picture, pictureBefore, *before))
                    << screen << ": no focus is seen on " << describe(*before);
            }
            before = focus;
            pictureBefore = picture;
            hand.press(Qt::Key_Tab);
            if (QApplication::focusWidget() == focus)
                hand.press(Qt::Key_F6); // a text takes Tab for itself
        }
        // What follows a text is reached the other way round.
        for (qsizetype step = 0; step < controls.size() + 4; ++step) {
            QWidget* focus = QApplication::focusWidget();
            reached.insert(focus);
            hand.press(Qt::Key_Backtab, Qt::ShiftModifier);
            if (QApplication::focusWidget() == focus)
                hand.press(Qt::Key_F6, Qt::ShiftModifier);
        }
        for (QWidget* control : controls) {
            EXPECT_TRUE(reached.contains(control) || isLeftToItsGroup(*control))
                << screen << ": no way by Tab to " << describe(*control);
            checkSaysWhatItIs(*control, screen);
        }
    }

    /// Of buttons of which one is chosen Tab reaches that one, arrows the others.
    static bool isLeftToItsGroup(const QWidget& widget)
    {
        const auto* button = qobject_cast<const QAbstractButton*>(&widget);
        if (!button || button->isChecked())
            return false;
        return qobject_cast<const QRadioButton*>(button) ||
               (button->group() && button->group()->exclusive());
    }

    static void checkSaysWhatItIs(QWidget& control, const char* screen)
    {
        const QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&control);
        ASSERT_NE(accessible, nullptr) << screen << ": " << describe(control);
        const auto role = accessible->role();
        EXPECT_TRUE(role != QAccessible::NoRole && role != QAccessible::Client &&
                    role != QAccessible::Window && role != QAccessible::Pane)
            << screen << ": no role for " << describe(control);
        EXPECT_FALSE(accessible->text(QAccessible::Name).isEmpty())
            << screen << ": no name for " << describe(control);
        EXPECT_TRUE(accessible->state().focusable || isLeftToItsGroup(control))
            << screen << ": " << describe(control);
    }

    static bool differs(const QImage& one, const QImage& other, const QWidget& widget)
    {
        const double ratio = one.devicePixelRatio();
        const QRect place(widget.mapTo(widget.window(), QPoint(-4, -4)),
                          widget.size() + QSize(8, 8));
        const QRect seen = QRect(place.topLeft() * ratio, place.size() * ratio) & one.rect();
        return one.copy(seen) != other.copy(seen);
    }

    static std::string describe(const QWidget& widget)
    {
        return std::string(widget.metaObject()->className()) + " “" +
               qPrintable(widget.accessibleName() + widget.property("text").toString()) + "” in " +
               (widget.parentWidget() ? widget.parentWidget()->metaObject()->className() : "");
    }
};

TEST_F(KeyboardWalkTest, EveryControlIsReachedAndSaysWhatItIs)
{
    start();
    walk("welcome");
    press(u"Read Guide"_s);
    walk("guide");
    m_hand->press(Qt::Key_Escape);
    m_hand->press(Qt::Key_Escape);
    walk("browser without projects");
    press(u"New Project"_s);
    walk("new project");
    m_hand->press(Qt::Key_Escape);
    const QUuid project = *state().projectSession().createProject(u"Tidewater"_s, {});
    walk("project without notes");
    press(u"New Folder"_s);
    walk("new folder");
    m_hand->press(Qt::Key_Escape);
    const QUuid folder = *state().createFolder(u"Manuscript"_s);
    const QUuid note = *state().createNote(u"Low water\nMara counts the posts."_s, {});
    state().updateNoteTags(note, {u"tide"_s, u"witness"_s});
    state().appendVersionSnapshot(note, u"Manual Save"_s);
    walk("note");
    m_hand->press(Qt::Key_F, Qt::ControlModifier);
    walk("find and replace");
    m_hand->press(Qt::Key_Escape);
    window().editorPane().session().setMode(EditorMode::richText);
    walk("rich note");
    window().editorPane().session().setMode(EditorMode::plainText);
    press(u"Versions"_s);
    walk("versions");
    auto* versions = find<VersionListView>();
    versions->setFocus(Qt::TabFocusReason);
    m_hand->press(Qt::Key_End);
    m_hand->press(Qt::Key_Return);
    EXPECT_TRUE(window().sheets().topSheet());
    walk("version");
    m_hand->press(Qt::Key_Escape);
    press(u"Details"_s);
    state().selection().selectFolder(folder);
    walk("folder");
    m_hand->press(Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
    walk("command palette");
    m_hand->press(Qt::Key_Escape);
    window().sheets().present(new AliasesSheet(state(), u"tide"_s, m_app->look()));
    walk("aliases");
    m_hand->press(Qt::Key_Escape);
    state().projectSession().presentProjectsBrowser();
    TourHand::settle();
    m_hand->press(Qt::Key_Escape); // the welcome, as long as it isn't answered
    walk("browser");
    EXPECT_TRUE(answering([&] { state().services().questions.ask(everyPart()); },
                          [&] { walk("question"); }));
    auto* icons = IconsAndTitlesWindow::open({TitledItem::Kind::Project, project}, state(),
                                             m_app->look(), &window());
    ASSERT_TRUE(TourHand::waitFor([icons] { return icons->isActiveWindow(); }));
    walk(*icons, *icons, TourHand(*icons), "icons and titles");
}

TEST_F(KeyboardWalkTest, F6GoesRoundThePanesAndTheBarIsOne)
{
    dismissWelcome();
    start();
    ASSERT_TRUE(state().projectSession().createProject(u"Tidewater"_s, {}));
    const QUuid note = *state().createNote(u"Low water\nMara counts."_s, {});
    state().updateNoteTags(note, {u"tide"_s});
    EditorPaneView& pane = window().editorPane();
    pane.session().setMode(EditorMode::richText);
    TourHand::settle();
    find<BinderTreeView>()->setFocus();
    const auto at = [&] {
        QWidget* focus = QApplication::focusWidget();
        return pane.formattingBar().isAncestorOf(focus) ? u"bar"_s
               : pane.isAncestorOf(focus)               ? u"text"_s
               : find<BinderTreeView>() == focus        ? u"binder"_s
                                                        : u"elsewhere"_s;
    };
    const QStringList order{u"text"_s,   u"bar"_s,  u"elsewhere"_s, u"elsewhere"_s,
                            u"binder"_s, u"text"_s, u"bar"_s};
    for (const QString& next : order) {
        m_hand->press(Qt::Key_F6);
        EXPECT_EQ(at(), next);
    }
    m_hand->press(Qt::Key_F6, Qt::ShiftModifier);
    EXPECT_EQ(at(), u"text"_s);
    EXPECT_TRUE(pane.textView().hasFocus()) << "not where the bar was left";
    pane.session().setMode(EditorMode::plainText);
    m_hand->press(Qt::Key_F6);
    EXPECT_EQ(at(), u"elsewhere"_s) << "plain text has no bar";
}

TEST_F(KeyboardWalkTest, WindowsSheetsAndBarsSayWhatTheyAre)
{
    dismissWelcome();
    start();
    ASSERT_TRUE(state().projectSession().createProject(u"Tidewater"_s, {}));
    (void)state().createNote(u"Low water"_s, {});
    TourHand::settle();
    const auto roleOf = [](QWidget* widget) {
        const auto* interface = QAccessible::queryAccessibleInterface(widget);
        return interface ? interface->role() : QAccessible::NoRole;
    };
    QMap<QString, QAccessible::Role> roles;
    for (QWidget* each : window().findChildren<QWidget*>())
        roles.insert(QString::fromLatin1(each->metaObject()->className()), roleOf(each));
    EXPECT_EQ(roleOf(&window()), QAccessible::Window);
    EXPECT_EQ(roles.value(u"orvane::MainToolbar"_s), QAccessible::ToolBar);
    EXPECT_EQ(roles.value(u"orvane::StatusStrip"_s), QAccessible::StatusBar);
    EXPECT_FALSE(roleOf(&window().editorPane().textView()) == QAccessible::NoRole);
    m_hand->press(Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
    auto* sheet = window().sheets().topSheet();
    ASSERT_NE(sheet, nullptr);
    EXPECT_EQ(roleOf(sheet), QAccessible::Dialog);
    const auto* interface = QAccessible::queryAccessibleInterface(sheet);
    EXPECT_TRUE(interface->state().modal);
    EXPECT_FALSE(interface->text(QAccessible::Name).isEmpty());
}

} // namespace
} // namespace orvane
