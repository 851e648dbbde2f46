// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// The title above the text, and what the strip below it offers.
#include "SelectedNoteFixture.h"
#include "appearance/AppearanceTokens.h"
#include "commands/EditorFormatNotifications.h"
#include "core/records/InternalNoteLink.h"
#include "editor/pane/EditorPaneView.h"
#include "editor/view/EditorView.h"
#include "support/TestServices.h"
#include "text/store/TextStore.h"

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QToolButton>
#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

struct HeadAndStripTest : ::testing::Test {
    TestServices test;
    AppState app{test.services()};
    QUuid project = *app.projectSession().createProject(u"P"_s, {});
    QUuid other = *app.createNote(u"Other"_s, {});
    QUuid note = *app.createNote(u"Title"_s, {});
    Look look{signatureDarkTokens()};
    std::unique_ptr<EditorPaneView> pane = paneOfSelection(app, look);
    QStringList toldTitles;

    HeadAndStripTest()
    {
        QObject::connect(pane.get(), &EditorPaneView::titleOutOfSight,
                         [this](const QString& title) { toldTitles.append(title); });
        pane->resize(900, 600);
        pane->show();
        QApplication::setActiveWindow(pane.get());
        pane->focusTitle();
        QTest::keyClicks(&title(), u"Title"_s);
        pane->focusText();
        settle();
    }
    static void settle() { QApplication::processEvents(); }
    [[nodiscard]] EditorView& view() const { return pane->textView(); }
    [[nodiscard]] QLineEdit& title() const
    {
        for (auto* field : pane->findChildren<QLineEdit*>()) {
            if (field->accessibleName() == u"Title of the note")
                return *field;
        }
        std::abort();
    }
    /// The title's place in the pane.
    [[nodiscard]] QRect titleRect() const
    {
        return {title().mapTo(pane.get(), QPoint()), title().size()};
    }
    [[nodiscard]] QRect caretRect() const
    {
        return view().caretRect().toRect().translated(
            view().viewport()->mapTo(pane.get(), QPoint()));
    }
    template <typename Button>
    [[nodiscard]] Button* seen(const QString& name) const
    {
        for (auto* button : pane->findChildren<Button*>()) {
            if (button->isVisible() && (button->text() == name || button->accessibleName() == name))
                return button;
        }
        return nullptr;
    }
    [[nodiscard]] QToolButton& zoomButton() const
    {
        for (auto* button : pane->findChildren<QToolButton*>()) {
            if (button->accessibleName().startsWith(u"Zoom"))
                return *button;
        }
        std::abort();
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(&view(), key, modifiers);
        settle();
    }
    void fill(int lines)
    {
        view().selectAll();
        view().gateway().type(u"a line\n"_s.repeated(lines));
        settle();
    }
};

TEST_F(HeadAndStripTest, TheTitleScrollsWithItsPage)
{
    for (const bool isPage : {false, true}) {
        SCOPED_TRACE(isPage);
        pageViewEnabledSetting.write(test.defaults, isPage);
        fill(200);
        QScrollBar& bar = *view().verticalScrollBar();
        bar.setValue(0);
        settle();
        view().setSelection(TextSelection::caret(0));
        const QRect atTop = titleRect();
        const int gap = caretRect().top() - atTop.bottom();
        EXPECT_GT(atTop.top(), 0);
        EXPECT_NEAR(atTop.left(), caretRect().center().x(), 3);
        EXPECT_GE(gap, 0);
        EXPECT_TRUE(toldTitles.isEmpty() || toldTitles.last().isEmpty());
        for (const int value : {1, 30, 60, 31, 10}) {
            bar.setValue(value);
            settle();
            EXPECT_EQ(titleRect().top(), atTop.top() - value);
            EXPECT_NEAR(caretRect().top() - titleRect().bottom(), gap, 1);
        }
        bar.setValue(400);
        settle();
        EXPECT_LT(titleRect().bottom(), 0);
        EXPECT_EQ(toldTitles.last(), u"Title"_s);
        press(Qt::Key_Home, Qt::ControlModifier);
        EXPECT_EQ(titleRect(), atTop) << "the first line comes with its title";
        EXPECT_EQ(toldTitles.last(), QString());
    }
}

