// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/lists/ListEditing.h"

#include "ViewFixture.h"
#include "editor/lists/CustomBulletLibrary.h"
#include "support/TestServices.h"

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

class ListEditingTest : public ViewFixture {
protected:
    TestServices services;
    CustomBulletLibrary library{services.defaults, services.notifications};
    ListEditing lists{view, library};
};

TEST_F(ListEditingTest, KeysAndUndo)
{
    struct Row {
        const char* name;
        QString before;
        QStringList keys;
        QString after;
        const char* undoName;
    };
    const Row rows[] = {
        {"typing a list",
         u"|"_s,
         {u"-"_s, u" "_s, u"a"_s, u"Return"_s, u"b"_s, u"Return"_s},
         u"- a\n– b\n– |"_s,
         "List"},
        {"the second Return ends it",
         u"1. a|\n2. b"_s,
         {u"Return"_s, u"Return"_s},
         u"1. a\n|\n1. b"_s,
         "List"},
        {"the third is a plain one",
         u"1. a|"_s,
         {u"Return"_s, u"Return"_s, u"Return"_s},
         u"1. a\n\n|"_s,
         "Typing"},
        {"Tab", u"• a|"_s, {u"Tab"_s}, u"\t• a|"_s, "Indent"},
        {"Back-tab", u"\t• |a"_s, {u"Shift+Tab"_s}, u"• |a"_s, "Outdent"},
        {"Tab outside a list", u"a|"_s, {u"Tab"_s}, u"a\t|"_s, "Typing"},
        {"Backspace behind a marker", u"• |b"_s, {u"Backspace"_s}, u"|b"_s, "List"},
        {"on a deeper level", u"\t• |b"_s, {u"Backspace"_s}, u"|b"_s, "List"},
        {"before one", u"• a\n|• b"_s, {u"Backspace"_s}, u"• a|b"_s, "Delete"},
        {"below an empty line", u"\n|• b"_s, {u"Backspace"_s}, u"|• b"_s, "Delete"},
        {"within the words", u"• a|b"_s, {u"Backspace"_s}, u"• |b"_s, "Delete"},
        {"Delete at an item's end", u"• a|\n• b"_s, {u"Delete"_s}, u"• a|b"_s, "Delete"},
        {"of a plain line", u"a|\n• b"_s, {u"Delete"_s}, u"a|b"_s, "Delete"},
        {"of an empty one", u"|\n• b"_s, {u"Delete"_s}, u"|• b"_s, "Delete"},
        {"which counts anew", u"1. a|\n2. b\n3. c"_s, {u"Delete"_s}, u"1. a|b\n2. c"_s, "Delete"},
        {"a ticked box on Tab", u"☑ a|"_s, {u"Tab"_s}, u"\t☑ a|"_s, "Indent"},
        {"prose", u"1984. It was|"_s, {u"Return"_s}, u"1984. It was\n|"_s, "Typing"},
        {"a word", u"OK. So|"_s, {u"Return"_s}, u"OK. So\n|"_s, "Typing"},
        {"below an item", u"1. a\n1984. b|"_s, {u"Return"_s}, u"1. a\n1984. b\n2. |"_s, "List"},
        {"Return over a selection", u"• [a]"_s, {u"Return"_s}, u"• \n|"_s, "Typing"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        set(row.before);
        const AttributedString before = view.store().attributedText();
        for (const QString& key : row.keys) {
            if (key == u"Shift+Tab")
                QTest::keyClick(&view, Qt::Key_Backtab, Qt::ShiftModifier);
            else if (key == u" ")
                QTest::keyClick(&view, Qt::Key_Space);
            else
                press(key);
        }
        EXPECT_EQ(marked().toStdString(), row.after.toStdString());
        EXPECT_EQ(view.gateway().undoName(), QLatin1String(row.undoName));
        while (view.gateway().canUndo())
            view.undo();
        EXPECT_EQ(view.store().attributedText(), before);
    }
}

TEST_F(ListEditingTest, LettersGoOnPastRomanDigitsAndPastZ)
{
    for (const EditorListStyle style : {EditorListStyle::upperAlpha, EditorListStyle::lowerAlpha}) {
        for (const ListForm form : {ListForm::rich, ListForm::plain}) {
            lists.setForm(form);
            set(u"|"_s);
            lists.toggleList(style);
            QString wanted;
            for (int i = 1; i <= 60; ++i) {
                type(u"x"_s);
                EXPECT_EQ(lists.listContext(view.selection().position)->style, style) << i;
                press(u"Return"_s);
                wanted += ListContinuationHelper::markerPrefix(style, 0, i) + u"x\n"_s;
            }
            EXPECT_EQ(view.plainText().toStdString(),
                      (wanted + ListContinuationHelper::markerPrefix(style, 0, 61)).toStdString());
        }
    }
}

TEST_F(ListEditingTest, APlainBoxGoesOnAsOne)
{
    lists.setForm(ListForm::plain);
    view.setPlainText(u"\t- [x] ab"_s);
    view.setSelection(TextSelection::caret(8));
    press(u"Return"_s);
    EXPECT_EQ(view.plainText(), u"\t- [x] a\n\t- [ ] b"_s);
    EXPECT_EQ(view.selection(), TextSelection::caret(16));
    QTest::keyClick(&view, Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(view.plainText(), u"\t- [x] a\n- [ ] b"_s);
    press(u"Backspace"_s);
    EXPECT_EQ(view.plainText(), u"\t- [x] a\nb"_s);
    lists.setForm(ListForm::rich);
    view.setPlainText(u"- [x] a"_s);
    view.setSelection(TextSelection::caret(7));
    press(u"Return"_s);
    EXPECT_EQ(view.plainText(), u"- [x] a\n☐ "_s);
}

TEST_F(ListEditingTest, ALinkStaysWithItsWords)
{
    CharacterStyle link;
    link.link = u"https://example.org"_s;
    AttributedString text(u"• one two"_s);
    text.modifyCharacterStyles({2, 7}, [&](CharacterStyle& style) { style = link; });
    view.gateway().load(text, {});
    view.setSelection(TextSelection::caret(6));
    press(u"Return"_s);
    EXPECT_EQ(marked(), u"• one \n• |two"_s);
    EXPECT_EQ(view.store().characterStyle(7)->link, QString());
    EXPECT_EQ(view.store().characterStyle(8)->link, QString());
    EXPECT_EQ(view.store().characterStyle(9)->link, link.link);
}

TEST_F(ListEditingTest, APageBreakBetweenItemsStaysOne)
{
    set(u"[a\n\f\nb]"_s);
    lists.toggleList(EditorListStyle::disc);
    EXPECT_EQ(view.plainText(), u"• a\n\f\n• b"_s);
    lists.toggleCustomBullet(u"✿"_s, std::nullopt);
    EXPECT_EQ(view.plainText(), u"✿ a\n\f\n✿ b"_s);
    lists.toggleCustomBullet(u"✿"_s, std::nullopt);
    EXPECT_EQ(view.plainText(), u"a\n\f\nb"_s);
}

TEST_F(ListEditingTest, AClickTicksABoxAndNothingElse)
{
    set(u"☐ milk|"_s);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, pointOf(4));
    EXPECT_EQ(marked(), u"☐ mi|lk"_s);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, pointOf(0));
    EXPECT_EQ(marked(), u"☑ mi|lk"_s);
    view.undo();
    EXPECT_EQ(marked(), u"☐ mi|lk"_s);
    view.setEditable(false);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, pointOf(0));
    EXPECT_EQ(view.plainText(), u"☐ milk"_s);
}

