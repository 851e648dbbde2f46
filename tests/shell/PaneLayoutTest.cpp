// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "commands/AppCommandEvents.h"
#include "shell/layout/OrvaneWorkspaceSplitViewController.h"
#include "shell/layout/PaneLayoutSettings.h"
#include "shell/layout/SplitDivider.h"
#include "support/TestServices.h"

#include <QAccessible>
#include <QTest>
#include <gtest/gtest.h>

#include <random>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Pane = ThreePaneSplitView::Pane;

QStringList* capturedLog = nullptr;
QLoggingCategory::CategoryFilter previousFilter = nullptr;

/// A main window's panes over settings in memory. `start` is a start of the program: what is
/// remembered comes from the model of the one before.
class PaneLayoutTest : public testing::Test {
protected:
    PaneLayoutTest()
    {
        capturedLog = &m_log;
        // Above what the environment asks for.
        previousFilter = QLoggingCategory::installFilter(nullptr);
        QLoggingCategory::installFilter([](QLoggingCategory* category) {
            previousFilter(category);
            if (QLatin1String(category->categoryName()).endsWith("PaneLayout"_L1))
                category->setEnabled(QtInfoMsg, true);
        });
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext& context,
                                  const QString& text) {
            if (QLatin1String(context.category) == QLatin1String(paneLayoutLog().categoryName()))
                capturedLog->append(text);
        });
    }
    ~PaneLayoutTest() override
    {
        stop();
        qInstallMessageHandler(nullptr);
        QLoggingCategory::installFilter(previousFilter);
        capturedLog = nullptr;
    }

    void stop()
    {
        m_controller.reset();
        m_view.reset();
    }

    void start(SideWidths remembered, QSize size = {1440, 800})
    {
        stop();
        m_model = std::make_unique<SplitPaneLayoutModel>();
        m_model->setBinderWidth(remembered.binder);
        m_model->setInspectorWidth(remembered.inspector);
        m_view = std::make_unique<ThreePaneSplitView>();
        for (const Pane pane : {Pane::Binder, Pane::Editor, Pane::Inspector})
            m_view->setPane(pane, new QWidget);
        m_view->setSlideDuration(0);
        m_controller = std::make_unique<OrvaneWorkspaceSplitViewController>(*m_view, *m_model,
                                                                            m_test.services());
        m_view->resize(size);
        m_view->show();
        m_log.clear();
    }

    [[nodiscard]] SideWidths live() const
    {
        return {m_view->liveWidths().binder, m_view->liveWidths().inspector};
    }
    [[nodiscard]] UserDefaults& defaults() { return m_test.defaults; }
    void post(const Notification<NoPayload>& command) { m_test.notifications.post(command); }

    void drag(SidePane pane, int by, bool cancel = false)
    {
        SplitDivider* divider = m_view->divider(pane);
        const QPoint grip(SplitDivider::grabWidth - 1, 10);
        QTest::mousePress(divider, Qt::LeftButton, {}, grip);
        QTest::mouseMove(divider, grip + QPoint(by / 2, 0));
        QTest::mouseMove(divider, grip + QPoint(by - by / 2, 0));
        if (cancel)
            QTest::keyClick(divider, Qt::Key_Escape);
        QTest::mouseRelease(divider, Qt::LeftButton, {}, grip);
    }

    TestServices m_test;
    std::unique_ptr<SplitPaneLayoutModel> m_model;
    std::unique_ptr<ThreePaneSplitView> m_view;
    std::unique_ptr<OrvaneWorkspaceSplitViewController> m_controller;
    QStringList m_log;
};

