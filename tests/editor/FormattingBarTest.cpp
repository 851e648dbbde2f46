// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// The formatting bar by mouse and keys, over a real text.
#include "editor/formatting/FormattingBar.h"

#include "appearance/AppearanceTokens.h"
#include "appearance/themes/BundledThemes.h"
#include "editor/pane/WritingTools.h"
#include "editor/view/EditorView.h"
#include "support/TestServices.h"
#include "text/store/TextStore.h"

#include <QApplication>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>
#include <QWindow>
#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

class FormattingBarTest : public ::testing::Test {
protected:
    FormattingBarTest()
    {
        installFontSubstitutions();
        tools.formattingBar().setNextByTab(title);
        auto* layout = new QVBoxLayout(&pane);
        layout->setContentsMargins({});
        layout->addWidget(&tools.formattingBar());
        layout->addWidget(title);
        layout->addWidget(view, 1);
        show(EditorMode::richText);
        pane.resize(1000, 400);
        pane.show();
        QApplication::setActiveWindow(&pane);
        view->setFocus();
        QApplication::processEvents();
    }

    void show(EditorMode mode)
    {
        CharacterStyle style;
        style.font = TextFont{u"Inter"_s, 16};
        view->gateway().load(
            AttributedString(u"Mara reads.\nThe tide turns."_s, SharedCharacterStyle(style)),
            SharedCharacterStyle(style));
        tools.prepareText(view->gateway(), mode);
        tools.showText(note);
        QApplication::processEvents();
    }
    void select(qsizetype from, qsizetype to)
    {
        view->setSelection({from, to});
        QApplication::processEvents();
    }
    FormattingBar* bar() { return pane.findChild<FormattingBar*>(); }
    QAbstractButton* control(const QString& name)
    {
        for (auto* each : bar()->findChildren<QAbstractButton*>()) {
            if (each->accessibleName().startsWith(name))
                return each;
        }
        return nullptr;
    }
    void click(const QString& name)
    {
        QTest::mouseClick(control(name), Qt::LeftButton);
        QApplication::processEvents();
    }
    static void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QWidget* popup = QApplication::activePopupWidget();
        QWidget* target = popup && popup->focusWidget() ? popup->focusWidget()
                          : popup                       ? popup
                                                        : QApplication::focusWidget();
        QTest::keyClick(target, Qt::Key(key), modifiers);
        QApplication::processEvents();
    }
    template <typename T>
    T* popup()
    {
        return dynamic_cast<T*>(QApplication::activePopupWidget());
    }
    QAction* item(const QString& text)
    {
        auto* menu = popup<QMenu>();
        for (QAction* action : menu ? menu->actions() : QList<QAction*>()) {
            if (action->text().section(u'\t', 0, 0) == text)
                return action;
        }
        return nullptr;
    }
    void chooseItem(const QString& text)
    {
        QAction* action = item(text);
        ASSERT_TRUE(action) << qPrintable(text);
        auto* menu = popup<QMenu>();
        QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
        QApplication::processEvents();
    }
    const CharacterStyle& at(qsizetype position) { return *view->store().characterStyle(position); }
    const ParagraphStyle& paragraphAt(qsizetype position)
    {
        return *view->store().paragraphStyle(position);
    }

    TestServices services;
    const QUuid note = QUuid::createUuid();
    Look look{signatureDarkTokens()};
    WritingLibrary library{services.services(), {}, u"en_US"_s};
    QWidget pane;
    QLineEdit* title = new QLineEdit(&pane);
    EditorView* view = new EditorView(&pane);
    WritingTools tools{*view, library, services.services(), look, pane};
};

TEST_F(FormattingBarTest, IsThereForRichNotesThatMayBeEdited)
{
    ASSERT_TRUE(bar());
    EXPECT_TRUE(bar()->isVisible());
    EXPECT_EQ(bar()->height(), 40);
    const auto isShown = [this] {
        return bar()->isVisible();
    };
    show(EditorMode::plainText);
    EXPECT_FALSE(isShown());
    show(EditorMode::markdown);
    EXPECT_FALSE(isShown());
    show(EditorMode::richText);
    EXPECT_TRUE(isShown());
    services.notifications.post(AppCommandEvents::toggleFormattingBar);
    EXPECT_FALSE(isShown());
    EXPECT_FALSE(showFormattingToolbarSetting.read(services.defaults));
    services.notifications.post(AppCommandEvents::toggleFormattingBar);
    EXPECT_TRUE(isShown());
    tools.formattingBar().setEditable(false);
    EXPECT_FALSE(isShown());
}

