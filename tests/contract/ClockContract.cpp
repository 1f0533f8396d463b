#include <chrono>
#include <vector>

#include "tests/contract/ContractTest.h"

namespace ovin {
namespace {

using namespace std::chrono_literals;

class ClockContract : public ContractTest {};

TEST_P(ClockContract, TheTimeNeverGoesBack) {
    Stage::Duration last = platform().clock.now();
    for (int i = 0; i < 1000; ++i) {
        if (i % 100 == 0) stage().wait(1ms);
        const Stage::Duration now = platform().clock.now();
        ASSERT_GE(now, last);
        last = now;
    }
}

TEST_P(ClockContract, WaitingTakesAsLongAsItTakes) {
    expectTook(40ms, duration([&] { stage().wait(40ms); }));
}

TEST_P(ClockContract, TimePassesWhileTheMainQueueRuns) {
    expectTook(40ms, duration([&] { EXPECT_FALSE(stage().runUntil([] { return false; }, 40ms)); }));
}

TEST_P(ClockContract, TasksAndTheMainThreadShareOneTime) {
    const auto before = platform().clock.now();
    Stage::Duration inside{};
    inTask([&] {
        stage().wait(30ms);
        inside = platform().clock.now();
    });
    expectTook(30ms, inside - before);
    EXPECT_GE(platform().clock.now(), before);
}

OVIN_IN_EVERY_WORLD(ClockContract);

}  // namespace
}  // namespace ovin
