// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "SelectedNoteFixture.h"
#include "appearance/AppearanceTokens.h"
#include "editor/pane/EditorPaneView.h"
#include "editor/view/EditorView.h"
#include "support/TestServices.h"
#include "text/layout/ParagraphLayout.h"
#include "text/store/TextStore.h"

#include <QApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QTest>
#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

// Rich text comes last, so that there is no formatting for the others to lose.
constexpr EditorMode allModes[] = {EditorMode::plainText, EditorMode::markdown,
                                   EditorMode::richText};

/// What an input method, a keyboard layout or a person does.
struct Step {
    enum class Kind { compose, commit, typed, key, dead } kind;
    QString text;
    int start = 0;
    int length = 0;
    QKeyCombination keys{};
};
Step compose(const QString& preedit)
{
    return {Step::Kind::compose, preedit};
}
Step commit(const QString& text, int start = 0, int length = 0)
{
    return {Step::Kind::commit, text, start, length};
}
Step typed(const QString& text)
{
    return {Step::Kind::typed, text};
}
Step key(QKeyCombination keys)
{
    return {Step::Kind::key, {}, 0, 0, keys};
}

/// A key without a text of its own.
Step dead(Qt::Key key)
{
    return {Step::Kind::dead, {}, 0, 0, key};
}

/// The pane over a real project, in one mode after the other.
struct TextInputTest : ::testing::Test {
    TestServices test;
    AppState app{test.services()};
    QUuid project = *app.projectSession().createProject(u"P"_s, {});
    QUuid other = *app.createNote(u"Other"_s, {});
    QUuid note = *app.createNote(u"Note"_s, {});
    Look look{signatureDarkTokens()};
    std::unique_ptr<EditorPaneView> pane = paneOfSelection(app, look);

    TextInputTest()
    {
        pane->resize(900, 600);
        pane->show();
        QApplication::setActiveWindow(pane.get());
        pane->focusText();
        QApplication::processEvents();
    }
    [[nodiscard]] EditorView& view() const { return pane->textView(); }

    void send(QEvent&& event) const { QApplication::sendEvent(&view(), &event); }
    void act(const Step& step) const
    {
        switch (step.kind) {
        case Step::Kind::compose:
            return send(QInputMethodEvent(step.text, {}));
        case Step::Kind::commit: {
            QInputMethodEvent event;
            event.setCommitString(step.text, step.start, step.length);
            return send(std::move(event));
        }
        case Step::Kind::typed:
            for (const char32_t character : step.text.toUcs4()) {
                const QString text = QString::fromUcs4(&character, 1);
                send(QKeyEvent(QEvent::KeyPress, 0, Qt::NoModifier, text));
                send(QKeyEvent(QEvent::KeyRelease, 0, Qt::NoModifier, text));
            }
            return;
        case Step::Kind::dead:
            send(QKeyEvent(QEvent::KeyPress, step.keys.key(), Qt::NoModifier));
            send(QKeyEvent(QEvent::KeyRelease, step.keys.key(), Qt::NoModifier));
            return;
        case Step::Kind::key:
            QTest::keyClick(&view(), step.keys.key(), step.keys.keyboardModifiers());
            return;
        }
    }
    /// Puts in a text in which "|" stands for the caret.
    void set(QString marked)
    {
        act(key(Qt::CTRL | Qt::Key_A));
        act(key(Qt::Key_Backspace));
        const qsizetype caret = marked.indexOf(u'|');
        act(commit(marked.remove(u'|')));
        view().setSelection(TextSelection::caret(caret));
    }
    [[nodiscard]] std::string marked() const
    {
        EXPECT_TRUE(view().selection().isEmpty());
        return view().plainText().insert(view().selection().position, u'|').toStdString();
    }
};

