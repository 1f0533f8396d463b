#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

#include "tests/contract/ContractTest.h"

namespace ovin {
namespace {

using namespace std::chrono_literals;
using Alarm = std::unique_ptr<WallClock::Alarm>;

class WallClockContract : public ContractTest {
protected:
    void SetUp() override { OVIN_NEEDS(makeUpdates); }

    [[nodiscard]] WallClock& clock() const { return stage().wallClock(); }
    void pass(Stage::Duration time) const {
        stage().runUntil([] { return false; }, time);
    }
};

TEST_P(WallClockContract, BothTimesGoOn) {
    const auto date = clock().date();
    const auto sinceBoot = clock().timeSinceBoot();
    EXPECT_GT(date, std::chrono::hours(24 * 365 * 40)) << "years that have passed since 1970";
    EXPECT_GE(sinceBoot, 0s);
    EXPECT_LT(sinceBoot, date);
    pass(1100ms);
    EXPECT_GE(clock().date() - date, 1s);
    EXPECT_GE(clock().timeSinceBoot() - sinceBoot, 1s);
    EXPECT_LE(clock().timeSinceBoot() - sinceBoot, 2s + std::chrono::ceil<std::chrono::seconds>(stage().margin()));
}

TEST_P(WallClockContract, AnAlarmGoesOffOnceWhenItsTimeHasCome) {
    int calls = 0;
    const auto mainThread = std::this_thread::get_id();
    const std::chrono::seconds time = clock().timeSinceBoot() + 2s;
    const Alarm alarm = clock().setAlarm(time, [&] {
        ++calls;
        EXPECT_GE(clock().timeSinceBoot(), time);
        EXPECT_EQ(std::this_thread::get_id(), mainThread);
    });
    pass(500ms);
    EXPECT_EQ(calls, 0);
    EXPECT_TRUE(stage().runUntil([&] { return calls > 0; }, longTime));
    pass(1500ms);
    EXPECT_EQ(calls, 1);
}

TEST_P(WallClockContract, AnAlarmForATimeThatHasPassedGoesOffSoonAndNeverWithinTheCall) {
    for (const std::chrono::seconds time : {clock().timeSinceBoot(), clock().timeSinceBoot() - 1s, 0s, -5s}) {
        int calls = 0;
        const Alarm alarm = clock().setAlarm(time, [&] { ++calls; });
        EXPECT_EQ(calls, 0);
        EXPECT_TRUE(stage().runUntil([&] { return calls > 0; }, longTime));
        pass(10ms);
        EXPECT_EQ(calls, 1);
    }
}

TEST_P(WallClockContract, AnAlarmThatIsDestroyedDoesNotGoOff) {
    int calls = 0;
    Alarm due = clock().setAlarm(clock().timeSinceBoot(), [&] { ++calls; });
    Alarm later = clock().setAlarm(clock().timeSinceBoot() + 1s, [&] { ++calls; });
    due.reset();
    later.reset();
    pass(1500ms);
    EXPECT_EQ(calls, 0);
}

TEST_P(WallClockContract, AHandlerMayDestroyItsAlarmAndSetTheNext) {
    std::vector<int> calls;
    Alarm alarm;
    std::function<void()> ring = [&] {
        alarm.reset();
        calls.push_back(1);
        if (calls.size() < 3) alarm = clock().setAlarm(clock().timeSinceBoot(), ring);
    };
    alarm = clock().setAlarm(0s, ring);
    EXPECT_TRUE(stage().runUntil([&] { return calls.size() == 3; }, longTime));
    pass(10ms);
    EXPECT_EQ(calls.size(), 3U);
    EXPECT_EQ(alarm, nullptr);
}

TEST_P(WallClockContract, AFarAlarmDoesNotGoOff) {
    int calls = 0;
    const Alarm day = clock().setAlarm(clock().timeSinceBoot() + 24h, [&] { ++calls; });
    const Alarm never = clock().setAlarm(std::chrono::seconds(std::int64_t{1} << 40), [&] { ++calls; });
    pass(100ms);
    EXPECT_EQ(calls, 0);
}

TEST_P(WallClockContract, WhoObservesTheDateHearsNothingWhileNobodySetsIt) {
    int calls = 0;
    const Alarm observation = clock().observeDate([&] { ++calls; });
    pass(300ms);
    EXPECT_EQ(calls, 0);
}

OVIN_IN_EVERY_WORLD(WallClockContract);

}  // namespace
}  // namespace ovin
