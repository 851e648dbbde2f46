// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "ShellFixture.h"
#include "editor/page/PageRuler.h"
#include "editor/pane/EditorPaneView.h"
#include "editor/view/EditorView.h"
#include "shell/binder/BinderTreeView.h"
#include "shell/commands/AppMenus.h"
#include "shell/toolbar/MainToolbar.h"
#include "text/store/TextStore.h"

#include <QLabel>
#include <QMenu>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

/// The page of a rich note in the whole program, by the keys and the menu that people have.
class PageCommandsTest : public ShellTest {
protected:
    void openNote(const QString& text, EditorMode mode)
    {
        dismissWelcome();
        start();
        ASSERT_TRUE(state().projectSession().createProject(u"Novel"_s, {}));
        state().createNote(text, {});
        pane().session().setMode(mode);
        pane().focusText();
        TourHand::settle();
    }
    EditorPaneView& pane() { return window().editorPane(); }
    /// The item of the View menu; null where it has none.
    QAction* inViewMenu(const QString& id)
    {
        m_menu.reset(makeCommandMenu(CommandMenu::View, window().commands(), nullptr));
        emit m_menu->aboutToShow();
        return m_menu->findChild<QAction*>(id);
    }

    std::unique_ptr<QMenu> m_menu;
};

TEST_F(PageCommandsTest, PageViewAndRulerByKeyWithTheirMarksInTheMenu)
{
    openNote(u"Low water\nSeven posts."_s, EditorMode::richText);
    const struct {
        const char* id;
        Qt::KeyboardModifiers modifiers;
        std::function<bool()> isShown;
    } rows[] = {
        {"togglePageView", Qt::ControlModifier | Qt::ShiftModifier,
         [this] {
             return pane().textView().textGeometry().pageWidth > 0;
         }},
        {"toggleRuler", Qt::ControlModifier,
         [this] {
             return find<PageRuler>() != nullptr;
         }},
    };
    for (const auto& row : rows) {
        const QString id = QString::fromLatin1(row.id);
        for (const bool on : {true, false}) {
            m_hand->press(Qt::Key_R, row.modifiers);
            EXPECT_EQ(row.isShown(), on) << row.id;
            ASSERT_TRUE(inViewMenu(id)) << row.id;
            EXPECT_TRUE(inViewMenu(id)->isCheckable()) << row.id;
            EXPECT_EQ(inViewMenu(id)->isChecked(), on) << row.id;
        }
    }
    pane().session().setMode(EditorMode::markdown);
    EXPECT_FALSE(inViewMenu(u"toggleRuler"_s)->isEnabled());
    EXPECT_TRUE(inViewMenu(u"togglePageView"_s)->isEnabled());
}

TEST_F(PageCommandsTest, ZoomsByKeyFromWhereverTheKeyboardIs)
{
    openNote(u"Low water\nSeven posts."_s, EditorMode::plainText);
    EXPECT_TRUE(inViewMenu(u"zoomIn"_s));
    m_hand->press(Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_DOUBLE_EQ(pane().textView().zoom(), 1.5);
    pane().focusTitle();
    m_hand->press(Qt::Key_Minus, Qt::ControlModifier);
    m_hand->press(Qt::Key_Minus, Qt::ControlModifier);
    EXPECT_DOUBLE_EQ(pane().textView().zoom(), 1.1);
    find<BinderTreeView>()->setFocus();
    m_hand->press(Qt::Key_0, Qt::ControlModifier);
    EXPECT_DOUBLE_EQ(pane().textView().zoom(), 1.25);
}

TEST_F(PageCommandsTest, AFormattingKeyInAPlainNoteMakesItRichAndActs)
{
    openNote(u"Low water\nSeven posts."_s, EditorMode::plainText);
    pane().textView().setSelection({0, 3});
    m_hand->press(Qt::Key_B, Qt::ControlModifier);
    QAbstractButton* make = button(u"Make This Note Rich Text"_s);
    ASSERT_TRUE(make);
    m_hand->click(*make);
    EXPECT_EQ(pane().session().mode(), EditorMode::richText);
    EXPECT_TRUE(pane().textView().store().characterStyle(1)->font->isBold());
}

TEST_F(PageCommandsTest, TheNameIsInTheToolbarWhileTheTitleIsOutOfSight)
{
    openNote(u"Low water\nSeven posts."_s, EditorMode::plainText);
    const auto isNamed = [this] {
        for (auto* label : find<MainToolbar>()->findChildren<QLabel*>()) {
            if (label->isVisible() && label->text() == u"Low water")
                return true;
        }
        return false;
    };
    pane().textView().selectAll();
    pane().textView().gateway().type(u"a line\n"_s.repeated(200));
    TourHand::settle();
    pane().focusTitle();
    m_hand->type(u"Low water"_s);
    pane().focusText();
    m_hand->press(Qt::Key_End, Qt::ControlModifier);
    TourHand::settle();
    EXPECT_TRUE(isNamed());
    m_hand->press(Qt::Key_Home, Qt::ControlModifier);
    TourHand::settle();
    EXPECT_FALSE(isNamed());
}

TEST_F(PageCommandsTest, APageBreakSurvivesTheRestart)
{
    for (const EditorMode mode : {EditorMode::richText, EditorMode::plainText}) {
        openNote(u"Low water\nSeven"_s, mode);
        m_hand->press(Qt::Key_End, Qt::ControlModifier);
        m_hand->press(Qt::Key_Return, Qt::ControlModifier);
        m_hand->type(u"posts"_s);
        const QString text = pane().textView().plainText();
        ASSERT_TRUE(text.endsWith(u"Seven\n\f\nposts")) << text.toStdString();
        const QUuid project = state().projectSession().currentProject()->id;
        const QUuid note = *state().selection().selectedNoteID();
        quit();
        start();
        state().projectSession().openProject(project, false);
        state().selection().selectNote(note);
        TourHand::settle();
        EXPECT_EQ(pane().session().mode(), mode);
        EXPECT_EQ(pane().textView().plainText(), text);
        EXPECT_EQ(state().note(note)->body.readOrNothing(), text);
        quit();
    }
}

} // namespace
} // namespace orvane