TEST_F(HeadAndStripTest, TheKeyboardPassesBetweenTitleAndText)
{
    fill(200);
    view().verticalScrollBar()->setValue(900);
    pane->focusTitle();
    settle();
    EXPECT_GT(titleRect().top(), 0) << "it is shown";
    QTest::keyClicks(pane->focusWidget(), u"New name"_s);
    EXPECT_EQ(pane->session().draft().title, u"New name"_s);
    QTest::keyClick(&title(), Qt::Key_Down);
    EXPECT_TRUE(view().hasFocus());
    press(Qt::Key_Home, Qt::ControlModifier);
    press(Qt::Key_Up);
    EXPECT_TRUE(title().hasFocus());
    QTest::keyClick(&title(), Qt::Key_Tab);
    EXPECT_TRUE(view().hasFocus()) << pane->focusWidget()->metaObject()->className() << " "
                                   << qPrintable(pane->focusWidget()->accessibleName());
}

TEST_F(HeadAndStripTest, ZoomByKeysCommandsAndStrip)
{
    const auto percent = [this] {
        return qRound(view().zoom() * 100);
    };
    EXPECT_EQ(percent(), 125);
    EXPECT_EQ(zoomButton().text(), u"125 %"_s);
    press(Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_EQ(percent(), 150);
    press(Qt::Key_Equal, Qt::ControlModifier);
    EXPECT_EQ(percent(), 175);
    press(Qt::Key_Minus, Qt::ControlModifier);
    EXPECT_EQ(percent(), 150);
    EXPECT_EQ(zoomButton().text(), u"150 %"_s);
    QTest::keyClick(&title(), Qt::Key_0, Qt::ControlModifier);
    settle();
    EXPECT_EQ(percent(), 125) << "from the title, too";
    test.notifications.post(AppCommandEvents::zoomOut, {});
    EXPECT_EQ(percent(), 110);
    for (int i = 0; i < 20; ++i)
        press(Qt::Key_Minus, Qt::ControlModifier);
    EXPECT_EQ(percent(), 50);
    for (int i = 0; i < 20; ++i)
        press(Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_EQ(percent(), 300);
    auto* menu = zoomButton().findChild<QMenu*>();
    ASSERT_TRUE(menu);
    QTest::mouseClick(&zoomButton(), Qt::LeftButton);
    ASSERT_FALSE(menu->actions().isEmpty());
    const QList<QAction*> choices = menu->actions();
    for (QAction* action : choices) {
        EXPECT_EQ(action->isChecked(), action->text() == u"300 %");
        if (action->text() == u"200 %")
            action->trigger();
    }
    menu->close();
    QApplication::setActiveWindow(pane.get());
    settle();
    EXPECT_EQ(percent(), 200);
    pageViewEnabledSetting.write(test.defaults, true);
    view().verticalScrollBar()->setValue(0);
    for (int i = 0; i < 20; ++i)
        test.notifications.post(AppCommandEvents::zoomOut, {});
    EXPECT_EQ(percent(), 75) << "as small as a page goes";
}

TEST_F(HeadAndStripTest, FormattingInAPlainNoteOffersARichOne)
{
    const QString make = u"Make This Note Rich Text"_s;
    fill(1);
    view().setSelection({0, 6});
    EXPECT_FALSE(seen<QPushButton>(make));
    test.notifications.post(EditorFormatNotifications::bold, {});
    settle();
    ASSERT_TRUE(seen<QPushButton>(make));
    EXPECT_TRUE(seen<QLabel>(u"Plain Text has no bold."_s));
    QTest::mouseClick(seen<QPushButton>(make), Qt::LeftButton);
    settle();
    EXPECT_EQ(pane->session().mode(), EditorMode::richText);
    EXPECT_TRUE(view().store().characterStyle(2)->font->isBold()) << "and what was asked for";
    EXPECT_FALSE(seen<QPushButton>(make));
    EXPECT_TRUE(view().hasFocus());

    test.notifications.post(AppCommandEvents::writePlainText, {});
    settle();
    EXPECT_EQ(pane->session().mode(), EditorMode::plainText);
    test.notifications.post(EditorFormatNotifications::italic, {});
    settle();
    EXPECT_FALSE(seen<QPushButton>(make)) << "once a note";

    app.selection().selectNote(other);
    test.notifications.post(AppCommandEvents::applyHeading1, {});
    settle();
    EXPECT_TRUE(seen<QLabel>(u"Plain Text has no headings."_s));
    QTest::mouseClick(seen<QToolButton>(u"Not Now"_s), Qt::LeftButton);
    EXPECT_FALSE(seen<QPushButton>(make));
    EXPECT_EQ(pane->session().mode(), EditorMode::plainText);

    app.selection().selectNote(*app.createNote(u"Third"_s, {}));
    test.notifications.post(AppCommandEvents::writeMarkdown, {});
    test.notifications.post(EditorFormatNotifications::bold, {});
    settle();
    EXPECT_FALSE(seen<QPushButton>(make)) << "its marks are Markdown's own";
    test.notifications.post(AppCommandEvents::writePlainText, {});
    test.notifications.post(EditorFormatNotifications::bold, {});
    settle();
    ASSERT_TRUE(seen<QPushButton>(make));
    app.selection().selectNote(other);
    settle();
    EXPECT_FALSE(seen<QPushButton>(make)) << "goes with its note";
}

TEST_F(HeadAndStripTest, APasteSaysWhatCameAndWhatStayedBehind)
{
    pane->session().setMode(EditorMode::richText);
    view().selectAll();
    view().gateway().type(u"before"_s);
    auto* clipboard = new QMimeData;
    clipboard->setData(
        u"text/rtf"_s,
        R"({\rtf1 one{\super\chftn}{\footnote{\super\chftn} Note.} two{\header top}\par})");
    clipboard->setText(u"one two"_s);
    QGuiApplication::clipboard()->setMimeData(clipboard);
    const auto paste = [this] {
        view().selectAll();
        press(Qt::Key_V, Qt::ControlModifier);
        EXPECT_TRUE(view().store().text().contains(u"Note."_s));
        EXPECT_TRUE(seen<QLabel>(u"Pasted with 1 footnotes."_s));
        EXPECT_TRUE(seen<QLabel>(u"1 headers and footers stayed behind."_s));
        const QWidget* strip = seen<QPushButton>(u"Undo"_s)->parentWidget();
        for (const auto* label : strip->findChildren<QLabel*>())
            EXPECT_TRUE(label->wordWrap() || label->width() >= label->sizeHint().width())
                << qUtf8Printable(label->text());
        for (const auto* button : strip->findChildren<QPushButton*>())
            EXPECT_GE(button->width(), button->sizeHint().width());
    };
    paste();
    press(Qt::Key_Shift);
    const auto* plain = seen<QPushButton>(u"Paste as Plain Text"_s);
    ASSERT_NE(plain, nullptr);
    EXPECT_TRUE(pane->rect().contains(QRect(plain->mapTo(pane.get(), QPoint()), plain->size())));
    pane->resize(430, 600);
    settle();
    for (const auto* label : plain->parentWidget()->findChildren<QLabel*>())
        EXPECT_TRUE(pane->rect().contains(QRect(label->mapTo(pane.get(), QPoint()), label->size())))
            << "also in a narrow pane";
    press(Qt::Key_Right);
    EXPECT_FALSE(seen<QPushButton>(u"Undo"_s)) << "leaves at the next key";

    paste();
    QTest::mouseClick(seen<QPushButton>(u"Undo"_s), Qt::LeftButton);
    EXPECT_FALSE(seen<QPushButton>(u"Undo"_s));
    EXPECT_TRUE(view().hasFocus());
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(view().store().text(), u"before"_s);

    paste();
    QTest::mouseClick(seen<QPushButton>(u"Paste as Plain Text"_s), Qt::LeftButton);
    EXPECT_EQ(view().store().text(), u"one two"_s);
    EXPECT_FALSE(seen<QPushButton>(u"Undo"_s)) << "words alone are no news";

    paste();
    app.openNote(other);
    settle();
    EXPECT_FALSE(seen<QPushButton>(u"Undo"_s)) << "goes with its note";
}

TEST_F(HeadAndStripTest, LinksLeadToPlacesWithinNotes)
{
    const auto write = [this](const QUuid& id) {
        app.openNote(id);
        settle();
        pane->session().setMode(EditorMode::richText);
        CharacterStyle number;
        number.link = u"#fn-1"_s;
        number.targetName = u"ref-1"_s;
        AttributedString text(u"1"_s, number);
        text.append(u"\na line"_s.repeated(80), CharacterStyle());
        number = {};
        number.link = u"#ref-1"_s;
        number.targetName = u"fn-1"_s;
        text.append(u"\n"_s, CharacterStyle());
        text.append(u"1. "_s, number);
        text.append(u"the note"_s, CharacterStyle());
        view().selectAll();
        view().gateway().insert(text, u"Paste"_s);
        view().setSelection(TextSelection::caret(0));
        settle();
    };
    write(other);
    write(note);
    const auto caretsLine = [this] {
        const QString text = view().store().text();
        const qsizetype from = text.lastIndexOf(u'\n', view().selection().position) + 1;
        return text.mid(from, 5);
    };
    pane->openLink(u"#fn-1"_s);
    EXPECT_EQ(caretsLine(), u"1. th"_s);
    EXPECT_TRUE(pane->rect().contains(caretRect())) << "in sight";
    pane->openLink(u"#ref-1"_s);
    EXPECT_EQ(view().selection(), TextSelection::caret(0));
    pane->openLink(u"#nowhere"_s);
    EXPECT_EQ(view().selection(), TextSelection::caret(0));
    EXPECT_EQ(test.beeper.count, 1);

    pane->openLink(u"orvaneworkspace://note/%1#fn-1"_s.arg(other.toString(QUuid::WithoutBraces)));
    settle();
    EXPECT_EQ(pane->session().noteID(), other);
    EXPECT_EQ(caretsLine(), u"1. th"_s);
    pane->openLink(InternalNoteLink::link(note));
    settle();
    EXPECT_EQ(pane->session().noteID(), note);
    EXPECT_EQ(view().selection(), TextSelection::caret(0)) << "where it was";
    pane->openLink(InternalNoteLink::link(QUuid::createUuid()));
    EXPECT_EQ(test.beeper.count, 2);
}

TEST_F(HeadAndStripTest, AnEmptiedListLeavesNoIndent)
{
    test.notifications.post(AppCommandEvents::writeRichText, {});
    fill(0);
    QTest::keyClicks(&view(), u"plain"_s);
    const double column = view().caretRect().x();
    view().selectAll();
    press(Qt::Key_Delete);
    const double empty = view().caretRect().x();
    QTest::keyClicks(&view(), u"one"_s);
    test.notifications.post(EditorFormatNotifications::bulletList, {});
    press(Qt::Key_Return);
    QTest::keyClicks(&view(), u"two"_s);
    view().selectAll();
    press(Qt::Key_Delete);
    EXPECT_NEAR(view().caretRect().x(), empty, 0.01);
    EXPECT_TRUE(view().store().paragraphStyle(0)->textLists.isEmpty());
    QTest::keyClicks(&view(), u"plain"_s);
    EXPECT_NEAR(view().caretRect().x(), column, 0.01);
    press(Qt::Key_Z, Qt::ControlModifier);
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(view().plainText(), u"• one\n• two"_s);
    EXPECT_FALSE(view().store().paragraphStyle(0)->textLists.isEmpty()) << "which comes back";
    press(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(view().plainText(), QString()) << "by the other key for it";
}

TEST_F(HeadAndStripTest, WordsOfAFormerItemStandInTheColumn)
{
    test.notifications.post(AppCommandEvents::writeRichText, {});
    // As an earlier program left it: the paragraph of a list, without a marker.
    AttributedString text(u"Words of it"_s);
    ParagraphStyle item;
    item.headIndent = 18;
    item.textLists = {TextList{}};
    text.setParagraphStyle(text.fullRange(), item);
    view().gateway().load(text, {});
    view().setSelection(TextSelection::caret(0));
    EXPECT_GE(view().caretRect().x(), view().textOrigin().x() - 0.01);
}

} // namespace
} // namespace orvane
