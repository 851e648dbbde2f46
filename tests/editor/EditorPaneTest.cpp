// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "SelectedNoteFixture.h"
#include "appearance/AppearanceTokens.h"
#include "appearance/Contrast.h"
#include "core/records/InternalNoteLink.h"
#include "core/state/SessionKeys.h"
#include "editor/pane/EditorPaneView.h"
#include "editor/pane/StatusStrip.h"
#include "editor/view/EditorView.h"
#include "support/TestServices.h"
#include "text/layout/ParagraphLayout.h"
#include "text/store/TextStore.h"

#include <QApplication>
#include <QClipboard>
#include <QDesktopServices>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QToolButton>
#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

/// The pane as a window of its own, used by keys and mouse.
struct EditorPaneTest : ::testing::Test {
    TestServices test;
    AppState app{test.services()};
    QUuid project = *app.projectSession().createProject(u"P"_s, {});
    QUuid other = *app.createNote(u"Other note\nsecond"_s, {});
    QUuid note = *app.createNote(u"first line"_s, {});
    Look look{signatureDarkTokens()};
    std::unique_ptr<EditorPaneView> pane = paneOfSelection(app, look);

    EditorPaneTest()
    {
        pane->resize(900, 600);
        pane->show();
        QApplication::setActiveWindow(pane.get());
        pane->focusText();
        settle();
    }
    static void settle() { QApplication::processEvents(); }
    [[nodiscard]] EditorView& view() const { return pane->textView(); }
    void type(const QString& text) { QTest::keyClicks(&view(), text); }
    [[nodiscard]] QString body() const { return app.note(note)->body.readOrNothing(); }
    [[nodiscard]] QToolButton& button(const QString& name) const
    {
        for (auto* found : pane->findChildren<QToolButton*>()) {
            if (found->accessibleName().startsWith(name))
                return *found;
        }
        ADD_FAILURE() << qUtf8Printable(name);
        std::abort();
    }
    void choose(EditorMode mode)
    {
        auto* menu = button(u"Mode of the note"_s).findChild<QMenu*>();
        for (QAction* action : menu->actions()) {
            if (action->text().startsWith(rawValue(mode)))
                action->trigger();
        }
        settle();
    }
    [[nodiscard]] bool shows(const QString& text) const
    {
        for (const auto* label : pane->findChildren<QLabel*>()) {
            if (label->isVisible() && label->text() == text)
                return true;
        }
        return false;
    }
    void click(qsizetype position)
    {
        const QRectF place = view().toViewport(view().layout().caretRect(int(position)));
        QTest::mouseClick(view().viewport(), Qt::LeftButton, {},
                          place.center().toPoint() + QPoint(3, 0));
    }
};

TEST_F(EditorPaneTest, WhatIsTypedIsStoredInEachModeAndCounted)
{
    QString expected = u"first line"_s;
    for (const EditorMode mode :
         {EditorMode::richText, EditorMode::markdown, EditorMode::plainText}) {
        choose(mode);
        EXPECT_EQ(button(u"Mode of the note"_s).text(), rawValue(mode));
        EXPECT_EQ(view().formatting(),
                  mode == EditorMode::richText ? TextFormatting::rich : TextFormatting::plain);
        QTest::keyClick(&view(), Qt::Key_End, Qt::ControlModifier);
        type(u" word"_s);
        expected += u" word"_s;
        QTest::keyClick(&view(), Qt::Key_Return);
        expected += u'\n';
        test.clock.advance(1500ms);
        EXPECT_EQ(body(), expected);
        EXPECT_EQ(app.note(note)->richContentPayload.has_value(), mode == EditorMode::richText);
    }
    QTest::qWait(200);
    EXPECT_TRUE(shows(u"5 words"_s));
    EXPECT_TRUE(test.questions.asked.isEmpty()) << "no formatting was there to lose";
}

