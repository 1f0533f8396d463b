#include "platform/memory/SimulatedTime.h"

#include <gtest/gtest.h>

#include <chrono>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace ovin {
namespace {

using namespace std::chrono_literals;
using Priority = Tasks::Priority;

class SimulatedTimeTest : public testing::Test {
protected:
    void note(const std::string& what) { log.emplace_back(what, time.now()); }
    /// Work that only notes when it runs.
    [[nodiscard]] MainQueue::Work noting(const std::string& what) {
        return [this, what] { note(what); };
    }
    void start(const MainQueue::Work& work) { time.start(Priority::userInitiated, work); }
    static void ignore(std::size_t) {}

    using Log = std::vector<std::pair<std::string, SimulatedTime::Duration>>;
    SimulatedTime time;
    Log log;
};

TEST_F(SimulatedTimeTest, ItBeginsAtZeroAndStandsStill) {
    EXPECT_EQ(time.now(), 0ns);
    EXPECT_EQ(time.now(), 0ns);
}

TEST_F(SimulatedTimeTest, EqualTimesRunInTheOrderOfAsking) {
    const auto first = time.after(10ms, noting("first"));
    const auto second = time.after(10ms, noting("second"));
    time.happen(10ms, noting("third"));
    const auto fourth = time.after(10ms, noting("fourth"));
    time.advance(10ms);
    EXPECT_EQ(log, (Log{{"first", 10ms}, {"second", 10ms}, {"third", 10ms}, {"fourth", 10ms}}));
}

TEST_F(SimulatedTimeTest, AdvancingRunsWhatIsDueAndNothingElse) {
    const auto due = time.after(10ms, noting("due"));
    const auto later = time.after(10ms + 1ns, noting("later"));
    time.advance(10ms);
    EXPECT_EQ(log, (Log{{"due", 10ms}}));
    EXPECT_EQ(time.now(), 10ms);
}

TEST_F(SimulatedTimeTest, AdvancingRunsWhatBecomesDueOnTheWay) {
    std::unique_ptr<MainQueue::Timer> second;
    const auto first = time.after(4ms, [&] { second = time.after(4ms, noting("second")); });
    time.advance(10ms);
    EXPECT_EQ(log, (Log{{"second", 8ms}}));
    EXPECT_EQ(time.now(), 10ms);
}

TEST_F(SimulatedTimeTest, AdvancingByNothingRunsWhatIsDueNow) {
    time.async(noting("now"));
    time.advance(0ms);
    EXPECT_EQ(log, (Log{{"now", 0ms}}));
}

TEST_F(SimulatedTimeTest, AdvancingBackwardsDoesNothing) {
    time.advance(5ms);
    time.advance(-3ms);
    EXPECT_EQ(time.now(), 5ms);
}

TEST_F(SimulatedTimeTest, ATaskThatTakesLongerDoesNotMoveTheClockOfWhoeverAdvances) {
    start([&] {
        time.wait(100ms);
        time.async(noting("arrived"));
    });
    time.advance(50ms);
    EXPECT_EQ(time.now(), 50ms);
    EXPECT_EQ(log, Log{});
    time.advance(50ms);
    EXPECT_EQ(log, (Log{{"arrived", 100ms}}));
}

TEST_F(SimulatedTimeTest, AMainThreadThatIsBusyLongerHoldsTheClockUp) {
    time.async([&] { time.wait(100ms); });
    time.happen(20ms, [] {});
    time.advance(50ms);
    EXPECT_EQ(time.now(), 100ms);
}

TEST_F(SimulatedTimeTest, RunUntilIdleEndsWhereTheLastOfAllEnded) {
    start([&] { time.wait(70ms); });
    const auto timer = time.after(20ms, noting("timer"));
    time.runUntilIdle();
    EXPECT_EQ(time.now(), 70ms);
    EXPECT_EQ(log, (Log{{"timer", 20ms}}));
    EXPECT_FALSE(time.runNext());
}

TEST_F(SimulatedTimeTest, RunNextRunsOneThing) {
    time.async(noting("one"));
    time.async(noting("two"));
    EXPECT_TRUE(time.runNext());
    EXPECT_EQ(log.size(), 1U);
    EXPECT_TRUE(time.runNext());
    EXPECT_EQ(log.size(), 2U);
    EXPECT_FALSE(time.runNext());
}

TEST_F(SimulatedTimeTest, ADestroyedTimerIsCancelled) {
    auto timer = time.after(10ms, noting("never"));
    timer.reset();
    time.runUntilIdle();
    EXPECT_EQ(log, Log{});
}

TEST_F(SimulatedTimeTest, ATimerMayBeDestroyedWithinItsOwnWork) {
    const std::string held = "still here after the timer is gone";
    std::string seen;
    std::unique_ptr<MainQueue::Timer> timer;
    timer = time.after(10ms, [&timer, &seen, held] {
        timer.reset();
        seen = held;
    });
    time.advance(20ms);
    EXPECT_EQ(seen, held);
}

TEST_F(SimulatedTimeTest, ATimerThatHasRunIsDestroyedWithoutHarmToLaterOnes) {
    auto first = time.after(10ms, noting("first"));
    time.advance(10ms);
    const auto second = time.after(10ms, noting("second"));
    first.reset();
    time.runUntilIdle();
    EXPECT_EQ(log, (Log{{"first", 10ms}, {"second", 20ms}}));
}

TEST_F(SimulatedTimeTest, CancellingATimerMayCancelTheTimersThatItsWorkHolds) {
    auto inner = std::make_shared<std::unique_ptr<MainQueue::Timer>>(time.after(10ms, noting("inner")));
    auto outer = time.after(20ms, [inner] {});
    inner.reset();
    outer.reset();
    time.runUntilIdle();
    EXPECT_EQ(log, Log{});
}

TEST_F(SimulatedTimeTest, ATimerMayOutliveTheSimulation) {
    std::unique_ptr<MainQueue::Timer> timer;
    {
        SimulatedTime shortLived;
        timer = shortLived.after(10ms, noting("never"));
    }
    timer.reset();
    EXPECT_EQ(log, Log{});
}

TEST_F(SimulatedTimeTest, WaitingWorkIsDroppedWithTheSimulationAndWhatItHoldsIsReleased) {
    const auto held = std::make_shared<int>(1);
    {
        SimulatedTime shortLived;
        shortLived.async([held] { FAIL(); });
        auto timer = std::make_shared<std::unique_ptr<MainQueue::Timer>>();
        *timer = shortLived.after(10ms, [timer, held] { FAIL(); });
        EXPECT_EQ(held.use_count(), 3);
    }
    EXPECT_EQ(held.use_count(), 1);
}

TEST_F(SimulatedTimeTest, ForEachTakesAsLongAsItsLongestChild) {
    const std::vector<SimulatedTime::Duration> waits{30ms, 80ms, 10ms};
    start([&] {
        time.wait(5ms);
        time.forEach(
            3, [&](std::size_t i) { time.wait(waits[i]); }, [&](std::size_t i) { note(std::to_string(i)); });
        note("end");
    });
    time.runUntilIdle();
    EXPECT_EQ(log, (Log{{"2", 15ms}, {"0", 35ms}, {"1", 85ms}, {"end", 85ms}}));
}

TEST_F(SimulatedTimeTest, ChildrenThatEndTogetherAreReportedByTheirNumber) {
    const std::vector<SimulatedTime::Duration> waits{20ms, 10ms, 20ms, 10ms, 0ms};
    std::vector<std::size_t> order;
    start([&] {
        time.forEach(
            5, [&](std::size_t i) { time.wait(waits[i]); }, [&](std::size_t i) { order.push_back(i); });
    });
    time.runUntilIdle();
    EXPECT_EQ(order, (std::vector<std::size_t>{4, 1, 3, 0, 2}));
}

TEST_F(SimulatedTimeTest, ForEachNests) {
    start([&] {
        const auto leaf = [&](std::size_t i) { time.wait(10ms * (i + 1)); };
        time.forEach(
            2,
            [&](std::size_t i) {
                time.wait(100ms * i);
                time.forEach(3, leaf, ignore);
            },
            [&](std::size_t i) { note(std::to_string(i)); });
    });
    time.runUntilIdle();
    EXPECT_EQ(log, (Log{{"0", 30ms}, {"1", 130ms}}));
}

TEST_F(SimulatedTimeTest, WhatAReportTakesHoldsLaterReportsUp) {
    start([&] {
        time.forEach(
            2, [&](std::size_t i) { time.wait(10ms * (i + 1)); },
            [&](std::size_t i) {
                note(std::to_string(i));
                time.wait(50ms);
            });
    });
    time.runUntilIdle();
    EXPECT_EQ(log, (Log{{"0", 10ms}, {"1", 60ms}}));
}

TEST_F(SimulatedTimeTest, WhatATaskHandsToTheMainQueueArrivesAtItsOwnTime) {
    start([&] {
        time.wait(30ms);
        time.async(noting("from the task"));
        time.wait(30ms);
        time.async(noting("and again"));
    });
    const auto timer = time.after(40ms, noting("timer"));
    time.runUntilIdle();
    EXPECT_EQ(log, (Log{{"from the task", 30ms}, {"timer", 40ms}, {"and again", 60ms}}));
}

TEST_F(SimulatedTimeTest, TasksRunAtTheSameTime) {
    for (int i = 0; i < 3; ++i) {
        start([&] {
            time.wait(30ms);
            time.async(noting("ended"));
        });
    }
    time.runUntilIdle();
    EXPECT_EQ(log, (Log{{"ended", 30ms}, {"ended", 30ms}, {"ended", 30ms}}));
}

TEST_F(SimulatedTimeTest, TheMainThreadDoesOneThingAtATime) {
    time.async([&] {
        note("busy");
        time.wait(50ms);
    });
    const auto timer = time.after(10ms, noting("timer"));
    start([&] {
        time.wait(20ms);
        note("task goes on");
        time.async(noting("from the task"));
    });
    time.runUntilIdle();
    EXPECT_EQ(log, (Log{{"busy", 0ms}, {"task goes on", 20ms}, {"timer", 50ms}, {"from the task", 50ms}}));
}

TEST_F(SimulatedTimeTest, WhoeverDrivesTheSimulationKeepsTheMainThreadBusy) {
    const auto timer = time.after(10ms, noting("timer"));
    time.wait(50ms);
    EXPECT_EQ(log, Log{});
    time.runUntilIdle();
    EXPECT_EQ(log, (Log{{"timer", 50ms}}));
}

TEST_F(SimulatedTimeTest, TheWorldGoesOnWhileSomebodyWaits) {
    time.happen(20ms, noting("event"));
    time.happen(31ms, noting("later event"));
    const auto timer = time.after(10ms, noting("timer"));
    time.async([&] {
        time.wait(30ms);
        note("waited");
    });
    time.runUntilIdle();
    EXPECT_EQ(log, (Log{{"event", 20ms}, {"waited", 30ms}, {"timer", 30ms}, {"later event", 31ms}}));
}

TEST_F(SimulatedTimeTest, AnEventHappensOnceThoughSeveralWaitPastIt) {
    time.happen(20ms, noting("event"));
    start([&] {
        time.forEach(
            3, [&](std::size_t) { time.wait(30ms); }, ignore);
    });
    time.runUntilIdle();
    EXPECT_EQ(log, (Log{{"event", 20ms}}));
}

TEST_F(SimulatedTimeTest, AnEventMayCauseAnotherWithinTheSameWait) {
    time.happen(10ms, [&] { time.happen(5ms, noting("second")); });
    time.wait(20ms);
    EXPECT_EQ(log, (Log{{"second", 15ms}}));
    EXPECT_EQ(time.now(), 20ms);
}

TEST_F(SimulatedTimeTest, WorkThatWasHeldUpFindsWhatHappenedMeanwhile) {
    time.async([&] { time.wait(50ms); });
    // The task runs after the main thread has waited, and yet at its own time.
    start([&] { time.happen(20ms, noting("event")); });
    const auto timer = time.after(10ms, noting("timer"));
    time.runUntilIdle();
    EXPECT_EQ(log, (Log{{"event", 20ms}, {"timer", 50ms}}));
}

TEST_F(SimulatedTimeTest, ANegativeWaitTakesNoTime) {
    time.advance(10ms);
    time.wait(-5ms);
    EXPECT_EQ(time.now(), 10ms);
}

TEST_F(SimulatedTimeTest, WorkThatWaitsLeavesTheClockWhereItsWaitEnded) {
    time.async([this] { time.wait(10ms); });
    EXPECT_TRUE(time.runNext());
    EXPECT_EQ(time.now(), 10ms);
}

TEST_F(SimulatedTimeTest, EqualHistoriesGiveEqualResults) {
    const auto history = [] {
        SimulatedTime simulated;
        std::vector<std::pair<int, SimulatedTime::Duration>> result;
        for (int i = 0; i < 50; ++i) {
            simulated.start(Priority::utility, [&simulated, &result, i] {
                simulated.wait(1ms * ((i * 37) % 11));
                simulated.async([&simulated, &result, i] { result.emplace_back(i, simulated.now()); });
            });
        }
        simulated.runUntilIdle();
        return result;
    };
    EXPECT_EQ(history().size(), 50U);
    EXPECT_EQ(history(), history());
}

}  // namespace
}  // namespace ovin
