// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "ViewFixture.h"
#include "editor/page/PageBreaks.h"

#include <QSignalSpy>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

class PageBreakTest : public ViewFixture {
protected:
    bool breakPage(TextFormatting formatting = TextFormatting::rich)
    {
        return insertPageBreak(view.gateway(), formatting, Qt::gray);
    }
};

TEST_F(PageBreakTest, StandsInThePlaceOfTheSelectionAsOneStep)
{
    const struct {
        const char* name;
        QStringView before;
        QStringView after;
    } rows[] = {
        {"in a paragraph", u"one |two", u"one \n\f\n|two"},
        {"at the end of the text", u"one|", u"one\n\f\n|"},
        {"at its start", u"|one", u"\n\f\n|one"},
        {"in an empty text", u"|", u"\n\f\n|"},
        {"for a selection over paragraphs", u"on[e\ntw]o", u"on\n\f\n|o"},
    };
    for (const auto& row : rows) {
        for (const auto formatting : {TextFormatting::rich, TextFormatting::plain}) {
            set(row.before.toString());
            ASSERT_TRUE(breakPage(formatting)) << row.name;
            EXPECT_EQ(marked(), row.after) << row.name;
            EXPECT_EQ(view.gateway().undoName(), u"Page Break") << row.name;
            view.undo();
            EXPECT_EQ(marked(), row.before) << row.name;
            EXPECT_FALSE(view.isUndoAvailable()) << row.name;
            view.redo();
            EXPECT_EQ(marked(), row.after) << row.name;
        }
    }
}

TEST_F(PageBreakTest, IsTinyAndCentredInARichTextAndLeavesTheRestAsItWas)
{
    set(u"one two"_s);
    ParagraphStyle indented;
    indented.headIndent = 30;
    CharacterStyle bold;
    bold.font = TextFont{u"Inter"_s, 16, 700};
    view.gateway().performUndoableDocumentEdit(u"x"_s, [&](DocumentEditor& editor) {
        editor.setParagraphStyle({0, 0}, indented);
        editor.setCharacterStyle({0, 7}, bold);
    });
    view.setSelection(TextSelection::caret(3));
    ASSERT_TRUE(breakPage());
    const TextStore& store = view.store();
    EXPECT_EQ(store.text(), u"one\n\f\n two");
    EXPECT_EQ(store.paragraphStyle(0)->headIndent, 30);
    EXPECT_EQ(store.paragraphStyle(4)->alignment, TextAlignment::center);
    EXPECT_EQ(store.paragraphStyle(4)->headIndent, 0);
    EXPECT_EQ(store.paragraphStyle(6)->headIndent, 30);
    EXPECT_EQ(store.characterStyle(4)->font->size, 1);
    EXPECT_EQ(*store.characterStyle(4)->foreground, RgbaColor::fromQColor(Qt::gray));
    // Whoever clicks above or below and types goes on as before.
    for (const qsizetype position : {3, 6, 10}) {
        view.setSelection(TextSelection::caret(position));
        EXPECT_EQ(view.gateway().typingStyle()->font->weight, 700) << position;
        EXPECT_EQ(view.gateway().typingStyle()->font->size, 16) << position;
    }
}

TEST_F(PageBreakTest, IsRefusedInACellAndWhereNothingMayChange)
{
    set(u"a|b\nc"_s);
    view.gateway().performUndoableDocumentEdit(u"x"_s, [](DocumentEditor& editor) {
        editor.modifyParagraphStyles({0, 0}, [](ParagraphStyle& style) {
            style.cell.emplace();
            style.cell->table.id = QUuid::createUuid();
        });
    });
    EXPECT_FALSE(breakPage());
    set(u"ab|"_s);
    view.gateway().setEditable(false);
    EXPECT_FALSE(breakPage());
    EXPECT_EQ(view.plainText(), u"ab");
    view.gateway().setEditable(true);
}

TEST_F(PageBreakTest, KeysPassItByAndDeleteItWhole)
{
    const struct {
        const char* keys;
        QStringView before;
        QStringView after;
    } rows[] = {
        {"Right", u"ab|\n\f\ncd", u"ab\n\f\n|cd"},
        {"Left", u"ab\n\f\n|cd", u"ab|\n\f\ncd"},
        {"Down", u"|ab\n\f\ncd", u"ab\n\f\n|cd"},
        {"Up", u"ab\n\f\n|cd", u"|ab\n\f\ncd"},
        {"Down", u"a|b\n\f\n\f\ncd", u"ab\n\f\n\f\nc|d"},
        {"PgDown", u"a|b\n\f\ncd", u"ab\n\f\nc|d"},
        {"Ctrl+Right", u"ab|\n\f\ncd", u"ab\n\f\n|cd"},
        {"Ctrl+Left", u"ab\n\f\n|cd", u"ab|\n\f\ncd"},
        {"Ctrl+Down", u"a|b\n\f\ncd", u"ab\n\f\n|cd"},
        {"Shift+Right", u"ab|\n\f\ncd", u"ab[\n\f\n]cd"},
        {"Backspace", u"ab\n\f\n|cd", u"ab|cd"},
        {"Del", u"ab|\n\f\ncd", u"ab|cd"},
        {"Ctrl+Backspace", u"ab\n\f\n|cd", u"ab|cd"},
        {"Ctrl+Del", u"ab|\n\f\ncd", u"ab|cd"},
        {"Return", u"ab\n\f\n|cd", u"ab\n\f\n\n|cd"},
        {"Down", u"ab|\n\f", u"ab|\n\f"},
    };
    for (const auto& row : rows) {
        set(row.before.toString());
        press(QString::fromLatin1(row.keys));
        EXPECT_EQ(marked(), row.after) << row.keys << " in " << row.before.toString().toStdString();
    }
}

TEST_F(PageBreakTest, AClickGoesAboveOrBelowIt)
{
    set(u"ab|\n\f\ncd"_s);
    const QRectF line = view.toViewport(view.layout().lineAt(3).rect);
    const int x = int(line.center().x());
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, {x, int(line.bottom()) - 3});
    EXPECT_EQ(marked(), u"ab\n\f\n|cd");
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, {x, int(line.top()) + 3});
    EXPECT_EQ(marked(), u"ab|\n\f\ncd");
}

TEST_F(PageBreakTest, ShowsALineWithAName)
{
    set(u"|ab\n\f\ncd"_s);
    EditorLook look = view.look();
    look.background = look.text.page = Qt::white;
    look.text.separator = Qt::red;
    look.text.label = Qt::blue;
    view.setLook(look);
    const QImage shown = picture();
    const QRect line = view.toViewport(view.layout().lineAt(3).rect).toAlignedRect();
    int dashes = 0;
    int letters = 0;
    for (int y = line.top(); y < line.bottom(); ++y) {
        for (int x = line.left(); x < line.right(); ++x) {
            const QColor pixel = shown.pixelColor(x, y);
            dashes += pixel.red() > 200 && pixel.blue() < 160;
            letters += pixel.blue() > 200 && pixel.red() < 100;
        }
    }
    EXPECT_GT(dashes, line.width() / 4);
    EXPECT_LT(dashes, line.width()) << "dashed, and parted by the name";
    EXPECT_GT(letters, 30);
    EXPECT_EQ(shown.pixelColor(line.left() + 5, line.center().y()), QColor(Qt::white));
}

} // namespace
} // namespace orvane
