// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/toolbar/MainToolbar.h"

#include "ShellFixture.h"
#include "shell/toolbar/ToolbarButtons.h"

#include <QLayout>
#include <QMenu>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

class MainToolbarTest : public ShellTest {
protected:
    void SetUp() override
    {
        dismissWelcome();
        start();
        m_first = *state().projectSession().createProject(u"Tidewater & Sons"_s, {});
    }
    QMenu* openMenu()
    {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        EXPECT_NE(menu, nullptr);
        return menu;
    }
    static QStringList textsOf(const QMenu& menu)
    {
        QStringList texts;
        for (const QAction* action : menu.actions()) {
            if (!action->isSeparator())
                texts.append(action->text());
        }
        return texts;
    }

    QUuid m_first;
};

TEST_F(MainToolbarTest, WhatHasNoRoomIsBehindMore)
{
    auto* toolbar = find<MainToolbar>();
    toolbar->parentWidget()->layout()->removeWidget(toolbar);
    toolbar->raise(); // and as wide as we say
    QStringList hidden;
    for (const int width : {1440, 580, 420, 320, 960}) {
        SCOPED_TRACE(width);
        toolbar->resize(width, toolbar->height());
        TourHand::settle();
        int right = 0;
        for (QObject* child : toolbar->children()) {
            auto* widget = qobject_cast<QWidget*>(child);
            if (!widget || !widget->isVisible() || widget->isWindow())
                continue;
            EXPECT_GE(widget->x(), right) << widget->metaObject()->className();
            right = widget->geometry().right() + 1;
        }
        EXPECT_LE(right, toolbar->width());
        hidden.clear();
        if (QAbstractButton* more = button(u"More"_s)) {
            m_hand->click(*more);
            hidden = textsOf(*openMenu());
            openMenu()->close();
        }
        ASSERT_EQ(hidden.isEmpty(), width >= 960);
        EXPECT_EQ(hidden.contains(u"Find a Note or Command"_s), !find<FinderButton>());
    }
    toolbar->resize(420, toolbar->height());
    TourHand::settle();
    m_hand->click(*button(u"More"_s));
    for (QAction* action : openMenu()->actions()) {
        if (action->text() == u"Find a Note or Command"_s)
            action->trigger();
    }
    openMenu()->close();
    EXPECT_EQ(sheetTitle(), u"Command Palette"_s);
}

TEST_F(MainToolbarTest, AToolOfAnotherPartStandsBeforeTheTogglesOfThePanes)
{
    auto* tool = new QToolButton;
    tool->setText(u"2 updates"_s);
    find<MainToolbar>()->addTool(tool);
    TourHand::settle();
    EXPECT_TRUE(tool->isVisible());
    EXPECT_GT(tool->x(), find<FinderButton>()->geometry().right());
    EXPECT_LT(tool->geometry().right(), button(u"Toggle Left Pane"_s)->x());
}

TEST_F(MainToolbarTest, TheTitleLeadsToOtherProjects)
{
    const QUuid second = *state().projectSession().createProject(u"Field notes"_s, {});
    auto* switcher = find<ProjectSwitcher>();
    EXPECT_EQ(switcher->accessibleName(), u"Project Field notes"_s);
    QTimer::singleShot(50, switcher, [&] {
        QMenu* menu = openMenu();
        EXPECT_EQ(textsOf(*menu), (QStringList{u"Field notes"_s, u"Tidewater && Sons"_s,
                                               u"New Project…"_s, u"All Projects"_s}));
        EXPECT_TRUE(menu->actions().at(0)->isChecked());
        menu->actions().at(1)->trigger();
        menu->close();
    });
    EXPECT_TRUE(answering([&] { m_hand->click(*switcher); }, [&] { press(u"Open"_s); }));
    EXPECT_EQ(state().projectSession().currentProject()->id, m_first);
    EXPECT_NE(second, m_first);
}

} // namespace
} // namespace orvane
