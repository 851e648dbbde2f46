// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/page/PageRuler.h"

#include "SelectedNoteFixture.h"
#include "appearance/AppearanceTokens.h"
#include "commands/AppCommandEvents.h"
#include "editor/page/RulerMarker.h"
#include "editor/pane/EditorPaneView.h"
#include "editor/view/EditorView.h"
#include "support/TestServices.h"
#include "text/store/TextStore.h"

#include <QAccessible>
#include <QApplication>
#include <QMenu>
#include <QScrollBar>
#include <QTest>
#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;
using enum RulerMarkKind;

RulerMark tabAt(double position, TabAlignment alignment = TabAlignment::left)
{
    return {RulerMarkKind::tab, position, alignment};
}

TEST(RulerMarks, ChangeAParagraph)
{
    ParagraphStyle before;
    before.firstLineHeadIndent = 20;
    before.tailIndent = -30;
    before.tabStops = {{50}, {90, TabAlignment::right}};
    const struct {
        const char* name;
        RulerChange change;
        std::function<void(ParagraphStyle&)> expected;
    } rows[] = {
        {"first line",
         {RulerMark{firstLine, 20}, RulerMark{firstLine, 0}},
         [](ParagraphStyle& style) {
             style.firstLineHeadIndent = 0;
         }},
        {"other lines",
         {RulerMark{head}, RulerMark{head, 36}},
         [](ParagraphStyle& style) {
             style.headIndent = 36;
         }},
        {"end, kept from the trailing margin",
         {RulerMark{tail, 370}, RulerMark{tail, 350}},
         [](ParagraphStyle& style) {
             style.tailIndent = -50;
         }},
        {"end at the margin",
         {RulerMark{tail, 370}, RulerMark{tail, 400}},
         [](ParagraphStyle& style) {
             style.tailIndent = 0;
         }},
        {"tab past another",
         {tabAt(50), tabAt(120)},
         [](ParagraphStyle& style) {
             style.tabStops = {{90, TabAlignment::right}, {120}};
         }},
        {"tab onto another",
         {tabAt(50), tabAt(90)},
         [](ParagraphStyle& style) {
             style.tabStops = {{90}};
         }},
        {"tab turned",
         {tabAt(50), tabAt(50, TabAlignment::center)},
         [](ParagraphStyle& style) {
             style.tabStops[0].alignment = TabAlignment::center;
         }},
        {"new tab",
         {std::nullopt, tabAt(70)},
         [](ParagraphStyle& style) {
             style.tabStops.insert(1, {70});
         }},
        {"tab gone",
         {tabAt(90), std::nullopt},
         [](ParagraphStyle& style) {
             style.tabStops.removeLast();
         }},
        {"tab that this paragraph hasn't",
         {tabAt(11), std::nullopt},
         [](ParagraphStyle&) {
         }},
    };
    for (const auto& row : rows) {
        ParagraphStyle style = before;
        ParagraphStyle expected = before;
        row.expected(expected);
        apply(row.change, 400, style);
        EXPECT_TRUE(style == expected) << row.name;
    }
    EXPECT_EQ(heldPosition({head}, 390, before, 400), 334) << "a line keeps room";
    EXPECT_EQ(heldPosition({tail}, 5, before, 400), 56);
    EXPECT_EQ(heldPosition(tabAt(50), -3, before, 400), 0);
}

/// A rich note with the ruler over it, worked by mouse and keys.
class PageRulerTest : public testing::Test {
protected:
    PageRulerTest()
    {
        QLocale::setDefault(QLocale(QLocale::German));
        rulerVisibleSetting.write(test.defaults, true);
        pane = paneOfSelection(app, look);
        pane->resize(900, 600);
        pane->show();
        QApplication::setActiveWindow(pane.get());
        pane->session().setMode(EditorMode::richText);
        pane->focusText();
        QApplication::processEvents();
    }
    ~PageRulerTest() override { QLocale::setDefault(QLocale::c()); }

    [[nodiscard]] EditorView& view() const { return pane->textView(); }
    [[nodiscard]] PageRuler& ruler() const { return *pane->findChild<PageRuler*>(); }
    /// The marks of a kind are counted from the leading margin.
    [[nodiscard]] RulerMarker* marker(RulerMarkKind kind, int number = 0) const
    {
        auto markers = ruler().findChildren<RulerMarker*>();
        markers.removeIf([kind](const RulerMarker* each) {
            return !each->isVisible() || each->mark().kind != kind;
        });
        std::ranges::sort(markers, {},
                          [](const RulerMarker* each) { return each->mark().position; });
        return markers.value(number);
    }
    /// Where a place of the column stands across the ruler.
    [[nodiscard]] int across(double points) const
    {
        const QPointF place = view().toViewport(QPointF(points, 0));
        return view().viewport()->mapTo(pane.get(), place.toPoint()).x() -
               ruler().mapTo(pane.get(), QPoint()).x();
    }
    void drag(RulerMarkKind kind, double to, int below = 14)
    {
        RulerMarker* moved = marker(kind);
        const int target = across(to);
        const int from = moved->geometry().center().x();
        // The marker goes along under the pointer.
        const auto there = [&](int x, int y) {
            return moved->mapFrom(&ruler(), QPoint(x, y));
        };
        QTest::mousePress(moved, Qt::LeftButton, {}, moved->rect().center());
        QTest::mouseMove(moved, there((from + target) / 2, 14));
        QTest::mouseMove(moved, there(target, below));
        QTest::mouseRelease(moved, Qt::LeftButton, {}, there(target, below));
        QApplication::processEvents();
    }
    [[nodiscard]] const ParagraphStyle& style(qsizetype position) const
    {
        return *view().store().paragraphStyle(position);
    }

