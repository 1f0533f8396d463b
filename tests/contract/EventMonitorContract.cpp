#include <atomic>
#include <memory>

#include "tests/contract/ContractTest.h"

namespace ovin {
namespace {

using MouseButton = StagedUser::MouseButton;

class EventMonitorContract : public ContractTest {
protected:
    /// Handlers may be called on any thread.
    using Count = std::atomic<int>;

    void SetUp() override { OVIN_NEEDS(pressMouse); }

    [[nodiscard]] std::unique_ptr<EventMonitor::Token> count(Count& presses) const {
        auto token = platform().events.monitorMouseDowns([&presses] { ++presses; });
        EXPECT_NE(token, nullptr);
        return token;
    }
};

TEST_P(EventMonitorContract, APressOfEitherButtonElsewhereIsTold) {
    Count presses = 0;
    const auto token = count(presses);
    for (const MouseButton button : {MouseButton::left, MouseButton::right, MouseButton::left}) {
        const int before = presses;
        stage().user().pressElsewhere(button);
        EXPECT_TRUE(becomes([&] { return presses > before; }));
        settle();
        EXPECT_EQ(presses, before + 1);
    }
}

TEST_P(EventMonitorContract, WhoseTokenIsGoneHearsNothingAndOthersGoOn) {
    Count ended = 0;
    Count presses = 0;
    auto first = count(ended);
    const auto second = count(presses);
    first.reset();
    stage().user().pressElsewhere(MouseButton::left);
    EXPECT_TRUE(becomes([&] { return presses == 1; }));
    EXPECT_EQ(ended, 0);
}

OVIN_IN_EVERY_WORLD(EventMonitorContract);

}  // namespace
}  // namespace ovin