TEST_F(PaneLayoutTest, OpensAtRememberedWidths)
{
    struct Row {
        const char* name;
        SideWidths remembered;
        QSize size;
        SideWidths live;
        SideWidths rememberedThen;
    };
    const Row rows[] = {
        {"nothing remembered", {0, 1}, {1440, 800}, {288, 288}, {288, 288}},
        {"as remembered", {230, 310}, {1440, 800}, {230, 310}, {230, 310}},
        {"too wide and too narrow", {500, 100}, {1440, 800}, {320, 220}, {320, 220}},
        {"a narrow window squeezes without being remembered",
         {320, 320},
         {1114, 600},
         {250, 250},
         {320, 320}},
        {"the smallest window", {288, 288}, {960, 600}, {288, 0}, {288, 288}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        start(row.remembered, row.size);
        EXPECT_EQ(live(), row.live);
        EXPECT_EQ(m_model->sideWidths(), row.rememberedThen);
    }
}

TEST_F(PaneLayoutTest, AWiderWindowGivesSqueezedPanesTheirWidthBack)
{
    start({300, 310});
    for (const int width : {1300, 1150, 1080, 960, 700, 300, 0, 1500}) {
        m_view->resize(width, 700);
        EXPECT_EQ(m_model->sideWidths(), (SideWidths{300, 310})) << width;
    }
    EXPECT_EQ(live(), (SideWidths{300, 310}));
}

TEST_F(PaneLayoutTest, HidingKeepsTheWidthAndShowingReturnsToIt)
{
    start({250, 300});
    post(AppCommandEvents::collapseLeftPane);
    EXPECT_EQ(live(), (SideWidths{0, 300}));
    EXPECT_FALSE(PaneLayoutSettings::binderVisible.read(defaults()));
    EXPECT_EQ(m_log, QStringList({u"🔧 synced binder split-item collapse -> true"_s,
                                  u"🔧 synced inspector split-item collapse -> false"_s,
                                  u"⚠️ blocked binder zero-width writeback 0 (visible=false)"_s,
                                  u"💾 writing inspector width 300 (visible=true)"_s}));
    post(AppCommandEvents::toggleInspector);
    EXPECT_EQ(live(), (SideWidths{0, 0}));
    EXPECT_EQ(m_view->liveWidths().editor, 1440);
    EXPECT_EQ(m_model->sideWidths(), (SideWidths{250, 300}));
    EXPECT_FALSE(m_view->pane(Pane::Binder)->isVisible());

    start(m_model->sideWidths());
    EXPECT_EQ(live(), (SideWidths{0, 0})) << "hidden panes stay hidden over a restart";
    post(AppCommandEvents::toggleBinder);
    EXPECT_EQ(live(), (SideWidths{250, 0}));
    post(AppCommandEvents::collapseRightPane);
    post(AppCommandEvents::restoreThreePaneLayout);
    EXPECT_EQ(live(), (SideWidths{250, 300}));

    defaults().set(PaneLayoutSettings::binderVisible.keyText(), u"no"_s);
    EXPECT_EQ(live().binder, 250) << "a value that is no truth value counts as shown";
    PaneLayoutSettings::binderVisible.write(defaults(), false);
    EXPECT_EQ(live().binder, 0) << "the setting itself is followed";
}

TEST_F(PaneLayoutTest, StartupIsRepairedAndToldOnce)
{
    int restored = 0;
    const auto observation = m_test.notifications.observe(AppCommandEvents::splitLayoutRestored,
                                                          [&](const NoPayload&) { ++restored; });
    start({300, 300}, {1440, 800});
    // A window that comes up at a wrong size first.
    m_view->resize(640, 400);
    EXPECT_LT(live().inspector, PaneMetrics::sideMinimum);
    m_log.clear();
    m_test.clock.advance(80ms);
    EXPECT_TRUE(m_log.contains(u"🛠️ startup repair triggered (binder=0 inspector=0)"_s))
        << qPrintable(m_log.join(u'\n'));
    EXPECT_TRUE(m_log.contains(u"✅ startup repair applied (target binder=0 inspector=0)"_s));
    m_view->resize(1440, 800);
    m_log.clear();
    m_test.clock.advance(120ms);
    EXPECT_EQ(m_log, QStringList()) << "nothing to repair";
    EXPECT_EQ(restored, 0);
    m_test.clock.advance(40ms);
    EXPECT_EQ(restored, 1);
    m_view->hide();
    m_view->show();
    m_test.clock.advance(1s);
    EXPECT_EQ(restored, 1);
    EXPECT_EQ(m_model->sideWidths(), (SideWidths{300, 300}));

    start({300, 300});
    stop();
    m_test.clock.advance(1s);
    EXPECT_EQ(restored, 1) << "a closed window has no steps left";
}

TEST_F(PaneLayoutTest, DraggingRemembersWhatAPersonChose)
{
    start({288, 288});
    drag(SidePane::Binder, 30);
    EXPECT_EQ(m_model->sideWidths(), (SideWidths{318, 288}));
    drag(SidePane::Binder, -60);
    EXPECT_EQ(m_model->sideWidths(), (SideWidths{258, 288})) << "narrower again";
    drag(SidePane::Inspector, -100);
    EXPECT_EQ(m_model->sideWidths(), (SideWidths{258, 388})) << "wider than it will be restored";
    m_view->resize(1400, 800);
    EXPECT_EQ(live(), (SideWidths{258, 388}));
    drag(SidePane::Binder, 55, true);
    EXPECT_EQ(m_model->sideWidths(), (SideWidths{258, 388})) << "Escape takes it back";
    drag(SidePane::Binder, -500);
    EXPECT_EQ(m_model->binderWidth(), 220);

    m_model->setLocks({true, false, false});
    EXPECT_TRUE(PaneLayoutSettings::binderLock.read(defaults()));
    drag(SidePane::Binder, 50);
    EXPECT_EQ(live().binder, 220);
    PaneLayoutSettings::binderLock.write(defaults(), false);
    PaneLayoutSettings::editorLock.write(defaults(), true);
    const double editor = m_view->liveWidths().editor;
    drag(SidePane::Binder, 50);
    EXPECT_EQ(live(), (SideWidths{270, 338}));
    EXPECT_EQ(m_view->liveWidths().editor, editor);
}

TEST_F(PaneLayoutTest, TheDividerWorksByKeyAndByAccessibility)
{
    start({288, 288});
    SplitDivider* divider = m_view->divider(SidePane::Inspector);
    m_view->activateWindow();
    divider->setFocus();
    QTest::keyClick(divider, Qt::Key_Left);
    EXPECT_EQ(live().inspector, 296);
    QTest::keyClick(divider, Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(live().inspector, 264);
    QTest::keyClick(divider, Qt::Key_Home);
    EXPECT_EQ(live().inspector, 220);
    QTest::keyClick(divider, Qt::Key_End);
    EXPECT_EQ(m_view->liveWidths().editor, 612);

    QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(divider);
    ASSERT_TRUE(interface);
    EXPECT_EQ(interface->role(), QAccessible::Splitter);
    EXPECT_EQ(interface->text(QAccessible::Name), u"Width of the right pane"_s);
    QAccessibleValueInterface* value = interface->valueInterface();
    ASSERT_TRUE(value);
    EXPECT_EQ(value->currentValue().toDouble(), live().inspector);
    EXPECT_EQ(value->maximumValue().toDouble(), live().inspector);
    value->setCurrentValue(240);
    EXPECT_EQ(m_model->inspectorWidth(), 240);

    const QRect area = divider->geometry();
    const int line = 1440 - 240 - 1;
    EXPECT_EQ(area, QRect(line - 4, 0, 9, 800)) << "wider than the line it draws";
}

TEST_F(PaneLayoutTest, TheModelIsFollowed)
{
    start({288, 288});
    m_model->setBinderWidth(240);
    EXPECT_EQ(live().binder, 240);
    m_model->setBinderWidth(700);
    EXPECT_EQ(live().binder, 320);
    m_model->setInspectorWidth(1);
    EXPECT_EQ(live().inspector, 288) << "an unknown width moves nothing";
    PaneLayoutSettings::editorPageWidth.write(defaults(), 900.0);
    m_view->resize(1480, 800);
    EXPECT_EQ(m_view->liveWidths().editor, 900);
}

TEST_F(PaneLayoutTest, SlidingRemembersNothingUntilItEnds)
{
    start({288, 288});
    m_view->setSlideDuration(120);
    post(AppCommandEvents::collapseLeftPane);
    EXPECT_TRUE(m_view->isSliding());
    int steps = 0;
    double last = live().binder;
    while (m_view->isSliding() && steps < 1000) {
        QTest::qWait(5);
        ++steps;
        EXPECT_LE(live().binder, last);
        last = live().binder;
        const PaneWidths& widths = m_view->liveWidths();
        const double lines = widths.binder > 0 ? 2 : 1;
        EXPECT_NEAR(widths.binder + widths.editor + widths.inspector + lines, 1440, 1);
        EXPECT_EQ(m_view->pane(Pane::Binder)->width(), 288) << "its content is not squeezed";
        EXPECT_EQ(m_model->binderWidth(), 288);
    }
    EXPECT_GT(steps, 3);
    EXPECT_EQ(live().binder, 0);
    post(AppCommandEvents::toggleBinder);
    post(AppCommandEvents::toggleBinder); // in the middle of the slide
    post(AppCommandEvents::toggleBinder);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !m_view->isSliding(); }));
    EXPECT_EQ(live().binder, 288);
    EXPECT_EQ(m_model->binderWidth(), 288);

    m_controller->setReducedMotion([] { return true; });
    post(AppCommandEvents::collapseRightPane);
    EXPECT_FALSE(m_view->isSliding());
    EXPECT_EQ(live().inspector, 0);
}

