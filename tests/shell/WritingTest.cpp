// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "ShellFixture.h"
#include "core/records/InternalNoteLink.h"
#include "editor/pane/EditorPaneView.h"
#include "editor/view/EditorView.h"
#include "shell/sheets/LinkSheet.h"
#include "shell/window/TypingAside.h"
#include "text/store/TextStore.h"

#include <QClipboard>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QLabel>
#include <QLineEdit>
#include <QScopedValueRollback>
#include <QTest>
#include <QTimer>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

/// What is done with the selection of a rich note, by keys.
class WritingTest : public ShellTest {
protected:
    WritingTest()
    {
        QGuiApplication::clipboard()->clear();
        dismissWelcome();
        start();
        EXPECT_TRUE(state().projectSession().createProject(u"Tides"_s, {}));
        survey = *state().createNote(u"Survey"_s, {});
        note = *state().createNote(u"see here"_s, {});
        session().setMode(EditorMode::richText);
        window().editorPane().focusText();
        TourHand::settle();
    }
    EditorSession& session() { return window().editorPane().session(); }
    void openSheet() { m_hand->press(Qt::Key_K, Qt::ControlModifier); }
    QString linkAt(qsizetype position)
    {
        return session().gateway().store().characterStyle(position)->link;
    }
    QUuid survey;
    QUuid note;
};

TEST_F(WritingTest, MakesChangesAndTakesALink)
{
    m_hand->press(Qt::Key_End, Qt::ControlModifier);
    m_hand->press(Qt::Key_Left, Qt::ControlModifier | Qt::ShiftModifier);
    openSheet();
    ASSERT_EQ(sheetTitle(), u"Insert Link"_s);
    EXPECT_FALSE(button(u"Insert Link"_s)->isEnabled());
    EXPECT_EQ(button(u"Remove Link"_s), nullptr);
    m_hand->type(u"nowhere"_s);
    m_hand->press(Qt::Key_Return);
    ASSERT_EQ(sheetTitle(), u"Insert Link"_s) << "what can't be opened is refused";
    EXPECT_EQ(linkAt(5), QString());
    m_hand->press(Qt::Key_A, Qt::ControlModifier);
    m_hand->type(u"example.org/tides"_s);
    m_hand->press(Qt::Key_Return);
    EXPECT_EQ(sheetTitle(), QString());
    EXPECT_EQ(linkAt(5), u"https://example.org/tides"_s);
    EXPECT_TRUE(window().editorPane().textView().hasFocus());

    m_hand->press(Qt::Key_Right);
    openSheet();
    ASSERT_EQ(sheetTitle(), u"Edit Link"_s);
    auto* target = find<QComboBox>(u"Leads to"_s);
    ASSERT_TRUE(target);
    target->setFocus();
    m_hand->press(Qt::Key_Down);
    auto* notes = find<QComboBox>(u"Note"_s);
    ASSERT_TRUE(notes);
    EXPECT_EQ(notes->count(), 1) << "not the note itself";
    press(u"Change Link"_s);
    EXPECT_EQ(linkAt(5), InternalNoteLink::link(survey));

    openSheet();
    ASSERT_TRUE(find<QComboBox>(u"Note"_s)) << "shows what it leads to";
    press(u"Remove Link"_s);
    EXPECT_EQ(linkAt(5), QString());
    EXPECT_EQ(window().editorPane().textView().plainText(), u"see here"_s);
    for (int i = 0; i < 2; ++i)
        m_hand->press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(linkAt(5), u"https://example.org/tides"_s);
}

