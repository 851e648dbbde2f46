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
