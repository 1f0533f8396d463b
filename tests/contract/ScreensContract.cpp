#include <memory>
#include <optional>

#include "tests/contract/ContractTest.h"

namespace ovin {
namespace {

class ScreensContract : public ContractTest {
protected:
    using Observation = std::unique_ptr<Screens::Observation>;

    [[nodiscard]] Screens& screens() const { return platform().screens; }

    /// A mode of the main display that is not the one it runs in.
    [[nodiscard]] DisplayMode otherMode() const {
        const DisplayServices& displays = platform().displays;
        const DisplayID main = displays.mainDisplay();
        const auto current = displays.currentMode(main);
        for (const DisplayMode& mode : displays.modes(main)) {
            if (mode.width != current->width && mode.height != current->height) return mode;
        }
        ADD_FAILURE() << "The main display has but one mode.";
        return {};
    }
};

TEST_P(ScreensContract, TheVisiblePartOfAScreenLiesWithinIt) {
    const auto screen = screens().main();
    ASSERT_TRUE(screen.has_value());
    EXPECT_GT(screen->visibleFrame.size.width, 0);
    EXPECT_EQ(intersection(screen->frame, screen->visibleFrame), screen->visibleFrame);
}

TEST_P(ScreensContract, WhoObservesHearsNothingOfWhatWasBefore) {
    int calls = 0;
    const Observation observation = screens().observeChanges([&] { ++calls; });
    EXPECT_EQ(calls, 0);
}

TEST_P(ScreensContract, AnotherModeIsToldOnceTheScreenHasIt) {
    const DisplayMode mode = otherMode();
    std::optional<Screen> seen;
    const Observation observation = screens().observeChanges([&] { seen = screens().main(); });
    stage().switchElsewhere(mode);
    EXPECT_TRUE(stage().runUntil([&] { return seen && seen->frame.size.width == mode.width; }, longTime));
}

TEST_P(ScreensContract, ADisplayThatComesAndGoesIsToldEachTime) {
    OVIN_NEEDS(unplugDisplays);
    int calls = 0;
    const Observation observation = screens().observeChanges([&] { ++calls; });
    const DisplayID second = stage().plugDisplay();
    EXPECT_TRUE(stage().runUntil([&] { return calls > 0; }, longTime));
    const int before = calls;
    stage().unplugDisplay(second);
    EXPECT_TRUE(stage().runUntil([&] { return calls > before; }, longTime));
}

TEST_P(ScreensContract, WhoHasEndedObservingHearsNothing) {
    int ended = 0;
    int calls = 0;
    Observation first = screens().observeChanges([&] { ++ended; });
    const Observation second = screens().observeChanges([&] { ++calls; });
    first.reset();
    stage().switchElsewhere(otherMode());
    EXPECT_TRUE(stage().runUntil([&] { return calls > 0; }, longTime));
    EXPECT_EQ(ended, 0);
}

TEST_P(ScreensContract, AHandlerMayEndItsOwnObservation) {
    int calls = 0;
    int others = 0;
    const DisplayMode first = *platform().displays.currentMode(platform().displays.mainDisplay());
    Observation own;
    // What the handler holds must live until it returns.
    own = screens().observeChanges([&, held = std::make_shared<int>(1)] {
        own.reset();
        calls += *held;
    });
    const Observation other = screens().observeChanges([&] { ++others; });
    stage().switchElsewhere(otherMode());
    EXPECT_TRUE(stage().runUntil([&] { return calls == 1 && others > 0; }, longTime));
    others = 0;
    stage().switchElsewhere(first);
    EXPECT_TRUE(stage().runUntil([&] { return others > 0; }, longTime));
    EXPECT_EQ(calls, 1);
}

OVIN_IN_EVERY_WORLD(ScreensContract);

}  // namespace
}  // namespace ovin