/// Whatever is done to the window, its panes and locks, in any order.
TEST_F(PaneLayoutTest, RandomSequencesKeepTheRules)
{
    for (const unsigned seed : {1u, 5u, 7u, 20u, 4711u}) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        const auto below = [&](int limit) {
            return int(random() % unsigned(limit));
        };
        PaneLayoutSettings::binderVisible.write(defaults(), true);
        PaneLayoutSettings::inspectorVisible.write(defaults(), true);
        start({double(below(600)), double(below(600))});
        for (int i = 0; i < 1500; ++i) {
            const SideWidths rememberedBefore = m_model->sideWidths();
            const PaneWidths before = m_view->liveWidths();
            const SidePane pane = below(2) ? SidePane::Binder : SidePane::Inspector;
            const int what = below(8);
            switch (what) {
            case 0:
            case 1:
                m_view->resize(960 + below(1600), 600);
                break;
            case 2:
                post(below(2) ? AppCommandEvents::toggleBinder : AppCommandEvents::toggleInspector);
                break;
            case 3:
                m_model->setLocks({below(3) == 0, below(3) == 0, below(3) == 0});
                break;
            case 4:
                PaneLayoutSettings::writeLocks(defaults(), {});
                start(m_model->sideWidths(), {960 + below(1600), 600});
                break;
            case 5:
                post(AppCommandEvents::restoreThreePaneLayout);
                break;
            default:
                m_view->resizePane(pane, below(900));
                break;
            }
            const PaneWidths now = m_view->liveWidths();
            const SplitLayout& layout = m_view->splitLayout();
            const SideWidths remembered = m_model->sideWidths();
            ASSERT_EQ(now.binder + now.editor + now.inspector + (now.binder > 0) +
                          (now.inspector > 0),
                      m_view->width())
                << i << " " << what;
            ASSERT_GE(remembered.binder, PaneMetrics::sideMinimum) << i << " " << what;
            ASSERT_GE(remembered.inspector, PaneMetrics::sideMinimum) << i << " " << what;
            const bool dragged = what >= 6;
            if (!dragged && what != 3 && what != 4) { // those may clamp to the maximum
                const auto mayBecome = [](double from, double to) {
                    return to == from || to == sidePaneTarget(from);
                };
                ASSERT_TRUE(mayBecome(rememberedBefore.binder, remembered.binder)) << i;
                ASSERT_TRUE(mayBecome(rememberedBefore.inspector, remembered.inspector)) << i;
            }
            if (what == 4) {
                ASSERT_LE(now.binder, PaneMetrics::sideMaximum);
                ASSERT_LE(now.inspector, PaneMetrics::sideMaximum);
            }
            if ((what < 2 || dragged) && layout.visible.binder && layout.locks.binder) {
                ASSERT_EQ(now.binder, before.binder) << i;
            }
            if ((what < 2 || dragged) && layout.visible.inspector && layout.locks.inspector &&
                layout.total >= 960) {
                ASSERT_EQ(now.inspector, before.inspector) << i;
            }
            if (dragged && layout.locks.editor) {
                ASSERT_EQ(now.editor, before.editor) << i;
            }
        }
    }
}

} // namespace
} // namespace orvane
