// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/layout/WindowPlacement.h"

#include "support/TestServices.h"

#include <QWidget>
#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

constexpr QSize minimum{960, 600};

TEST(WindowPlacement, StaysWithinTheScreensThatThereAre)
{
    const QRect left(0, 0, 1920, 1080);
    const QRect right(1920, 200, 2560, 1440);
    struct Row {
        const char* name;
        QRect wanted;
        QList<QRect> screens;
        QRect placed;
    };
    const Row rows[] = {
        {"as it was", {100, 80, 1440, 900}, {left, right}, {100, 80, 1440, 900}},
        {"mostly on the second", {1800, 300, 1440, 900}, {left, right}, {1920, 300, 1440, 900}},
        {"the second is gone", {2500, 600, 1440, 900}, {left}, {480, 180, 1440, 900}},
        {"far from all", {-9000, -9000, 1440, 900}, {left, right}, {0, 0, 1440, 900}},
        {"larger than the screen", {10, 10, 2560, 1400}, {left}, {0, 0, 1920, 1080}},
        {"below the minimum", {100, 80, 300, 200}, {left}, {100, 80, 960, 600}},
        {"a screen too small for any window",
         {5, 5, 1440, 900},
         {{0, 0, 800, 480}},
         {5, 5, 1440, 900}},
        {"a screen just large enough", {5, 5, 1440, 900}, {{0, 0, 960, 600}}, {0, 0, 960, 600}},
        {"no screen", {5, 5, 1440, 900}, {}, {5, 5, 1440, 900}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(placedOnScreens(row.wanted, row.screens, minimum), row.placed);
    }
    EXPECT_EQ(placedOnScreens({0, 0, 2560, 1400}, {left}, minimum, {1, 24, 1, 1}),
              QRect(1, 24, 1918, 1055))
        << "the title bar stays on the screen";
}

TEST(WindowPlacement, AWindowComesUpInTheMiddleOfItsParent)
{
    const QRect screen(0, 0, 1920, 1080);
    struct Row {
        const char* name;
        QRect parent;
        QSize size;
        QRect placed;
    };
    const Row rows[] = {
        {"in the middle", {200, 100, 1400, 800}, {1000, 600}, {399, 199, 1000, 600}},
        {"as large as its parent", {0, 40, 1100, 720}, {1100, 720}, {0, 40, 1100, 720}},
        {"at the screen's edge", {1500, 700, 960, 600}, {1100, 720}, {820, 360, 1100, 720}},
        {"its title bar stays on the screen", {0, 0, 960, 600}, {1100, 720}, {0, 40, 1100, 720}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(centredOver(row.parent, row.size, {screen}, {960, 560}), row.placed);
    }
}

TEST(WindowPlacement, OnlyWholeValuesAreTaken)
{
    const WindowPlacement placement{
        {-20, 30, 1200, 700}, {1, 24, 1, 1}, WindowPlacement::State::Maximized};
    EXPECT_EQ(WindowPlacement::fromJson(placement.json()), placement);
    for (const auto& key : {u"x"_s, u"y"_s, u"width"_s, u"height"_s}) {
        QJsonObject object = placement.json();
        object.remove(key);
        EXPECT_EQ(WindowPlacement::fromJson(object), std::nullopt) << qUtf8Printable(key);
    }
    QJsonObject empty = placement.json();
    empty.insert(u"width"_s, 0);
    EXPECT_EQ(WindowPlacement::fromJson(empty), std::nullopt);
    QJsonObject wild = placement.json();
    wild.insert(u"x"_s, 1e300);
    wild.insert(u"state"_s, u"hovering"_s);
    EXPECT_EQ(WindowPlacement::fromJson(wild)->state, WindowPlacement::State::Normal);
}

TEST(WindowPlacement, AWindowComesBackWhereItWas)
{
    TestServices test;
    const QString key = u"session.window"_s;
    const QRect place(40, 60, 1100, 700);
    {
        QWidget window;
        window.setMinimumSize(minimum);
        new WindowPlacementKeeper(test.services(), key, &window);
        window.show();
        window.setGeometry(place);
        EXPECT_FALSE(test.defaults.contains(key)) << "not at each step of a drag";
        test.clock.advance(std::chrono::seconds(1));
        EXPECT_TRUE(test.defaults.contains(key));
        window.showMaximized();
        window.close();
    }
    QWidget window;
    window.setMinimumSize(minimum);
    new WindowPlacementKeeper(test.services(), key, &window);
    EXPECT_TRUE(window.isMaximized());
    window.show();
    window.showNormal();
    EXPECT_EQ(window.geometry(), place);
}

} // namespace
} // namespace orvane
