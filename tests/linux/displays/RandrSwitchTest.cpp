#include "platform/linux/displays/RandrSwitch.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <vector>

#include "tests/linux/displays/RandrScene.h"

namespace ovin {
namespace {

/// Checks what a server checks, and fails when it is told to.
class StandInServer final : public RandrServer {
public:
    RandrState state = emptyScene();
    /// The change, counted from 0, from which on a number of changes fail with an answer.
    int failing = -1;
    int failures = 1;
    Answer answer = Answer::refused;
    bool isGone = false;
    int reads = 0;
    int changes = 0;
    bool isGrabbed = false;
    bool wasGrabbedThroughout = true;

    std::optional<RandrState> read() override {
        ++reads;
        wasGrabbedThroughout = wasGrabbedThroughout && isGrabbed;
        if (isGone) return std::nullopt;
        return state;
    }

    void setGrabbed(bool grabbed) override { isGrabbed = grabbed; }

    Answer setCrtc(const RandrCrtc& crtc, std::uint32_t configTime) override {
        if (const auto failure = next()) return *failure;
        if (configTime != state.configTime) return Answer::outdated;
        const Extent screen = state.screen.size;
        if (crtc.x + crtc.size.width > screen.width || crtc.y + crtc.size.height > screen.height) return Answer::refused;
        *std::find_if(state.crtcs.begin(), state.crtcs.end(), [&](const RandrCrtc& c) { return c.id == crtc.id; }) = crtc;
        return Answer::done;
    }

    bool setScreen(Extent size, Extent millimetres) override {
        if (next()) return false;
        for (const RandrCrtc& crtc : state.crtcs) {
            if (crtc.x + crtc.size.width > size.width || crtc.y + crtc.size.height > size.height) return false;
        }
        state.screen.size = size;
        state.screen.millimetres = millimetres;
        return true;
    }

private:
    std::optional<Answer> next() {
        wasGrabbedThroughout = wasGrabbedThroughout && isGrabbed;
        const int number = changes++;
        if (isGone) return Answer::refused;
        if (failing < 0 || number < failing || number >= failing + failures) return std::nullopt;
        // What makes the request outdated is a new configuration.
        if (answer == Answer::outdated) ++state.configTime;
        return answer;
    }
};

class RandrSwitch : public testing::Test {
protected:
    RandrSwitch() {
        plug(server.state, 1, medium, 0, 0);
        plug(server.state, 2, medium, 1440, 0);
        before = server.state;
    }

    void expectAsBefore() const {
        EXPECT_EQ(server.state.crtcs, before.crtcs);
        EXPECT_EQ(server.state.screen.size, before.screen.size);
        EXPECT_EQ(server.state.screen.millimetres, before.screen.millimetres);
        EXPECT_FALSE(server.isGrabbed);
    }

    StandInServer server;
    RandrState before;
};

TEST_F(RandrSwitch, AWiderModeMovesTheNextDisplayAndGrowsTheScreen) {
    ASSERT_TRUE(switchMode(server, 1, large));
    EXPECT_EQ(server.state.crtcOf(1)->mode, large);
    EXPECT_EQ(server.state.crtcOf(2)->x, 1920);
    EXPECT_EQ(server.state.screen.size, (Extent{3360, 1200}));
    EXPECT_EQ(server.changes, 3) << "one size and two displays";
    EXPECT_TRUE(server.wasGrabbedThroughout);
    EXPECT_FALSE(server.isGrabbed);
}

TEST_F(RandrSwitch, TheFormerModePutsEverythingBack) {
    ASSERT_TRUE(switchMode(server, 1, large));
    ASSERT_TRUE(switchMode(server, 1, medium));
    expectAsBefore();
}

TEST_F(RandrSwitch, AModeThatIsWiderAndLowerNeverReachesBeyondTheScreen) {
    server.state = emptyScene();
    plug(server.state, 1, medium, 0, 0, 2);
    plug(server.state, 2, small, 900, 0);
    server.state.modes.push_back({5, {600, 1600}, true});
    server.state.outputs[0].modes.push_back(5);
    ASSERT_TRUE(switchMode(server, 1, 5));
    EXPECT_EQ(server.state.screen.size, (Extent{2400, 600}));
    EXPECT_EQ(server.changes, 4) << "a size for both, two displays, the final size";
}

TEST_F(RandrSwitch, TheScreenKeepsItsDensity) {
    ASSERT_TRUE(switchMode(server, 1, large));
    EXPECT_EQ(server.state.screen.millimetres, (Extent{840, 300}));
}

TEST_F(RandrSwitch, AScreenWithoutALengthGetsTheLeastThereIs) {
    server.state.screen.millimetres = {0, 0};
    ASSERT_TRUE(switchMode(server, 1, large));
    EXPECT_EQ(server.state.screen.millimetres, (Extent{1, 1}));
}

TEST_F(RandrSwitch, WhateverFailsEverythingIsPutBack) {
    for (const std::uint32_t mode : {small, large}) {
        for (int failing = 0; failing < 3; ++failing) {
            server.failing = failing;
            server.changes = 0;
            EXPECT_FALSE(switchMode(server, 1, mode)) << failing;
            expectAsBefore();
        }
    }
}

TEST_F(RandrSwitch, AConfigurationThatChangesMeanwhileIsReadAgainOnce) {
    server.failing = 1;
    server.answer = RandrServer::Answer::outdated;
    EXPECT_TRUE(switchMode(server, 1, large));
    EXPECT_EQ(server.state.crtcOf(1)->mode, large);
    EXPECT_EQ(server.reads, 3) << "before, to put back, and again";
    server.failing = -1;
    ASSERT_TRUE(switchMode(server, 1, medium));
    EXPECT_EQ(server.state.screen.size, before.screen.size);
}

TEST_F(RandrSwitch, AConfigurationThatAlwaysChangesIsGivenUp) {
    server.failing = 1;
    server.failures = 1000;
    server.answer = RandrServer::Answer::outdated;
    EXPECT_FALSE(switchMode(server, 1, large));
    EXPECT_EQ(server.reads, 4) << "two attempts";
    EXPECT_FALSE(server.isGrabbed);
}

TEST_F(RandrSwitch, AServerThatGoesAwayRefuses) {
    server.isGone = true;
    EXPECT_FALSE(switchMode(server, 1, large));
    EXPECT_FALSE(server.isGrabbed);
}

TEST_F(RandrSwitch, WhatIsNotThereChangesNothing) {
    EXPECT_FALSE(switchMode(server, 1, 77));
    EXPECT_FALSE(switchMode(server, 9, large));
    EXPECT_EQ(server.changes, 0);
    expectAsBefore();
}

}  // namespace
}  // namespace ovin