TEST_F(EditorPaneTest, TheViewFollowsNotesModesAndTheirAbsence)
{
    int before = 0;
    int after = 0;
    QObject::connect(pane.get(), &EditorPaneView::textAboutToChange, [&] { ++before; });
    QObject::connect(pane.get(), &EditorPaneView::textChanged, [&] {
        ++after;
        EXPECT_EQ(&view().gateway(), &pane->session().gateway());
    });
    app.selection().selectNote(other);
    EXPECT_EQ(view().plainText(), u"Other note\nsecond"_s);
    choose(EditorMode::markdown);
    EXPECT_EQ(after, 2);
    EXPECT_EQ(before, 2);

    pane->setMakeEmptyState([](QWidget* parent) { return new QLabel(u"Nothing here"_s, parent); });
    app.selection().selectProjectRoot();
    settle();
    EXPECT_TRUE(shows(u"Nothing here"_s)) << "what the pane was given for it";
    EXPECT_FALSE(button(u"Mode of the note"_s).isVisible());
    EXPECT_TRUE(view().store().isEmpty());

    app.selection().selectNote(note);
    type(u"x"_s);
    pane->focusText();
    EXPECT_EQ(view().plainText(), u"xfirst line"_s);
    const QColor ink = view().look().text.text;
    (void)app.moveNoteToTrash(note);
    app.selection().selectNote(note);
    EXPECT_EQ(view().look().text.text, blended(ink, 0.78, view().look().text.page));
    app.selection().selectNote(other);
    EXPECT_EQ(view().look().text.text, ink);
    app.projectSession().closeProject();
    EXPECT_TRUE(view().store().isEmpty());
}

TEST_F(EditorPaneTest, APersonComesBackToTheirPlace)
{
    // A text that is seen as a whole stays at its top.
    view().setSelection(TextSelection::caret(10));
    app.selection().selectNote(other);
    app.selection().selectNote(note);
    EXPECT_EQ(view().verticalScrollBar()->value(), 0);

    QTest::keyClick(&view(), Qt::Key_End, Qt::ControlModifier);
    type(QString(400, u'\n').replace(u'\n', u"line "_s));
    for (int i = 0; i < 40; ++i)
        QTest::keyClick(&view(), Qt::Key_Return);
    settle();
    const auto caretTop = [this] {
        return qRound(view().caretRect().top());
    };
    const int before = caretTop();
    ASSERT_GT(view().verticalScrollBar()->value(), 0);
    choose(EditorMode::richText);
    EXPECT_NEAR(caretTop(), before, 6) << "fonts of the modes differ by some pixels";
    app.selection().selectNote(other);
    app.selection().selectNote(note);
    EXPECT_GT(caretTop(), 0);
    EXPECT_LT(caretTop(), view().viewport()->height() / 2);
}

TEST_F(EditorPaneTest, ATextComesBackWithItsCaretInSightAndFromItsTopWhereItFits)
{
    choose(EditorMode::plainText);
    for (const int lines : {5, 400}) {
        SCOPED_TRACE(lines);
        view().selectAll();
        view().gateway().type(u"# a line\n"_s.repeated(lines));
        for (const auto& comeBack :
             {std::function<void()>([&] {
                  app.selection().selectNote(other);
                  app.selection().selectNote(note);
              }),
              std::function<void()>([&] { choose(EditorMode::richText); }),
              std::function<void()>([&] { choose(EditorMode::markdown); })}) {
            comeBack();
            settle();
            const QRectF caret = view().caretRect();
            EXPECT_TRUE(caret.top() >= 0 && caret.bottom() <= view().viewport()->height())
                << caret.top();
            EXPECT_EQ(view().textOrigin().y() >= 0, lines < 100);
        }
        choose(EditorMode::plainText);
    }
}

