// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/pane/WritingTools.h"

#include "ToolsFixture.h"
#include "appearance/themes/BundledThemes.h"
#include "commands/EditorFormatNotifications.h"
#include "editor/page/PageBreaks.h"
#include "editor/pane/StripMenuButton.h"
#include "text/layout/ParagraphLayout.h"

#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTextBlock>
#include <QToolButton>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

class WritingToolsTest : public ToolsTest {
protected:
    WritingToolsTest()
    {
        view->setPlainText(u"Tide and tide, TIDE"_s);
        show(note, EditorMode::plainText);
    }

    void toggleFind() { services.notifications.post(AppCommandEvents::toggleDocumentFind); }
    QLineEdit* query() { return named<QLineEdit>(u"Find in note"_s); }
    QLineEdit* replacement() { return named<QLineEdit>(u"Replace with"_s); }
    QString count() { return tools->findStrip().findChild<QLabel*>()->text(); }
    static void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key(key), modifiers);
    }
    void click(const QString& name)
    {
        auto* button = named<QAbstractButton>(name);
        ASSERT_TRUE(button) << qPrintable(name);
        QTest::mouseClick(button, Qt::LeftButton);
    }

    QTemporaryDir dictionaries;
};

TEST_F(WritingToolsTest, FindsWhileTheQueryIsTyped)
{
    toggleFind();
    ASSERT_TRUE(query()->hasFocus());
    EXPECT_FALSE(replacement()->isVisible());
    type(u"tide"_s);
    EXPECT_EQ(count(), u"1 of 3"_s);
    EXPECT_EQ(view->selection(), (TextSelection{0, 4}));
    press(Qt::Key_Return);
    EXPECT_EQ(count(), u"2 of 3"_s);
    press(Qt::Key_Return, Qt::ShiftModifier);
    press(Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(selected(), u"TIDE"_s);
    press(Qt::Key_F3);
    EXPECT_EQ(count(), u"1 of 3"_s);
    type(u"s"_s);
    EXPECT_EQ(count(), u"No matches"_s);
    EXPECT_EQ(view->selection(), (TextSelection{0, 4})) << "a query without a match moves nothing";
    EXPECT_FALSE(named<QToolButton>(u"Next Match"_s)->isEnabled());
    EXPECT_EQ(services.beeper.count, 0);
    press(Qt::Key_Return);
    EXPECT_EQ(services.beeper.count, 1);

    press(Qt::Key_Escape);
    EXPECT_TRUE(view->hasFocus());
    EXPECT_FALSE(tools->findStrip().isVisible());
    view->setSelection({5, 8});
    toggleFind();
    EXPECT_EQ(query()->text(), u"and"_s) << "the selection is what one looks for";
    toggleFind();
    EXPECT_TRUE(view->hasFocus()) << "the command closes the strip that has the keyboard";
}

TEST_F(WritingToolsTest, ReplacesAndUndoesFromTheStrip)
{
    press(Qt::Key_H, Qt::ControlModifier);
    ASSERT_TRUE(replacement()->isVisible());
    type(u"tide"_s);
    press(Qt::Key_Tab);
    ASSERT_TRUE(replacement()->hasFocus());
    type(u"ebb"_s);
    press(Qt::Key_Return);
    EXPECT_EQ(view->plainText(), u"ebb and tide, TIDE"_s);
    EXPECT_EQ(count(), u"1 of 2"_s);
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(view->plainText(), u"Tide and tide, TIDE"_s) << "not what was typed in the field";
    EXPECT_EQ(replacement()->text(), u"ebb"_s);
    click(u"Replace All"_s);
    EXPECT_EQ(view->plainText(), u"ebb and ebb, ebb"_s);
    EXPECT_EQ(count(), u"3 replaced"_s);
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(view->plainText(), u"Tide and tide, TIDE"_s) << "all in one step";
    press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(view->plainText(), u"ebb and ebb, ebb"_s);
}

TEST_F(WritingToolsTest, AnotherNoteResetsTheStripAndAReloadKeepsIt)
{
    press(Qt::Key_H, Qt::ControlModifier);
    type(u"tide"_s);
    view->setPlainText(u"no tide"_s);
    show(QUuid::createUuid(), EditorMode::plainText);
    EXPECT_TRUE(tools->findStrip().isVisible());
    EXPECT_EQ(count(), u"1 match"_s);

    tools->findStrip().reset();
    EXPECT_FALSE(tools->findStrip().isVisible());
    EXPECT_TRUE(view->hasFocus());
    toggleFind();
    EXPECT_EQ(query()->text(), QString());
    EXPECT_EQ(count(), QString());
    EXPECT_FALSE(tools->findStrip().showsReplacement());

    tools->findStrip().setEditable(false);
    press(Qt::Key_H, Qt::ControlModifier);
    EXPECT_FALSE(tools->findStrip().showsReplacement()) << "a text that can't be changed";
    tools->findStrip().reset();
    show(std::nullopt, EditorMode::plainText);
    toggleFind();
    EXPECT_FALSE(tools->findStrip().isVisible()) << "no note";
}

TEST_F(WritingToolsTest, ListsInEachMode)
{
    const struct {
        const char* name;
        EditorMode mode;
        QString afterReturn;
        QString afterCommand;
    } rows[] = {
        {"Rich Text", EditorMode::richText, u"1. a\n- b\n– \n2. c"_s, u"1. a\n- b\n2. \n3. c"_s},
        {"Plain Text", EditorMode::plainText, u"1. a\n- b\n- \n2. c"_s, {}},
        {"Markdown", EditorMode::markdown, u"1. a\n- b\n- \n2. c"_s, {}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        tools->leaveText();
        view->setPlainText(u"1. a\n- b\n1. c"_s);
        show(note, row.mode);
        view->setSelection(TextSelection::caret(8));
        press(Qt::Key_Return);
        EXPECT_EQ(view->plainText().toStdString(), row.afterReturn.toStdString());
        EXPECT_EQ(view->gateway().undoName(), u"List"_s);

        const auto command = [&](const std::optional<QUuid>& target) {
            services.notifications.post(EditorFormatNotifications::numberedList, {target});
            return view->plainText();
        };
        EXPECT_EQ(command(QUuid::createUuid()), row.afterReturn) << "meant for another note";
        const bool acts = !row.afterCommand.isEmpty();
        EXPECT_EQ(command({}).toStdString(),
                  (acts ? row.afterCommand : row.afterReturn).toStdString());
        EXPECT_EQ(view->gateway().undoName(), acts ? u"List Style"_s : u"List"_s);
        while (view->gateway().canUndo())
            view->undo();
        EXPECT_EQ(view->plainText(), u"1. a\n- b\n1. c"_s);
    }
    show(note, EditorMode::richText);
    view->setEditable(false);
    services.notifications.post(EditorFormatNotifications::bulletList, {note});
    services.notifications.post(EditorFormatNotifications::setListStyle, {u"star"_s, note});
    EXPECT_EQ(view->plainText(), u"1. a\n- b\n1. c"_s) << "a text that can't be changed";
    view->setEditable(true);
    services.notifications.post(EditorFormatNotifications::setListStyle, {u"star"_s, note});
    EXPECT_EQ(view->plainText(), u"1. a\n★ b\n2. c"_s);
}

TEST_F(WritingToolsTest, ABreakOfThePageKeepsItsFormUnderOtherFormatting)
{
    view->setPlainText(u"one\ntwo"_s);
    show(note, EditorMode::richText);
    view->setSelection(TextSelection::caret(3));
    ASSERT_TRUE(insertPageBreak(view->gateway(), TextFormatting::rich, Qt::gray));
    const auto breakIn = [this] {
        const qsizetype at = view->store().text().indexOf(u'\f');
        return view->store().attributedText({at, 1});
    };
    const AttributedString before = breakIn();
    view->selectAll();
    services.notifications.post(EditorFormatNotifications::bulletList, {note});
    EXPECT_EQ(view->plainText(), u"• one\n\f\n• \n• two"_s);
    EXPECT_EQ(breakIn(), before);
    services.notifications.post(AppCommandEvents::applyHeading1, {note});
    EXPECT_GT(view->store().characterStyle(3)->font->size, 20);
    EXPECT_EQ(breakIn(), before);
}

TEST_F(WritingToolsTest, TextWithoutFormattingHasOneKindOfLineEnd)
{
    for (const EditorMode mode :
         {EditorMode::markdown, EditorMode::plainText, EditorMode::richText}) {
        tools->leaveText();
        view->setPlainText(u"ab"_s);
        view->setFormatting(mode == EditorMode::richText ? TextFormatting::rich
                                                         : TextFormatting::plain);
        show(note, mode);
        view->setSelection(TextSelection::caret(1));
        press(Qt::Key_Return, Qt::ShiftModifier);
        EXPECT_EQ(view->plainText(), mode == EditorMode::richText ? u"a\u2028b"_s : u"a\nb"_s);
    }
}

TEST_F(WritingToolsTest, OnlyMarkdownIsColoured)
{
    const auto colorAt = [&](int position) {
        const QTextBlock block = view->store().blockAt(position);
        for (const QTextLayout::FormatRange& range : view->layout().decorationsOf(block)) {
            const int within = position - block.position();
            if (within >= range.start && within < range.start + range.length)
                return range.format.foreground().color();
        }
        return QColor();
    };
    view->setPlainText(u"# Title\n`code`"_s);
    const AttributedString text = view->store().attributedText();
    for (const auto mode : {EditorMode::markdown, EditorMode::plainText, EditorMode::richText,
                            EditorMode::markdown}) {
        tools->leaveText();
        show(note, mode);
        const bool isColoured = mode == EditorMode::markdown;
        EXPECT_EQ(colorAt(9) == look.tokens().markdown.code, isColoured) << int(mode);
        EXPECT_EQ(colorAt(0) == look.tokens().markdown.punctuation, isColoured) << int(mode);
    }
    look.setTokens(tokensFor(signatureBundle().light.values));
    EXPECT_EQ(colorAt(9), look.tokens().markdown.code) << "a theme applies at once";
    EXPECT_EQ(view->store().attributedText(), text);
    EXPECT_FALSE(view->gateway().canUndo());
}

TEST_F(WritingToolsTest, TheContextMenuHelpsWithSpellingButNotInCode)
{
    ASSERT_TRUE(
        writeFileAtomically(dictionaries.filePath(u"en_US.aff"_s), "SET UTF-8\nTRY esianrtolcd\n"));
    ASSERT_TRUE(
        writeFileAtomically(dictionaries.filePath(u"en_US.dic"_s), "3\nhello\nworld\nthe\n"));
    tools.reset();
    WritingLibrary english{services.services(), {dictionaries.path()}, u"en_US"_s};
    tools = std::make_unique<WritingTools>(*view, english, services.services(), look, pane);
    view->setPlainText(u"`wrold` wrold"_s);
    const auto menuAt = [&](int position) {
        QMenu menu;
        const QRectF caret = view->layout().caretRect(position);
        view->fillContextMenu(menu, view->toViewport(caret.center()));
        QStringList texts;
        for (const QAction* action : menu.actions())
            texts.append(action->text());
        return texts;
    };
    const QString learn = u"Learn Word"_s;
    for (const EditorMode mode :
         {EditorMode::plainText, EditorMode::markdown, EditorMode::richText}) {
        SCOPED_TRACE(int(mode));
        tools->leaveText();
        show(note, mode);
        EXPECT_TRUE(QTest::qWaitFor([&] { return menuAt(10).contains(learn); }));
        EXPECT_TRUE(menuAt(10).contains(u"world"_s));
        EXPECT_EQ(menuAt(3).contains(learn), mode != EditorMode::markdown);
    }
    StripMenuButton* language = tools->languageButton();
    EXPECT_EQ(language->text(), u"English"_s);
    english.spelling.setLanguage(note, {});
    EXPECT_EQ(language->text(), u"No Spelling"_s);
    EXPECT_FALSE(menuAt(10).contains(learn)) << "no language";
    EXPECT_TRUE(menuAt(10).contains(u"Spelling"_s)) << "where one is chosen again";
    english.spelling.setLanguage(note, u"en_US"_s);
    EXPECT_TRUE(menuAt(10).contains(learn));
    EXPECT_FALSE(language->isHidden());
    show(std::nullopt, EditorMode::plainText);
    EXPECT_TRUE(language->isHidden());
    tools.reset();
}

} // namespace
} // namespace orvane
