// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/layout/PaneArithmetic.h"

#include <gtest/gtest.h>

namespace orvane {

void PrintTo(const PaneWidths& widths, std::ostream* out)
{
    *out << widths.binder << " | " << widths.editor << " | " << widths.inspector;
}
void PrintTo(const SideWidths& widths, std::ostream* out)
{
    *out << widths.binder << " | " << widths.inspector;
}

namespace {

using namespace Qt::StringLiterals;

constexpr SideVisibility both{true, true};
constexpr SideVisibility binderOnly{true, false};
constexpr SideVisibility inspectorOnly{false, true};
constexpr SideVisibility neither{false, false};

TEST(PaneArithmetic, TargetsAndEditorMinimum)
{
    const std::pair<double, double> targets[] = {
        {0, 288},   {1, 288},   {2, 288},   {2.5, 220}, {219, 220}, {220, 220},
        {230, 230}, {288, 288}, {320, 320}, {321, 320}, {500, 320}, {-5, 288},
    };
    for (const auto& [remembered, target] : targets)
        EXPECT_EQ(sidePaneTarget(remembered), target) << remembered;
    const std::pair<double, double> minimums[] = {{100, 480}, {612, 612}, {900, 900}, {2000, 920}};
    for (const auto& [page, minimum] : minimums)
        EXPECT_EQ(editorMinimumThickness(page), minimum) << page;
}

TEST(PaneArithmetic, BalancedSideWidths)
{
    struct Row {
        const char* name;
        double available;
        SideWidths targets;
        SideVisibility visible;
        SideWidths expected;
    };
    const Row rows[] = {
        {"both fit", 600, {288, 300}, both, {288, 300}},
        {"both fit exactly", 588, {288, 300}, both, {288, 300}},
        {"scaled alike", 500, {320, 320}, both, {250, 250}},
        {"the Inspector falls below its minimum, the Binder pays",
         450,
         {320, 220},
         both,
         {230, 220}},
        {"the Binder falls below its minimum, the Inspector pays",
         450,
         {220, 320},
         both,
         {220, 230}},
        {"just enough for two minimums", 440, {320, 320}, both, {220, 220}},
        {"not enough: the Binder first", 439, {288, 288}, both, {288, 151}},
        {"room for the Binder only", 250, {288, 288}, both, {250, 0}},
        {"no room", 0, {288, 288}, both, {0, 0}},
        {"less than none", -50, {288, 288}, both, {0, 0}},
        {"Binder alone", 600, {300, 288}, binderOnly, {300, 0}},
        {"Binder alone, narrow", 200, {300, 288}, binderOnly, {200, 0}},
        {"Inspector alone", 600, {300, 250}, inspectorOnly, {0, 250}},
        {"neither", 600, {300, 250}, neither, {0, 0}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(balancedSideWidths(row.available, row.targets, row.visible), row.expected);
    }
}

TEST(PaneArithmetic, Limits)
{
    struct Row {
        const char* name;
        bool visible;
        bool locked;
        double width;
        double remembered;
        SideLimits expected;
    };
    const Row rows[] = {
        {"locked", true, true, 250, 300, {250, 250, false}},
        {"locked while narrow", true, true, 100, 300, {220, 220, false}},
        {"locked while wide", true, true, 400, 300, {320, 320, false}},
        {"by what is remembered", true, false, 250, 300, {300, 10000, false}},
        {"remembered beyond the maximum", true, false, 250, 500, {320, 10000, false}},
        {"nothing remembered", true, false, 250, 0, {250, 10000, false}},
        {"nothing known", true, false, 1, 2, {288, 10000, false}},
        {"hidden", false, false, 0, 300, {0, 10000, true}},
        {"hidden and locked", false, true, 0, 300, {0, 10000, true}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(sideLimits({row.visible, row.locked}, row.width, row.remembered), row.expected);
    }
}

SplitLayout layoutOf(double total, SideVisibility visible, PaneLocks locks, SideWidths preferred)
{
    return {total, 612, visible, locks, preferred};
}

constexpr PaneLocks unlocked{};
constexpr PaneLocks binderLocked{true, false, false};
constexpr PaneLocks editorLocked{false, true, false};
constexpr PaneLocks inspectorLocked{false, false, true};
constexpr PaneLocks sidesLocked{true, false, true};

TEST(PaneArithmetic, WidthsInAWindow)
{
    struct Row {
        const char* name;
        SplitLayout layout;
        PaneWidths expected;
    };
    const Row rows[] = {
        {"the editor takes what is over",
         layoutOf(1440, both, unlocked, {288, 300}),
         {288, 850, 300}},
        {"down to its minimum", layoutOf(1202, both, unlocked, {288, 300}), {288, 612, 300}},
        {"then the side panes share", layoutOf(1114, both, unlocked, {320, 320}), {250, 612, 250}},
        {"what was drawn out is given back first",
         layoutOf(1314, both, unlocked, {500, 300}),
         {400, 612, 300}},
        {"by share", layoutOf(1314, both, unlocked, {420, 370}), {360, 612, 340}},
        {"the smallest window has no room to read an Inspector in",
         layoutOf(960, both, unlocked, {288, 288}),
         {288, 671, 0}},
        {"a little more is shown", layoutOf(1030, both, unlocked, {288, 288}), {288, 612, 128}},
        {"one divider less", layoutOf(1000, binderOnly, unlocked, {288, 288}), {288, 711, 0}},
        {"editor alone", layoutOf(700, neither, unlocked, {288, 288}), {0, 700, 0}},
        {"a locked Binder keeps its width",
         layoutOf(1114, both, binderLocked, {300, 320}),
         {300, 592, 220}},
        {"and lets the Inspector vanish",
         layoutOf(900, both, binderLocked, {300, 320}),
         {300, 599, 0}},
        {"a locked Inspector keeps its width",
         layoutOf(960, both, inspectorLocked, {288, 300}),
         {220, 438, 300}},
        {"alone too", layoutOf(800, inspectorOnly, inspectorLocked, {288, 300}), {0, 499, 300}},
        {"two locked panes leave the editor the rest",
         layoutOf(960, both, sidesLocked, {320, 320}),
         {320, 318, 320}},
        {"until the window ends", layoutOf(400, both, sidesLocked, {320, 320}), {320, 0, 78}},
        {"no window yet", layoutOf(0, both, unlocked, {288, 288}), {0, 0, 0}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(row.layout.widths(), row.expected);
    }
}

TEST(PaneArithmetic, DividersKeepWithinLocksAndMinimums)
{
    struct Row {
        const char* name;
        SplitLayout layout;
        SidePane pane;
        double asked;
        SideWidths expected;
    };
    const SplitLayout wide = layoutOf(1440, both, unlocked, {288, 300});
    const SplitLayout editorKept = layoutOf(1440, both, editorLocked, {288, 300});
    const Row rows[] = {
        {"wider", wide, SidePane::Binder, 350, {350, 300}},
        {"not narrower than the minimum", wide, SidePane::Binder, 10, {220, 300}},
        {"not into the editor's minimum", wide, SidePane::Binder, 9999, {526, 300}},
        {"the Inspector likewise", wide, SidePane::Inspector, 9999, {288, 538}},
        {"a locked pane holds its divider",
         layoutOf(1440, both, binderLocked, {288, 300}),
         SidePane::Binder,
         350,
         {288, 300}},
        {"a hidden one too",
         layoutOf(1440, inspectorOnly, unlocked, {288, 300}),
         SidePane::Binder,
         350,
         {288, 300}},
        {"with the editor locked the other one moves along",
         editorKept,
         SidePane::Binder,
         320,
         {320, 268}},
        {"the other way", editorKept, SidePane::Inspector, 350, {238, 350}},
        {"until the other reaches its minimum", editorKept, SidePane::Binder, 9999, {368, 220}},
        {"no other pane to move",
         layoutOf(1440, binderOnly, editorLocked, {288, 300}),
         SidePane::Binder,
         350,
         {288, 300}},
        {"the other one locked as well",
         layoutOf(1440, both, {false, true, true}, {288, 300}),
         SidePane::Binder,
         350,
         {288, 300}},
        {"no room to move",
         layoutOf(900, both, unlocked, {288, 300}),
         SidePane::Binder,
         300,
         {286, 300}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const SideWidths preferred = row.layout.resized(row.pane, row.asked);
        EXPECT_EQ(preferred, row.expected);
        if (row.layout.locks.editor) {
            SplitLayout after = row.layout;
            after.preferred = preferred;
            EXPECT_EQ(after.widths().editor, row.layout.widths().editor);
        }
    }
}

TEST(PaneArithmetic, WhatIsWrittenBack)
{
    struct Row {
        SidePane pane;
        double width;
        bool visible;
        WriteBack expected;
        QString line;
    };
    const Row rows[] = {
        {SidePane::Binder, 219, true, WriteBack::Block,
         u"⚠️ blocked binder zero-width writeback 219 (visible=true)"_s},
        {SidePane::Binder, 0, false, WriteBack::Block,
         u"⚠️ blocked binder zero-width writeback 0 (visible=false)"_s},
        {SidePane::Binder, 220, true, WriteBack::Store,
         u"💾 writing binder width 220 (visible=true)"_s},
        {SidePane::Binder, 300.7, false, WriteBack::StoreHidden,
         u"💾 preserving hidden binder width 300 (visible=false)"_s},
        {SidePane::Inspector, 219.9, true, WriteBack::Block,
         u"⚠️ blocked inspector zero-width writeback 219 (visible=true)"_s},
        {SidePane::Inspector, 480, true, WriteBack::Store,
         u"💾 writing inspector width 480 (visible=true)"_s},
        {SidePane::Inspector, 240, false, WriteBack::StoreHidden,
         u"💾 preserving hidden inspector width 240 (visible=false)"_s},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(widthWriteBack(row.width, row.visible), row.expected);
        EXPECT_EQ(writeBackLogLine(row.pane, row.width, row.visible), row.line);
    }
    EXPECT_TRUE(needsStartupRepair({219, 288}, both));
    EXPECT_TRUE(needsStartupRepair({288, 0}, inspectorOnly));
    EXPECT_FALSE(needsStartupRepair({0, 288}, inspectorOnly));
    EXPECT_FALSE(needsStartupRepair({220, 220}, both));
}

} // namespace
} // namespace orvane
