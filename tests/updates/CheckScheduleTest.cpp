#include "updates/CheckSchedule.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>

#include "platform/memory/MemoryUpdates.h"
#include "platform/memory/MemoryUserDefaults.h"

namespace ovin {
namespace {

using namespace std::chrono_literals;

class CheckScheduleTest : public testing::Test {
protected:
    SimulatedTime time;
    MemoryWallClock clock{time};
    MemoryUserDefaults defaults;
    std::optional<CheckSchedule> schedule{std::in_place, defaults, clock};

    std::chrono::seconds untilNext() { return std::max(schedule->due() - clock.timeSinceBoot(), 0s); }
    void restart() { schedule.emplace(defaults, clock); }
    void check() {
        EXPECT_EQ(untilNext(), 0s);
        EXPECT_TRUE(schedule->begin());
        schedule->reachedSomebody();
    }
    void setClock(std::chrono::seconds by) { clock.changeDate(by); }
};

TEST_F(CheckScheduleTest, TheFirstCheckIsDueAtOnce) { EXPECT_EQ(untilNext(), 0s); }

TEST_F(CheckScheduleTest, TheNextIsDueADayAfterTheLast) {
    check();
    EXPECT_EQ(untilNext(), 24h);
    time.advance(23h);
    EXPECT_EQ(untilNext(), 1h);
    time.advance(1h);
    check();
}

TEST_F(CheckScheduleTest, ARestartChangesNothing) {
    check();
    time.advance(10h);
    restart();
    EXPECT_EQ(untilNext(), 14h);
    time.advance(14h);
    restart();
    check();
    restart();
    EXPECT_EQ(untilNext(), 24h);
}

TEST_F(CheckScheduleTest, SleepCounts) {
    check();
    clock.sleep(24h);
    EXPECT_EQ(untilNext(), 0s);
}

TEST_F(CheckScheduleTest, AClockThatIsSetDoesNotCountWithinOneRun) {
    check();
    setClock(1000 * 24h);
    EXPECT_EQ(untilNext(), 24h);
    setClock(-2000 * 24h);
    EXPECT_EQ(untilNext(), 24h);
    time.advance(24h);
    check();
}

TEST_F(CheckScheduleTest, AClockSetBackDoesNotStopChecksForLongerThanADay) {
    check();
    setClock(-10000 * 24h);
    restart();
    EXPECT_EQ(untilNext(), 24h);
    time.advance(12h);
    restart();
    EXPECT_EQ(untilNext(), 12h);
    time.advance(12h);
    check();
}

TEST_F(CheckScheduleTest, AClockFarAheadMakesOneCheckAndCorrectedDoesNotStopThem) {
    check();
    setClock(10000 * 24h);
    restart();
    check();
    EXPECT_EQ(untilNext(), 24h);
    setClock(-10000 * 24h);
    restart();
    EXPECT_EQ(untilNext(), 24h);
    time.advance(24h);
    check();
}

TEST_F(CheckScheduleTest, ADateThatIsSetRightShowsThatACheckIsOverdue) {
    check();
    // The clock of this computer stands still while it is off, and is set right some time after its start.
    restart();
    time.advance(1h);
    EXPECT_EQ(untilNext(), 23h);
    setClock(30h);
    EXPECT_EQ(untilNext(), 23h) << "nobody has told";
    schedule->dateChanged();
    EXPECT_EQ(untilNext(), 0s);
    check();
}

TEST_F(CheckScheduleTest, ADateThatIsSetPutsNoCheckOff) {
    check();
    restart();
    time.advance(20h);
    EXPECT_EQ(untilNext(), 4h);
    for (const std::chrono::hours by : {-2h, -1000h, 1000h - 20h}) {
        setClock(by);
        schedule->dateChanged();
        EXPECT_LE(untilNext(), 4h);
    }
}

TEST_F(CheckScheduleTest, AfterACheckADateThatIsSetChangesNothing) {
    check();
    time.advance(1h);
    for (const std::chrono::hours by : {1000h, -2000h}) {
        setClock(by);
        schedule->dateChanged();
        EXPECT_EQ(untilNext(), 23h);
    }
}

TEST_F(CheckScheduleTest, NonsenseInTheSettingsIsNoCheck) {
    for (const UserDefaults::Value& value :
         {UserDefaults::Value(true), UserDefaults::Value(1e300), UserDefaults::Value(std::string("yesterday")),
          UserDefaults::Value(std::int64_t{-5}), UserDefaults::Value(std::numeric_limits<std::int64_t>::min())}) {
        defaults.values["OvinLastUpdateCheck"] = value;
        restart();
        EXPECT_EQ(untilNext(), 0s);
    }
    defaults.values["OvinLastUpdateCheck"] = std::numeric_limits<std::int64_t>::max();
    restart();
    EXPECT_EQ(untilNext(), 24h);
}

TEST_F(CheckScheduleTest, ACheckWhoseDateCannotBeStoredIsRefusedForADay) {
    defaults.refusesChanges = true;
    EXPECT_FALSE(schedule->begin());
    EXPECT_EQ(untilNext(), 24h);
}

TEST_F(CheckScheduleTest, WithoutANetworkAttemptsBecomeRarer) {
    for (const std::chrono::seconds wait : {900s, 1800s, 3600s, 7200s, 14400s, 28800s, 57600s, 86400s, 86400s}) {
        EXPECT_EQ(untilNext(), 0s);
        EXPECT_TRUE(schedule->begin());
        schedule->reachedNobody();
        EXPECT_EQ(untilNext(), wait);
        time.advance(wait);
    }
    check();
    EXPECT_EQ(untilNext(), 24h);
    time.advance(24h);
    EXPECT_TRUE(schedule->begin());
    schedule->reachedNobody();
    EXPECT_EQ(untilNext(), 900s) << "one that succeeds starts the count anew";
}

TEST_F(CheckScheduleTest, AnAttemptThatReachedNobodyIsNoCheck) {
    EXPECT_TRUE(schedule->begin());
    schedule->reachedNobody();
    EXPECT_TRUE(defaults.values.empty());
    restart();
    check();
    const auto before = defaults.values;
    time.advance(24h);
    EXPECT_TRUE(schedule->begin());
    schedule->reachedNobody();
    EXPECT_EQ(defaults.values, before);
}

TEST_F(CheckScheduleTest, ACrashInTheMiddleOfACheckCountsAsOne) {
    EXPECT_TRUE(schedule->begin());
    restart();
    EXPECT_EQ(untilNext(), 24h);
}

}  // namespace
}  // namespace ovin
