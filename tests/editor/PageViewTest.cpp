// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "SelectedNoteFixture.h"
#include "appearance/AppearanceTokens.h"
#include "commands/AppCommandEvents.h"
#include "core/records/PageSizePreset.h"
#include "editor/page/PageFit.h"
#include "editor/pane/EditorPaneView.h"
#include "editor/view/EditorView.h"
#include "support/TestServices.h"
#include "text/store/TextStore.h"

#include <QApplication>
#include <QLineEdit>
#include <QScreen>
#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>
#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

TEST(PageSizePreset, KnowsItsWordsAndMeasures)
{
    EXPECT_FALSE(fromRawValue<PageSizePreset>(u"a4"));
    EXPECT_FALSE(fromRawValue<PageSizePreset>({}));
    for (const PageSizePreset preset : pageSizePresets)
        EXPECT_EQ(fromRawValue<PageSizePreset>(rawValue(preset)), preset);
    EXPECT_EQ(pageSize(PageSizePreset::usLetter), QSizeF(612, 792));
    EXPECT_NEAR(pageSize(PageSizePreset::a4).height(), 841.89, 0.005);
}

TEST(PageFit, GivesWayFromTheOutsideIn)
{
    const struct {
        const char* name;
        qreal available, zoom, left, right;
        PageFit fit;
    } rows[] = {
        {"as wanted", 900, 1.25, 72, 72, {1.25, 72, 72, 468}},
        {"held to its limits below", 900, 0.5, 72, 72, {0.75, 72, 72, 468}},
        {"and above", 3000, 3, 72, 72, {2, 72, 72, 468}},
        {"margins of their own", 900, 1, 100, 36, {1, 100, 36, 476}},
        {"the desk gives way first", 628, 1, 72, 72, {1, 72, 72, 468}},
        {"then the margins", 580, 1, 72, 72, {1, 48, 48, 468}},
        {"by what each has to give", 580, 1, 120, 24, {1, 72, 24, 468}},
        {"then the zoom", 403, 1, 72, 72, {0.75, 24, 24, 468}},
        {"as far as the view goes", 100, 1, 72, 72, {0.5, 24, 24, 468}},
        {"no margins at all", 628, 1, 0, -5, {1, 0, 0, 612}},
        {"margins wider than the page", 900, 1, 900, 300, {1, 351, 117, 144}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(fitPage(row.available, row.zoom, row.left, row.right), row.fit) << row.name;
}

TEST(TokensOnPaper, EveryInkReadsThere)
{
    Tokens tokens = signatureDarkTokens();
    tokens.paper = Qt::white; // light ink on a dark page, and white paper
    const Tokens paper = tokensOnPaper(tokens);
    EXPECT_EQ(paper.on(Surface::Page).ground, QColor(Qt::white));
    EXPECT_LT(paper.pageText.lightness(), 128);
    EXPECT_LT(paper.caret.lightness(), 140);
    EXPECT_LT(paper.markdown.code.lightness(), 140);
    EXPECT_EQ(paper.on(Surface::Binder), tokens.on(Surface::Binder));
}

class PageViewTest : public testing::Test {
protected:
    PageViewTest()
    {
        pane->resize(900, 600);
        pane->show();
        QApplication::setActiveWindow(pane.get());
        pane->focusText();
        pageViewEnabledSetting.write(test.defaults, true);
        editorDisplayZoomSetting.write(test.defaults, 1.0);
        QApplication::processEvents();
    }
    [[nodiscard]] EditorView& view() const { return pane->textView(); }
    [[nodiscard]] QImage picture()
    {
        QApplication::processEvents();
        return pane->grab().toImage().convertToFormat(QImage::Format_RGB32);
    }
    /// The colours of the sheet's left edge and what is on both sides of it, in a row of the pane.
    [[nodiscard]] int sheetLeft(const QImage& shown, int y) const
    {
        for (int x = 0; x < shown.width(); ++x) {
            if (shown.pixelColor(x, y) == look.tokens().paperEdge)
                return x;
        }
        return -1;
    }

    TestServices test;
    AppState app{test.services()};
    QUuid project = *app.projectSession().createProject(u"P"_s, {});
    QUuid note = *app.createNote(u"Title\nfirst line"_s, {});
    Look look{signatureDarkTokens()};
    std::unique_ptr<EditorPaneView> pane = paneOfSelection(app, look);
};

TEST_F(PageViewTest, ASheetOf612PointsStandsInTheMiddleWithItsMargins)
{
    pageMarginLeftSetting.write(test.defaults, 100);
    pageMarginRightSetting.write(test.defaults, 50);
    pageMarginTopSetting.write(test.defaults, 90);
    const QImage shown = picture();
    const int seen = view().viewport()->width();
    const int left = (seen - 612) / 2;
    for (const int y : {40, 300, 500}) {
        EXPECT_EQ(sheetLeft(shown, y), left) << y;
        EXPECT_EQ(shown.pixelColor(left + 8, y), look.tokens().paper) << y;
        EXPECT_EQ(shown.pixelColor(2, y), look.tokens().desk) << y;
        EXPECT_EQ(shown.pixelColor(left + 612 + 20, y), look.tokens().desk) << y;
    }
    EXPECT_EQ(view().textOrigin().x(), left + 100);
    EXPECT_EQ(view().layout().width(), 612 - 150);
    const QPoint text = view().viewport()->mapTo(pane.get(), view().textOrigin().toPoint());
    EXPECT_EQ(text.y(), deskAbovePage + 90);
    const auto fields = pane->findChildren<QLineEdit*>();
    const auto title = std::find_if(fields.begin(), fields.end(), [](const QLineEdit* field) {
        return field->accessibleName() == u"Title of the note";
    });
    EXPECT_EQ((*title)->mapTo(pane.get(), QPoint()).x(), left + 100);
}

TEST_F(PageViewTest, ZoomAndWidthBreakNoLine)
{
    QString text;
    for (int i = 0; i < 60; ++i)
        text += u"Seven posts where the chart had nine. "_s;
    view().setPlainText(text);
    const auto lines = [&] {
        QList<qsizetype> starts;
        for (qsizetype at = 0; at < view().store().length();) {
            const TextRange line = view().layout().lineAt(int(at)).range;
            starts.append(line.location);
            at = line.end() + 1;
        }
        return starts;
    };
    const QList<qsizetype> before = lines();
    ASSERT_GT(before.size(), 10);
    for (const double zoom : {0.5, 0.8, 1.25, 2.0, 3.0}) {
        editorDisplayZoomSetting.write(test.defaults, zoom);
        for (const int width : {1500, 900, 480, 400}) {
            pane->resize(width, 600);
            QApplication::processEvents();
            EXPECT_EQ(lines(), before) << zoom << " at " << width;
            const QRectF page = view().toViewport(QRectF(0, 0, view().layout().width(), 1));
            EXPECT_GE(page.left(), 0) << zoom << " at " << width;
            EXPECT_LE(page.right(), view().viewport()->width()) << zoom << " at " << width;
        }
    }
}

// What moves on the screen as it is must leave the picture that drawing everything makes.
TEST_F(PageViewTest, WritingLeavesThePaperWhole)
{
    bottomDocumentPaddingSetting.write(test.defaults, 0);
    pane->focusText();
    QTest::keyClick(&view(), Qt::Key_End, Qt::ControlModifier);
    const auto onScreen = [this] {
        QApplication::processEvents();
        const QRect area(view().viewport()->mapTo(pane.get(), QPoint()), view().viewport()->size());
        return pane->screen()->grabWindow(pane->winId()).copy(area).toImage();
    };
    for (int i = 0; i < 30; ++i) {
        QTest::keyClick(&view(), Qt::Key_Return);
        onScreen();
        QTest::keyClick(&view(), i % 7 == 3 ? Qt::Key_Backspace : Qt::Key_A);
        const QImage shown = onScreen();
        view().viewport()->update();
        ASSERT_EQ(shown, onScreen()) << i;
    }
    EXPECT_GT(view().verticalScrollBar()->maximum(), 0);
}

TEST_F(PageViewTest, TheCommandTurnsItOnAndOff)
{
    test.notifications.post(AppCommandEvents::togglePageView, CommandTarget{QUuid::createUuid()});
    EXPECT_TRUE(pageViewEnabledSetting.read(test.defaults)) << "another note's";
    test.notifications.post(AppCommandEvents::togglePageView, {});
    EXPECT_FALSE(pageViewEnabledSetting.read(test.defaults));
    EXPECT_EQ(view().textGeometry().pageWidth, 0);
    EXPECT_EQ(sheetLeft(picture(), 300), -1);
    test.notifications.post(AppCommandEvents::togglePageView, CommandTarget{note});
    EXPECT_EQ(view().textGeometry().pageWidth, screenPageWidth);
}

TEST_F(PageViewTest, TheWheelWithCtrlZooms)
{
    const auto turn = [this](int notches) {
        const QPointF place(view().viewport()->rect().center());
        QWheelEvent event(place, view().viewport()->mapToGlobal(place), {}, {0, 120 * notches},
                          Qt::NoButton, Qt::ControlModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(view().viewport(), &event);
        return editorDisplayZoomSetting.read(test.defaults);
    };
    EXPECT_EQ(turn(1), 1.1);
    EXPECT_EQ(view().zoom(), 1.1);
    EXPECT_EQ(turn(-9), leastPageZoom);
    pane->resize(500, 600);
    editorDisplayZoomSetting.write(test.defaults, 1.5);
    const qreal shown = view().zoom();
    ASSERT_LT(shown, 1.5) << "there is no room for more";
    EXPECT_EQ(turn(1), 1.5);
    EXPECT_LT(turn(-1), shown);
    pageViewEnabledSetting.write(test.defaults, false);
    EXPECT_EQ(turn(-20), 0.5);
    EXPECT_EQ(turn(40), 3.0);
}

TEST_F(PageViewTest, APageBreakIsKeptInTheBody)
{
    pane->focusText();
    QTest::keyClick(&view(), Qt::Key_End, Qt::ControlModifier);
    test.notifications.post(AppCommandEvents::insertPageBreak, {});
    pane->session().saveFromExplicitCommand();
    EXPECT_TRUE(app.note(note)->body.readOrNothing().endsWith(u"\n\f\n"));
}

} // namespace
} // namespace orvane