TEST_F(TextInputTest, InEachMode)
{
    const QString family = u"👩‍👩‍👧"_s;
    const struct {
        const char* name;
        QString before;
        QList<Step> steps;
        QString after;
    } rows[] = {
        {"composed text belongs to nobody yet", u"ab|cd"_s, {compose(u"にほん"_s)}, u"ab|cd"_s},
        {"committed text stays",
         u"ab|cd"_s,
         {compose(u"にほん"_s), commit(u"日本"_s)},
         u"ab日本|cd"_s},
        {"given up", u"ab|cd"_s, {compose(u"に"_s), compose({})}, u"ab|cd"_s},
        {"a word is corrected", u"see teh|"_s, {commit(u"the"_s, -3, 3)}, u"see the|"_s},
        {"a vowel sign is exchanged alone", u"नमी|"_s, {commit(u"ि"_s, -1, 1)}, u"नमि|"_s},
        {"in a list item",
         u"• one|"_s,
         {compose(u"に"_s), commit(u"二"_s), key(Qt::Key_Return), commit(u"三"_s)},
         u"• one二\n• 三|"_s},
        {"between delimiters", u"**|**"_s, {compose(u"ф"_s), commit(u"ф"_s)}, u"**ф|**"_s},
        {"a dead key", u"caf|"_s, {dead(Qt::Key_Dead_Acute), typed(u"é"_s)}, u"café|"_s},
        {"a dead key that shows itself", u"caf|"_s, {compose(u"´"_s), commit(u"é"_s)}, u"café|"_s},
        {"a dead key twice", u"|"_s, {dead(Qt::Key_Dead_Circumflex), typed(u"^"_s)}, u"^|"_s},
        {"an accent behind its letter is one character",
         u"a|"_s,
         {typed(u"e\u0301"_s), key(Qt::Key_Left), key(Qt::Key_Delete)},
         u"a|"_s},
        {"right to left, the arrow goes where it points",
         u"|"_s,
         {typed(u"שלום"_s), key(Qt::Key_Right)},
         u"שלו|ם"_s},
        {"right to left, from end to start",
         u"|"_s,
         {typed(u"שלום"_s), key(Qt::Key_Home), typed(u"ה"_s)},
         u"ה|שלום"_s},
        {"right to left within left to right",
         u"abc |def"_s,
         {typed(u"שלום"_s), key(Qt::Key_Backspace)},
         u"abc שלו|def"_s},
        {"joined letters with a break in them",
         u"|"_s,
         {typed(u"می\u200cخواهم"_s), key(Qt::Key_Backspace)},
         u"می\u200cخواه|"_s},
        {"an emoji of two units",
         u"a|b"_s,
         {commit(u"👍"_s), key(Qt::Key_Left), key(Qt::Key_Right), key(Qt::Key_Backspace)},
         u"a|b"_s},
        {"with a tone of skin",
         u"a|b"_s,
         {commit(u"👍🏽"_s), key(Qt::Key_Left)},
         u"a|👍🏽b"_s},
        {"a joined family is deleted at once",
         u"a|b"_s,
         {commit(family), key(Qt::Key_Left), key(Qt::Key_Delete)},
         u"a|b"_s},
        {"a flag", u"a|b"_s, {commit(u"🇩🇪"_s), key(Qt::Key_Backspace)}, u"a|b"_s},
        {"from a keyboard", u"|"_s, {typed(u"x👍y"_s)}, u"x👍y|"_s},
        {"undone at once",
         u"a|"_s,
         {key(Qt::Key_Return), commit(u"日本"_s), key(Qt::CTRL | Qt::Key_Z)},
         u"a\n|"_s},
    };
    for (const EditorMode mode : allModes) {
        pane->session().setMode(mode);
        QApplication::processEvents();
        for (const auto& row : rows) {
            SCOPED_TRACE(qPrintable(rawValue(mode) + u": "_s + QString::fromLatin1(row.name)));
            set(row.before);
            for (const Step& step : row.steps)
                act(step);
            EXPECT_EQ(marked(), row.after.toStdString());
            act(compose({}));
            test.clock.advance(1500ms);
            EXPECT_EQ(app.note(note)->body.readOrNothing(), QString(row.after).remove(u'|'));
        }
    }
}

TEST_F(TextInputTest, ComposedTextGoesWithTheTextThatItStandsIn)
{
    for (const EditorMode mode : allModes) {
        SCOPED_TRACE(qPrintable(rawValue(mode)));
        app.selection().selectNote(note);
        pane->session().setMode(mode);
        set(u"ab|"_s);
        act(compose(u"に"_s));
        EXPECT_TRUE(view().layout().hasPreedit());
        app.selection().selectNote(other);
        QApplication::processEvents();
        EXPECT_FALSE(view().layout().hasPreedit());
        EXPECT_EQ(app.note(note)->body.readOrNothing(), u"ab"_s);
        app.selection().selectNote(note);
        pane->session().setMode(mode == EditorMode::plainText ? EditorMode::markdown : mode);
        EXPECT_FALSE(view().layout().hasPreedit());
        act(commit(u"c"_s));
        EXPECT_EQ(view().plainText(), u"abc"_s);
    }
}

} // namespace
} // namespace orvane