TEST_F(EditorPaneTest, ALockKeepsTheWidth)
{
    QTest::mouseClick(&button(u"Lock editor width"_s), Qt::LeftButton);
    EXPECT_TRUE(editorWidthLockSetting.read(test.defaults));
    editorWidthLockSetting.write(test.defaults, false);
    EXPECT_EQ(button(u"Lock editor width"_s).toolTip(), u"Lock editor width"_s);
    QTest::mouseClick(&button(u"Lock editor width"_s), Qt::LeftButton);
    EXPECT_EQ(button(u"Unlock editor width"_s).toolTip(), u"Unlock editor width"_s);
}

TEST_F(EditorPaneTest, TheSelectionBecomesALinkThatOpensItsNote)
{
    const auto link = [this] {
        test.notifications.post(AppCommandEvents::linkSelectionToNote, CommandTarget{});
    };
    view().setSelection({0, 5});
    link();
    EXPECT_EQ(test.questions.asked.takeLast().title, u"Rich Text Required"_s);

    choose(EditorMode::richText);
    view().setSelection({0, 5});
    test.questions.answers = {{0, false, 0}};
    link();
    const Question asked = test.questions.asked.takeLast();
    EXPECT_EQ(asked.title, u"Link Selection to Note"_s);
    EXPECT_EQ(asked.choices, QStringList{u"Other note"_s});
    EXPECT_EQ(view().store().characterStyle(4)->link, InternalNoteLink::link(other));
    EXPECT_EQ(view().store().characterStyle(5)->link, QString());

    view().setSelection(TextSelection::caret(7));
    settle();
    click(2);
    EXPECT_EQ(app.selection().selectedNoteID(), other);
    app.selection().selectNote(note);
    EXPECT_EQ(pane->session().gateway().undoName(), u"Link Selection to Note"_s);

    app.eraseNotePermanently(other);
    settle();
    const int beeps = test.beeper.count;
    click(2);
    EXPECT_EQ(app.selection().selectedNoteID(), note);
    EXPECT_EQ(test.beeper.count, beeps + 1);
    view().setSelection({0, 5});
    link();
    EXPECT_EQ(test.questions.asked.takeLast().title, u"No Target Notes"_s);
}

TEST_F(EditorPaneTest, ALongTextIsStoredBeforeItIsLaidOut)
{
    const QString pasted = u"x\n"_s + QString(120'000, u'y') + u"\nz"_s;
    bool wasStored = false;
    const auto stored =
        QObject::connect(&app, &AppState::notebookChanged, [&](const NotebookChange& change) {
            wasStored = change.notes.contains(note) && body().contains(pasted);
            const QTextBlock block = view().store().blockAt(view().store().length() / 2);
            EXPECT_GT(block.length(), 120'000);
            EXPECT_FALSE(view().layout().isLaidOut(block));
        });
    for (const bool selects : {false, true}) {
        wasStored = false;
        view().setSelection({0, selects ? view().store().length() : 0});
        QGuiApplication::clipboard()->setText(pasted);
        view().paste();
        EXPECT_TRUE(wasStored);
    }
    QObject::disconnect(stored);
    const auto slow = [&] {
        return SessionKeys::readUuids(test.defaults, SessionKeys::slowNoteIDs);
    };
    EXPECT_EQ(slow(), QList<QUuid>{note});
    view().viewport()->repaint();
    settle();
    EXPECT_EQ(slow(), QList<QUuid>());
}

TEST_F(EditorPaneTest, TheStripSaysWhatWasNotTaken)
{
    const auto says = [&] {
        const auto labels = pane->findChild<StatusStrip*>()->findChildren<QLabel*>();
        return std::any_of(labels.begin(), labels.end(),
                           [](const QLabel* label) { return label->text() == u"Not saved"_s; });
    };
    type(u"x"_s);
    test.licence.setPolicy([] { return false; });
    test.notifications.post(AppCommandEvents::saveDocument);
    EXPECT_TRUE(says());
    test.licence.setPolicy({});
    test.notifications.post(AppCommandEvents::saveDocument);
    EXPECT_FALSE(says());
}

} // namespace
} // namespace orvane
