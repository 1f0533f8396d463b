#include "platform/linux/displays/RandrLayout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <utility>
#include <vector>

#include "tests/linux/displays/RandrScene.h"

namespace ovin {
namespace {

using Place = std::pair<int, int>;

/// Where a display is after a layout.
Place placeOf(const RandrState& state, const RandrLayout& layout, std::uint32_t output) {
    const auto found = std::find_if(layout.changed.begin(), layout.changed.end(),
                                    [=](const RandrCrtc& crtc) { return crtc.id == output * 10; });
    const RandrCrtc& crtc = found == layout.changed.end() ? *state.crtc(output * 10) : *found;
    return {crtc.x, crtc.y};
}

TEST(RandrLayout, TheScreenIsAsLargeAsTheOnlyDisplay) {
    RandrState state = emptyScene();
    plug(state, 1, medium, 0, 0);
    for (const std::uint32_t mode : {small, large}) {
        const auto layout = layoutWithMode(state, 1, mode);
        ASSERT_TRUE(layout.has_value());
        EXPECT_EQ(layout->screen, state.mode(mode)->size);
        ASSERT_EQ(layout->changed.size(), 1U);
        EXPECT_EQ(layout->changed[0], (RandrCrtc{10, 0, 0, state.mode(mode)->size, mode, 1, {1}}));
    }
}

TEST(RandrLayout, TheSameModeChangesNothing) {
    RandrState state = emptyScene();
    plug(state, 1, medium, 0, 0);
    const auto layout = layoutWithMode(state, 1, medium);
    ASSERT_TRUE(layout.has_value());
    EXPECT_TRUE(layout->changed.empty());
    EXPECT_EQ(layout->screen, state.screen.size);
}

TEST(RandrLayout, ARotatedDisplayStaysRotated) {
    for (const std::uint16_t rotation : std::vector<std::uint16_t>{2, 8, 2 + 16, 8 + 32}) {
        RandrState state = emptyScene();
        plug(state, 1, medium, 0, 0, rotation);
        EXPECT_EQ(state.screen.size, (Extent{900, 1440}));
        const auto layout = layoutWithMode(state, 1, large);
        ASSERT_TRUE(layout.has_value());
        EXPECT_EQ(layout->screen, (Extent{1200, 1920}));
        EXPECT_EQ(layout->changed[0].rotation, rotation);
    }
}

TEST(RandrLayout, ATransformationAppliesToTheNewModeToo) {
    RandrState state = emptyScene();
    plug(state, 1, medium, 0, 0);
    state.crtcs[0].size = {2880, 1800};
    const auto layout = layoutWithMode(state, 1, large);
    ASSERT_TRUE(layout.has_value());
    EXPECT_EQ(layout->screen, (Extent{3840, 2400}));
}

TEST(RandrLayout, DisplaysAtTheEdgesFollowThem) {
    for (const std::uint32_t mode : {small, large}) {
        RandrState state = emptyScene();
        plug(state, 1, medium, 0, 0);
        plug(state, 2, small, 1440, 100);
        plug(state, 3, small, 0, 900);
        plug(state, 4, small, 2240, 0);
        const auto layout = layoutWithMode(state, 1, mode);
        ASSERT_TRUE(layout.has_value());
        const Extent size = state.mode(mode)->size;
        EXPECT_EQ(placeOf(state, *layout, 1), Place(0, 0));
        EXPECT_EQ(placeOf(state, *layout, 2), Place(size.width, 100));
        EXPECT_EQ(placeOf(state, *layout, 3), Place(0, size.height));
        EXPECT_EQ(placeOf(state, *layout, 4), Place(size.width + 800, 0));
    }
}

TEST(RandrLayout, DisplaysToTheLeftAndAboveStayWhereTheyAre) {
    RandrState state = emptyScene();
    plug(state, 1, medium, 800, 600);
    plug(state, 2, small, 0, 600);
    plug(state, 3, small, 800, 0);
    const auto layout = layoutWithMode(state, 1, large);
    ASSERT_TRUE(layout.has_value());
    EXPECT_EQ(layout->changed.size(), 1U);
    EXPECT_EQ(placeOf(state, *layout, 1), Place(800, 600));
    EXPECT_EQ(layout->screen, (Extent{2720, 1800}));
}

TEST(RandrLayout, ADisplayAtADistanceMovesOnlyAsFarAsItWouldOverlap) {
    RandrState state = emptyScene();
    plug(state, 1, small, 0, 0);
    plug(state, 2, small, 1000, 0);
    plug(state, 3, small, 3000, 0);
    const auto wider = layoutWithMode(state, 1, medium);
    ASSERT_TRUE(wider.has_value());
    EXPECT_EQ(placeOf(state, *wider, 2), Place(1440, 0));
    EXPECT_EQ(placeOf(state, *wider, 3), Place(3000, 0));
}

TEST(RandrLayout, ADisplayThatAnotherOneHoldsDoesNotMove) {
    RandrState state = emptyScene();
    plug(state, 1, medium, 0, 0);
    plug(state, 2, medium, 0, 900);
    plug(state, 3, small, 1440, 700);  // beside both
    const auto layout = layoutWithMode(state, 1, small);
    ASSERT_TRUE(layout.has_value());
    EXPECT_EQ(placeOf(state, *layout, 3).first, 1440);
}

TEST(RandrLayout, WhatMirrorsADisplayStays) {
    RandrState state = emptyScene();
    plug(state, 1, medium, 0, 0);
    plug(state, 2, medium, 0, 0);
    const auto layout = layoutWithMode(state, 1, large);
    ASSERT_TRUE(layout.has_value());
    EXPECT_EQ(layout->changed.size(), 1U);
    EXPECT_EQ(layout->screen, (Extent{1920, 1200}));
}

TEST(RandrLayout, WhatCannotBeIsNotPlanned) {
    RandrState state = emptyScene();
    plug(state, 1, medium, 0, 0);
    plug(state, 2, medium, 1440, 0);
    state.outputs[1].modes = {medium};
    EXPECT_FALSE(layoutWithMode(state, 3, medium).has_value()) << "no such output";
    EXPECT_FALSE(layoutWithMode(state, 1, 77).has_value()) << "no such mode";
    EXPECT_FALSE(layoutWithMode(state, 2, large).has_value()) << "a mode of other outputs";
    state.screen.largest = {3300, 8192};
    EXPECT_FALSE(layoutWithMode(state, 1, large).has_value()) << "more than the server has room for";
    state.outputs[0].crtc = 0;
    EXPECT_FALSE(layoutWithMode(state, 1, small).has_value()) << "off";
}

TEST(RandrLayout, WhatTouchesADisplayIsBackWhereItWasWithTheFormerMode) {
    struct Case {
        int x, y;
    };
    // Left, above (at either end, and beyond), right, below, and across the corners of a display at 1440, 900.
    for (const auto [x, y] : std::vector<Case>{{0, 900},
                                               {1440, 0},
                                               {1800, 0},
                                               {640, 0},
                                               {2880, 900},
                                               {2880, 1200},
                                               {1440, 1800},
                                               {1800, 1800},
                                               {2880, 1800},
                                               {2880, 0},
                                               {640, 1800},
                                               {0, 0}}) {
        RandrState state = emptyScene();
        plug(state, 1, medium, 1440, 900);
        plug(state, 2, x == 0 || y == 0 ? medium : small, x, y);
        const auto wider = layoutWithMode(state, 1, large);
        ASSERT_TRUE(wider.has_value());
        RandrState widened = state;
        for (const RandrCrtc& changed : wider->changed) {
            *std::find_if(widened.crtcs.begin(), widened.crtcs.end(), [&](const auto& c) { return c.id == changed.id; }) =
                changed;
        }
        const auto back = layoutWithMode(widened, 1, medium);
        ASSERT_TRUE(back.has_value());
        EXPECT_EQ(placeOf(widened, *back, 1), Place(1440, 900)) << x << ", " << y;
        EXPECT_EQ(placeOf(widened, *back, 2), Place(x, y));
        EXPECT_EQ(back->screen, state.screen.size);
    }
}

/// If nothing overlapped before, nothing does afterwards, and the screen holds all displays.
TEST(RandrLayout, NoDisplayComesToLieOverAnother) {
    std::mt19937 random(7);
    const std::vector<std::uint32_t> modes{small, medium, large};
    const auto oneOf = [&](int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); };
    const auto overlap = [](const RandrCrtc& a, const RandrCrtc& b) {
        return a.x < b.x + b.size.width && b.x < a.x + a.size.width && a.y < b.y + b.size.height &&
               b.y < a.y + a.size.height;
    };
    int checked = 0;
    for (int round = 0; round < 3000; ++round) {
        RandrState state = emptyScene();
        for (std::uint32_t output = 1; output <= 5; ++output) {
            RandrState tried = state;
            const auto mode = modes[static_cast<std::size_t>(oneOf(3))];
            plug(tried, output, mode, 20 * oneOf(140), 20 * oneOf(140), oneOf(4) == 0 ? 2 : 1);
            const RandrCrtc& added = tried.crtcs.back();
            const bool isFree =
                std::none_of(state.crtcs.begin(), state.crtcs.end(), [&](const RandrCrtc& c) { return overlap(c, added); });
            if (isFree) state = tried;
        }
        const std::uint32_t output =
            state.outputs[static_cast<std::size_t>(oneOf(static_cast<int>(state.outputs.size())))].id;
        const auto layout = layoutWithMode(state, output, modes[static_cast<std::size_t>(oneOf(3))]);
        ASSERT_TRUE(layout.has_value());
        std::vector<RandrCrtc> after = state.crtcs;
        for (const RandrCrtc& changed : layout->changed) {
            *std::find_if(after.begin(), after.end(), [&](const RandrCrtc& c) { return c.id == changed.id; }) = changed;
        }
        for (std::size_t i = 0; i < after.size(); ++i) {
            EXPECT_GE(std::min(after[i].x, after[i].y), 0);
            EXPECT_LE(after[i].x + after[i].size.width, layout->screen.width);
            EXPECT_LE(after[i].y + after[i].size.height, layout->screen.height);
            for (std::size_t j = 0; j < i; ++j, ++checked) ASSERT_FALSE(overlap(after[i], after[j])) << "round " << round;
        }
    }
    EXPECT_GT(checked, 3000);
}

TEST(RandrMirroring, DisplaysThatShowTheSameMirrorEachOther) {
    RandrState state = emptyScene();
    plug(state, 1, medium, 0, 0);
    EXPECT_FALSE(isMirrored(state, 1));
    plug(state, 2, medium, 1440, 0);
    EXPECT_FALSE(isMirrored(state, 1));
    EXPECT_FALSE(isMirrored(state, 2));
    for (const Place& place : {Place(0, 0), Place(200, 200)}) {  // the same corner; within the other
        plug(state, 3, small, place.first, place.second);
        EXPECT_TRUE(isMirrored(state, 1));
        EXPECT_TRUE(isMirrored(state, 3));
        EXPECT_FALSE(isMirrored(state, 2));
        state.outputs.pop_back();
        state.crtcs.pop_back();
    }
    EXPECT_FALSE(isMirrored(state, 3)) << "it is gone";
}

TEST(RandrMirroring, OutputsOfOneDriverMirrorEachOther) {
    RandrState state = emptyScene();
    plug(state, 1, medium, 0, 0);
    state.outputs.push_back({2, "OUT2", 10, {medium}});
    state.crtcs[0].outputs = {1, 2};
    EXPECT_TRUE(isMirrored(state, 1));
    EXPECT_TRUE(isMirrored(state, 2));
}

TEST(RandrMirroring, ADriverThatIsOffMirrorsNothing) {
    RandrState state = emptyScene();
    plug(state, 1, medium, 0, 0);
    state.crtcs.push_back({20, 0, 0, {0, 0}, 0, 1, {}});
    EXPECT_FALSE(isMirrored(state, 1));
}

}  // namespace
}  // namespace ovin