TEST_F(FormattingBarTest, IsNotMadeBeforeItIsNeeded)
{
    QWidget other;
    EditorView plain(&other);
    WritingTools otherTools(plain, library, services.services(), look, other);
    otherTools.prepareText(plain.gateway(), EditorMode::plainText);
    otherTools.showText(note);
    EXPECT_FALSE(other.findChild<FormattingBar*>());
    otherTools.prepareText(plain.gateway(), EditorMode::richText);
    otherTools.showText(note);
    EXPECT_TRUE(other.findChild<FormattingBar*>());
}

TEST_F(FormattingBarTest, AClickFormatsAndLeavesTheKeyboardInTheText)
{
    select(0, 4);
    for (const auto& name : {u"Bold"_s, u"Italic"_s, u"Underline"_s, u"Strikethrough"_s}) {
        EXPECT_FALSE(control(name)->isChecked()) << qPrintable(name);
        click(name);
        EXPECT_TRUE(control(name)->isChecked()) << qPrintable(name);
        EXPECT_TRUE(view->hasFocus());
    }
    EXPECT_EQ(*at(0).font, (TextFont{u"Inter"_s, 16, 700, true}));
    select(5, 5);
    EXPECT_FALSE(control(u"Bold"_s)->isChecked()) << "it shows what is under the caret";
    click(u"Bullet List"_s);
    EXPECT_TRUE(control(u"Bullet List"_s)->isChecked());
    EXPECT_FALSE(control(u"Numbered List"_s)->isChecked());
    view->setEditable(false);
    click(u"Bold"_s);
    EXPECT_FALSE(control(u"Bold"_s)->isChecked()) << "a command that does nothing shows nothing";
}

TEST_F(FormattingBarTest, MenusSayWhatIsAndChange)
{
    click(u"Paragraph style"_s);
    EXPECT_TRUE(item(u"Body"_s)->isChecked());
    chooseItem(u"Heading 2"_s);
    EXPECT_EQ(at(0).font->size, 28);
    EXPECT_EQ(control(u"Paragraph style"_s)->accessibleName(), u"Paragraph style: Heading 2"_s);
    click(u"Alignment"_s);
    EXPECT_TRUE(item(u"Align Left"_s)->isChecked());
    chooseItem(u"Justify"_s);
    EXPECT_EQ(paragraphAt(0).alignment, TextAlignment::justified);
    click(u"Number Styles"_s);
    chooseItem(u"Lower Roman"_s);
    EXPECT_EQ(view->plainText().left(3), u"i. "_s);
    click(u"Number Styles"_s);
    EXPECT_TRUE(item(u"Lower Roman"_s)->isChecked());
    press(Qt::Key_Escape);
    library.bullets.setBullets({{QUuid::createUuid(), u"§"_s, u"Law"_s, {}, {}, {}, {}}});
    click(u"Bullet Styles"_s);
    chooseItem(u"Law"_s);
    EXPECT_EQ(view->plainText().left(2), u"§ "_s);
}

TEST_F(FormattingBarTest, FontsAreFoundByNameAndSizesTyped)
{
    select(0, 4);
    click(u"Font: Inter"_s);
    auto* list = popup<QWidget>()->findChild<QListWidget*>();
    ASSERT_TRUE(list);
    EXPECT_TRUE(list->findItems(u"Inter"_s, Qt::MatchExactly).size() == 1);
    QTest::keyClicks(popup<QWidget>()->focusWidget(), u"menl"_s);
    EXPECT_EQ(list->count(), 1);
    press(Qt::Key_Return);
    EXPECT_EQ(at(0).font->family, u"Menlo"_s);
    EXPECT_EQ(control(u"Font: "_s)->accessibleName(), u"Font: Menlo"_s);
    click(u"Font size: 16"_s);
    QTest::keyClicks(popup<QWidget>()->focusWidget(), u"21.5"_s);
    press(Qt::Key_Return);
    EXPECT_EQ(at(0).font->size, 21.5);
    click(u"Font size: 21.5"_s);
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    EXPECT_EQ(at(0).font->size, 10);
    click(u"Font size"_s);
    QTest::keyClicks(popup<QWidget>()->focusWidget(), u"abc"_s);
    press(Qt::Key_Return);
    EXPECT_EQ(at(0).font->size, 10) << "no number";
}

