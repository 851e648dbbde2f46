// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "SelectedNoteFixture.h"
#include "appearance/AppearanceTokens.h"
#include "commands/EditorFormatNotifications.h"
#include "editor/find/FindStrip.h"
#include "editor/pane/EditorPaneView.h"
#include "editor/session/StoredText.h"
#include "editor/view/EditorView.h"
#include "editor/writing/WritingBehaviours.h"
#include "support/TestServices.h"
#include "text/lists/EditorListStyle.h"
#include "text/store/Graphemes.h"
#include "text/store/TextStore.h"

#include <QApplication>
#include <QClipboard>
#include <QInputMethodEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

#include <random>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

/// All tools at work on two notes in changing modes, by random events. After each, what is shown is
/// what is found; a note that one leaves is stored as it was seen.
class ToolsTogetherTest : public ::testing::TestWithParam<unsigned> {
protected:
    ToolsTogetherTest()
    {
        pane->resize(900, 600);
        pane->show();
        QApplication::setActiveWindow(pane.get());
        pane->focusText();
        QApplication::processEvents();
    }
    [[nodiscard]] EditorView& view() const { return pane->textView(); }
    int pick(int count) { return int(random() % unsigned(count)); }

    void key(QKeyCombination keys)
    {
        QTest::keyClick(&view(), keys.key(), keys.keyboardModifiers());
    }
    void commit(const QString& text)
    {
        QInputMethodEvent event;
        event.setCommitString(text);
        QApplication::sendEvent(&view(), &event);
    }
    void write()
    {
        const QStringList pieces{u"tide "_s,   u"**the** "_s,  u"1. "_s,      u"- "_s,
                                 u"`tide` "_s, u"☐ a "_s,      u"# "_s,       u"```\ntide\n"_s,
                                 u"שלום "_s,   u"👍🏽 "_s, u"👩\u200D👧"_s, u"e\u0301"_s};
        commit(pieces[pick(int(pieces.size()))]);
    }
    void press()
    {
        const QKeyCombination keys[] = {Qt::Key_Return,
                                        Qt::Key_Return,
                                        Qt::Key_Tab,
                                        Qt::Key_Backtab,
                                        Qt::Key_Backspace,
                                        Qt::Key_Delete,
                                        Qt::CTRL | Qt::Key_Z,
                                        Qt::CTRL | Qt::SHIFT | Qt::Key_Z,
                                        Qt::Key_Up,
                                        Qt::Key_Left,
                                        Qt::SHIFT | Qt::Key_Up,
                                        Qt::CTRL | Qt::Key_Home,
                                        Qt::CTRL | Qt::Key_End};
        key(keys[pick(int(std::size(keys)))]);
    }
    void find()
    {
        auto* strip = pane->findChild<FindStrip*>();
        const auto fields = strip->findChildren<QLineEdit*>();
        const QStringList queries{u"tide"_s, u"t"_s, u"👍"_s, u"ם"_s, QString()};
        switch (pick(4)) {
        case 0:
            test.notifications.post(AppCommandEvents::toggleDocumentFind);
            break;
        case 1:
            fields[0]->setText(queries[pick(int(queries.size()))]);
            break;
        case 2:
            strip->find(pick(2) ? FindDirection::forward : FindDirection::backward);
            break;
        default:
            fields[1]->setText(u"flood"_s);
            QTest::keyClick(fields[1], Qt::Key_Return);
        }
        pane->focusText();
    }
    void format()
    {
        namespace Format = EditorFormatNotifications;
        const auto style = EditorListStyle(pick(editorListStyleCount));
        test.notifications.post(Format::setListStyle, {rawValue(style), {}});
        if (pick(3) == 0)
            test.notifications.post(Format::setCustomBullet, {u"✿"_s, {}, {}});
    }
    void behave()
    {
        switch (pick(5)) {
        case 0:
            toggleFocusMode(test.services());
            break;
        case 1:
            (pick(2) ? setFocusSentence : setFocusParagraph)(test.services());
            break;
        case 2:
            toggleTypewriterMode(test.services());
            break;
        case 3: {
            auto* data = new QMimeData;
            data->setHtml(u"<p style='color:red'>a <b>b</b></p><table><tr><td>tide"_s);
            QGuiApplication::clipboard()->setMimeData(data);
            view().paste();
            break;
        }
        default:
            QTest::keyClicks(&view(), u"(\"')}"_s.mid(pick(3), 1 + pick(2)));
        }
    }
    /// What is dimmed follows the caret.
    void checkFocus() const
    {
        const auto granularity =
            focusGranularityNamed(focusModeGranularitySetting.read(test.defaults));
        const auto wanted = focusModeSetting.read(test.defaults)
                                ? focusedTextRange(view().store(), view().selection(), granularity)
                                : std::nullopt;
        ASSERT_EQ(view().focusRange(), wanted);
    }
    void goElsewhere()
    {
        const std::optional<QUuid> left = app.selection().selectedNoteID();
        const QString seen = plainForm(view().plainText());
        app.selection().selectNote(left == a ? b : a);
        ASSERT_EQ(app.note(*left)->body.readOrNothing(), seen);
    }
    void changeMode()
    {
        const EditorMode modes[] = {EditorMode::richText, EditorMode::plainText,
                                    EditorMode::markdown};
        pane->session().setMode(modes[pick(3)]);
    }
    void step()
    {
        const int what = pick(100);
        if (what < 45)
            write();
        else if (what < 76)
            press();
        else if (what < 80)
            behave();
        else if (what < 90)
            find();
        else if (what < 94)
            format();
        else if (what < 96)
            changeMode();
        else if (what < 98)
            goElsewhere();
        else
            QTest::qWait(1); // idle work
    }
    void checkCaret() const
    {
        const QString text = view().plainText();
        ASSERT_TRUE(isGraphemeBoundary(text, view().selection().anchor));
        ASSERT_TRUE(isGraphemeBoundary(text, view().selection().position));
    }
    /// What the strip counts is what is there.
    void checkCount() const
    {
        auto* strip = pane->findChild<FindStrip*>();
        if (!strip->isVisible())
            return;
        const QString query = strip->findChildren<QLineEdit*>().constFirst()->text();
        const qsizetype count = TextSearch(query).all(view().store().text()).size();
        const QString shown = strip->findChild<QLabel*>()->text();
        const QString expected = query.isEmpty() ? QString()
                                 : count == 0    ? u"No matches"_s
                                                 : QString::number(count);
        ASSERT_TRUE(shown == expected || shown.endsWith(u" of "_s + expected) ||
                    shown.startsWith(expected + u" match"_s))
            << qPrintable(shown) << ", and there are " << count;
    }

