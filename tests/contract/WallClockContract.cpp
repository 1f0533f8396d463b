#include <chrono>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

#include "tests/contract/ContractTest.h"

namespace ovin {
namespace {

using namespace std::chrono_literals;
using Timer = std::unique_ptr<MainQueue::Timer>;

class WallClockContract : public ContractTest {
protected:
    void SetUp() override { OVIN_NEEDS(makeUpdates); }

    [[nodiscard]] WallClock& clock() const { return stage().wallClock(); }
    void pass(Stage::Duration time) const {
        stage().runUntil([] { return false; }, time);
    }
};

TEST_P(WallClockContract, TheDateGoesOn) {
    const auto date = clock().date();
    EXPECT_GT(date, std::chrono::hours(24 * 365 * 40)) << "years that have passed since 1970";
    pass(1100ms);
    EXPECT_GE(clock().date() - date, 1s);
}

TEST_P(WallClockContract, ATimerGoesOffOnceWhenItsTimeHasPassed) {
    int calls = 0;
    const auto mainThread = std::this_thread::get_id();
    const Timer timer = clock().after(2s, [&] {
        ++calls;
        EXPECT_EQ(std::this_thread::get_id(), mainThread);
    });
    pass(1900ms);
    EXPECT_EQ(calls, 0);
    EXPECT_TRUE(stage().runUntil([&] { return calls > 0; }, longTime));
    pass(1500ms);
    EXPECT_EQ(calls, 1);
}

TEST_P(WallClockContract, WithoutADelayItGoesOffSoonAndNeverWithinTheCall) {
    int calls = 0;
    const Timer timer = clock().after(0s, [&] { ++calls; });
    EXPECT_EQ(calls, 0);
    EXPECT_TRUE(stage().runUntil([&] { return calls > 0; }, longTime));
    pass(10ms);
    EXPECT_EQ(calls, 1);
}

TEST_P(WallClockContract, ATimerThatIsDestroyedDoesNotGoOff) {
    int calls = 0;
    Timer due = clock().after(0s, [&] { ++calls; });
    Timer later = clock().after(1s, [&] { ++calls; });
    due.reset();
    later.reset();
    pass(1500ms);
    EXPECT_EQ(calls, 0);
}

TEST_P(WallClockContract, AHandlerMayDestroyItsTimerAndSetTheNext) {
    std::vector<int> calls;
    Timer timer;
    std::function<void()> ring = [&] {
        timer.reset();
        calls.push_back(1);
        if (calls.size() < 3) timer = clock().after(0s, ring);
    };
    timer = clock().after(0s, ring);
    EXPECT_TRUE(stage().runUntil([&] { return calls.size() == 3; }, longTime));
    pass(10ms);
    EXPECT_EQ(calls.size(), 3U);
    EXPECT_EQ(timer, nullptr);
}

TEST_P(WallClockContract, AFarTimerDoesNotGoOff) {
    int calls = 0;
    const Timer day = clock().after(24h, [&] { ++calls; });
    pass(100ms);
    EXPECT_EQ(calls, 0);
}

OVIN_IN_EVERY_WORLD(WallClockContract);

}  // namespace
}  // namespace ovin