TEST_F(FormattingBarTest, ColorsComeFromThePaletteOrFromOnesOwn)
{
    const auto named = [this](const QString& name) -> QAbstractButton* {
        for (auto* each : popup<QWidget>()->findChildren<QAbstractButton*>()) {
            if (each->accessibleName() == name || each->text() == name)
                return each;
        }
        return nullptr;
    };
    select(0, 4);
    click(u"Text Color"_s);
    QTest::mouseClick(named(u"Blue"_s), Qt::LeftButton);
    QApplication::processEvents();
    const auto blue = at(0).foreground;
    ASSERT_TRUE(blue);
    EXPECT_GT(blue->blue, blue->red);
    click(u"Text Color"_s);
    ASSERT_TRUE(named(u"Blue"_s)->hasFocus()) << "what is there is where one begins";
    press(Qt::Key_Right);
    EXPECT_TRUE(named(u"Purple"_s)->hasFocus());
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    EXPECT_NE(at(0).foreground, blue);
    click(u"Text Color"_s);
    QTest::mouseClick(named(u"Automatic"_s), Qt::LeftButton);
    EXPECT_FALSE(at(0).foreground);

    click(u"Highlight"_s);
    QTest::mouseClick(named(u"Yellow"_s), Qt::LeftButton);
    ASSERT_TRUE(at(0).background);
    EXPECT_NEAR(at(0).background->alpha, 0.34, 1e-6);
    QApplication::processEvents();
    click(u"Highlight"_s);
    EXPECT_TRUE(named(u"Yellow"_s)->hasFocus());
    press(Qt::Key_Escape);

    click(u"Text Color"_s);
    QTest::mouseClick(named(u"Custom…"_s), Qt::LeftButton);
    QApplication::processEvents();
    auto* hex = popup<QWidget>()->findChild<QLineEdit*>();
    ASSERT_TRUE(hex);
    hex->selectAll();
    QTest::keyClicks(hex, u"#336699"_s);
    EXPECT_FALSE(at(0).foreground) << "only when it is done";
    press(Qt::Key_Return);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    ASSERT_TRUE(at(0).foreground);
    EXPECT_EQ(toHex(*at(0).foreground), u"#336699"_s);
}

TEST_F(FormattingBarTest, SpacingActsWhileItIsSet)
{
    click(u"Spacing"_s);
    const auto fields = popup<QWidget>()->findChildren<QDoubleSpinBox*>();
    ASSERT_EQ(fields.size(), 3);
    press(Qt::Key_Up);
    press(Qt::Key_Up);
    EXPECT_EQ(paragraphAt(0).lineSpacing, 2);
    press(Qt::Key_Tab);
    press(Qt::Key_Tab);
    QTest::keyClicks(popup<QWidget>()->focusWidget(), u"12"_s);
    press(Qt::Key_Tab);
    EXPECT_EQ(paragraphAt(0).spacingAfter, 12);
    EXPECT_EQ(paragraphAt(0).spacingBefore, 0);
    EXPECT_EQ(paragraphAt(0).lineSpacing, 2);
    press(Qt::Key_Space);
    EXPECT_EQ(paragraphAt(0), ParagraphStyle());
    press(Qt::Key_Tab);
    press(Qt::Key_Space);
    ASSERT_TRUE(popup<QWidget>());
    EXPECT_EQ(popup<QWidget>()->windowTitle(), u"Paragraph Background"_s);
    press(Qt::Key_Right);
    press(Qt::Key_Return);
    EXPECT_FALSE(QApplication::activePopupWidget());
    ASSERT_TRUE(paragraphAt(0).background);
    EXPECT_LT(paragraphAt(0).background->alpha, 0.5) << "the text on it stays readable";
}

