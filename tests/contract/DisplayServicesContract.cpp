#include <algorithm>
#include <cstdint>
#include <optional>
#include <set>

#include "tests/contract/ContractTest.h"

namespace ovin {
namespace {

class DisplayServicesContract : public ContractTest {
protected:
    [[nodiscard]] DisplayServices& displays() const { return platform().displays; }
    [[nodiscard]] DisplayID mainDisplay() const { return displays().mainDisplay(); }
    [[nodiscard]] DisplayMode currentMode() const { return displays().currentMode(mainDisplay()).value_or(DisplayMode{}); }

    /// A mode of the main display that is not the one it runs in.
    [[nodiscard]] DisplayMode otherMode() const {
        for (const DisplayMode& mode : displays().modes(mainDisplay())) {
            if (mode.isUsableForDesktopGUI && sizeOf(mode) != sizeOf(currentMode())) return mode;
        }
        ADD_FAILURE() << "The main display has but one mode.";
        return {};
    }

    [[nodiscard]] bool boundsBecome(const DisplayMode& mode) const {
        return stage().runUntil([&] { return displays().bounds(mainDisplay()) == Rect{{}, sizeOf(mode)}; }, longTime);
    }

    static Size sizeOf(const DisplayMode& mode) {
        return {static_cast<double>(mode.width), static_cast<double>(mode.height)};
    }
};

TEST_P(DisplayServicesContract, TheMainDisplayHoldsTheOrigin) {
    const Rect bounds = displays().bounds(displays().mainDisplay());
    EXPECT_EQ(bounds.origin, Point{});
    EXPECT_GT(bounds.size.width, 0);
    EXPECT_GT(bounds.size.height, 0);
}

TEST_P(DisplayServicesContract, TwoQuestionsHaveOneAnswer) {
    const DisplayID main = displays().mainDisplay();
    EXPECT_EQ(displays().mainDisplay(), main);
    EXPECT_EQ(displays().bounds(main), displays().bounds(main));
}

TEST_P(DisplayServicesContract, ADisplayThatNobodyHasIsEmptyAtTheOrigin) {
    EXPECT_EQ(displays().bounds(0xFFFFFFF0), Rect{});
}

TEST_P(DisplayServicesContract, ADisplayThatIsUnpluggedBecomesEmpty) {
    OVIN_NEEDS(unplugDisplays);
    const DisplayID main = displays().mainDisplay();
    const DisplayID second = stage().plugDisplay();
    EXPECT_NE(second, main);
    EXPECT_TRUE(stage().runUntil([&] { return displays().bounds(second).size.width > 0; }, longTime));
    stage().unplugDisplay(second);
    EXPECT_TRUE(stage().runUntil([&] { return displays().bounds(second) == Rect{}; }, longTime));
    EXPECT_EQ(displays().mainDisplay(), main);
    EXPECT_EQ(displays().bounds(main).origin, Point{});
}

TEST_P(DisplayServicesContract, ADisplayThatNobodyHasHasNoModesAndTakesNone) {
    constexpr DisplayID nobodys = 0xFFFFFFF0;
    EXPECT_EQ(displays().currentMode(nobodys), std::nullopt);
    EXPECT_TRUE(displays().modes(nobodys).empty());
    EXPECT_FALSE(displays().isInMirrorSet(nobodys));
    EXPECT_FALSE(displays().apply(currentMode().id, nobodys));
}

TEST_P(DisplayServicesContract, TheCurrentModeIsOneOfTheModes) {
    const auto modes = displays().modes(mainDisplay());
    EXPECT_NE(std::find(modes.begin(), modes.end(), currentMode()), modes.end());
    EXPECT_EQ(displays().bounds(mainDisplay()).size, sizeOf(currentMode()));
}

TEST_P(DisplayServicesContract, EveryModeHasAnIdOfItsOwnAndASize) {
    std::set<std::int32_t> ids;
    for (const DisplayMode& mode : displays().modes(mainDisplay())) {
        EXPECT_TRUE(ids.insert(mode.id).second) << mode.id;
        EXPECT_GT(mode.width, 0);
        EXPECT_GT(mode.height, 0);
        EXPECT_GE(mode.pixelWidth, mode.width);
    }
    EXPECT_GT(ids.size(), 1U);
}

TEST_P(DisplayServicesContract, AnAppliedModeIsTheCurrentOneUntilTheFirstIsPutBack) {
    const DisplayMode first = currentMode();
    const DisplayMode other = otherMode();
    ASSERT_TRUE(displays().apply(other.id, mainDisplay()));
    EXPECT_EQ(currentMode(), other);
    EXPECT_TRUE(boundsBecome(other));
    ASSERT_TRUE(displays().apply(first.id, mainDisplay()));
    EXPECT_EQ(currentMode(), first);
    EXPECT_TRUE(boundsBecome(first));
}

TEST_P(DisplayServicesContract, TheModesAreTheSameInEveryMode) {
    const auto modes = displays().modes(mainDisplay());
    ASSERT_TRUE(displays().apply(otherMode().id, mainDisplay()));
    EXPECT_EQ(displays().modes(mainDisplay()), modes);
}

TEST_P(DisplayServicesContract, TheCurrentModeMayBeAppliedAgain) {
    const DisplayMode mode = currentMode();
    EXPECT_TRUE(displays().apply(mode.id, mainDisplay()));
    EXPECT_EQ(currentMode(), mode);
}

TEST_P(DisplayServicesContract, AModeThatAnotherProgramAppliesIsTheCurrentOneAtOnce) {
    const DisplayMode other = otherMode();
    stage().switchElsewhere(other);
    EXPECT_EQ(currentMode(), other);
    EXPECT_TRUE(boundsBecome(other));
}

TEST_P(DisplayServicesContract, ADisplayBesideAnotherMirrorsNothing) {
    OVIN_NEEDS(unplugDisplays);
    const DisplayID second = stage().plugDisplay();
    EXPECT_FALSE(displays().isInMirrorSet(mainDisplay()));
    EXPECT_FALSE(displays().isInMirrorSet(second));
    EXPECT_FALSE(displays().modes(second).empty());
    EXPECT_NE(displays().currentMode(second), std::nullopt);
}

TEST_P(DisplayServicesContract, TwoDisplaysThatShowTheSameAreBothMirrored) {
    OVIN_NEEDS(unplugDisplays);
    const DisplayID second = stage().plugDisplay();
    stage().mirror(second);
    EXPECT_TRUE(displays().isInMirrorSet(mainDisplay()));
    EXPECT_TRUE(displays().isInMirrorSet(second));
}

TEST_P(DisplayServicesContract, AnUnpluggedDisplayHasNoModes) {
    OVIN_NEEDS(unplugDisplays);
    const DisplayID second = stage().plugDisplay();
    stage().unplugDisplay(second);
    EXPECT_TRUE(stage().runUntil([&] { return displays().bounds(second) == Rect{}; }, longTime));
    EXPECT_EQ(displays().currentMode(second), std::nullopt);
    EXPECT_TRUE(displays().modes(second).empty());
    EXPECT_FALSE(displays().apply(currentMode().id, second));
}

OVIN_IN_EVERY_WORLD(DisplayServicesContract);

}  // namespace
}  // namespace ovin