    TestServices test;
    AppState app{test.services()};
    QUuid project = *app.projectSession().createProject(u"P"_s, {});
    QUuid empty = *app.createNote(u""_s, {});
    QUuid note = *app.createNote(u"one\ntwo\nthree"_s, {});
    Look look{signatureDarkTokens()};
    std::unique_ptr<EditorPaneView> pane;
};

constexpr double centimetre = 72 / 2.54;

TEST_F(PageRulerTest, IsThereForRichNotesAndTurnedOverATextOnly)
{
    EXPECT_TRUE(ruler().isVisible());
    pane->session().setMode(EditorMode::markdown);
    EXPECT_FALSE(ruler().isVisible());
    pane->session().setMode(EditorMode::richText);
    EXPECT_TRUE(ruler().isVisible());
    const auto toggle = [this] {
        test.notifications.post(AppCommandEvents::toggleRuler, {});
    };
    toggle();
    EXPECT_FALSE(ruler().isVisible());
    EXPECT_FALSE(rulerVisibleSetting.read(test.defaults));
    app.selection().selectNote(empty);
    pane->session().setMode(EditorMode::richText);
    ASSERT_TRUE(view().store().isEmpty());
    toggle();
    EXPECT_FALSE(rulerVisibleSetting.read(test.defaults));
    QTest::keyClicks(&view(), u"x"_s);
    toggle();
    EXPECT_TRUE(ruler().isVisible());
}

TEST_F(PageRulerTest, StandsInLineWithTheTextWhereverThatIs)
{
    view().gateway().performUndoableDocumentEdit(u"x"_s, [](DocumentEditor& editor) {
        editor.modifyParagraphStyles({0, 0}, [](ParagraphStyle& style) {
            style.firstLineHeadIndent = 60;
            style.headIndent = 30;
            style.tailIndent = -100;
            style.tabStops = {{200}};
        });
    });
    const auto middle = [this](RulerMarkKind kind) {
        return marker(kind)->geometry().center().x();
    };
    for (const bool onPaper : {false, true}) {
        pageViewEnabledSetting.write(test.defaults, onPaper);
        for (const double zoom : {0.75, 1.25, 2.0}) {
            editorDisplayZoomSetting.write(test.defaults, zoom);
            for (const int width : {1300, 480}) {
                pane->resize(width, 300);
                QApplication::processEvents();
                view().verticalScrollBar()->setValue(40);
                const double end = view().layout().width() - 100;
                EXPECT_NEAR(middle(firstLine), across(60), 1) << onPaper << zoom << width;
                EXPECT_NEAR(middle(head), across(30), 1) << onPaper << zoom << width;
                EXPECT_NEAR(middle(tail), across(end), 1) << onPaper << zoom << width;
                EXPECT_NEAR(middle(RulerMarkKind::tab), across(200), 1) << onPaper << zoom << width;
            }
        }
    }
}

TEST_F(PageRulerTest, ADragIsOneStepForAllSelectedParagraphs)
{
    view().setSelection({1, 6});
    drag(firstLine, 2 * centimetre + 3);
    EXPECT_NEAR(style(0).firstLineHeadIndent, 2 * centimetre, 0.01) << "on a step";
    EXPECT_NEAR(style(4).firstLineHeadIndent, 2 * centimetre, 0.01);
    EXPECT_EQ(style(8).firstLineHeadIndent, 0);
    EXPECT_EQ(view().selection(), (TextSelection{1, 6}));
    EXPECT_TRUE(view().hasFocus()) << "writing goes on";
    drag(head, 1 * centimetre);
    drag(tail, 10 * centimetre);
    EXPECT_NEAR(view().layout().width() + style(4).tailIndent, 10 * centimetre, 0.01);
    EXPECT_EQ(view().gateway().undoName(), u"Indent");
    view().undo();
    view().undo();
    EXPECT_EQ(style(0).headIndent, 0);
    view().undo();
    EXPECT_EQ(style(0).firstLineHeadIndent, 0);
    EXPECT_EQ(style(4).firstLineHeadIndent, 0);
    EXPECT_FALSE(view().isUndoAvailable());
    drag(head, 0);
    EXPECT_FALSE(view().isUndoAvailable()) << "nothing was moved";
    QTest::mousePress(marker(head), Qt::LeftButton);
    QTest::mouseMove(marker(head), {90, 6});
    EXPECT_GT(marker(head)->mark().position, 0);
    QTest::keyClick(&view(), Qt::Key_Escape);
    EXPECT_EQ(marker(head)->mark().position, 0);
    QTest::mouseRelease(marker(head), Qt::LeftButton);
    EXPECT_FALSE(view().isUndoAvailable()) << "the drag was dropped";
}