TEST_F(WritingTest, OffersTheAddressOnTheClipboardAndLeavesPlainNotesAlone)
{
    QGuiApplication::clipboard()->setText(u"https://example.org/gauge"_s);
    m_hand->press(Qt::Key_End, Qt::ControlModifier);
    openSheet();
    m_hand->press(Qt::Key_Return);
    EXPECT_EQ(window().editorPane().textView().plainText(), u"see herehttps://example.org/gauge"_s);
    EXPECT_EQ(linkAt(9), u"https://example.org/gauge"_s);
    m_hand->type(u"!"_s);
    EXPECT_EQ(linkAt(session().gateway().store().length() - 1), QString());

    session().setMode(EditorMode::plainText);
    QString asked;
    EXPECT_TRUE(answering([&] { openSheet(); }, [&] { asked = sheetTitle(); }));
    EXPECT_EQ(asked, u"Rich Text Required"_s);
}

TEST_F(WritingTest, TheSelectionBecomesANote)
{
    m_hand->press(Qt::Key_A, Qt::ControlModifier);
    session().gateway().performUndoableDocumentEdit(u"Bold"_s, [](DocumentEditor& editor) {
        editor.modifyCharacterStyles({0, 3}, [](CharacterStyle& s) { s.font->weight = 700; });
    });
    const size_t before = state().notes().size();
    // The menu runs an event loop of its own.
    QTimer::singleShot(0, &window(), [this] {
        ASSERT_TRUE(QApplication::activePopupWidget());
        m_hand->press(Qt::Key_Down);
        m_hand->press(Qt::Key_Return);
    });
    EditorView& view = window().editorPane().textView();
    QContextMenuEvent byKey(QContextMenuEvent::Keyboard, {}, view.mapToGlobal(QPoint(9, 9)));
    QApplication::sendEvent(&view, &byKey);
    ASSERT_EQ(state().notes().size(), before + 1);
    const NoteRecord& made = *state().note(*state().selection().selectedNoteID());
    EXPECT_NE(made.id, note);
    EXPECT_EQ(made.title, u"see here"_s);
    EXPECT_EQ(made.body.readOrNothing(), u"see here"_s);
    EXPECT_TRUE(session().gateway().store().characterStyle(1)->font->isBold());
    EXPECT_FALSE(session().gateway().store().characterStyle(5)->font->isBold());
}

TEST_F(WritingTest, WhatIsTypedWhileAQuestionComesAnswersNothingAndIsKept)
{
    session().gateway().performUndoableDocumentEdit(u"Bold"_s, [](DocumentEditor& editor) {
        editor.modifyCharacterStyles({0, 3},
                                     [](CharacterStyle& style) { style.font->weight = 700; });
    });
    session().setMode(EditorMode::plainText);
    m_hand->press(Qt::Key_End, Qt::ControlModifier);
    const QScopedValueRollback pause(TypingAside::pause, 200);
    QTimer::singleShot(0, [&] {
        QTest::qWait(1'500);
        m_hand->press(Qt::Key_Return);
    });
    m_hand->type(u"q"_s);
    TourHand::settle();
    EXPECT_EQ(sheetTitle(), QString()) << "after a pause the keys answer";
    EXPECT_EQ(session().gateway().store().text(), u"see here"_s);

    TypingAside::pause = 60'000;
    QTimer::singleShot(0, [&] {
        EXPECT_EQ(sheetTitle(), u"Edit Without Formatting?"_s);
        m_hand->type(u"nd thre "_s);
        m_hand->press(Qt::Key_Backspace);
        m_hand->press(Qt::Key_Backspace);
        m_hand->type(u"e."_s);
        m_hand->press(Qt::Key_Return);
        m_hand->press(Qt::Key_Tab);
        m_hand->type(u"x"_s);
        EXPECT_EQ(sheetTitle(), u"Edit Without Formatting?"_s);
        press(u"Edit"_s);
    });
    m_hand->type(u"a"_s);
    TourHand::settle();
    EXPECT_EQ(sheetTitle(), QString());
    EXPECT_EQ(session().gateway().store().text(), u"see hereand thre.\nx"_s);
    EXPECT_TRUE(window().editorPane().textView().hasFocus());
}

} // namespace
} // namespace orvane
