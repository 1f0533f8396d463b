#include <atomic>
#include <chrono>
#include <cstddef>
#include <memory>
#include <thread>
#include <vector>

#include "tests/contract/ContractTest.h"

namespace ovin {
namespace {

using namespace std::chrono_literals;

class TasksContract : public ContractTest {
protected:
    [[nodiscard]] Tasks& tasks() const { return platform().tasks; }
    static void ignore(std::size_t) {}
};

TEST_P(TasksContract, AStartedTaskRuns) {
    for (const auto priority : {Tasks::Priority::userInitiated, Tasks::Priority::utility}) {
        std::atomic<int> runs = 0;
        tasks().start(priority, [&] { ++runs; });
        EXPECT_TRUE(stage().runUntil([&] { return runs == 1; }, longTime));
    }
}

TEST_P(TasksContract, StartingATaskTakesNoTime) {
    std::atomic<bool> hasEnded = false;
    const auto elapsed = duration([&] {
        tasks().start(Tasks::Priority::userInitiated, [&] {
            stage().wait(stage().margin() + 200ms);
            hasEnded = true;
        });
        EXPECT_FALSE(hasEnded);
    });
    EXPECT_LE(elapsed, stage().margin());
    EXPECT_TRUE(stage().runUntil([&] { return hasEnded.load(); }, longTime));
}

TEST_P(TasksContract, ATaskMayStartAnother) {
    std::atomic<bool> hasEnded = false;
    tasks().start(Tasks::Priority::utility,
                  [&] { tasks().start(Tasks::Priority::userInitiated, [&] { hasEnded = true; }); });
    EXPECT_TRUE(stage().runUntil([&] { return hasEnded.load(); }, longTime));
}

TEST_P(TasksContract, TasksRunAtTheSameTime) {
    const auto each = stage().margin() + 50ms;
    std::atomic<int> ended = 0;
    const auto elapsed = duration([&] {
        for (int i = 0; i < 20; ++i) {
            tasks().start(Tasks::Priority::userInitiated, [&] {
                stage().wait(each);
                ++ended;
            });
        }
        EXPECT_TRUE(stage().runUntil([&] { return ended == 20; }, longTime));
    });
    EXPECT_LE(elapsed, 2 * each + stage().margin());
}

TEST_P(TasksContract, WhatATaskHoldsIsReleased) {
    const auto held = std::make_shared<int>(1);
    tasks().start(Tasks::Priority::userInitiated, [held] { (void)held; });
    EXPECT_TRUE(stage().runUntil([&] { return held.use_count() == 1; }, longTime));
}

TEST_P(TasksContract, EveryChildRunsAndIsReportedOnce) {
    std::vector<int> runs(200);
    std::vector<int> reports(200);
    inTask([&] {
        tasks().forEach(
            runs.size(), [&](std::size_t i) { ++runs[i]; },
            // The child's own write must be visible here.
            [&](std::size_t i) { reports[i] += runs[i]; });
        EXPECT_EQ(runs, std::vector<int>(200, 1)) << "All have returned when forEach returns.";
    });
    EXPECT_EQ(reports, std::vector<int>(200, 1));
}

TEST_P(TasksContract, NoChildrenTakeNoTime) {
    int calls = 0;
    inTask([&] {
        EXPECT_LE(duration([&] {
                      tasks().forEach(
                          0, [&](std::size_t) { ++calls; }, [&](std::size_t) { ++calls; });
                  }),
                  stage().margin());
    });
    EXPECT_EQ(calls, 0);
}

TEST_P(TasksContract, OneChildIsEnough) {
    std::vector<std::size_t> seen;
    inTask([&] { tasks().forEach(1, ignore, [&](std::size_t i) { seen.push_back(i); }); });
    EXPECT_EQ(seen, std::vector<std::size_t>{0});
}

TEST_P(TasksContract, ChildrenAreReportedInTheOrderInWhichTheyReturn) {
    const std::vector<int> steps{4, 0, 3, 1, 2};
    const auto step = stage().margin() / 2 + 50ms;
    std::vector<std::size_t> order;
    inTask([&] {
        tasks().forEach(
            steps.size(), [&](std::size_t i) { stage().wait(step * steps[i]); }, [&](std::size_t i) { order.push_back(i); });
    });
    EXPECT_EQ(order, (std::vector<std::size_t>{1, 3, 4, 2, 0}));
}

TEST_P(TasksContract, AChildIsReportedWhileOthersStillWait) {
    const auto longer = 2 * stage().margin() + 200ms;
    Stage::Duration firstReport{};
    inTask([&] {
        const auto start = platform().clock.now();
        tasks().forEach(
            2,
            [&](std::size_t i) {
                if (i == 0) stage().wait(longer);
            },
            [&](std::size_t i) {
                if (i == 1) firstReport = platform().clock.now() - start;
            });
    });
    EXPECT_LE(firstReport, stage().margin());
}

TEST_P(TasksContract, HoweverManyWaitTheyCostWhatTheLongestCosts) {
    Stage::Duration elapsed{};
    inTask([&] {
        elapsed = duration([&] {
            tasks().forEach(
                200, [&](std::size_t) { stage().wait(100ms); }, ignore);
        });
    });
    expectTook(100ms, elapsed);
}

TEST_P(TasksContract, ReportsArriveOnTheCallingThreadOneAtATime) {
    int inside = 0;
    inTask([&] {
        const auto caller = std::this_thread::get_id();
        tasks().forEach(50, ignore, [&](std::size_t) {
            EXPECT_EQ(std::this_thread::get_id(), caller);
            EXPECT_EQ(++inside, 1);
            --inside;
        });
    });
}

TEST_P(TasksContract, ChildrenMayHaveChildren) {
    std::atomic<int> leaves = 0;
    Stage::Duration elapsed{};
    inTask([&] {
        const auto leaf = [&](std::size_t) {
            stage().wait(1s);
            ++leaves;
        };
        elapsed = duration([&] {
            tasks().forEach(
                6, [&](std::size_t) { tasks().forEach(6, leaf, ignore); }, ignore);
        });
    });
    EXPECT_EQ(leaves, 36);
    EXPECT_LT(elapsed, 5s) << "Either level, one after the other, takes six seconds.";
}

TEST_P(TasksContract, SeveralTasksMayHaveChildrenAtOnce) {
    std::atomic<int> ended = 0;
    std::vector<std::size_t> sums(8);
    for (std::size_t task = 0; task < sums.size(); ++task) {
        tasks().start(Tasks::Priority::userInitiated, [&, task] {
            tasks().forEach(20, ignore, [&](std::size_t i) { sums[task] += i; });
            ++ended;
        });
    }
    ASSERT_TRUE(stage().runUntil([&] { return ended == 8; }, longTime));
    EXPECT_EQ(sums, std::vector<std::size_t>(8, 190));
}

OVIN_IN_EVERY_WORLD(TasksContract);

}  // namespace
}  // namespace ovin