TEST_F(FormattingBarTest, TheKeyboardGoesAboutInIt)
{
    select(0, 4);
    title->setFocus();
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget(), control(u"Paragraph style"_s));
    for (int i = 0; i < 3; ++i)
        press(Qt::Key_Right);
    ASSERT_EQ(QApplication::focusWidget(), control(u"Bold"_s));
    press(Qt::Key_Return);
    EXPECT_TRUE(at(0).font->isBold());
    press(Qt::Key_Tab);
    EXPECT_TRUE(title->hasFocus()) << "to Tab it is one control";
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget(), control(u"Bold"_s)) << "where one was";
    press(Qt::Key_End);
    EXPECT_EQ(QApplication::focusWidget(), control(u"Insert Image"_s));
    press(Qt::Key_Left);
    press(Qt::Key_Left);
    EXPECT_EQ(QApplication::focusWidget(), control(u"Spacing"_s));
    press(Qt::Key_Down);
    EXPECT_TRUE(QApplication::activePopupWidget());
    press(Qt::Key_Escape);
    press(Qt::Key_Home);
    EXPECT_EQ(QApplication::focusWidget(), control(u"Paragraph style"_s));
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    EXPECT_EQ(at(0).font->size, 32);
    press(Qt::Key_Escape);
    EXPECT_TRUE(view->hasFocus());
    control(u"Bold"_s)->setFocus();
    show(EditorMode::plainText);
    EXPECT_TRUE(view->hasFocus()) << "the bar goes and leaves the keyboard to the text";
}

TEST_F(FormattingBarTest, WhatHasNoRoomIsInTheMenuBehindMore)
{
    QAbstractButton* more = control(u"More Formatting"_s);
    EXPECT_FALSE(more->isVisible());
    pane.resize(420, 400);
    QApplication::processEvents();
    ASSERT_TRUE(more->isVisible());
    for (auto* each : bar()->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        if (each->isVisible()) {
            EXPECT_TRUE(bar()->rect().contains(each->geometry()))
                << qPrintable(each->accessibleName());
        }
    }
    EXPECT_TRUE(control(u"Bold"_s)->isVisible());
    EXPECT_FALSE(control(u"Strikethrough"_s)->isVisible());
    select(0, 4);
    click(u"More Formatting"_s);
    chooseItem(u"Strikethrough"_s);
    EXPECT_EQ(at(0).strikethrough, TextLine::single);
    click(u"More Formatting"_s);
    EXPECT_TRUE(item(u"Strikethrough"_s)->isChecked());
    chooseItem(u"Spacing and Background"_s);
    ASSERT_TRUE(QApplication::activePopupWidget());
    press(Qt::Key_Escape);
    title->setFocus();
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(QApplication::focusWidget() && QApplication::focusWidget()->isVisible());
    EXPECT_TRUE(bar()->isAncestorOf(QApplication::focusWidget()));
}

TEST_F(FormattingBarTest, ASecondPressOnAControlClosesWhatItOpened)
{
    // By the window, as the window system does: a popup sees presses elsewhere, too.
    const auto press = [this](const QString& name) {
        QWidget* pressed = control(name);
        QTest::mouseClick(pane.windowHandle(), Qt::LeftButton, {},
                          pressed->mapTo(&pane, pressed->rect().center()));
        QApplication::processEvents();
    };
    for (const auto& name : {u"Alignment"_s, u"Highlight"_s, u"Font: "_s}) {
        press(name);
        EXPECT_TRUE(QApplication::activePopupWidget()) << qPrintable(name);
        press(name);
        EXPECT_FALSE(QApplication::activePopupWidget()) << qPrintable(name);
        EXPECT_FALSE(control(name)->isDown()) << qPrintable(name);
    }
}

TEST_F(FormattingBarTest, ToolTipsSayTheKeys)
{
    EXPECT_EQ(control(u"Bold"_s)->toolTip(), u"Bold"_s);
    tools.formattingBar().setKeyTexts([](const char* command) {
        return qstrcmp(command, EditorFormatNotifications::bold.name) == 0 ? u"Ctrl+B"_s
                                                                           : QString();
    });
    EXPECT_EQ(control(u"Bold"_s)->toolTip(), u"Bold  Ctrl+B"_s);
    EXPECT_EQ(control(u"Strikethrough"_s)->toolTip(), u"Strikethrough"_s);
}

} // namespace
} // namespace orvane
