#include "platform/linux/displays/DockLayout.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

namespace ovin {
namespace {

using Edge = BarPlace::Edge;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr Rect only{{0, 0}, {1280, 800}};
constexpr Rect left{{0, 0}, {1280, 800}};
constexpr Rect right{{1280, 0}, {1920, 1080}};

Dock bottomDock() { return {{{0, 770}, {1280, 30}}, {{Edge::bottom, 30, 0, 1279}}}; }

TEST(DockLayoutTest, StrutsAreReadWithAndWithoutTheirEnds) {
    EXPECT_THAT(strutsOf(std::array<std::uint32_t, 12>{0, 0, 0, 60, 0, 0, 0, 0, 0, 0, 100, 699}),
                ElementsAre(Strut{Edge::bottom, 60, 100, 699}));
    EXPECT_THAT(strutsOf(std::array<std::uint32_t, 4>{48, 0, 0, 0}), ElementsAre(Strut{Edge::left, 48, 0, 65535}));
    EXPECT_THAT(strutsOf(std::array<std::uint32_t, 12>{0, 70, 25, 0, 0, 0, 10, 20, 30, 40, 0, 0}),
                ElementsAre(Strut{Edge::right, 70, 10, 20}, Strut{Edge::top, 25, 30, 40}));
}

TEST(DockLayoutTest, AnUnfinishedPropertyReservesNothing) {
    EXPECT_THAT(strutsOf(std::array<std::uint32_t, 3>{1, 2, 3}), IsEmpty());
    EXPECT_THAT(strutsOf({}), IsEmpty());
}

TEST(DockLayoutTest, WithoutBarsAllOfTheScreenIsVisible) {
    EXPECT_EQ(visibleFrame({{1280, 800}, {}, {}}, only, true), only);
}

TEST(DockLayoutTest, EveryDockTakesItsRoom) {
    const DockLayout layout{{1280, 800},
                            {{{{0, 0}, {1280, 25}}, {{Edge::top, 25, 0, 1279}}},
                             bottomDock(),
                             {{{0, 25}, {50, 745}}, {{Edge::left, 50, 25, 769}}},
                             {{{1240, 25}, {40, 745}}, {{Edge::right, 40, 25, 769}}}},
                            {}};
    EXPECT_EQ(visibleFrame(layout, only, true), (Rect{{50, 25}, {1190, 745}}));
}

TEST(DockLayoutTest, AStrutCountsOnTheScreenOfItsDockAlone) {
    // The left screen is 280 pixels lower than the X screen, so the strut of its bar at the bottom is that much deeper.
    const Dock below{{{0, 770}, {1280, 30}}, {{Edge::bottom, 310, 0, 1279}}};
    // The bar between both screens reserves the right part of the X screen across the whole right one.
    const Dock between{{{1240, 0}, {40, 770}}, {{Edge::right, 1960, 0, 769}}};
    const DockLayout layout{{3200, 1080}, {below, between}, {}};
    EXPECT_EQ(visibleFrame(layout, left, false), (Rect{{0, 0}, {1240, 770}}));
    EXPECT_EQ(visibleFrame(layout, right, false), right);
}

TEST(DockLayoutTest, AStrutWithoutEndsDoesNotReachTheOtherScreen) {
    const DockLayout layout{{3200, 1080}, {{{{1280, 0}, {1920, 30}}, {{Edge::top, 30, 0, 65535}}}}, {}};
    EXPECT_EQ(visibleFrame(layout, left, false), left);
    EXPECT_EQ(visibleFrame(layout, right, false), (Rect{{1280, 30}, {1920, 1050}}));
}

TEST(DockLayoutTest, AStaleWorkAreaHidesNoDock) {
    const DockLayout layout{{1280, 800}, {bottomDock()}, Rect{{0, 0}, {3200, 800}}};
    EXPECT_EQ(visibleFrame(layout, only, true), (Rect{{0, 0}, {1280, 770}}));
    // With several screens it tells nothing of one that has docks.
    const DockLayout two{{3200, 1080}, {bottomDock()}, Rect{{0, 30}, {1000, 500}}};
    EXPECT_EQ(visibleFrame(two, left, false), left);
}

TEST(DockLayoutTest, WhereBarsAreNoWindowsTheWorkAreaCounts) {
    const DockLayout layout{{3200, 1080}, {}, Rect{{0, 32}, {3200, 1048}}};
    EXPECT_EQ(visibleFrame(layout, right, false), (Rect{{1280, 32}, {1920, 1048}}));
    // A dock beside such a bar.
    const DockLayout both{{1280, 800}, {bottomDock()}, Rect{{0, 32}, {1280, 738}}};
    EXPECT_EQ(visibleFrame(both, only, true), (Rect{{0, 32}, {1280, 738}}));
}

TEST(DockLayoutTest, WhatWouldLeaveNothingIsNotBelieved) {
    const DockLayout layout{
        {1280, 800}, {{{{0, 0}, {1280, 30}}, {{Edge::top, 4000000000U, 0, 1279}}}}, Rect{{5000, 0}, {9, 9}}};
    EXPECT_EQ(visibleFrame(layout, only, true), only);
}

TEST(DockLayoutTest, ThePointerFindsTheDockUnderIt) {
    const DockLayout layout{{1280, 800}, {bottomDock()}, {}};
    const auto bar = barAt(layout, only, {{0, 0}, {1280, 770}}, {1100, 785});
    EXPECT_EQ(bar, (BarPlace{Edge::bottom, {{0, 770}, {1280, 30}}, {1100, 785}}));
    EXPECT_EQ(barAt(layout, only, {{0, 0}, {1280, 770}}, {1100, 700}), std::nullopt);
}

TEST(DockLayoutTest, ABarThatReservesNothingIsAtTheEdgeThatItsShapeTells) {
    const auto edgeOf = [](const Rect& frame) {
        return barAt({{1280, 800}, {{frame, {}}}, {}}, only, only, frame.origin)->edge;
    };
    EXPECT_EQ(edgeOf({{0, 0}, {1280, 30}}), Edge::top);
    EXPECT_EQ(edgeOf({{300, 760}, {600, 30}}), Edge::bottom);
    EXPECT_EQ(edgeOf({{0, 0}, {40, 800}}), Edge::left);
    EXPECT_EQ(edgeOf({{1240, 100}, {40, 600}}), Edge::right);
}

TEST(DockLayoutTest, AClickOutsideTheVisibleFrameIsInABarThatIsNoWindow) {
    const Rect visible{{50, 32}, {1190, 728}};
    const auto edgeAt = [&visible](Point point) { return barAt({{1280, 800}, {}, {}}, only, visible, point)->edge; };
    EXPECT_EQ(edgeAt({1200, 10}), Edge::top);
    EXPECT_EQ(edgeAt({1200, 790}), Edge::bottom);
    EXPECT_EQ(edgeAt({10, 400}), Edge::left);
    EXPECT_EQ(edgeAt({1250, 400}), Edge::right);
    EXPECT_EQ(barAt({{1280, 800}, {}, {}}, only, visible, {1200, 10})->frame, (Rect{{0, 0}, {1280, 32}}));
    EXPECT_EQ(barAt({{1280, 800}, {}, {}}, only, visible, {2000, 10}), std::nullopt);
}

TEST(DockLayoutTest, AMonitorThatCoversTheScreenOrStandsOnItIsNoBar) {
    const Dock panel{{{0, 0}, {1280, 25}}, {{Edge::top, 25, 0, 1279}}};
    const BarPlace expected{Edge::top, panel.frame, {1200, 10}};
    for (const Rect& frame : {only, Rect{{400, 200}, {500, 300}}, Rect{{1000, 10}, {270, 700}}}) {
        const Dock monitor{frame, {}};
        const DockLayout layout{{1280, 800}, {monitor, panel}, {}};
        const Rect visible = visibleFrame(layout, only, true);
        EXPECT_EQ(visible, (Rect{{0, 25}, {1280, 775}}));
        EXPECT_EQ(barAt(layout, only, visible, {1200, 10}), expected);
        EXPECT_EQ(onlyBar(layout, only, visible)->frame, panel.frame);
        EXPECT_EQ(onlyBar({{1280, 800}, {monitor}, {}}, only, only), std::nullopt);
        // A bar that is no window beside it, on one of two screens.
        const DockLayout strip{{3200, 1080}, {monitor}, Rect{{0, 32}, {3200, 1048}}};
        const Rect below = visibleFrame(strip, left, false);
        EXPECT_EQ(below, (Rect{{0, 32}, {1280, 768}}));
        EXPECT_EQ(barAt(strip, left, below, {1200, 10})->frame, (Rect{{0, 0}, {1280, 32}}));
    }
    EXPECT_EQ(barAt({{1280, 800}, {{only, {}}}, {}}, only, only, {600, 400}), std::nullopt);
}

TEST(DockLayoutTest, WithoutAClickTheItemIsAtTheEndOfTheOnlyBar) {
    const auto barOf = [](const DockLayout& layout) { return onlyBar(layout, only, visibleFrame(layout, only, true)); };
    EXPECT_EQ(barOf({{1280, 800}, {bottomDock()}, {}}), (BarPlace{Edge::bottom, {{0, 770}, {1280, 30}}, {1280, 800}}));
    EXPECT_EQ(barOf({{1280, 800}, {bottomDock(), {{{0, 0}, {1280, 30}}, {}}}, {}}), std::nullopt);
    EXPECT_EQ(barOf({{1280, 800}, {}, {}}), std::nullopt);
    EXPECT_EQ(onlyBar({{3200, 1080}, {bottomDock()}, {}}, right, right), std::nullopt) << "it is on the other screen";
}

TEST(DockLayoutTest, TheOnlyBarMayBeNoWindow) {
    const auto barOf = [](const Rect& visible) { return onlyBar({{1280, 800}, {}, visible}, only, visible); };
    EXPECT_EQ(barOf({{0, 0}, {1280, 756}}), (BarPlace{Edge::bottom, {{0, 756}, {1280, 44}}, {1279, 799}}));
    EXPECT_EQ(barOf({{0, 32}, {1280, 768}}), (BarPlace{Edge::top, {{0, 0}, {1280, 32}}, {1279, 0}}));
    EXPECT_EQ(barOf({{50, 0}, {1230, 800}}), (BarPlace{Edge::left, {{0, 0}, {50, 800}}, {0, 799}}));
    EXPECT_EQ(barOf({{0, 0}, {1230, 800}}), (BarPlace{Edge::right, {{1230, 0}, {50, 800}}, {1279, 799}}));
    EXPECT_EQ(barOf({{0, 32}, {1280, 700}}), std::nullopt);
}

}  // namespace
}  // namespace ovin
