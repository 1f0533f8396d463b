#include "tests/contract/ContractTest.h"

namespace ovin {
namespace {

class DisplayServicesContract : public ContractTest {
protected:
    [[nodiscard]] DisplayServices& displays() const { return platform().displays; }
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

OVIN_IN_EVERY_WORLD(DisplayServicesContract);

}  // namespace
}  // namespace ovin