TEST_F(ListEditingTest, ARefusedReturnDoesNothing)
{
    set(u"• a|"_s);
    view.gateway().setChangeFilter([](TextRange, const QString&) { return false; });
    press(u"Return"_s);
    EXPECT_EQ(marked(), u"• a|"_s);
}

TEST_F(ListEditingTest, StylesFollowTheText)
{
    CharacterStyle bold;
    bold.font = TextFont{u"Inter"_s, 16, 700};
    view.gateway().load(AttributedString(u"one\ntwo"_s, bold), bold);
    view.setSelection({7, 0});
    lists.toggleList(EditorListStyle::upperRoman);
    EXPECT_EQ(marked(), u"]I. one\nII. two["_s);
    EXPECT_TRUE(view.store().characterStyle(0)->font->isBold());
    EXPECT_EQ(view.store().paragraphStyle(8)->textLists.size(), 1);
    EXPECT_EQ(lists.listContext(9)->style, EditorListStyle::upperRoman);
    lists.toggleList(EditorListStyle::upperRoman);
    EXPECT_EQ(view.plainText(), u"one\ntwo"_s);
    EXPECT_TRUE(view.store().paragraphStyle(4)->textLists.isEmpty());

    view.setSelection(TextSelection::caret(0));
    lists.toggleCustomBullet(u"✿"_s, RgbaColor{1, 0, 0, 1});
    EXPECT_EQ(view.store().characterStyle(0)->foreground, (RgbaColor{1, 0, 0, 1}));
    EXPECT_EQ(view.store().characterStyle(1)->foreground, std::nullopt);
    view.undo();
    EXPECT_EQ(view.plainText(), u"one\ntwo"_s);
}

} // namespace
} // namespace orvane
