#include "updates/CheckSchedule.h"

#include <gtest/gtest.h>

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

    std::chrono::seconds untilFirst() { return schedule->untilFirst(); }
    void restart() { schedule.emplace(defaults, clock); }
    void check() {
        EXPECT_TRUE(schedule->begin());
        schedule->reachedSomebody();
    }
    /// A check that finds no network.
    std::chrono::seconds checkInVain() {
        EXPECT_TRUE(schedule->begin());
        return schedule->reachedNobody();
    }
};

TEST_F(CheckScheduleTest, TheFirstCheckOfAllIsDueAtOnce) { EXPECT_EQ(untilFirst(), 0s); }

TEST_F(CheckScheduleTest, ARunBeginsWhereTheLastOneHasLeftOff) {
    check();
    time.advance(10h);
    restart();
    EXPECT_EQ(untilFirst(), 14h);
    time.advance(20h);
    restart();
    EXPECT_EQ(untilFirst(), 0s);
    check();
    restart();
    EXPECT_EQ(untilFirst(), 24h);
}

TEST_F(CheckScheduleTest, AClockSetBackDoesNotStopChecksForLongerThanADay) {
    check();
    clock.changeDate(-10000 * 24h);
    restart();
    EXPECT_EQ(untilFirst(), 24h);
    time.advance(12h);
    restart();
    EXPECT_EQ(untilFirst(), 12h);
}

TEST_F(CheckScheduleTest, AClockFarAheadMakesOneCheckAndCorrectedDoesNotStopThem) {
    check();
    clock.changeDate(10000 * 24h);
    restart();
    EXPECT_EQ(untilFirst(), 0s);
    check();
    clock.changeDate(-10000 * 24h);
    restart();
    EXPECT_EQ(untilFirst(), 24h);
}

TEST_F(CheckScheduleTest, NonsenseInTheSettingsIsNoCheck) {
    for (const UserDefaults::Value& value :
         {UserDefaults::Value(true), UserDefaults::Value(1e300), UserDefaults::Value(std::string("yesterday")),
          UserDefaults::Value(std::int64_t{-5}), UserDefaults::Value(std::numeric_limits<std::int64_t>::min())}) {
        defaults.values["OvinLastUpdateCheck"] = value;
        EXPECT_EQ(untilFirst(), 0s);
    }
    defaults.values["OvinLastUpdateCheck"] = std::numeric_limits<std::int64_t>::max();
    EXPECT_EQ(untilFirst(), 24h);
}

TEST_F(CheckScheduleTest, ACheckWhoseDateCannotBeStoredIsRefused) {
    defaults.refusesChanges = true;
    EXPECT_FALSE(schedule->begin());
}

TEST_F(CheckScheduleTest, WithoutANetworkAttemptsBecomeRarer) {
    for (const std::chrono::seconds wait : {900s, 1800s, 3600s, 7200s, 14400s, 28800s, 57600s, 86400s, 86400s})
        EXPECT_EQ(checkInVain(), wait);
    check();
    EXPECT_EQ(checkInVain(), 900s) << "one that succeeds starts the count anew";
}

TEST_F(CheckScheduleTest, AnAttemptThatReachedNobodyIsNoCheck) {
    (void)checkInVain();
    EXPECT_TRUE(defaults.values.empty());
    check();
    const auto before = defaults.values;
    time.advance(24h);
    (void)checkInVain();
    EXPECT_EQ(defaults.values, before);
}

TEST_F(CheckScheduleTest, ACrashInTheMiddleOfACheckCountsAsOne) {
    EXPECT_TRUE(schedule->begin());
    restart();
    EXPECT_EQ(untilFirst(), 24h);
}

}  // namespace
}  // namespace ovin