TEST_F(PageRulerTest, TabStopsComeTurnMoveAndGo)
{
    QTest::mouseClick(&ruler(), Qt::LeftButton, {}, {across(4 * centimetre), 14});
    ASSERT_EQ(style(0).tabStops.size(), 1);
    EXPECT_NEAR(style(0).tabStops[0].location, 4 * centimetre, 0.01);
    EXPECT_EQ(view().gateway().undoName(), u"Tab Stop");
    ASSERT_TRUE(marker(RulerMarkKind::tab));
    QTest::mouseDClick(marker(RulerMarkKind::tab), Qt::LeftButton);
    EXPECT_EQ(style(0).tabStops[0].alignment, TabAlignment::center);
    drag(RulerMarkKind::tab, 6 * centimetre);
    EXPECT_NEAR(style(0).tabStops[0].location, 6 * centimetre, 0.01);
    drag(RulerMarkKind::tab, 6 * centimetre, 60);
    EXPECT_TRUE(style(0).tabStops.isEmpty());
    EXPECT_FALSE(marker(RulerMarkKind::tab));
    view().undo();
    EXPECT_EQ(style(0).tabStops.size(), 1);
}

TEST_F(PageRulerTest, AllOfItByKeys)
{
    QTest::keyClick(&view(), Qt::Key_Home, Qt::ControlModifier);
    pane->focusTitle();
    for (int i = 0; i < 3 && !marker(firstLine)->hasFocus(); ++i)
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab, Qt::ShiftModifier);
    ASSERT_TRUE(marker(firstLine)->hasFocus());
    const auto press = [](int key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key(key), modifiers);
    };
    press(Qt::Key_Right);
    EXPECT_NEAR(style(0).firstLineHeadIndent, centimetre / 4, 0.01);
    press(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_NEAR(style(0).firstLineHeadIndent, centimetre * 1.25, 0.01);
    press(Qt::Key_Left, Qt::ControlModifier);
    EXPECT_NEAR(style(0).firstLineHeadIndent, centimetre * 1.25 - 1, 0.01);
    press(Qt::Key_Home);
    EXPECT_EQ(style(0).firstLineHeadIndent, 0);
    press(Qt::Key_Insert);
    EXPECT_NEAR(style(0).tabStops.value(0).location, centimetre, 0.01);
    press(Qt::Key_Insert);
    ASSERT_TRUE(marker(RulerMarkKind::tab, 1)->hasFocus()) << "the new one";
    press(Qt::Key_Space);
    EXPECT_EQ(style(0).tabStops.value(1).alignment, TabAlignment::center);
    press(Qt::Key_Home);
    EXPECT_EQ(style(0).tabStops.value(0).location, 0);
    EXPECT_TRUE(marker(RulerMarkKind::tab, 0)->hasFocus()) << "it has passed the other";
    press(Qt::Key_Delete);
    EXPECT_EQ(style(0).tabStops.size(), 1);
    press(Qt::Key_Escape);
    EXPECT_TRUE(view().hasFocus());
}

TEST_F(PageRulerTest, ARightToLeftParagraphBeginsAtTheRight)
{
    view().gateway().performUndoableDocumentEdit(u"x"_s, [](DocumentEditor& editor) {
        editor.modifyParagraphStyles({0, 0}, [](ParagraphStyle& style) {
            style.direction = WritingDirection::rightToLeft;
            style.headIndent = 50;
        });
    });
    EXPECT_NEAR(marker(head)->geometry().center().x(), across(view().layout().width() - 50), 1);
    marker(head)->setFocus();
    QTest::keyClick(marker(head), Qt::Key_Left, Qt::ControlModifier);
    EXPECT_EQ(style(0).headIndent, 51);
}

TEST_F(PageRulerTest, ScreenReadersReadAndSetAMark)
{
    QAccessibleInterface* mark = QAccessible::queryAccessibleInterface(marker(head));
    ASSERT_TRUE(mark);
    EXPECT_EQ(mark->role(), QAccessible::Slider);
    EXPECT_EQ(mark->text(QAccessible::Name), u"Indent of the other lines");
    ASSERT_TRUE(mark->valueInterface());
    mark->valueInterface()->setCurrentValue(1.5);
    EXPECT_NEAR(style(0).headIndent, 1.5 * centimetre, 0.01);
    EXPECT_EQ(mark->text(QAccessible::Value), u"1,5 cm");
    EXPECT_EQ(mark->valueInterface()->currentValue().toDouble(), 1.5);
}

TEST_F(PageRulerTest, WhereNothingMayChangeItOnlyShows)
{
    view().setEditable(false);
    ruler().refresh();
    EXPECT_FALSE(marker(head)->isEnabled());
    QTest::mouseClick(&ruler(), Qt::LeftButton, {}, {across(100), 14});
    EXPECT_TRUE(style(0).tabStops.isEmpty());
}

} // namespace
} // namespace orvane
