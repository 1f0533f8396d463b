#include <algorithm>
#include <chrono>
#include <functional>
#include <memory>
#include <numeric>
#include <thread>
#include <vector>

#include "tests/contract/ContractTest.h"

namespace ovin {
namespace {

using namespace std::chrono_literals;

class MainQueueContract : public ContractTest {
protected:
    [[nodiscard]] MainQueue& queue() const { return platform().mainQueue; }
    void pass(Stage::Duration time) const {
        stage().runUntil([] { return false; }, time);
    }
};

TEST_P(MainQueueContract, WorkRunsLaterAndOnTheMainThread) {
    bool hasRun = false;
    const auto mainThread = std::this_thread::get_id();
    queue().async([&] {
        hasRun = true;
        EXPECT_EQ(std::this_thread::get_id(), mainThread);
    });
    EXPECT_FALSE(hasRun);
    EXPECT_TRUE(stage().runUntil([&] { return hasRun; }, longTime));
}

TEST_P(MainQueueContract, WorkRunsInTheOrderInWhichItWasAskedFor) {
    std::vector<int> order;
    for (int i = 0; i < 100; ++i) queue().async([&order, i] { order.push_back(i); });
    ASSERT_TRUE(stage().runUntil([&] { return order.size() == 100; }, longTime));
    std::vector<int> expected(100);
    std::iota(expected.begin(), expected.end(), 0);
    EXPECT_EQ(order, expected);
}

TEST_P(MainQueueContract, WorkThatAsksForWorkGetsItAfterWhatIsAlreadyThere) {
    std::vector<int> order;
    queue().async([&] {
        order.push_back(1);
        queue().async([&] { order.push_back(3); });
        EXPECT_EQ(order.size(), 1U) << "never within the call";
    });
    queue().async([&] { order.push_back(2); });
    ASSERT_TRUE(stage().runUntil([&] { return order.size() == 3; }, longTime));
    EXPECT_EQ(order, (std::vector<int>{1, 2, 3}));
}

TEST_P(MainQueueContract, WorkFromATaskRunsOnTheMainThreadInItsOrder) {
    const auto mainThread = std::this_thread::get_id();
    std::vector<int> order;
    platform().tasks.start(Tasks::Priority::userInitiated, [&] {
        for (int i = 0; i < 20; ++i) {
            queue().async([&, i] {
                EXPECT_EQ(std::this_thread::get_id(), mainThread);
                order.push_back(i);
            });
        }
    });
    ASSERT_TRUE(stage().runUntil([&] { return order.size() == 20; }, longTime));
    EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
}

TEST_P(MainQueueContract, WorkFromManyTasksIsNeverLost) {
    int count = 0;
    for (int task = 0; task < 8; ++task) {
        platform().tasks.start(Tasks::Priority::utility, [&] {
            for (int i = 0; i < 50; ++i) queue().async([&] { ++count; });
        });
    }
    EXPECT_TRUE(stage().runUntil([&] { return count == 400; }, longTime));
}

TEST_P(MainQueueContract, WhatWorkHoldsIsReleasedOnceItHasRun) {
    const auto held = std::make_shared<int>(1);
    queue().async([held] { (void)held; });
    EXPECT_TRUE(stage().runUntil([&] { return held.use_count() == 1; }, longTime));
}

TEST_P(MainQueueContract, ATimerRunsOnceAndNotBeforeItsTime) {
    int runs = 0;
    Stage::Duration ranAt{};
    const auto start = platform().clock.now();
    const auto timer = queue().after(50ms, [&] {
        ++runs;
        ranAt = platform().clock.now();
    });
    ASSERT_TRUE(stage().runUntil([&] { return runs > 0; }, longTime));
    expectTook(50ms, ranAt - start);
    pass(150ms);
    EXPECT_EQ(runs, 1);
}

TEST_P(MainQueueContract, ATimerWithoutDelayStillRunsLater) {
    for (const Stage::Duration delay : {Stage::Duration(0ms), Stage::Duration(-5ms)}) {
        bool hasRun = false;
        const auto timer = queue().after(delay, [&] { hasRun = true; });
        EXPECT_FALSE(hasRun);
        EXPECT_TRUE(stage().runUntil([&] { return hasRun; }, longTime));
    }
}

TEST_P(MainQueueContract, TimersRunInTheOrderOfTheirTimes) {
    std::vector<int> order;
    const auto late = queue().after(120ms, [&] { order.push_back(3); });
    const auto early = queue().after(20ms, [&] { order.push_back(1); });
    const auto between = queue().after(70ms, [&] { order.push_back(2); });
    ASSERT_TRUE(stage().runUntil([&] { return order.size() == 3; }, longTime));
    EXPECT_EQ(order, (std::vector<int>{1, 2, 3}));
}

TEST_P(MainQueueContract, TimersWithOneDelayRunInTheOrderInWhichTheyWereAskedFor) {
    std::vector<int> order;
    std::vector<std::unique_ptr<MainQueue::Timer>> timers;
    for (int i = 0; i < 20; ++i) timers.push_back(queue().after(30ms, [&order, i] { order.push_back(i); }));
    ASSERT_TRUE(stage().runUntil([&] { return order.size() == 20; }, longTime));
    EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
}

TEST_P(MainQueueContract, ADestroyedTimerDoesNothingAndHoldsNothing) {
    const auto held = std::make_shared<int>(1);
    bool hasRun = false;
    auto timer = queue().after(20ms, [&hasRun, held] { hasRun = true; });
    timer.reset();
    EXPECT_EQ(held.use_count(), 1);
    pass(100ms);
    EXPECT_FALSE(hasRun);
}

TEST_P(MainQueueContract, ATimerThatIsDueCanStillBeCancelled) {
    bool hasRun = false;
    auto timer = queue().after(5ms, [&] { hasRun = true; });
    stage().wait(50ms);
    timer.reset();
    pass(50ms);
    EXPECT_FALSE(hasRun);
}

TEST_P(MainQueueContract, WorkMayDestroyItsOwnTimerAndGoOn) {
    const auto held = std::make_shared<int>(7);
    int seen = 0;
    std::unique_ptr<MainQueue::Timer> timer;
    timer = queue().after(10ms, [&timer, &seen, held] {
        timer.reset();
        seen = *held;
    });
    EXPECT_TRUE(stage().runUntil([&] { return seen == 7; }, longTime));
}

TEST_P(MainQueueContract, WorkMayReplaceItsOwnTimer) {
    int runs = 0;
    std::unique_ptr<MainQueue::Timer> timer;
    std::function<void()> again = [&] {
        if (++runs < 5) timer = queue().after(5ms, again);
    };
    timer = queue().after(5ms, again);
    EXPECT_TRUE(stage().runUntil([&] { return runs == 5; }, longTime));
    pass(50ms);
    EXPECT_EQ(runs, 5);
}

TEST_P(MainQueueContract, OneTimerMayCancelAnotherOfTheSameTime) {
    bool hasRun = false;
    std::unique_ptr<MainQueue::Timer> second;
    const auto first = queue().after(20ms, [&] { second.reset(); });
    second = queue().after(20ms, [&] { hasRun = true; });
    pass(120ms);
    EXPECT_FALSE(hasRun);
}

TEST_P(MainQueueContract, ABusyMainThreadRunsTimersAfterwards) {
    Stage::Duration ranAt{};
    const auto start = platform().clock.now();
    const auto timer = queue().after(10ms, [&] { ranAt = platform().clock.now(); });
    queue().async([&] { stage().wait(80ms); });
    ASSERT_TRUE(stage().runUntil([&] { return ranAt != Stage::Duration{}; }, longTime));
    expectTook(80ms, ranAt - start);
}

OVIN_IN_EVERY_WORLD(MainQueueContract);

}  // namespace
}  // namespace ovin