    std::mt19937 random{GetParam()};
    TestServices test;
    AppState app{test.services()};
    QUuid project = *app.projectSession().createProject(u"P"_s, {});
    QUuid a = *app.createNote(u"A"_s, {});
    QUuid b = *app.createNote(u"B"_s, {});
    Look look{signatureDarkTokens()};
    std::unique_ptr<EditorPaneView> pane = paneOfSelection(app, look);
};

TEST_P(ToolsTogetherTest, NothingIsLostAndNothingStale)
{
    const QSignalSpy edits(&pane->session(), &EditorSession::bodyEdited);
    for (int i = 0; i < 1'500 && !HasFatalFailure(); ++i) {
        SCOPED_TRACE(i);
        // Formatting may go, in most cases.
        test.questions.answers = {{pick(4) == 0 ? 1 : 0}, {0}};
        step();
        checkCaret();
        checkCount();
        checkFocus();
        if (i % 20 == 0)
            view().viewport()->grab();
    }
    EXPECT_GT(edits.size(), 500) << "most of the work is done";
    goElsewhere();
    EXPECT_TRUE(app.note(a)->body.readOrNothing().isValidUtf16());
    EXPECT_TRUE(app.note(b)->body.readOrNothing().isValidUtf16());
}

INSTANTIATE_TEST_SUITE_P(Seeds, ToolsTogetherTest, ::testing::Values(1U, 2U, 3U));

} // namespace
} // namespace orvane
