// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// The main job by somebody who has no mouse, from an empty home on.
#include "ShellFixture.h"
#include "editor/pane/EditorPaneView.h"
#include "editor/view/EditorView.h"
#include "shell/binder/BinderTreeView.h"

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

class KeyboardJobTest : public ShellTest {
protected:
    static QString focused()
    {
        const QWidget* widget = QApplication::focusWidget();
        return widget ? widget->accessibleName() + widget->property("text").toString() : QString();
    }
    void runFromPalette(const QString& words)
    {
        m_hand->press(Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
        ASSERT_TRUE(window().sheets().topSheet());
        m_hand->type(words);
        m_hand->press(Qt::Key_Return);
    }
};

TEST_F(KeyboardJobTest, FromTheFirstStartToAFormattedNoteInAFolder)
{
    start();
    ASSERT_EQ(sheetTitle(), u"Welcome to OrvaneWorkspace"_s);
    m_hand->press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(focused(), u"Blank Project"_s);
    m_hand->press(Qt::Key_Return);
    ASSERT_EQ(sheetTitle(), u"New Project"_s);
    m_hand->type(u"Tidewater"_s);
    m_hand->press(Qt::Key_Return);
    const auto offered = [] {
        QWidget* active = QApplication::activeWindow();
        return active && active->objectName() == u"iconsAndTitles"_s ? active : nullptr;
    };
    ASSERT_TRUE(TourHand::waitFor([&] { return offered(); }));
    EXPECT_EQ(focused(), u"Done"_s);
    TourHand(*offered()).press(Qt::Key_Return);
    ASSERT_TRUE(TourHand::waitFor([this] { return window().isActiveWindow(); }));
    EXPECT_EQ(focused(), u"New Note"_s) << "where a new project begins";

    m_hand->press(Qt::Key_Return);
    ASSERT_EQ(state().notes().size(), 1);
    const QUuid note = state().notes().records().first()->id;
    m_hand->type(u"Low water"_s);
    m_hand->press(Qt::Key_Return);
    m_hand->type(u"Mara counts the posts"_s);
    EditorPaneView& pane = window().editorPane();
    EXPECT_TRUE(pane.textView().hasFocus());

    m_hand->press(Qt::Key_Left, Qt::ControlModifier | Qt::ShiftModifier);
    m_hand->press(Qt::Key_B, Qt::ControlModifier);
    EXPECT_EQ(pane.session().mode(), EditorMode::plainText);
    m_hand->press(Qt::Key_F6);
    EXPECT_EQ(focused(), u"Make This Note Rich Text"_s);
    m_hand->press(Qt::Key_Return);
    EXPECT_EQ(pane.session().mode(), EditorMode::richText);
    EXPECT_TRUE(pane.textView().hasFocus());
    EXPECT_EQ(pane.textView().selection().range(), (TextRange{16, 5}));

    runFromPalette(u"New Folder"_s);
    ASSERT_EQ(sheetTitle(), u"New Folder"_s);
    m_hand->type(u"Manuscript"_s);
    m_hand->press(Qt::Key_Return);
    const QUuid folder = state().order().rootFolderOrder.value(0);
    ASSERT_EQ(state().folder(folder)->name, u"Manuscript"_s);
    m_hand->press(Qt::Key_B, Qt::ControlModifier | Qt::AltModifier);
    m_hand->press(Qt::Key_Down);
    EXPECT_EQ(state().selection().selectedNoteID(), note);
    runFromPalette(u"Move To"_s);
    EXPECT_TRUE(sheetTitle().startsWith(u"Move"_s)) << sheetTitle().toStdString();
    m_hand->type(u"manu"_s);
    m_hand->press(Qt::Key_Return);
    EXPECT_EQ(state().note(note)->folderID, folder);
    m_hand->press(Qt::Key_Q, Qt::ControlModifier);
    quit();

    start();
    // A key right after a question comes up doesn't answer it.
    const auto aMomentLater = [this] {
        TourHand::waitFor([] { return false; }, std::chrono::milliseconds(400));
        m_hand->press(Qt::Key_Return);
    };
    EXPECT_TRUE(answering([&] { m_hand->press(Qt::Key_Return); }, aMomentLater));
    ASSERT_TRUE(state().note(note));
    EXPECT_EQ(state().note(note)->folderID, folder);
    EXPECT_EQ(state().note(note)->body, u"Mara counts the posts"_s);
    m_hand->press(Qt::Key_B, Qt::ControlModifier | Qt::AltModifier);
    auto* tree = find<BinderTreeView>();
    ASSERT_TRUE(tree->hasFocus());
    m_hand->press(Qt::Key_Home);
    EXPECT_EQ(tree->currentIndex().data().toString(), u"Manuscript"_s);
    m_hand->press(Qt::Key_Down);
    EXPECT_EQ(tree->currentIndex().data().toString(), u"Low water"_s);
    m_hand->press(Qt::Key_Return);
    EXPECT_TRUE(window().editorPane().textView().hasFocus());
    const auto text = window().editorPane().session().gateway().store().attributedText({16, 5});
    EXPECT_GE(text.characterStyle(0)->font->weight, 600) << "the bold word";
}

} // namespace
} // namespace orvane
